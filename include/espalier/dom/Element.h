// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/AttributeRange.h>
#include <espalier/dom/Node.h>

namespace Dom {

/// An element.
///
/// Attributes are found by their qualified name, or by namespace and local name; which of the two
/// depends on how they were set. Those of a document that was loaded with namespaces, which is the
/// rule, are found by qualified name when they have no prefix, and by namespace and local name when
/// they have one.
class ESPALIER_EXPORT Element : public Node {
public:
    /// Makes an element without attributes. Documents make them with CreateElement() and
    /// CreateElementNS().
    Element(std::string_view namespaceURI, std::string_view qualifiedName, Document* ownerDocument);
    ~Element() override;

    void* QueryInterface(const char* name) override;
    Node* CloneNode(bool deep) override;

    /// Returns NodeName().
    const astring& TagName() const { return NodeName(); }

    /// \name Values of attributes
    /// @{

    /// Returns the value of the attribute `name`, or an empty string. Valid until that attribute
    /// changes.
    const astring& GetAttribute(std::string_view name) const;
    const astring& GetAttributeNS(std::string_view namespaceURI, std::string_view localName) const;

    /// Gives the element a new attribute in place of any with that name, which is destroyed.
    /// \throws DOMException 7 "This node is read-only"
    void SetAttribute(std::string_view name, std::string_view value);
    void SetAttributeNS(std::string_view namespaceURI, std::string_view qualifiedName,
                        std::string_view value);

    /// Destroys an attribute.
    /// \throws DOMException 7 "This node is read-only"; 8 "No node named ... in this map" with the
    ///     name, also, deliberately, when there simply is none
    void RemoveAttribute(std::string_view name);
    void RemoveAttributeNS(std::string_view namespaceURI, std::string_view localName);

    /// Tells whether there is an attribute of that name, or with that local name and the namespace
    /// of the element.
    bool HasAttribute(std::string_view name) const;
    bool HasAttributeNS(std::string_view namespaceURI, std::string_view localName) const;

    /// @}
    /// \name Attributes as nodes
    /// @{

    /// Returns the attribute, or null.
    Attr* GetAttributeNode(std::string_view name) const;
    Attr* GetAttributeNodeNS(std::string_view namespaceURI, std::string_view localName) const;

    /// Takes an attribute in.
    /// \return the attribute that had the name, which belongs to the caller now, or null
    /// \throws DOMException as NamedNodeMap::SetNamedItem()
    Attr* SetAttributeNode(Attr* attribute);
    Attr* SetAttributeNodeNS(Attr* attribute);

    /// Takes an attribute out, which belongs to the caller then.
    ///
    /// Deliberate: it is the one that is filed under the name of `attribute`. One of a namespace
    /// that has a prefix is not: NamedNodeMap::RemoveNamedItemNS() takes it out.
    /// \throws DOMException 7 "This node is read-only"; 8 "No node named ... in this map" with its
    ///     name
    Attr* RemoveAttributeNode(Attr* attribute);

    /// Returns the attributes to loop over, without making nodes of them.
    ///
    /// \code
    ///     for (const Dom::AttributeView attribute : element.AttributeViews()) {
    ///         std::cout << attribute.Name() << " is " << attribute.Value() << "\n";
    ///     }
    /// \endcode
    AttributeRange AttributeViews() const;

    /// @}
    /// \name Descendants
    /// Live lists, see NodeList.
    /// @{

    /// Returns the elements, or other nodes, of that name. There is no wildcard.
    NodeList GetElementsByTagName(std::string_view name) const;

    /// Deliberate: returns the nodes whose name is `namespaceURI`; `localName` is not looked at.
    NodeList GetElementsByTagNameNS(std::string_view namespaceURI,
                                    std::string_view localName) const;

    /// @}

private:
    friend class HTMLElement;
    friend class NamedNodeMap;
    friend class Node;
    friend class detail::NodeAccess;

    // Made in the pool, without a value.
    explicit Element(const detail::NodeName* name) : Node(ELEMENT_NODE, name) {}

    detail::AttributeTable& Table();
};

}  // namespace Dom
