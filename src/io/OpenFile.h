// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/FileMode.h>

#include <cstdio>
#include <memory>

namespace IO::detail {

/// What a file position is counted from.
enum class Whence { Begin, Current, End };

/// A file that is open, or was; a FileStream shares it with its copies. Errors are results, so
/// that the callers choose the message. Close() first, then nothing but IsOpen() may be called.
class OpenFile {
public:
    explicit OpenFile(bool owns) : owns_(owns) {}
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    virtual ~OpenFile() = default;

    bool Owns() const { return owns_; }
    virtual bool IsOpen() const = 0;

    /// Returns the length in bytes, or -1 where there is none.
    virtual long Length() = 0;
    /// Returns the position in bytes, or -1 where there is none.
    virtual long Position() = 0;
    /// Returns the new position, or -1 when the position cannot be set.
    virtual long Seek(long offset, Whence whence) = 0;
    /// Returns the number of bytes read, 0 at the end, or -1 on an error.
    virtual int Read(unsigned char* buffer, int count) = 0;
    /// Writes all `count` bytes; returns false when that fails.
    virtual bool Write(const unsigned char* buffer, int count) = 0;
    virtual bool SetLength(long length) = 0;
    virtual bool Flush() = 0;
    /// Closes the file, whatever happens; returns false when written bytes may be lost.
    virtual bool Close() = 0;

protected:
    bool dirty_ = false;  // written to since the last Flush()

private:
    bool owns_;  // the file is closed with the last stream that has it
};

/// The outcome of opening by name: a file, or else the number of the error.
struct OpenResult {
    std::shared_ptr<OpenFile> file;
    int error;
};

/// Opens a file with access 1 to 3 and share 0 to 3. Conflicting locks give EACCES, directories
/// EISDIR.
OpenResult OpenByName(const char* name, FileMode mode, unsigned access, unsigned share);

/// Wraps a descriptor of the caller's.
std::shared_ptr<OpenFile> WrapDescriptor(int descriptor, bool owns);

/// Wraps a standard handle of the caller's.
std::shared_ptr<OpenFile> WrapHandle(std::FILE* handle, bool owns);

}  // namespace IO::detail
