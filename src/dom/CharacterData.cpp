// SPDX-License-Identifier: MIT
#include <espalier/dom/CDATASection.h>
#include <espalier/dom/CharacterData.h>
#include <espalier/dom/Comment.h>
#include <espalier/dom/NodePtr.h>
#include <espalier/dom/Text.h>

#include "dom/InterfaceName.h"
#include "dom/NodeAccess.h"

namespace Dom {

using detail::NodeAccess;

CharacterData::CharacterData(DOM_NODE_TYPE type, std::string_view name, std::string_view data,
                             Document* ownerDocument)
    : Node(type, {}, name, ownerDocument) {
    SetNodeValue(data);
}

void* CharacterData::QueryInterface(const char* name) {
    return detail::IsInterface(name, "Dom::CharacterData") ? this : Node::QueryInterface(name);
}

void CharacterData::SetData(std::string_view data) {
    CheckReadOnly();
    SetNodeValue(data);
}

astring CharacterData::SubstringData(std::size_t offset, std::size_t count) const {
    return NodeValue().substr(offset, count);
}

void CharacterData::AppendData(std::string_view data) {
    CheckReadOnly();
    AppendNodeValue(data);
}

void CharacterData::InsertData(std::size_t offset, std::string_view data) {
    ReplaceData(offset, 0, data);
}

void CharacterData::DeleteData(std::size_t offset, std::size_t count) {
    ReplaceData(offset, count, {});
}

void CharacterData::ReplaceData(std::size_t offset, std::size_t count, std::string_view data) {
    CheckReadOnly();
    astring changed = Data();
    changed.replace(offset, count, data);
    SetNodeValue(changed);
}

Text::Text(std::string_view data, Document* ownerDocument)
    : CharacterData(TEXT_NODE, "#text", data, ownerDocument) {}

Text::Text(DOM_NODE_TYPE type, std::string_view name, std::string_view data,
           Document* ownerDocument)
    : CharacterData(type, name, data, ownerDocument) {}

void* Text::QueryInterface(const char* name) {
    return detail::IsInterface(name, "Dom::Text") ? this : CharacterData::QueryInterface(name);
}

Node* Text::CloneNode(bool /*deep*/) {
    return NodeAccess::Make<Text>(NodeAccess::Data(*this), &NodeAccess::Name(*this), NodeValue());
}

Text* Text::SplitText(std::size_t offset) {
    const astring whole = Data();
    const astring tail = whole.substr(offset);
    CheckReadOnly();
    SetNodeValue(whole.view().substr(0, offset));
    NodePtr made;
    try {
        detail::DocumentData& data = NodeAccess::Data(*this);
        made.reset(
            NodeAccess::Make<Text>(data, data.Name(detail::DocumentData::FixedName::Text), tail));
        if (Node* const parent = ParentNode()) {
            // Without a next sibling this appends.
            parent->InsertBefore(made.get(), NextSibling());
        }
    } catch (...) {
        made.reset();
        SetNodeValue(whole);
        throw;
    }
    return static_cast<Text*>(made.release());
}

CDATASection::CDATASection(std::string_view data, Document* ownerDocument)
    : Text(CDATA_SECTION_NODE, "#cdata-section", data, ownerDocument) {}

CDATASection::CDATASection(const detail::NodeName* name) : Text(CDATA_SECTION_NODE, name) {}

void* CDATASection::QueryInterface(const char* name) {
    return detail::IsInterface(name, "Dom::CDATASection") ? this : Text::QueryInterface(name);
}

Node* CDATASection::CloneNode(bool /*deep*/) {
    return NodeAccess::Make<CDATASection>(NodeAccess::Data(*this), &NodeAccess::Name(*this),
                                          NodeValue());
}

Comment::Comment(std::string_view data, Document* ownerDocument)
    : CharacterData(COMMENT_NODE, "#comment", data, ownerDocument) {}

Comment::Comment(const detail::NodeName* name) : CharacterData(COMMENT_NODE, name) {}

void* Comment::QueryInterface(const char* name) {
    return detail::IsInterface(name, "Dom::Comment") ? this : CharacterData::QueryInterface(name);
}

Node* Comment::CloneNode(bool /*deep*/) {
    return NodeAccess::Make<Comment>(NodeAccess::Data(*this), &NodeAccess::Name(*this),
                                     NodeValue());
}

}  // namespace Dom
