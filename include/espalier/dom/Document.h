// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Node.h>
#include <espalier/dom/css/DocumentStyle.h>

#include <memory>

namespace Xml {
class XmlTextReader;
}

namespace Dom {

/// The root of a tree, and the factory of its nodes.
///
/// \code
///     Dom::Document document;
///     document.Load("books.xml");
///     for (Dom::Node* book : document.GetElementsByTagName("book")) {
///         std::cout << static_cast<Dom::Element*>(book)->GetAttribute("title") << "\n";
///     }
/// \endcode
///
/// A document loads whatever the pull parser reads: documents of any depth and size, in memory of
/// their size. Loading, walking, copying and destroying never recurse.
class ESPALIER_EXPORT Document : public Node, public StyleSheets::DocumentStyle {
public:
    /// Makes a document without a root element, to load or to fill.
    Document();

    /// Makes a document with a root element, which has that name and namespace even when the name
    /// is empty.
    /// \param doctype kept for Doctype(), not made a child; stays the caller's; may be null
    /// \param implementation what Implementation() returns and HasFeature() is asked of; may be
    /// null
    Document(std::string_view namespaceURI, std::string_view qualifiedName, DocumentType* doctype,
             DOMImplementation* implementation);

    void* QueryInterface(const char* name) override;
    ~Document() override;

    /// Returns a new document with the same implementation, document type, URI, encodings, version
    /// and flags. Deliberate: without any child; see Node::CloneTree().
    Node* CloneNode(bool deep) override;

    // The order of the virtual functions is part of the binary interface: append, never reorder.

    /// \name Factory
    /// Each makes a new node, which the caller owns. No name is checked. Loading makes nodes in
    /// this way, so that a derived document decides on their classes.
    /// @{
    virtual Element* CreateElement(std::string_view name);
    virtual DocumentFragment* CreateDocumentFragment();
    virtual Text* CreateTextNode(std::string_view text);
    virtual Comment* CreateComment(std::string_view text);
    virtual CDATASection* CreateCDATASection(std::string_view text);
    /// Makes a StyleProcessingInstruction for the target "xml-stylesheet".
    virtual ProcessingInstruction* CreateProcessingInstruction(std::string_view target,
                                                               std::string_view text);
    virtual Attr* CreateAttribute(std::string_view name);
    virtual EntityReference* CreateEntityReference(std::string_view name);
    virtual Element* CreateElementNS(std::string_view namespaceURI, std::string_view qualifiedName);
    virtual Attr* CreateAttributeNS(std::string_view namespaceURI, std::string_view qualifiedName);
    /// @}

    /// \name Properties
    /// @{

    /// Returns the first child that is an element, or null.
    Element* DocumentElement() const;

    DocumentType* Doctype() const { return doctype_; }
    DOMImplementation* Implementation() const { return implementation_; }

    /// Returns the URI that the document was loaded with.
    const astring& DocumentURI() const { return documentURI_; }
    void SetDocumentURI(std::string_view uri);

    /// Returns the encoding that was decoded, for example "UTF-8".
    const astring& InputEncoding() const { return inputEncoding_; }
    /// Returns the encoding that the XML declaration names, or empty.
    const astring& XmlEncoding() const { return xmlEncoding_; }
    /// Returns "1.0" or what SetXmlVersion() was given.
    const astring& XmlVersion() const { return xmlVersion_; }
    /// \throws DOMException 9 "XML version \"...\" not supported!" when the implementation has no
    ///     feature "XMLVersion" in that version
    void SetXmlVersion(std::string_view version);

    /// Tells what the XML declaration says.
    bool XmlStandalone() const { return xmlStandalone_; }
    void SetXmlStandalone(bool standalone) { xmlStandalone_ = standalone; }

    bool StrictErrorChecking() const { return strictErrorChecking_; }
    void SetStrictErrorChecking(bool strict) { strictErrorChecking_ = strict; }

    /// @}
    /// \name Looking up
    /// @{

    /// Returns the first element whose attribute "id" has `id` as its NodeValue(), or null.
    ///
    /// Deliberate: the NodeValue() of an attribute is empty after loading without namespaces, so
    /// that nothing is found then.
    Element* GetElementById(std::string_view id) const;

    /// As Element::GetElementsByTagName(), for the whole document.
    NodeList GetElementsByTagName(std::string_view name) const;
    NodeList GetElementsByTagNameNS(std::string_view namespaceURI,
                                    std::string_view localName) const;

    /// @}
    /// \name Loading
    /// In place of what the document holds, which is destroyed. A document type declaration is
    /// skipped, an XML declaration only gives the properties above.
    ///
    /// \throws Xml::Exception for input that is not well-formed; DOMException 3 "Document not
    ///     well-formed" for a reader that does not stand on an element, and with namespaces for
    ///     the end of an entity that the reader expands; 9 "XML version \"...\" not supported!";
    ///     what the stream throws. The document then keeps the nodes that were read.
    /// @{

    /// Loads what `reader` reads, up to its end. A reader that has been read from must stand on an
    /// element; that element is loaded, and no more is read.
    ///
    /// With the reader's namespaces off, instructions and white space between markup are dropped
    /// below the root element. A reader that expands entities cannot be loaded with namespaces
    /// when the text of an entity holds markup, unless its Conformance() is
    /// Xml::XmlConformance::Standard.
    ///
    /// By that one, all versions of XML are loaded that begin with "1.", attributes that the
    /// document type supplies are attributes like others, and references to entities that cannot be
    /// read are Dom::EntityReference nodes.
    void Load(Xml::XmlTextReader& reader, std::string_view uri);

    /// Loads the file `uri`, with namespaces, without white space between markup except where
    /// xml:space preserves it, with line ends normalized.
    /// \throws Xml::Exception "File not found" and others of IO::FileStream; the document is then
    ///     as it was
    void Load(std::string_view uri);

    /// Loads the text `xml` in the same way. It is UTF-8 unless it says otherwise.
    void LoadXml(std::string_view xml, std::string_view uri = {});

    /// @}
    /// \name Not implemented
    /// @{

    /// \throws DOMException 15 "Not implemented" while StrictErrorChecking() is on, as it is by
    ///     default; otherwise it does nothing. Normalize() joins texts.
    void NormalizeDocument();

    /// \throws DOMException 15 "Not implemented", always
    Node* RenameNode(Node* node, std::string_view namespaceURI, std::string_view qualifiedName);

    /// @}
    /// \name Conveniences
    /// @{

    /// Returns a copy of a node of any document, with all that is below it when `deep`, made by
    /// this document. The caller owns it.
    /// \throws DOMException 9 "Node type not supported" for documents and document types
    Node* ImportNode(const Node& node, bool deep);

    /// Returns the first element in document order whose attribute "id" has the value `id`, or
    /// null. Unlike GetElementById() it finds those that were loaded without namespaces, too.
    Element* FindById(std::string_view id) const;

    /// @}

protected:
    /// For documents whose root element is of another class: makes none.
    Document(DocumentType* doctype, DOMImplementation* implementation);

    /// Returns the list of the elements "input", "button", "select" and "textarea" whose attribute
    /// "name" is `name`.
    NodeList GetElementsByName(std::string_view name) const;

    /// Takes over what CloneNode() copies besides the implementation and the document type.
    void CopyProperties(const Document& other);

private:
    friend class detail::NodeAccess;
    friend class Node;

    void CheckVersion(std::string_view version) const;

    astring documentURI_;
    astring inputEncoding_;
    astring xmlEncoding_;
    astring xmlVersion_ = "1.0";
    DOMImplementation* implementation_;
    DocumentType* doctype_;
    bool xmlStandalone_ = false;
    bool strictErrorChecking_ = true;
};

}  // namespace Dom
