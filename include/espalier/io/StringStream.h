// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/io/Stream.h>

namespace IO {

/// A stream over a text of its own; the length is the text's length in bytes.
///
/// Close() and Flush() do nothing: the stream works as long as it lives. Copies are independent.
///
/// A negative offset of Read() and Write() is added to the count and becomes 0; a count below 1
/// then does nothing.
///
/// \code
///     IO::StringStream stream("abcdef", true);
///     stream.SetPosition(1);
///     stream.Write(xyz, 0, 3);              // three bytes "XYZ"
///     astring text = stream.GetString();    // "aXYZef"
/// \endcode
///
/// \note One thread at a time may use a stream.
class ESPALIER_EXPORT StringStream : public Stream {
public:
    /// Makes an empty, writable stream.
    StringStream();

    /// Makes a stream over a copy of `text`, with the position at its start.
    StringStream(const astring& text, bool writable);

    /// Copies the text, the position and whether the stream is writable.
    StringStream(const StringStream& other);
    StringStream& operator=(const StringStream& other);

    ~StringStream() override;

    bool CanRead() const override;
    bool CanSeek() const override;
    bool CanWrite() const override;

    long Length() const override;
    long Position() const override;

    /// Does nothing.
    void Close() override;

    /// Does nothing.
    void Flush() override;

    int Read(unsigned char* buffer, int offset, int count) override;

    /// Moves the position, which stays between 0 and the length.
    long Seek(long offset, SeekOrigin origin) override;

    /// Cuts the text or extends it with NUL characters, in a read-only stream too; a negative
    /// length does nothing. The position stays, even past the end: there Read() returns 0 and
    /// Write() fills the gap with NUL.
    void SetLength(long length) override;

    /// Overwrites from the position on, and extends the text where that passes its end.
    /// \throws Xml::Exception "StringStream::Write: Write not supported" when not writable
    void Write(const unsigned char* buffer, int offset, int count) override;

    /// Returns a copy of the whole text.
    astring GetString() const;

private:
    long position_ = 0;     // where the next Read() or Write() starts
    astring text_;          // the content
    bool writable_ = true;  // Write() is allowed
};

}  // namespace IO
