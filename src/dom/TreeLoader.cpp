// SPDX-License-Identifier: MIT
#include "dom/TreeLoader.h"

#include <espalier/dom/CDATASection.h>
#include <espalier/dom/Comment.h>
#include <espalier/dom/DOMException.h>
#include <espalier/dom/Element.h>
#include <espalier/dom/EntityReference.h>
#include <espalier/dom/ProcessingInstruction.h>

#include "dom/DirectBuilder.h"
#include "dom/FactoryBuilder.h"
#include "dom/Messages.h"
#include "dom/NodeAccess.h"
#include "xml/ReaderAccess.h"
#include "xml/ReaderCore.h"

#include <cstddef>

namespace Dom::detail {

namespace {

using Xml::XmlNodeType;
using Xml::XmlTextReader;

[[noreturn]] void ThrowNotWellFormed() {
    DOMException::ThrowDOMException(DOMException::HIERARCHY_REQUEST_ERR, Message::kNotWellFormed);
}

}  // namespace

template <typename Builder>
void TreeLoader<Builder>::Load() {
    if (reader_.ReadState() != XmlTextReader::Initial) return ReadRoot();
    if (!ReadFirst()) return;
    ReadDeclaration();
    NodeAccess::SetInputEncoding(document_, reader_.Encoding());
    ReadMiscellany();
    if (reader_.NodeType() == XmlNodeType::DocumentType) reader_.Read();
    ReadMiscellany();
    ReadRoot();
    reader_.Read();
    ReadMiscellany();
    if (!reader_.Eof()) ThrowNotWellFormed();
}

template <typename Builder>
bool TreeLoader<Builder>::IsJudgedByStandard() const {
    return reader_.Conformance() == Xml::XmlConformance::Standard;
}

// Reads what comes first. The implementation decides on the version that a declaration gives, but
// by the standard all of them can be read that it lets a declaration give.
template <typename Builder>
bool TreeLoader<Builder>::ReadFirst() {
    struct AnyVersion {
        bool& setting;
        AnyVersion(bool& reads, bool isAny) : setting(reads) { setting = isAny; }
        ~AnyVersion() { setting = false; }
        AnyVersion(const AnyVersion&) = delete;
        AnyVersion& operator=(const AnyVersion&) = delete;
    } const anyVersion(Xml::detail::ReaderAccess::Core(reader_).readsAnyVersion,
                       !IsJudgedByStandard());
    return reader_.Read();
}

template <typename Builder>
void TreeLoader<Builder>::ReadDeclaration() {
    if (reader_.NodeType() != XmlNodeType::XmlDeclaration) {
        NodeAccess::SetLoadedProperties(document_, "1.0", {}, false);
        return;
    }
    const astring version = reader_.GetAttribute("version");
    NodeAccess::SetLoadedProperties(document_, version, reader_.GetAttribute("encoding"),
                                    reader_.GetAttribute("standalone") == "yes");
    if (version.empty()) {
        NodeAccess::SetLoadedVersion(document_, "1.0");
    } else if (!IsJudgedByStandard()) {
        NodeAccess::CheckVersion(document_, version);
    }
    reader_.Read();
}

// Reads what may stand beside the root element.
template <typename Builder>
void TreeLoader<Builder>::ReadMiscellany() {
    do {
        switch (reader_.NodeType()) {
        case XmlNodeType::Comment: builder_.AddComment(document_); break;
        case XmlNodeType::ProcessingInstruction: builder_.AddInstruction(document_); break;
        case XmlNodeType::Whitespace: break;
        default: return;
        }
    } while (reader_.Read());
}

template <typename Builder>
void TreeLoader<Builder>::ReadRoot() {
    if (reader_.NodeType() != XmlNodeType::Element) ThrowNotWellFormed();
    if (reader_.Namespaces()) {
        ReadElement<true>();
    } else {
        ReadElement<false>();
    }
}

// Reads the element that the reader stands on, with all that is below it. Depth costs no stack.
template <typename Builder>
template <bool kNamespaces>
void TreeLoader<Builder>::ReadElement() {
    Node* parent = &document_;
    std::size_t depth = 0;
    do {
        switch (reader_.NodeType()) {
        case XmlNodeType::Element: {
            Node& element = builder_.template AddElement<kNamespaces>(*parent);
            if (!reader_.IsEmptyElement()) {
                parent = &element;
                ++depth;
            }
            break;
        }
        case XmlNodeType::EndElement:
            parent = parent->ParentNode();
            --depth;
            break;
        default: ReadContent<kNamespaces>(*parent); break;
        }
    } while (depth > 0 && reader_.Read());
}

// Deliberate: without namespaces, instructions and white space are dropped, and a reference is
// named by its value, which it does not have.
template <typename Builder>
template <bool kNamespaces>
void TreeLoader<Builder>::ReadContent(Node& parent) {
    switch (reader_.NodeType()) {
    case XmlNodeType::Text:
    case XmlNodeType::SignificantWhitespace: builder_.AddText(parent); break;
    case XmlNodeType::Whitespace:
        if constexpr (kNamespaces) builder_.AddText(parent);
        break;
    case XmlNodeType::CDATA: builder_.AddCDATASection(parent); break;
    case XmlNodeType::Comment: builder_.AddComment(parent); break;
    case XmlNodeType::EntityReference:
        builder_.AddReference(parent, kNamespaces ? reader_.Name() : reader_.Value());
        break;
    case XmlNodeType::ProcessingInstruction:
        if constexpr (kNamespaces) builder_.AddInstruction(parent);
        break;
    case XmlNodeType::EndEntity:
        if constexpr (kNamespaces) RequireStandard();
        break;
    default:
        if constexpr (kNamespaces) ThrowNotWellFormed();
        break;
    }
}

// Refuses what only a reader that keeps to the standard may tell in a document.
template <typename Builder>
void TreeLoader<Builder>::RequireStandard() const {
    if (!IsJudgedByStandard()) ThrowNotWellFormed();
}

template class TreeLoader<DirectBuilder>;
template class TreeLoader<FactoryBuilder>;

}  // namespace Dom::detail
