// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace Xml::detail {

/// The memory of the entries of one table.
///
/// Small blocks are cut from chunks, one behind the other, and freed blocks are used again for
/// blocks of the same size; chunks are freed all at once. Large blocks stand alone.
class HashArena {
public:
    HashArena() = default;
    HashArena(const HashArena&) = delete;
    HashArena& operator=(const HashArena&) = delete;
    ~HashArena() { FreeChunks(nullptr); }

    /// Returns a block of `size` bytes, aligned for a pointer, or null when there is no memory.
    void* Allocate(std::size_t size) noexcept;

    /// Takes a block of `size` bytes back.
    void Free(void* block, std::size_t size) noexcept;

    /// Takes all small blocks back; the newest chunk is kept for the next ones.
    /// \pre there are no large blocks
    void Reset() noexcept;

    /// Tells whether all blocks can be given up without freeing each one.
    bool HasOnlySmallBlocks() const { return largeBlocks_ == 0; }

private:
    struct Chunk {
        Chunk* older;
        std::size_t size;  // of the chunk with this header
    };
    struct FreeBlock {
        FreeBlock* next;
    };

    static constexpr std::size_t kGrain = alignof(void*);  // sizes are rounded up to this
    static constexpr std::size_t kLargestSmallBlock = 256;
    static constexpr std::size_t kSizeClasses = kLargestSmallBlock / kGrain + 1;

    bool AddChunk() noexcept;
    void StartAt(Chunk* chunk) noexcept;
    void FreeChunks(Chunk* kept) noexcept;

    Chunk* chunks_ = nullptr;                // the newest first; owned
    char* next_ = nullptr;                   // the first unused byte of the newest chunk
    char* end_ = nullptr;                    // the end of the newest chunk
    std::size_t largeBlocks_ = 0;            // blocks that stand alone
    FreeBlock* freeBlocks_[kSizeClasses]{};  // freed small blocks by size
};

}  // namespace Xml::detail
