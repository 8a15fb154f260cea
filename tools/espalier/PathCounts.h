// SPDX-License-Identifier: MIT
#pragma once

#include <compare>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace Tool {

/// Counts the elements of documents by their paths: how many there are of each, how often each
/// attribute occurs, how much text they hold. It is fed with start tags, texts and end tags, and
/// keeps nothing of what it has counted but the numbers.
///
/// Memory does not grow with the documents, but with the number of different paths, and that is
/// bounded: an element that would need one path too many, or that is too deep, is counted in the
/// entry kOthers of the nearest ancestor that has an entry, together with all that is in it. The
/// same goes for attributes.
class PathCounts {
public:
    static constexpr std::size_t kMostPaths = 100'000;
    static constexpr std::size_t kMostAttributes = 100'000;  ///< of all paths together

    /// How many levels a path may have. Paths are written out level by level, so deeper ones would
    /// make more output than there was input.
    static constexpr int kMostLevels = 256;

    /// The name of an entry for what has no entry of its own. No element is called so.
    static constexpr std::string_view kOthers = "...";

    struct Attribute {
        std::string_view name;
        long count = 0;
    };

    struct Entry {
        std::string_view name;
        int parent = -1;  ///< index in Entries(); -1: a root element
        int level = 0;    ///< 0 for root elements
        long count = 0;
        long textBytes = 0;
        std::vector<Attribute> attributes;  ///< in order of their first appearance
        std::vector<int> children;          ///< indexes in Entries(), in that order, too
        bool isOthers = false;
        std::size_t position = 0;   ///< in the parent's `children`
        std::size_t lastChild = 0;  ///< in `children`: the one that was entered last
    };

    /// Starts a document.
    void Begin() { open_.clear(); }

    void EnterElement(std::string_view name);

    /// Counts an attribute of the element entered last; the `index`th of it, from 0 on.
    void AddAttribute(std::string_view name, std::size_t index);

    /// Counts text in the element entered last; text outside of elements is not counted.
    void AddText(std::size_t bytes);

    void LeaveElement();

    /// Returns all entries, each after its parent.
    const std::vector<Entry>& Entries() const { return entries_; }

    /// Returns the entries of root elements.
    const std::vector<int>& Roots() const { return roots_; }

private:
    // A name in the context of an entry.
    struct Key {
        int owner;
        std::string_view name;

        auto operator<=>(const Key&) const = default;
    };

    int FindOrAdd(int parent, std::string_view name);
    int Find(int parent, std::string_view name) const;
    int Add(int parent, std::string_view name);
    std::string_view Keep(std::string_view name);

    std::vector<Entry> entries_;
    std::vector<int> roots_;
    std::vector<int> open_;  // the entries of the open elements
    // Trees, not hash tables: names from outside cannot make them slow.
    std::map<Key, int> paths_;               // the entry of a name in a parent
    std::map<Key, std::size_t> attributes_;  // where in the entry's list
    std::set<std::string, std::less<>> names_;
};

}  // namespace Tool
