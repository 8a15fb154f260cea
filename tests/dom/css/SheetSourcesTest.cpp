// SPDX-License-Identifier: MIT
// Every way that leads to a sheet, in every encoding and damaged in every place: elements "style",
// elements "link" and instructions, by LoadStyleSheets() and by CollectStyleSheets().
#include <espalier/dom/css/CollectStyleSheets.h>
#include <espalier/dom/css/LoadStyleSheets.h>

#include "dom/HtmlPage.h"
#include "dom/SheetCases.h"
#include "dom/css/SheetMap.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <functional>  // std::ref
#include <string>
#include <string_view>
#include <vector>

namespace {

using Dom::HTMLDocument;
using support::SheetMap;

// What stands before the root element, and in it.
struct Source {
    const char* name;
    std::string prolog;
    std::string content;
};

// The sources that lead to a.css, with what else they say of it.
std::vector<Source> Linking(const std::string& attributes) {
    const std::string said = "href='a.css' type='text/css' " + attributes;
    return {{"link", "", "<link rel='stylesheet' " + said + "/>"},
            {"instruction", "<?xml-stylesheet " + said + "?>", ""}};
}

// The source that holds a text.
Source Holding(const std::string& text) {
    return {"style", "", "<style type='text/css'><![CDATA[" + text + "]]></style>"};
}

std::string PageWith(const Source& source) {
    return source.prolog + "<html xmlns='http://www.w3.org/1999/xhtml'>" + source.content +
           "</html>";
}

// The rules of the one sheet of a page, as LoadStyleSheets() makes it.
std::string Loaded(const std::string& page, const std::string& bytes = "") {
    SheetMap host{{"a.css", bytes}};
    HTMLDocument document;
    document.LoadXml(page);
    Dom::CSS::LoadStyleSheets(document, std::ref(host));
    if (document.StyleSheets().Length() != 1) return "no sheet";
    return support::Rules(static_cast<Dom::CSS::CSSStyleSheet*>(document.StyleSheets().Item(0)));
}

// The same, as CollectStyleSheets() finds it.
std::string Collected(const std::string& page, const std::string& bytes = "") {
    SheetMap host{{"a.css", bytes}};
    Dom::Document document;
    document.LoadXml(page);
    const auto sheets = Dom::CSS::CollectStyleSheets(document, std::ref(host));
    return sheets.size() == 1 ? support::Rules(sheets[0].sheet.get()) : "no sheet";
}

std::string Utf16(std::string_view text, bool bigEndian) {
    std::string bytes;
    for (const char character : text) {
        if (bigEndian) bytes += '\0';
        bytes += character;
        if (!bigEndian) bytes += '\0';
    }
    return bytes;
}

// A character beyond ASCII in the encodings that have ASCII in them, in each and in UTF-8.
const struct {
    const char* encoding;
    const char* bytes;
    const char* character;
} kCodePages[] = {
    {"UTF-8", "\xC3\xA9", "\xC3\xA9"},      {"ISO-8859-1", "\xE9", "\xC3\xA9"},
    {"windows-1250", "\xF5", "\xC5\x91"},   {"windows-1251", "\xFF", "\xD1\x8F"},
    {"windows-1252", "\x9C", "\xC5\x93"},   {"windows-1254", "\xF0", "\xC4\x9F"},
    {"windows-1257", "\xFE", "\xC5\xBE"},   {"GB2312", "\xD6\xD0", "\xE4\xB8\xAD"},
    {"EUC-KR", "\xC7\xD1", "\xED\x95\x9C"},
};

std::string SheetOf(const std::string& character) { return "." + character + "{a:b}"; }
std::string RulesOf(const std::string& character) { return "[." + character + " { a: b }]"; }

}  // namespace

// A reader of sheets knows ISO-8859-1, UTF-16 and UTF-8 by their names.
TEST(SheetSources, LoadedInEveryCharsetThatALinkMayName) {
    for (const support::CharsetCase& c : support::CharsetCases()) {
        for (const Source& source : Linking(std::string("charset='") + c.charset + "'")) {
            SCOPED_TRACE(std::string(source.name) + " " + c.charset);
            EXPECT_EQ(Loaded(PageWith(source), c.bytes), c.rules);
        }
    }
}

TEST(SheetSources, LoadedWithoutACharsetTheyAreLatin1) {
    for (const Source& source : Linking("")) {
        SCOPED_TRACE(source.name);
        EXPECT_EQ(Loaded(PageWith(source), SheetOf("\xE9")), RulesOf("\xC3\xA9"));
        // What the document is in changes nothing.
        EXPECT_EQ(Loaded("<?xml version='1.0' encoding='windows-1251'?>" + PageWith(source),
                         SheetOf("\xE9")),
                  RulesOf("\xC3\xA9"));
    }
}

TEST(SheetSources, StylesAreInTheEncodingOfTheDocument) {
    for (const auto& c : kCodePages) {
        SCOPED_TRACE(c.encoding);
        const std::string page = std::string("<?xml version='1.0' encoding='") + c.encoding +
                                 "'?>" + PageWith(Holding(SheetOf(c.bytes)));
        EXPECT_EQ(Loaded(page), RulesOf(c.character));
        EXPECT_EQ(Collected(page), RulesOf(c.character));
    }
    for (const bool bigEndian : {false, true}) {
        SCOPED_TRACE(bigEndian);
        // A reference, as what is below has no character beyond ASCII.
        const std::string page =
            "<html xmlns='http://www.w3.org/1999/xhtml'><style>.&#xE9;{a:b}</style></html>";
        const std::string bytes = (bigEndian ? "\xFE\xFF" : "\xFF\xFE") + Utf16(page, bigEndian);
        EXPECT_EQ(Loaded(bytes), RulesOf("\xC3\xA9"));
        EXPECT_EQ(Collected(bytes), RulesOf("\xC3\xA9"));
    }
}

// The text is not bytes any more: what it says of its encoding counts for nothing.
TEST(SheetSources, StylesHaveNoCharset) {
    const Source source = {"style", "",
                           "<style charset='ISO-8859-1'>@charset \"ISO-8859-1\"; .\xC3\xA9{a:b}"
                           "</style>"};
    EXPECT_EQ(Collected(PageWith(source)), "[@charset \"ISO-8859-1\";][.\xC3\xA9 { a: b }]");
    const Source plain = {"style", "", "<style charset='ISO-8859-1'>.\xC3\xA9{a:b}</style>"};
    EXPECT_EQ(Loaded(PageWith(plain)), RulesOf("\xC3\xA9"));
}

TEST(SheetSources, CollectedInEveryCharsetByEveryWayToSayIt) {
    for (const auto& c : kCodePages) {
        SCOPED_TRACE(c.encoding);
        const std::string name = c.encoding;
        const std::string declaration = "<?xml version='1.0' encoding='" + name + "'?>";
        for (const Source& source : Linking("charset='" + name + "'")) {
            SCOPED_TRACE(source.name);
            EXPECT_EQ(Collected(PageWith(source), SheetOf(c.bytes)), RulesOf(c.character));
        }
        for (const Source& source : Linking("")) {
            SCOPED_TRACE(source.name);
            EXPECT_EQ(Collected(PageWith(source), "@charset \"" + name + "\";" + SheetOf(c.bytes)),
                      "[@charset \"" + name + "\";]" + RulesOf(c.character));
            EXPECT_EQ(Collected(declaration + PageWith(source), SheetOf(c.bytes)),
                      RulesOf(c.character));
        }
    }
}

TEST(SheetSources, CollectedInUtf16) {
    using namespace std::string_literals;
    const std::string little = ".\0\xE9\0{\0a\0:\0b\0}\0"s;
    const std::string big = "\0.\0\xE9\0{\0a\0:\0b\0}"s;
    const struct {
        const char* attributes;
        std::string bytes;
    } kCases[] = {
        {"", "\xFF\xFE" + little},
        {"", "\xFE\xFF" + big},
        {"charset='UTF-8'", "\xFF\xFE" + little},
        {"charset='UTF-16'", little},
        {"charset='utf-16le'", little},
        {"charset='UTF-16BE'", big},
        {"charset='UTF-16LE'", "\xFE\xFF" + big},
    };
    for (const auto& c : kCases) {
        for (const Source& source : Linking(c.attributes)) {
            SCOPED_TRACE(std::string(source.name) + " " + c.attributes);
            EXPECT_EQ(Collected(PageWith(source), c.bytes), RulesOf("\xC3\xA9"));
        }
    }
    // A document in UTF-16 has such sheets, too.
    for (const Source& source : Linking("")) {
        SCOPED_TRACE(source.name);
        EXPECT_EQ(Collected("\xFF\xFE" + Utf16(PageWith(source), false), little),
                  RulesOf("\xC3\xA9"));
        EXPECT_EQ(Collected("\xFE\xFF" + Utf16(PageWith(source), true), big), RulesOf("\xC3\xA9"));
    }
}

// A mark, then what the sheet says, then the link, then the document, then UTF-8.
TEST(SheetSources, WhatIsNearestTellsTheEncoding) {
    const struct {
        const char* declaration;
        const char* attributes;
        std::string bytes;
        const char* rules;
    } kCases[] = {
        {"", "", ".\xD1\x8F{}", "[.\xD1\x8F {  }]"},
        {"", "charset='windows-1250'", ".\xF5{}", "[.\xC5\x91 {  }]"},
        {"<?xml version='1.0' encoding='windows-1251'?>", "", ".\xFF{}", "[.\xD1\x8F {  }]"},
        {"<?xml version='1.0' encoding='windows-1251'?>", "charset='windows-1250'", ".\xF5{}",
         "[.\xC5\x91 {  }]"},
        {"<?xml version='1.0' encoding='windows-1251'?>", "charset='windows-1250'",
         "@charset \"windows-1257\";.\xFE{}", "[@charset \"windows-1257\";][.\xC5\xBE {  }]"},
        {"<?xml version='1.0' encoding='windows-1251'?>", "charset='windows-1250'",
         "\xEF\xBB\xBF.\xC3\xA9{}", "[.\xC3\xA9 {  }]"},
        // A name that is not known counts for nothing.
        {"<?xml version='1.0' encoding='windows-1251'?>", "charset='x'", ".\xFF{}",
         "[.\xD1\x8F {  }]"},
        {"", "charset='x'", ".\xD1\x8F{}", "[.\xD1\x8F {  }]"},
        {"", "charset=''", ".\xD1\x8F{}", "[.\xD1\x8F {  }]"},
        // So do bytes that are no character.
        {"", "", ".\xFF{}", "[.\xEF\xBF\xBD {  }]"},
        {"", "charset='UTF-8'", ".a\xE9{}", "[.a\xEF\xBF\xBD {  }]"},
    };
    for (const auto& c : kCases) {
        for (const Source& source : Linking(c.attributes)) {
            SCOPED_TRACE(std::string(source.name) + " " + c.attributes + " " + c.bytes);
            EXPECT_EQ(Collected(c.declaration + PageWith(source), c.bytes), c.rules);
        }
    }
}

// Damage.

TEST(SheetSources, LoadedSheetsLoseWhatIsRefused) {
    for (const auto& c : support::kSheetCases) {
        SCOPED_TRACE(c.text);
        for (const Source& source : Linking("charset='UTF-8'"))
            EXPECT_EQ(Loaded(PageWith(source), c.text), c.rules) << source.name;
        EXPECT_EQ(Loaded(PageWith(Holding(c.text))), c.rules);
    }
}

TEST(SheetSources, CollectedSheetsLoseWhatIsDamaged) {
    const struct {
        const char* text;
        const char* rules;
    } kCases[] = {
        {"", ""},
        {"/* c", ""},
        {"p", ""},
        {"p {", "[p {  }]"},
        {"p { a", "[p {  }]"},
        {"p { a: b", "[p { a: b }]"},
        {"p { a: b } }", "[p { a: b }]"},
        {"p { a: b } } q { c: d } r { e: f }", "[p { a: b }][r { e: f }]"},
        {"p { a b; c: d }", "[p { c: d }]"},
        {"p { a: ; c: d }", "[p { c: d }]"},
        {"p,, q { a: b } r { c: d }", "[r { c: d }]"},
        {"p { a: 'x\ny: z; c: d } q { e: f }", "[p { c: d }][q { e: f }]"},
        {"p { a: (b; c: d } q { e: f }", "[p {  }]"},
        {"@x { p { a: b } } q { c: d }", "[@x { p { a: b } }][q { c: d }]"},
        {"<!-- p { a: b } -->", "[p { a: b }]"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        for (const Source& source : Linking(""))
            EXPECT_EQ(Collected(PageWith(source), c.text), c.rules) << source.name;
        EXPECT_EQ(Collected(PageWith(Holding(c.text))), c.rules);
    }
}

// Wherever a sheet ends, and whatever way leads to it, it has the same rules; whole rules stay.
TEST(SheetSources, SheetsMayBeCutAnywhere) {
    const std::string text =
        "a > b:hover { color: red !important; c: \"x;}\" }\n/* { */ @media print { p { d: e } }\n"
        ".\xC3\xA9, #i { f: url(g) } [h='i'] { j: k(l, m) }";
    const std::size_t firstEnd = text.find('\n');
    for (std::size_t length = 0; length <= text.size(); ++length) {
        const std::string cut = text.substr(0, length);
        SCOPED_TRACE(cut);
        const bool isWhole = length == text.size() || (text[length] & 0xC0) != 0x80;
        const auto linking = Linking("charset='UTF-8'");
        const std::string loaded = Loaded(PageWith(linking[0]), cut);
        const std::string collected = Collected(PageWith(linking[0]), cut);
        EXPECT_EQ(Loaded(PageWith(linking[1]), cut), loaded);
        EXPECT_EQ(Collected(PageWith(linking[1]), cut), collected);
        if (isWhole) {  // a page has whole characters
            EXPECT_EQ(Loaded(PageWith(Holding(cut))), loaded);
            EXPECT_EQ(Collected(PageWith(Holding(cut))), collected);
        }
        if (length < firstEnd) continue;
        constexpr std::string_view kFirst = "[a > b:hover { color: red !important; c: \"x;}\" }]";
        EXPECT_TRUE(collected.starts_with(kFirst)) << collected;
    }
}

TEST(SheetSources, DamagedPseudoAttributesKeepWhatCameBefore) {
    const char* const kFaults[] = {
        "x",           "x=",        "x=y",          "x='",         "x='y",       "x=\"y'",
        "='y'",        "x=='y'",    "x='&y;'",      "x='&'",       "x='&#;'",    "x='&#xZ;'",
        "x='&#0;'",    "x='&amp'",  "x='&#65'",     "1x='y'",      "'x'='y'",    "&amp;",
        "href='b.css", "href='&x'", "type='&quot'", "charset='&;", "media='&.;", "title",
    };
    const std::string link = "href='a.css' type='text/css' charset='UTF-8' media='print' ";
    for (const char* const fault : kFaults) {
        SCOPED_TRACE(fault);
        const Source before = {"", "<?xml-stylesheet " + link + fault + "?>", ""};
        EXPECT_EQ(Loaded(PageWith(before), "p{a:b}"), "[p { a: b }]");
        EXPECT_EQ(Collected(PageWith(before), "p{a:b}"), "[p { a: b }]");
        const Source behind = {"", std::string("<?xml-stylesheet ") + fault + " " + link + "?>",
                               ""};
        EXPECT_EQ(Loaded(PageWith(behind), "p{a:b}"), "no sheet");
        EXPECT_EQ(Collected(PageWith(behind), "p{a:b}"), "no sheet");
    }
}
