// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/dom/ChildRange.h>
#include <espalier/dom/DOMNodeType.h>
#include <espalier/dom/Forward.h>
#include <espalier/dom/NodeList.h>
#include <espalier/dom/NodeParts.h>

#include <cstddef>
#include <cstdint>
#include <new>
#include <string_view>

namespace Dom {

/// A node of a tree, in the manner of DOM Level 2 Core.
///
/// Nodes are made by their document (Document::CreateElement() and so on). A new node belongs to
/// who made it, and so does one that was removed; it is destroyed with `delete`, DestroyNode() or a
/// NodePtr. A node in a tree belongs to its parent, an attribute to its element, and is destroyed
/// with it; `delete` takes it out of there first. Nodes may outlive their document; from then on
/// they take in no other nodes, which is the error 4 of different documents.
///
/// Failing operations throw DOMException before they change anything.
///
/// Deliberate: InsertBefore() and ReplaceChild() do not tell the neighbours. The node before the
/// place still answers NextSibling() with the node that it led to before, and so do the lists of
/// children and walks along such links; the nodes behind are found by PreviousSibling() of the
/// others only. InsertChild() and ExchangeChild() do what one expects. Children() visits all
/// children in their true order in any case, and so do destruction and WriteNode(). Whoever
/// destroys a node never leaves a link to it.
///
/// \note One thread at a time may use a document and its nodes, also for looking only; different
///     documents may be used at once.
class ESPALIER_EXPORT Node : public DOMNodeType,
                             protected detail::NodeFlags,
                             private detail::ChildList {
public:
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

    // The order of the virtual functions is part of the binary interface: append, never reorder.

    /// Returns this object as the class `name`, for example "Dom::Element", or null when it is
    /// none. The pointer is that of the subobject of the class, so that it may be cast to it.
    virtual void* QueryInterface(const char* name);

    /// Takes the node out of its parent, then destroys it with all that is below it.
    virtual ~Node();

    /// Returns a new node of the same class, type, name, value, namespace and document, which has
    /// no parent and is not read-only. An attribute keeps its value and whether it is specified, an
    /// element has clones of the attributes. The caller owns it.
    ///
    /// Deliberate: a clone never has children, whatever `deep` says. CloneTree() copies them too.
    virtual Node* CloneNode(bool deep) = 0;

    /// \name Properties
    /// @{

    DOMNodeType NodeType() const { return static_cast<DOM_NODE_TYPE>(*this); }

    /// Returns the qualified name, the target of an instruction, the name of an entity, or one of
    /// "#text", "#cdata-section", "#comment", "#document" and "#document-fragment". Valid while
    /// the document or the node lives.
    const astring& NodeName() const { return name_->qualified; }

    /// Returns the text of a text, a CDATA section or a comment, the data of an instruction, the
    /// value of an attribute that SetValue() or a document with namespaces gave it; empty for other
    /// nodes. Valid until the value changes.
    const astring& NodeValue() const { return HasValue() ? *rest_.value : EmptyText(); }

    /// Returns the URI of the namespace, or empty.
    const astring& NamespaceURI() const { return *name_->uri; }

    /// Returns the part of the name before its first ":"; empty without one.
    astring Prefix() const { return astring(name_->Prefix()); }

    /// Returns the part of the name behind its first ":", or the whole name.
    astring LocalName() const { return astring(name_->LocalName()); }

    /// Gives the name another prefix.
    /// \throws DOMException 7 "This node is read-only"; 14 "Invalid prefix specified" for a node
    ///     without a namespace, for "xml" and "xmlns" with another namespace than theirs, and for
    ///     the attribute "xmlns"
    ///
    /// Deliberate: an empty prefix gives a name that begins with ":".
    void SetPrefix(std::string_view prefix);

    /// Returns the document that made the node; null for a document.
    Document* OwnerDocument() const {
        return NodeType() == DOCUMENT_NODE ? nullptr : name_->Owner();
    }

    /// Returns the URI of the document up to its last "/" or "\"; empty when it has neither.
    astring BaseURI() const;

    /// Tells whether DOMImplementation::HasFeature() knows the feature.
    bool IsSupported(std::string_view feature, std::string_view version) const;

    bool IsReadOnly() const { return Has(ReadOnly); }

    /// @}
    /// \name Links
    /// Null where there is none.
    /// @{

    Node* ParentNode() const { return parent_; }
    Node* FirstChild() const { return Has(SlowFirst) ? SlowFirstChild() : TrueFirst(); }
    Node* LastChild() const { return Has(ImpliedText) ? SlowLastChild() : TrueLast(); }
    Node* PreviousSibling() const { return Has(OtherPrevious) ? SlowPrevious() : TruePrevious(); }
    Node* NextSibling() const { return Has(OtherNext) ? SlowNext() : next_; }

    /// Returns the children, as a live list that is a part of the node.
    const NodeList& ChildNodes() const { return list_; }

    bool HasChildNodes() const { return FirstChild() != nullptr; }

    /// Tells whether there is at least one attribute.
    bool HasAttributes() const;

    /// Returns the attributes of an element, to edit; null for other nodes. HasAttributes() stays
    /// what it was.
    NamedNodeMap* Attributes();

    /// Tells whether `node` is below this node. False at once for a node with another
    /// OwnerDocument(), and for null.
    ///
    /// Deliberate: so it is for a document and the nodes in it, as a document has no owner.
    bool IsParentOf(const Node* node) const;

    /// @}
    /// \name Changing the tree
    /// All of these return the node that they took in or out, and throw DOMException:
    /// 8 "Node expected" for null; 7 "This node is read-only" and that the old parent of a node is
    /// read-only; 4 for nodes of different documents; 3 for a node that is this node or above it.
    /// @{

    /// Makes `newChild` the last child, after taking it out of where it was.
    /// \throws DOMException 7 "The parent of the node being appended is read-only"; 4 "The node to
    ///     append is was created from a different document than the one that created this node"; 3
    ///     "The node to append is one of this node's ancestors"; 3 "The node is already a child of
    ///     this node", so this does not move a child; for a document 3 "A document can only have
    ///     one root element", "A document can only have one DTD", "Document type description only
    ///     allowed in document prologue", "XML declaration not allowed in non-document nodes",
    ///     "Non-whitespace text node not allowed as child of document", "Node not allowed as child
    ///     of document"
    ///
    /// Deliberate: a fragment is appended as it is, not its children. A document takes a text that
    /// begins with something other than white space.
    Node* AppendChild(Node* newChild);

    /// Puts `newChild` before the child `refChild`; appends it when `refChild` is null.
    /// \throws DOMException 8 "Node expected", also when `refChild` is no child of this node; 7
    ///     "The parent of the node being inserted is read-only"; 4 "The node to insert is was
    ///     created from a different document than the one that created this node"; 3 "The node to
    ///     insert is one of this node's ancestors"
    ///
    /// Deliberate: NextSibling() of the node before `refChild` still is `refChild`, see above.
    /// A document's rules for children are not applied.
    Node* InsertBefore(Node* newChild, Node* refChild);

    /// Puts `newChild` in the place of the child `oldChild`, which it returns: it belongs to the
    /// caller then.
    /// \throws DOMException 8 "Node expected", also when `oldChild` is no child of this node; 7
    ///     "The parent of the node being inserted is read-only"; 4 "The node to replace is was
    ///     created from a different document than the one that created this node"; 3 "The node to
    ///     replace is one of this node's ancestors"
    ///
    /// Deliberate: the neighbours' links still lead to `oldChild`, see above. A document's rules
    /// for children are not applied.
    Node* ReplaceChild(Node* newChild, Node* oldChild);

    /// Takes a child out, which then belongs to the caller.
    /// \throws DOMException 8 "Node expected"; 8 "The old child is not a child of this node"
    Node* RemoveChild(Node* oldChild);

    /// As InsertBefore(), with the same errors, but all links tell of it.
    Node* InsertChild(Node* newChild, Node* refChild);

    /// As ReplaceChild(), with the same errors, but all links tell of it.
    Node* ExchangeChild(Node* newChild, Node* oldChild);

    /// Destroys the node, or the one that is given; nothing happens to a null pointer.
    void DestroyNode();
    static void DestroyNode(Node* node);

    /// @}
    /// \name Conveniences
    /// @{

    /// Returns the children in their true order, to loop over.
    ///
    /// \code
    ///     for (Dom::Node& child : node.Children()) std::cout << child.NodeName() << "\n";
    /// \endcode
    ChildRange Children() const;

    /// Returns NodeName(), its prefix and its local name as views, valid as long as the name.
    std::string_view NameView() const { return name_->qualified.view(); }
    std::string_view PrefixView() const { return name_->Prefix(); }
    std::string_view LocalNameView() const { return name_->LocalName(); }

    /// Returns the text of all texts and CDATA sections below the node, joined; the value of a
    /// text, a CDATA section, a comment, an instruction or an attribute.
    astring TextContent() const;

    /// Joins adjacent texts below the node and destroys empty ones (DOM Level 2 Core). CDATA
    /// sections and texts with children stay.
    /// \throws DOMException 7 "This node is read-only" for a text that is to take others in; what
    ///     was joined before stays
    void Normalize();

    /// Returns a copy of the node with all that is below it. The caller owns it.
    Node* CloneTree() const;

    /// @}

    /// \cond
    // Memory: nodes that a document makes lie in its pool, others on the heap.
    static void* operator new(std::size_t size);
    static void operator delete(void* memory);
    static void operator delete(Node* node, std::destroying_delete_t);
    // For derived classes with an alignment of their own, on the heap.
    static void* operator new(std::size_t size, std::align_val_t alignment);
    static void operator delete(void* memory, std::align_val_t alignment);
    static void operator delete(Node* node, std::destroying_delete_t, std::align_val_t alignment);
    /// \endcond

protected:
    /// \param ownerDocument may be null for a document and for a document type
    Node(DOM_NODE_TYPE type, std::string_view namespaceURI, std::string_view name,
         Document* ownerDocument);
    /// \cond
    // Makes a document, which is named "#document" and has no owner.
    explicit Node(detail::DocumentData& data);
    // Made in the pool.
    Node(DOM_NODE_TYPE type, const detail::NodeName* name) : DOMNodeType(type), name_(name) {
        list_.word_ = NodeList::IsEmbedded;
    }
    /// \endcond

    /// \throws DOMException 7 "This node is read-only"
    void CheckReadOnly() const;
    /// Says whether the node refuses changes, other than by SetData() of an instruction.
    void SetReadOnly(bool readOnly) { Set(ReadOnly, readOnly); }

    /// Gives a node its value, which a document, an element, a fragment and an entity reference do
    /// not have.
    void SetNodeValue(std::string_view value);

private:
    friend class Attr;
    friend class CharacterData;
    friend class Document;
    friend class Element;
    friend class NodeList;
    friend class detail::NodeAccess;

    /// What stands in the last word, which depends on the class.
    union Rest {
        astring* value;                      // not of elements
        detail::AttributeTable* attributes;  // of elements; null without any
    };

    // What an operation that takes a child in says.
    struct ChildMessages;
    void CheckNewChild(const Node* newChild, const ChildMessages& messages) const;
    void CheckDocumentChild(const Node& newChild) const;
    bool IsSameDocument(const Node& node) const;
    bool IsAtOrBelow(const Node& ancestor) const;
    Node* MoveBefore(Node* newChild, Node* refChild, bool told);
    Node* MoveInto(Node* newChild, Node* oldChild, bool told);

    bool HasValue() const { return Has(ValueBearing); }
    void AppendNodeValue(std::string_view value);
    void ValueHasChanged();
    static const astring& EmptyText();

    // The true chain of children is doubly linked and consistent: the first child's `previous_`
    // leads to the last one, whose `next_` is null. Links that differ from it are kept by the
    // document, and a flag tells of them.
    Node* TrueFirst() const {
        return reinterpret_cast<Node*>(list_.word_ & ~std::uintptr_t{NodeList::TagMask});
    }
    Node* TrueLast() const { return TrueFirst() == nullptr ? nullptr : TrueFirst()->previous_; }
    Node* TruePrevious() const {
        return previous_ == nullptr || previous_->next_ == nullptr ? nullptr : previous_;
    }

    Node* SlowFirstChild() const;
    Node* SlowLastChild() const;
    Node* SlowPrevious() const;
    Node* SlowNext() const;

    Node* parent_ = nullptr;
    Node* previous_ = nullptr;
    Node* next_ = nullptr;
    const detail::NodeName* name_;
    Rest rest_{nullptr};
};

}  // namespace Dom
