// SPDX-License-Identifier: MIT
#pragma once

#include "encoding/CharCodec.h"
#include "encoding/CharacterByCharacter.h"
#include "encoding/Codecs.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

// What the tests of the codecs share: bytes written by plain formulas of the test's own, never by
// the code under test.

namespace encoding_test {

using Bytes = std::vector<unsigned char>;

struct CodecCase {
    const char* label;
    const Xml::detail::CharCodec& codec;
    int unit;  // bytes of a unit
    bool bigEndian;
    int lastCode;  // the last character that can be written
};

inline std::vector<CodecCase> AllCodecs() {
    using namespace Xml::detail;
    return {{"UTF-8", Utf8Codec(), 1, false, 0x10FFFF},
            {"UTF-16BE", Utf16BeCodec(), 2, true, 0x10FFFF},
            {"UTF-16LE", Utf16LeCodec(), 2, false, 0x10FFFF},
            {"UCS-2BE", Ucs2BeCodec(), 2, true, 0x10FFFF},
            {"UCS-2LE", Ucs2LeCodec(), 2, false, 0x10FFFF},
            {"UCS-4BE", Ucs4BeCodec(), 4, true, 0x10FFFF},
            {"UCS-4LE", Ucs4LeCodec(), 4, false, 0x10FFFF},
            {"ASCII", AsciiCodec(), 1, false, 0xFF},
            {"ISO-8859-1", Latin1Codec(), 1, false, 0xFF}};
}

/// The encodings whose characters stand in tables.
struct PageCase {
    const char* iconvName;
    const Xml::detail::CharCodec& codec;
};

inline std::vector<PageCase> WindowsPages() {
    using namespace Xml::detail;
    return {{"CP1250", Windows1250Codec()},
            {"CP1251", Windows1251Codec()},
            {"CP1252", Windows1252Codec()},
            {"CP1254", Windows1254Codec()},
            {"CP1257", Windows1257Codec()}};
}

inline std::vector<PageCase> DoubleBytePages() {
    using namespace Xml::detail;
    return {{"EUC-CN", Gb2312Codec()}, {"EUC-KR", EucKrCodec()}};
}

inline std::vector<PageCase> AllPages() {
    std::vector<PageCase> pages = WindowsPages();
    for (const PageCase& page : DoubleBytePages())
        pages.push_back(page);
    return pages;
}

inline std::vector<CodecCase> CodecsOfKind(Xml::detail::CodecKind kind) {
    std::vector<CodecCase> cases;
    for (const CodecCase& codecCase : AllCodecs()) {
        if (codecCase.codec.Kind() == kind) cases.push_back(codecCase);
    }
    return cases;
}

/// Names the instances of a parameterized test.
inline std::string CaseName(const testing::TestParamInfo<CodecCase>& test) {
    std::string name = test.param.label;
    std::erase(name, '-');
    return name;
}

inline void PrintTo(const CodecCase& codecCase, std::ostream* out) { *out << codecCase.label; }

/// Appends a number as one unit of `size` bytes.
inline void AppendUnit(Bytes& bytes, unsigned value, int size, bool bigEndian) {
    for (int i = 0; i < size; ++i) {
        const int shift = 8 * (bigEndian ? size - 1 - i : i);
        bytes.push_back(static_cast<unsigned char>(value >> shift & 0xFF));
    }
}

/// Appends a character in the encoding of a codec.
inline void AppendCharacter(Bytes& bytes, const CodecCase& codecCase, int code) {
    const auto value = static_cast<unsigned>(code);
    switch (codecCase.codec.Kind()) {
    case Xml::detail::CodecKind::Utf8: AppendUtf8(bytes, code); break;
    case Xml::detail::CodecKind::Utf16:
        if (code < 0x10000) {
            AppendUnit(bytes, value, 2, codecCase.bigEndian);
        } else {
            AppendUnit(bytes, 0xD800 + (value - 0x10000) / 0x400, 2, codecCase.bigEndian);
            AppendUnit(bytes, 0xDC00 + (value - 0x10000) % 0x400, 2, codecCase.bigEndian);
        }
        break;
    case Xml::detail::CodecKind::Ucs4: AppendUnit(bytes, value, 4, codecCase.bigEndian); break;
    case Xml::detail::CodecKind::SingleByte:
    case Xml::detail::CodecKind::DoubleByte: AppendUnit(bytes, value, 1, false); break;
    }
}

inline Bytes CharacterBytes(const CodecCase& codecCase, int code) {
    Bytes bytes;
    AppendCharacter(bytes, codecCase, code);
    return bytes;
}

inline Bytes TextBytes(const CodecCase& codecCase, std::u32string_view text) {
    Bytes bytes;
    for (const char32_t c : text)
        AppendCharacter(bytes, codecCase, static_cast<int>(c));
    return bytes;
}

inline bool IsSurrogate(int code) { return code >= 0xD800 && code <= 0xDFFF; }

inline const unsigned char* EndOf(const Bytes& bytes) { return bytes.data() + bytes.size(); }

}  // namespace encoding_test
