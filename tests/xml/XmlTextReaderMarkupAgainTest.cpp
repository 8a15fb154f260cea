// SPDX-License-Identifier: MIT
//
// Markup that is taken from a document and read again has the nodes that the element had, in
// documents in which entities hold elements, references and each other.
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentForms.h"
#include "support/DocumentReader.h"
#include "support/EntityDocument.h"
#include "support/ReaderPosition.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace {

using support::DocumentReader;
using support::EntityDocument;
using support::NodeText;
using support::ReaderSettings;
using Xml::XmlEntityHandling;
using Xml::XmlNodeType;
using Xml::XmlTextReader;

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
