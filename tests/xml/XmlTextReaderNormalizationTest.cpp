// SPDX-License-Identifier: MIT
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentReader.h"
#include "support/EscapedText.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using support::DocumentReader;
using support::ReaderSettings;

ReaderSettings WithNormalization(bool normalization) {
    ReaderSettings settings;
    settings.normalization = normalization;
    return settings;
}

// A text as it stands in a document, as the value of a text and of an attribute when normalized.
const struct {
    const char* raw;
    const char* text;
    const char* attribute;
} kCases[] = {
    {"", "", ""},
    {"x", "x", "x"},
    {"x\ny", "x\ny", "x y"},
    {"x\ry", "x\ny", "x y"},
    {"x\r\ny", "x\ny", "x y"},
    {"x\ty", "x\ty", "x y"},
    {"x\n\ny", "x\n\ny", "x  y"},
    {"x\r\ry", "x\n\ny", "x  y"},
    {"x\r\n\r\ny", "x\n\ny", "x  y"},
    {"x\n\ry", "x\n\ny", "x  y"},
    {"x\r\r\ny", "x\n\ny", "x  y"},
    {"x\r\n\ny", "x\n\ny", "x  y"},
    {"x\r\t\ny", "x\n\t\ny", "x   y"},
    {"x\r", "x\n", "x "},
    {"x\r\n", "x\n", "x "},
    {"x  y ", "x  y ", "x  y "},
    {"x\xC3\xA9\r\n\xC3\xA9", "x\xC3\xA9\n\xC3\xA9", "x\xC3\xA9 \xC3\xA9"},
    {"x\xC2\x85y\xE2\x80\xA8z", "x\xC2\x85y\xE2\x80\xA8z", "x\xC2\x85y\xE2\x80\xA8z"},
    {"x&#13;&#10;y", "x\ny", "x y"},
    {"x&#13;\ny", "x\ny", "x y"},
    {"x\r&#10;y", "x\ny", "x y"},
    {"x&#9;y", "x\ty", "x y"},
};

TEST(XmlTextReaderNormalization, TextAndAttributes) {
    for (const auto& c : kCases) {
        SCOPED_TRACE(support::Escape(c.raw));
        for (const int bytesPerRead : {0, 1, 2, 3, 7}) {
            DocumentReader reader(std::string("<a x='") + c.raw + "'>" + c.raw + "</a>",
                                  WithNormalization(true), bytesPerRead);
            reader.ReadNodes(1);
            EXPECT_EQ(reader->GetAttribute("x"), c.attribute);
            reader.ReadNodes(1);
            EXPECT_EQ(reader->Value(), c.text);
        }
    }
}

TEST(XmlTextReaderNormalization, WithoutItValuesStayAsTheyAre) {
    for (const auto& c : kCases) {
        if (std::string(c.raw).find('&') != std::string::npos) continue;
        SCOPED_TRACE(support::Escape(c.raw));
        DocumentReader reader(std::string("<a x='") + c.raw + "'>" + c.raw + "</a>");
        reader.ReadNodes(1);
        EXPECT_EQ(reader->GetAttribute("x"), c.raw);
        reader.ReadNodes(1);
        EXPECT_EQ(reader->Value(), c.raw);
    }
}

TEST(XmlTextReaderNormalization, OtherNodes) {
    DocumentReader reader("<a>\r\n\t<!--\r\n\tc\r--><![CDATA[\r\n\td\r]]><?pi \r\np\r\n\tq\r?></a>",
                          WithNormalization(true));
    const struct {
        const char* type;
        const char* value;
    } kExpected[] = {
        {"Element", ""},
        {"Whitespace", "\n\t"},
        {"Comment", "\n\tc\n"},
        {"CDATA", "\n\td\n"},
        {"ProcessingInstruction", "p\r\n\tq\r"},  // as it stands
        {"EndElement", ""},
    };
    for (const auto& expected : kExpected) {
        ASSERT_TRUE(reader->Read());
        EXPECT_STREQ(reader->NodeType().ToString(), expected.type);
        EXPECT_EQ(reader->Value(), expected.value);
    }
}

TEST(XmlTextReaderNormalization, TheSettingHoldsFromTheNextNodeOn) {
    DocumentReader reader("<a>1\r\n<b/>2\r\n<c/>3\r\n</a>");
    reader.ReadNodes(2);
    reader->SetNormalization(true);
    EXPECT_EQ(reader->Value(), "1\r\n");
    reader.ReadNodes(2);
    reader->SetNormalization(false);
    EXPECT_EQ(reader->Value(), "2\n");
    reader.ReadNodes(2);
    EXPECT_EQ(reader->Value(), "3\r\n");
}

TEST(XmlTextReaderNormalization, TheSettingHoldsForAttributesFromTheNextElementOn) {
    DocumentReader reader("<a x='1\r\n2'><b x='1\r\n2'/></a>");
    reader.ReadNodes(1);
    reader->SetNormalization(true);
    EXPECT_EQ(reader->GetAttribute("x"), "1\r\n2");
    ASSERT_TRUE(reader->MoveToFirstAttribute());
    EXPECT_EQ(reader->Value(), "1\r\n2");
    reader.ReadNodes(1);
    reader->SetNormalization(false);
    EXPECT_EQ(reader->GetAttribute("x"), "1 2");
}

TEST(XmlTextReaderNormalization, AskingTwiceGivesTheSame) {
    DocumentReader reader("<a x='1\r\n2'>3\r\r\n4</a>", WithNormalization(true));
    reader.ReadNodes(1);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(reader->GetAttribute("x"), "1 2");
    ASSERT_TRUE(reader->MoveToFirstAttribute());
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(reader->Value(), "1 2");
    reader.ReadNodes(1);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(reader->Value(), "3\n\n4");
}

TEST(XmlTextReaderNormalization, LineEndsAcrossTheEdgeOfTheBuffer) {
    for (std::size_t padding = 1000; padding < 1030; ++padding) {
        const std::string text = std::string(padding, 't') + "\r\nx\ry\r\r\nz";
        const std::string expected = std::string(padding, 't') + "\nx\ny\n\nz";
        DocumentReader reader("<a>" + text + "<!--" + text + "--><![CDATA[" + text + "]]></a>",
                              WithNormalization(true));
        reader.ReadNodes(1);
        for (int node = 0; node < 3; ++node) {
            reader.ReadNodes(1);
            EXPECT_EQ(reader->Value(), expected) << padding;
            EXPECT_EQ(reader->LineNumber(), 1 + 4 * node);
        }
    }
}

}  // namespace
