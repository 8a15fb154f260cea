// SPDX-License-Identifier: MIT
#include "dom/css/SheetDecoding.h"

#include <espalier/dom/css/DecodeStyleSheet.h>
#include <espalier/encoding/Encoding.h>

#include "dom/css/AsciiCase.h"
#include "dom/css/CssCharacters.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace Dom::CSS::detail {

namespace {

using Bytes = std::span<const unsigned char>;
using GetEncoding = Xml::Encoding* (*)();

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kBigMark = "\xFE\xFF";
constexpr std::string_view kLittleMark = "\xFF\xFE";

struct Label {
    std::string_view name;
    GetEncoding encoding;
};

// The labels of the Encoding Standard, section 4.2, that are in use for what the library has.
// Deliberate: those of ISO-8859-1 and of ASCII stand for windows-1252 there.
constexpr Label kLabels[] = {
    {"utf-8", Xml::Encoding::UTF8},
    {"utf8", Xml::Encoding::UTF8},
    {"unicode-1-1-utf-8", Xml::Encoding::UTF8},
    {"utf-16", Xml::Encoding::Unicode},
    {"utf-16le", Xml::Encoding::Unicode},
    {"unicode", Xml::Encoding::Unicode},
    {"iso-10646-ucs-2", Xml::Encoding::Unicode},
    {"utf-16be", Xml::Encoding::BigEndianUnicode},
    {"windows-1252", Xml::Encoding::Windows_1252},
    {"cp1252", Xml::Encoding::Windows_1252},
    {"iso-8859-1", Xml::Encoding::Windows_1252},
    {"iso8859-1", Xml::Encoding::Windows_1252},
    {"iso_8859-1", Xml::Encoding::Windows_1252},
    {"latin1", Xml::Encoding::Windows_1252},
    {"l1", Xml::Encoding::Windows_1252},
    {"ascii", Xml::Encoding::Windows_1252},
    {"us-ascii", Xml::Encoding::Windows_1252},
    {"windows-1250", Xml::Encoding::Windows_1250},
    {"cp1250", Xml::Encoding::Windows_1250},
    {"windows-1251", Xml::Encoding::Windows_1251},
    {"cp1251", Xml::Encoding::Windows_1251},
    {"windows-1254", Xml::Encoding::Windows_1254},
    {"cp1254", Xml::Encoding::Windows_1254},
    {"iso-8859-9", Xml::Encoding::Windows_1254},
    {"latin5", Xml::Encoding::Windows_1254},
    {"windows-1257", Xml::Encoding::Windows_1257},
    {"cp1257", Xml::Encoding::Windows_1257},
    {"gb2312", Xml::Encoding::GB2312},
    {"gbk", Xml::Encoding::GB2312},
    {"chinese", Xml::Encoding::GB2312},
    {"euc-kr", Xml::Encoding::EUC_KR},
    {"ks_c_5601-1987", Xml::Encoding::EUC_KR},
    {"korean", Xml::Encoding::EUC_KR},
};

Xml::Encoding* FindEncoding(std::string_view name) {
    name = Trimmed(name);
    const auto* const found = std::ranges::find_if(
        kLabels, [name](const Label& label) { return EqualIgnoringCase(label.name, name); });
    return found == std::end(kLabels) ? nullptr : found->encoding();
}

// What an "@charset" at the begin says, if it is one. Who can read it does not have UTF-16.
Xml::Encoding* DeclaredEncoding(std::string_view text) {
    constexpr std::string_view kBegin = "@charset \"";
    constexpr std::size_t kMostBytes = 1024;
    text = text.substr(0, kMostBytes);
    if (!text.starts_with(kBegin)) return nullptr;
    text.remove_prefix(kBegin.size());
    const std::size_t end = text.find("\";");
    if (end == std::string_view::npos) return nullptr;
    Xml::Encoding* const encoding = FindEncoding(text.substr(0, end));
    const bool isWide =
        encoding == Xml::Encoding::Unicode() || encoding == Xml::Encoding::BigEndianUnicode();
    return isWide ? Xml::Encoding::UTF8() : encoding;
}

bool HasWideMark(std::string_view text) {
    return text.starts_with(kBigMark) || text.starts_with(kLittleMark);
}

Xml::Encoding* EncodingOf(std::string_view text, std::string_view protocol,
                          std::string_view environment) {
    if (text.starts_with(kUtf8Mark)) return Xml::Encoding::UTF8();
    if (text.starts_with(kBigMark)) return Xml::Encoding::BigEndianUnicode();
    if (text.starts_with(kLittleMark)) return Xml::Encoding::Unicode();
    Xml::Encoding* encoding = FindEncoding(protocol);
    if (encoding == nullptr) encoding = DeclaredEncoding(text);
    if (encoding == nullptr) encoding = FindEncoding(environment);
    return encoding == nullptr ? Xml::Encoding::UTF8() : encoding;
}

std::string_view AsText(Bytes bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// Returns how many bytes a character of UTF-8 has (Unicode 15 table 3-7), or 0 with the number of
// bytes that are the begin of one in `bad`, at least 1.
std::size_t CharacterLength(std::string_view text, std::size_t& bad) {
    const auto byte = [text](std::size_t i) {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
    };
    const unsigned lead = byte(0);
    bad = 1;
    if (lead < 0x80) return 1;
    if (lead < 0xC2 || lead > 0xF4) return 0;
    const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    const unsigned least = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const unsigned most = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (byte(1) < least || byte(1) > most) return 0;
    for (bad = 2; bad < length; ++bad) {
        if ((byte(bad) & 0xC0) != 0x80) return 0;
    }
    return length;
}

// Each beginning of a character that does not go on is one U+FFFD (Encoding Standard section 4.1).
std::string Repaired(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        std::size_t bad = 0;
        const std::size_t length = CharacterLength(text, bad);
        if (length > 0) {
            result += text.substr(0, length);
            text.remove_prefix(length);
        } else {
            result += kReplacement;
            text.remove_prefix(std::min(bad, text.size()));
        }
    }
    return result;
}

bool IsUtf8(std::string_view text) {
    const auto isAscii = [](char character) {
        return static_cast<unsigned char>(character) < 0x80;
    };
    for (;;) {
        const auto other = std::ranges::find_if_not(text, isAscii);
        text.remove_prefix(static_cast<std::size_t>(other - text.begin()));
        if (text.empty()) return true;
        std::size_t bad = 0;
        const std::size_t length = CharacterLength(text, bad);
        if (length == 0) return false;
        text.remove_prefix(length);
    }
}

std::string Converted(Bytes bytes, Xml::Encoding& encoding) {
    constexpr unsigned kMostInput = 16;  // that one character may take
    std::string text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        unsigned char character[8];
        unsigned consumed = 0;
        const auto offered = static_cast<unsigned>(std::min<std::size_t>(bytes.size(), kMostInput));
        const unsigned written =
            Xml::Encoding::ConvertChar(&encoding, Xml::Encoding::UTF8(), bytes.data(), offered,
                                       character, sizeof character, consumed);
        if (consumed == 0) {  // the end cuts it short
            text += kReplacement;
            break;
        }
        if (written == 0) text += '\0';
        text.append(reinterpret_cast<const char*>(character), written);
        bytes = bytes.subspan(std::min<std::size_t>(consumed, bytes.size()));
    }
    return text;
}

}  // namespace

std::unique_ptr<const std::string> TextOf(std::string_view text) {
    if (text.starts_with(kUtf8Mark)) text.remove_prefix(kUtf8Mark.size());
    auto copy = std::make_unique<std::string>(text);
    if (text.find('\0') != std::string_view::npos) {
        copy->clear();
        for (const char character : text) {
            if (character == '\0') {
                *copy += kReplacement;
            } else {
                *copy += character;
            }
        }
    }
    return copy;
}

std::unique_ptr<const std::string> Decode(Bytes bytes, std::string_view protocol,
                                          std::string_view environment) {
    const std::string_view text = AsText(bytes);
    Xml::Encoding* const encoding = EncodingOf(text, protocol, environment);
    if (encoding != Xml::Encoding::UTF8()) {
        return TextOf(Converted(HasWideMark(text) ? bytes.subspan(2) : bytes, *encoding));
    }
    return IsUtf8(text) ? TextOf(text) : TextOf(Repaired(text));
}

bool IsEncodingName(std::string_view name) { return FindEncoding(name) != nullptr; }

std::string_view EncodingName(Bytes bytes, std::string_view protocol,
                              std::string_view environment) {
    Xml::Encoding* const encoding = EncodingOf(AsText(bytes), protocol, environment);
    const auto* const found = std::ranges::find_if(
        kLabels, [encoding](const Label& label) { return label.encoding() == encoding; });
    return found == std::end(kLabels) ? kLabels[0].name : found->name;
}

}  // namespace Dom::CSS::detail

namespace Dom::CSS {

astring DecodeStyleSheet(std::span<const unsigned char> bytes, std::string_view protocolEncoding,
                         std::string_view environmentEncoding) {
    return astring(*detail::Decode(bytes, protocolEncoding, environmentEncoding));
}

}  // namespace Dom::CSS
