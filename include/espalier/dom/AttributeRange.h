// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/dom/Forward.h>

#include <cstddef>
#include <iterator>
#include <string_view>

namespace Dom {

/// An attribute of an element, as a view: valid until the element's attributes change.
class ESPALIER_EXPORT AttributeView {
public:
    /// Returns the qualified name.
    const astring& Name() const;
    /// Returns the part of the name behind its first ":", or the whole name.
    std::string_view LocalName() const;
    /// Returns the part of the name before its first ":"; empty without one.
    std::string_view Prefix() const;
    /// Returns the URI of the namespace, or empty.
    const astring& NamespaceURI() const;
    /// Returns the value.
    std::string_view Value() const;

private:
    friend class AttributeRange;
    AttributeView(const detail::AttributeTable* table, std::size_t index)
        : table_(table), index_(index) {}

    const detail::AttributeTable* table_;
    std::size_t index_;
};

/// The attributes of an element in the order in which they were set, to loop over without making
/// nodes of them. Valid until the element's attributes change.
class ESPALIER_EXPORT AttributeRange {
public:
    /// Visits the attributes.
    class Iterator {
    public:
        /// \cond
        using iterator_category = std::input_iterator_tag;
        using value_type = AttributeView;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = AttributeView;
        /// \endcond

        Iterator() = default;

        AttributeView operator*() const { return AttributeView(table_, index_); }
        Iterator& operator++() {
            ++index_;
            return *this;
        }
        Iterator operator++(int) {
            Iterator before = *this;
            ++*this;
            return before;
        }
        bool operator==(const Iterator& other) const { return index_ == other.index_; }

    private:
        friend class AttributeRange;
        Iterator(const detail::AttributeTable* table, std::size_t index)
            : table_(table), index_(index) {}

        const detail::AttributeTable* table_ = nullptr;
        std::size_t index_ = 0;
    };

    /// \name The range
    /// In the order of the document.
    /// @{
    Iterator begin() const { return Iterator(table_, 0); }
    Iterator end() const { return Iterator(table_, size()); }
    std::size_t size() const;
    bool empty() const { return size() == 0; }
    /// @}

private:
    friend class Element;
    explicit AttributeRange(const detail::AttributeTable* table) : table_(table) {}

    const detail::AttributeTable* table_;
};

}  // namespace Dom
