// SPDX-License-Identifier: MIT
#pragma once

#include "SourceReader.h"

#include <cstddef>
#include <deque>
#include <vector>

namespace Tool {

/// The nodes between where a document is read and where it is written: a look ahead, to tell
/// elements that hold text of their own from those that hold other elements alone.
class NodeQueue {
public:
    /// How far IsMixed() looks ahead: in bytes of names and values, and kNodeCost for each node and
    /// attribute.
    static constexpr std::size_t kMost = 65536;
    static constexpr std::size_t kNodeCost = 16;

    /// \param source not owned
    explicit NodeQueue(SourceReader& source) : source_(source) {}

    /// Returns the first node, null at the end. It is there until Pop().
    const SourceNode* First();

    /// Returns the node behind the first one, null at the end. White space is one node, however it
    /// was read, so there is no white space behind white space.
    const SourceNode* Second();

    /// Removes the first node.
    void Pop();

    /// Tells whether the first node, an element that is not empty, holds text between its tags and
    /// outside of its children. False also when there is none within the look ahead.
    bool IsMixed();

private:
    enum class Content { Unknown, Mixed, NotMixed };

    struct Entry {
        SourceNode node;
        std::size_t cost = 0;
        Content content = Content::Unknown;  // of an element that is not empty
    };

    bool ReadNode();
    void Follow(const SourceNode& node);
    void LearnInnermost(Content content);

    SourceReader& source_;
    SourceNode spare_;  // the node that is being read
    std::deque<Entry> entries_;
    std::size_t first_ = 0;           // how many nodes were removed
    std::vector<std::size_t> inner_;  // the open elements, by how many nodes came before each
    std::size_t cost_ = 0;            // of all entries
};

}  // namespace Tool
