// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/io/FileMode.h>
#include <espalier/io/Stream.h>

#include <cstdio>
#include <memory>

namespace IO {

namespace detail {
class OpenFile;
}

/// A stream over a file of the operating system: opened by name, or over a descriptor or a
/// `FILE*` of the caller's.
///
/// The access says what the stream may do:
///
/// | access | meaning        |
/// |--------|----------------|
/// | 1      | read           |
/// | 2      | write          |
/// | 3      | read and write |
///
/// The share says what others may do with the file meanwhile:
///
/// | share | meaning                           | lock                                         |
/// |-------|-----------------------------------|----------------------------------------------|
/// | 0     | neither read nor write            | exclusive                                    |
/// | 1     | read                              | shared for a reader, exclusive for a writer  |
/// | 2     | write                             | exclusive                                    |
/// | 3     | anything                          | none                                         |
///
/// The locks are advisory (`flock`) and hold against other streams that lock, in this and in other
/// processes, until the file is closed. They are tried once, without waiting; only regular files
/// are locked, and a file system without locks counts as one where nobody else has the file.
///
/// On Windows the system locks, against everybody: a share of 3 does not open what another stream
/// keeps to itself. Names are UTF-8 there, and a position beyond 2 GiB, which `long` cannot tell,
/// is -1 or cannot be set.
///
/// Copies of a stream share one open file: they have one position, and Close() on one of them
/// closes the file for all when the stream owns it. The last of them closes it at the latest.
///
/// A regular file opened by name for reading alone is read ahead in pieces of 64 KiB; positions
/// are logical all the same. Descriptors and handles of the caller's are never read ahead, since
/// their position is shared with the caller.
///
/// A negative offset of Read() and Write() is not folded into the count: the bytes begin at
/// `buffer + offset`, wherever that is.
///
/// CanSeek() is always true. Where the system cannot seek (a pipe, a terminal), Length(),
/// Position() and Seek() return -1.
///
/// Failures are thrown as Xml::Exception with an empty argument and line and position -1.
///
/// \code
///     IO::FileStream file("book.xml", IO::FileMode::Open, 1, 1);
///     unsigned char bytes[1024];
///     int count = file.Read(bytes, 0, sizeof(bytes));
/// \endcode
///
/// \note One thread at a time may use a stream together with its copies.
class ESPALIER_EXPORT FileStream : public Stream {
public:
    /// Makes a stream with nothing open.
    FileStream();

    /// \name Open a file by name
    /// A file that is created may be read and written by its owner alone. A file is emptied
    /// (FileMode::Create, FileMode::Truncate) only after its lock is held, and that takes the right
    /// to write to it, also where the access is 1.
    /// \throws Xml::Exception "Invalid argument" when access or share is none of the above
    /// \throws Xml::Exception "Access denied/sharing violation" also for a directory
    /// \throws Xml::Exception "File already exists" with FileMode::CreateNew
    /// \throws Xml::Exception "File not found"
    /// \throws Xml::Exception "Too many files open"
    /// \throws Xml::Exception "Invalid parameter(s)"
    /// \throws Xml::Exception "File open error" for any other reason
    /// @{
    FileStream(const char* name, FileMode mode, unsigned access, unsigned share);
    FileStream(const astring& name, FileMode mode, unsigned access, unsigned share);
    /// @}

    /// Makes a stream over a descriptor of the caller's, which Close() and the destructor close
    /// when `owns` is true. A negative one is none.
    /// \throws Xml::Exception "Invalid argument" when access is none of the above; the descriptor
    ///     then stays the caller's
    FileStream(int descriptor, unsigned access, bool owns);

    /// Makes a stream over a standard handle of the caller's, which Close() and the destructor
    /// close when `owns` is true. A null pointer is none.
    /// \throws Xml::Exception "Invalid argument" when access is none of the above; the handle then
    ///     stays the caller's
    FileStream(std::FILE* handle, unsigned access, bool owns);

    /// Makes another stream over the same open file.
    FileStream(const FileStream& other);

    /// Closes what this stream has, unless it is the same open file, and shares that of `other`.
    /// \throws Xml::Exception what Close() throws; then nothing was copied
    FileStream& operator=(const FileStream& other);

    /// Closes the file when it is owned and no copy has it open. Throws nothing.
    ~FileStream() override;

    /// Returns the name that the file was opened by, or an empty string.
    const astring& Name() const;

    bool CanRead() const override;
    /// Returns true, always.
    bool CanSeek() const override;
    bool CanWrite() const override;

    /// \throws Xml::Exception "File not open!"
    long Length() const override;

    /// \throws Xml::Exception "File not open!"
    long Position() const override;

    /// Closes what is owned and forgets it; what was written is committed to disk first. Does
    /// nothing when nothing is open.
    /// \throws Xml::Exception "File write error" when what was written may be lost; the file is
    ///     closed nevertheless
    void Close() override;

    /// Commits what was written to disk, or flushes the handle.
    /// \throws Xml::Exception "File not open!"
    /// \throws Xml::Exception "File write error"
    void Flush() override;

    /// \throws Xml::Exception "File not open!"
    /// \throws Xml::Exception "File read error"
    int Read(unsigned char* buffer, int offset, int count) override;

    /// Moves the position, also past the end; an origin without a name counts as the start.
    /// \return the new position, or -1 when it cannot be set
    /// \throws Xml::Exception "File not open!"
    long Seek(long offset, SeekOrigin origin) override;

    /// Cuts or extends the file, with zero bytes, and leaves the position. Does nothing over a
    /// standard handle and when nothing is open.
    /// \throws Xml::Exception "Invalid argument" when `length` is negative
    /// \throws Xml::Exception "Seek not supported" when a derived class cannot seek
    /// \throws Xml::Exception "Write not supported" when the access does not hold writing
    /// \throws Xml::Exception "File write error" when the system refuses
    void SetLength(long length) override;

    /// \throws Xml::Exception "Write not supported" when the access does not hold writing
    /// \throws Xml::Exception "File not open!"
    /// \throws Xml::Exception "File write error" when not all bytes were written
    void Write(const unsigned char* buffer, int offset, int count) override;

private:
    detail::OpenFile& File() const;
    void OpenByName(FileMode mode, unsigned share);

    std::shared_ptr<detail::OpenFile> file_;  // shared by copies; null when none was opened
    unsigned access_ = 0;                     // bit 0: read, bit 1: write
    astring name_;                            // by which the file was opened
};

}  // namespace IO
