// SPDX-License-Identifier: MIT

// Bytes as text: base64 and hexadecimal, in lines of 76 characters.

#include "xml/WriterCore.h"

#include <algorithm>  // std::min
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
char* WriteGroups(char* to, const unsigned char* from, const unsigned char* end) {
    for (; from != end; from += 3) {
        const unsigned bits =
            static_cast<unsigned>(from[0]) << 16 | static_cast<unsigned>(from[1]) << 8 | from[2];
        to = Write(to, kBase64Pairs[bits >> 12]);
        to = Write(to, kBase64Pairs[bits & 0xFFF]);
    }
    return to;
}

// Writes one or two bytes that are left.
char* WriteRest(char* to, const unsigned char* from, std::size_t count) {
    const bool isPair = count == 2;
    const unsigned bits =
        static_cast<unsigned>(from[0]) << 16 | (isPair ? static_cast<unsigned>(from[1]) << 8 : 0);
    to = Write(to, kBase64Pairs[bits >> 12]);
    *to++ = isPair ? kBase64[bits >> 6 & 63] : '=';
    *to++ = '=';
    return to;
}

}  // namespace

// Writes a full line.
void WriterCore::PutLine(std::string_view line) {
    output_.PutBinaryLine(line);
    output_.PutToken(settings.newLineChars);
}

void WriterCore::Base64(const unsigned char* bytes, std::size_t count) {
    RequireText();
    if (count == 0) return;
    BeginContent();
    constexpr std::size_t kBytes = kLine / 4 * 3;
    char line[kLine + kTail];
    for (; count >= kBytes; bytes += kBytes, count -= kBytes) {
        WriteGroups(line, bytes, bytes + kBytes);
        PutLine({line, kLine});
    }
    const std::size_t whole = count / 3 * 3;
    char* end = WriteGroups(line, bytes, bytes + whole);
    if (whole != count) end = WriteRest(end, bytes + whole, count - whole);
    output_.PutBinaryLine({line, static_cast<std::size_t>(end - line)});
}

void WriterCore::BinHex(const unsigned char* bytes, std::size_t count) {
    RequireText();
    if (count == 0) return;
    BeginContent();
    char line[kLine];
    while (count > 0) {
        const std::size_t length = std::min(count, kLine / 2);
        char* end = line;
        for (std::size_t i = 0; i < length; ++i)
            end = Write(end, kHexPairs[bytes[i]]);
        bytes += length;
        count -= length;
        if (length == kLine / 2) {
            PutLine({line, kLine});
        } else {
            output_.PutBinaryLine({line, static_cast<std::size_t>(end - line)});
        }
    }
}

}  // namespace Xml::detail
