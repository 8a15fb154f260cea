// SPDX-License-Identifier: MIT
#include "dom/css/NumberText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string_view>
#include <system_error>

namespace Dom::CSS::detail {

void AppendNumber(astring& text, float number) {
    constexpr int kDigits = 6;              // what "%g" gives
    constexpr float kTooManyDigits = 1e6F;  // for an integer without an exponent
    std::array<char, 32> buffer;
    char* const begin = buffer.data();
    char* const end = begin + buffer.size();
    std::to_chars_result result{};
    // Most numbers are small integers, which need no arithmetic of many digits. -0 keeps its sign.
    if (std::fabs(number) < kTooManyDigits && std::trunc(number) == number &&
        !(number == 0 && std::signbit(number))) {
        result = std::to_chars(begin, end, static_cast<int>(number));
    } else {
        result = std::to_chars(begin, end, number, std::chars_format::general, kDigits);
    }
    text += std::string_view(begin, static_cast<std::size_t>(result.ptr - begin));
}

}  // namespace Dom::CSS::detail
