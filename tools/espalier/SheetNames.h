// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/css/CSSStyleSheet.h>

#include "BesideSheets.h"

#include <map>
#include <string>
#include <vector>

namespace Tool {

/// What the style sheets of a document are called: the file that they stand in, "<style>" when that
/// is the document, with a number when there are several of these, or "user agent".
class SheetNames {
public:
    /// \param sheets all of them
    /// \param beside knows the names of those that the document links to
    SheetNames(const std::vector<const Dom::CSS::CSSStyleSheet*>& sheets,
               const BesideSheets& beside);

    /// Says what a sheet is called that the document does not lead to.
    void Set(const Dom::CSS::CSSStyleSheet& sheet, const std::string& name) {
        names_[&sheet] = name;
    }

    /// Returns the name; empty for a sheet that is not known.
    std::string NameOf(const Dom::CSS::CSSStyleSheet* sheet) const;

private:
    std::map<const Dom::CSS::CSSStyleSheet*, std::string> names_;
};

}  // namespace Tool
