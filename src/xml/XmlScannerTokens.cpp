// SPDX-License-Identifier: MIT

// The scans of the scanner: markup, content, references, and what ends at a terminator.

#include "encoding/CharClass.h"
#include "xml/Messages.h"
#include "xml/NameBytes.h"
#include "xml/RunScan.h"
#include "xml/StandardMessages.h"
#include "xml/XmlCharacters.h"
#include "xml/XmlScanner.h"

#include <algorithm>  // std::min

namespace Xml::detail {

// Markup.

// Ends a token of one character.
XmlToken XmlScanner::Finish(XmlToken token, std::string_view text) {
    ++position_;
    tokenText_ = text;
    return token;
}

// Ends a token of "/" or "?" and ">", with the position at the first.
XmlToken XmlScanner::FinishPair(XmlToken token, std::string_view text) {
    ++position_;
    if (!Accept(">")) Throw(Message::kUnexpectedToken);
    tokenText_ = text;
    return token;
}

XmlToken XmlScanner::ScanMarkup() {
    ++position_;
    RequireCharacter();
    switch (*position_) {
    case '!': return MarkupDeclaration();
    case '/': return Finish(XmlToken::ENDTAG, "</");
    case '?': return Finish(XmlToken::PI, "<?");
    default: break;
    }
    if ((*position_ == ':' && !standard_) || !StartsName(position_))
        Throw(Message::kExpectedElementName);
    tokenText_ = "<";
    return XmlToken::TAG;
}

// Scans what follows "<", with the position at "!".
XmlToken XmlScanner::MarkupDeclaration() {
    ++position_;
    if (Accept("--")) {
        tokenText_ = "<!--";
        return XmlToken::COMMENT;
    }
    if (Accept("[CDATA")) {
        if (!Accept("[")) {
            Throw(standard_ ? Message::kExpectedCDataStart : Message::kSyntaxError);
        }
        tokenText_ = "<![CDATA[";
        return XmlToken::CDATA;
    }
    tokenText_ = "<!";
    return XmlToken::DECL;
}

XmlToken XmlScanner::NextMarkupToken() {
    SkipWhitespace();
    tokenText_ = {};
    if (!HaveCharacter()) return XmlToken::ENDOFFILE;
    switch (*position_) {
    case '<': return ScanMarkup();
    case '>': return Finish(XmlToken::TAGEND, ">");
    case '=': return Finish(XmlToken::EQUALS, "=");
    case '/': return FinishPair(XmlToken::EMPTYTAGEND, "/>");
    case '?': return FinishPair(XmlToken::PIEND, "?>");
    case '"': quoteChar_ = '"'; return Finish(XmlToken::QUOTE, "\"");
    case '\'': quoteChar_ = '\''; return Finish(XmlToken::QUOTE, "'");
    default: break;
    }
    if (ClassAtPosition() == ToInt(CharClass::Invalid)) Throw(Message::kInvalidCharacter);
    return ScanName().token;
}

// Content.

XmlToken XmlScanner::ScanText(astring& text, int limit) {
    int room = mostWhitespace_;
    bool any = false;
    for (;;) {
        const unsigned char* end = SkipBlanks(position_);
        if (end - position_ >= room) {
            Take(text, position_ + room);
            return XmlToken::WHITESPACE;
        }
        if (*end == '<' || *end == '&') {
            if (end != position_ || any) {
                Take(text, end);
                return XmlToken::WHITESPACE;
            }
            return *end == '<' ? XmlToken::NONE : ScanReferenceStart();
        }
        if (end != dataEnd_ && !NonAsciiCut(end)) {
            return ScanCharacters(text, limit, (mostWhitespace_ - room) * UnitSize());
        }

        any = any || end != position_;
        room -= static_cast<int>(end - position_);
        Take(text, end);
        if (Refill() != Fill::More) return any ? XmlToken::WHITESPACE : EndOfText();
    }
}

// Scans the characters of a text up to "<" or "&", white space and line ends included. White space
// of `before` encoded bytes was taken already.
XmlToken XmlScanner::ScanCharacters(astring& text, int limit, int before) {
    const unsigned char* from = position_;
    auto taken = static_cast<std::size_t>(limit > 0 ? std::min(before, limit) : before);
    for (;;) {
        const unsigned char* stop = Find<'<', '&', ']'>(from);
        if (limit > 0) {
            const unsigned char* const reach =
                Within(stop, static_cast<std::size_t>(limit) - taken);
            taken += codec_->EncodedLength(position_, reach);
            if (reach != stop) {
                Take(text, reach);
                return XmlToken::TEXT;
            }
        }
        Take(text, stop);
        if (position_ != dataEnd_) {
            if (*position_ == '<' || *position_ == '&') return XmlToken::TEXT;
            if (*position_ == ']') {
                if (Accept("]]>")) {
                    Throw(standard_ ? Message::kBracketsInText : Message::kUnexpectedToken, "]]>");
                }
                from = position_ + 1;
                continue;
            }
        }
        if (!GoOn()) return XmlToken::TEXT;
        from = position_;
    }
}

// Steps over "&" and, for a character reference, "#".
XmlToken XmlScanner::ScanReferenceStart() {
    ++position_;
    tokenText_ = "&";
    RequireCharacter();
    return *position_ == '#' ? Finish(XmlToken::CHARREF, "&#") : XmlToken::ENTITYREF;
}

XmlToken XmlScanner::ScanValue(astring& text) {
    bool any = false;
    const unsigned char stop = TakeQuoted<'<', '&'>(text, any);
    if (any) return XmlToken::TEXT;
    switch (stop) {
    case 0: return XmlToken::ENDOFFILE;
    case '<': return XmlToken::NONE;
    case '&': return ScanReferenceStart();
    default: return Finish(XmlToken::ENDQUOTE, {});
    }
}

XmlToken XmlScanner::ScanValuePart(astring& text) {
    bool any = false;
    for (;;) {
        const unsigned char* const stop = Find<'&'>(position_);
        any = any || stop != position_;
        Take(text, stop);
        if (*position_ == '&') return any ? XmlToken::TEXT : ScanReferenceStart();
        if (!GoOn()) return any ? XmlToken::TEXT : EndOfText();
    }
}

int XmlScanner::ScanCharRef(astring& digits, bool check) {
    int code = 0;
    int base = 10;
    digits.clear();
    const std::size_t most = standard_ ? MostBytes() : static_cast<std::size_t>(mostWhitespace_);
    for (;;) {
        RequireCharacter();
        const unsigned char c = *position_;
        if (c == ';') break;
        if (digits.length() == most) Throw(Message::kInputBufferOverflow);
        if (c == 'x' && digits.empty()) {
            base = 16;
        } else {
            int digit = 0;
            if (c >= '0' && c <= '9') {
                digit = c - '0';
            } else if (base == 16 && c >= 'a' && c <= 'f') {
                digit = c - 'a' + 10;
            } else if (base == 16 && c >= 'A' && c <= 'F') {
                digit = c - 'A' + 10;
            } else {
                Throw(standard_ ? Message::kExpectedDigit : Message::kInvalidCharacter);
            }
            code = code * base + digit;
            if (code > utf8::kLastScalar) Throw(Message::kCharacterOverflow);
        }
        digits.push_back(static_cast<char>(c));
        ++position_;
    }
    ++position_;
    if (standard_ && (digits.empty() || digits == "x")) Throw(Message::kExpectedDigit);
    if (check && !IsXmlCharacter(code)) {
        Throw(standard_ ? Message::kNoXmlCharacter : Message::kInvalidCharacter);
    }
    return code;
}

// What ends at a terminator.

// Scans up to and with `terminator`, which starts with `First`, and appends what comes before it
// to `text`.
template <char First>
void XmlScanner::ScanUpTo(astring& text, std::string_view terminator, const char* eofMessage) {
    const unsigned char* from = position_;
    for (;;) {
        Take(text, Find<First>(from));
        if (*position_ == static_cast<unsigned char>(First)) {
            if (Accept(terminator)) return;
            from = position_ + 1;
        } else {
            if (!GoOn()) Throw(eofMessage);
            from = position_;
        }
    }
}

// [15] Comment ::= '<!--' ((Char - '-') | ('-' (Char - '-')))* '-->'
void XmlScanner::ScanComment(astring& text) {
    ScanUpTo<'-'>(text, "--", Message::kEofInComment);
    if (Accept(">")) return;
    if (!HaveCharacter()) Throw(Message::kEofInComment);
    Throw(Message::kCommentHoldsDashes);
}

void XmlScanner::ScanCData(astring& text) { ScanUpTo<']'>(text, "]]>", Message::kEofInCData); }

void XmlScanner::ScanPI(astring& text) { ScanUpTo<'?'>(text, "?>", Message::kEofInPI); }

std::string_view XmlScanner::TokenText() const { return tokenText_; }

}  // namespace Xml::detail
