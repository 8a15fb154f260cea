// SPDX-License-Identifier: MIT
#include "dom/css/NumberText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <string_view>
#include <system_error>

#if !defined(__cpp_lib_to_chars)
#    include <algorithm>
#    include <cstdlib>
#    include <locale.h>  // newlocale and uselocale (POSIX.1-2008)
#    include <string>
#endif

namespace Dom::CSS::detail {

namespace {

struct FoundNumber {
    double value;
    std::size_t length;  // 0 for none
    bool isInRange;
};

#if defined(__cpp_lib_to_chars)

FoundNumber NumberAt(std::string_view text) {
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    return {value, static_cast<std::size_t>(result.ptr - text.data()), result.ec == std::errc()};
}

#else

// libc++ 16 reads integers alone by from_chars().

std::size_t CountDigits(std::string_view text) {
    return std::min(text.find_first_not_of("0123456789"), text.size());
}

// Returns how long the number is that a text begins with; 0 for none.
std::size_t NumberLength(std::string_view text) {
    std::size_t length = text.starts_with('-') ? 1 : 0;
    const std::size_t whole = CountDigits(text.substr(length));
    length += whole;
    std::size_t fraction = 0;
    if (text.substr(length).starts_with('.')) {
        fraction = CountDigits(text.substr(length + 1));
        if (whole + fraction > 0) length += 1 + fraction;
    }
    if (whole + fraction == 0) return 0;
    const std::string_view rest = text.substr(length);
    if (!rest.starts_with('e') && !rest.starts_with('E')) return length;
    const std::size_t sign = rest.substr(1).starts_with('+') || rest.substr(1).starts_with('-');
    const std::size_t digits = CountDigits(rest.substr(1 + sign));
    return digits == 0 ? length : length + 1 + sign + digits;
}

FoundNumber NumberAt(std::string_view text) {
    static const locale_t pointLocale = ::newlocale(LC_ALL_MASK, "C", locale_t{});
    const std::string number(text.substr(0, NumberLength(text)));
    const locale_t locale = ::uselocale(pointLocale);
    const double value = std::strtod(number.c_str(), nullptr);
    ::uselocale(locale);
    const bool isZero = number.find_first_of("123456789") >= number.find_first_of("eE");
    return {value, number.size(), std::isfinite(value) && (value != 0 || isZero)};
}

#endif

}  // namespace

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

std::optional<double> TakeDecimal(std::string_view& text) {
    constexpr std::string_view kFirst = "0123456789.";  // no "inf" and no "nan"
    const std::size_t first = text.starts_with('-') ? 1 : 0;
    if (first == text.size() || kFirst.find(text[first]) == kFirst.npos) return {};
    const FoundNumber found = NumberAt(text);
    if (found.length == 0 || !found.isInRange) return {};
    text.remove_prefix(found.length);
    return found.value;
}

}  // namespace Dom::CSS::detail
