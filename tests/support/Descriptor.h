// SPDX-License-Identifier: MIT
#pragma once

#include <fcntl.h>
#ifdef _WIN32
#    include <io.h>
#endif
#include <unistd.h>

namespace support {

/// What a descriptor is opened with besides: other programs do not inherit it, and its bytes are
/// those of the file.
#ifdef _WIN32
inline constexpr int kDescriptorFlags = O_NOINHERIT | O_BINARY;
#else
inline constexpr int kDescriptorFlags = O_CLOEXEC;
#endif

/// Makes a pipe, from ends[1] to ends[0]; false when the system does not.
inline bool MakePipe(int (&ends)[2]) {
#ifdef _WIN32
    return ::_pipe(ends, 64 * 1024, kDescriptorFlags) == 0;
#else
    return ::pipe2(ends, kDescriptorFlags) == 0;
#endif
}

/// Tells whether a descriptor of a file is open.
inline bool IsOpen(int descriptor) { return ::lseek(descriptor, 0, SEEK_CUR) != -1; }

}  // namespace support
