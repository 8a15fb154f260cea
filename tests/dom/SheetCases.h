// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

/// \file
/// The sheets that links and instructions lead to in tests.

namespace support {

/// A sheet in some encoding, and the rules that are read when a link names that by `charset`.
struct CharsetCase {
    const char* charset;
    std::string bytes;
    std::string rules;
};

inline std::vector<CharsetCase> CharsetCases() {
    using namespace std::string_literals;
    const std::string utf8 = ".\xC3\xA9{a:b}";
    const std::string latin1 = ".\xE9{a:b}";
    const std::string little = ".\0\xE9\0{\0a\0:\0b\0}\0"s;
    const std::string big = "\0.\0\xE9\0{\0a\0:\0b\0}"s;
    const std::string expected = "[.\xC3\xA9 { a: b }]";
    const std::string utf8AsLatin1 = "[.\xC3\x83\xC2\xA9 { a: b }]";
    return {
        {"", utf8, utf8AsLatin1},
        {"ISO-8859-1", latin1, expected},
        {"iso-8859-1", latin1, expected},
        {"ASCII", latin1, expected},
        {"LATIN1", latin1, expected},
        {"LATIN-1", latin1, expected},
        {"latin-1", latin1, expected},
        {"ISO-10646", little, expected},
        {"UNICODE", little, expected},
        {"UTF-16", little, expected},
        {"utf-16", little, expected},
        {"UTF-16LE", little, expected},
        {"UTF-16BE", little, expected},
        {"UTF-16", "\xFF\xFE" + little, expected},
        {"UTF-16", "\xFE\xFF" + big, expected},
        {"UTF-16BE", "\xFE\xFF" + big, expected},
        {"UTF-8", utf8, expected},
        {"utf-8", utf8, expected},
        {"windows-1252", utf8, expected},
        {"anything", utf8, expected},
    };
}

/// A sheet, and the rules of it that are not refused.
inline constexpr struct {
    const char* text;
    const char* rules;
} kSheetCases[] = {
    {"", ""},
    {" \n ", ""},
    {"/* c */", ""},
    {"p { a: b }", "[p { a: b }]"},
    // White space at the end is read as a rule without a text, which no sheet takes.
    {"p { a: b }\n\n", "[p { a: b }]"},
    {" p { a: b } \n\n q { c: d } \n", "[p { a: b }][q { c: d }]"},
    {"p { a: b } q { c: d } r { e: f }", "[p { a: b }][q { c: d }][r { e: f }]"},
    {"p { a: b } q~r { c: d } s { e: f }", "[p { a: b }][s { e: f }]"},
    {"q::before { c: d } p { a: b }", "[p { a: b }]"},
    {"p { a: b } q ~ r { c: d }", "[p { a: b }]"},
    {"q~r { c: d }", ""},
    {"p { margin: !important } q { a: b }", "[q { a: b }]"},
    {"@media print { a: b }", "[@media print { a: b; }]"},
    {"<!-- p { a: b } -->", ""},
};

}  // namespace support
