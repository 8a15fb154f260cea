// SPDX-License-Identifier: MIT
#include <espalier/encoding/Encoding.h>

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
        Xml::Encoding* page = nullptr;
    } kCases[] = {
        {SourceForm::Utf8, "\xEF\xBB\xBF<\xC3\xA9", "<\xC3\xA9"},
        {SourceForm::Latin1, "a\xE9\x80", "a\xC3\xA9\xC2\x80"},
        {SourceForm::CodePage, "a\x80z?", "a\xE2\x82\xACz?", Xml::Encoding::Windows_1252()},
        {SourceForm::CodePage, "a\xB0\xA1z", "a\xEA\xB0\x80z", Xml::Encoding::EUC_KR()},
        {SourceForm::CodePage, "a\xB0\xA1\x80z", "a\xE5\x95\x8A\xEF\xBF\xBDz",
         Xml::Encoding::GB2312()},
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
            SourceDecoder decoder(c.form, c.page);
            std::string text(decoder.Decode(c.bytes.substr(0, split)));
            text += decoder.Decode(c.bytes.substr(split));
            EXPECT_EQ(text, c.expected) << "split at " << split;
        }
    }
}

TEST(SourceDecoder, KeepsBadBytesBadForAReader) {
    const struct {
        SourceForm form;
        std::string_view bytes;
        const char* expected;
        Xml::Encoding* page = nullptr;
    } kCases[] = {
        {SourceForm::Utf8, "\xEF\xBB\xBF<\xC3", "\xEF\xBB\xBF<\xC3"},
        {SourceForm::Utf16LE, "a\0\x50\xDF"sv, "a\xFF"},                      // half a pair
        {SourceForm::Utf16LE, "a\0\x3C\xD8"sv, "a\xFF"},                      // the other half
        {SourceForm::Utf16BE, "\0a\0"sv, "a\xFF"},                            // half a unit
        {SourceForm::CodePage, "a\xB0", "a\xFF", Xml::Encoding::EUC_KR()},    // half a character
        {SourceForm::CodePage, "a\x80?", "a\xFF?", Xml::Encoding::EUC_KR()},  // none begins so
        {SourceForm::CodePage, "\xAA\xA1", "\xFF", Xml::Encoding::GB2312()},  // an empty row
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.expected);
        SourceDecoder decoder(c.form, c.page, Tool::BadBytes::Kept);
        std::string text(decoder.Decode(c.bytes));
        EXPECT_EQ(text.append(decoder.Finish()), c.expected);
    }
}
