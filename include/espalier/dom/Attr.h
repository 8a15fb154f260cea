// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Node.h>

#include <memory>
#include <string_view>

namespace Dom {

/// An attribute.
///
/// Its value is that of its children when it has some: texts, and references to entities, which add
/// nothing. Otherwise it is NodeValue(). The classes that load documents leave NodeValue() empty
/// when namespaces are off.
class ESPALIER_EXPORT Attr : public Node {
public:
    /// Makes an attribute that is not in any element.
    /// \param specified what Specified() tells
    Attr(std::string_view namespaceURI, std::string_view qualifiedName, Document* ownerDocument,
         bool specified = false);
    ~Attr() override;

    void* QueryInterface(const char* name) override;
    Node* CloneNode(bool deep) override;

    /// Returns NodeName().
    const astring& Name() const { return NodeName(); }

    /// Returns the value. Valid until the attribute changes.
    const astring& Value() const;

    /// Makes `value` the value, held by a single text child.
    /// \throws DOMException 7 "This node is read-only"
    void SetValue(std::string_view value);

    /// Tells whether the attribute was set by Element::SetAttribute() or SetAttributeNS(), rather
    /// than made by a document.
    bool Specified() const { return Has(IsSpecified); }

    /// Returns the element that holds the attribute, or null. An attribute that another one
    /// replaced keeps naming its element.
    Element* OwnerElement() const { return ownerElement_; }

private:
    friend class NamedNodeMap;
    friend class Node;
    friend class detail::NodeAccess;

    // Made in the pool, without a value.
    explicit Attr(const detail::NodeName* name);

    Node* MakeImpliedText();

    Element* ownerElement_ = nullptr;
    mutable std::unique_ptr<astring> joined_;  // the value, when it is that of several children
};

}  // namespace Dom
