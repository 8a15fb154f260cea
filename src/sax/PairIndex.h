// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace sax::detail {

/// The names of an attribute.
struct AttributeNames {
    std::string_view uri;
    std::string_view localName;
    std::string_view qName;
};

/// Finds attributes by namespace and local name.
///
/// Of several with the same pair the first is found. But a declaration of a namespace, whose pair
/// may be that of an ordinary attribute, gives way to that. Attributes whose namespace and local
/// name are both empty are not found.
class PairIndex {
public:
    /// How many attributes Scan() goes through faster than an index is made.
    static constexpr int kFew = 16;

    void Clear() { entries_.clear(); }

    /// Replaces what was entered by `count` attributes whose names `namesOf` returns.
    template <typename NamesOf>
    void Fill(int count, const NamesOf& namesOf) {
        Clear();
        for (int i = 0; i < count; ++i)
            Add(namesOf(i), i);
    }

    /// Enters an attribute.
    void Add(const AttributeNames& names, int index);

    /// Returns the index of an attribute, or -1.
    int Find(std::string_view uri, std::string_view localName) const;

    /// Does the same without an index, for the attributes that Fill() would enter.
    template <typename NamesOf>
    static int Scan(int count, const NamesOf& namesOf, std::string_view uri,
                    std::string_view localName) {
        if (uri.empty() && localName.empty()) return -1;
        int found = -1;
        for (int i = 0; i < count; ++i) {
            const AttributeNames names = namesOf(i);
            if (names.localName != localName || names.uri != uri) continue;
            if (!IsDeclaration(names.qName)) return i;
            if (found < 0) found = i;
        }
        return found;
    }

private:
    using Views = std::pair<std::string_view, std::string_view>;

    struct Less {
        using is_transparent = void;
        template <typename A, typename B>
        bool operator()(const A& a, const B& b) const {
            return Views(a.first, a.second) < Views(b.first, b.second);
        }
    };
    struct Entry {
        int index;
        bool isDeclaration;
    };

    static bool IsDeclaration(std::string_view qName);

    std::map<std::pair<std::string, std::string>, Entry, Less> entries_;
};

}  // namespace sax::detail
