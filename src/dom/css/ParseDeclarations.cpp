// SPDX-License-Identifier: MIT
#include <espalier/dom/css/ParseDeclarations.h>

#include "dom/css/BlockScanner.h"
#include "dom/css/ComponentScanner.h"
#include "dom/css/DropRecorder.h"
#include "dom/css/RuleMaking.h"
#include "dom/css/SheetDecoding.h"

namespace Dom::CSS {

std::unique_ptr<CSSStyleDeclaration> ParseDeclarations(std::string_view text,
                                                       std::vector<DroppedText>* dropped) {
    auto style = std::make_unique<CSSStyleDeclaration>(nullptr);
    const auto kept = detail::TextOf(text);
    detail::ComponentScanner scanner(kept->c_str());
    detail::BlockScanner declarations(scanner, detail::BlockScanner::End::Text);
    detail::DropRecorder drops(kept->c_str(), dropped);
    detail::ScannedDeclaration declaration;
    while (declarations.Next(declaration)) {
        if (declaration.fault == nullptr) {
            detail::RuleMaking::AddDeclaration(*style, declaration);
        } else if (drops.IsWanted()) {
            drops.Drop(DroppedText::Kind::Declaration, drops.PlaceAt(declaration.begin),
                       declaration.begin, declaration.end, declaration.fault);
        }
    }
    return style;
}

}  // namespace Dom::CSS
