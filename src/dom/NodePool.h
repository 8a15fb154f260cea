// SPDX-License-Identifier: MIT
#pragma once

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
            free_[sizeClass] = block->next;
            return block;
        }
        return AllocateForGood(sizeClass * kUnit);
    }

    void Free(void* memory, std::size_t size) noexcept {
        if (size > kMostSmall) return FreeLarge(memory);
        const std::size_t sizeClass = ClassOf(size);
        free_[sizeClass] = new (memory) FreeBlock{free_[sizeClass]};
    }

    /// Returns `size` bytes that are only freed with all others.
    void* AllocateForGood(std::size_t size) { return objects_.Take(*this, size); }

    /// As AllocateForGood(), for characters, which stand apart so that nodes stand close together.
    char* AllocateCharacters(std::size_t size) {
        return static_cast<char*>(characters_.Take(*this, size));
    }

    /// Frees everything.
    void Clear() noexcept;

private:
    static constexpr std::size_t kUnit = 8;
    static constexpr std::size_t kMostSmall = 512;
    static constexpr std::size_t kFirstChunk = 2048;
    static constexpr std::size_t kUsualChunk = 64 * 1024 - 64;
    static constexpr std::size_t kLargestChunk = 64 * 1024 * 1024;
    static constexpr std::size_t kShare = 16;  // of all memory, that a chunk of a large pool takes

    struct FreeBlock {
        FreeBlock* next;
    };

    /// The free memory of the newest chunk for one purpose.
    struct Region {
        char* next = nullptr;
        char* end = nullptr;
        std::size_t total = 0;  // of all its chunks

        void* Take(NodePool& pool, std::size_t size) {
            size = ClassOf(size) * kUnit;
            if (size > static_cast<std::size_t>(end - next)) {
                return pool.AllocateFromNewChunk(*this, size);
            }
            void* const memory = next;
            next += size;
            return memory;
        }
    };

    /// What stands before a block with memory of its own.
    struct LargeBlock {
        LargeBlock* previous;
        LargeBlock* next;
    };

    static std::size_t ClassOf(std::size_t size) { return (size + kUnit - 1) / kUnit; }

    void* AllocateFromNewChunk(Region& region, std::size_t size);
    char* AddChunk(std::size_t size);
    void* AllocateLarge(std::size_t size);
    void FreeLarge(void* memory) noexcept;

    Region objects_;
    Region characters_;
    std::vector<std::unique_ptr<char[]>> chunks_;
    LargeBlock* large_ = nullptr;
    std::array<FreeBlock*, kMostSmall / kUnit + 1> free_{};
};

}  // namespace Dom::detail
