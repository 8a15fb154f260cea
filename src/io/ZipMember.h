// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/Stream.h>

#include <minizip/unzip.h>

#include <memory>
#include <string_view>

namespace IO::detail {

/// The bytes of an archive, for minizip.
struct ZipSource {
    std::unique_ptr<Stream> stream;
    bool hasFailed = false;  ///< the stream has thrown
    bool padsEnd = false;    ///< a read that reaches beyond the end is filled up with zeros
};

/// A member of a zip archive, open for reading. The archive is any stream that can seek.
class ZipMember {
public:
    /// Takes `archive` to read from.
    explicit ZipMember(std::unique_ptr<Stream> archive);
    ZipMember(const ZipMember&) = delete;
    ZipMember& operator=(const ZipMember&) = delete;
    ~ZipMember();

    /// Reads the archive's directory; false when it is no zip archive. First of all calls.
    bool OpenArchive();

    /// Opens the member of that name; false when there is none that can be read.
    bool OpenMember(const char* name);

    long Length() const { return length_; }
    long Position() const { return position_; }

    /// Reads up to `count` bytes, at least 1.
    /// \return their number, 0 at the end, or a negative error number
    /// \throws Xml::Exception "Read error" when the end shows that the data are not what they were
    int Read(unsigned char* buffer, int count);

    /// Goes back to the start; false when that fails.
    bool Reopen();

private:
    bool OpenCurrent();
    bool HasTheSameNameInFront(std::string_view name);
    bool EndsWell();
    [[noreturn]] void FailAtEnd();

    ZipSource source_;
    unzFile zip_ = nullptr;
    uLong checksum_ = 0;        // of the bytes read so far, when minizip does not check them
    uLong statedChecksum_ = 0;  // as the directory states it
    bool checksHere_ = false;   // minizip does not know the length, nor so where to check
    bool isOpen_ = false;       // minizip has the member open
    bool isDamaged_ = false;    // the end has shown that the data are not what they were
    int error_ = 0;             // the first negative result of reading; 0 when there was none
    bool isTooLong_ = false;    // for a `long`: the end is never reached
    long length_ = 0;           // as the directory states it, or all that a `long` can hold
    long position_ = 0;
};

}  // namespace IO::detail
