// SPDX-License-Identifier: MIT
#include "SelectingPart.h"

#include <espalier/dom/css/Selector.h>
#include <espalier/dom/css/SelectorException.h>

#include <algorithm>

namespace Tool {

namespace {

constexpr std::string_view kSpace = " \t\r\n\f";

// Returns where the first selector ends: at a comma that is in no brackets and no string, or at the
// end of the text.
std::size_t FirstLength(std::string_view selectors) {
    std::size_t depth = 0;
    char quote = 0;
    for (std::size_t i = 0; i < selectors.size(); ++i) {
        const char byte = selectors[i];
        if (byte == '\\') {
            ++i;
        } else if (quote != 0) {
            if (byte == quote) quote = 0;
        } else if (byte == '"' || byte == '\'') {
            quote = byte;
        } else if (byte == '(' || byte == '[') {
            ++depth;
        } else if (byte == ')' || byte == ']') {
            depth -= std::min<std::size_t>(depth, 1);
        } else if (byte == ',' && depth == 0) {
            return i;
        }
    }
    return selectors.size();
}

std::string_view Trim(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(kSpace), text.size()));
    return text.substr(0, text.find_last_not_of(kSpace) + 1);
}

// A selector that the library knows in sheets only selects nothing here.
bool Selects(std::string_view selector, const Dom::Element& element, std::string_view pseudo) {
    try {
        return Dom::CSS::Selector(selector).Matches(element, pseudo);
    } catch (const Dom::CSS::SelectorException&) {
        return false;
    }
}

}  // namespace

std::string_view SelectingPart(std::string_view selectors, const Dom::Element& element,
                               std::string_view pseudo) {
    std::string_view selecting;
    std::string_view rest = selectors;
    while (!rest.empty()) {
        const std::size_t length = FirstLength(rest);
        const std::string_view selector = Trim(rest.substr(0, length));
        rest.remove_prefix(std::min(length + 1, rest.size()));
        if (!Selects(selector, element, pseudo)) continue;
        if (!selecting.empty()) return selectors;
        selecting = selector;
    }
    return selecting.empty() ? selectors : selecting;
}

}  // namespace Tool
