// SPDX-License-Identifier: MIT
#include "SelectorArgument.h"

#include <espalier/dom/css/SelectorException.h>

#include "Utf8.h"

#include <fmt/format.h>

#include <algorithm>

namespace Tool {

std::optional<Dom::CSS::Selector> ReadSelector(const std::string& text,
                                               const Dom::CSS::NamespacePrefixes& prefixes,
                                               std::string_view verb, Context& context) {
    try {
        return Dom::CSS::Selector(text, prefixes);
    } catch (const Dom::CSS::SelectorException& error) {
        std::string shown = text;
        std::replace_if(
            shown.begin(), shown.end(), [](char byte) { return byte >= 0 && byte < ' '; }, ' ');
        const std::string_view before = std::string_view(shown).substr(0, error.Position());
        const auto columns = std::count_if(before.begin(), before.end(),
                                           [](char byte) { return !IsContinuation(byte); });
        context.console.Complain(
            fmt::format("{}: syntax error in selector\n  {}\n  {:{}}^", verb, shown, "", columns));
        return std::nullopt;
    }
}

}  // namespace Tool
