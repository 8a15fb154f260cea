// SPDX-License-Identifier: MIT
//
// Leaving the parts of an attribute's value before their end.
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentReader.h"
#include "support/ExpectThrow.h"
#include "support/ReaderPosition.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using support::DocumentReader;
using support::NodesFromHere;
using support::NodeText;
using Xml::XmlNodeType;
using Xml::XmlTextReader;

constexpr char kDocument[] =
    "<!DOCTYPE a [<!ENTITY e 'E'><!ENTITY n '(&e;)'>]>"
    "<a x='X' y='1&n;2' p:z='Z' xmlns:p='u'>t&n;</a>";

// The parts of y, all entities resolved.
const char* const kParts[] = {
    "Text \"1\"",  "EntityReference n", "Text \"(\"",  "EntityReference e", "Text \"E\"",
    "EndEntity e", "Text \")\"",        "EndEntity n", "Text \"2\"",
};
constexpr int kPartCount = 9;

enum class LastReference { Left, Resolved };

bool ReadPart(XmlTextReader& reader) {
    if (reader.NodeType() == XmlNodeType::EntityReference) reader.ResolveEntity();
    return reader.ReadAttributeValue();
}

// Reads to a part of y, counted from 1.
void ReadToPart(DocumentReader& reader, int part, LastReference last) {
    reader.ReadToElement();
    ASSERT_TRUE(reader->MoveToAttribute("y"));
    for (int i = 0; i < part; ++i) {
        ASSERT_TRUE(ReadPart(*reader));
        ASSERT_EQ(NodeText(*reader), kParts[i]);
    }
    if (last == LastReference::Resolved) reader->ResolveEntity();
}

std::string AllParts(XmlTextReader& reader) {
    std::string out;
    while (ReadPart(reader))
        out += NodeText(reader) + "\n";
    return out;
}

std::string ExpectedParts() {
    std::string out;
    for (const char* part : kParts)
        out += std::string(part) + "\n";
    return out;
}

// Calls `check` with a reader on every part, and on every reference with its entity resolved.
template <typename Check>
void OnEveryPart(const Check& check) {
    for (int part = 1; part <= kPartCount; ++part) {
        for (const LastReference last : {LastReference::Left, LastReference::Resolved}) {
            const bool isReference =
                std::string(kParts[part - 1]).find("EntityReference") != std::string::npos;
            if (last == LastReference::Resolved && !isReference) continue;
            SCOPED_TRACE(std::string(kParts[part - 1]) +
                         (last == LastReference::Resolved ? ", resolved" : ""));
            DocumentReader reader(kDocument);
            ReadToPart(reader, part, last);
            check(reader);
        }
    }
}

TEST(XmlTextReaderUnwind, EveryMoveLeavesTheParts) {
    const struct {
        const char* name;
        bool (*move)(XmlTextReader& reader);
        bool result;
        const char* node;
    } kMoves[] = {
        {"MoveToAttribute(0)",
         [](XmlTextReader& r) {
             r.MoveToAttribute(0);
             return true;
         },
         true, "Attribute x \"X\""},
        {"MoveToAttribute(1)",
         [](XmlTextReader& r) {
             r.MoveToAttribute(1);
             return true;
         },
         true, "Attribute y \"1&n;2\""},
        {"MoveToAttribute(p:z)", [](XmlTextReader& r) { return r.MoveToAttribute("p:z"); }, true,
         "Attribute p:z \"Z\""},
        {"MoveToAttribute(none)", [](XmlTextReader& r) { return r.MoveToAttribute("none"); }, false,
         "Attribute y \"1&n;2\""},
        {"MoveToAttribute(z, u)", [](XmlTextReader& r) { return r.MoveToAttribute("z", "u"); },
         true, "Attribute p:z \"Z\""},
        {"MoveToAttribute(z, v)", [](XmlTextReader& r) { return r.MoveToAttribute("z", "v"); },
         false, "Attribute y \"1&n;2\""},
        {"MoveToElement", [](XmlTextReader& r) { return r.MoveToElement(); }, true, "Element a"},
        {"MoveToFirstAttribute", [](XmlTextReader& r) { return r.MoveToFirstAttribute(); }, true,
         "Attribute x \"X\""},
        {"MoveToNextAttribute", [](XmlTextReader& r) { return r.MoveToNextAttribute(); }, true,
         "Attribute p:z \"Z\""},
    };
    for (const auto& move : kMoves) {
        SCOPED_TRACE(move.name);
        OnEveryPart([&](DocumentReader& reader) {
            EXPECT_EQ(move.move(*reader), move.result);
            EXPECT_EQ(NodeText(*reader), move.node);
            EXPECT_EQ(reader->AttributeCount(), 4);
            // Nothing is left over: the value can be read again, and the content behind.
            ASSERT_TRUE(reader->MoveToAttribute("y"));
            EXPECT_EQ(AllParts(*reader), ExpectedParts());
            EXPECT_EQ(NodesFromHere(*reader), "Text \"t\"; EntityReference n; EndElement a");
        });
    }
}

TEST(XmlTextReaderUnwind, ReadGoesOnBehindTheElement) {
    OnEveryPart([](DocumentReader& reader) {
        EXPECT_EQ(NodesFromHere(*reader, 2), "Text \"t\"; EntityReference n");
        EXPECT_EQ(reader->MoveToElement(), false);
        EXPECT_EQ(reader->ReadAttributeValue(), false);
        // The entity was left, so it is not within itself.
        reader->ResolveEntity();
        EXPECT_EQ(NodesFromHere(*reader, 2), "Text \"(\"; EntityReference e");
        reader->ResolveEntity();
        EXPECT_EQ(NodesFromHere(*reader),
                  "Text \"E\"; EndEntity e; Text \")\"; EndEntity n; EndElement a");
    });
}

TEST(XmlTextReaderUnwind, BehindTheLastAttributeThereIsNoNext) {
    DocumentReader reader("<a x='1' y='2&e;3'>t</a>");
    reader.ReadNodes(1);
    ASSERT_TRUE(reader->MoveToAttribute("y"));
    for (int parts = 1; parts <= 3; ++parts) {
        for (int i = 0; i < parts; ++i)
            ASSERT_TRUE(reader->ReadAttributeValue());
        EXPECT_FALSE(reader->MoveToNextAttribute());
        EXPECT_EQ(NodeText(*reader), "Attribute y \"2&e;3\"");
        EXPECT_EQ(reader->GetCurrentAttributeIndex(), 1);
    }
    EXPECT_EQ(NodesFromHere(*reader), "Text \"t\"; EndElement a");
}

TEST(XmlTextReaderUnwind, OutOfRangeFromAPartThrowsAndTheReaderGoesOn) {
    OnEveryPart([](DocumentReader& reader) {
        EXPECT_THROW_FULL(reader->MoveToAttribute(4), "Argument out of range", "MoveToAttribute",
                          -1, -1);
        EXPECT_EQ(reader->ReadState(), XmlTextReader::Interactive);
        EXPECT_TRUE(reader->MoveToElement());
        EXPECT_EQ(NodeText(*reader), "Element a");
        EXPECT_EQ(NodesFromHere(*reader), "Text \"t\"; EntityReference n; EndElement a");
    });
}

TEST(XmlTextReaderUnwind, QuestionsDoNotLeaveTheParts) {
    OnEveryPart([](DocumentReader& reader) {
        const std::string part = NodeText(*reader);
        EXPECT_EQ(reader->AttributeCount(), 0);
        EXPECT_FALSE(reader->HasAttributes());
        EXPECT_EQ(reader->GetAttribute(1), "");
        EXPECT_EQ(reader->GetAttribute("y"), "1&n;2");
        EXPECT_EQ(reader->GetAttribute("z", "u"), "Z");
        EXPECT_EQ(reader->Item(1), "");
        EXPECT_EQ(reader->LookupNamespace("p"), "u");
        EXPECT_TRUE(reader->Attributes().empty());
        EXPECT_EQ(NodeText(*reader), part);
    });
}

// A part is content like any other text, reference or end of an entity.
TEST(XmlTextReaderUnwind, MoveToContentStaysOnAPart) {
    OnEveryPart([](DocumentReader& reader) {
        const std::string part = NodeText(*reader);
        const XmlNodeType type = reader->NodeType();
        EXPECT_EQ(reader->MoveToContent(), type);
        EXPECT_FALSE(reader->IsStartElement());
        EXPECT_EQ(NodeText(*reader), part);
    });
}

TEST(XmlTextReaderUnwind, MarkupOfAPartIsEmptyAndReadsBehindTheElement) {
    OnEveryPart([](DocumentReader& reader) {
        EXPECT_EQ(reader->ReadInnerXml(), "");
        EXPECT_EQ(NodeText(*reader), "Text \"t\"");
    });
    OnEveryPart([](DocumentReader& reader) {
        EXPECT_EQ(reader->ReadOuterXml(), "");
        EXPECT_EQ(NodeText(*reader), "Text \"t\"");
    });
}

TEST(XmlTextReaderUnwind, SkipFromAPartSkipsTheElement) {
    for (int part = 1; part <= 3; ++part) {
        SCOPED_TRACE(part);
        DocumentReader again("<r><a x='1&e;2'><b/>t</a><c/></r>");
        again.ReadNodes(2);
        ASSERT_TRUE(again->MoveToFirstAttribute());
        for (int i = 0; i < part; ++i)
            ASSERT_TRUE(again->ReadAttributeValue());
        again->Skip();
        EXPECT_EQ(NodeText(*again), "Element c");
    }
}

TEST(XmlTextReaderUnwind, ANewInputForgetsTheParts) {
    OnEveryPart([](DocumentReader& reader) {
        const std::string document = "<c x='&n;'>u</c>";
        support::DocumentStream stream(document);
        ASSERT_TRUE(reader->SetStream(stream.get(), false));
        EXPECT_FALSE(reader->ReadAttributeValue());
        reader.ReadNodes(1);
        ASSERT_TRUE(reader->MoveToFirstAttribute());
        ASSERT_TRUE(reader->ReadAttributeValue());
        EXPECT_EQ(NodeText(*reader), "EntityReference n");
        EXPECT_THROW(reader->ResolveEntity(), Xml::Exception);
        reader->Close();
    });
}

TEST(XmlTextReaderUnwind, CloseAmongThePartsLeavesNothing) {
    OnEveryPart([](DocumentReader& reader) {
        reader->Close();
        EXPECT_EQ(reader->ReadState(), XmlTextReader::Closed);
        EXPECT_EQ(reader->NodeType(), XmlNodeType::None);
        EXPECT_FALSE(reader->ReadAttributeValue());
        EXPECT_FALSE(reader->MoveToElement());
        EXPECT_FALSE(reader->MoveToFirstAttribute());
    });
}

}  // namespace
