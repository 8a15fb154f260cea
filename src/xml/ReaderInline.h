// SPDX-License-Identifier: MIT
#pragma once

// What every node goes through: the members of ReaderCore that are inline. ReaderCore.h includes
// it.

#include "xml/ReaderCore.h"

namespace Xml::detail {

// Makes value_ the current node, without a name, at the place that was marked.
inline ReaderCore::Pass ReaderCore::ReportValue(XmlNodeType::XML_NODE_TYPE type) {
    node_.type = type;
    node_.depth = Depth() + 1;
    node_.charsRead = 0;
    node_.name = &noName_;
    node_.namespaceUri = &empty_;
    node_.value = &value_;
    node_.isRaw = normalizesTexts_;
    return Pass::Node;
}

// Makes the properties those of the element on top.
inline void ReaderCore::ShowElement() {
    node_.type = XmlNodeType::Element;
    node_.depth = Depth();
    node_.charsRead = 0;
    node_.name = Top().name;
    node_.namespaceUri = Top().uri;
    node_.value = &noValue_;
    node_.isRaw = false;
}

inline XmlSpace ReaderCore::Space() const {
    return elements_.empty() ? XmlSpace(XmlSpace::SpaceNone) : Top().space;
}

// Returns as what white space is reported here; None when it is not.
inline XmlNodeType::XML_NODE_TYPE ReaderCore::WhitespaceType() const {
    if (whitespaceHandling == XmlTextReader::WsNone) return XmlNodeType::None;
    if (Space() == XmlSpace::SpacePreserve) return XmlNodeType::SignificantWhitespace;
    return whitespaceHandling == XmlTextReader::WsAll ? XmlNodeType::Whitespace : XmlNodeType::None;
}

inline void ReaderCore::PopElement() {
    if (Top().ownsLanguage) --languageCount_;
    elements_.pop_back();
    if (namespaces) nsSupport_.PopContext();
    parseState_ = elements_.empty() ? ParseState::PsProlog : ParseState::PsContent;
}

// Makes the end of the element on top the current node and closes it.
inline void ReaderCore::FinishEndElement() {
    ShowElement();
    node_.type = XmlNodeType::EndElement;
    node_.isEmptyElement = false;
    PopElement();
}

// Returns the object for the next attribute, with all but its value, quote and place filled.
inline XmlAttribute& ReaderCore::AddAttribute(XmlName& name) {
    if (static_cast<std::size_t>(attributeCount_) == attributes_.size()) attributes_.emplace_back();
    XmlAttribute& attribute = attributes_[static_cast<std::size_t>(attributeCount_)];
    attribute.name = &name;
    attribute.uri = &empty_;
    attribute.isRaw = normalizesValues_;
    attribute.holdsReferences = false;
    attribute.isDefault = attribute.isTokens = false;
    const bool isDuplicate = name.usedBy == elementSerial_;
    name.usedBy = elementSerial_;
    if (name.isUnusual || isDuplicate) NoteUnusual(name, isDuplicate);
    ++attributeCount_;
    return attribute;
}

inline void ReaderCore::ForgetAttributes() {
    if (attributeCount_ > 0) ResetAttributes();
}

// Returns what a prefix is bound to, from the name itself while no declaration has changed.
inline const astring* ReaderCore::UriOf(XmlName& prefix) {
    const std::uint64_t generation = nsSupport_.Generation();
    if (prefix.generation != generation) {
        prefix.uri = &nsSupport_.GetURI(prefix.qualified);
        prefix.generation = generation;
    }
    return prefix.uri;
}

// Opens the element whose tag has been scanned and makes it the current node.
inline void ReaderCore::FinishElement(XmlName& name, bool isEmpty) {
    attributeIndex_ = 0;
    // What is inherited is copied one by one: a copy of the whole entry would wait for the entry
    // to be written, when it is that of the last start tag.
    const bool isRoot = elements_.empty();
    const astring* const language = isRoot ? &empty_ : Top().language;
    const XmlSpace space = isRoot ? XmlSpace(XmlSpace::SpaceNone) : Top().space;
    elements_.push_back({&name, &empty_, language, space, false});
    if (attributeLists_ != nullptr) ApplyAttributeLists(name);
    if (namespaces) {
        nsSupport_.PushContext();
        if ((asks_ & AsksDeclaration) != 0) DeclareNamespaces();
        const astring* const uri = UriOf(name.prefixName != nullptr ? *name.prefixName : noPrefix_);
        if (standard_ && name.prefixName != nullptr) CheckElementPrefix(name, *uri);
        elements_.back().uri = uri;
    }
    if (asks_ != 0) GrantUnusual();
    ShowElement();
    node_.isEmptyElement = isEmpty;
    parseState_ = isEmpty ? ParseState::PsEmptyEnd : ParseState::PsContent;
}

}  // namespace Xml::detail
