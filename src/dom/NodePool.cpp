// SPDX-License-Identifier: MIT
#include "dom/NodePool.h"

#include "io/BackMemory.h"

#include <algorithm>
#include <new>

namespace Dom::detail {

char* NodePool::AddChunk(std::size_t size) {
    chunks_.emplace_back();
    try {
        chunks_.back().reset(new char[size]);
    } catch (...) {
        chunks_.pop_back();
        throw;
    }
    char* const chunk = chunks_.back().get();
    // Much of the time that a large tree takes would go into getting its memory page by page.
    if (size >= kUsualChunk) IO::detail::BackMemory(chunk, size);
    return chunk;
}

void* NodePool::AllocateFromNewChunk(Region& region, std::size_t size) {
    if (size > kUsualChunk / 4) return AddChunk(size);  // the newest chunk stays in use
    const std::size_t chunkSize =
        std::min(region.total < kUsualChunk ? std::max(kFirstChunk, std::max(region.total, size))
                                            : std::max(kUsualChunk, region.total / kShare),
                 kLargestChunk);
    char* const memory = AddChunk(chunkSize);
    region = {memory + size, memory + chunkSize, region.total + chunkSize};
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
    while (large_ != nullptr)
        FreeLarge(large_ + 1);
    chunks_.clear();
    free_.fill(nullptr);
    objects_ = characters_ = {};
}

}  // namespace Dom::detail
