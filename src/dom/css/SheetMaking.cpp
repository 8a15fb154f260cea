// SPDX-License-Identifier: MIT
#include "dom/css/SheetMaking.h"

#include <espalier/dom/DOMException.h>
#include <espalier/dom/css/CssReader.h>

namespace Dom::CSS::detail {

std::unique_ptr<CSSStyleSheet> MakeSheet(const SheetNotes& notes, IO::Stream* stream,
                                         const astring& encoding) {
    auto sheet = std::make_unique<CSSStyleSheet>(&notes.owner, nullptr, notes.href, notes.title);
    if (!notes.media.empty()) sheet->GetMediaList().SetMediaText(notes.media);
    CssReader reader(stream, encoding);
    while (reader.Read()) {
        const astring rule = reader.ReadRule();
        if (rule.empty()) continue;  // no sheet takes it
        try {
            sheet->InsertRule(rule, sheet->CssRules().Length());
        } catch (const DOMException&) {
            // The others count.
        }
    }
    return sheet;
}

}  // namespace Dom::CSS::detail
