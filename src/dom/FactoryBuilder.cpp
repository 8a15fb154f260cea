// SPDX-License-Identifier: MIT
#include "dom/FactoryBuilder.h"

#include <espalier/dom/CDATASection.h>
#include <espalier/dom/Comment.h>
#include <espalier/dom/Element.h>
#include <espalier/dom/EntityReference.h>
#include <espalier/dom/NodePtr.h>
#include <espalier/dom/ProcessingInstruction.h>
#include <espalier/dom/Text.h>

namespace Dom::detail {

namespace {

using Xml::XmlNodeType;

// Appends a new node, which is destroyed when it cannot be.
Node& Append(Node& parent, Node* made) {
    NodePtr node(made);
    parent.AppendChild(node.get());
    return *node.release();
}

}  // namespace

void BuildValue(Document& document, Xml::XmlTextReader& reader, Attr& attribute, bool isWhole) {
    astring whole;
    bool hasParts = false;
    while (reader.ReadAttributeValue()) {
        hasParts = true;
        if (reader.NodeType() == XmlNodeType::EntityReference) {
            Append(attribute, document.CreateEntityReference(reader.Name()));
            whole += '&' + reader.Name() + ';';
        } else {
            Append(attribute, document.CreateTextNode(reader.Value()));
            whole += reader.Value();
        }
    }
    if (!hasParts) {
        attribute.SetValue(reader.Value());
    } else if (isWhole) {
        attribute.SetValue(whole);
    }
}

template <bool kNamespaces>
void FactoryBuilder::AddAttribute(Element& element) {
    std::unique_ptr<Attr> attribute(
        kNamespaces ? document_.CreateAttributeNS(reader_.NamespaceURI(), reader_.Name())
                    : document_.CreateAttribute(reader_.Name()));
    BuildValue(document_, reader_, *attribute, kNamespaces);
    Attr* const replaced = kNamespaces ? element.SetAttributeNodeNS(attribute.get())
                                       : element.SetAttributeNode(attribute.get());
    (void)attribute.release();
    delete replaced;
}

template <bool kNamespaces>
Node& FactoryBuilder::AddElement(Node& parent) {
    Element* const made = kNamespaces
                              ? document_.CreateElementNS(reader_.NamespaceURI(), reader_.Name())
                              : document_.CreateElement(reader_.Name());
    Append(parent, made);
    if (reader_.MoveToFirstAttribute()) {
        do {
            AddAttribute<kNamespaces>(*made);
        } while (reader_.MoveToNextAttribute());
        reader_.MoveToElement();
    }
    return *made;
}

template Node& FactoryBuilder::AddElement<true>(Node& parent);
template Node& FactoryBuilder::AddElement<false>(Node& parent);

void FactoryBuilder::AddText(Node& parent) {
    Append(parent, document_.CreateTextNode(reader_.Value()));
}

void FactoryBuilder::AddCDATASection(Node& parent) {
    Append(parent, document_.CreateCDATASection(reader_.Value()));
}

void FactoryBuilder::AddComment(Node& parent) {
    Append(parent, document_.CreateComment(reader_.Value()));
}

void FactoryBuilder::AddReference(Node& parent, std::string_view name) {
    Append(parent, document_.CreateEntityReference(name));
}

void FactoryBuilder::AddInstruction(Node& parent) {
    Append(parent, document_.CreateProcessingInstruction(reader_.Name(), reader_.Value()));
}

}  // namespace Dom::detail
