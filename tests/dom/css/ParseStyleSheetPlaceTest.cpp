// SPDX-License-Identifier: MIT

// Lines and columns of rules and declarations, and the ways in which a sheet comes.

#include <espalier/dom/css/CSSMediaRule.h>
#include <espalier/dom/css/CSSStyleRule.h>
#include <espalier/dom/css/DecodeStyleSheet.h>
#include <espalier/io/MemoryStream.h>

#include "dom/css/SheetStory.h"
#include "support/FailingStream.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace {

using Dom::CSS::CSSStyleRule;
using Dom::CSS::CSSStyleSheet;
using Dom::CSS::ParseStyleSheet;
using Dom::CSS::SourcePlace;

const CSSStyleRule& StyleOf(const Dom::CSS::CSSRuleList& rules, unsigned index) {
    return static_cast<const CSSStyleRule&>(*rules.Item(index));
}

std::string Text(SourcePlace place) {
    return std::to_string(place.line) + ":" + std::to_string(place.column);
}

// The places of all properties, with a blank between them.
std::string PlacesOf(const CSSStyleRule& rule) {
    std::string text;
    for (unsigned i = 0; i < rule.Style().Length(); ++i)
        text += (text.empty() ? "" : " ") + Text(PlaceOf(rule.Style(), i));
    return text;
}

std::string ReadBytes(std::string_view bytes, const Dom::CSS::StyleSheetOptions& options = {}) {
    const std::vector<unsigned char> copy(bytes.begin(), bytes.end());
    const std::string rules = support::RulesOf(*ParseStyleSheet(copy, options));
    IO::MemoryStream stream(copy.data(), static_cast<long>(copy.size()));
    EXPECT_EQ(support::RulesOf(*ParseStyleSheet(stream, options)), rules);
    return rules;
}

std::string Wide(std::string_view ascii, bool isBigEndian) {
    std::string text;
    for (const char character : ascii) {
        if (isBigEndian) text += '\0';
        text += character;
        if (!isBigEndian) text += '\0';
    }
    return text;
}

}  // namespace

TEST(ParseStyleSheetPlace, OfRules) {
    const auto sheet =
        ParseStyleSheet("a{}\n  b{}c{}\r\n\td{}@media e{\nf{}}\n/*\n*/ \xC3\xA4{}g{}");
    const char* const places[] = {"1:1", "2:3", "2:6", "3:2", "3:5", "6:4", "6:7"};
    ASSERT_EQ(sheet->CssRules().Length(), std::size(places));
    for (unsigned i = 0; i < std::size(places); ++i)
        EXPECT_EQ(Text(sheet->CssRules().Item(i)->Place()), places[i]) << i;
    const auto& media = static_cast<const Dom::CSS::CSSMediaRule&>(*sheet->CssRules().Item(4));
    EXPECT_EQ(Text(media.CssRules().Item(0)->Place()), "4:1");
}

TEST(ParseStyleSheetPlace, OfDeclarations) {
    const auto sheet = ParseStyleSheet(
        "a { b: c; d: e }\n"
        "f {\n  b: c;\n  x y;\n  margin: 1px;\n  b: d\n}\n"
        "@media g {\n h[i='{'] { /* j */ k: l; --m: n; *o: p } }");
    EXPECT_EQ(PlacesOf(StyleOf(sheet->CssRules(), 0)), "1:5 1:11");
    EXPECT_EQ(PlacesOf(StyleOf(sheet->CssRules(), 1)), "3:3 5:3 5:3 5:3 5:3 6:3");
    const auto& media = static_cast<const Dom::CSS::CSSMediaRule&>(*sheet->CssRules().Item(2));
    EXPECT_EQ(PlacesOf(StyleOf(media.CssRules(), 0)), "9:21 9:27 9:35");
}

TEST(ParseStyleSheetPlace, OfChangedDeclarations) {
    const auto sheet = ParseStyleSheet("a { b: c;\nd: e }");
    auto& rule = static_cast<CSSStyleRule&>(*sheet->CssRules().Item(0));
    rule.Style().SetProperty("b", "f", "");
    rule.Style().SetProperty("g", "h", "");
    EXPECT_EQ(PlacesOf(rule), "2:1 1:5 0:0");
    EXPECT_EQ(PlaceOf(rule.Style(), 3), SourcePlace());
}

TEST(ParseStyleSheetPlace, OthersHaveNone) {
    CSSStyleSheet sheet(Dom::CSS::CSSRule::Author, nullptr, "", "");
    sheet.InsertRule("a { b: c }", 0);
    EXPECT_EQ(sheet.CssRules().Item(0)->Place(), SourcePlace());
    EXPECT_EQ(PlacesOf(StyleOf(sheet.CssRules(), 0)), "0:0");
    const Dom::CSS::CSSStyleDeclaration own(nullptr);
    EXPECT_EQ(PlaceOf(own, 0), SourcePlace());
}

TEST(ParseStyleSheetPlace, TextsFollowEachOtherInASheet) {
    CSSStyleSheet sheet(Dom::CSS::CSSRule::UserAgent, nullptr, "", "");
    ParseStyleSheet(sheet, "a{b:c}");
    ParseStyleSheet(sheet, "\n d{e:f}");
    EXPECT_EQ(support::RulesOf(sheet), "a { b: c } | d { e: f }");
    EXPECT_EQ(PlacesOf(StyleOf(sheet.CssRules(), 0)), "1:3");
    EXPECT_EQ(PlacesOf(StyleOf(sheet.CssRules(), 1)), "2:4");
}

TEST(ParseStyleSheetEncoding, AByteOrderMarkIsLeftOut) {
    EXPECT_EQ(support::RulesOf(*ParseStyleSheet("\xEF\xBB\xBF"
                                                "a{b:c}")),
              "a { b: c }");
    EXPECT_EQ(ParseStyleSheet("\xEF\xBB\xBF"
                              "a{b:c}")
                  ->CssRules()
                  .Item(0)
                  ->Place()
                  .column,
              1);
    EXPECT_EQ(ReadBytes("\xEF\xBB\xBF"
                        "a{b:c}"),
              "a { b: c }");
    EXPECT_EQ(ReadBytes("\xFE\xFF" + Wide("a{b:c}", true)), "a { b: c }");
    EXPECT_EQ(ReadBytes("\xFF\xFE" + Wide("a{b:c}", false)), "a { b: c }");
}

// CSS Syntax Level 3 section 3.2: mark, protocol, "@charset", environment, UTF-8.
TEST(ParseStyleSheetEncoding, IsFoundInThisOrder) {
    const char* const kUmlaut = "a { b: \xC3\xA4 }";
    const struct {
        std::string bytes;
        const char* protocol;
        const char* environment;
        std::string rules;
    } kCases[] = {
        {"a{b:\xC3\xA4}", "", "", kUmlaut},
        {"a{b:\xE4}", "ISO-8859-1", "", kUmlaut},
        {"a{b:\xE4}", " Latin1 ", "utf-8", kUmlaut},
        {"a{b:\xE4}", "", "windows-1252", kUmlaut},
        {"a{b:\xE4}", "none such", "windows-1252", kUmlaut},
        {"@charset \"latin1\";a{b:\xE4}", "", "", std::string("@charset \"latin1\"; | ") + kUmlaut},
        {"@charset \"latin1\";a{b:\xC3\xA4}", "utf-8", "",
         std::string("@charset \"latin1\"; | ") + kUmlaut},
        {"@charset \"utf-8\";a{b:\xC3\xA4}", "", "latin1",
         std::string("@charset \"utf-8\"; | ") + kUmlaut},
        {"@charset \"none such\";a{b:\xE4}", "", "latin1",
         std::string("@charset \"none such\"; | ") + kUmlaut},
        {"@charset \"utf-16\";a{b:\xC3\xA4}", "", "latin1",
         std::string("@charset \"utf-16\"; | ") + kUmlaut},
        {"@charset 'latin1';a{b:\xC3\xA4}", "", "", kUmlaut},
        {"\xEF\xBB\xBF"
         "a{b:\xC3\xA4}",
         "latin1", "latin1", kUmlaut},
        {"a{b:\x80}", "latin1", "", "a { b: \xE2\x82\xAC }"},
        {"a{b:\xE4}", "windows-1251", "", "a { b: \xD0\xB4 }"},
        {Wide("a{b:c}", true), "utf-16be", "", "a { b: c }"},
    };
    for (const auto& c : kCases) {
        EXPECT_EQ(ReadBytes(c.bytes,
                            {.protocolEncoding = c.protocol, .environmentEncoding = c.environment}),
                  c.rules)
            << c.bytes;
    }
}

TEST(ParseStyleSheetEncoding, TheTextCanBeHadWithoutTheSheet) {
    const auto decoded = [](const std::string& bytes, const char* protocol,
                            const char* environment) {
        const auto* const begin = reinterpret_cast<const unsigned char*>(bytes.data());
        return Dom::CSS::DecodeStyleSheet({begin, bytes.size()}, protocol, environment).str();
    };
    EXPECT_EQ(decoded("", "", ""), "");
    EXPECT_EQ(decoded("\xEF\xBB\xBF\xC3\xA4", "latin1", ""), "\xC3\xA4");
    EXPECT_EQ(decoded("\xE4", "latin1", "windows-1251"), "\xC3\xA4");
    EXPECT_EQ(decoded("\xE4", "", "windows-1251"), "\xD0\xB4");
    EXPECT_EQ(decoded("@charset \"latin1\";\xE4", "", "utf-8"), "@charset \"latin1\";\xC3\xA4");
    EXPECT_EQ(decoded("\xFF\xFE" + Wide("a{", false), "", ""), "a{");
    EXPECT_EQ(decoded("\xE4", "", ""), "\xEF\xBF\xBD");
}

// Encoding Standard section 4.1, by table 3-8 of Unicode.
TEST(ParseStyleSheetEncoding, WhatIsNoCharacterIsReplaced) {
    const std::string kBad = "\xEF\xBF\xBD";
    EXPECT_EQ(ReadBytes("a{b:\xE4;c:d}"), "a { b: " + kBad + "; c: d }");
    EXPECT_EQ(ReadBytes("a{b:\xC0\xAF}"), "a { b: " + kBad + kBad + " }");
    EXPECT_EQ(ReadBytes("a{b:\xE2\x82}"), "a { b: " + kBad + " }");
    EXPECT_EQ(ReadBytes("a{b:\xED\xA0\x80}"), "a { b: " + kBad + kBad + kBad + " }");
    EXPECT_EQ(ReadBytes("a{b:\xF0\x9F\x98\x80\xF5}"), "a { b: \xF0\x9F\x98\x80" + kBad + " }");
    EXPECT_EQ(ReadBytes("a{b:x\xF0\x9F"), "a { b: x" + kBad + " }");
}

TEST(ParseStyleSheetEncoding, LargeStreamsAreReadWhole) {
    std::string text;
    for (int i = 0; i < 50'000; ++i)
        text += "a{b:c}\n";
    const std::vector<unsigned char> bytes(text.begin(), text.end());
    IO::MemoryStream stream(bytes.data(), static_cast<long>(bytes.size()));
    const auto sheet = ParseStyleSheet(stream);
    ASSERT_EQ(sheet->CssRules().Length(), 50'000U);
    EXPECT_EQ(Text(sheet->CssRules().Item(49'999)->Place()), "50000:1");
}

TEST(ParseStyleSheetEncoding, WhatAStreamThrowsPasses) {
    const unsigned char bytes[] = {'a', '{', '}'};
    IO::MemoryStream inner(bytes, sizeof bytes);
    support::FailingStream stream(inner, 1, support::Failure::Throw);
    EXPECT_THROW(ParseStyleSheet(stream), Xml::Exception);
}
