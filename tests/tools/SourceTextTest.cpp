// SPDX-License-Identifier: MIT
#include "SourceText.h"

#include <gtest/gtest.h>

#include <string>

using Tool::DetectForm;
using Tool::SourceDecoder;
using Tool::SourceForm;
using std::string_view_literals::operator""sv;

TEST(SourceForm, ComesFromTheFirstBytesAndTheNameOfTheEncoding) {
    const struct {
        std::string_view head;
        const char* encoding;
        SourceForm expected;
    } kCases[] = {
        {"<?xm", "UTF-8", SourceForm::Utf8},
        {"<?xm", "", SourceForm::Utf8},
        {"<?xm", "ASCII", SourceForm::Utf8},
        {"", "", SourceForm::Utf8},
        {"\xEF\xBB\xBF<", "UTF-8", SourceForm::Utf8},
        {"<?xm", "ISO-8859-1", SourceForm::Latin1},
        {"<?xm", "Windows-1252", SourceForm::SingleByte},
        {"<?xm", "EUC-KR", SourceForm::DoubleByte},
        {"<?xm", "GB2312", SourceForm::DoubleByte},
        {"\xFF\xFE<\0"sv, "UTF-16LE", SourceForm::Utf16LE},
        {"<\0?\0"sv, "UTF-16LE", SourceForm::Utf16LE},
        {"\xFE\xFF\0<"sv, "UTF-16BE", SourceForm::Utf16BE},
        {"\0<\0?"sv, "UTF-16BE", SourceForm::Utf16BE},
        {"\xFF\xFE\0\0"sv, "IS0-10646-UCS-4", SourceForm::Ucs4LE},
        {"<\0\0\0"sv, "IS0-10646-UCS-4", SourceForm::Ucs4LE},
        {"\0\0\xFE\xFF"sv, "IS0-10646-UCS-4", SourceForm::Ucs4BE},
        {"\0\0\0<"sv, "IS0-10646-UCS-4", SourceForm::Ucs4BE},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.encoding);
        EXPECT_EQ(DetectForm(c.head, c.encoding), c.expected);
    }
}

TEST(SourceDecoder, DecodesAtEverySplit) {
    const struct {
        SourceForm form;
        std::string_view bytes;
        const char* expected;
    } kCases[] = {
        {SourceForm::Utf8, "\xEF\xBB\xBF<\xC3\xA9", "<\xC3\xA9"},
        {SourceForm::Latin1, "a\xE9\x80", "a\xC3\xA9\xC2\x80"},
        {SourceForm::SingleByte, "a\xE9z", "a\xEF\xBF\xBDz"},
        {SourceForm::DoubleByte, "a\xB0\xA1z", "a\xEF\xBF\xBDz"},
        {SourceForm::Utf16LE, "\xFF\xFE<\0\xAC\x20\x3C\xD8\x50\xDF"sv,
         "<\xE2\x82\xAC\xF0\x9F\x8D\x90"},
        {SourceForm::Utf16BE, "\xFE\xFF\0<\x20\xAC\xD8\x3C\xDF\x50"sv,
         "<\xE2\x82\xAC\xF0\x9F\x8D\x90"},
        {SourceForm::Utf16BE, "\0<\xD8\x3C\0a\xDF\x50"sv,
         "<\xEF\xBF\xBD"
         "a\xEF\xBF\xBD"},
        {SourceForm::Ucs4LE, "\xFF\xFE\0\0<\0\0\0\x50\xF3\x01\0"sv, "<\xF0\x9F\x8D\x90"},
        {SourceForm::Ucs4BE, "\0\0\xFE\xFF\0\0\0<\0\x01\xF3\x50\x7F\0\0\0"sv,
         "<\xF0\x9F\x8D\x90\xEF\xBF\xBD"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.expected);
        for (std::size_t split = 0; split <= c.bytes.size(); ++split) {
            if (c.form == SourceForm::Utf8 && split > 0 && split < 3) continue;  // cut marks stay
            SourceDecoder decoder(c.form);
            std::string text(decoder.Decode(c.bytes.substr(0, split)));
            text += decoder.Decode(c.bytes.substr(split));
            EXPECT_EQ(text, c.expected) << "split at " << split;
        }
    }
}
