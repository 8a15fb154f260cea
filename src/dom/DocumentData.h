// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>
#include <espalier/dom/Forward.h>
#include <espalier/dom/NodeParts.h>
#include <espalier/dom/css/CSSStyleDeclaration.h>

#include "dom/ListPlace.h"
#include "dom/NodeNames.h"
#include "dom/NodePool.h"
#include "dom/OtherLinks.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>  // std::less
#include <map>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Dom::detail {

using OverrideStyles = std::map<astring, CSS::CSSStyleDeclaration, std::less<>>;

/// What the nodes of a document share: memory, names, and what is remembered beside the tree. It
/// lives as long as the document and, after that, as long as there are nodes that were not in its
/// tree.
class DocumentData {
public:
    /// Names that are not interned but made with the document.
    enum class FixedName { Document, Text, CDATASection, Comment, Fragment };

    /// \param ownDocument null for a node that is made without one
    explicit DocumentData(Document* ownDocument);
    DocumentData(const DocumentData&) = delete;
    DocumentData& operator=(const DocumentData&) = delete;

    /// Returns the data of a document, or new ones for null.
    static DocumentData& Of(Document* document);

    Document* document;
    NodePool pool;
    NodeNames names{*this, pool};
    OtherLinks otherLinks;
    ListPlaces childListPlaces;
    const std::uint64_t serial;          ///< another one for each document, from 1 on
    std::uint64_t stamp = 0;             ///< raised by every change of the tree
    std::uint64_t attributeChanges = 0;  ///< how many of the changes touched attributes alone
    std::uint64_t valueChanges = 0;      ///< of texts, and of the address of the document
    std::size_t freeNodes = 0;  ///< nodes that are in no tree and no map; the document, too
    std::size_t ownMemory = 0;  ///< nodes that are not freed with the pool alone
    /// Attributes that name an element although another attribute has taken their place.
    std::unordered_map<const Element*, std::vector<Attr*>> orphans;
    /// What HTMLDocument::GetOverrideStyle() has made, by pseudo-element.
    std::unordered_map<const Element*, OverrideStyles> overrides;

    /// Raises the stamp for a change of attributes and what is in them.
    void AttributesHaveChanged() noexcept {
        ++stamp;
        ++attributeChanges;
    }
    /// Returns what is raised by every change of the tree but that of attributes.
    std::uint64_t ChildStamp() const noexcept { return stamp - attributeChanges; }

    const NodeName* Name(FixedName name);

    /// Returns the text with its characters in the pool; they are freed with all others.
    astring PlaceText(std::string_view text);
    /// Returns the text, in the pool; it is freed with all others.
    astring* PlaceValue(std::string_view text);
    /// As PlaceValue(); short texts that are equal mostly are one.
    astring* PlaceShared(std::string_view text);

    /// Tells whether all nodes can be destroyed by freeing the pool: none owns anything else, and
    /// none is outside of the tree.
    bool GoesWithPool() const { return freeNodes == 1 && ownMemory == 0 && otherLinks.IsEmpty(); }

    /// Forgets all nodes and names and frees all memory when only the document itself is left, or
    /// the document and nodes that go with the pool.
    void ClearWhenUnused();

    /// Counts a node out; who is gone with the document is deleted with its last node.
    void Release() {
        if (--freeNodes == 0 && document == nullptr) delete this;
    }

private:
    static constexpr std::size_t kMostShared = 15;  // bytes; longer ones are rarely equal

    // The document's own name is not in the pool, so that it is there whenever that is cleared.
    const astring noUri_;
    const NodeName documentName_{"#document", &noUri_, astring::npos, this, 0, nullptr, nullptr};
    std::array<const NodeName*, 5> fixedNames_{};
    std::array<astring*, 128> shared_{};
};

}  // namespace Dom::detail
