// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

/// Counts what operator new gives while the object lives.
///
/// It works in a test program that links CountedMemory.cpp, and concerns the thread that made the
/// object. One object exists at a time. What C libraries take from malloc() does not count.
class CountedMemory {
public:
    CountedMemory();
    ~CountedMemory();
    CountedMemory(const CountedMemory&) = delete;
    CountedMemory& operator=(const CountedMemory&) = delete;

    /// Returns the most bytes that were in use at a time.
    std::size_t Peak() const;

    /// Returns the bytes of what is not freed yet.
    std::size_t Live() const;

    /// Returns the bytes of all allocations together.
    std::size_t Total() const;

    /// Returns how many allocations there were.
    std::size_t Allocations() const;
};
