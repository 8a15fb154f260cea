// SPDX-License-Identifier: MIT
#include "SheetEncoding.h"

#include "InputEncoding.h"

#include <algorithm>

namespace Tool {

namespace {

constexpr std::string_view kEncodings[] = {
    "UTF-8",        "UTF-16",       "UTF-16LE",     "UTF-16BE",     "windows-1250",
    "windows-1251", "windows-1252", "windows-1254", "windows-1257", "ISO-8859-1",
    "LATIN1",       "US-ASCII",     "ASCII",        "GB2312",       "EUC-KR"};

}  // namespace

std::span<const std::string_view> SheetEncodings() { return kEncodings; }

bool IsSheetEncoding(std::string_view name) {
    return std::ranges::any_of(
        kEncodings, [name](std::string_view known) { return IsSameEncodingName(known, name); });
}

}  // namespace Tool
