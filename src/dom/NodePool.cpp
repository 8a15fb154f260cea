// SPDX-License-Identifier: MIT
#include "dom/NodePool.h"

#include "io/BackMemory.h"

#include <algorithm>
#include <new>
#include <utility>

namespace Dom::detail {

char* NodePool::AddChunk(std::size_t size) {
    chunks_.emplace_back();
    try {
        chunks_.back().reset(new char[size]);
    } catch (...) {
        chunks_.pop_back();
        throw;
    }
    total_ += size;
    char* const chunk = chunks_.back().get();
    // Much of the time that a large tree takes would go into getting its memory page by page.
    if (size >= kUsualChunk) IO::detail::BackMemory(chunk, size);
    return chunk;
}

// Chunks grow with the pool, so that there are few of them and yet little is left over.
std::size_t NodePool::NextChunkSize() const {
    if (total_ < kUsualChunk) return std::max(kFirstChunk, total_);
    return std::clamp(total_ / kShare, kUsualChunk, kLargestChunk);
}

void NodePool::StartChunk(std::size_t size) {
    const std::size_t chunkSize = std::max(NextChunkSize(), size);
    next_ = AddChunk(chunkSize);
    end_ = next_ + chunkSize;
    Poison(next_, chunkSize);
}

void* NodePool::AllocateFromNewChunk(std::size_t size) {
    if (size > kMostShared) return AddChunk(size);  // the newest chunk stays in use
    StartChunk(size);
    return AllocateForGood(size);
}

char* NodePool::AllocateCharactersFromNewChunk(std::size_t size) {
    if (size > kMostShared) return AddChunk(size);
    StartChunk(size);
    return AllocateCharacters(size);
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
    for (LargeBlock* block = std::exchange(large_, nullptr); block != nullptr;)
        ::operator delete(std::exchange(block, block->next));
    chunks_.clear();
    free_.fill(nullptr);
    next_ = end_ = nullptr;
    total_ = 0;
}

}  // namespace Dom::detail
