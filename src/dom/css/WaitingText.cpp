// SPDX-License-Identifier: MIT
#include "dom/css/WaitingText.h"

#include <cstring>

namespace Dom::CSS::detail {

std::unique_ptr<const WaitingText> WaitingText::Make(std::string_view text, const Weight& weight) {
    auto* const made = new (text.size()) WaitingText(text.size(), weight);
    if (!text.empty()) std::memcpy(made->Characters(), text.data(), text.size());
    return std::unique_ptr<const WaitingText>(made);
}

}  // namespace Dom::CSS::detail
