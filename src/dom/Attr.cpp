// SPDX-License-Identifier: MIT
#include <espalier/dom/Attr.h>
#include <espalier/dom/Text.h>

#include "dom/InterfaceName.h"
#include "dom/NodeAccess.h"

namespace Dom {

using detail::NodeAccess;

Attr::Attr(std::string_view namespaceURI, std::string_view qualifiedName, Document* ownerDocument,
           bool specified)
    : Node(ATTRIBUTE_NODE, namespaceURI, qualifiedName, ownerDocument) {
    Set(IsSpecified, specified);
    SetNodeValue({});
}

Attr::Attr(const detail::NodeName* name) : Node(ATTRIBUTE_NODE, name) {
    Set(ValueBearing);
    Set(SharedValue);
}

void* Attr::QueryInterface(const char* name) {
    return detail::IsInterface(name, "Dom::Attr") ? this : Node::QueryInterface(name);
}

Node* Attr::CloneNode(bool /*deep*/) {
    detail::DocumentData& data = NodeAccess::Data(*this);
    Attr* const clone = NodeAccess::Make<Attr>(data, &NodeAccess::Name(*this), Value());
    clone->Set(IsSpecified, Has(IsSpecified));
    return clone;
}

const astring& Attr::Value() const {
    if (Has(ImpliedText)) return *rest_.value;
    const Node* child = NodeAccess::First(*this);
    if (child == nullptr) return NodeValue();
    if (NodeAccess::Next(*child) == nullptr) return child->NodeValue();
    if (joined_ == nullptr) {
        joined_ = std::make_unique<astring>();
        NodeAccess::MarkOwnMemory(const_cast<Attr&>(*this));
    }
    joined_->clear();
    for (; child != nullptr; child = NodeAccess::Next(*child))
        joined_->append(child->NodeValue());
    return *joined_;
}

void Attr::SetValue(std::string_view value) {
    CheckReadOnly();
    SetNodeValue(value);  // may be that of a child
    NodeAccess::DestroyChildren(*this);
    Set(ImpliedText);
    NodeAccess::Data(*this).AttributesHaveChanged();
}

// Makes the text that holds the value, now that somebody asks for it.
Node* Attr::MakeImpliedText() {
    detail::DocumentData& data = NodeAccess::Data(*this);
    Text* const text = NodeAccess::Make<Text>(
        data, data.Name(detail::DocumentData::FixedName::Text), *rest_.value);
    Set(ImpliedText, false);
    // Nobody has seen the attribute without it, so this is no change of the tree.
    NodeAccess::LinkNew(*this, *text);
    --data.freeNodes;
    return text;
}

}  // namespace Dom
