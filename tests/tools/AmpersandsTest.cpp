// SPDX-License-Identifier: MIT
#include "Ampersands.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

using std::string_view_literals::operator""sv;

TEST(AmpersandEscaper, KnowsTheFormsOfDocuments) {
    const struct {
        Tool::SourceForm form;
        std::string_view bytes;
        std::string_view expected;
    } kCases[] = {
        {Tool::SourceForm::Utf8, "a&b&&amp;", "a&amp;b&amp;&amp;amp;"},
        {Tool::SourceForm::Latin1, "\xE9&", "\xE9&amp;"},
        {Tool::SourceForm::Utf16LE, "&\0a\0"sv, "&\0a\0m\0p\0;\0a\0"sv},
        {Tool::SourceForm::Utf16BE, "\0&\0a"sv, "\0&\0a\0m\0p\0;\0a"sv},
        {Tool::SourceForm::Utf16BE, "\x26\x26\x01\x26"sv, "\x26\x26\x01\x26"sv},  // no "&"
        {Tool::SourceForm::Ucs4LE, "&\0\0\0"sv, "&\0\0\0a\0\0\0m\0\0\0p\0\0\0;\0\0\0"sv},
        {Tool::SourceForm::Ucs4BE, "\0\0\0&"sv, "\0\0\0&\0\0\0a\0\0\0m\0\0\0p\0\0\0;"sv},
    };
    for (const auto& c : kCases) {
        for (std::size_t piece = 1; piece <= c.bytes.size(); ++piece) {
            SCOPED_TRACE(c.bytes);
            Tool::AmpersandEscaper escaper(c.form);
            std::string out;
            for (std::size_t at = 0; at < c.bytes.size(); at += piece)
                escaper.Escape(c.bytes.substr(at, piece), out);
            EXPECT_EQ(out, c.expected);
        }
    }
}

TEST(UnescapeAmpersands, TakesBackWhatTheEscaperDid) {
    for (const std::string_view text : {"", "a", "&", "&amp;", "&&x;&amp;amp;", "a & b &#38;"}) {
        Tool::AmpersandEscaper escaper(Tool::SourceForm::Utf8);
        std::string escaped;
        escaper.Escape(text, escaped);
        EXPECT_EQ(Tool::UnescapeAmpersands(escaped), text);
    }
}
