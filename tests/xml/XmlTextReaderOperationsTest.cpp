// SPDX-License-Identifier: MIT
//
// The operations of navigation and content where there is no node to work on: on a closed reader,
// before the first Read(), at the end, and after an error.
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentReader.h"
#include "support/ExpectThrow.h"
#include "support/ReaderPosition.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using support::DocumentReader;
using support::MessageOf;
using support::NodesFromHere;
using support::NodeText;
using Xml::XmlNodeType;
using Xml::XmlTextReader;

// What holds without a node, whatever the state; none of it changes the state.
void ExpectNothingToMoveTo(XmlTextReader& reader) {
    const XmlTextReader::XmlReadStateEnum state = reader.ReadState();
    EXPECT_EQ(reader.AttributeCount(), 0);
    EXPECT_FALSE(reader.HasAttributes());
    EXPECT_TRUE(reader.Attributes().empty());
    EXPECT_EQ(reader.Attributes().size(), 0);
    for (const int index : {0, 1, -1}) {
        EXPECT_EQ(reader.GetAttribute(index), "");
        EXPECT_EQ(reader.Item(index), "");
        EXPECT_NO_THROW(reader.MoveToAttribute(index));
    }
    EXPECT_EQ(reader.GetAttribute("x"), "");
    EXPECT_EQ(reader.GetAttribute("x", ""), "");
    EXPECT_FALSE(reader.MoveToAttribute("x"));
    EXPECT_FALSE(reader.MoveToAttribute("x", ""));
    EXPECT_FALSE(reader.MoveToElement());
    EXPECT_FALSE(reader.MoveToFirstAttribute());
    EXPECT_FALSE(reader.MoveToNextAttribute());
    EXPECT_FALSE(reader.ReadAttributeValue());
    EXPECT_EQ(reader.LookupNamespace(""), "");
    EXPECT_EQ(reader.LookupNamespace("p"), "");
    EXPECT_THROW_FULL(reader.ResolveEntity(), "Invalid operation", "ResolveEntity", -1, -1);
    EXPECT_THROW_FULL(reader.ReadEndElement(), "Not an end element node", "None",
                      reader.LineNumber(), reader.LinePosition());
    EXPECT_EQ(reader.NodeType(), XmlNodeType::None);
    EXPECT_EQ(reader.ReadState(), state);
}

void ExpectNoMarkup(XmlTextReader& reader) {
    const XmlTextReader::XmlReadStateEnum state = reader.ReadState();
    EXPECT_EQ(reader.ReadInnerXml(), "");
    EXPECT_EQ(reader.ReadOuterXml(), "");
    EXPECT_EQ(reader.ReadState(), state);
}

struct Operation {
    const char* name;
    void (*call)(XmlTextReader& reader);
};

// Those that read when the node at hand is not what they look for.
const Operation kReading[] = {
    {"MoveToContent", [](XmlTextReader& r) { r.MoveToContent(); }},
    {"IsStartElement", [](XmlTextReader& r) { r.IsStartElement(); }},
    {"IsStartElement(name)", [](XmlTextReader& r) { r.IsStartElement("a"); }},
    {"IsStartElement(name, uri)", [](XmlTextReader& r) { r.IsStartElement("a", ""); }},
    {"ReadStartElement", [](XmlTextReader& r) { r.ReadStartElement(); }},
    {"ReadStartElement(name)", [](XmlTextReader& r) { r.ReadStartElement("a"); }},
    {"ReadStartElement(name, uri)", [](XmlTextReader& r) { r.ReadStartElement("a", ""); }},
    {"ReadString", [](XmlTextReader& r) { r.ReadString(); }},
    {"ReadElementString", [](XmlTextReader& r) { r.ReadElementString(); }},
    {"Skip", [](XmlTextReader& r) { r.Skip(); }},
    {"SkipElement", [](XmlTextReader& r) { r.SkipElement(); }},
};

TEST(XmlTextReaderOperations, OnAClosedReader) {
    for (const bool wasOpen : {false, true}) {
        XmlTextReader reader;
        const std::string document = "<a xmlns='d' xmlns:p='u' x='1'>t</a>";
        support::DocumentStream stream(document);
        if (wasOpen) {
            ASSERT_TRUE(reader.SetStream(stream.get(), false));
            ASSERT_TRUE(reader.Read());
            ASSERT_TRUE(reader.MoveToFirstAttribute());
            reader.Close();
        }
        EXPECT_EQ(reader.ReadState(), XmlTextReader::Closed);
        ExpectNothingToMoveTo(reader);
        ExpectNoMarkup(reader);
    }
}

TEST(XmlTextReaderOperations, ThatReadWantAnInput) {
    for (const Operation& operation : kReading) {
        SCOPED_TRACE(operation.name);
        XmlTextReader reader;
        EXPECT_THROW_FULL(operation.call(reader), "No source stream to parse", "", 0, 0);
        EXPECT_EQ(reader.ReadState(), XmlTextReader::Error);
        ExpectNoMarkup(reader);
    }
}

TEST(XmlTextReaderOperations, BeforeTheFirstRead) {
    DocumentReader reader("<a x='1'>t</a>");
    EXPECT_EQ(reader->ReadState(), XmlTextReader::Initial);
    ExpectNothingToMoveTo(*reader);
    ExpectNoMarkup(*reader);
    EXPECT_EQ(NodesFromHere(*reader), "Element a; Text \"t\"; EndElement a");
}

TEST(XmlTextReaderOperations, MoveToTheFirstContentBeforeTheFirstRead) {
    const struct {
        const char* name;
        void (*call)(XmlTextReader& reader);
        const char* node;
    } kCases[] = {
        {"MoveToContent",
         [](XmlTextReader& r) { EXPECT_EQ(r.MoveToContent(), XmlNodeType::Element); }, "Element a"},
        {"IsStartElement", [](XmlTextReader& r) { EXPECT_TRUE(r.IsStartElement()); }, "Element a"},
        {"IsStartElement(name)", [](XmlTextReader& r) { EXPECT_TRUE(r.IsStartElement("a")); },
         "Element a"},
        {"IsStartElement(name, uri)",
         [](XmlTextReader& r) { EXPECT_TRUE(r.IsStartElement("a", "")); }, "Element a"},
        {"ReadStartElement", [](XmlTextReader& r) { r.ReadStartElement(); }, "Text \"t\""},
        {"ReadString", [](XmlTextReader& r) { EXPECT_EQ(r.ReadString(), ""); }, "Element a"},
        {"ReadElementString", [](XmlTextReader& r) { EXPECT_EQ(r.ReadElementString(), "t"); },
         "ProcessingInstruction p \"\""},
        {"SkipElement", [](XmlTextReader& r) { EXPECT_TRUE(r.SkipElement()); }, "Comment \"c\""},
        {"Skip", [](XmlTextReader& r) { r.Skip(); }, "None"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        DocumentReader reader("<!--c--> <a>t</a><?p?>");
        c.call(*reader);
        EXPECT_EQ(NodeText(*reader), c.node);
    }
}

TEST(XmlTextReaderOperations, AtTheEndOfTheDocument) {
    DocumentReader reader("<a xmlns='d' xmlns:p='u' x='1'>t</a><!--c-->");
    reader.ReadAll();
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(reader->ReadState(), XmlTextReader::EndOfFile);
        ExpectNothingToMoveTo(*reader);
        ExpectNoMarkup(*reader);
        EXPECT_EQ(reader->MoveToContent(), XmlNodeType::None);
        EXPECT_FALSE(reader->IsStartElement());
        EXPECT_FALSE(reader->IsStartElement("a"));
        EXPECT_FALSE(reader->IsStartElement("a", "d"));
        EXPECT_EQ(reader->ReadString(), "");
        EXPECT_NO_THROW(reader->Skip());
        EXPECT_FALSE(reader->SkipElement());
        char buffer[4] = {};
        EXPECT_EQ(reader->ReadChars(buffer, 0, 4), 0);
        for (const auto& call : {
                 +[](XmlTextReader& r) { r.ReadStartElement(); },
                 +[](XmlTextReader& r) { r.ReadStartElement("a"); },
                 +[](XmlTextReader& r) { r.ReadStartElement("a", "d"); },
             }) {
            EXPECT_THROW_FULL(call(*reader), "Not an element node", "None", reader->LineNumber(),
                              reader->LinePosition());
        }
        EXPECT_THROW_FULL(reader->ReadElementString(), "Invalid node type", "None",
                          reader->LineNumber(), reader->LinePosition());
        EXPECT_EQ(reader->ReadState(), XmlTextReader::EndOfFile);
        EXPECT_EQ(reader->NodeType(), XmlNodeType::None);
    }
}

// After an error no operation reads on, and none throws the error again.
TEST(XmlTextReaderOperations, AfterAnError) {
    const char* const kDocuments[] = {
        "<a x='1'>t</b>", "<a x='1'", "<a x='1'>t<b y='2' y='3'/>", "", "<a>t</a>]", "<a>&#0;</a>",
    };
    for (const char* document : kDocuments) {
        SCOPED_TRACE(document);
        for (const Operation& operation : kReading) {
            SCOPED_TRACE(operation.name);
            DocumentReader reader(document);
            const std::string error = MessageOf([&] { reader.ReadAll(); });
            ASSERT_NE(error, "");
            EXPECT_EQ(reader->ReadState(), XmlTextReader::Error);
            ExpectNoMarkup(*reader);
            EXPECT_NE(MessageOf([&] { operation.call(*reader); }), error);
            EXPECT_EQ(reader->ReadState(), XmlTextReader::Error);
            EXPECT_FALSE(reader->Read());
            EXPECT_EQ(reader->ReadState(), XmlTextReader::Error);
        }
    }
}

TEST(XmlTextReaderOperations, StayOnTheNodeAfterAnError) {
    DocumentReader reader("<a x='1'>t</b>");
    EXPECT_NE(MessageOf([&] { reader.ReadAll(); }), "");
    EXPECT_FALSE(reader->SkipElement());
    EXPECT_EQ(reader->MoveToContent(), reader->NodeType());
    EXPECT_NO_THROW(reader->Skip());
    EXPECT_FALSE(reader->ReadAttributeValue());
    EXPECT_FALSE(reader->MoveToElement());
    EXPECT_EQ(reader->ReadState(), XmlTextReader::Error);
    // A text that cannot be read behind is an invalid operation, as anywhere.
    const bool isText = reader->NodeType() == XmlNodeType::Text;
    EXPECT_EQ(MessageOf([&] { reader->ReadString(); }),
              isText ? "Invalid operation [ReadString]" : "");
}

TEST(XmlTextReaderOperations, AnErrorAmongThePartsOfAValueLeavesAReaderThatCanBeUsedAgain) {
    DocumentReader reader("<a x='&who;'>t</a>");
    reader.ReadNodes(1);
    ASSERT_TRUE(reader->MoveToFirstAttribute());
    ASSERT_TRUE(reader->ReadAttributeValue());
    EXPECT_EQ(MessageOf([&] { reader->ResolveEntity(); }), "Undeclared entity [who]");
    EXPECT_EQ(reader->ReadState(), XmlTextReader::Error);
    EXPECT_FALSE(reader->Read());
    ExpectNoMarkup(*reader);

    const std::string document = "<!DOCTYPE a [<!ENTITY who 'W'>]><a x='&who;'>t</a>";
    support::DocumentStream stream(document);
    ASSERT_TRUE(reader->SetStream(stream.get(), false));
    EXPECT_EQ(reader->ReadState(), XmlTextReader::Initial);
    reader.ReadNodes(2);
    ASSERT_TRUE(reader->MoveToFirstAttribute());
    ASSERT_TRUE(reader->ReadAttributeValue());
    reader->ResolveEntity();
    ASSERT_TRUE(reader->ReadAttributeValue());
    EXPECT_EQ(NodeText(*reader), "Text \"W\"");
    EXPECT_EQ(NodesFromHere(*reader), "Text \"t\"; EndElement a");
    reader->Close();
}

}  // namespace
