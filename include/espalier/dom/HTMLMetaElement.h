// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/HTMLElement.h>

namespace Dom {

/// An element "meta" of an HTMLDocument, which says something about the document. It makes no style
/// sheet, whatever it says.
class ESPALIER_EXPORT HTMLMetaElement : public HTMLElement {
public:
    /// Makes an element without attributes, whatever its name.
    HTMLMetaElement(std::string_view namespaceURI, std::string_view qualifiedName,
                    Document* ownerDocument);
    ~HTMLMetaElement() override;

    void* QueryInterface(const char* name) override;
    Node* CloneNode(bool deep) override;

    /// \name Attributes
    /// "content", "http-equiv", "name" and "scheme"; an empty string when there is none, valid
    /// until the attribute changes.
    /// @{
    const astring& Content() const;
    const astring& HttpEquiv() const;
    const astring& Name() const;
    const astring& Scheme() const;
    /// @}

private:
    friend class detail::NodeAccess;

    // Made in the pool.
    explicit HTMLMetaElement(const detail::NodeName* name);
};

}  // namespace Dom
