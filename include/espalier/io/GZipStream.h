// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/io/CompressionMode.h>
#include <espalier/io/Stream.h>

#include <memory>

namespace IO {

namespace detail {
class GzipHandle;
}  // namespace detail

/// Compresses into another stream, the target, or decompresses from it, in the gzip format
/// (RFC 1952).
///
/// Decompressing, members that follow each other are read as one, checksums and lengths are
/// checked, what follows the last member and is none itself is ignored, and a target that does not
/// begin like a gzip file is passed through as it is. The target is read in pieces of up to
/// 64 KiB, so afterwards it stands behind what was read from this stream.
///
/// Compressing, the bytes reach the target when enough has come together, and with Flush() and
/// Close(). Only Close() (or the destructor, which keeps errors to itself) ends the gzip data.
/// After a failed write nothing more can be written, and Close() leaves the data without its end.
///
/// Positions and counts are those of the uncompressed data; Length() is the target's. The target is
/// not owned: it must outlive this stream, and it is never closed nor deleted.
///
/// A negative offset of Read() and Write() is added to the count and becomes 0; a count below 1
/// then does nothing.
///
/// Failures are thrown as Xml::Exception with an empty argument and line and position -1; what the
/// target throws passes through. When Read() throws, Position() tells how many bytes it had put
/// into the caller's buffer.
///
/// \code
///     IO::FileStream file("feed.xml.gz", IO::FileMode::Open, 1, 1);
///     IO::GZipStream stream(&file, IO::CompressionMode::Decompress);
///     reader.SetStream(&stream, false);
/// \endcode
///
/// \note One thread at a time may use a stream together with its target.
class ESPALIER_EXPORT GZipStream : public Stream {
public:
    /// Makes a closed stream; its mode is CompressionMode::Decompress.
    GZipStream();

    /// Opens a stream over `target`, from where that stands; a null target leaves it closed.
    /// \throws Xml::Exception "GZipStream target Stream not writable!"
    /// \throws Xml::Exception "GZipStream target Stream not readable!"
    /// \throws Xml::Exception "GZipStream initialization failed" for a mode without a name, and
    ///     when memory runs out
    GZipStream(Stream* target, CompressionMode mode);

    /// Takes over what `other` is open on; `other` is closed then, without a word to the target.
    GZipStream(GZipStream& other);
    GZipStream(GZipStream&& other) noexcept;

    /// Closes this stream and takes over what `other` is open on. Assignment to itself does
    /// nothing.
    /// \throws Xml::Exception what Close() throws; then nothing was taken over
    GZipStream& operator=(GZipStream& other);
    // NOLINTNEXTLINE(performance-noexcept-move-constructor): Close() may throw
    GZipStream& operator=(GZipStream&& other) { return *this = other; }

    /// Closes the stream and throws nothing.
    ~GZipStream() override;

    /// Tells whether the stream is open to decompress.
    bool CanRead() const override;
    /// Returns true; whether a certain Seek() is possible shows when it is tried.
    bool CanSeek() const override;
    /// Tells whether the stream is open to compress.
    bool CanWrite() const override;

    /// Returns the length of the target: that of the compressed data.
    /// \throws Xml::Exception "GZipStream not open!"
    long Length() const override;

    /// Returns the position in the uncompressed data.
    /// \throws Xml::Exception "GZipStream not open!"
    long Position() const override;

    /// Flushes the stream, ends the gzip data when compressing, and forgets the target, which stays
    /// open. A closed stream stays as it is. The stream is closed also when the target throws.
    void Close() override;

    /// Compressing, writes all that was taken so far to the target so that it can be decompressed
    /// (a partial flush), and flushes the target. Each call costs some compression. Decompressing,
    /// does nothing.
    /// \throws Xml::Exception "GZipStream not open!"
    /// \throws Xml::Exception "GZipStream write error" after a write has failed
    void Flush() override;

    /// Reads uncompressed bytes: as many as asked for, fewer only at the end.
    /// \throws Xml::Exception "GZipStream not open!"
    /// \throws Xml::Exception "GZipStream read error: " and what is wrong, in zlib's words:
    ///     "unexpected end of file", "incorrect data check", "incorrect length check",
    ///     "header crc mismatch", "invalid distance too far back", ...; "file error" when the
    ///     target answers with a negative number; "stream error" when the stream is open to
    ///     compress. The same error comes again until Seek() goes back.
    int Read(unsigned char* buffer, int offset, int count) override;

    /// Moves the position in the uncompressed data.
    ///
    /// Decompressing, bytes up to the target position are passed over by the next Read(), which
    /// finds out, too, when there are not so many; to go back, all is decompressed again from
    /// where the stream was opened, for which its target has to seek. Compressing, zero bytes are
    /// written up to the target position. SeekOrigin::End is not possible; an origin without a
    /// name counts as the start.
    /// \return the new position
    /// \throws Xml::Exception "GZipStream not open!"
    /// \throws Xml::Exception "GZipStream seek error" where the position cannot be reached
    long Seek(long offset, SeekOrigin origin) override;

    /// Never possible.
    /// \throws Xml::Exception "GZipStream cannot SetLength"
    void SetLength(long length) override;

    /// Compresses bytes.
    /// \throws Xml::Exception "GZipStream not opened to compress"
    /// \throws Xml::Exception "GZipStream not open!"
    /// \throws Xml::Exception "GZipStream write error" when not all bytes were taken, and after a
    ///     write has failed
    void Write(const unsigned char* buffer, int offset, int count) override;

private:
    detail::GzipHandle& Handle() const;
    void TakeOver(GZipStream& other);

    Stream* target_ = nullptr;  // not owned; null when closed
    CompressionMode mode_ = CompressionMode::Decompress;
    std::unique_ptr<detail::GzipHandle> handle_;  // null when closed
};

}  // namespace IO
