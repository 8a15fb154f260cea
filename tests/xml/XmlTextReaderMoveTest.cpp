// SPDX-License-Identifier: MIT
//
// Moving between an element and its attributes, and asking for attributes, from every node.
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentReader.h"
#include "support/EveryNode.h"
#include "support/ExpectThrow.h"
#include "support/ReaderPosition.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using support::DocumentReader;
using support::kEveryNode;
using support::kEveryNodeType;
using support::NodeAndPlace;
using support::NodeText;
using support::ReaderSettings;
using support::ReadToType;
using Xml::XmlNodeType;
using Xml::XmlTextReader;

constexpr char kFour[] = "<a x='1' xmlns:p='urn:p' p:x=\"2\" y='3'>t</a>";

TEST(XmlTextReaderMove, AttributesAreCountedOnEveryNode) {
    const struct {
        const char* node;
        int count;
    } kNodes[] = {
        {"XmlDeclaration xml \"version='1.0' encoding='UTF-8'\"", 2},
        {"Whitespace \"\\n\"", 0},
        {"DocumentType r \"<!ENTITY e 'E'>\"", 2},
        {"Comment \"c\"", 0},
        {"ProcessingInstruction p \"d\"", 0},
        {"Element r", 2},
        {"Text \"t\"", 0},
        {"CDATA \"d\"", 0},
        {"Whitespace \" \"", 0},
        {"EntityReference e", 0},
        {"Text \"E\"", 0},
        {"EndEntity e", 0},
        {"Element b", 2},
        {"SignificantWhitespace \" \"", 0},
        {"EndElement b", 0},
        {"EndElement r", 0},
    };
    DocumentReader reader(kEveryNode);
    EXPECT_EQ(reader->AttributeCount(), 0);
    EXPECT_FALSE(reader->HasAttributes());
    for (const auto& node : kNodes) {
        ASSERT_TRUE(support::ReadResolving(*reader));
        EXPECT_EQ(NodeText(*reader), node.node);
        EXPECT_EQ(reader->AttributeCount(), node.count) << node.node;
        EXPECT_EQ(reader->HasAttributes(), node.count > 0) << node.node;
    }
    EXPECT_FALSE(reader->Read());
    EXPECT_EQ(reader->AttributeCount(), 0);
    EXPECT_FALSE(reader->HasAttributes());
}

TEST(XmlTextReaderMove, AnAttributeCountsThoseOfItsElement) {
    DocumentReader reader(kFour);
    reader.ReadNodes(1);
    ASSERT_TRUE(reader->MoveToFirstAttribute());
    do {
        EXPECT_EQ(reader->AttributeCount(), 4);
        EXPECT_TRUE(reader->HasAttributes());
        EXPECT_EQ(reader->GetAttribute(3), "3");
        EXPECT_EQ(reader->GetAttribute("p:x"), "2");
        EXPECT_EQ(reader->GetAttribute("x", "urn:p"), "2");
    } while (reader->MoveToNextAttribute());
}

TEST(XmlTextReaderMove, ThereIsNoAttributeBelow0OrFromTheCountOn) {
    DocumentReader reader(kFour);
    reader.ReadNodes(1);
    for (const int index : {-1, 4, 5, 1000, 2147483647, -2147483647 - 1}) {
        EXPECT_EQ(reader->GetAttribute(index), "") << index;
        EXPECT_EQ(reader->Item(index), "") << index;
    }
    EXPECT_EQ(NodeAndPlace(*reader), "Element a depth=1 @1:1");
}

TEST(XmlTextReaderMove, GetAttribute5OnTwoAttributesIsEmptyAndMoveToAttribute5Throws) {
    DocumentReader reader("<a x='1' y='2'/>");
    reader.ReadNodes(1);
    EXPECT_EQ(reader->GetAttribute(5), "");
    EXPECT_THROW_FULL(reader->MoveToAttribute(5), "Argument out of range", "MoveToAttribute", -1,
                      -1);
}

TEST(XmlTextReaderMove, ItemIsAnAttributeOfAnElementAndEmptyElsewhere) {
    for (const XmlNodeType type : kEveryNodeType) {
        SCOPED_TRACE(type.ToString());
        DocumentReader reader(kEveryNode);
        ReadToType(*reader, type);
        const bool isElement = type == XmlNodeType::Element;
        EXPECT_EQ(reader->Item(0), isElement ? "1" : "");
        EXPECT_EQ(reader->Item(1), isElement ? "2" : "");
        EXPECT_EQ(reader->Item(-1), "");
        EXPECT_EQ(reader->Item(2), "");
    }
}

TEST(XmlTextReaderMove, PseudoAttributesAreReadButNotEntered) {
    const struct {
        XmlNodeType type;
        const char* names[2];
        const char* values[2];
    } kCases[] = {
        {XmlNodeType::XmlDeclaration, {"version", "encoding"}, {"1.0", "UTF-8"}},
        {XmlNodeType::DocumentType, {"PUBLIC", "SYSTEM"}, {"-//E//D", "e.dtd"}},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.type.ToString());
        DocumentReader reader(kEveryNode);
        ReadToType(*reader, c.type);
        const std::string before = NodeAndPlace(*reader);
        for (const int i : {0, 1}) {
            EXPECT_EQ(reader->GetAttribute(i), c.values[i]);
            EXPECT_EQ(reader->GetAttribute(c.names[i]), c.values[i]);
            EXPECT_FALSE(reader->MoveToAttribute(c.names[i]));
            EXPECT_FALSE(reader->MoveToAttribute(c.names[i], ""));
            EXPECT_NO_THROW(reader->MoveToAttribute(i));
            EXPECT_EQ(NodeAndPlace(*reader), before);
        }
        EXPECT_EQ(reader->GetAttribute(2), "");
        EXPECT_EQ(reader->GetAttribute("x"), "");
        EXPECT_FALSE(reader->MoveToFirstAttribute());
        EXPECT_FALSE(reader->MoveToNextAttribute());
        EXPECT_FALSE(reader->MoveToElement());
        EXPECT_FALSE(reader->ReadAttributeValue());
        EXPECT_EQ(NodeAndPlace(*reader), before);
    }
}

TEST(XmlTextReaderMove, NothingMovesOnOtherNodes) {
    for (const XmlNodeType type : kEveryNodeType) {
        if (type == XmlNodeType::Element || type == XmlNodeType::Attribute) continue;
        SCOPED_TRACE(type.ToString());
        DocumentReader reader(kEveryNode);
        ReadToType(*reader, type);
        const std::string before = NodeAndPlace(*reader);
        for (const int index : {0, 1, -1, 100})
            EXPECT_NO_THROW(reader->MoveToAttribute(index));
        for (const char* name : {"x", "z", "xml:space", "PUBLIC", "version", ""}) {
            EXPECT_FALSE(reader->MoveToAttribute(name)) << name;
            EXPECT_FALSE(reader->MoveToAttribute(name, "")) << name;
        }
        EXPECT_FALSE(reader->MoveToElement());
        EXPECT_FALSE(reader->MoveToFirstAttribute());
        EXPECT_FALSE(reader->MoveToNextAttribute());
        EXPECT_FALSE(reader->ReadAttributeValue());
        EXPECT_EQ(NodeAndPlace(*reader), before);
        EXPECT_EQ(reader->ReadState(), XmlTextReader::Interactive);
    }
}

TEST(XmlTextReaderMove, ToAnAttributeByIndexFromTheElementAndFromAnAttribute) {
    DocumentReader reader(kFour);
    reader.ReadNodes(1);
    // The colon of a prefixed name adds nothing to the position.
    const struct {
        int index;
        const char* node;
        char quote;
    } kMoves[] = {
        {2, "Attribute p:x \"2\" depth=2 @1:25", '"'},
        {0, "Attribute x \"1\" depth=2 @1:4", '\''},
        {3, "Attribute y \"3\" depth=2 @1:32", '\''},
        {3, "Attribute y \"3\" depth=2 @1:32", '\''},
        {1, "Attribute xmlns:p \"urn:p\" depth=2 @1:10", '\''},
    };
    for (const auto& move : kMoves) {
        reader->MoveToAttribute(move.index);
        EXPECT_EQ(NodeAndPlace(*reader), move.node);
        EXPECT_EQ(reader->GetCurrentAttributeIndex(), move.index);
        EXPECT_EQ(reader->QuoteChar(), move.quote);
    }
    EXPECT_TRUE(reader->MoveToElement());
    EXPECT_EQ(NodeAndPlace(*reader), "Element a depth=1 @1:1");
    reader->MoveToAttribute(3);
    EXPECT_EQ(reader->Name(), "y");
}

TEST(XmlTextReaderMove, OutOfRangeThrowsAndChangesNothing) {
    DocumentReader reader(kFour);
    reader.ReadNodes(1);
    for (const bool onAttribute : {false, true}) {
        if (onAttribute) reader->MoveToAttribute(2);
        const std::string before = NodeAndPlace(*reader);
        for (const int index : {-1, 4, 5, 2147483647, -2147483647 - 1}) {
            EXPECT_THROW_FULL(reader->MoveToAttribute(index), "Argument out of range",
                              "MoveToAttribute", -1, -1);
            EXPECT_EQ(NodeAndPlace(*reader), before);
            EXPECT_EQ(reader->GetCurrentAttributeIndex(), onAttribute ? 2 : 0);
            EXPECT_EQ(reader->ReadState(), XmlTextReader::Interactive);
        }
    }
    EXPECT_EQ(support::NodesFromHere(*reader), "Text \"t\"; EndElement a");
}

TEST(XmlTextReaderMove, OnAnElementWithoutAttributesEveryIndexIsOutOfRange) {
    DocumentReader reader("<a/>");
    reader.ReadNodes(1);
    for (const int index : {0, -1, 1}) {
        EXPECT_THROW_FULL(reader->MoveToAttribute(index), "Argument out of range",
                          "MoveToAttribute", -1, -1);
    }
    EXPECT_FALSE(reader->MoveToFirstAttribute());
    EXPECT_FALSE(reader->MoveToAttribute("x"));
    EXPECT_FALSE(reader->MoveToAttribute("x", ""));
    EXPECT_EQ(NodeAndPlace(*reader), "Element a depth=1 @1:1");
}

TEST(XmlTextReaderMove, ToAnAttributeByName) {
    DocumentReader reader(kFour);
    reader.ReadNodes(1);
    const struct {
        const char* name;
        bool found;
        const char* after;  // the name of the node
        int index;
    } kMoves[] = {
        {"none", false, "a", 0},
        {"p:x", true, "p:x", 2},
        {"x", true, "x", 0},
        {"X", false, "x", 0},
        {"y", true, "y", 3},
        {"", false, "y", 3},
        {"a", false, "y", 3},
        {"xmlns:p", true, "xmlns:p", 1},
        {"xmlns", false, "xmlns:p", 1},
        {"p", false, "xmlns:p", 1},
    };
    for (const auto& move : kMoves) {
        EXPECT_EQ(reader->MoveToAttribute(move.name), move.found) << move.name;
        EXPECT_EQ(reader->Name(), move.after) << move.name;
        EXPECT_EQ(reader->GetCurrentAttributeIndex(), move.index) << move.name;
    }
}

TEST(XmlTextReaderMove, ToAnAttributeByNamespace) {
    DocumentReader reader(kFour);
    reader.ReadNodes(1);
    const struct {
        const char* localName;
        const char* namespaceUri;
        bool found;
        const char* after;
        int index;
    } kMoves[] = {
        {"y", "urn:p", false, "a", 0},   {"x", "urn:p", true, "p:x", 2},
        {"x", "", true, "x", 0},         {"x", "urn:P", false, "x", 0},
        {"p:x", "urn:p", false, "x", 0}, {"y", "", true, "y", 3},
        {"", "", false, "y", 3},         {"p", "", false, "y", 3},
        {"xmlns:p", "", false, "y", 3},  {"x", "urn", false, "y", 3},
        {"p:x", "urn", false, "y", 3},   {"p", "http://www.w3.org/2000/xmlns/", false, "y", 3},
    };
    for (const auto& move : kMoves) {
        SCOPED_TRACE(std::string(move.localName) + " in " + move.namespaceUri);
        EXPECT_EQ(reader->MoveToAttribute(move.localName, move.namespaceUri), move.found);
        EXPECT_EQ(reader->Name(), move.after);
        EXPECT_EQ(reader->GetCurrentAttributeIndex(), move.index);
    }
}

TEST(XmlTextReaderMove, NothingIsFoundByNamespaceWhenTheyAreOff) {
    ReaderSettings settings;
    settings.namespaces = false;
    DocumentReader reader(kFour, settings);
    reader.ReadNodes(1);
    EXPECT_FALSE(reader->MoveToAttribute("x", "urn:p"));
    EXPECT_FALSE(reader->MoveToAttribute("x", ""));
    EXPECT_EQ(reader->NodeType(), XmlNodeType::Element);
    EXPECT_TRUE(reader->MoveToAttribute("p:x"));
    EXPECT_EQ(NodeText(*reader), "Attribute p:x \"2\"");
}

// A name need not end in a NUL, and may be of any of the types of strings.
TEST(XmlTextReaderMove, NamesMayBeViewsAndStrings) {
    DocumentReader reader(kFour);
    reader.ReadNodes(1);
    constexpr std::string_view kLong = "p:xyz urn:pqr";
    const std::string_view name = kLong.substr(0, 3);
    const std::string_view uri = kLong.substr(6, 5);
    EXPECT_EQ(reader->GetAttribute(name), "2");
    EXPECT_EQ(reader->GetAttribute(name.substr(2), uri), "2");
    EXPECT_EQ(reader->GetAttribute(std::string(name)), "2");
    EXPECT_EQ(reader->GetAttribute(astring("p:x")), "2");
    EXPECT_EQ(reader->GetAttribute(astring("x"), std::string("urn:p")), "2");
    EXPECT_TRUE(reader->MoveToAttribute(name));
    EXPECT_TRUE(reader->MoveToAttribute(name.substr(2), uri));
    EXPECT_TRUE(reader->MoveToAttribute(astring("y")));
    EXPECT_EQ(reader->Name(), "y");
    EXPECT_EQ(reader->LookupNamespace(kLong.substr(0, 1)), "urn:p");
    // A NUL belongs to the name.
    EXPECT_EQ(reader->GetAttribute(std::string_view("x\0", 2)), "");
    EXPECT_EQ(reader->GetAttribute(std::string_view()), "");
}

TEST(XmlTextReaderMove, FirstAttributeFromTheElementAndFromAnyAttribute) {
    DocumentReader reader(kFour);
    EXPECT_FALSE(reader->MoveToFirstAttribute());
    EXPECT_FALSE(reader->MoveToNextAttribute());
    reader.ReadNodes(1);
    for (int i = 0; i < 4; ++i) {
        reader->MoveToAttribute(i);
        EXPECT_TRUE(reader->MoveToFirstAttribute());
        EXPECT_EQ(reader->Name(), "x");
        EXPECT_EQ(reader->GetCurrentAttributeIndex(), 0);
    }
}

// Deliberate: the element itself has no next attribute; callers go to the first one by name.
TEST(XmlTextReaderMove, MoveToNextAttributeOnTheElementDoesNotGoToTheFirst) {
    DocumentReader reader(kFour);
    reader.ReadNodes(1);
    for (int i = 0; i < 2; ++i) {
        EXPECT_FALSE(reader->MoveToNextAttribute());
        EXPECT_EQ(NodeAndPlace(*reader), "Element a depth=1 @1:1");
    }
    ASSERT_TRUE(reader->MoveToFirstAttribute());
    std::string names = reader->Name().str();
    while (reader->MoveToNextAttribute())
        names += " " + reader->Name().str();
    EXPECT_EQ(names, "x xmlns:p p:x y");
    EXPECT_FALSE(reader->MoveToNextAttribute());
    EXPECT_EQ(reader->Name(), "y");
    // Back on the element it is as before, wherever the walk had got to.
    reader->MoveToAttribute(1);
    ASSERT_TRUE(reader->MoveToElement());
    EXPECT_FALSE(reader->MoveToNextAttribute());
    EXPECT_EQ(NodeAndPlace(*reader), "Element a depth=1 @1:1");
}

TEST(XmlTextReaderMove, NextAttributeGoesOnFromWhereAMoveLed) {
    DocumentReader reader(kFour);
    reader.ReadNodes(1);
    ASSERT_TRUE(reader->MoveToAttribute("xmlns:p"));
    ASSERT_TRUE(reader->MoveToNextAttribute());
    EXPECT_EQ(reader->Name(), "p:x");
    ASSERT_TRUE(reader->MoveToAttribute("x", ""));
    ASSERT_TRUE(reader->MoveToNextAttribute());
    EXPECT_EQ(reader->Name(), "xmlns:p");
    reader->MoveToAttribute(3);
    EXPECT_FALSE(reader->MoveToNextAttribute());
    EXPECT_EQ(reader->Name(), "y");
}

TEST(XmlTextReaderMove, WhateverWasVisitedReadGoesOnBehindTheElement) {
    const auto moves = {
        +[](XmlTextReader& reader) { reader.MoveToAttribute(1); },
        +[](XmlTextReader& reader) { EXPECT_TRUE(reader.MoveToAttribute("p:x")); },
        +[](XmlTextReader& reader) { EXPECT_TRUE(reader.MoveToAttribute("x", "urn:p")); },
        +[](XmlTextReader& reader) {
            EXPECT_TRUE(reader.MoveToFirstAttribute());
            EXPECT_TRUE(reader.MoveToNextAttribute());
        },
    };
    for (const auto& move : moves) {
        DocumentReader reader(kFour);
        reader.ReadNodes(1);
        move(*reader);
        EXPECT_EQ(reader->NodeType(), XmlNodeType::Attribute);
        EXPECT_EQ(support::NodesFromHere(*reader), "Text \"t\"; EndElement a");
    }
}

}  // namespace
