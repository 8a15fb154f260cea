// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#ifdef _WIN32
#    include <windows.h>
// It wants the one before.
#    include <psapi.h>
#else
#    include <sys/resource.h>
#endif

namespace support {

/// Returns the most memory that the process has had, in bytes.
inline std::size_t PeakMemory() {
#ifdef _WIN32
    PROCESS_MEMORY_COUNTERS counters = {};
    ::K32GetProcessMemoryInfo(::GetCurrentProcess(), &counters, sizeof(counters));
    return counters.PeakWorkingSetSize;
#else
    rusage usage = {};
    ::getrusage(RUSAGE_SELF, &usage);
    return static_cast<std::size_t>(usage.ru_maxrss) * 1024;
#endif
}

}  // namespace support
