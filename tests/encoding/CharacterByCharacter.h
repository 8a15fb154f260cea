// SPDX-License-Identifier: MIT
#pragma once

#include "encoding/CharCodec.h"

#include <cstddef>
#include <span>
#include <vector>

namespace encoding_test {

/// What a bulk decoding did.
struct Decoded {
    std::size_t consumed = 0;
    std::vector<unsigned char> text;  // UTF-8
    Xml::detail::DecodeEnd end = Xml::detail::DecodeEnd::SourceUsed;

    bool operator==(const Decoded&) const = default;
};

/// Appends a code in UTF-8, surrogates included (the bit patterns of RFC 3629, section 3).
inline void AppendUtf8(std::vector<unsigned char>& bytes, int code) {
    auto push = [&bytes](int byte) { bytes.push_back(static_cast<unsigned char>(byte)); };
    if (code < 0x80) {
        push(code);
    } else if (code < 0x800) {
        push(0xC0 + code / 64);
        push(0x80 + code % 64);
    } else if (code < 0x10000) {
        push(0xE0 + code / 4096);
        push(0x80 + code / 64 % 64);
        push(0x80 + code % 64);
    } else {
        push(0xF0 + code / 262144);
        push(0x80 + code / 4096 % 64);
        push(0x80 + code / 64 % 64);
        push(0x80 + code % 64);
    }
}

/// Appends what text gets for a character of a single-byte encoding: above ASCII always two bytes,
/// of which the first takes all bits but six, as far as it has them.
inline void AppendSingleByteText(std::vector<unsigned char>& bytes, int code) {
    if (code < 0x80) {
        bytes.push_back(static_cast<unsigned char>(code));
        return;
    }
    bytes.push_back(static_cast<unsigned char>((code / 64 | 0xC0) % 256));
    bytes.push_back(static_cast<unsigned char>(0x80 + code % 64));
}

/// Returns how many bytes an ASCII character takes.
inline std::ptrdiff_t UnitSize(Xml::detail::CodecKind kind) {
    switch (kind) {
    case Xml::detail::CodecKind::Utf16: return 2;
    case Xml::detail::CodecKind::Ucs4: return 4;
    case Xml::detail::CodecKind::Utf8:
    case Xml::detail::CodecKind::SingleByte:
    case Xml::detail::CodecKind::DoubleByte: break;
    }
    return 1;
}

/// Does what DecodeRun() does with the operations that take one character at a time.
inline Decoded CharacterByCharacter(const Xml::detail::CharCodec& codec,
                                    std::span<const unsigned char> source, std::size_t room) {
    Decoded result;
    const unsigned char* position = source.data();
    const unsigned char* const end = position + source.size();
    for (;;) {
        const int charClass = codec.ClassAt(position, end);
        if (charClass == 0 || charClass == 2) break;
        // A control character has the class of invalid bytes, but is a character.
        const int code = codec.Decode(position, end);
        const bool isControl =
            code >= 0 && code < 0x20 && codec.Next(position) - position == UnitSize(codec.Kind());
        if (charClass == 1 && !isControl) {
            result.end = Xml::detail::DecodeEnd::Invalid;
            break;
        }
        std::vector<unsigned char> character;
        if (codec.Kind() == Xml::detail::CodecKind::SingleByte) {
            AppendSingleByteText(character, code);
        } else {
            AppendUtf8(character, code);
        }
        if (result.text.size() + character.size() > room) {
            result.end = Xml::detail::DecodeEnd::NoRoom;
            break;
        }
        result.text.insert(result.text.end(), character.begin(), character.end());
        position = codec.Next(position);
    }
    result.consumed = static_cast<std::size_t>(position - source.data());
    return result;
}

/// Runs DecodeRun() once, into a block of exactly the room given, so that the sanitizer sees a byte
/// too many.
inline Decoded InOneRun(const Xml::detail::CharCodec& codec, std::span<const unsigned char> source,
                        std::size_t room) {
    Decoded result;
    result.text.resize(room);
    const unsigned char* position = source.data();
    unsigned char* destination = result.text.data();
    result.end =
        codec.DecodeRun(position, position + source.size(), destination, destination + room);
    result.consumed = static_cast<std::size_t>(position - source.data());
    result.text.resize(static_cast<std::size_t>(destination - result.text.data()));
    return result;
}

}  // namespace encoding_test
