// SPDX-License-Identifier: MIT

/// \file
/// The classes of nodes that add next to nothing.

#include <espalier/dom/DocumentFragment.h>
#include <espalier/dom/DocumentType.h>
#include <espalier/dom/EntityReference.h>
#include <espalier/dom/ProcessingInstruction.h>

#include "dom/InterfaceName.h"
#include "dom/NodeAccess.h"

namespace Dom {

using detail::IsInterface;
using detail::NodeAccess;

EntityReference::EntityReference(std::string_view name, Document* ownerDocument)
    : Node(ENTITY_REFERENCE_NODE, {}, name, ownerDocument) {}

EntityReference::EntityReference(const detail::NodeName* name)
    : Node(ENTITY_REFERENCE_NODE, name) {}

void* EntityReference::QueryInterface(const char* name) {
    return IsInterface(name, "Dom::EntityReference") ? this : Node::QueryInterface(name);
}

Node* EntityReference::CloneNode(bool /*deep*/) {
    return NodeAccess::Make<EntityReference>(NodeAccess::Data(*this), &NodeAccess::Name(*this));
}

ProcessingInstruction::ProcessingInstruction(std::string_view target, std::string_view data,
                                             Document* ownerDocument)
    : Node(PROCESSING_INSTRUCTION_NODE, {}, target, ownerDocument) {
    SetNodeValue(data);
}

ProcessingInstruction::ProcessingInstruction(const detail::NodeName* name)
    : Node(PROCESSING_INSTRUCTION_NODE, name) {
    Set(ValueBearing);
    Set(SharedValue);
}

void* ProcessingInstruction::QueryInterface(const char* name) {
    return IsInterface(name, "Dom::ProcessingInstruction") ? this : Node::QueryInterface(name);
}

Node* ProcessingInstruction::CloneNode(bool /*deep*/) {
    return NodeAccess::Make<ProcessingInstruction>(NodeAccess::Data(*this),
                                                   &NodeAccess::Name(*this), NodeValue());
}

void ProcessingInstruction::SetData(std::string_view data) { SetNodeValue(data); }

DocumentFragment::DocumentFragment(Document* ownerDocument)
    : Node(DOCUMENT_FRAGMENT_NODE, {}, "#document-fragment", ownerDocument) {}

DocumentFragment::DocumentFragment(const detail::NodeName* name)
    : Node(DOCUMENT_FRAGMENT_NODE, name) {}

void* DocumentFragment::QueryInterface(const char* name) {
    return IsInterface(name, "Dom::DocumentFragment") ? this : Node::QueryInterface(name);
}

Node* DocumentFragment::CloneNode(bool /*deep*/) {
    return NodeAccess::Make<DocumentFragment>(NodeAccess::Data(*this), &NodeAccess::Name(*this));
}

DocumentType::DocumentType(std::string_view name, std::string_view publicId,
                           std::string_view systemId, Document* ownerDocument)
    : Node(DOCUMENT_TYPE_NODE, {}, name, ownerDocument), publicId_(publicId), systemId_(systemId) {}

void* DocumentType::QueryInterface(const char* name) {
    return IsInterface(name, "Dom::DocumentType") ? this : Node::QueryInterface(name);
}

Node* DocumentType::CloneNode(bool /*deep*/) {
    return new DocumentType(Name(), publicId_, systemId_, OwnerDocument());
}

}  // namespace Dom
