// SPDX-License-Identifier: MIT
// Gives arbitrary bytes to every codec and every conversion. The first byte says how much room
// there is; the rest is the source.

#include <espalier/encoding.h>

#include "../tests/encoding/CharacterByCharacter.h"
#include "encoding/Codecs.h"
#include "encoding/Detection.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <span>
#include <string_view>
#include <vector>

using namespace Xml::detail;
using Source = std::span<const unsigned char>;

namespace {

void Require(bool condition) {
    if (!condition) std::abort();
}

const CharCodec* const kCodecs[] = {
    &Utf8Codec(),        &Utf16BeCodec(),     &Utf16LeCodec(),     &Ucs2BeCodec(),
    &Ucs2LeCodec(),      &Ucs4BeCodec(),      &Ucs4LeCodec(),      &AsciiCodec(),
    &Latin1Codec(),      &Windows1250Codec(), &Windows1251Codec(), &Windows1252Codec(),
    &Windows1254Codec(), &Windows1257Codec(), &Gb2312Codec(),      &EucKrCodec()};

// The bulk decoding gives what the operations for one character give.
void CheckDecodeRun(const CharCodec& codec, Source source, std::size_t room) {
    Require(encoding_test::InOneRun(codec, source, room) ==
            encoding_test::CharacterByCharacter(codec, source, room));
}

// A conversion stays within source and room and tells how far it got.
template <typename Unit, typename Conversion>
void CheckConversion(const CharCodec& codec, Conversion conversion, Source source,
                     std::size_t room) {
    std::vector<Unit> units(room);
    const unsigned char* position = source.data();
    Unit* destination = units.data();
    const int count =
        (codec.*conversion)(position, position + source.size(), destination, destination + room);
    Require(position >= source.data() && position <= source.data() + source.size());
    Require(destination - units.data() == std::max(count, 0));
}

// What DecodeRun() accepts as a whole comes back from GetBytes() unchanged.
void CheckRoundTrip(Source source) {
    const auto decoded = encoding_test::InOneRun(Utf8Codec(), source, source.size());
    if (decoded.end != DecodeEnd::SourceUsed || decoded.consumed != source.size()) return;
    const Xml::UnicodeEncoding utf16Le(false, false, false), utf16Be(true, false, false);
    const Xml::Ucs4UnicodeEncoding ucs4Le(false, false, false), ucs4Be(true, false, false);
    const struct {
        const Xml::Encoding& encoding;
        unsigned unit;
    } kTargets[] = {{utf16Le, 2}, {utf16Be, 2}, {ucs4Le, 4}, {ucs4Be, 4}};
    for (const auto& [encoding, unit] : kTargets) {
        const auto* text = reinterpret_cast<const char*>(source.data());
        const auto length = static_cast<unsigned>(source.size());
        std::vector<unsigned char> bytes(encoding.GetByteCount(text, length));
        bytes.resize(encoding.GetBytes(text, length, bytes.data(),
                                       static_cast<unsigned>(bytes.size()) / unit));
        Require(bytes.size() ==
                encoding.Codec().EncodedLength(source.data(), source.data() + source.size()));
        Require(encoding_test::InOneRun(encoding.Codec(), bytes, source.size()).text ==
                decoded.text);
    }
}

// Every character of a code page comes back from its code. The Windows pages write none above 2123.
void CheckPageRoundTrip(const CharCodec& codec, Source source) {
    constexpr int kInvalid = 1, kPartial = 2, kLastOfWindows = 2123;
    const unsigned char* const end = source.data() + source.size();
    for (const unsigned char* position = source.data(); position < end;) {
        const int charClass = codec.ClassAt(position, end);
        if (charClass == kPartial) break;
        const int code = codec.Decode(position, end);
        const unsigned char* const next = codec.Next(position);
        if (*position < 0x80) {
            Require(code == *position && next == position + 1);
        } else if (charClass == kInvalid) {
            Require(code == -1 && codec.Kind() == CodecKind::DoubleByte);
            if (next > end) break;
        }
        if (code >= 0) {
            unsigned char bytes[2] = {};
            const int length = codec.Encode(code, bytes, bytes + 2);
            if (codec.Kind() == CodecKind::SingleByte && code > kLastOfWindows) {
                Require(length == -1);
            } else {
                Require(length == next - position && std::equal(position, next, bytes));
            }
            Require(codec.IsChar(position, code) && !codec.IsChar(position, code + 1));
        }
        position = next;
    }
}

void CheckPublicConversions(Xml::Encoding& from, Xml::Encoding& to, Source source, unsigned room) {
    const auto length = static_cast<unsigned>(source.size());
    std::vector<unsigned char> output(room);
    Require(Xml::Encoding::Convert(&from, &to, source.data(), length, output.data(), room) <= room);
    unsigned consumed = length + 1;
    const unsigned written =
        Xml::Encoding::Convert(&from, &to, source.data(), length, output.data(), room, consumed);
    Require(written <= room && consumed <= length);
    for (Source rest = source; !rest.empty(); rest = rest.subspan(consumed)) {
        const unsigned one =
            Xml::Encoding::ConvertChar(&from, &to, rest.data(), static_cast<unsigned>(rest.size()),
                                       output.data(), room, consumed);
        Require(one <= room && consumed <= rest.size());
        if (consumed == 0) break;
    }
}

void CheckCounts(const Xml::Encoding& encoding, Source source, unsigned room) {
    const auto* text = reinterpret_cast<const char*>(source.data());
    const auto length = static_cast<unsigned>(source.size());
    Require(encoding.GetCharCount(source.data(), length) <= length);
    encoding.GetByteCount(text, length);
    std::vector<unsigned char> output(4 * std::size_t{room});
    encoding.GetBytes(text, length, output.data(), room);
    Require(encoding.GetPreamble(output.data(), room) <= room);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    // A block of its own, so that the sanitizer sees a byte read too many.
    const std::vector<unsigned char> source(data + 1, data + size);
    const std::size_t room = data[0] < 0xF0 ? data[0] : 6 * source.size();

    const std::string_view name(reinterpret_cast<const char*>(source.data()), source.size());
    for (const CharCodec* codec : kCodecs) {
        CheckDecodeRun(*codec, source, room);
        CheckConversion<unsigned char>(*codec, &CharCodec::ToUtf8, source, room);
        CheckConversion<char16_t>(*codec, &CharCodec::ToUtf16, source, room);
        CheckConversion<char32_t>(*codec, &CharCodec::ToUcs4, source, room);
        const Detection found = DetectEncoding(source.data(), source.size(), *codec);
        Require(found.codec != nullptr && static_cast<std::size_t>(found.skip) <= source.size());
        ResolveEncodingName(name, *codec);
        const bool isPage =
            codec->Kind() == CodecKind::SingleByte || codec->Kind() == CodecKind::DoubleByte;
        if (isPage) CheckPageRoundTrip(*codec, source);
    }
    CheckRoundTrip(source);

    static Xml::Ucs4UnicodeEncoding ucs4Le(false, true, false), ucs4Be(true, true, false);
    Xml::Encoding* const kEncodings[] = {Xml::Encoding::UTF8(),
                                         Xml::Encoding::Unicode(),
                                         Xml::Encoding::Latin1(),
                                         Xml::Encoding::BigEndianUnicode(),
                                         Xml::Encoding::Windows_1251(),
                                         Xml::Encoding::Windows_1252(),
                                         Xml::Encoding::GB2312(),
                                         Xml::Encoding::EUC_KR(),
                                         &ucs4Le,
                                         &ucs4Be};
    // All pairs would take most of the time. Each encoding has one partner, which the length
    // chooses.
    std::size_t partner = source.size();
    for (Xml::Encoding* from : kEncodings) {
        Xml::Encoding* const to = kEncodings[partner++ % std::size(kEncodings)];
        CheckPublicConversions(*from, *to, source, static_cast<unsigned>(room));
        // UTF-8 is copied whatever the room is.
        const std::size_t least = from == Xml::Encoding::UTF8() ? source.size() : 0;
        CheckCounts(*from, source, static_cast<unsigned>(std::max(room, least)));
    }
    return 0;
}
