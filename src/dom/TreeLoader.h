// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Document.h>
#include <espalier/xml/XmlTextReader.h>

namespace Dom::detail {

/// Builds the tree of a document from what a reader reads.
///
/// \tparam Builder makes the nodes: by the virtual functions of the document, or, where nobody can
///     tell the difference, faster
template <typename Builder>
class TreeLoader {
public:
    TreeLoader(Document& document, Xml::XmlTextReader& reader)
        : document_(document), reader_(reader), builder_(document, reader) {}

    /// Loads a whole document, or the element that the reader stands on.
    /// \throws DOMException 3 "Document not well-formed"; 9 for a version that is not supported;
    ///     what the reader throws
    void Load();

private:
    bool IsJudgedByStandard() const;
    bool ReadFirst();
    void ReadDeclaration();
    void ReadMiscellany();
    void ReadRoot();
    template <bool kNamespaces>
    void ReadElement();
    template <bool kNamespaces>
    void ReadContent(Node& parent);
    void RequireStandard() const;

    Document& document_;
    Xml::XmlTextReader& reader_;
    Builder builder_;
};

}  // namespace Dom::detail
