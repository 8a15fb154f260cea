// SPDX-License-Identifier: MIT
#include "encoding/CharClass.h"

#include <cstdint>
#include <span>

namespace Xml::detail {

namespace {

#include "encoding/tables/NameClasses.inc"

// A number beyond the end of a bitmap is not in it; a negative one becomes such a number.
bool IsIn(std::span<const std::uint32_t> bitmap, int code) {
    const auto value = static_cast<unsigned>(code);
    const std::size_t word = value / 32;
    return word < bitmap.size() && (bitmap[word] & (0x80000000U >> value % 32)) != 0;
}

}  // namespace

int ClassOfScalarValue(int code) {
    if (IsIn(kBaseChar, code)) return ToInt(CharClass::Underscore);
    if (IsIn(kCombiningChar, code)) return ToInt(CharClass::Period);
    if (IsIn(kDigit, code)) return ToInt(CharClass::Digit);
    return ToInt(CharClass::Other);
}

}  // namespace Xml::detail
