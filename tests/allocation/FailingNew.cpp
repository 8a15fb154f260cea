// SPDX-License-Identifier: MIT
#include "FailingNew.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<long> liveBlocks{0};
std::atomic<long> untilFailure{0};  // counts down to the allocation that fails; 0 when none does
std::atomic<bool> hasFailed{false};

void* Allocate(std::size_t size, std::size_t alignment) {
    if (untilFailure > 0 && --untilFailure == 0) {
        hasFailed = true;
        throw std::bad_alloc();
    }
    void* block =
        alignment <= alignof(std::max_align_t)
            ? std::malloc(size > 0 ? size : 1)
            : std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment);
    if (block == nullptr) throw std::bad_alloc();
    ++liveBlocks;
    return block;
}

void Release(void* block) noexcept {
    if (block == nullptr) return;
    --liveBlocks;
    std::free(block);
}

}  // namespace

namespace allocation {

long LiveBlocks() { return liveBlocks; }

FailAt::FailAt(long n) {
    hasFailed = false;
    untilFailure = n;
}

FailAt::~FailAt() { untilFailure = 0; }

bool FailAt::HasFailed() const { return hasFailed; }

}  // namespace allocation

void* operator new(std::size_t size) { return Allocate(size, alignof(std::max_align_t)); }
void* operator new[](std::size_t size) { return Allocate(size, alignof(std::max_align_t)); }
void* operator new(std::size_t size, std::align_val_t alignment) {
    return Allocate(size, static_cast<std::size_t>(alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
    return Allocate(size, static_cast<std::size_t>(alignment));
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return Allocate(size, alignof(std::max_align_t));
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}
void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept {
    return operator new(size, tag);
}
void operator delete(void* block) noexcept { Release(block); }
void operator delete[](void* block) noexcept { Release(block); }
void operator delete(void* block, std::size_t) noexcept { Release(block); }
void operator delete[](void* block, std::size_t) noexcept { Release(block); }
void operator delete(void* block, std::align_val_t) noexcept { Release(block); }
void operator delete[](void* block, std::align_val_t) noexcept { Release(block); }
void operator delete(void* block, std::size_t, std::align_val_t) noexcept { Release(block); }
void operator delete[](void* block, std::size_t, std::align_val_t) noexcept { Release(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { Release(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { Release(block); }
