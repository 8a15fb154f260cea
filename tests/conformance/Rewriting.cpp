// SPDX-License-Identifier: MIT
#include "Rewriting.h"

#include "support/Utf8Text.h"

#include <algorithm>

namespace conformance {
namespace {

constexpr std::string_view kUtf8 = "UTF-8";
constexpr std::string_view kUtf16 = "UTF-16";

// Decodes UTF-16 behind its mark.
std::optional<std::string> Utf8OfUtf16(std::string_view bytes, bool bigEndian) {
    std::string text;
    char32_t high = 0;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto first = static_cast<unsigned char>(bytes[i]);
        const auto second = static_cast<unsigned char>(bytes[i + 1]);
        const char32_t unit = bigEndian ? first * 256U + second : second * 256U + first;
        const bool isHigh = unit >= 0xD800 && unit < 0xDC00;
        const bool isLow = unit >= 0xDC00 && unit < 0xE000;
        if ((high != 0) != isLow) return std::nullopt;
        if (isLow) support::AppendUtf8(text, 0x10000 + ((high - 0xD800) << 10) + (unit - 0xDC00));
        if (!isHigh && !isLow) support::AppendUtf8(text, unit);
        high = isHigh ? unit : 0;
    }
    return high != 0 || bytes.size() % 2 != 0 ? std::nullopt : std::optional(text);
}

// Where the name of the encoding stands.
struct Place {
    std::size_t begin = 0;
    std::size_t length = 0;
};

std::optional<Place> DeclaredEncoding(std::string_view utf8) {
    if (!utf8.starts_with("<?xml")) return std::nullopt;
    const std::size_t end = utf8.find("?>");
    const std::size_t word = utf8.find("encoding");
    if (end == std::string_view::npos || word > end) return std::nullopt;
    const std::size_t quote = utf8.find_first_of("\"'", word);
    if (quote > end) return std::nullopt;
    const std::size_t close = utf8.find(utf8[quote], quote + 1);
    if (close > end) return std::nullopt;
    return Place{quote + 1, close - quote - 1};
}

std::string InCapitals(std::string_view name) {
    std::string capitals(name);
    for (char& c : capitals)
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    return capitals;
}

}  // namespace

std::optional<std::string> Rewrite(std::string_view document, const support::DocumentForm& form,
                                   std::string_view name) {
    const bool isBigEndian = document.starts_with("\xFE\xFF");
    const bool isUtf16 = isBigEndian || document.starts_with("\xFF\xFE");
    const bool isMarkedUtf8 = document.starts_with("\xEF\xBB\xBF");
    if (isMarkedUtf8) document.remove_prefix(3);
    std::optional<std::string> utf8 =
        isUtf16 ? Utf8OfUtf16(document.substr(2), isBigEndian) : std::string(document);
    if (!utf8) return std::nullopt;
    if (const std::optional<Place> place = DeclaredEncoding(*utf8)) {
        const std::string declared = InCapitals(utf8->substr(place->begin, place->length));
        const std::string_view own = isUtf16 ? kUtf16 : kUtf8;
        if (declared == own) {
            utf8->replace(place->begin, place->length, name);
        } else if (isUtf16 || isMarkedUtf8 || declared == kUtf16) {
            return std::nullopt;
        }
    }
    return support::WriteInForm(*utf8, form);
}

}  // namespace conformance
