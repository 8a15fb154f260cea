// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/NodeParts.h>

#include "dom/NodePool.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace Dom::detail {

/// The names of a document, each with its namespace held once and compared by identity.
class NodeNames {
public:
    /// \param data what the names lead to
    NodeNames(DocumentData& data, NodePool& pool) : data_(data), pool_(pool) {}
    NodeNames(const NodeNames&) = delete;
    NodeNames& operator=(const NodeNames&) = delete;

    /// Returns a name. It stays where it is as long as the pool is not cleared.
    const NodeName* Intern(std::string_view uri, std::string_view qualified);

    /// Returns a name that is there already, or null.
    const NodeName* Find(std::string_view uri, std::string_view qualified) const;

    /// Forgets all names, when the pool is about to be cleared.
    void Clear() noexcept;

private:
    static std::size_t Hash(std::string_view uri, std::string_view qualified);
    const NodeName* Find(std::string_view uri, std::string_view qualified, std::size_t hash) const;
    void Grow();

    DocumentData& data_;
    NodePool& pool_;
    std::vector<NodeName*> buckets_;  // chains; a power of two of them, or none
    std::size_t count_ = 0;
    const astring noUri_;
};

}  // namespace Dom::detail
