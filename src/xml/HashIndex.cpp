// SPDX-License-Identifier: MIT
#include "xml/HashIndex.h"

#include <bit>
#include <limits>
#include <new>

namespace Xml::detail {

bool HashIndex::Create(std::size_t count) noexcept {
    Drop();
    return Allocate(static_cast<unsigned>(std::bit_width(count)) + 1);
}

void HashIndex::Drop() noexcept {
    ::operator delete(slots_);
    slots_ = nullptr;
    count_ = 0;
}

void HashIndex::Clear() noexcept {
    constexpr std::size_t kLargestKept = 1024;  // clearing more costs more than allocating later
    if (mask_ < kLargestKept && slots_ != nullptr) {
        std::memset(static_cast<void*>(slots_), 0, (mask_ + 1) * sizeof(Slot));
        count_ = 0;
    } else {
        Drop();
    }
}

void HashIndex::Insert(std::uint32_t hash, XmlHashItem* item) noexcept {
    InsertAt(&slots_[FirstFreeFrom(PlaceOf(hash))], hash, item);
}

void HashIndex::InsertAt(Slot* slot, std::uint32_t hash, XmlHashItem* item) noexcept {
    *slot = {item, hash};
    ++count_;
    if (count_ > (mask_ + 1) / 4 * 3) Grow();
}

void HashIndex::Remove(std::uint32_t hash, const XmlHashItem* item) noexcept {
    std::size_t hole = PlaceOf(hash);
    while (slots_[hole].item != item) {
        hole = (hole + 1) & mask_;
    }
    // Entries behind the hole that could not stand at their place move up, so that a free slot
    // always means the end of a search.
    for (std::size_t place = (hole + 1) & mask_; slots_[place].item != nullptr;
         place = (place + 1) & mask_) {
        const std::size_t distance = (place - PlaceOf(slots_[place].hash)) & mask_;
        if (distance >= ((place - hole) & mask_)) {
            slots_[hole] = slots_[place];
            hole = place;
        }
    }
    slots_[hole].item = nullptr;
    --count_;
}

const HashIndex::Slot* HashIndex::FindItem(std::uint32_t hash,
                                           const XmlHashItem* item) const noexcept {
    for (std::size_t place = PlaceOf(hash); slots_[place].item != nullptr;
         place = (place + 1) & mask_) {
        if (slots_[place].item == item) return &slots_[place];
    }
    return nullptr;
}

std::size_t HashIndex::FirstFreeFrom(std::size_t place) const noexcept {
    while (slots_[place].item != nullptr) {
        place = (place + 1) & mask_;
    }
    return place;
}

// Replaces the slots by 2 to the power of `bits` free ones. Returns false, with nothing changed,
// when there is no memory.
bool HashIndex::Allocate(unsigned bits) noexcept {
    using Limits = std::numeric_limits<std::size_t>;
    if (bits >= static_cast<unsigned>(Limits::digits)) return false;
    const std::size_t size = std::size_t{1} << bits;
    if (size > Limits::max() / sizeof(Slot)) return false;
    void* const memory = ::operator new(size * sizeof(Slot), std::nothrow);
    if (memory == nullptr) return false;
    slots_ = static_cast<Slot*>(memory);
    std::memset(memory, 0, size * sizeof(Slot));
    mask_ = size - 1;
    shift_ = 64 - bits;
    return true;
}

void HashIndex::Grow() noexcept {
    Slot* const oldSlots = slots_;
    const std::size_t oldSize = mask_ + 1;
    if (Allocate(65 - shift_)) {
        for (std::size_t place = 0; place < oldSize; ++place) {
            const Slot& slot = oldSlots[place];
            if (slot.item != nullptr) slots_[FirstFreeFrom(PlaceOf(slot.hash))] = slot;
        }
        ::operator delete(oldSlots);
    } else {
        Drop();
    }
}

}  // namespace Xml::detail
