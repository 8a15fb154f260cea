// SPDX-License-Identifier: MIT

// Bytes as text: base64 and hexadecimal, in lines of 76 characters.

#include "xml/WriterCore.h"

#include <array>

namespace Xml::detail {

namespace {

constexpr std::size_t kLine = 76;
constexpr std::size_t kTail = 4;  // base64 of what is left of a group, behind an unfinished line

// RFC 4648 section 4.
constexpr char kBase64[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr char kHex[] = "0123456789ABCDEF";

struct Pair {
    char first;
    char second;
};

// Two characters for each 12 bits.
constexpr auto kBase64Pairs = [] {
    std::array<Pair, 4096> pairs{};
    for (unsigned bits = 0; bits < pairs.size(); ++bits)
        pairs[bits] = {kBase64[bits >> 6], kBase64[bits & 63]};
    return pairs;
}();

constexpr auto kHexPairs = [] {
    std::array<Pair, 256> pairs{};
    for (unsigned byte = 0; byte < pairs.size(); ++byte)
        pairs[byte] = {kHex[byte >> 4], kHex[byte & 15]};
    return pairs;
}();

char* Write(char* to, Pair pair) {
    to[0] = pair.first;
    to[1] = pair.second;
    return to + 2;
}

// Writes whole groups of three bytes.
char* WriteGroups(char* to, std::span<const unsigned char> bytes) {
    for (const unsigned char *from = bytes.data(), *end = from + bytes.size(); from != end;
         from += 3) {
        const unsigned bits =
            static_cast<unsigned>(from[0]) << 16 | static_cast<unsigned>(from[1]) << 8 | from[2];
        to = Write(to, kBase64Pairs[bits >> 12]);
        to = Write(to, kBase64Pairs[bits & 0xFFF]);
    }
    return to;
}

// Writes one or two bytes that are left.
char* WriteRest(char* to, std::span<const unsigned char> bytes) {
    const bool isPair = bytes.size() == 2;
    const unsigned bits =
        static_cast<unsigned>(bytes[0]) << 16 | (isPair ? static_cast<unsigned>(bytes[1]) << 8 : 0);
    to = Write(to, kBase64Pairs[bits >> 12]);
    *to++ = isPair ? kBase64[bits >> 6 & 63] : '=';
    *to++ = '=';
    return to;
}

char* WriteDigits(char* to, std::span<const unsigned char> bytes) {
    for (const unsigned char byte : bytes)
        to = Write(to, kHexPairs[byte]);
    return to;
}

}  // namespace

// Writes a full line.
void WriterCore::PutLine(std::string_view line) {
    output_.PutBinaryLine(line);
    output_.PutToken(settings.newLineChars);
}

// Writes what the last line holds, if anything.
void WriterCore::PutPartOfLine(std::string_view line) {
    if (!line.empty()) output_.PutBinaryLine(line);
}

void WriterCore::Base64(std::span<const unsigned char> bytes) {
    RequireText();
    BeginContent();
    constexpr std::size_t kBytes = kLine / 4 * 3;
    char line[kLine + kTail];
    for (; bytes.size() >= kBytes; bytes = bytes.subspan(kBytes)) {
        WriteGroups(line, bytes.first(kBytes));
        PutLine({line, kLine});
    }
    const std::size_t whole = bytes.size() / 3 * 3;
    char* end = WriteGroups(line, bytes.first(whole));
    if (whole != bytes.size()) end = WriteRest(end, bytes.subspan(whole));
    PutPartOfLine({line, end});
}

void WriterCore::BinHex(std::span<const unsigned char> bytes) {
    RequireText();
    BeginContent();
    constexpr std::size_t kBytes = kLine / 2;
    char line[kLine];
    for (; bytes.size() >= kBytes; bytes = bytes.subspan(kBytes)) {
        WriteDigits(line, bytes.first(kBytes));
        PutLine({line, kLine});
    }
    PutPartOfLine({line, WriteDigits(line, bytes)});
}

}  // namespace Xml::detail
