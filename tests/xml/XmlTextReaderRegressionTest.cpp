// SPDX-License-Identifier: MIT

// What once went wrong, each with a small document that shows it.

#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentStream.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <ctime>
#include <string>

namespace {

using support::DocumentStream;
using Xml::XmlNodeType;
using Xml::XmlTextReader;

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

}  // namespace
