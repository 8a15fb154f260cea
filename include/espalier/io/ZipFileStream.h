// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/io/Stream.h>

#include <memory>

namespace IO {

namespace detail {
class ZipMember;
}  // namespace detail

/// Reads one member of a zip archive on disk, stored or deflated.
///
/// Members are found by name without regard to the case of ASCII letters; the first that matches
/// counts. Names are only names: an absolute one, or one with "..", leads to nothing but the member
/// of that name. Members of more than 4 GiB want a minizip that knows them; with 1.1, reading them
/// ends in a "Read error" there, and one that begins behind the first 4 GiB of the archive is not
/// found.
///
/// Positions and lengths are those of the uncompressed data. To go back, the member is opened again
/// and decompressed up to the new position.
///
/// Failures are thrown as Xml::Exception with an empty argument and line and position -1.
///
/// \code
///     IO::ZipFileStream stream("book.epub", "META-INF/container.xml");
///     reader.SetStream(&stream, false);
/// \endcode
///
/// \note One thread at a time may use a stream.
class ESPALIER_EXPORT ZipFileStream : public Stream {
public:
    /// Makes a closed stream.
    ZipFileStream();

    /// \name Open a member of an archive
    /// As Open() does.
    /// @{
    ZipFileStream(const char* archive, const char* member);
    ZipFileStream(const astring& archive, const astring& member);
    /// @}

    /// Takes over the open member and the names of `other`, which is left closed and without names.
    ZipFileStream(ZipFileStream& other);
    ZipFileStream(ZipFileStream&& other) noexcept;

    /// Closes this stream and takes over what `other` has. Assignment to itself does nothing.
    ZipFileStream& operator=(ZipFileStream& other);
    ZipFileStream& operator=(ZipFileStream&& other) noexcept;

    ~ZipFileStream() override;

    /// \name Open a member of an archive
    /// Closes what was open, and opens a member for reading. A backslash in its name counts as a
    /// slash. Nothing is open when that fails.
    /// \throws Xml::Exception "Archive not found" when the file is missing, cannot be read, or is
    ///     no zip archive
    /// \throws Xml::Exception "File not found in archive" when no member has that name, or when it
    ///     cannot be read: it is encrypted, compressed in another way than by deflating, or its
    ///     entry in the archive is damaged
    /// @{
    void Open(const char* archive, const char* member);
    void Open(const astring& archive, const astring& member);
    /// @}

    /// \name Names
    /// The name of the archive and of its member as they were given to the first Open() that went
    /// well, also after Close(). Another Open() does not change them.
    /// @{
    const astring& ArchiveName() const;
    const astring& MemberName() const;
    /// @}

    /// Returns true.
    bool CanRead() const override;
    /// Returns true.
    bool CanSeek() const override;

    /// Returns the uncompressed size that the archive states, which may not be what there is; 0
    /// when closed.
    long Length() const override;

    /// Returns the position in the uncompressed data; 0 when closed.
    long Position() const override;

    /// Closes the member and the archive.
    void Close() override;

    /// Reads bytes of the member; with a count below 1, or when closed, none. A negative offset is
    /// added to the count and becomes 0.
    /// \return the number of bytes, or a negative number when the archive cannot be read (-1) or is
    ///     damaged there (-3 and -5 from zlib, below -100 from minizip); the same number comes
    ///     again until Seek() goes back
    /// \throws Xml::Exception "Read error" when the data end, and are shorter than stated or do not
    ///     fit their checksum; again until Seek() goes back
    int Read(unsigned char* buffer, int offset, int count) override;

    /// Moves the position within the member; a position behind its length or before its start
    /// leaves it where it is, and so does an origin without a name. When closed, does nothing.
    /// \return the new position
    /// \throws Xml::Exception "File seek failed" when the member cannot be opened again
    /// \throws Xml::Exception "Read error" when the bytes up to the new position cannot be read
    long Seek(long offset, SeekOrigin origin) override;

private:
    void SkipTo(long target);
    void TakeOver(ZipFileStream& other) noexcept;

    astring archiveName_;
    astring memberName_;
    std::unique_ptr<detail::ZipMember> member_;  // null when closed
};

}  // namespace IO
