// SPDX-License-Identifier: MIT
#include "Escape.h"

#include "Utf8.h"

namespace Tool {

namespace {

enum class Style { Quoted, Word, Json };

// For each byte whether it can be copied as it is; the others are looked at one by one.
using ByteSet = std::array<bool, 256>;

constexpr ByteSet PlainBytes(Style style) {
    ByteSet plain{};
    for (std::size_t byte = 0x20; byte < 0x80; ++byte)
        plain[byte] = true;
    plain['"'] = plain['\\'] = false;
    if (style != Style::Json) plain[0x7F] = false;
    if (style == Style::Word) plain[' '] = plain['{'] = plain['}'] = false;
    return plain;
}

template <Style style>
constexpr ByteSet kPlain = PlainBytes(style);

void WriteHex(Output& out, std::string_view prefix, unsigned value, int digits) {
    out.Write(prefix);
    for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4) {
        out.Write("0123456789ABCDEF"[value >> shift & 0xF]);
    }
}

void WriteAscii(Output& out, Style style, unsigned byte) {
    switch (byte) {
    case '\n': out.Write("\\n"); return;
    case '\r': out.Write("\\r"); return;
    case '\t': out.Write("\\t"); return;
    case '"': out.Write("\\\""); return;
    case '\\': out.Write("\\\\"); return;
    default: break;
    }
    if (style == Style::Json) {
        WriteHex(out, "\\u", byte, 4);
    } else {
        WriteHex(out, "\\x", byte, 2);
    }
}

// Writes the first character of `text`, which cannot be copied unseen; returns its length.
std::size_t WriteSpecial(Output& out, Style style, std::string_view text) {
    const unsigned byte = static_cast<unsigned char>(text.front());
    if (byte < 0x80) {
        WriteAscii(out, style, byte);
        return 1;
    }
    const Utf8Character character = FirstCharacter(text);
    if (character.length == 0) {
        if (style == Style::Json) {
            out.Write("\\uFFFD");
        } else {
            WriteHex(out, "\\x", byte, 2);
        }
        return 1;
    }
    if (character.code < 0xA0 && style != Style::Json) {
        WriteHex(out, "\\u", static_cast<unsigned>(character.code), 4);
    } else {
        out.Write(text.substr(0, character.length));
    }
    return character.length;
}

template <Style style>
void WriteEscaped(Output& out, std::string_view text) {
    while (!text.empty()) {
        std::size_t run = 0;
        while (run < text.size() && kPlain<style>[static_cast<unsigned char>(text[run])])
            ++run;
        out.Write(text.substr(0, run));
        text.remove_prefix(run);
        if (!text.empty()) text.remove_prefix(WriteSpecial(out, style, text));
    }
}

}  // namespace

void WriteQuoted(Output& out, std::string_view text) {
    out.Write('"');
    WriteEscaped<Style::Quoted>(out, text);
    out.Write('"');
}

void WriteWord(Output& out, std::string_view text) { WriteEscaped<Style::Word>(out, text); }

void WriteJsonString(Output& out, std::string_view text) {
    out.Write('"');
    WriteEscaped<Style::Json>(out, text);
    out.Write('"');
}

}  // namespace Tool
