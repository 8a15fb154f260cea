// SPDX-License-Identifier: MIT
#include "ceilings/CountedMemory.h"

#include <algorithm>
#include <cstdlib>
#include <new>

// Each block is preceded by its size, or by 0 when it was not counted.

namespace {

struct State {
    bool active = false;
    std::size_t live = 0;
    std::size_t peak = 0;
    std::size_t total = 0;
    std::size_t allocations = 0;
};

thread_local State state;

constexpr std::size_t kHeaderSize = alignof(std::max_align_t);

void* Allocate(std::size_t size) noexcept {
    void* const block = std::malloc(kHeaderSize + size);
    if (block == nullptr) return nullptr;
    *static_cast<std::size_t*>(block) = state.active ? size : 0;
    if (state.active) {
        state.live += size;
        state.peak = std::max(state.peak, state.live);
        state.total += size;
        ++state.allocations;
    }
    return static_cast<char*>(block) + kHeaderSize;
}

void* AllocateOrThrow(std::size_t size) {
    void* const block = Allocate(size);
    if (block == nullptr) throw std::bad_alloc();
    return block;
}

void Free(void* pointer) noexcept {
    if (pointer == nullptr) return;
    void* const block = static_cast<char*>(pointer) - kHeaderSize;
    state.live -= *static_cast<std::size_t*>(block);
    std::free(block);
}

}  // namespace

CountedMemory::CountedMemory() { state = {.active = true}; }
CountedMemory::~CountedMemory() { state.active = false; }
std::size_t CountedMemory::Peak() const { return state.peak; }
std::size_t CountedMemory::Live() const { return state.live; }
std::size_t CountedMemory::Total() const { return state.total; }
std::size_t CountedMemory::Allocations() const { return state.allocations; }

void* operator new(std::size_t size) { return AllocateOrThrow(size); }
void* operator new[](std::size_t size) { return AllocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void operator delete(void* block) noexcept { Free(block); }
void operator delete[](void* block) noexcept { Free(block); }
void operator delete(void* block, std::size_t) noexcept { Free(block); }
void operator delete[](void* block, std::size_t) noexcept { Free(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { Free(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { Free(block); }
