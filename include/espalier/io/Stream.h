// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/io/SeekOrigin.h>

namespace IO {

/// The abstract byte stream on which all reading and writing rests.
///
/// A stream has a length and a position, both counted in bytes. CanRead(), CanSeek() and
/// CanWrite() say what it supports. The base class supports nothing: every operation but Close()
/// has a harmless default, so a derived stream overrides only what it can do.
///
/// Buffers are passed as (buffer, offset, count): the call works on `count` bytes from
/// `buffer[offset]` on. A negative offset is not an error in the streams that say so; it is added
/// to the count and becomes 0.
///
/// Failures are thrown as Xml::Exception with a message of the form
/// "MemoryStream::Read: Stream is closed"; each derived class lists its own.
///
/// \code
///     IO::MemoryStream stream;
///     stream.WriteByte('a');
///     stream.SetPosition(0);
///     int byte = stream.ReadByte();  // 'a'; the next ReadByte() returns -1
/// \endcode
///
/// \note One thread at a time may use a stream.
class ESPALIER_EXPORT Stream {
public:
    // The order of the virtual functions is part of the binary interface: append, never reorder.

    virtual ~Stream();

    /// Tells whether Read() can deliver bytes.
    virtual bool CanRead() const;
    /// Tells whether Seek() moves the position.
    virtual bool CanSeek() const;
    /// Tells whether Write() takes bytes.
    virtual bool CanWrite() const;

    /// Returns the number of bytes in the stream; 0 where that is not known.
    virtual long Length() const;

    /// Returns where the next Read() or Write() starts, counted from the start of the stream.
    virtual long Position() const;

    /// Ends the use of the stream.
    virtual void Close() = 0;

    /// Hands buffered bytes on to whatever lies below.
    virtual void Flush();

    /// Reads up to `count` bytes into `buffer[offset]` onward and advances the position.
    /// \return the number of bytes read; 0 at the end of the data
    virtual int Read(unsigned char* buffer, int offset, int count);

    /// Moves the position by `offset` from `origin`.
    /// \return the new position
    virtual long Seek(long offset, SeekOrigin origin);

    /// Cuts or extends the stream to `length` bytes.
    virtual void SetLength(long length);

    /// Writes `count` bytes from `buffer[offset]` onward and advances the position.
    virtual void Write(const unsigned char* buffer, int offset, int count);

    /// Assigns nothing: a stream is not a value. Returns itself.
    Stream& operator=(const Stream&) = default;

    /// Moves to `position`, counted from the start: Seek(position, SeekOrigin::Begin).
    void SetPosition(long position);

    /// Reads one byte.
    /// \return the byte (0 to 255), or -1 when Read() delivered none
    int ReadByte();

    /// Writes one byte.
    void WriteByte(unsigned char b);

    /// Returns the shared stream that swallows writes and is always at its end. Never delete it.
    static Stream* Null();

protected:
    Stream() = default;
    Stream(const Stream&) = default;
};

}  // namespace IO
