// SPDX-License-Identifier: MIT
//
// An element waits until it is known what it holds:
//
//     behind its start tag    the element alone     with a text in it
//     a text                  waits with it         both are handed on, then the text
//     its end tag             is handed on          is handed on, with the text as its value
//     anything else           is handed on          both are handed on
//
// At the last level the element is marked as cut in place of handing on what is in it.
#include "TreeReader.h"

namespace Tool {

void TreeReader::Read() {
    reader_.SetWhitespaceHandling(Xml::XmlTextReader::WsSignificant);
    document_.ExpandDeclaredEntities();
    try {
        while (document_.Next())
            ReadNode();
    } catch (const Xml::Exception&) {
        FinishElement();
        throw;
    }
}

void TreeReader::ReadNode() {
    const Xml::XmlNodeType type = reader_.NodeType();
    switch (type) {
    case Xml::XmlNodeType::Element: EnterElement(); break;
    case Xml::XmlNodeType::EndElement: FinishElement(); break;
    case Xml::XmlNodeType::Text:
    case Xml::XmlNodeType::SignificantWhitespace: TakeText(); break;
    case Xml::XmlNodeType::CDATA:
    case Xml::XmlNodeType::Comment:
    case Xml::XmlNodeType::ProcessingInstruction:
    case Xml::XmlNodeType::EntityReference: TakeOther(type); break;
    default: break;
    }
}

void TreeReader::EnterElement() {
    if (IsTooDeep()) return;
    HandOnElement();
    element_.type = reader_.NodeType();
    element_.depth = reader_.Depth();
    element_.name = reader_.Name().view();
    element_.namespaceUri = reader_.NamespaceURI().view();
    element_.attributes.clear();
    for (const Xml::XmlAttributeRef attribute : reader_.Attributes())
        element_.attributes.push_back({attribute.Name().str(), attribute.Value().str()});
    element_.value.clear();
    element_.hasValue = false;
    element_.isCut = false;
    isWaiting_ = !reader_.IsEmptyElement();
    if (!isWaiting_) sink_.Take(element_);
}

void TreeReader::TakeText() {
    if (!isWaiting_ || element_.hasValue) {
        TakeOther(Xml::XmlNodeType::Text);
        return;
    }
    element_.value = reader_.Value().view();
    element_.hasValue = true;
}

void TreeReader::TakeOther(Xml::XmlNodeType type) {
    if (IsTooDeep()) return;
    HandOnElement();
    other_.type = type;
    other_.depth = reader_.Depth();
    other_.name = reader_.Name().view();
    other_.value = reader_.Value().view();
    other_.hasValue = type != Xml::XmlNodeType::EntityReference;
    sink_.Take(other_);
}

// Hands on the element that waits: nothing more is in it.
void TreeReader::FinishElement() {
    if (!isWaiting_) return;
    isWaiting_ = false;
    sink_.Take(element_);
}

// Hands on the element that waits, and its text as a node of its own: more is in it.
void TreeReader::HandOnElement() {
    if (!isWaiting_) return;
    isWaiting_ = false;
    const bool hasText = element_.hasValue && !element_.isCut;
    element_.hasValue = false;
    other_.value.swap(element_.value);
    sink_.Take(element_);
    if (!hasText) return;
    other_.type = Xml::XmlNodeType::Text;
    other_.depth = element_.depth + 1;
    other_.name.clear();
    other_.hasValue = true;
    sink_.Take(other_);
}

// Tells whether the current node is left out. If so, the element that holds it says so.
bool TreeReader::IsTooDeep() {
    if (reader_.Depth() <= levels_) return false;
    if (isWaiting_) {
        element_.isCut = true;
        HandOnElement();
    }
    return true;
}

}  // namespace Tool
