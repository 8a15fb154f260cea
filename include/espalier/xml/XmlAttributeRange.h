// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/xml/XmlAttributeRef.h>

#include <cstddef>
#include <iterator>

namespace Xml {

/// The attributes of the node that a reader stands on, in document order: a range to loop over.
/// See XmlTextReader::Attributes().
class XmlAttributeRange {
public:
    /// An iterator of the category std::input_iterator_tag; it makes the references as it goes.
    class Iterator {
    public:
        /// \cond
        using iterator_category = std::input_iterator_tag;
        using value_type = XmlAttributeRef;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = XmlAttributeRef;

        Iterator() = default;
        Iterator(const XmlTextReader& reader, int index) : reader_(&reader), index_(index) {}

        XmlAttributeRef operator*() const { return {*reader_, index_}; }
        Iterator& operator++() {
            ++index_;
            return *this;
        }
        Iterator operator++(int) {
            const Iterator before = *this;
            ++index_;
            return before;
        }
        bool operator==(const Iterator& other) const { return index_ == other.index_; }

        /// \endcond

    private:
        const XmlTextReader* reader_ = nullptr;
        int index_ = 0;
    };

    /// Makes the range of the first `count` attributes.
    XmlAttributeRange(const XmlTextReader& reader, int count) : reader_(&reader), count_(count) {}

    /// Returns an iterator at the first attribute.
    Iterator begin() const { return {*reader_, 0}; }
    /// Returns the iterator behind the last attribute.
    Iterator end() const { return {*reader_, count_}; }
    /// Returns the number of attributes.
    int size() const { return count_; }
    /// Tells whether there are none.
    bool empty() const { return count_ == 0; }

private:
    const XmlTextReader* reader_;
    int count_;
};

}  // namespace Xml
