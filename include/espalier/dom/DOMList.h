// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>  // std::copy, std::copy_backward, std::find
#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>  // std::move, std::swap

namespace Dom {

/// A list that owns what its pointers lead to.
///
/// Clear() and the destructor delete the items. Who removes an item owns it from then on. Indexes
/// are compared before they are narrowed, so one beyond 32 bits is never an item.
///
/// \tparam Pointer a pointer to a class with a virtual destructor
template <typename Pointer>
class DOMList {
    static_assert(std::is_pointer_v<Pointer>);

public:
    DOMList() = default;
    DOMList(const DOMList&) = delete;
    DOMList& operator=(const DOMList&) = delete;

    // The order of the virtual functions is part of the binary interface: append, never reorder.

    virtual ~DOMList() { Clear(); }

    /// Returns the number of items.
    unsigned Length() const { return count_; }
    /// Returns how many items there is room for: a multiple of 16.
    unsigned Capacity() const { return capacity_; }
    /// Returns item `index`, from 0 on, or null when there are not as many.
    Pointer Item(unsigned long index) const { return index < count_ ? items_[index] : nullptr; }

    /// Adds an item at the end and takes it over; when memory is out, the caller keeps it.
    void AddItem(Pointer item) { AddItemAt(count_, item); }
    /// Adds an item before item `index`, or at the end when there are not as many.
    void AddItemAt(unsigned long index, Pointer item) {
        const unsigned at = index < count_ ? static_cast<unsigned>(index) : count_;
        if (count_ == capacity_) Grow();
        Pointer* const items = items_.get();
        std::copy_backward(items + at, items + count_, items + count_ + 1);
        items[at] = item;
        ++count_;
    }

    /// Takes the first item equal to `item` out; nothing happens when there is none.
    void RemoveItem(Pointer item) {
        RemoveItemAt(static_cast<unsigned long>(std::find(begin(), end(), item) - begin()));
    }
    /// Takes item `index` out; nothing happens when there are not as many.
    void RemoveItemAt(unsigned long index) {
        if (index >= count_) return;
        Pointer* const items = items_.get();
        std::copy(items + index + 1, items + count_, items + index);
        --count_;
    }

    /// Takes out the items that a function tells, which is asked once for each, in their order.
    /// They belong to the caller then.
    template <typename Predicate>
    void RemoveItemsIf(Predicate isToGo) {
        unsigned kept = 0;
        for (unsigned i = 0; i < count_; ++i) {
            const Pointer item = items_[i];
            if (!isToGo(item)) items_[kept++] = item;
        }
        count_ = kept;
    }

    /// Exchanges the items of two lists.
    void SwapItems(DOMList& other) noexcept {
        std::swap(items_, other.items_);
        std::swap(count_, other.count_);
        std::swap(capacity_, other.capacity_);
        std::swap(size_, other.size_);
    }

    /// Deletes all items.
    void Clear() {
        while (count_ > 0)
            delete items_[--count_];
    }

    /// \name Iteration
    /// Over the items, in their order.
    /// @{
    const Pointer* begin() const { return items_.get(); }
    const Pointer* end() const { return items_.get() + count_; }
    /// @}

private:
    static constexpr unsigned kStep = 16;

    // The capacity grows by steps; the memory behind it by half, so that filling a list takes
    // linear time.
    void Grow() {
        const unsigned capacity = capacity_ + kStep;
        if (capacity > size_) {
            const std::size_t size = std::max<std::size_t>(capacity, size_ + size_ / 2);
            auto items = std::make_unique<Pointer[]>(size);
            std::copy(begin(), end(), items.get());
            items_ = std::move(items);
            size_ = size;
        }
        capacity_ = capacity;
    }

    std::unique_ptr<Pointer[]> items_;
    unsigned count_ = 0;
    unsigned capacity_ = 0;
    std::size_t size_ = 0;  // of the array; not less than the capacity
};

}  // namespace Dom
