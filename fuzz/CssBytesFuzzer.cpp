// SPDX-License-Identifier: MIT
//
// Takes bytes of a style sheet as they come from a file or the net. The first byte says what the
// protocol and the environment say about their encoding. What they are decoded to is UTF-8 that is
// whole, and a sheet of the bytes is that of the text. The same text is also taken as a list of
// declarations.

#include <espalier/css.h>

#include "ReaderStory.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Dom::CSS::CSSStyleDeclaration;
using Dom::CSS::CSSStyleSheet;
using Dom::CSS::DroppedText;
using fuzz::Require;

constexpr std::array<std::string_view, 8> kEncodings = {
    "", "utf-8", "utf-16", "UTF-16BE", "iso-8859-1", "windows-1251", "gb2312", "unknown"};

// All rules, and what was left out.
std::string TextsOf(const CSSStyleSheet& sheet, const std::vector<DroppedText>& dropped) {
    std::string texts;
    for (const Dom::CSS::CSSRule* const rule : sheet.CssRules())
        texts += rule->CssText().str() + "\n";
    for (const DroppedText& drop : dropped) {
        Require(drop.text.size() <= 80 && !drop.reason.empty());
        texts += std::to_string(drop.place.line) + ":" + std::to_string(drop.place.column) + " " +
                 drop.reason.str() + "\n";
    }
    return texts;
}

// What is made of a text as declarations is the same each time; what is left out has a reason.
void CheckDeclarations(std::string_view text) {
    std::vector<DroppedText> dropped;
    const std::unique_ptr<CSSStyleDeclaration> first = Dom::CSS::ParseDeclarations(text, &dropped);
    for (const DroppedText& drop : dropped)
        Require(!drop.reason.empty());
    const std::unique_ptr<CSSStyleDeclaration> second = Dom::CSS::ParseDeclarations(text);
    Require(first->Length() == second->Length() && first->CssText() == second->CssText());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::span<const unsigned char> bytes(data + 1, size - 1);
    const std::string_view protocol = kEncodings[data[0] % 8];
    const std::string_view environment = kEncodings[data[0] / 8 % 8];

    const astring text = Dom::CSS::DecodeStyleSheet(bytes, protocol, environment);
    Require(fuzz::IsUtf8(text, 0));

    // A mark at the begin of a text is taken off, too: of two of them in the bytes, both would be.
    if (std::string_view(text).starts_with("\xEF\xBB\xBF")) return 0;

    std::vector<DroppedText> droppedBytes, droppedText;
    const auto ofBytes = Dom::CSS::ParseStyleSheet(bytes, {.protocolEncoding = protocol,
                                                           .environmentEncoding = environment,
                                                           .dropped = &droppedBytes});
    const auto ofText =
        Dom::CSS::ParseStyleSheet(std::string_view(text), {.dropped = &droppedText});
    Require(TextsOf(*ofBytes, droppedBytes) == TextsOf(*ofText, droppedText));
    CheckDeclarations(text);
    return 0;
}
