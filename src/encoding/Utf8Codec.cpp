// SPDX-License-Identifier: MIT
#include "encoding/AsciiMatch.h"
#include "encoding/AsciiRun.h"
#include "encoding/CharClass.h"
#include "encoding/Codecs.h"
#include "encoding/Surrogates.h"
#include "encoding/Utf8.h"

#include <cstring>

// Only ClassAt() and DecodeRun() judge whether a sequence is valid; the other operations go by the
// lengths that lead bytes announce.

namespace Xml::detail {

namespace {

class Utf8CharCodec final : public CharCodec {
public:
    constexpr Utf8CharCodec() : CharCodec("UTF-8", CodecKind::Utf8) {}
    // NOLINTNEXTLINE(modernize-use-equals-default): g++ 12 refuses a constant with a defaulted one
    constexpr ~Utf8CharCodec() override {}

    int ClassOfCode(int code) const override {
        if (code < 1 || code > 0x7F) return ToInt(CharClass::Partial);
        return ToInt(ClassOfAscii(static_cast<unsigned>(code)));
    }

    int ClassAt(const unsigned char* position, const unsigned char* end) const override {
        if (position >= end) return ToInt(CharClass::End);
        if (*position < 0x80) return ToInt(ClassOfAscii(*position));
        switch (utf8::Check(position, end)) {
        case utf8::Sequence::Cut: return ToInt(CharClass::Partial);
        case utf8::Sequence::Invalid: return ToInt(CharClass::Invalid);
        case utf8::Sequence::Valid: break;
        }
        return ClassOfScalarValue(utf8::Combine(position, utf8::SequenceLength(*position)));
    }

    int Decode(const unsigned char* position, const unsigned char* end) const override {
        if (position >= end) return -1;
        if (*position < 0x80) return *position;
        const int length = utf8::SequenceLength(*position);
        if (length == 1 || end - position < length) return -1;
        return utf8::Combine(position, length);
    }

    // Deliberate: a longer form wants one byte more of room than it takes, and the codes above
    // FFFFF are refused.
    int Encode(int code, unsigned char* destination, unsigned char* destinationEnd) const override {
        constexpr int kLastEncoded = 0xFFFFF;
        if (code < 1) return 0;
        if (code > kLastEncoded) return -1;
        const int length = utf8::LengthOf(code);
        const int spare = length == 1 ? 0 : 1;
        if (destinationEnd - destination < length + spare) return -1;
        utf8::Write(code, destination);
        return length;
    }

    const unsigned char* Next(const unsigned char* position) const override {
        return position + utf8::SequenceLength(*position);
    }

    bool IsChar(const unsigned char* position, int code) const override {
        constexpr int kLongestSequence = 6;
        return Decode(position, position + kLongestSequence) == code;
    }

    bool MatchAscii(const unsigned char* position, const unsigned char* end, const char* literal,
                    const unsigned char*& matchedEnd) const override {
        return MatchAsciiBytes(position, end, literal, matchedEnd);
    }

    int ToUtf8(const unsigned char*& position, const unsigned char* end,
               unsigned char*& destination, unsigned char* destinationEnd) const override {
        const unsigned char* const start = destination;
        while (position < end) {
            const int length = utf8::SequenceLength(*position);
            if (end - position < length || destinationEnd - destination < length) break;
            std::memcpy(destination, position, static_cast<std::size_t>(length));
            position += length;
            destination += length;
        }
        return static_cast<int>(destination - start);
    }

    int ToUtf16(const unsigned char*& position, const unsigned char* end, char16_t*& destination,
                char16_t* destinationEnd) const override {
        const char16_t* const start = destination;
        while (position < end) {
            const int code = Decode(position, end);
            if (code < 0 || !WriteUtf16(code, destination, destinationEnd)) break;
            position = Next(position);
        }
        return static_cast<int>(destination - start);
    }

    int ToUcs4(const unsigned char*& position, const unsigned char* end, char32_t*& destination,
               char32_t* destinationEnd) const override {
        const char32_t* const start = destination;
        while (position < end && destination < destinationEnd) {
            const int code = Decode(position, end);
            if (code < 0) break;
            *destination++ = static_cast<char32_t>(code);
            position = Next(position);
        }
        return static_cast<int>(destination - start);
    }

    DecodeEnd DecodeRun(const unsigned char*& position, const unsigned char* end,
                        unsigned char*& destination, unsigned char* destinationEnd) const override {
        while (position < end) {
            if (*position < 0x80) {
                if (destination == destinationEnd) return DecodeEnd::NoRoom;
                CopyAsciiRun(position, end, destination, destinationEnd);
                continue;
            }
            switch (utf8::Check(position, end)) {
            case utf8::Sequence::Cut: return DecodeEnd::SourceUsed;
            case utf8::Sequence::Invalid: return DecodeEnd::Invalid;
            case utf8::Sequence::Valid: break;
            }
            const int length = utf8::SequenceLength(*position);
            if (destinationEnd - destination < length) return DecodeEnd::NoRoom;
            for (int i = 0; i < length; ++i)
                *destination++ = *position++;
        }
        return DecodeEnd::SourceUsed;
    }

    int ClassOfScalar(int code) const override { return ClassOfScalarValue(code); }

    std::size_t EncodedLength(const unsigned char* begin, const unsigned char* end) const override {
        return static_cast<std::size_t>(end - begin);
    }
};

constexpr Utf8CharCodec kUtf8Codec;

}  // namespace

const CharCodec& Utf8Codec() { return kUtf8Codec; }

}  // namespace Xml::detail
