// SPDX-License-Identifier: MIT
// Our tree, with all white space and with line ends and attribute values normalized.
#include <espalier/dom/CharacterData.h>
#include <espalier/dom/Document.h>
#include <espalier/dom/Element.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>

#include "dom/TreeLibrary.h"

namespace bench {

namespace {

class EspalierTree final : public Tree {
public:
    explicit EspalierTree(std::string_view document) {
        IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(document.data()),
                                static_cast<long>(document.size()));
        Xml::XmlTextReader reader;
        reader.SetStream(&stream, false);
        reader.SetWhitespaceHandling(Xml::XmlTextReader::WsAll);
        reader.SetNormalization(true);
        document_.Load(reader, "");
    }

    void Walk(TreeTotals& totals) const override {
        const Dom::Node* node = document_.FirstChild();
        while (node != nullptr) {
            Visit(*node, totals);
            if (const Dom::Node* const child = node->FirstChild()) {
                node = child;
                continue;
            }
            while (node != nullptr && node->NextSibling() == nullptr)
                node = node->ParentNode();
            if (node != nullptr) node = node->NextSibling();
        }
    }

private:
    static void Visit(const Dom::Node& node, TreeTotals& totals) {
        switch (node.NodeType()) {
        case Dom::Node::ELEMENT_NODE:
            ++totals.elements;
            totals.AddName(node.NodeName().size());
            VisitAttributes(static_cast<const Dom::Element&>(node), totals);
            break;
        case Dom::Node::TEXT_NODE:
        case Dom::Node::CDATA_SECTION_NODE: totals.AddText(node.NodeValue().size()); break;
        case Dom::Node::COMMENT_NODE: totals.AddOther(node.NodeValue().size()); break;
        case Dom::Node::PROCESSING_INSTRUCTION_NODE:
            totals.AddOther(node.NodeName().size() + node.NodeValue().size());
            break;
        default: break;
        }
    }

    static void VisitAttributes(const Dom::Element& element, TreeTotals& totals) {
        for (const Dom::AttributeView attribute : element.AttributeViews()) {
            ++totals.attributes;
            totals.AddName(attribute.Name().size());
            totals.AddValue(attribute.Value().size());
        }
    }

    Dom::Document document_;
};

}  // namespace

std::unique_ptr<Tree> LoadEspalierTree(std::string_view document) {
    return std::make_unique<EspalierTree>(document);
}

}  // namespace bench
