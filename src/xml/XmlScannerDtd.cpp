// SPDX-License-Identifier: MIT

// The scans of the document type declaration.

#include "encoding/CharClass.h"
#include "xml/Messages.h"
#include "xml/NameBytes.h"
#include "xml/RunScan.h"
#include "xml/XmlScanner.h"

#include <cstring>

namespace Xml::detail {

// Tokens.

// Sees to it that a valid character follows inside of a token.
void XmlScanner::RequireInDtd(const char* message) {
    if (!HaveCharacter()) Throw(message);
    RequireCharacter();
}

XmlToken XmlScanner::ScanDtdToken() {
    SkipWhitespace();
    tokenText_ = {};
    if (!HaveCharacter()) return XmlToken::ENDOFFILE;
    RequireCharacter();
    switch (*position_) {
    case '<': Finish(XmlToken::TAG, "<"); return ScanDtdMarkup();
    case '>': return Finish(XmlToken::TAGEND, ">");
    case '[': return Finish(XmlToken::DOCTYPEBEGIN, "[");
    case ']': return Finish(XmlToken::DOCTYPEEND, "]");
    case '=': return Finish(XmlToken::EQUALS, "=");
    case '"': quoteChar_ = '"'; return Finish(XmlToken::QUOTE, "\"");
    case '\'': quoteChar_ = '\''; return Finish(XmlToken::QUOTE, "'");
    case '%':
        Finish(XmlToken::PERCENT, "%");
        RequireInDtd(Message::kEofInDtdToken);
        return StartsName(position_) ? XmlToken::PEREF : XmlToken::PERCENT;
    default: return DtdName();
    }
}

XmlToken XmlScanner::ScanDtdMarkup() {
    RequireInDtd(Message::kEofInDtdMarkup);
    switch (*position_) {
    case '!': break;
    case '/': return Finish(XmlToken::ENDTAG, "</");
    case '?': return Finish(XmlToken::PI, "<?");
    default: return XmlToken::TAG;
    }
    Finish(XmlToken::DECL, "<!");
    RequireInDtd(Message::kEofInDtdToken);
    if (*position_ != '-') return XmlToken::DECL;
    ++position_;
    RequireInDtd(Message::kEofInDtdToken);
    if (*position_ != '-') return XmlToken::DECL;
    return Finish(XmlToken::COMMENT, "<!--");
}

// Scans a name, a name token, or a character that begins none.
XmlToken XmlScanner::DtdName() {
    if (ScanName().token != XmlToken::ERROR) return name_.token;
    longName_.clear();
    std::size_t taken = 0;  // encoded bytes
    do {
        TakeLongNamePart(taken);
    } while (HaveCharacter() && SkipNameCharacters(position_) != position_);
    const bool isToken = !longName_.empty();
    if (!isToken) {
        Take(longName_, position_ + (*position_ < 0x80 ? 1 : LengthAt(position_)));
    }
    tokenText_ = longName_.view();
    return isToken ? XmlToken::NMTOKEN : XmlToken::ERROR;
}

// Literals.

XmlToken XmlScanner::ScanEntityValue(astring& text) {
    bool any = false;
    const unsigned char stop = TakeQuoted<'&', '%'>(text, any);
    if (any) return XmlToken::ENTTEXT;
    switch (stop) {
    case 0: return XmlToken::ENDOFFILE;
    case '&': return ScanReferenceStart();
    case '%': return Finish(XmlToken::PEREF, "%");
    default: return Finish(XmlToken::ENDQUOTE, {});
    }
}

void XmlScanner::ScanLiteral(astring& text) {
    if (!TakeLiteral(text)) Throw(Message::kEofInLiteral);
}

bool XmlScanner::TakeLiteral(astring& text) {
    const auto quote = static_cast<unsigned char>(quoteChar_);
    std::size_t taken = 0;  // encoded bytes
    for (const unsigned char* from = position_;;) {
        const unsigned char* const stop = Find<'"', '\''>(from);
        const unsigned char* const reach = Within(stop, MostBytes() - taken);
        taken += codec_->EncodedLength(position_, reach);
        Take(text, reach);
        if (reach != stop) Throw(Message::kInputBufferOverflow);
        from = position_;
        if (position_ != dataEnd_ && *position_ == quote) return true;
        if (position_ != dataEnd_ && (*position_ == '"' || *position_ == '\'')) {
            ++from;  // the other quotation mark belongs to the literal
        } else if (!GoOn()) {
            return false;
        } else {
            from = position_;
        }
    }
}

namespace {

// [13] PubidChar ::= #x20 | #xD | #xA | [a-zA-Z0-9] | [-'()+,./:=?;!*#@$_%]
bool IsPubidCharacter(unsigned char c) {
    if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')) return true;
    return c != 0 && std::strchr(" \r\n-'()+,./:=?;!*#@$_%", c) != nullptr;
}

}  // namespace

void XmlScanner::ScanPubidLiteral(astring& text) {
    if (!TakePubidLiteral(text)) Throw(Message::kEofInLiteral);
}

bool XmlScanner::TakePubidLiteral(astring& text) {
    const auto quote = static_cast<unsigned char>(quoteChar_);
    for (std::size_t room = MostBytes() / static_cast<std::size_t>(UnitSize());; --room) {
        if (!HaveCharacter()) return false;
        RequireCharacter();
        if (*position_ == quote) return true;
        if (!IsPubidCharacter(*position_)) Throw(Message::kInvalidPublicId);
        if (room == 0) Throw(Message::kInputBufferOverflow);
        Take(text, position_ + 1);
    }
}

// What is skipped.

bool XmlScanner::SkipNameToken() {
    longName_.clear();
    std::size_t taken = 0;  // encoded bytes
    while (HaveCharacter()) {
        if (*position_ == ':') {
            if (++taken > MostBytes()) Throw(Message::kTokenOverflow);
            Take(longName_, position_ + 1);
        } else if (SkipNameCharacters(position_) != position_) {
            TakeLongNamePart(taken);
        } else {
            break;
        }
    }
    return !longName_.empty();
}

// Steps over everything up to and with `terminator`, which starts with `First`.
template <char First>
bool XmlScanner::SkipUpTo(std::string_view terminator) {
    const unsigned char* from = position_;
    for (;;) {
        position_ = Find<First>(from);
        if (*position_ == static_cast<unsigned char>(First)) {
            if (Accept(terminator)) return true;
            from = position_ + 1;
        } else {
            if (!GoOn()) return false;
            from = position_;
        }
    }
}

bool XmlScanner::SkipComment() {
    if (!SkipUpTo<'-'>("--")) return false;
    if (Accept(">")) return true;
    if (HaveCharacter()) Throw(Message::kCommentHoldsDashes);
    return false;
}

bool XmlScanner::SkipPI() { return SkipUpTo<'?'>("?>"); }

bool XmlScanner::SkipLiteral(char quote) {
    for (;;) {
        position_ = Find<'"', '\''>(position_);
        if (position_ != dataEnd_ && (*position_ == '"' || *position_ == '\'')) {
            if (*position_++ == static_cast<unsigned char>(quote)) return true;
        } else if (!GoOn()) {
            return false;
        }
    }
}

char XmlScanner::NextDtdDelimiter() {
    const auto isPlain = [](unsigned char c) {
        return c < 0x80 && !IsForbiddenControl(c) && c != '<' && c != '>' && c != '[' && c != ']' &&
               c != '"' && c != '\'';
    };
    for (;;) {
        while (isPlain(*position_))
            ++position_;
        if (position_ != dataEnd_ && !IsForbiddenControl(*position_)) {
            if (*position_ < 0x80) return static_cast<char>(*position_++);
            const int length = LengthAt(position_);
            if (length > 0) {
                position_ += length;
                continue;
            }
        }
        if (!GoOn()) return 0;
    }
}

}  // namespace Xml::detail
