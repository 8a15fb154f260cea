// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/HTMLElement.h>
#include <espalier/dom/css/Forward.h>
#include <espalier/dom/css/LinkStyle.h>
#include <espalier/io/Forward.h>

namespace Dom {

/// An element "link" of an HTMLDocument, which may link to a style sheet.
///
/// It owns the sheet that it made last, Sheet(). An attribute counts when it has no namespace or
/// that of XHTML.
class ESPALIER_EXPORT HTMLLinkElement : public HTMLElement, public StyleSheets::LinkStyle {
public:
    /// Makes an element without attributes, whatever its name.
    HTMLLinkElement(std::string_view namespaceURI, std::string_view qualifiedName,
                    Document* ownerDocument);
    ~HTMLLinkElement() override;

    void* QueryInterface(const char* name) override;
    /// Returns a new element with the same attributes, without a sheet.
    Node* CloneNode(bool deep) override;

    /// \name Attributes
    /// The attribute of the name, in small letters; an empty string when there is none, valid until
    /// the attribute changes.
    /// @{
    const astring& Charset() const;
    const astring& Href() const;
    const astring& Hreflang() const;
    const astring& Media() const;
    const astring& Rel() const;
    const astring& Rev() const;
    const astring& Target() const;
    const astring& Type() const;
    /// @}

    /// Tells whether the attribute "disabled" is "yes" or "true", in any case, or "1".
    bool Disabled() const;

    /// Makes the sheet that the element links to, and deletes the one before. What cannot be read
    /// is left out, as CSS::CssReader and CSS::CSSStyleSheet::InsertRule() tell. The title of the
    /// sheet is empty. Rel() is not looked at.
    ///
    /// \param stream the text of the sheet, in the encoding that Charset() names to CssReader, so
    ///     US-ASCII when it is empty; stays the caller's; may be null, which is an empty text
    /// \return the sheet, which the element owns; null, when Type() is not exactly "text/css"
    CSS::CSSStyleSheet* CreateStyleSheet(IO::Stream* stream);

private:
    friend class detail::NodeAccess;

    // Made in the pool.
    explicit HTMLLinkElement(const detail::NodeName* name);
};

}  // namespace Dom
