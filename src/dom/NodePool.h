// SPDX-License-Identifier: MIT
#pragma once

#include "dom/Poison.h"

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

namespace Dom::detail {

/// The memory of a document's nodes: taken from large chunks, given back for reuse by size, and
/// freed as a whole. Everything is aligned to 8 bytes.
class NodePool {
public:
    NodePool() = default;
    ~NodePool() { Clear(); }
    NodePool(const NodePool&) = delete;
    NodePool& operator=(const NodePool&) = delete;

    /// Returns `size` bytes, which Free() takes back.
    void* Allocate(std::size_t size) {
        if (size > kMostSmall) return AllocateLarge(size);
        const std::size_t sizeClass = ClassOf(size);
        if (FreeBlock* const block = free_[sizeClass]) {
            Unpoison(block, sizeClass * kUnit);
            free_[sizeClass] = block->next;
            return block;
        }
        return AllocateForGood(sizeClass * kUnit);
    }

    void Free(void* memory, std::size_t size) noexcept {
        if (size > kMostSmall) return FreeLarge(memory);
        const std::size_t sizeClass = ClassOf(size);
        free_[sizeClass] = new (memory) FreeBlock{free_[sizeClass]};
        Poison(memory, sizeClass * kUnit);
    }

    /// Returns `size` bytes that are only freed with all others.
    void* AllocateForGood(std::size_t size) {
        size = ClassOf(size) * kUnit;
        if (size > FreeBytes()) return AllocateFromNewChunk(size);
        void* const memory = next_;
        next_ += size;
        Unpoison(memory, size);
        return memory;
    }

    /// As AllocateForGood(), for characters, which stand apart so that nodes stand close together.
    char* AllocateCharacters(std::size_t size) {
        size = ClassOf(size) * kUnit;
        if (size > FreeBytes()) return AllocateCharactersFromNewChunk(size);
        end_ -= size;
        Unpoison(end_, size);
        return end_;
    }

    /// Frees everything.
    void Clear() noexcept;

private:
    static constexpr std::size_t kUnit = 8;
    static constexpr std::size_t kMostSmall = 512;
    static constexpr std::size_t kFirstChunk = 2048;
    static constexpr std::size_t kUsualChunk = 64 * 1024 - 64;   // with what the heap puts in front
    static constexpr std::size_t kMostShared = kUsualChunk / 4;  // larger ones get their own chunk
    static constexpr std::size_t kLargestChunk = std::size_t{32} * 1024 * 1024;
    static constexpr std::size_t kShare = 16;  // of all memory, that a chunk of a large pool takes

    struct FreeBlock {
        FreeBlock* next;
    };

    /// What stands before a block with memory of its own.
    struct LargeBlock {
        LargeBlock* previous;
        LargeBlock* next;
    };

    static std::size_t ClassOf(std::size_t size) { return (size + kUnit - 1) / kUnit; }

    std::size_t FreeBytes() const { return static_cast<std::size_t>(end_ - next_); }
    void* AllocateFromNewChunk(std::size_t size);
    char* AllocateCharactersFromNewChunk(std::size_t size);
    void StartChunk(std::size_t size);
    char* AddChunk(std::size_t size);
    std::size_t NextChunkSize() const;
    void* AllocateLarge(std::size_t size);
    void FreeLarge(void* memory) noexcept;

    // The free memory of the newest chunk: objects are taken from its begin, characters from its
    // end.
    char* next_ = nullptr;
    char* end_ = nullptr;
    std::size_t total_ = 0;  // of all chunks
    std::vector<std::unique_ptr<char[]>> chunks_;
    LargeBlock* large_ = nullptr;
    std::array<FreeBlock*, kMostSmall / kUnit + 1> free_{};
};

}  // namespace Dom::detail
