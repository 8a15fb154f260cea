// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <latch>
#include <thread>
#include <vector>

namespace threads {

inline constexpr std::size_t kThreads = 8;

/// Calls `work` with 0 to kThreads - 1, each in a thread of its own, all of them at once.
template <typename Work>
void RunAtOnce(const Work& work) {
    std::latch start(kThreads);
    std::vector<std::thread> threads;
    for (std::size_t number = 0; number < kThreads; ++number) {
        threads.emplace_back([&start, &work, number] {
            start.arrive_and_wait();
            work(number);
        });
    }
    for (std::thread& thread : threads)
        thread.join();
}

}  // namespace threads
