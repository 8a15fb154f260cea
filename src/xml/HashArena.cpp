// SPDX-License-Identifier: MIT
#include "xml/HashArena.h"

#include <algorithm>
#include <new>

// AddressSanitizer is told which bytes are in use, so that it sees into the chunks.
#if defined(__has_feature)
#    if __has_feature(address_sanitizer)
#        define ESPALIER_ADDRESS_SANITIZER 1
#    endif
#endif
#if defined(__SANITIZE_ADDRESS__)
#    define ESPALIER_ADDRESS_SANITIZER 1
#endif
#if defined(ESPALIER_ADDRESS_SANITIZER)
#    include <sanitizer/asan_interface.h>
#endif

namespace Xml::detail {
namespace {

constexpr std::size_t kFirstChunk = 1024;     // enough for a table of a few names
constexpr std::size_t kLargestChunk = 65536;  // more does not make fewer calls that matter

#if defined(ESPALIER_ADDRESS_SANITIZER)
void Forbid(void* bytes, std::size_t size) { __asan_poison_memory_region(bytes, size); }
void Permit(void* bytes, std::size_t size) { __asan_unpoison_memory_region(bytes, size); }
#else
void Forbid(void*, std::size_t) {}
void Permit(void*, std::size_t) {}
#endif

}  // namespace

void* HashArena::Allocate(std::size_t size) noexcept {
    if (size > kLargestSmallBlock) {
        void* const block = ::operator new(size, std::nothrow);
        if (block != nullptr) ++largeBlocks_;
        return block;
    }
    const std::size_t sizeClass = (size + kGrain - 1) / kGrain;
    if (FreeBlock* const block = freeBlocks_[sizeClass]; block != nullptr) {
        Permit(block, std::max(size, sizeof *block));
        freeBlocks_[sizeClass] = block->next;
        return block;
    }
    const std::size_t room = sizeClass * kGrain;
    if (static_cast<std::size_t>(end_ - next_) < room && !AddChunk()) return nullptr;
    char* const block = next_;
    next_ += room;
    Permit(block, size);
    return block;
}

void HashArena::Free(void* block, std::size_t size) noexcept {
    if (size > kLargestSmallBlock) {
        --largeBlocks_;
        ::operator delete(block);
        return;
    }
    const std::size_t sizeClass = (size + kGrain - 1) / kGrain;
    freeBlocks_[sizeClass] = new (block) FreeBlock{freeBlocks_[sizeClass]};
    Forbid(block, sizeClass * kGrain);
}

void HashArena::Reset() noexcept {
    if (chunks_ == nullptr) return;
    FreeChunks(chunks_);
    StartAt(chunks_);
    std::fill_n(freeBlocks_, kSizeClasses, nullptr);
}

bool HashArena::AddChunk() noexcept {
    const std::size_t size =
        chunks_ == nullptr ? kFirstChunk : std::min(chunks_->size * 2, kLargestChunk);
    void* const memory = ::operator new(size, std::nothrow);
    if (memory == nullptr) return false;
    chunks_ = new (memory) Chunk{chunks_, size};
    StartAt(chunks_);
    return true;
}

void HashArena::StartAt(Chunk* chunk) noexcept {
    next_ = reinterpret_cast<char*>(chunk + 1);
    end_ = reinterpret_cast<char*>(chunk) + chunk->size;
    Forbid(next_, static_cast<std::size_t>(end_ - next_));
}

// Frees all chunks but the one to keep.
void HashArena::FreeChunks(Chunk* kept) noexcept {
    for (Chunk* chunk = chunks_; chunk != nullptr;) {
        Chunk* const older = chunk->older;
        if (chunk != kept) {
            Permit(chunk, chunk->size);
            ::operator delete(chunk);
        }
        chunk = older;
    }
    chunks_ = kept;
    if (kept != nullptr) kept->older = nullptr;
}

}  // namespace Xml::detail
