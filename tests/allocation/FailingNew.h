// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

/// \file
/// This program's own operator new, which counts and can be told to fail.
namespace allocation {

/// Returns how many blocks are allocated now.
long LiveBlocks();

/// Lets the n-th allocation from now on throw std::bad_alloc, while the object lives. The ones
/// after it succeed, as they do where memory is short for a moment.
class FailAt {
public:
    /// \param n from 1 on; 0 for none
    explicit FailAt(long n);
    FailAt(const FailAt&) = delete;
    FailAt& operator=(const FailAt&) = delete;
    ~FailAt();

    /// Returns whether the allocation that fails has been asked for.
    bool HasFailed() const;
};

}  // namespace allocation
