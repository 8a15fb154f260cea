// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/dom/css/Forward.h>

#include <vector>

namespace Dom::CSS {

/// A place in the text of a style sheet: line and column from 1, columns in characters. Lines end
/// as CSS Syntax Level 3 section 3.3 says. Both are 0 where there is no place.
struct SourcePlace {
    int line = 0;    ///< from 1 on
    int column = 0;  ///< in characters, from 1 on

    friend bool operator==(const SourcePlace&, const SourcePlace&) = default;
};

/// Returns where a property is declared: where its name, or that of its shorthand, stands in the
/// text that ParseStyleSheet() has read. Of several with the same name the one is told that comes
/// in the same order. Takes time in proportion to the length of the rule.
///
/// \param declaration of a rule that is in the sheet that it was read into
/// \param index of the property in `declaration.Properties()`
/// \return no place when the rule was made otherwise, or when its text has no such property
ESPALIER_EXPORT SourcePlace PlaceOf(const CSSStyleDeclaration& declaration, unsigned index);

/// As above, for all properties: one place for each, in the order of `declaration.Properties()`.
/// Takes the time of one.
ESPALIER_EXPORT std::vector<SourcePlace> PlacesOf(const CSSStyleDeclaration& declaration);

}  // namespace Dom::CSS
