// SPDX-License-Identifier: MIT
#include "SheetEncoding.h"

#include "InputEncoding.h"

namespace Tool {

namespace {

// "ASCII" and "UTF-16BE" are what the reader of style sheets takes them for.
// clang-format off
constexpr SheetEncoding kEncodings[] = {
    {"UTF-8",      SourceForm::Utf8},
    {"UTF-16",     SourceForm::Utf16LE},
    {"UTF-16LE",   SourceForm::Utf16LE},
    {"UTF-16BE",   SourceForm::Utf16LE},
    {"ISO-10646",  SourceForm::Utf16LE},
    {"UNICODE",    SourceForm::Utf16LE},
    {"ISO-8859-1", SourceForm::Latin1},
    {"LATIN1",     SourceForm::Latin1},
    {"LATIN-1",    SourceForm::Latin1},
    {"ASCII",      SourceForm::Latin1},
};
// clang-format on

}  // namespace

std::span<const SheetEncoding> SheetEncodings() { return kEncodings; }

const SheetEncoding* FindSheetEncoding(std::string_view name) {
    for (const SheetEncoding& encoding : kEncodings) {
        if (IsSameEncodingName(encoding.name, name)) return &encoding;
    }
    return nullptr;
}

}  // namespace Tool
