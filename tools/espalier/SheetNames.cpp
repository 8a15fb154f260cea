// SPDX-License-Identifier: MIT
#include "SheetNames.h"

#include <espalier/dom/Node.h>

#include <algorithm>

namespace Tool {

namespace {

using Dom::CSS::CSSStyleSheet;

// A "link" has an owner, too, and so has an instruction.
bool IsInDocument(const CSSStyleSheet& sheet) {
    const Dom::Node* const owner = sheet.OwnerNode();
    return owner != nullptr && owner->LocalNameView() == "style";
}

}  // namespace

SheetNames::SheetNames(const std::vector<const CSSStyleSheet*>& sheets,
                       const BesideSheets& beside) {
    const auto count = std::ranges::count_if(
        sheets, [](const CSSStyleSheet* sheet) { return IsInDocument(*sheet); });
    int number = 0;
    for (const CSSStyleSheet* const sheet : sheets) {
        std::string& name = names_[sheet];
        if (sheet->Origin() == Dom::CSS::CSSRule::UserAgent) {
            name = "user agent";
        } else if (IsInDocument(*sheet)) {
            name = count > 1 ? "<style " + std::to_string(++number) + ">" : "<style>";
        } else {
            name = beside.NameOf(sheet->Href());
        }
    }
}

std::string SheetNames::NameOf(const CSSStyleSheet* sheet) const {
    const auto found = names_.find(sheet);
    return found != names_.end() ? found->second : std::string();
}

}  // namespace Tool
