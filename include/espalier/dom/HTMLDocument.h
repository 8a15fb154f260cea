// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Document.h>
#include <espalier/dom/HTMLCollection.h>
#include <espalier/dom/css/Forward.h>

#include <optional>

namespace Dom {

/// A document of XHTML.
///
/// Its elements are HTMLElements, also those that it loads; "style", "link" and "meta" in the
/// namespace of XHTML are HTMLStyleElement, HTMLLinkElement and HTMLMetaElement. So a page wants
/// xmlns="http://www.w3.org/1999/xhtml", as XHTML does, for its sheets to be found. It is XML that
/// is loaded; names are compared exactly, so "STYLE" is any element. Elements that are looked for
/// here count by their local name, whatever their namespace.
///
/// \code
///     Dom::HTMLDocument page;
///     page.Load("page.xhtml");
///     page.SetTitle("Opening hours");
///     for (Dom::Node* image : page.Images()) ...
/// \endcode
class ESPALIER_EXPORT HTMLDocument : public Document {
public:
    /// Makes a document without a root element, to load or to fill.
    HTMLDocument();

    /// Makes a document with a root element, which this class makes itself.
    /// \param doctype kept for Doctype(); may be null, stays the caller's
    /// \param implementation what Implementation() returns; may be null
    HTMLDocument(std::string_view namespaceURI, std::string_view qualifiedName,
                 DocumentType* doctype, DOMImplementation* implementation);
    ~HTMLDocument() override;

    void* QueryInterface(const char* name) override;
    /// Returns a new HTMLDocument, as Document::CloneNode() does, with the same cookie and
    /// addresses.
    Node* CloneNode(bool deep) override;

    /// Makes an element without a namespace, of the class that its name tells.
    Element* CreateElement(std::string_view name) override;
    /// Makes an element. In the namespace "http://www.w3.org/1999/xhtml" its local name tells the
    /// class; in all others, and without one, it is an HTMLElement.
    Element* CreateElementNS(std::string_view namespaceURI,
                             std::string_view qualifiedName) override;

    /// \name Parts of the page
    /// @{

    /// Returns the text of the title: what the first child of the first element "title" that has
    /// children, in the first "head" of the root element, holds; empty when that is no text.
    astring Title() const;
    /// Makes a text the only child of the first "title" in the first "head" of the root element.
    /// What is not there is made: a "head" before the first "body" or else at the end, a "title" at
    /// the end of the "head", with the namespace and the prefix of the root element. Nothing
    /// happens without a root element.
    /// \throws DOMException 7 "This node is read-only", and "The parent of the node being inserted
    ///     is read-only" for a read-only place
    void SetTitle(std::string_view text);

    /// Returns the first child of the root element that is an element "body", or null.
    Element* Body() const;

    /// Returns the elements "form".
    const HTMLCollection& Forms() const { return forms_; }
    /// Returns the elements "img".
    HTMLCollection Images() const;
    /// Returns the elements "applet", and the elements "object" that have an "applet" below them.
    HTMLCollection Applets() const;
    /// Returns the elements "a" and "area" with an attribute "href".
    HTMLCollection Links() const;
    /// Returns the elements "a" with an attribute "name".
    HTMLCollection Anchors() const;
    /// Returns the elements "input", "button", "select" and "textarea", by their whole names, whose
    /// attribute "name" is `name`.
    NodeList GetElementsByName(std::string_view name) const;

    /// @}
    /// \name Addresses
    /// What a derived class has stored.
    /// @{

    /// Returns the URI of the page that led here, or empty.
    const astring& Referrer() const { return referrer_; }
    /// Returns what was stored or else the host in URL(); empty when that has none.
    astring Domain() const;
    /// Returns what was stored or else DocumentURI().
    const astring& URL() const { return url_.empty() ? DocumentURI() : url_; }
    /// Returns what SetCookie() was given.
    const astring& Cookie() const { return cookie_; }
    void SetCookie(std::string_view text) { cookie_ = text; }

    /// @}
    /// \name Styles
    /// @{

    /// Returns a declaration to be set by a program, which overrides the style of an element, or of
    /// a pseudo-element such as "before". It is empty at first. It belongs to the document, and
    /// goes with the element; CSS::CSSStyleRule and CSS::RuleIndex do not look at it.
    /// \return null for null, and for an element of another document
    CSS::CSSStyleDeclaration* GetOverrideStyle(Element* element, std::string_view pseudo = {});
    /// Returns what GetOverrideStyle() has made, or null.
    const CSS::CSSStyleDeclaration* FindOverrideStyle(const Element& element,
                                                      std::string_view pseudo = {}) const;

    /// @}
    /// \name Writing the page
    /// @{

    /// Destroys what the document holds, and collects what is written from now on.
    void Open();
    /// Adds text to what is collected; a document that is not open is opened.
    void Write(std::string_view text);
    /// Does so, and adds a line feed.
    void Writeln(std::string_view text);
    /// Loads what was collected, with the URI that the document has, and ends collecting. Nothing
    /// happens to a document that is not open.
    /// \throws as LoadXml(); collecting has ended then, too
    void Close();

    /// @}

protected:
    /// Makes a document without a root element.
    HTMLDocument(DocumentType* doctype, DOMImplementation* implementation);

    /// \name Addresses
    /// For those who know where a page comes from. An empty one stands for none.
    /// @{
    void SetReferrer(std::string_view referrer) { referrer_ = referrer; }
    void SetDomain(std::string_view domain) { domain_ = domain; }
    void SetURL(std::string_view url) { url_ = url; }
    /// @}

private:
    astring referrer_;
    astring domain_;
    astring url_;
    astring cookie_;
    HTMLCollection forms_;
    std::optional<astring> written_;  // what Close() is to load; none when the document is not open
};

}  // namespace Dom
