// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/dom/css/CSSStyleDeclaration.h>
#include <espalier/dom/css/DroppedText.h>

#include <memory>
#include <string_view>
#include <vector>

namespace Dom::CSS {

/// Reads any text as declarations, such as that of an attribute "style", in the way in which
/// ParseStyleSheet() reads those of a rule: what is no declaration is left out up to the next ";",
/// and all else is there, with values that say what the text says. So nothing in a text makes it
/// throw.
///
/// \code
///     std::vector<Dom::CSS::DroppedText> dropped;
///     const auto style = Dom::CSS::ParseDeclarations("color red; margin: 0 auto", &dropped);
///     // style has the margins; dropped[0].reason is "Expected ':'"
/// \endcode
///
/// \param text in UTF-8. A NUL is read as U+FFFD
/// \param dropped gets what is left out, in the order of the text, with places in it; may be null
/// \return a declaration that belongs to no rule
ESPALIER_EXPORT std::unique_ptr<CSSStyleDeclaration> ParseDeclarations(
    std::string_view text, std::vector<DroppedText>* dropped = nullptr);

}  // namespace Dom::CSS
