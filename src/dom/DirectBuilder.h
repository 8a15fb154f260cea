// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Document.h>
#include <espalier/xml/XmlTextReader.h>

#include "dom/DocumentData.h"
#include "xml/ReaderAccess.h"
#include "xml/ReaderCore.h"

#include <cstdint>
#include <string_view>

namespace Dom::detail {

/// Makes nodes of what a reader stands on, of a document whose nodes nobody else makes: in the
/// pool, linked at once, with names that are looked up once per name of the reader, and attributes
/// that are no nodes yet.
class DirectBuilder {
public:
    /// \param document exactly a Document or an HTMLDocument
    DirectBuilder(Document& document, Xml::XmlTextReader& reader);

    template <bool kNamespaces>
    Node& AddElement(Node& parent);
    void AddText(Node& parent);
    void AddCDATASection(Node& parent);
    void AddComment(Node& parent);
    void AddReference(Node& parent, std::string_view name);
    void AddInstruction(Node& parent);

private:
    template <bool kNamespaces>
    Element* MakeElement(const NodeName* name);
    template <bool kNamespaces>
    void AddAttributes(Element& element, int count);
    template <bool kNamespaces>
    void AddReferencingAttribute(Element& element, int index, const NodeName* name);
    astring* AttributeValue(const NodeName& name, std::string_view text);
    const NodeName* NameOf(Xml::detail::XmlName::Counterpart& counterpart, std::string_view uri,
                           std::string_view qualified);
    template <typename T>
    void AddValue(Node& parent, const NodeName* name);

    Document& document_;
    Xml::XmlTextReader& reader_;
    Xml::detail::ReaderCore& core_;
    DocumentData& data_;
    const bool isPage_;     // whether elements are those of an HTMLDocument
    std::uint64_t serial_;  // of this load, for what the reader's names remember
};

}  // namespace Dom::detail
