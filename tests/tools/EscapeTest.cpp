// SPDX-License-Identifier: MIT
#include <espalier/io/StringStream.h>

#include "Escape.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>

namespace {

template <typename Write>
std::string Written(Write write, std::string_view text) {
    const auto out = std::make_unique<Tool::Output>();
    IO::StringStream stream;
    out->SetTarget(&stream);
    write(*out, text);
    out->Flush();
    return stream.GetString().str();
}

}  // namespace

TEST(Escape, QuotedTextIsThatOfC) {
    using std::string_view_literals::operator""sv;
    const struct {
        std::string_view text;
        const char* expected;
    } kCases[] = {
        {"", R"("")"},
        {"plain text, <b> & 'c'", R"("plain text, <b> & 'c'")"},
        {"a\n\r\tb", R"("a\n\r\tb")"},
        {"\"\\", R"("\"\\")"},
        {"\0\x1B[31m\x7F"sv, R"("\x00\x1B[31m\x7F")"},
        {"\x1B"
         "7",
         R"("\x1B7")"},
        {"\xC2\x85\xC2\x9B", R"("\u0085\u009B")"},  // controls of ISO 6429 beyond ASCII
        {"\xC2\xA0\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8D\x90",
         "\"\xC2\xA0\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8D\x90\""},
        {"\x80\xC3(\xED\xA0\x80\xF5", R"("\x80\xC3(\xED\xA0\x80\xF5")"},  // no UTF-8
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.expected);
        EXPECT_EQ(Written(Tool::WriteQuoted, c.text), c.expected);
    }
}

TEST(Escape, AWordHasNoBlanksAndNoBraces) {
    EXPECT_EQ(Written(Tool::WriteWord, "http://a.example/b?c={d} e\n"),
              R"(http://a.example/b?c=\x7Bd\x7D\x20e\n)");
}

TEST(Escape, JsonStringsFollowTheStandard) {
    using std::string_view_literals::operator""sv;
    const struct {
        std::string_view text;
        const char* expected;
    } kCases[] = {
        {"", R"("")"},
        {"a \"b\" \\c", R"("a \"b\" \\c")"},
        {"\n\r\t", R"("\n\r\t")"},
        {"\0\x01\x1F"sv, R"("\u0000\u0001\u001F")"},
        {"\x7F\xC2\x85", "\"\x7F\xC2\x85\""},
        {"\xE2\x82\xAC", "\"\xE2\x82\xAC\""},
        {"\x80z\xC3", R"("\uFFFDz\uFFFD")"},
        {"\xED\xA0\x80", R"("\uFFFD\uFFFD\uFFFD")"},  // half of a surrogate pair
        {"\xC0\xAF\xE0\x80\xAF", R"("\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD")"},  // overlong
        {"\xF4\x90\x80\x80", R"("\uFFFD\uFFFD\uFFFD\uFFFD")"},            // above U+10FFFF
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.expected);
        EXPECT_EQ(Written(Tool::WriteJsonString, c.text), c.expected);
    }
}

TEST(Output, TextLongerThanTheBufferIsWrittenWhole) {
    std::string text(200000, 'x');
    for (std::size_t i = 0; i < text.size(); i += 1000)
        text[i] = static_cast<char>('a' + i / 1000 % 26);
    const auto writeTwice = [](Tool::Output& out, std::string_view piece) {
        out.Write("start ");
        out.Write(piece);
        out.Write(piece.substr(0, 60000));
        out.Write(piece.substr(0, 60000));
        out.WriteNumber(std::numeric_limits<long>::min());
        out.Write('.');
    };
    EXPECT_EQ(Written(writeTwice, text),
              "start " + text + text.substr(0, 60000) + text.substr(0, 60000) +
                  std::to_string(std::numeric_limits<long>::min()) + ".");
}
