// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace Xml::detail {

/// What the bytes of an encoding look like; lets bulk code choose its loop without a virtual call.
enum class CodecKind : unsigned char { Utf8, Utf16, Ucs4, SingleByte, DoubleByte };

/// How a bulk decoding ended.
enum class DecodeEnd : unsigned char {
    SourceUsed,  ///< all whole characters are converted; a cut one may be left in the source
    Invalid,     ///< the source stands before bytes that are no character
    NoRoom       ///< the destination cannot take the next character
};

/// One character engine per encoding; it works on raw bytes and one static instance exists.
class CharCodec {
public:
    constexpr CharCodec(const char* name, CodecKind kind) : name_(name), kind_(kind) {}

    /// Returns the name that the reader reports as its encoding.
    constexpr const char* Name() const { return name_; }
    constexpr CodecKind Kind() const { return kind_; }

    virtual constexpr ~CharCodec() = default;

    virtual int ClassOfCode(int code) const = 0;
    virtual int ClassAt(const unsigned char* position, const unsigned char* end) const = 0;
    virtual int Decode(const unsigned char* position, const unsigned char* end) const = 0;
    virtual int Encode(int code, unsigned char* destination,
                       unsigned char* destinationEnd) const = 0;
    virtual const unsigned char* Next(const unsigned char* position) const = 0;
    virtual bool IsChar(const unsigned char* position, int code) const = 0;
    virtual bool MatchAscii(const unsigned char* position, const unsigned char* end,
                            const char* literal, const unsigned char*& matchedEnd) const = 0;
    virtual int ToUtf8(const unsigned char*& position, const unsigned char* end,
                       unsigned char*& destination, unsigned char* destinationEnd) const = 0;
    virtual int ToUtf16(const unsigned char*& position, const unsigned char* end,
                        char16_t*& destination, char16_t* destinationEnd) const = 0;
    virtual int ToUcs4(const unsigned char*& position, const unsigned char* end,
                       char32_t*& destination, char32_t* destinationEnd) const = 0;

    // Bulk operations of our own, after the ones above.

    /// Converts whole valid characters to UTF-8, as many as the destination takes, and advances
    /// both positions. ASCII runs go 16 bytes at a time; what is written of the destination
    /// after its new position means nothing.
    virtual DecodeEnd DecodeRun(const unsigned char*& position, const unsigned char* end,
                                unsigned char*& destination,
                                unsigned char* destinationEnd) const = 0;

    /// Returns the class (CharClass) of a decoded character above ASCII.
    virtual int ClassOfScalar(int code) const = 0;

    /// Returns how many bytes the UTF-8 text in [begin, end) takes in this encoding.
    virtual std::size_t EncodedLength(const unsigned char* begin,
                                      const unsigned char* end) const = 0;

private:
    const char* name_;
    CodecKind kind_;
};

}  // namespace Xml::detail
