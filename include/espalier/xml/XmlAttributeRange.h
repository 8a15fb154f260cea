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
    class Iterator {
    public:
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

    private:
        const XmlTextReader* reader_ = nullptr;
        int index_ = 0;
    };

    XmlAttributeRange(const XmlTextReader& reader, int count) : reader_(&reader), count_(count) {}

    Iterator begin() const { return {*reader_, 0}; }
    Iterator end() const { return {*reader_, count_}; }
    int size() const { return count_; }
    bool empty() const { return count_ == 0; }

private:
    const XmlTextReader* reader_;
    int count_;
};

}  // namespace Xml
