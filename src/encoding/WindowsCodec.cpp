// SPDX-License-Identifier: MIT
#include "encoding/AsciiMatch.h"
#include "encoding/AsciiRun.h"
#include "encoding/CharClass.h"
#include "encoding/Codecs.h"
#include "encoding/Utf8.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

// The Windows code pages. They differ in their tables only: what the bytes 80 to FF are, what class
// that has, the other way round, and as the two bytes that text gets.
//
// Deliberate: a byte from 80 on always becomes two bytes of text, the second with six bits and the
// first with the others. That is UTF-8 up to U+07FF. Of the few characters above, the high bits run
// into the lead byte: the euro sign (U+20AC) becomes C2 AC, and the en dash (U+2013) C0 93, which
// is no UTF-8 at all. The text of such a document has been so for as long as there are clients.

namespace Xml::detail {

namespace {

#include "encoding/tables/WindowsPages.inc"

constexpr std::size_t kUpperBytes = 128;

struct ByteOfCode {
    std::uint16_t code;
    std::uint16_t byte;

    friend constexpr bool operator<(const ByteOfCode& a, const ByteOfCode& b) {
        return a.code < b.code;
    }
};

struct WindowsPage {
    const std::uint16_t* codes;  // of the bytes 80 to FF
    const signed char* classes;
    std::array<ByteOfCode, kUpperBytes> bytes{};                 // sorted by their codes
    std::array<std::array<unsigned char, 2>, 256> sequences{};   // what becomes of a byte
    std::array<std::array<unsigned char, 4>, 256> characters{};  // the same in UTF-8
    std::array<unsigned char, 256> lengths{};                    // of that

    consteval WindowsPage(const std::uint16_t (&pageCodes)[kUpperBytes],
                          const signed char (&pageClasses)[kUpperBytes])
        : codes(pageCodes), classes(pageClasses) {
        for (unsigned byte = 0; byte < 0x80; ++byte) {
            sequences[byte] = {static_cast<unsigned char>(byte), 0};
            characters[byte] = {static_cast<unsigned char>(byte)};
            lengths[byte] = 1;
        }
        for (unsigned byte = 0x80; byte <= 0xFF; ++byte) {
            const unsigned code = codes[byte - 0x80];
            bytes[byte - 0x80] = {static_cast<std::uint16_t>(code),
                                  static_cast<std::uint16_t>(byte)};
            sequences[byte] = {static_cast<unsigned char>(0xC0 | code >> 6),
                               static_cast<unsigned char>(0x80 | (code & 0x3F))};
            Spell(byte, code);
        }
        std::sort(bytes.begin(), bytes.end());
    }

    consteval void Spell(unsigned byte, unsigned code) {
        const auto last = static_cast<unsigned char>(0x80 | (code & 0x3F));
        const auto middle = static_cast<unsigned char>(0x80 | (code >> 6 & 0x3F));
        lengths[byte] = code < 0x800 ? 2 : 3;
        if (code < 0x800) {
            characters[byte] = {static_cast<unsigned char>(0xC0 | code >> 6), last};
        } else {
            characters[byte] = {static_cast<unsigned char>(0xE0 | code >> 12), middle, last};
        }
    }

    int CodeOf(unsigned char byte) const { return byte < 0x80 ? byte : codes[byte - 0x80]; }

    int ClassOf(unsigned char byte) const {
        return byte < 0x80 ? ToInt(ClassOfAscii(byte)) : classes[byte - 0x80];
    }

    /// Returns the byte, 80 to FF, of a code from 80 to FFFF, or 0.
    int ByteOf(int code) const {
        const ByteOfCode wanted{static_cast<std::uint16_t>(code), 0};
        const auto found = std::lower_bound(bytes.begin(), bytes.end(), wanted);
        return found != bytes.end() && found->code == code ? found->byte : 0;
    }
};

constexpr WindowsPage kPage1250(kWindows1250Codes, kWindows1250Classes);
constexpr WindowsPage kPage1251(kWindows1251Codes, kWindows1251Classes);
constexpr WindowsPage kPage1252(kWindows1252Codes, kWindows1252Classes);
constexpr WindowsPage kPage1254(kWindows1254Codes, kWindows1254Classes);
constexpr WindowsPage kPage1257(kWindows1257Codes, kWindows1257Classes);

// What text a byte becomes: two bytes, as said above.
struct KeptSpelling {
    static constexpr int kStored = 2;
    const std::array<unsigned char, 2>* sequences;

    static int LengthOf(unsigned char byte) { return 1 + (byte >> 7); }
    const unsigned char* Of(unsigned char byte) const { return sequences[byte].data(); }
};

// The same in UTF-8.
struct ExactSpelling {
    static constexpr int kStored = 4;
    const std::array<unsigned char, 4>* characters;
    const unsigned char* lengths;

    int LengthOf(unsigned char byte) const { return lengths[byte]; }
    const unsigned char* Of(unsigned char byte) const { return characters[byte].data(); }
};

// Decodes as many blocks as there are and as there is certainly room for. Runs of ASCII are copied;
// the other bytes are written without a branch on their length, which in mixed text nothing
// predicts.
template <typename Spelling>
void DecodeBlocks(const Spelling spelling, const unsigned char*& source, const unsigned char* end,
                  unsigned char*& target, const unsigned char* targetEnd) {
    constexpr std::ptrdiff_t kBlock = 32;
    constexpr std::ptrdiff_t kRoom = (1 + Spelling::kStored) * kBlock;  // one of ASCII, one mixed
    // Copies: the bytes written might be those of the arguments, for all the compiler knows.
    const unsigned char* position = source;
    unsigned char* destination = target;
    while (end - position >= kBlock && targetEnd - destination >= kRoom) {
        const std::size_t ascii = CopyAscii(position, destination, kBlock);
        position += ascii;
        destination += ascii;
        if (ascii == kBlock || end - position < kBlock) continue;
        for (std::ptrdiff_t i = 0; i < kBlock; ++i) {
            const unsigned char byte = position[i];
            std::memcpy(destination, spelling.Of(byte), Spelling::kStored);
            destination += spelling.LengthOf(byte);
        }
        position += kBlock;
    }
    source = position;
    target = destination;
}

template <typename Spelling>
DecodeEnd DecodePage(const Spelling spelling, const unsigned char*& position,
                     const unsigned char* end, unsigned char*& destination,
                     unsigned char* destinationEnd) {
    DecodeBlocks(spelling, position, end, destination, destinationEnd);
    for (; position < end; ++position) {
        const int length = spelling.LengthOf(*position);
        if (destinationEnd - destination < length) return DecodeEnd::NoRoom;
        const unsigned char* const bytes = spelling.Of(*position);
        destination = std::copy(bytes, bytes + length, destination);
    }
    return DecodeEnd::SourceUsed;
}

class WindowsCharCodec : public CharCodec {
public:
    constexpr WindowsCharCodec(const char* name, const WindowsPage& page)
        : CharCodec(name, CodecKind::SingleByte), page_(page) {}
    // NOLINTNEXTLINE(modernize-use-equals-default): g++ 12 refuses a constant with a defaulted one
    constexpr ~WindowsCharCodec() override {}

    int ClassOfCode(int code) const override {
        if (code >= 1 && code <= 0x7F) return ToInt(ClassOfAscii(static_cast<unsigned>(code)));
        return ClassOfScalarValue(code);
    }

    int ClassAt(const unsigned char* position, const unsigned char* end) const override {
        return position >= end ? ToInt(CharClass::End) : page_.ClassOf(*position);
    }

    int Decode(const unsigned char* position, const unsigned char* end) const override {
        return position >= end ? 0 : page_.CodeOf(*position);
    }

    // Deliberate: no code above 2123 is written, whatever the page has. Readers of what was written
    // would get something else back; see above.
    int Encode(int code, unsigned char* destination, unsigned char* destinationEnd) const override {
        constexpr int kLastEncoded = 2123;
        if (destination >= destinationEnd) return 0;
        if (code < 0 || code > kLastEncoded) return -1;
        const int byte = code < 0x80 ? code : page_.ByteOf(code);
        if (byte == 0 && code != 0) return -1;
        *destination = static_cast<unsigned char>(byte);
        return 1;
    }

    const unsigned char* Next(const unsigned char* position) const override { return position + 1; }

    bool IsChar(const unsigned char* position, int code) const override {
        if (code < 0x80) return *position == code;
        return *position >= 0x80 && page_.CodeOf(*position) == code;
    }

    bool MatchAscii(const unsigned char* position, const unsigned char* end, const char* literal,
                    const unsigned char*& matchedEnd) const override {
        return MatchAsciiBytes(position, end, literal, matchedEnd);
    }

    int ToUtf8(const unsigned char*& position, const unsigned char* end,
               unsigned char*& destination, unsigned char* destinationEnd) const override {
        const unsigned char* const start = destination;
        DecodeRun(position, end, destination, destinationEnd);
        return static_cast<int>(destination - start);
    }

    // Deliberate: only ASCII moves the destination on; what another byte stands for is stored where
    // the next unit goes.
    int ToUtf16(const unsigned char*& position, const unsigned char* end, char16_t*& destination,
                char16_t* destinationEnd) const override {
        const char16_t* const start = destination;
        for (; position < end && destination < destinationEnd; ++position) {
            *destination = static_cast<char16_t>(page_.CodeOf(*position));
            if (*position < 0x80) ++destination;
        }
        return static_cast<int>(destination - start);
    }

    int ToUcs4(const unsigned char*& position, const unsigned char* end, char32_t*& destination,
               char32_t* destinationEnd) const override {
        const char32_t* const start = destination;
        while (position < end && destination < destinationEnd)
            *destination++ = static_cast<char32_t>(page_.CodeOf(*position++));
        return static_cast<int>(destination - start);
    }

    DecodeEnd DecodeRun(const unsigned char*& position, const unsigned char* end,
                        unsigned char*& destination, unsigned char* destinationEnd) const override {
        return DecodePage(KeptSpelling{page_.sequences.data()}, position, end, destination,
                          destinationEnd);
    }

    // The code is one that text has, so it may be that of a character above U+07FF without its high
    // bits. Where two characters become the same text, the one that is in its place wins.
    int ClassOfScalar(int code) const override {
        constexpr int kLostBits = 0x2000;  // all such characters are between U+2000 and U+27FF
        if (code < 0 || code >= 0x800) return ClassOfScalarValue(code);
        for (const int possible : {code, code | kLostBits}) {
            const int byte = page_.ByteOf(possible);
            if (byte != 0) return page_.ClassOf(static_cast<unsigned char>(byte));
        }
        return ClassOfScalarValue(code);
    }

    std::size_t EncodedLength(const unsigned char* begin, const unsigned char* end) const override {
        return utf8::CountCharacters(begin, end).all;
    }

protected:
    const WindowsPage& Page() const { return page_; }

private:
    const WindowsPage& page_;
};

// A page as others read it: each byte becomes the character that it is.
class ExactWindowsCodec final : public WindowsCharCodec {
public:
    using WindowsCharCodec::WindowsCharCodec;
    // NOLINTNEXTLINE(modernize-use-equals-default): g++ 12 refuses a constant with a defaulted one
    constexpr ~ExactWindowsCodec() override {}

    DecodeEnd DecodeRun(const unsigned char*& position, const unsigned char* end,
                        unsigned char*& destination, unsigned char* destinationEnd) const override {
        return DecodePage(ExactSpelling{Page().characters.data(), Page().lengths.data()}, position,
                          end, destination, destinationEnd);
    }

    int ClassOfScalar(int code) const override { return ClassOfScalarValue(code); }
};

constexpr ExactWindowsCodec kExact1250Codec("Windows-1250", kPage1250);
constexpr ExactWindowsCodec kExact1251Codec("Windows-1251", kPage1251);
constexpr ExactWindowsCodec kExact1252Codec("Windows-1252", kPage1252);
constexpr ExactWindowsCodec kExact1254Codec("Windows-1254", kPage1254);
constexpr ExactWindowsCodec kExact1257Codec("Windows-1257", kPage1257);

constexpr WindowsCharCodec kWindows1250Codec("Windows-1250", kPage1250);
constexpr WindowsCharCodec kWindows1251Codec("Windows-1251", kPage1251);
constexpr WindowsCharCodec kWindows1252Codec("Windows-1252", kPage1252);
constexpr WindowsCharCodec kWindows1254Codec("Windows-1254", kPage1254);
constexpr WindowsCharCodec kWindows1257Codec("Windows-1257", kPage1257);

}  // namespace

const CharCodec& Windows1250Codec() { return kWindows1250Codec; }
const CharCodec& Windows1251Codec() { return kWindows1251Codec; }
const CharCodec& Windows1252Codec() { return kWindows1252Codec; }
const CharCodec& Windows1254Codec() { return kWindows1254Codec; }
const CharCodec& Windows1257Codec() { return kWindows1257Codec; }

const CharCodec& ExactCodec(const CharCodec& codec) {
    if (&codec == &kWindows1250Codec) return kExact1250Codec;
    if (&codec == &kWindows1251Codec) return kExact1251Codec;
    if (&codec == &kWindows1252Codec) return kExact1252Codec;
    if (&codec == &kWindows1254Codec) return kExact1254Codec;
    if (&codec == &kWindows1257Codec) return kExact1257Codec;
    return codec;
}

}  // namespace Xml::detail
