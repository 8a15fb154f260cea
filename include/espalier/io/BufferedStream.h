// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/io/Stream.h>

#include <memory>

namespace IO {

/// Puts a buffer of 512 bytes before another stream, the inner one, to serve small reads and
/// writes.
///
/// A read or write of more than 256 bytes goes past the buffer. Position() is the logical position,
/// wherever the inner stream stands. Bytes that are written reach the inner stream when the buffer
/// is full, and with Flush(), Close(), Seek(), SetLength(), the next Read() and the destructor,
/// which keeps the errors of doing so to itself: call Flush() or Close() to hear of them.
///
/// A negative offset of Read() and Write() is added to the count and becomes 0; a count below 1
/// then does nothing.
///
/// This class throws nothing of its own; what the inner stream throws passes through. Bytes whose
/// writing failed stay pending, except in Close().
///
/// \code
///     IO::BufferedStream stream(new IO::FileStream(name, IO::FileMode::Create, 2, 1), true);
///     for (unsigned char byte : bytes) stream.WriteByte(byte);
///     stream.Close();
/// \endcode
///
/// \note One thread at a time may use a stream together with its inner stream.
class ESPALIER_EXPORT BufferedStream : public Stream {
public:
    /// Makes a stream with an empty buffer over `inner`, which is closed and deleted with it when
    /// `ownsInner` is true, and must outlive it when not.
    BufferedStream(Stream* inner, bool ownsInner);

    /// Takes over the buffer and the inner stream of `other`, which is left without one: it reads
    /// nothing, writes nothing and can do nothing.
    BufferedStream(BufferedStream& other);
    BufferedStream(BufferedStream&& other) noexcept { TakeOver(other); }

    /// Closes this stream, deletes its inner stream when it owns it, and takes over those of
    /// `other`. Assignment to itself does nothing.
    /// \throws Xml::Exception what Close() throws; then nothing was taken over
    BufferedStream& operator=(BufferedStream& other);
    // NOLINTNEXTLINE(performance-noexcept-move-constructor): Close() may throw
    BufferedStream& operator=(BufferedStream&& other) { return *this = other; }

    /// Writes pending bytes, and closes and deletes the inner stream when it is owned. Throws
    /// nothing.
    ~BufferedStream() override;

    bool CanRead() const override;
    bool CanSeek() const override;
    bool CanWrite() const override;

    /// Returns the length of the inner stream: pending bytes do not count yet.
    long Length() const override;

    /// Returns the logical position: where the next byte is read or written.
    long Position() const override;

    /// Writes pending bytes and closes the inner stream when it is owned. When the writing fails,
    /// the pending bytes are lost and the inner stream is closed nevertheless.
    void Close() override;

    /// Writes pending bytes and flushes the inner stream.
    void Flush() override;

    int Read(unsigned char* buffer, int offset, int count) override;

    /// Moves the logical position. From SeekOrigin::Current, a target among the bytes read ahead
    /// does not trouble the inner stream.
    /// \return the new position, as the inner stream tells it
    long Seek(long offset, SeekOrigin origin) override;

    /// Writes pending bytes, forgets the bytes read ahead and sets the length of the inner stream.
    /// After reading, call SetPosition(Position()) first to bring the inner stream to the logical
    /// position; SetLength() leaves it where it stands.
    void SetLength(long length) override;

    void Write(const unsigned char* buffer, int offset, int count) override;

private:
    int Unread() const;
    void ClearBuffer();
    void FlushWrite();
    void TakeOver(BufferedStream& other);
    unsigned char* Buffer();

    std::unique_ptr<unsigned char[]> buffer_;  // allocated on first use
    int bufferedLength_ = 0;                   // bytes read ahead; 0 when writing
    int bufferPosition_ = 0;   // where reading goes on, or the number of pending bytes
    bool writing_ = false;     // the buffer holds pending bytes
    Stream* inner_ = nullptr;  // owned when ownsInner_; null after a transfer to another
    bool ownsInner_ = false;
};

}  // namespace IO
