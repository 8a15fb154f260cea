// SPDX-License-Identifier: MIT

// A node is reported as soon as all of it has come: the reader does not ask for more, which on a
// pipe or a socket may mean to wait for long.

#include <espalier/io/Stream.h>
#include <espalier/xml/XmlTextReader.h>

#include "support/NodeDump.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Xml::XmlTextReader;

// Gives its parts one at a time, and throws when it is asked for another.
class PartStream : public IO::Stream {
public:
    explicit PartStream(std::string part) : part_(std::move(part)) {}

    bool CanRead() const override { return true; }
    void Close() override {}
    int Read(unsigned char* buffer, int offset, int count) override {
        if (part_.empty()) throw std::logic_error("asked for more");
        EXPECT_LE(part_.size(), static_cast<std::size_t>(count));
        std::memcpy(buffer + offset, part_.data(), part_.size());
        const auto given = static_cast<int>(part_.size());
        part_.clear();
        return given;
    }

private:
    std::string part_;
};

struct Case {
    std::string_view part;      // what has come
    std::string_view expected;  // the last node of it, which must be reported
};

const Case kCases[] = {
    {"<aaa>", "Element aaa"},
    {"<aaa b='1'>", "Element aaa"},
    {"<a><b/>", "Element b"},
    {"<a><b c='&lt;&#65;'>", "Element b"},
    {"<a><b></b>", "EndElement b"},
    {"<a><b></b >", "EndElement b"},
    {"<a><b></b></a>", "EndElement a"},
    {"<a><!--comment-->", "Comment"},
    {"<a><![CDATA[section]]>", "CDATA"},
    {"<a><?target value?>", "ProcessingInstruction target"},
    {"<a>&entity;", "EntityReference entity"},
    {"<a>&anEntityWhoseNameIsLongerThanABlock;",
     "EntityReference "
     "anEntityWhoseNameIsLongerThanABlock"},
    {"<a>text<", "Text"},
    {"<a>longer text than a block has<", "Text"},
    {"<a>text &lt; text<", "Text"},
    {"<a>text]<", "Text"},
    {"<a>text &entity;", "Text"},
    {"<a>  <", "Whitespace"},
    {"<a>                         <", "Whitespace"},
    {"<a>  &", "Whitespace"},
    {"<a xmlns:p='u'><p:b>", "Element p:b"},
    {"<a xmlns:p='u'><p:b></p:b>", "EndElement p:b"},
    {"<?xml version='1.0'?>", "XmlDeclaration xml"},
    {"<!--comment-->", "Comment"},
    {"<!DOCTYPE a [<!ELEMENT a ANY>]>", "DocumentType a"},
};

TEST(XmlTextReaderPrompt, ANodeThatHasComeIsReported) {
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.part);
        PartStream stream{std::string(c.part)};
        XmlTextReader reader;
        ASSERT_TRUE(reader.SetStream(&stream, false));
        std::string last;
        bool found = false;
        try {
            while (!found && reader.Read()) {
                last = support::DumpNode(reader);
                found = last.substr(0, c.expected.size()) == c.expected;
            }
        } catch (const std::logic_error& error) {
            ADD_FAILURE() << error.what() << " after " << last;
        }
        EXPECT_TRUE(found);
    }
}

TEST(XmlTextReaderPrompt, AnErrorThatHasComeIsThrown) {
    const Case kErrors[] = {
        {"<a><b></c>", "End tag 'c' doesn't match start tag 'b'"},
        {"<a></anotherNameThatIsLong>",
         "End tag 'anotherNameThatIsLong' doesn't match start tag 'a'"},
        {"<a><b 1='2'>", "Syntax error in element"},
        {"<a><b c=d>", "Unexpected token"},
        {"<a><b c='&#0;'>", "Invalid character"},
        {"<a><b c='<'>", "Unexpected token or missing close quote"},
        {"<a><b:c:d>", "Illegal second colon in qualified name"},
        {"<a><1>", "Syntax error: Expected element name"},
        {"<a>]]>", "Unexpected token"},
        {"<a>\x01", "Invalid character"},
        {"<a>&#1;", "Invalid character"},
        {"<a><!--a--b", "XML comments may not contain '--'"},
    };
    for (const Case& c : kErrors) {
        SCOPED_TRACE(c.part);
        PartStream stream{std::string(c.part)};
        XmlTextReader reader;
        ASSERT_TRUE(reader.SetStream(&stream, false));
        try {
            while (reader.Read())
                continue;
            ADD_FAILURE() << "no error";
        } catch (const std::exception& error) {
            EXPECT_EQ(error.what(), c.expected);
        }
    }
}

}  // namespace
