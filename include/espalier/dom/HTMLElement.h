// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Element.h>
#include <espalier/dom/css/ElementCSSInlineStyle.h>

namespace Dom {

/// An element of an HTMLDocument, with the attributes that all elements of XHTML have, and with a
/// style of its own.
///
/// An attribute is the one in the namespace of the element or else, as pages are written, the one
/// without a prefix. Who sets one sets that which is there, or makes one without a prefix.
///
/// Style() is what the attribute "style" declares: it is read when Style() is called and the
/// attribute has another text than the one that was read last. What cannot be read there, and what
/// stands behind it, is left out. Changes of Style() show in the attribute once SyncStyle() is
/// called; before, another text in the attribute ends them. A clone gets the attribute alone.
///
/// \code
///     Dom::HTMLDocument page;
///     page.LoadXml("<html><body><p style='color: red'/></body></html>");
///     auto* p = static_cast<Dom::HTMLElement*>(page.Body()->FirstChild());
///     p->Style().SetProperty("margin", "0", "");
///     p->SyncStyle();                         // style="color: red; margin-top: 0; ..."
/// \endcode
class ESPALIER_EXPORT HTMLElement : public Element, public CSS::ElementCSSInlineStyle {
public:
    /// Makes an element without attributes. Documents make them with CreateElement() and
    /// CreateElementNS().
    HTMLElement(std::string_view namespaceURI, std::string_view qualifiedName,
                Document* ownerDocument);
    ~HTMLElement() override;

    void* QueryInterface(const char* name) override;
    Node* CloneNode(bool deep) override;

    /// \name Attributes
    /// Each getter returns an empty string when there is none, valid until the attribute changes.
    /// Each setter throws DOMException 7 "This node is read-only".
    /// @{

    /// The attribute "id".
    const astring& Id() const;
    void SetId(std::string_view id);

    /// The attribute "title".
    const astring& Title() const;
    void SetTitle(std::string_view title);

    /// The attribute "xml:lang" or, when that is empty, the attribute "lang". Setting it sets both
    /// as far as they are there, and "xml:lang" when none is.
    const astring& Lang() const;
    void SetLang(std::string_view lang);

    /// The attribute "dir".
    const astring& Dir() const;
    void SetDir(std::string_view dir);

    /// The attribute "class".
    const astring& ClassName() const;
    void SetClassName(std::string_view className);

    /// @}

    /// Writes Style() into the attribute "style". One that is not there is not made for an empty
    /// style.
    /// \throws DOMException 7 "This node is read-only"
    void SyncStyle();

protected:
    /// Returns the value of the attribute with that local name and the namespace of the element,
    /// or else of the one of that name; empty when there is neither.
    const astring& GetXHtmlAttribute(const char* name) const;
    /// Sets that attribute.
    /// \throws DOMException 7 "This node is read-only"
    void SetXHtmlAttribute(const char* name, std::string_view value);

    /// Reads the attribute "style", when it has changed.
    void UpdateStyle() override;

    /// \cond
    // Made in the pool.
    explicit HTMLElement(const detail::NodeName* name);
    /// \endcond

private:
    friend class detail::NodeAccess;

    astring styleText_;  // of the attribute "style" that Style() was read from
};

}  // namespace Dom
