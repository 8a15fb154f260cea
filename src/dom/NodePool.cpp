// SPDX-License-Identifier: MIT
#include "dom/NodePool.h"

#include <algorithm>
#include <new>

namespace Dom::detail {

void* NodePool::AllocateFromNewChunk(std::size_t size) {
    chunks_.reserve(chunks_.size() + 1 > chunks_.capacity() ? 2 * chunks_.size() + 4
                                                            : chunks_.capacity());
    if (size > kLargestChunk / 4) {  // in a chunk of its own; the newest one stays in use
        return chunks_.emplace_back(new char[size]).get();
    }
    const std::size_t chunkSize = std::max(chunkSize_, size);
    char* const memory = chunks_.emplace_back(new char[chunkSize]).get();
    next_ = memory + size;
    end_ = memory + chunkSize;
    chunkSize_ = std::min(2 * chunkSize_, kLargestChunk);
    return memory;
}

void* NodePool::AllocateLarge(std::size_t size) {
    auto* const block = static_cast<LargeBlock*>(::operator new(sizeof(LargeBlock) + size));
    block->previous = nullptr;
    block->next = large_;
    if (large_ != nullptr) large_->previous = block;
    large_ = block;
    return block + 1;
}

void NodePool::FreeLarge(void* memory) noexcept {
    LargeBlock* const block = static_cast<LargeBlock*>(memory) - 1;
    (block->previous != nullptr ? block->previous->next : large_) = block->next;
    if (block->next != nullptr) block->next->previous = block->previous;
    ::operator delete(block);
}

void NodePool::Clear() noexcept {
    while (large_ != nullptr) FreeLarge(large_ + 1);
    chunks_.clear();
    free_.fill(nullptr);
    next_ = end_ = nullptr;
    chunkSize_ = kFirstChunk;
}

}  // namespace Dom::detail
