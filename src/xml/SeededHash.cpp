// SPDX-License-Identifier: MIT
#include "xml/SeededHash.h"

#include <chrono>
#include <exception>
#include <random>

namespace Xml::detail {

std::atomic<std::uint64_t> processSeed{0};

std::uint64_t MakeProcessSeed() {
    std::uint64_t seed = 0;
    try {
        std::random_device device;
        seed = (std::uint64_t{device()} << 32) ^ device();
    } catch (const std::exception&) {  // no source of randomness: time and address space layout
        const auto ticks = std::chrono::steady_clock::now().time_since_epoch().count();
        seed = static_cast<std::uint64_t>(ticks) ^ reinterpret_cast<std::uintptr_t>(&seed);
    }
    if (seed == 0) seed = kHashMultipliers[0];  // 0 means that there is none yet
    std::uint64_t expected = 0;
    return processSeed.compare_exchange_strong(expected, seed) ? seed : expected;
}

}  // namespace Xml::detail
