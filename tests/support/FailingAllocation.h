// SPDX-License-Identifier: MIT
#pragma once

/// Lets one allocation by operator new fail, and counts those that are not freed yet.
///
/// It works in a test program that links FailingAllocation.cpp, and concerns the thread that made
/// the object. One object exists at a time.
class FailingAllocation {
public:
    /// Lets the `number`th allocation from now on fail, counted from 1.
    explicit FailingAllocation(long number);
    ~FailingAllocation();
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;

    /// Tells whether the allocation has failed.
    bool HasFailed() const;

    /// Returns how many of the allocations made so far are not freed.
    long LiveCount() const;

    /// Runs `work` with allocations that neither fail nor count: what the test itself needs.
    template <typename Work>
    static auto Exempt(Work work) {
        const ExemptScope scope;
        return work();
    }

    /// Calls `work` with every allocation in turn failing, and at last with none.
    /// \return how many allocations failed
    template <typename Work>
    static long ForEachFailure(Work work) {
        for (long number = 1;; ++number) {
            FailingAllocation failure(number);
            work(failure);
            if (!failure.HasFailed()) return number - 1;
        }
    }

private:
    struct ExemptScope {
        ExemptScope();
        ~ExemptScope();
        ExemptScope(const ExemptScope&) = delete;
        ExemptScope& operator=(const ExemptScope&) = delete;

        bool before;
    };
};
