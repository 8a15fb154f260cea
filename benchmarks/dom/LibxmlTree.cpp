// SPDX-License-Identifier: MIT
// libxml2's tree. Of a qualified name it has the parts; declarations of namespaces are not among
// the attributes.
#include "dom/TreeLibrary.h"

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <cstring>
#include <stdexcept>

namespace bench {

namespace {

// Depths and lengths as in the corpus are refused without XML_PARSE_HUGE.
constexpr int kOptions = XML_PARSE_HUGE | XML_PARSE_NONET | XML_PARSE_NOERROR;

std::size_t Length(const xmlChar* text) {
    return text == nullptr ? 0 : std::strlen(reinterpret_cast<const char*>(text));
}

std::size_t NameLength(const xmlChar* localName, const xmlNs* space) {
    const std::size_t prefix = space == nullptr ? 0 : Length(space->prefix);
    return (prefix == 0 ? 0 : prefix + 1) + Length(localName);
}

class LibxmlTree final : public Tree {
public:
    explicit LibxmlTree(std::string_view document)
        : document_(xmlReadMemory(document.data(), static_cast<int>(document.size()), nullptr,
                                  nullptr, kOptions)) {
        if (document_ == nullptr) throw std::runtime_error("not well-formed");
    }
    LibxmlTree(const LibxmlTree&) = delete;
    LibxmlTree& operator=(const LibxmlTree&) = delete;
    ~LibxmlTree() override { xmlFreeDoc(document_); }

    void Walk(TreeTotals& totals) const override {
        const xmlNode* const top = reinterpret_cast<const xmlNode*>(document_);
        const xmlNode* node = document_->children;
        while (node != nullptr) {
            Visit(*node, totals);
            // What a document type or a reference has below it is no content.
            const bool isElement = node->type == XML_ELEMENT_NODE;
            if (isElement && node->children != nullptr) {
                node = node->children;
                continue;
            }
            while (node != top && node->next == nullptr)
                node = node->parent;
            node = node == top ? nullptr : node->next;
        }
    }

private:
    static void Visit(const xmlNode& node, TreeTotals& totals) {
        switch (node.type) {
        case XML_ELEMENT_NODE:
            ++totals.elements;
            totals.AddName(NameLength(node.name, node.ns));
            VisitDeclarations(node, totals);
            VisitAttributes(node, totals);
            break;
        case XML_TEXT_NODE:
        case XML_CDATA_SECTION_NODE: totals.AddText(Length(node.content)); break;
        case XML_COMMENT_NODE: totals.AddOther(Length(node.content)); break;
        case XML_PI_NODE: totals.AddOther(Length(node.name) + Length(node.content)); break;
        default: break;
        }
    }

    static void VisitDeclarations(const xmlNode& element, TreeTotals& totals) {
        constexpr std::size_t kXmlnsLength = 5;
        for (const xmlNs* space = element.nsDef; space != nullptr; space = space->next) {
            ++totals.attributes;
            const std::size_t prefix = Length(space->prefix);
            totals.AddName(kXmlnsLength + (prefix == 0 ? 0 : prefix + 1));
            totals.AddValue(Length(space->href));
        }
    }

    static void VisitAttributes(const xmlNode& element, TreeTotals& totals) {
        for (const xmlAttr* attribute = element.properties; attribute != nullptr;
             attribute = attribute->next) {
            ++totals.attributes;
            totals.AddName(NameLength(attribute->name, attribute->ns));
            for (const xmlNode* part = attribute->children; part != nullptr; part = part->next) {
                totals.AddValue(Length(part->content));
            }
        }
    }

    xmlDocPtr document_;  // owned
};

}  // namespace

std::unique_ptr<Tree> LoadLibxmlTree(std::string_view document) {
    return std::make_unique<LibxmlTree>(document);
}

std::string LibxmlTreeVersion() { return LIBXML_DOTTED_VERSION; }

}  // namespace bench
