// SPDX-License-Identifier: MIT

// What once went wrong, each with a small document that shows it.

#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentStream.h"
#include "support/NodeDump.h"
#include "support/PrintAstring.h"
#include "support/ReaderSettings.h"

#include <gtest/gtest.h>

#include <ctime>
#include <string>

namespace {

using support::DocumentStream;
using support::DumpDocument;
using support::ReaderSettings;
using Xml::XmlEntityHandling;
using Xml::XmlEntityLimits;
using Xml::XmlTextReader;

constexpr int kBytesPerRead[] = {0, 1, 2, 3};

ReaderSettings Expanding() {
    ReaderSettings settings;
    settings.entities = XmlEntityHandling::ExpandEntities;
    return settings;
}

// Reads a document that expands entities up to `limits`.
std::string DumpWithin(const std::string& document, const XmlEntityLimits& limits) {
    DocumentStream stream(document);
    XmlTextReader reader;
    reader.SetStream(stream.get(), false);
    reader.SetEntityHandling(XmlEntityHandling::ExpandEntities);
    reader.SetEntityLimits(limits);
    return support::DumpNodes(reader);
}

// Reads all parts of all values of an element with so many attributes.
// Returns the processor time that it took, in seconds.
double SecondsForParts(int attributes) {
    std::string document = "<a";
    for (int i = 0; i < attributes; ++i)
        document += " n" + std::to_string(i) + "='&e;'";
    document += "/>";
    DocumentStream stream(document);
    XmlTextReader reader;
    reader.SetStream(stream.get(), false);
    EXPECT_TRUE(reader.Read());
    const std::clock_t start = std::clock();
    int parts = 0;
    for (bool more = reader.MoveToFirstAttribute(); more; more = reader.MoveToNextAttribute()) {
        while (reader.ReadAttributeValue())
            ++parts;
    }
    EXPECT_EQ(parts, attributes);
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

// Each value took time for all attributes of its element.
TEST(XmlTextReaderRegression, ReadingThePartsOfManyValuesTakesLinearTime) {
    constexpr int kMany = 60000;  // took minutes
    EXPECT_LT(SecondsForParts(kMany), 2.0);
}

// A token of a declaration that the window cut ended there, in the message too.
TEST(XmlTextReaderRegression, TokensInDeclarationsAreWholeHoweverTheInputComes) {
    const std::string before = "<!DOCTYPE r [<!ENTITY --x.1";
    const std::string expected =
        "error 1:" + std::to_string(before.size() + 1) + " Unexpected token [--x.1NMTOKEN]\n";
    for (const int bytesPerRead : kBytesPerRead)
        EXPECT_EQ(DumpDocument(before + " 'y'>]><r/>", {}, bytesPerRead), expected) << bytesPerRead;
}

// The end of the input was taken for something else than a second literal.
TEST(XmlTextReaderRegression, InputMayEndBehindAPublicIdentifier) {
    EXPECT_EQ(DumpDocument("<!DOCTYPE r PUBLIC 'x'"),
              "error 1:23 Unexpected end of file while parsing DTD\n");
    EXPECT_EQ(DumpDocument("<!DOCTYPE r [<!NOTATION n PUBLIC 'x' "),
              "error 1:38 Unexpected end of file while parsing DTD\n");
    EXPECT_EQ(DumpDocument("<!DOCTYPE r PUBLIC 'x' >"),
              "error 1:25 Public ID requires two literals\n");
}

// A reference to markup that ended a text was charged when it was met and when it was taken.
TEST(XmlTextReaderRegression, ReferencesBehindTextCountOnce) {
    XmlEntityLimits limits;
    limits.expandedBytes = 4;
    limits.amplification = 0;
    const std::string subset = "<!DOCTYPE r [<!ENTITY e '<b/>'>]>";
    EXPECT_EQ(DumpWithin(subset + "<r>text&e;</r>", limits).find("error"), std::string::npos);
    EXPECT_NE(DumpWithin(subset + "<r>text&e;&e;</r>", limits)
                  .find("Entity expansion limit exceeded [e]"),
              std::string::npos);
}

// What is as much as may be expanded in any case was too much.
TEST(XmlTextReaderRegression, ExpansionMayReachItsFactor) {
    XmlEntityLimits limits;
    limits.expandedBytes = 0;
    limits.amplification = 1;
    const std::string document =
        "<!DOCTYPE r [<!ENTITY e '" + std::string(100, 'x') + "'>]><r>&e;&e;&e;</r>";
    ASSERT_LT(document.size(), 299u);
    const auto dumpOfSize = [&](std::size_t size) {
        return DumpWithin(document + std::string(size - document.size(), ' '), limits);
    };
    EXPECT_EQ(dumpOfSize(300).find("error"), std::string::npos);
    EXPECT_NE(dumpOfSize(299).find("Entity expansion limit exceeded [e]"), std::string::npos);
}

constexpr char kLatin1[] = "<?xml version='1.0' encoding='ISO-8859-1'?>";

// A letter that ISO-8859-1 has not was one in the texts of entities, and from then on everywhere,
// unless the window cut it.
TEST(XmlTextReaderRegression, EntitiesHaveTheLettersOfTheirDocument) {
    const std::string document =
        std::string(kLatin1) +
        "<!DOCTYPE r [<!ENTITY e '<\xE9/>'><!ENTITY f '<\xAA/>'>]><r>&f;<\xAA/>&e;</r>";
    const std::string expected = DumpDocument(document, Expanding());
    EXPECT_NE(expected.find("Element \\u{AA}"), std::string::npos) << expected;
    EXPECT_NE(expected.find("Syntax error: Expected element name"), std::string::npos) << expected;
    for (const int bytesPerRead : kBytesPerRead)
        EXPECT_EQ(DumpDocument(document, Expanding(), bytesPerRead), expected) << bytesPerRead;
}

// The same from one document to the next.
TEST(XmlTextReaderRegression, NamesOfUnicodeAreForgottenBeforeSingleBytes) {
    const std::string first = "<r><\xC3\xA9/></r>";
    const std::string second = std::string(kLatin1) + "<r><\xE9/></r>";
    XmlTextReader reader;
    DocumentStream firstStream(first);
    reader.SetStream(firstStream.get(), false);
    EXPECT_EQ(support::DumpNodes(reader), DumpDocument(first));
    DocumentStream secondStream(second);
    reader.SetStream(secondStream.get(), false);
    EXPECT_EQ(support::DumpNodes(reader), DumpDocument(second));
    EXPECT_NE(DumpDocument(second).find("Expected element name"), std::string::npos);
}

// A declaration of "lt" as a plain "<" made markup of every text that refers to it.
TEST(XmlTextReaderRegression, PredefinedEntitiesAreNoMarkup) {
    const std::string entity = "<!ENTITY e 'a &lt; b'>]><r>x&e;y</r>";
    const std::string dump =
        DumpDocument("<!DOCTYPE r [<!ENTITY lt '&#60;'>" + entity, Expanding());
    EXPECT_NE(dump.find("Text \"xa < by\""), std::string::npos) << dump;
}

}  // namespace
