// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// What the inline functions of Dom::Node see of its representation.

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/dom/Forward.h>
#include <espalier/dom/NodeList.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

/// \cond
namespace Dom::detail {

/// A name with its namespace, held once per document.
struct NodeName {
    astring qualified;
    const astring* uri;  // never null
    std::size_t colon;   // where the first ":" is; npos without one
    DocumentData* data;  // of the document that holds the name
    std::size_t hash;
    NodeName* chain;             // the next name with such a hash
    mutable astring* lastValue;  // of an attribute that was loaded; null before

    std::string_view Prefix() const {
        return colon == astring::npos ? std::string_view() : qualified.view().substr(0, colon);
    }
    std::string_view LocalName() const {
        return colon == astring::npos ? qualified.view() : qualified.view().substr(colon + 1);
    }
    ESPALIER_EXPORT Document* Owner() const;
};

/// The marks of a node.
class NodeFlags {
protected:
    enum Flag : std::uint32_t {
        ReadOnly = 1,
        ValueBearing = 2,  // the last word is a value
        OtherFirst = 4,    // FirstChild() differs from the true first child
        ImpliedText = 8,   // an attribute whose single text child has not been asked for
        SlowFirst = OtherFirst | ImpliedText,
        OtherPrevious = 16,        // PreviousSibling() differs from the true one
        OtherNext = 32,            // NextSibling() differs from the true one
        IsTarget = 64,             // some other node's link differs and leads here
        InPool = 128,              // the memory is the document's
        SharedValue = 256,         // the value is not the node's own
        OwnsBuffer = 512,          // the value may hold memory outside of the pool
        IsSpecified = 1024,        // of an attribute
        InMap = 2048,              // of an attribute: its element's map holds it
        IsOrphan = 4096,           // of an attribute: its owner element has another in its place
        HasOrphans = 8192,         // of an element that some orphans name
        NeedsDestruction = 16384,  // counted by the document: to be destroyed one by one
        HasOverrides = 32768       // of an element that a program has given styles
    };

    bool Has(Flag flag) const { return (flags_ & flag) != 0; }
    void Set(Flag flag, bool value = true) { flags_ = value ? flags_ | flag : flags_ & ~flag; }

    // The size of a node in the pool stands above the flags.
    std::size_t PoolSize() const { return flags_ >> kSizeShift; }
    void SetPoolSize(std::size_t size) {
        flags_ |= static_cast<std::uint32_t>(size << kSizeShift) | InPool;
    }

private:
    static constexpr int kSizeShift = 16;

    std::uint32_t flags_ = 0;
};

/// The list of the children of a node, which holds the link to the first one, too.
class ChildList {
protected:
    NodeList list_;
};

}  // namespace Dom::detail
/// \endcond
