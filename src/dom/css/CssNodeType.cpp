// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CssNodeType.h>

#include <array>

namespace Dom::CSS {

namespace {

constexpr std::array<const char*, 8> kNames = {"Node",    "Rule",    "Selector", "StartDecl",
                                               "EndDecl", "Comment", "Property", "Whitespace"};

}  // namespace

astring CssNodeType::ToString() const {
    const auto index = static_cast<unsigned>(type_);
    return index < kNames.size() ? kNames[index] : "???";
}

}  // namespace Dom::CSS
