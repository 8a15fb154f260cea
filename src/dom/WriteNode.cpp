// SPDX-License-Identifier: MIT

// Writes a tree by walking it along the true links, without a stack: up by the parents.
//
// Names are written as they stand, so that no prefix changes; which declarations are in force is
// followed here, and only those that the tree lacks are added. What the tree says and what its
// nodes' namespaces say may differ, because trees are edited and may be loaded without namespaces:
//
//     the attribute that declares     the namespace of the node    written
//     ------------------------------  ---------------------------  ----------------------------
//     is there, and agrees            any                          the attribute
//     is there, and does not          any                          the attribute: it is what the
//                                                                  tree says
//     is missing                      empty, with a prefix         nothing: it cannot be undeclared
//     is missing                      another than that in force   a declaration

#include <espalier/dom/Attr.h>
#include <espalier/dom/Document.h>
#include <espalier/dom/DocumentType.h>
#include <espalier/dom/Element.h>
#include <espalier/dom/WriteNode.h>
#include <espalier/xml/XmlNsSupport.h>
#include <espalier/xml/XmlTextWriter.h>

#include "dom/AttributeTable.h"
#include "dom/NodeAccess.h"

#include <new>  // std::bad_alloc
#include <span>
#include <string_view>

namespace Dom {

namespace {

constexpr std::string_view kXmlns = "xmlns";

bool IsBlank(std::string_view text) {
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

// Returns the text with a space inside each `pair` of characters.
astring Spaced(std::string_view text, std::string_view pair) {
    astring spaced;
    for (const char character : text) {
        const std::string_view before = spaced.view();
        if (character == pair[1] && !before.empty() && before.back() == pair[0]) spaced += ' ';
        spaced += character;
    }
    return spaced;
}

using detail::NodeAccess;
using Attribute = detail::AttributeTable::Entry;

std::span<const Attribute> AttributesOf(const Element& element) {
    const detail::AttributeTable* const table = NodeAccess::Table(element);
    return table == nullptr ? std::span<const Attribute>() : table->All();
}

// Tells whether the attribute has a reference among its children.
bool HasReference(const Attr& attribute) {
    const Node* part = NodeAccess::First(attribute);
    while (part != nullptr && part->NodeType() != DOMNodeType::ENTITY_REFERENCE_NODE)
        part = NodeAccess::Next(*part);
    return part != nullptr;
}

class TreeWriter {
public:
    explicit TreeWriter(Xml::XmlTextWriter& writer);

    void Write(const Node& root);

private:
    bool Begin(const Node& node);
    void End(const Node& node);

    void BeginDocument(const Document& document);
    void WriteDocumentType(const DocumentType& type);
    void WriteText(std::string_view text);
    void WriteCDataSection(std::string_view text);
    void WriteComment(const astring& text);
    void WriteInstruction(const Node& node);

    void BeginElement(const Element& element);
    bool FollowDeclarations(const Element& element);
    void StartUnprefixed(const Element& element, bool declaresDefault);
    void StartPrefixed(const Element& element);
    bool IsDeclaredHere(const sax::XmlNamespace& binding) const;
    bool KeepsPrefix(const detail::NodeName& name) const;
    void WriteAttributes(const Element& element);
    void StartAttribute(const detail::NodeName& name, bool keepsPrefix);
    void WriteAttribute(const Attribute& attribute, bool keepsPrefix);
    void WriteAlone(const Attr& attribute);
    void WriteParts(const Attr& attribute);
    void Follow(std::string_view prefix, std::string_view uri);

    Xml::XmlTextWriter& writer_;
    const bool namespaces_;
    bool isInside_;            // an element that was open before
    int depth_ = 0;            // elements that were begun here and are open
    sax::XmlNsSupport scope_;  // what the written elements declare, one level each
};

TreeWriter::TreeWriter(Xml::XmlTextWriter& writer)
    : writer_(writer), namespaces_(writer.GetNamespaces()) {
    const Xml::WriteState state = writer.GetWriteState();
    isInside_ = state == Xml::WriteState::Element || state == Xml::WriteState::Attribute ||
                state == Xml::WriteState::Content;
    // Without a record, the default namespace is that of an element which is not known here.
    if (!isInside_) Follow({}, {});
}

void TreeWriter::Write(const Node& root) {
    const Node* node = &root;
    bool isNew = true;
    for (;;) {
        if (isNew && Begin(*node) && NodeAccess::First(*node) != nullptr) {
            node = NodeAccess::First(*node);
            continue;
        }
        End(*node);
        if (node == &root) return;
        const Node* const next = NodeAccess::Next(*node);
        isNew = next != nullptr;
        node = isNew ? next : node->ParentNode();
    }
}

// Writes what stands before the children. Returns whether these are to be written.
bool TreeWriter::Begin(const Node& node) {
    switch (node.NodeType()) {
    case DOMNodeType::DOCUMENT_NODE: BeginDocument(static_cast<const Document&>(node)); return true;
    case DOMNodeType::DOCUMENT_FRAGMENT_NODE: return true;
    case DOMNodeType::ELEMENT_NODE: BeginElement(static_cast<const Element&>(node)); return true;
    case DOMNodeType::ATTRIBUTE_NODE: WriteAlone(static_cast<const Attr&>(node)); break;
    case DOMNodeType::TEXT_NODE: WriteText(node.NodeValue()); break;
    case DOMNodeType::CDATA_SECTION_NODE: WriteCDataSection(node.NodeValue()); break;
    case DOMNodeType::ENTITY_REFERENCE_NODE: writer_.WriteEntityRef(node.NodeName()); break;
    case DOMNodeType::COMMENT_NODE: WriteComment(node.NodeValue()); break;
    case DOMNodeType::PROCESSING_INSTRUCTION_NODE: WriteInstruction(node); break;
    case DOMNodeType::DOCUMENT_TYPE_NODE:
        WriteDocumentType(static_cast<const DocumentType&>(node));
        break;
    default: break;
    }
    return false;
}

void TreeWriter::End(const Node& node) {
    if (node.NodeType() != DOMNodeType::ELEMENT_NODE) return;
    writer_.WriteEndElement();
    scope_.PopContext();
    --depth_;
}

// Documents.

void TreeWriter::BeginDocument(const Document& document) {
    if (writer_.GetWriteState() == Xml::WriteState::Start) {
        if (document.XmlStandalone()) {
            writer_.WriteStartDocument(true);
        } else {
            writer_.WriteStartDocument();
        }
    }
    // The writer compares the name with the local name of the root element.
    const DocumentType* const type = document.Doctype();
    const Element* const root = document.DocumentElement();
    const bool isAboutRoot = type != nullptr && root != nullptr && !isInside_ &&
                             type->NodeName() == root->NodeName() && root->PrefixView().empty();
    if (isAboutRoot) WriteDocumentType(*type);
}

void TreeWriter::WriteDocumentType(const DocumentType& type) {
    writer_.WriteDocType(type.Name(), type.PublicId(), type.SystemId(), {});
}

// Texts and markup between tags.

// White space outside of elements is no part of the content, and the writer takes none before them.
void TreeWriter::WriteText(std::string_view text) {
    const bool isOutside = depth_ == 0 && !isInside_;
    if (!isOutside || !IsBlank(text)) writer_.WriteString(text);
}

// A section cannot hold "]]>": it is written as two, the first of which ends behind "]]".
void TreeWriter::WriteCDataSection(std::string_view text) {
    for (std::size_t end = text.find("]]>"); end != std::string_view::npos;
         end = text.find("]]>")) {
        writer_.WriteCData(text.substr(0, end + 2));
        text.remove_prefix(end + 2);
    }
    writer_.WriteCData(text);
}

void TreeWriter::WriteComment(const astring& text) {
    const bool isPlain = text.find("--") == astring::npos && !text.view().ends_with('-');
    if (isPlain) {
        writer_.WriteComment(text);
        return;
    }
    astring spaced = Spaced(text, "--");
    if (spaced.view().ends_with('-')) spaced += ' ';
    writer_.WriteComment(spaced);
}

void TreeWriter::WriteInstruction(const Node& node) {
    const astring& data = node.NodeValue();
    if (data.find("?>") == astring::npos) {
        writer_.WriteProcessingInstruction(node.NodeName(), data);
    } else {
        writer_.WriteProcessingInstruction(node.NodeName(), Spaced(data, "?>"));
    }
}

// Elements.

void TreeWriter::Follow(std::string_view prefix, std::string_view uri) {
    if (scope_.DeclarePrefix(prefix, uri) == nullptr) throw std::bad_alloc();
}

void TreeWriter::BeginElement(const Element& element) {
    scope_.PushContext();
    if (!namespaces_) {
        writer_.WriteStartElement(element.NodeName());
    } else {
        const bool declaresDefault = FollowDeclarations(element);
        if (element.PrefixView().empty()) {
            StartUnprefixed(element, declaresDefault);
        } else {
            StartPrefixed(element);
        }
    }
    ++depth_;
    WriteAttributes(element);
}

// Takes note of the namespaces that the attributes declare. Returns whether the default namespace
// is among them.
bool TreeWriter::FollowDeclarations(const Element& element) {
    bool declaresDefault = false;
    for (const Attribute& attribute : AttributesOf(element)) {
        const detail::NodeName& name = attribute.Name();
        if (name.Prefix() == kXmlns) {
            Follow(name.LocalName(), attribute.Value());
        } else if (name.qualified == kXmlns) {
            declaresDefault = true;
            // On an element without a namespace it is an attribute like others: the tree was
            // loaded without namespaces, and the elements below have none either.
            Follow({},
                   element.NamespaceURI().empty() ? std::string_view() : attribute.Value().view());
        }
    }
    return declaresDefault;
}

void TreeWriter::StartUnprefixed(const Element& element, bool declaresDefault) {
    const astring& uri = element.NamespaceURI();
    const sax::XmlNamespace* const inForce = scope_.FindPrefix({});
    const bool isUnknown = inForce == nullptr;
    if (declaresDefault || (isUnknown ? uri.empty() : inForce->uri == uri)) {
        writer_.WriteStartElement(element.NodeName());
        if (isUnknown) Follow({}, uri);
        return;
    }
    if (isUnknown && writer_.LookupPrefix(uri).empty()) {
        // The writer, which knows the default namespace, declares it when it has to.
        writer_.WriteStartElement(element.NodeName(), uri);
    } else {
        writer_.WriteStartElement(element.NodeName());
        writer_.WriteAttributeString(kXmlns, uri);
    }
    Follow({}, uri);
}

void TreeWriter::StartPrefixed(const Element& element) {
    const std::string_view prefix = element.PrefixView();
    const astring& uri = element.NamespaceURI();
    const sax::XmlNamespace* const bound = scope_.FindPrefix(prefix);
    const bool isBoundOutside =
        bound == nullptr && isInside_ && writer_.LookupPrefix(uri).view() == prefix;
    writer_.WriteStartElement(element.NodeName());
    const bool needsNone = uri.empty() || prefix == "xml" || prefix == kXmlns;
    if (needsNone || (bound != nullptr && (bound->uri == uri || IsDeclaredHere(*bound)))) return;
    if (!isBoundOutside) writer_.WriteAttributeString(kXmlns, prefix, nullptr, uri);
    Follow(prefix, uri);
}

bool TreeWriter::IsDeclaredHere(const sax::XmlNamespace& binding) const {
    const sax::XmlNamespace* const latest = scope_.FirstDeclaredNs();
    return latest != nullptr && latest->level == binding.level;
}

// Attributes.

// Tells whether an attribute of that name can be written as it is named.
bool TreeWriter::KeepsPrefix(const detail::NodeName& name) const {
    const bool isPlain = name.uri->empty() || name.qualified == kXmlns || name.Prefix() == "xml" ||
                         name.Prefix() == kXmlns;
    if (isPlain || !namespaces_) return true;
    if (name.Prefix().empty()) return false;
    const sax::XmlNamespace* const bound = scope_.FindPrefix(name.Prefix());
    return bound == nullptr || bound->uri == *name.uri;
}

void TreeWriter::WriteAttributes(const Element& element) {
    bool hasOthers = false;
    for (const Attribute& attribute : AttributesOf(element)) {
        if (KeepsPrefix(attribute.Name())) {
            WriteAttribute(attribute, true);
        } else {
            hasOthers = true;
        }
    }
    if (!hasOthers) return;
    // Last, when all prefixes of the tag are known, those for which the writer finds one.
    for (const Attribute& attribute : AttributesOf(element)) {
        if (!KeepsPrefix(attribute.Name())) WriteAttribute(attribute, false);
    }
}

void TreeWriter::StartAttribute(const detail::NodeName& name, bool keepsPrefix) {
    const std::string_view prefix = name.Prefix();
    if (!namespaces_ || name.qualified == kXmlns) {
        writer_.WriteStartAttribute(name.qualified);
    } else if (prefix == kXmlns || prefix == "xml") {
        writer_.WriteStartAttribute(prefix, name.LocalName(), nullptr);
    } else if (name.uri->empty()) {
        writer_.WriteStartAttribute(name.qualified);
    } else if (keepsPrefix) {
        writer_.WriteStartAttribute(prefix, name.LocalName(), *name.uri);
    } else {
        writer_.WriteStartAttribute(name.LocalName(), *name.uri);
    }
}

void TreeWriter::WriteAttribute(const Attribute& attribute, bool keepsPrefix) {
    const detail::NodeName& name = attribute.Name();
    const Attr* const node = attribute.Node();
    if (node != nullptr && HasReference(*node)) {
        StartAttribute(name, keepsPrefix);
        WriteParts(*node);
    } else if (name.uri->empty() && name.Prefix().empty()) {
        writer_.WriteAttributeString(name.qualified, attribute.Value());
        return;
    } else {
        StartAttribute(name, keepsPrefix);
        writer_.WriteString(attribute.Value());
    }
    writer_.WriteEndAttribute();
}

void TreeWriter::WriteAlone(const Attr& attribute) {
    const detail::NodeName& name = NodeAccess::Name(attribute);
    StartAttribute(name, KeepsPrefix(name));
    WriteParts(attribute);
    writer_.WriteEndAttribute();
}

void TreeWriter::WriteParts(const Attr& attribute) {
    if (!HasReference(attribute)) {
        writer_.WriteString(attribute.Value());
        return;
    }
    for (const Node* part = NodeAccess::First(attribute); part != nullptr;
         part = NodeAccess::Next(*part)) {
        if (part->NodeType() == DOMNodeType::ENTITY_REFERENCE_NODE) {
            writer_.WriteEntityRef(part->NodeName());
        } else {
            writer_.WriteString(part->NodeValue());
        }
    }
}

}  // namespace

void WriteNode(const Node& node, Xml::XmlTextWriter& writer) { TreeWriter(writer).Write(node); }

}  // namespace Dom
