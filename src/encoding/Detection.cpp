// SPDX-License-Identifier: MIT
#include "encoding/Detection.h"

#include "encoding/Codecs.h"

#include <algorithm>
#include <iterator>  // std::begin, std::end

namespace Xml::detail {

// Detection (XML 1.0, Appendix F):
//
//     first bytes            codec                   skipped
//     ---------------------  ----------------------  ---------------------
//     FE                     UTF-16 big-endian       2
//     FF FE 00               UCS-4 little-endian     4
//     FF FE                  UTF-16 little-endian    2
//     EF BB BF               UTF-8                   3
//     00 00 FE FF            UCS-4 big-endian        4
//     00 00                  UCS-4 big-endian        0
//     00 3C                  UTF-16 big-endian       0
//     00                     the one installed       0
//     3C 00 00               UCS-4 little-endian     0
//     3C 00                  UTF-16 little-endian    0
//     4C                     EBCDIC, refused         0
//     any other              UTF-8                   0

namespace {

constexpr std::size_t kBytesNeeded = 4;

Detection Found(const CharCodec& codec, int skip = 0) { return {&codec, skip, false}; }

Detection DetectAfterFF(const unsigned char* bytes) {
    if (bytes[1] != 0xFE) return Found(Utf8Codec());
    // Deliberate: the fourth byte is not looked at. No document begins with U+0000.
    return bytes[2] == 0 ? Found(Ucs4LeCodec(), 4) : Found(Utf16LeCodec(), 2);
}

Detection DetectAfterEF(const unsigned char* bytes) {
    return Found(Utf8Codec(), bytes[1] == 0xBB && bytes[2] == 0xBF ? 3 : 0);
}

Detection DetectAfterNul(const unsigned char* bytes, const CharCodec& installed) {
    if (bytes[1] == 0) return Found(Ucs4BeCodec(), bytes[2] == 0xFE && bytes[3] == 0xFF ? 4 : 0);
    return Found(bytes[1] == '<' ? Utf16BeCodec() : installed);
}

Detection DetectAfterLess(const unsigned char* bytes) {
    if (bytes[1] != 0) return Found(Utf8Codec());
    return Found(bytes[2] == 0 ? Ucs4LeCodec() : Utf16LeCodec());
}

}  // namespace

Detection DetectEncoding(const unsigned char* bytes, std::size_t count,
                         const CharCodec& installed) {
    constexpr unsigned char kEbcdicLess = 0x4C;
    if (count < kBytesNeeded) return Found(Utf8Codec());
    switch (bytes[0]) {
    // Deliberate: FE alone decides. No text in another encoding begins with it.
    case 0xFE: return Found(Utf16BeCodec(), 2);
    case 0xFF: return DetectAfterFF(bytes);
    case 0xEF: return DetectAfterEF(bytes);
    case 0x00: return DetectAfterNul(bytes, installed);
    case '<': return DetectAfterLess(bytes);
    // Deliberate: 4C is also the letter L, but no document in another encoding begins with it.
    case kEbcdicLess: return {&Utf8Codec(), 0, true};
    default: return Found(Utf8Codec());
    }
}

// Encoding names. A name belongs to a group; the group decides which detected encodings it fits and
// which codec is used from then on. A code page fits them all.

namespace {

enum class NameGroup : unsigned char {
    Ascii,
    Utf8,
    Latin1,
    Gb2312,
    EucKr,
    Windows1250,
    Windows1251,
    Windows1252,
    Windows1254,
    Windows1257,
    Utf16,
    Baltic,
    Utf16Le,
    Utf16Be,
    Ucs2,
    Ucs4,
    Ucs4Le,
    Ucs4Be
};

struct EncodingName {
    std::string_view name;
    NameGroup group;
};

// clang-format off
constexpr EncodingName kNames[] = {
    {"ASCII", NameGroup::Ascii},
    {"US-ASCII", NameGroup::Ascii},
    {"ISO646-US", NameGroup::Ascii},
    {"iso646-us", NameGroup::Ascii},
    {"us", NameGroup::Ascii},
    {"ANSI_X3.4-1968", NameGroup::Ascii},
    {"ANSI_X3.4_1968", NameGroup::Ascii},
    {"iso-ir-6", NameGroup::Ascii},
    {"ISO_646.irv:1991", NameGroup::Ascii},
    {"IBM367", NameGroup::Ascii},
    {"cp367", NameGroup::Ascii},
    {"csASCII", NameGroup::Ascii},

    {"UTF-8", NameGroup::Utf8},
    {"utf-8", NameGroup::Utf8},

    {"ISO-8859-1", NameGroup::Latin1},
    {"ISO-8859", NameGroup::Latin1},
    {"iso-8859", NameGroup::Latin1},
    {"iso-8859-1", NameGroup::Latin1},
    {"iso-ir-101", NameGroup::Latin1},
    {"ISO_8859-1", NameGroup::Latin1},
    {"latin1", NameGroup::Latin1},
    {"latin-1", NameGroup::Latin1},
    {"l1", NameGroup::Latin1},
    {"IBM819", NameGroup::Latin1},
    {"CP819", NameGroup::Latin1},
    {"csISOLatin1", NameGroup::Latin1},
    {"ISO_8859-1:1987", NameGroup::Latin1},
    {"ISO-10646-Unicode-Latin1", NameGroup::Latin1},
    {"csUnicodeLatin1", NameGroup::Latin1},
    {"ISO-10646", NameGroup::Latin1},

    {"gb2312", NameGroup::Gb2312},
    {"GB2312", NameGroup::Gb2312},
    {"csGB2312", NameGroup::Gb2312},
    {"ibm-1383_P110-1999", NameGroup::Gb2312},
    {"ibm-1383_VPUA", NameGroup::Gb2312},
    {"ibm-1383", NameGroup::Gb2312},
    {"cp1383", NameGroup::Gb2312},
    {"1383", NameGroup::Gb2312},
    {"EUC-CN", NameGroup::Gb2312},
    {"ibm-eucCN", NameGroup::Gb2312},
    {"hp15CN", NameGroup::Gb2312},

    {"EUC-KR", NameGroup::EucKr},
    {"euc-kr", NameGroup::EucKr},
    {"KS_C_5601-1987", NameGroup::EucKr},
    {"windows-51949", NameGroup::EucKr},
    {"csEUCKR", NameGroup::EucKr},
    {"ibm-eucKR", NameGroup::EucKr},
    {"KSC_5601", NameGroup::EucKr},
    {"5601", NameGroup::EucKr},
    {"ibm-970_P110_P110-2006_U2", NameGroup::EucKr},
    {"ibm-970", NameGroup::EucKr},
    {"ibm-970_VPUA", NameGroup::EucKr},
    {"cp970", NameGroup::EucKr},
    {"970", NameGroup::EucKr},

    {"windows-1250", NameGroup::Windows1250},
    {"Windows-1250", NameGroup::Windows1250},
    {"cp1250", NameGroup::Windows1250},
    {"ANSI1250", NameGroup::Windows1250},

    {"windows-1251", NameGroup::Windows1251},
    {"Windows-1251", NameGroup::Windows1251},
    {"cp1251", NameGroup::Windows1251},
    {"ANSI1251", NameGroup::Windows1251},
    {"ibm-5347_P100-1998", NameGroup::Windows1251},
    {"ibm-5347", NameGroup::Windows1251},

    {"windows-1252", NameGroup::Windows1252},
    {"Windows-1252", NameGroup::Windows1252},
    {"cp1252", NameGroup::Windows1252},
    {"ANSI1252", NameGroup::Windows1252},

    {"windows-1254", NameGroup::Windows1254},
    {"Windows-1254", NameGroup::Windows1254},
    {"cp1254", NameGroup::Windows1254},
    {"ANSI1254", NameGroup::Windows1254},
    {"iso-8859-9", NameGroup::Windows1254},
    {"ISO-8859-9", NameGroup::Windows1254},
    {"latin5", NameGroup::Windows1254},
    {"latin-5", NameGroup::Windows1254},

    {"windows-1257", NameGroup::Windows1257},
    {"Windows-1257", NameGroup::Windows1257},
    {"cp1257", NameGroup::Windows1257},
    {"ANSI1257", NameGroup::Windows1257},

    {"UTF-16", NameGroup::Utf16},
    {"utf-16", NameGroup::Utf16},
    // Deliberate: the Baltic names are taken only in a UTF-16 document, and change nothing there.
    {"iso-8859-13", NameGroup::Baltic},
    {"ISO-8859-13", NameGroup::Baltic},
    {"latin7", NameGroup::Baltic},
    {"latin-7", NameGroup::Baltic},

    {"UTF-16LE", NameGroup::Utf16Le},
    {"utf-16le", NameGroup::Utf16Le},
    {"UTF-16BE", NameGroup::Utf16Be},
    {"utf-16be", NameGroup::Utf16Be},

    {"ISO-10646-UCS-2", NameGroup::Ucs2},
    {"iso-10646-ucs-2", NameGroup::Ucs2},
    {"csUnicode", NameGroup::Ucs2},

    {"ISO-10646-UCS-4", NameGroup::Ucs4},
    {"iso-10646-ucs-4", NameGroup::Ucs4},
    {"UCS-4", NameGroup::Ucs4},
    {"ucs-4", NameGroup::Ucs4},
    {"UTF-32", NameGroup::Ucs4},
    {"utf-32", NameGroup::Ucs4},

    {"UTF-32LE", NameGroup::Ucs4Le},
    {"utf-32le", NameGroup::Ucs4Le},
    {"UTF-32BE", NameGroup::Ucs4Be},
    {"utf-32be", NameGroup::Ucs4Be},
};
// clang-format on

// Returns `codec` when the condition holds and null, a refusal, otherwise.
const CharCodec* When(bool condition, const CharCodec& codec) {
    return condition ? &codec : nullptr;
}

const CharCodec* ResolveGroup(NameGroup group, const CharCodec& detected) {
    const bool ascii = &detected == &AsciiCodec();
    const bool bytes = ascii || &detected == &Latin1Codec() || &detected == &Utf8Codec();
    const bool utf16Be = &detected == &Utf16BeCodec();
    const bool utf16Le = &detected == &Utf16LeCodec();
    const bool ucs4Be = &detected == &Ucs4BeCodec();
    const bool ucs4Le = &detected == &Ucs4LeCodec();
    switch (group) {
    case NameGroup::Ascii: return When(bytes, AsciiCodec());
    case NameGroup::Utf8: return When(bytes, Utf8Codec());
    case NameGroup::Latin1: return &Latin1Codec();
    case NameGroup::Gb2312: return &Gb2312Codec();
    case NameGroup::EucKr: return &EucKrCodec();
    case NameGroup::Windows1250: return &Windows1250Codec();
    case NameGroup::Windows1251: return &Windows1251Codec();
    case NameGroup::Windows1252: return &Windows1252Codec();
    case NameGroup::Windows1254: return &Windows1254Codec();
    case NameGroup::Windows1257: return &Windows1257Codec();
    case NameGroup::Utf16:
    case NameGroup::Baltic: return When(utf16Be || utf16Le, detected);
    case NameGroup::Utf16Le: return When(utf16Le, detected);
    case NameGroup::Utf16Be: return When(utf16Be, detected);
    case NameGroup::Ucs2:
        if (utf16Be) return &Ucs2BeCodec();
        return When(utf16Le, Ucs2LeCodec());
    case NameGroup::Ucs4: return When(ucs4Be || ucs4Le, detected);
    case NameGroup::Ucs4Le: return When(ucs4Le, detected);
    case NameGroup::Ucs4Be: return When(ucs4Be, detected);
    }
    return &detected;
}

}  // namespace

const CharCodec* ResolveEncodingName(std::string_view name, const CharCodec& detected) {
    for (const EncodingName& entry : kNames) {
        if (entry.name == name) return ResolveGroup(entry.group, detected);
    }
    return &detected;
}

namespace {

bool EqualsWithoutCase(std::string_view left, std::string_view right) {
    const auto lower = [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
    };
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [lower](char a, char b) { return lower(a) == lower(b); });
}

}  // namespace

NamedEncoding FindNamedEncoding(std::string_view name, const CharCodec& detected, bool hasMark) {
    const auto* const entry = std::find_if(
        std::begin(kNames), std::end(kNames),
        [name](const EncodingName& known) { return EqualsWithoutCase(known.name, name); });
    if (entry == std::end(kNames) || entry->group == NameGroup::Baltic) return {nullptr, false};
    const CharCodec* const codec = ResolveGroup(entry->group, detected);
    // Units of several bytes, and a mark, tell what the encoding is.
    const bool isBytes = detected.Kind() == CodecKind::Utf8;
    const bool isSettled = hasMark || !isBytes;
    const bool fits = codec != nullptr && (!isSettled || codec->Kind() == detected.Kind());
    return {fits ? &ExactCodec(*codec) : nullptr, true};
}

}  // namespace Xml::detail
