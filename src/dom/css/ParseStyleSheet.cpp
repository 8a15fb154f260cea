// SPDX-License-Identifier: MIT
#include <espalier/dom/css/ParseStyleSheet.h>

#include "dom/css/RuleMaking.h"
#include "dom/css/SheetDecoding.h"
#include "dom/css/SheetParser.h"

#include <algorithm>
#include <utility>

namespace Dom::CSS {

namespace {

void Parse(CSSStyleSheet& sheet, std::unique_ptr<const std::string> text,
           const StyleSheetOptions& options) {
    const char* const kept = detail::RuleMaking::Keep(sheet, std::move(text));
    detail::SheetParser(sheet, kept, options.dropped).Parse();
}

std::vector<unsigned char> ReadAll(IO::Stream& stream) {
    constexpr std::size_t kPiece = 65536;
    std::vector<unsigned char> bytes;
    for (;;) {
        const std::size_t length = bytes.size();
        const std::size_t room = std::max(kPiece, length / 2);
        constexpr std::size_t kMostRoom = 1U << 30;
        bytes.resize(length + std::min(room, kMostRoom));
        const int count =
            stream.Read(bytes.data() + length, 0, static_cast<int>(bytes.size() - length));
        bytes.resize(length + static_cast<std::size_t>(std::max(count, 0)));
        if (count <= 0) return bytes;
    }
}

template <typename Source>
std::unique_ptr<CSSStyleSheet> Make(Source& source, const StyleSheetOptions& options) {
    auto sheet = std::make_unique<CSSStyleSheet>(options.origin, nullptr, "", "");
    ParseStyleSheet(*sheet, source, options);
    return sheet;
}

}  // namespace

void ParseStyleSheet(CSSStyleSheet& sheet, std::string_view text,
                     const StyleSheetOptions& options) {
    Parse(sheet, detail::TextOf(text), options);
}

void ParseStyleSheet(CSSStyleSheet& sheet, std::span<const unsigned char> bytes,
                     const StyleSheetOptions& options) {
    Parse(sheet, detail::Decode(bytes, options.protocolEncoding, options.environmentEncoding),
          options);
}

void ParseStyleSheet(CSSStyleSheet& sheet, IO::Stream& stream, const StyleSheetOptions& options) {
    ParseStyleSheet(sheet, std::span<const unsigned char>(ReadAll(stream)), options);
}

std::unique_ptr<CSSStyleSheet> ParseStyleSheet(std::string_view text,
                                               const StyleSheetOptions& options) {
    return Make(text, options);
}

std::unique_ptr<CSSStyleSheet> ParseStyleSheet(std::span<const unsigned char> bytes,
                                               const StyleSheetOptions& options) {
    return Make(bytes, options);
}

std::unique_ptr<CSSStyleSheet> ParseStyleSheet(IO::Stream& stream,
                                               const StyleSheetOptions& options) {
    return Make(stream, options);
}

}  // namespace Dom::CSS
