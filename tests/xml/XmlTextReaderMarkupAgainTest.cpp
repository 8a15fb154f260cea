// SPDX-License-Identifier: MIT
//
// Markup that is taken from a document and read again has the nodes that the element had, in
// documents in which entities hold elements, references and each other.
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentForms.h"
#include "support/DocumentReader.h"
#include "support/ReaderPosition.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

using support::DocumentReader;
using support::NodeText;
using support::ReaderSettings;
using Xml::XmlEntityHandling;
using Xml::XmlNodeType;
using Xml::XmlTextReader;

constexpr std::size_t kEntities = 6;

// Writes documents whose entities refer to entities declared before them.
class EntityDocument {
public:
    explicit EntityDocument(unsigned seed) : random_(seed) {}

    std::size_t Below(std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
    }

    void Write() {
        subset = "<!DOCTYPE r [";
        for (std::size_t i = 0; i < kEntities; ++i) {
            // Entities in values must not hold markup: t entities have text alone.
            const std::string number = std::to_string(i);
            subset += "<!ENTITY t" + number + " \"" + Text() + ReferenceBelow('t', i) + "\">";
            subset += "<!ENTITY m" + number + " \"" + Content(2, i) + "\">";
        }
        subset += "]>";
        body = "<r>" + std::string(Below(1100), 'x') + Content(0, kEntities) + "</r>";
    }

    std::string subset;
    std::string body;

private:
    std::string OneOf(std::initializer_list<const char*> choices) {
        return choices.begin()[Below(choices.size())];
    }

    std::string Text() {
        if (Below(20) == 0) return std::string(Below(1500), 'y');
        return OneOf({"", "text", "\xE2\x82\xAC", " a\n b", "]", "x\xF0\x9F\x98\x80"});
    }

    std::string ReferenceBelow(char kind, std::size_t limit) {
        if (limit == 0) return "";
        return "&" + std::string(1, kind) + std::to_string(Below(limit)) + ";";
    }

    std::string Value(std::size_t limit) {
        std::string value = Text();
        if (Below(3) == 0) value += ReferenceBelow('t', limit);
        return value + OneOf({"", "&lt;", "v"});
    }

    std::string Content(int depth, std::size_t limit) {
        std::string out;
        for (std::size_t i = 1 + Below(6); i > 0; --i) {
            switch (Below(8)) {
            case 0: out += ReferenceBelow('t', limit); break;
            case 1:
            case 2: out += ReferenceBelow('m', limit); break;
            case 3:
                out += OneOf({"<!-- <c> -->", "<![CDATA[<d>]]>", "<?p e?>", "&amp;", "\n"});
                break;
            case 4: out += Text(); break;
            default:
                if (depth < 4) out += Element(depth + 1, limit);
                break;
            }
        }
        return out;
    }

    std::string Element(int depth, std::size_t limit) {
        const std::string name = OneOf({"a", "b", "p:a"});
        std::string out = "<" + name;
        if (Below(2) == 0) out += " x='" + Value(limit) + "'";
        if (Below(4) == 0) out += "\n y = '" + Value(limit) + "'";
        if (Below(4) == 0) return out + "/>";
        return out + ">" + Content(depth, limit) + "</" + name + ">";
    }

    std::mt19937 random_;
};

// Resolves the reference that the reader stands on, and reads.
bool ReadOn(XmlTextReader& reader) {
    if (reader.NodeType() == XmlNodeType::EntityReference) reader.ResolveEntity();
    return reader.Read();
}

std::string WithAttributes(XmlTextReader& reader) {
    std::string out = NodeText(reader) + (reader.IsEmptyElement() ? " empty" : "");
    for (const Xml::XmlAttributeRef attribute : reader.Attributes())
        out += " " + attribute.Name().str() + "=" + attribute.Value().str();
    return out;
}

struct Node {
    std::string text;
    int depth;
    bool isOpening;  // a start tag that an end tag belongs to
    bool isElement;
};

std::vector<Node> NodesOf(const std::string& document, const ReaderSettings& settings) {
    std::vector<Node> nodes;
    DocumentReader reader(document, settings);
    while (ReadOn(*reader)) {
        const bool isElement = reader->NodeType() == XmlNodeType::Element;
        nodes.push_back({WithAttributes(*reader), reader->Depth(),
                         isElement && !reader->IsEmptyElement(), isElement});
    }
    return nodes;
}

// Returns the texts of the nodes, from the first to the last, joined.
std::string Join(const std::vector<Node>& nodes, std::size_t first, std::size_t last) {
    std::string out;
    for (std::size_t i = first; i <= last; ++i)
        out += nodes[i].text + "\n";
    return out;
}

std::size_t EndOf(const std::vector<Node>& nodes, std::size_t node) {
    if (!nodes[node].isOpening) return node;
    std::size_t end = node + 1;
    while (nodes[end].depth > nodes[node].depth)
        ++end;
    return end;
}

// Steps through some attributes, which must not make a difference.
void WalkAttributes(XmlTextReader& reader, std::size_t parts) {
    if (!reader.MoveToFirstAttribute()) return;
    for (std::size_t i = 0; i < parts && reader.ReadAttributeValue(); ++i) {
        if (reader.NodeType() == XmlNodeType::EntityReference) reader.ResolveEntity();
    }
    EXPECT_TRUE(reader.MoveToElement());
}

// Takes the markup of an element of the document and reads it again.
void ExpectSameNodes(const EntityDocument& source, const std::string& bytes, int bytesPerRead,
                     const ReaderSettings& settings, const std::vector<Node>& nodes,
                     std::size_t node, std::size_t walk) {
    const std::size_t end = EndOf(nodes, node);
    for (const bool isOuter : {false, true}) {
        DocumentReader reader(bytes, settings, bytesPerRead);
        for (std::size_t i = 0; i <= node; ++i)
            ASSERT_TRUE(ReadOn(*reader));
        ASSERT_EQ(WithAttributes(*reader), nodes[node].text);
        WalkAttributes(*reader, walk);

        const std::string markup =
            isOuter ? reader->ReadOuterXml().str() : "<w>" + reader->ReadInnerXml().str() + "</w>";
        if (end + 1 < nodes.size()) {
            EXPECT_EQ(WithAttributes(*reader), nodes[end + 1].text);
            EXPECT_EQ(reader->Depth(), nodes[end + 1].depth);
        } else {
            EXPECT_TRUE(reader->Eof());
        }

        const std::vector<Node> again = NodesOf(source.subset + markup, settings);
        ASSERT_GE(again.size(), 2U) << markup;  // the document type comes first
        const std::size_t last = again.size() - 1;
        if (isOuter) {
            EXPECT_EQ(Join(again, 1, last), Join(nodes, node, end)) << markup;
        } else if (end > node) {
            EXPECT_EQ(Join(again, 2, last - 1), Join(nodes, node + 1, end - 1)) << markup;
        }
    }
}

TEST(XmlTextReaderMarkupAgain, ElementsInAndAroundEntitiesHaveTheSameNodes) {
    EntityDocument document(20261121);
    std::size_t elements = 0;
    for (std::size_t i = 0; i < 400; ++i) {
        document.Write();
        ReaderSettings settings;
        settings.namespaces = false;
        settings.entities =
            i % 2 == 0 ? XmlEntityHandling::ExpandEntities : XmlEntityHandling::ExpandCharEntities;
        const std::string text = document.subset + document.body;
        const std::vector<Node> nodes = NodesOf(text, settings);
        const auto& forms = support::AllDocumentForms();
        const std::optional<std::string> bytes =
            support::WriteInForm(text, forms[i % forms.size()]);
        ASSERT_TRUE(bytes);
        const int bytesPerRead = i % 3 == 0 ? 0 : static_cast<int>(1 + document.Below(1024));
        for (int tries = 0; tries < 12; ++tries) {
            const std::size_t node = document.Below(nodes.size());
            if (!nodes[node].isElement) continue;
            ExpectSameNodes(document, *bytes, bytesPerRead, settings, nodes, node,
                            document.Below(5));
            ASSERT_FALSE(HasFailure())
                << i << ", node " << node << " of " << testing::PrintToString(text);
            ++elements;
        }
    }
    EXPECT_GE(elements, 500U);
}

}  // namespace
