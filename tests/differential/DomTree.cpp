// SPDX-License-Identifier: MIT
#include <espalier/dom.h>
#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>

#include "Trees.h"

namespace differential {

namespace {

using Dom::DOMNodeType;

std::string NameOf(const Dom::Element& element) {
    return ExpandedName(element.NamespaceURI(), element.LocalNameView());
}

EventList::Attributes AttributesOf(const Dom::Element& element) {
    EventList::Attributes attributes;
    for (const Dom::AttributeView attribute : element.AttributeViews()) {
        if (attribute.Name() == "xmlns" || attribute.Prefix() == "xmlns") continue;
        attributes.emplace_back(ExpandedName(attribute.NamespaceURI(), attribute.LocalName()),
                                attribute.Value());
    }
    return attributes;
}

void Begin(const Dom::Node& node, EventList& events) {
    switch (node.NodeType()) {
    case DOMNodeType::ELEMENT_NODE: {
        const auto& element = static_cast<const Dom::Element&>(node);
        events.Start(NameOf(element), AttributesOf(element));
        break;
    }
    case DOMNodeType::TEXT_NODE:
    case DOMNodeType::CDATA_SECTION_NODE: events.Text(node.NodeValue()); break;
    case DOMNodeType::ENTITY_REFERENCE_NODE: events.Text("&" + node.NodeName().str() + ";"); break;
    case DOMNodeType::COMMENT_NODE: events.Comment(node.NodeValue()); break;
    case DOMNodeType::PROCESSING_INSTRUCTION_NODE:
        events.Instruction(node.NodeName(), node.NodeValue());
        break;
    default: events.Comment("a node of an unexpected type"); break;
    }
}

void End(const Dom::Node& node, EventList& events) {
    if (node.NodeType() != DOMNodeType::ELEMENT_NODE) return;
    events.End(NameOf(static_cast<const Dom::Element&>(node)));
}

void TellTree(const Dom::Document& document, EventList& events) {
    const Dom::Node* node = document.FirstChild();
    while (node != nullptr) {
        Begin(*node, events);
        const Dom::Node* next = node->FirstChild();
        while (next == nullptr && node != &document) {
            End(*node, events);
            next = node->NextSibling();
            if (next == nullptr) node = node->ParentNode();
        }
        node = next;
    }
}

}  // namespace

Reading ReadAsTree(const std::string& document) {
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(document.data()),
                            static_cast<long>(document.size()));
    Xml::XmlTextReader reader;
    reader.SetStream(&stream, false);
    reader.SetNormalization(true);
    Dom::Document tree;
    Reading reading;
    try {
        tree.Load(reader, "");
    } catch (const Xml::Exception& error) {
        reading.error = error.What();
    }
    EventList events(Detail::Whole);
    TellTree(tree, events);
    reading.lines = events.Lines();
    return reading;
}

}  // namespace differential
