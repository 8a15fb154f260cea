// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/HTMLElement.h>
#include <espalier/dom/css/Forward.h>
#include <espalier/dom/css/LinkStyle.h>

namespace Dom {

/// An element "style" of an HTMLDocument, which holds a style sheet as its text.
///
/// It owns the sheet that it made last, Sheet(). Changes of its text do not change the sheet.
class ESPALIER_EXPORT HTMLStyleElement : public HTMLElement, public StyleSheets::LinkStyle {
public:
    /// Makes an element without attributes, whatever its name.
    HTMLStyleElement(std::string_view namespaceURI, std::string_view qualifiedName,
                     Document* ownerDocument);
    ~HTMLStyleElement() override;

    void* QueryInterface(const char* name) override;
    /// Returns a new element with the same attributes, without a text and a sheet.
    Node* CloneNode(bool deep) override;

    /// \name Attributes
    /// The attribute of the name, in small letters; an empty string when there is none, valid until
    /// the attribute changes.
    /// @{
    const astring& Media() const;
    const astring& Type() const;
    /// @}

    /// Tells whether the attribute "disabled" is "yes" or "true", in any case, or "1".
    bool Disabled() const;

    /// Makes the sheet of the texts and CDATA sections in the element, also those in references to
    /// entities, not those in elements; deletes the sheet before. What cannot be read is left out,
    /// as CSS::CssReader and CSS::CSSStyleSheet::InsertRule() tell. The title of the sheet is
    /// Title().
    ///
    /// \return the sheet, which the element owns; null, when Type() is neither empty nor exactly
    ///     "text/css"
    CSS::CSSStyleSheet* CreateStyleSheet();

private:
    friend class detail::NodeAccess;

    // Made in the pool.
    explicit HTMLStyleElement(const detail::NodeName* name);
};

}  // namespace Dom
