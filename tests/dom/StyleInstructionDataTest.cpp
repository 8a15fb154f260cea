// SPDX-License-Identifier: MIT
// The pseudo-attributes of Dom::StyleProcessingInstruction, and the sheets that it makes.
#include <espalier/dom/StyleProcessingInstruction.h>

#include "dom/HtmlPage.h"
#include "dom/SheetCases.h"
#include "support/FailingStream.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

namespace {

using Dom::StyleProcessingInstruction;
using Dom::CSS::CSSStyleSheet;
using support::Rules;
using support::StreamOf;

// What an instruction says, as NAME=VALUE of those that are not empty, in alphabetic order.
std::string Says(const StyleProcessingInstruction& instruction) {
    std::string text;
    const auto add = [&text](const char* name, const astring& value) {
        if (!value.empty()) text += std::string(name) + "=" + value.str() + "|";
    };
    if (instruction.Alternate()) text += "alternate|";
    add("charset", instruction.Charset());
    add("href", instruction.Href());
    add("media", instruction.Media());
    add("title", instruction.Title());
    add("type", instruction.Type());
    return text;
}

std::string Says(std::string_view data) {
    Dom::Document document;
    return Says(StyleProcessingInstruction(data, &document));
}

// An instruction that makes a sheet.
class Instruction {
public:
    explicit Instruction(std::string_view data) : instruction_(data, &document_) {}
    StyleProcessingInstruction* operator->() { return &instruction_; }

    CSSStyleSheet* Create(std::string_view text) {
        IO::MemoryStream stream = StreamOf(text);
        return instruction_.CreateStyleSheet(&stream);
    }

    Dom::Document& Owner() { return document_; }

private:
    Dom::Document document_;
    StyleProcessingInstruction instruction_;
};

}  // namespace

TEST(StyleInstructionData, HasPseudoAttributes) {
    const struct {
        const char* data;
        const char* says;
    } kCases[] = {
        {"", ""},
        {" \t\r\n", ""},
        {"charset='a'", "charset=a|"},
        {"href='a'", "href=a|"},
        {"media='a'", "media=a|"},
        {"title='a'", "title=a|"},
        {"type='a'", "type=a|"},
        {"type='a' title='b' media='c' href='d' charset='e'",
         "charset=e|href=d|media=c|title=b|type=a|"},
        {"href=\"a\" type='b'", "href=a|type=b|"},
        {"href=\"a'b\" type='c\"d'", "href=a'b|type=c\"d|"},
        {"  href \t=\r\n 'a'  ", "href=a|"},
        {"href='a'type='b'", "href=a|type=b|"},
        {"href='' type='b'", "type=b|"},
        {"href=' a  b '", "href= a  b |"},
        {"href='a\tb\nc'", "href=a\tb\nc|"},
        {"href='a<b>c'", "href=a<b>c|"},
        {"href='\xC3\xA9'", "href=\xC3\xA9|"},
        // The last one of a name counts.
        {"href='a' href='b'", "href=b|"},
        {"href='a' href=''", ""},
        // Other names are ignored, whatever a name may be.
        {"x='1' href='a' xml:y-z.0='2' type='b' _='3' \xC3\xA9='4' title='c'",
         "href=a|title=c|type=b|"},
        {"Href='a' TYPE='b'", ""},
        {"hrefs='a'", ""},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.data);
        EXPECT_EQ(Says(c.data), c.says);
    }
}

TEST(StyleInstructionData, DeliberateTheNameOfTheAlternateFlagIsMisspelt) {
    const struct {
        const char* data;
        bool alternate;
    } kCases[] = {
        {"altenate='yes'", true},
        {"altenate='YES'", true},
        {"altenate='yEs'", true},
        {"altenate='no'", false},
        {"altenate=''", false},
        {"altenate='true'", false},
        {"altenate='1'", false},
        {"altenate='yes '", false},
        {"alternate='yes'", false},
        {"Altenate='yes'", false},
        {"altenate='y&#101;s'", true},
        // Nothing ends it.
        {"altenate='yes' altenate='no'", true},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.data);
        EXPECT_EQ(Says(c.data), c.alternate ? "alternate|" : "");
        const bool isDisabled = c.alternate;
        Instruction instruction(std::string("href='a.css' type='text/css' ") + c.data);
        const CSSStyleSheet* const sheet = instruction.Create("p { a: b }");
        ASSERT_NE(sheet, nullptr);
        EXPECT_EQ(sheet->Disabled(), isDisabled);
    }
}

TEST(StyleInstructionData, ReferencesStandForCharacters) {
    const struct {
        const char* value;
        const char* expected;
    } kCases[] = {
        {"&amp;", "&"},
        {"&apos;", "'"},
        {"&gt;", ">"},
        {"&lt;", "<"},
        {"&quot;", "\""},
        {"a&amp;b&lt;c", "a&b<c"},
        {"&amp;amp;", "&amp;"},
        {"&#65;", "A"},
        {"&#065;", "A"},
        {"&#0000000000000000000000065;", "A"},
        {"&#x41;", "A"},
        {"&#x0041;", "A"},
        {"&#xe9;", "\xC3\xA9"},
        {"&#xE9;", "\xC3\xA9"},
        {"&#233;", "\xC3\xA9"},
        {"&#x20AC;", "\xE2\x82\xAC"},
        {"&#x1F600;", "\xF0\x9F\x98\x80"},
        {"&#x10FFFF;", "\xF4\x8F\xBF\xBF"},
        {"&#9;", "\t"},
        {"&#39;", "'"},
        {"&#x22;", "\""},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.value);
        for (const char quote : {'\'', '"'}) {
            const std::string data =
                std::string("title='t' href=") + quote + c.value + quote + " type='u'";
            EXPECT_EQ(Says(data), std::string("href=") + c.expected + "|title=t|type=u|");
        }
    }
}

// What was read before a fault is kept; that with the fault and what follows are not.
TEST(StyleInstructionData, AFaultEndsTheData) {
    const char* const kFaults[] = {
        "href",
        "href ",
        "href=",
        "href= ",
        "href=a",
        "href=\"a",
        "href=\"a'",
        "href 'a'",
        "href:'a'",
        "href=='a'",
        "href=,'a'",
        "='a'",
        ", href='a'",
        "1href='a'",
        "-href='a'",
        ".href='a'",
        "'href'='a'",
        "\"",
        "?",
        "&",
        "href='&unknown;'",
        "href='a&unknown;b'",
        "href='&'",
        "href='& '",
        "href='&;'",
        "href='&amp'",
        "href='&amp b;'",
        "href='&AMP;'",
        "href='&Lt;'",
        "href='&nbsp;'",
        "href='&#;'",
        "href='&#x;'",
        "href='&#X41;'",
        "href='&#65'",
        "href='&# 65;'",
        "href='&#65 ;'",
        "href='&#-65;'",
        "href='&#+65;'",
        "href='&#x-41;'",
        "href='&#x+41;'",
        "href='&#x0x41;'",
        "href='&#6a;'",
        "href='&#xg;'",
        "href='&#0;'",
        "href='&#8;'",
        "href='&#xD800;'",
        "href='&#xDFFF;'",
        "href='&#xFFFE;'",
        "href='&#x110000;'",
        "href='&#99999999999999999999;'",
        "href='&#x99999999999999999999;'",
        "href='&amp",
    };
    for (const char* const fault : kFaults) {
        SCOPED_TRACE(fault);
        EXPECT_EQ(Says(fault), "");
        EXPECT_EQ(Says(std::string("type='t' ") + fault), "type=t|");
        EXPECT_EQ(Says(std::string("type='t' ") + fault + " title='u'"), "type=t|");
    }
    // With something behind it, these would be values with an end.
    for (const char* const cut : {"href='", "href='a", "href='&#65;"}) {
        SCOPED_TRACE(cut);
        EXPECT_EQ(Says(cut), "");
        EXPECT_EQ(Says(std::string("type='t' ") + cut), "type=t|");
    }
}

TEST(StyleInstructionData, MayBeCutAnywhere) {
    const std::string data = "charset='a' href=\"b&amp;\" media='c' title='&#65;' type='d'";
    const std::string whole = Says(data);
    EXPECT_EQ(whole, "charset=a|href=b&|media=c|title=A|type=d|");
    for (std::size_t length = 0; length < data.size(); ++length) {
        const std::string cut = data.substr(0, length);
        SCOPED_TRACE(cut);
        const std::string says = Says(cut);
        EXPECT_EQ(whole.substr(0, says.size()), says);
        EXPECT_LT(says.size(), whole.size());
    }
}

TEST(StyleInstructionData, NewDataAreReadAnew) {
    Instruction instruction("href='a' title='t' altenate='yes' type='x'");
    EXPECT_EQ(Says(*instruction.operator->()), "alternate|href=a|title=t|type=x|");
    instruction->SetData("href='b'");
    EXPECT_EQ(instruction->Data(), "href='b'");
    EXPECT_EQ(Says(*instruction.operator->()), "href=b|");
    Dom::ProcessingInstruction* const base = instruction.operator->();
    base->SetData("type='c'");
    EXPECT_EQ(Says(*instruction.operator->()), "type=c|");
    base->SetData(instruction->Type());  // a value of its own
    EXPECT_EQ(instruction->Data(), "c");
    EXPECT_EQ(Says(*instruction.operator->()), "");
}

// Sheets.

TEST(StyleInstructionSheet, IsMadeOfItsTypeAlone) {
    const struct {
        const char* data;
        bool makesSheet;
    } kCases[] = {
        {"type='text/css'", true},
        {"href='a' type=\"text/css\"", true},
        {"type='text&#x2f;css'", true},
        {"", false},
        {"type=''", false},
        {"type='text/CSS'", false},
        {"type='text/xsl'", false},
        {"type=' text/css'", false},
        {"href='&unknown;' type='text/css'", false},
        {"type='text/css' href='&unknown;'", true},
        {"type='text/css' type='text/xsl'", false},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.data);
        Instruction instruction(c.data);
        const CSSStyleSheet* const sheet = instruction.Create("p { a: b }");
        EXPECT_EQ(Rules(sheet), c.makesSheet ? "[p { a: b }]" : "null");
        EXPECT_EQ(instruction->Sheet(), sheet);
    }
}

TEST(StyleInstructionSheet, HasWhatTheInstructionSays) {
    Instruction instruction("href='a.css' title='t' media='screen, tv' type='text/css'");
    CSSStyleSheet* const sheet = instruction.Create("p { a: b }");
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(sheet->Type(), "text/css");
    EXPECT_EQ(sheet->OwnerNode(), instruction.operator->());
    EXPECT_EQ(sheet->ParentStyleSheet(), nullptr);
    EXPECT_EQ(sheet->Href(), "a.css");
    EXPECT_EQ(sheet->Title(), "t");
    EXPECT_EQ(sheet->GetMediaList().MediaText(), "screen, tv");
    EXPECT_EQ(sheet->OwnerRule(), nullptr);
    EXPECT_EQ(sheet->Origin(), Dom::CSS::CSSRule::Author);
    EXPECT_FALSE(sheet->Disabled());
    EXPECT_EQ(instruction.Owner().StyleSheets().Length(), 0U);
    Instruction plain("type='text/css'");
    EXPECT_TRUE(plain.Create("")->GetMediaList().IsEmpty());
}

TEST(StyleInstructionSheet, LeavesOutWhatTheSheetRefuses) {
    for (const auto& c : support::kSheetCases) {
        SCOPED_TRACE(c.text);
        Instruction instruction("type='text/css' charset='UTF-8'");
        EXPECT_EQ(Rules(instruction.Create(c.text)), c.rules);
    }
}

TEST(StyleInstructionSheet, TheCharsetNamesTheEncoding) {
    for (const support::CharsetCase& c : support::CharsetCases()) {
        SCOPED_TRACE(c.charset);
        Instruction instruction(std::string("type='text/css' charset='") + c.charset + "'");
        EXPECT_EQ(Rules(instruction.Create(c.bytes)), c.rules);
    }
}

TEST(StyleInstructionSheet, HasNoRulesWithoutAStream) {
    Instruction instruction("type='text/css'");
    const CSSStyleSheet* const sheet = instruction->CreateStyleSheet(nullptr);
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(sheet->CssRules().Length(), 0U);
}

TEST(StyleInstructionSheet, AStreamThatThrowsEndsIt) {
    const std::string text = "p { a: b }" + std::string(1100, ' ') + "q { c: d }";
    IO::MemoryStream memory = StreamOf(text);
    support::FailingStream stream(memory, 2, support::Failure::Throw);
    Instruction instruction("type='text/css' charset='UTF-8'");
    EXPECT_EQ(Rules(instruction->CreateStyleSheet(&stream)), "[p { a: b }]");
}

TEST(StyleInstructionSheet, TakesThePlaceOfTheOneBefore) {
    Instruction instruction("type='text/css'");
    Dom::StyleSheets::StyleSheetListImpl& list = instruction.Owner().StyleSheets();
    list.AddItem(instruction.Create("p { a: b }"));
    CSSStyleSheet* const second = instruction.Create("q { c: d }");
    EXPECT_EQ(instruction->Sheet(), second);
    EXPECT_EQ(list.Length(), 0U);
    list.AddItem(second);
    // New data leave the sheet, which goes with the next attempt to make one.
    instruction->SetData("type='text/xsl'");
    EXPECT_EQ(instruction->Sheet(), second);
    EXPECT_EQ(instruction.Create("p { a: b }"), nullptr);
    EXPECT_EQ(instruction->Sheet(), nullptr);
    EXPECT_EQ(list.Length(), 0U);
}

TEST(StyleInstructionSheet, AnInstructionThatWasLoadedMakesOne) {
    Dom::Document document;
    document.LoadXml("<?xml-stylesheet href=\"a.css\" type=\"text/css\"?><a/>");
    StyleProcessingInstruction* const instruction = support::AsInstruction(document.FirstChild());
    ASSERT_NE(instruction, nullptr);
    IO::MemoryStream stream = StreamOf("p { a: b }");
    EXPECT_EQ(Rules(instruction->CreateStyleSheet(&stream)), "[p { a: b }]");
    const std::unique_ptr<Dom::Node> clone(instruction->CloneNode(true));
    EXPECT_EQ(support::AsInstruction(clone.get())->Href(), "a.css");
    EXPECT_EQ(support::AsInstruction(clone.get())->Sheet(), nullptr);
}
