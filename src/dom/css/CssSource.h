// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>
#include <espalier/encoding/Encoding.h>
#include <espalier/io/Stream.h>

#include <memory>
#include <string_view>

namespace Dom::CSS::detail {

/// The bytes of a stream, converted to text piece by piece.
class CssSource {
public:
    /// Reads the first bytes.
    /// \param stream may be null
    explicit CssSource(IO::Stream* stream);

    /// Returns the encoding that a name stands for; a byte order mark decides between those of
    /// UTF-16, and is passed over.
    Xml::Encoding* EncodingByName(std::string_view name);
    void SetEncoding(Xml::Encoding* encoding) { encoding_ = encoding; }

    /// Appends the next piece, of at most 511 bytes, to a text. Returns false when there is none.
    bool AppendPiece(astring& text);

    /// Gives nothing more.
    void Close();

    /// Tells whether all bytes have been converted.
    bool IsUsedUp() const { return endOfStream_ && position_ >= end_; }

    /// Tells whether the stream threw.
    bool Failed() const { return failed_; }
    /// Returns what it said.
    const astring& Error() const { return error_; }

private:
    static constexpr int kCapacity = 1024;
    static constexpr int kMostBytes = 511;  // of text in a piece
    static constexpr int kLongestCharacter = 6;

    bool Refill();
    int ReadStream(int offset);
    bool Decode(astring& text);
    void DecodeUntilFull(unsigned char*& output, unsigned char* outputEnd);

    IO::Stream* stream_;
    Xml::Encoding* encoding_ = nullptr;
    std::unique_ptr<unsigned char[]> bytes_;
    int position_ = 0;  // of the first byte that is not converted
    int end_ = 0;
    bool endOfStream_ = false;
    bool failed_ = false;
    astring error_;
};

}  // namespace Dom::CSS::detail
