// SPDX-License-Identifier: MIT
#include "dom/css/AddressText.h"

#include "dom/css/AsciiCase.h"

#include <string>
#include <string_view>

namespace Dom::CSS::detail {

std::optional<astring> ReadAddress(TextCursor& cursor) {
    astring buffer;
    if (const auto text = ReadString(cursor, buffer)) return astring(*text);
    constexpr std::string_view kUrl = "url(";
    const std::string_view rest(cursor.at, static_cast<std::size_t>(cursor.end - cursor.at));
    if (!EqualIgnoringCase(rest.substr(0, kUrl.size()), kUrl)) return std::nullopt;
    const std::string lower = std::string(kUrl) + std::string(rest.substr(kUrl.size()));
    TextCursor address(lower);
    const auto href = ReadUrl(address, buffer);
    if (!href) return std::nullopt;
    cursor.at += address.at - lower.data();
    return astring(*href);
}

}  // namespace Dom::CSS::detail
