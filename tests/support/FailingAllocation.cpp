// SPDX-License-Identifier: MIT
#include "support/FailingAllocation.h"

#include <cstddef>
#include <cstdlib>
#include <new>

// Each block is preceded by a word that says whether it was counted.

namespace {

struct State {
    bool active = false;
    long untilFailure = 0;  // the failing one among the next allocations; 0 or less: none
    bool hasFailed = false;
    long liveCount = 0;
};

thread_local State state;

constexpr std::size_t kHeaderSize = alignof(std::max_align_t);

void* Allocate(std::size_t size) noexcept {
    if (state.active && --state.untilFailure == 0) {
        state.hasFailed = true;
        return nullptr;
    }
    void* const block = std::malloc(kHeaderSize + size);
    if (block == nullptr) return nullptr;
    *static_cast<bool*>(block) = state.active;
    if (state.active) ++state.liveCount;
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
    if (*static_cast<bool*>(block)) --state.liveCount;
    std::free(block);
}

}  // namespace

FailingAllocation::FailingAllocation(long number) { state = {true, number, false, 0}; }
FailingAllocation::~FailingAllocation() { state.active = false; }
bool FailingAllocation::HasFailed() const { return state.hasFailed; }
long FailingAllocation::LiveCount() const { return state.liveCount; }

FailingAllocation::ExemptScope::ExemptScope() : before(state.active) { state.active = false; }
FailingAllocation::ExemptScope::~ExemptScope() { state.active = before; }

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
