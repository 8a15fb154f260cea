// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Attr.h>
#include <espalier/dom/Document.h>
#include <espalier/xml/XmlTextReader.h>

#include <string_view>

namespace Dom::detail {

/// Makes nodes of what a reader stands on, by the virtual functions of the document.
class FactoryBuilder {
public:
    FactoryBuilder(Document& document, Xml::XmlTextReader& reader)
        : document_(document), reader_(reader) {}

    template <bool kNamespaces>
    Node& AddElement(Node& parent);
    void AddText(Node& parent);
    void AddCDATASection(Node& parent);
    void AddComment(Node& parent);
    void AddReference(Node& parent, std::string_view name);
    void AddInstruction(Node& parent);

private:
    template <bool kNamespaces>
    void AddAttribute(Element& element);

    Document& document_;
    Xml::XmlTextReader& reader_;
};

/// Gives a new attribute the value that a reader stands on, part by part.
/// \param isWhole whether the value becomes one text in the end, with references as they are
///     written
void BuildValue(Document& document, Xml::XmlTextReader& reader, Attr& attribute, bool isWhole);

}  // namespace Dom::detail
