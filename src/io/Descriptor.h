// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/FileMode.h>

#include "io/OpenFile.h"

/// \file
/// What files want of the operating system: the one part of the library that is written for each
/// system anew. Failures leave their number in `errno`.

namespace IO::detail {

/// The outcome of opening by name: a descriptor, or -1 and the number of the error.
struct OpenedDescriptor {
    int descriptor;
    int error;
    bool isRegular;  ///< neither a pipe nor a terminal, so nobody else moves the position
};

/// Opens a file with access 1 to 3 and share 0 to 3, and takes the lock of a regular one. Does not
/// empty it, but then asks for the right to do so.
OpenedDescriptor OpenDescriptor(const char* name, FileMode mode, unsigned access, unsigned share);

/// Tells whether this mode empties a file that is there.
constexpr bool Empties(FileMode mode) {
    return mode == FileMode::Create || mode == FileMode::Truncate;
}

/// Returns the number of bytes read, 0 at the end, or -1 on an error.
int ReadDescriptor(int descriptor, unsigned char* buffer, int count);

/// Returns how many of the bytes were written, or -1 on an error.
int WriteDescriptor(int descriptor, const unsigned char* buffer, int count);

/// Returns the new position, or -1 when it cannot be set or told; then it is what it was.
long SeekDescriptor(int descriptor, long offset, Whence whence);

/// Cuts or extends the file, with zero bytes; false when that fails.
bool ResizeDescriptor(int descriptor, long length);

/// Commits what was written to disk; false when that fails. Nothing to commit is no failure.
bool CommitDescriptor(int descriptor);

/// Closes the descriptor, whatever happens; false when the system says that it failed.
bool CloseDescriptor(int descriptor);

}  // namespace IO::detail
