// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/io/Stream.h>

#include <memory>

namespace IO {

/// A stream over bytes in memory: a buffer of its own that grows, or a caller's buffer.
///
/// A growable stream owns its buffer. A stream over a caller's bytes never frees nor moves them;
/// they must outlive it. Over constant bytes it is read-only.
///
/// The position never passes the length. Close() only refuses further Read(), Write() and
/// SetCapacity(): the bytes stay, and GetBuffer(), ToArray(), Seek(), SetLength() and Length() keep
/// working. A closed stream is not opened again.
///
/// A negative offset of Read() and Write() is added to the count and becomes 0; a count below 1
/// then does nothing.
///
/// Failures are thrown as Xml::Exception with an empty argument and line and position -1. A call
/// that throws changes nothing.
///
/// \code
///     IO::MemoryStream stream;
///     stream.Write(bytes, 0, 10);  // Length() is 10, Capacity() is 1024
///     stream.SetPosition(0);
/// \endcode
///
/// \note One thread at a time may use a stream. Two streams that share a block after a transfer
/// count as one.
class ESPALIER_EXPORT MemoryStream : public Stream {
public:
    /// Makes an empty, growable stream without a buffer; its capacity is 0.
    MemoryStream();

    /// Makes an empty, growable stream with room for `capacity` bytes.
    /// \throws Xml::Exception "MemoryStream::SetCapacity: Specified capacity smaller than length"
    ///     when `capacity` is negative
    /// \throws Xml::Exception "MemoryStream::SetCapacity: Out of memory"
    explicit MemoryStream(long capacity);

    /// Makes a read-only stream over the `size` bytes at `data`, which stay the caller's.
    MemoryStream(const unsigned char* data, long size);

    /// Makes a writable stream of fixed size over the `size` bytes at `data`, which stay the
    /// caller's. All of them count as content at once.
    MemoryStream(unsigned char* data, long size);

    /// Takes over the buffer of `other`. `other` keeps its place and its view of the bytes, but is
    /// no longer growable: it is a stream of fixed capacity over the block that it had. When the
    /// new owner later needs another block, it gets one of its own, and the two part.
    MemoryStream(MemoryStream& other);
    MemoryStream(MemoryStream&& other) noexcept { TakeOver(other); }

    /// Gives up what this stream has (closing it first when it owns a buffer) and takes over the
    /// buffer of `other` as the constructor does. Assignment to itself does nothing.
    MemoryStream& operator=(MemoryStream& other);
    // NOLINTNEXTLINE(performance-noexcept-move-constructor): Close() of a derived class may throw
    MemoryStream& operator=(MemoryStream&& other) { return *this = other; }

    ~MemoryStream() override;

    bool CanRead() const override;
    bool CanSeek() const override;
    /// Returns true unless the stream was made over constant bytes.
    bool CanWrite() const override;

    long Length() const override;
    long Position() const override;

    /// Refuses Read(), Write() and SetCapacity() from now on; the bytes stay.
    void Close() override;

    /// Does nothing.
    void Flush() override;

    /// \throws Xml::Exception "MemoryStream::Read: Stream is closed"
    int Read(unsigned char* buffer, int offset, int count) override;

    /// Moves the position, which stays between 0 and the length.
    long Seek(long offset, SeekOrigin origin) override;

    /// Sets the length. Bytes that come into it are what the buffer holds there: zero where
    /// nothing was ever written. A growable stream that has no buffer yet stays empty: write to it
    /// or give it a capacity first.
    /// \throws Xml::Exception "MemoryStream::SetLength: Bad argument" when `length` is negative
    /// \throws Xml::Exception "MemoryStream::SetLength: New length smaller than current position"
    /// \throws Xml::Exception "MemoryStream::SetLength: Length greater than maximum capaciy" over a
    ///     caller's buffer
    /// \throws Xml::Exception "MemoryStream::SetLength: Stream not open for writing" over constant
    ///     bytes
    /// \throws Xml::Exception what SetCapacity() throws, when the buffer has to grow
    void SetLength(long length) override;

    /// Overwrites from the position on, and extends the stream where that passes its length. A
    /// growable stream gains the larger of `count` and 1024 bytes of capacity whenever it is full.
    /// \throws Xml::Exception "MemoryStream::Write: Stream is closed"
    /// \throws Xml::Exception "Write not supported" over constant bytes
    /// \throws Xml::Exception "MemoryStream::SetCapacity: Out of memory"
    /// \throws Xml::Exception "MemoryStream::Write: Buffer full" over a caller's buffer
    void Write(const unsigned char* buffer, int offset, int count) override;

    /// Returns the size of the buffer in bytes, at most INT_MAX.
    virtual int Capacity() const;

    /// Makes the buffer exactly `capacity` bytes long. New bytes are zero; 0 frees the buffer.
    /// \throws Xml::Exception "MemoryStream::SetCapacity: Stream is closed"
    /// \throws Xml::Exception "MemoryStream::SetCapacity: Stream is read-only"
    /// \throws Xml::Exception "MemoryStream::SetCapacity: Stream has fixed capacity"
    /// \throws Xml::Exception "MemoryStream::SetCapacity: Specified capacity smaller than length"
    /// \throws Xml::Exception "MemoryStream::SetCapacity: Out of memory"; the buffer is unchanged
    virtual void SetCapacity(long capacity);

    /// Returns the bytes from the start of the stream on, or null when there is no buffer. Valid
    /// until the stream grows or is destroyed.
    virtual const unsigned char* GetBuffer() const;

    /// Copies the first bytes of the stream, at most `maximum`, to `destination`.
    /// \return the number of bytes copied
    virtual long ToArray(unsigned char* destination, long maximum) const;

private:
    struct Block;

    const unsigned char* Bytes() const;
    bool Reallocate(long size);
    void ChangeCapacity(long capacity);
    void Grow(long count, long end);
    void TakeOver(MemoryStream& other);

    const unsigned char* readOnlyBuffer_ = nullptr;  // not owned; set over constant bytes alone
    unsigned char* buffer_ = nullptr;                // the block's bytes, or a caller's (not owned)
    long length_ = 0;                                // valid bytes
    long position_ = 0;                              // where the next Read() or Write() starts
    long capacity_ = 0;                              // bytes of the buffer that callers know of
    bool growable_ = true;                           // the block may be replaced
    bool closed_ = false;
    std::shared_ptr<Block> block_;  // owned; shared with the stream it was taken over from
};

}  // namespace IO
