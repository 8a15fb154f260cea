// SPDX-License-Identifier: MIT
#include "Libxml.h"
#include "Trees.h"

#include <libxml/tree.h>

#include <memory>

namespace differential {

namespace {

template <typename Node>
std::string NameOf(const Node& node) {
    return ExpandedName(node.ns == nullptr ? std::string_view() : TextOf(node.ns->href),
                        TextOf(node.name));
}

std::string ValueOf(const xmlAttr& attribute) {
    std::string value;
    for (const xmlNode* part = attribute.children; part != nullptr; part = part->next) {
        if (part->type == XML_ENTITY_REF_NODE) {
            value += "&" + std::string(TextOf(part->name)) + ";";
        } else {
            value += TextOf(part->content);
        }
    }
    return value;
}

void Begin(const xmlNode& node, EventList& events) {
    switch (node.type) {
    case XML_ELEMENT_NODE: {
        EventList::Attributes attributes;
        for (const xmlAttr* attribute = node.properties; attribute != nullptr;
             attribute = attribute->next) {
            attributes.emplace_back(NameOf(*attribute), ValueOf(*attribute));
        }
        events.Start(NameOf(node), attributes);
        break;
    }
    case XML_TEXT_NODE:
    case XML_CDATA_SECTION_NODE: events.Text(TextOf(node.content)); break;
    case XML_ENTITY_REF_NODE: events.Text("&" + std::string(TextOf(node.name)) + ";"); break;
    case XML_COMMENT_NODE: events.Comment(TextOf(node.content)); break;
    case XML_PI_NODE: events.Instruction(TextOf(node.name), TextOf(node.content)); break;
    default: break;
    }
}

// The children of a reference and of the document type belong to the declarations of entities.
const xmlNode* ChildrenOf(const xmlNode& node) {
    return node.type == XML_ELEMENT_NODE ? node.children : nullptr;
}

void TellTree(const xmlDoc& document, EventList& events) {
    const xmlNode* node = document.children;
    while (node != nullptr) {
        Begin(*node, events);
        const xmlNode* next = ChildrenOf(*node);
        while (next == nullptr && node != nullptr) {
            if (node->type == XML_ELEMENT_NODE) events.End(NameOf(*node));
            next = node->next;
            if (next != nullptr) break;
            node = node->parent;
            if (node == nullptr || node->type == XML_DOCUMENT_NODE) return;
        }
        node = next;
    }
}

}  // namespace

Reading ReadAsLibxmlTree(const std::string& document) {
    constexpr int kOptions =
        XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_NOERROR | XML_PARSE_NOWARNING;
    const LibxmlContext context = MakeLibxmlContext();
    const std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> tree(
        xmlCtxtReadMemory(context.get(), document.data(), static_cast<int>(document.size()),
                          nullptr, nullptr, kOptions),
        &xmlFreeDoc);
    if (tree == nullptr || context->wellFormed == 0 || context->nsWellFormed == 0) {
        return {{}, "is refused"};
    }
    EventList events(Detail::Whole);
    TellTree(*tree, events);
    return {events.Lines(), ""};
}

}  // namespace differential
