// SPDX-License-Identifier: MIT
// The tracker is a state machine over bytes (table in the header). Runs in which nothing can
// happen but line breaks (text, comments, values) are jumped over with memchr and counted as a
// whole; everything else goes byte by byte.
#include "MarkupTracker.h"

#include "Utf8.h"

#include <algorithm>
#include <array>

namespace Tool {

namespace {

constexpr bool IsLineBreak(char byte) { return byte == '\n' || byte == '\r'; }

constexpr bool IsBlank(char byte) { return byte == ' ' || byte == '\t' || IsLineBreak(byte); }

// What a byte means inside of a tag, but outside of its values.
enum class TagByte : unsigned char {
    Name,  // part of a name
    Colon,
    Gap,   // ends a name and means nothing else
    Mark,  // ends a name and may mean more
    Wide   // part of a character above ASCII, which is part of a name
};

using TagBytes = std::array<TagByte, 256>;

consteval TagBytes MakeTagBytes() {
    TagBytes bytes{};
    for (const char byte : {' ', '\t', '=', '/'}) {
        bytes[static_cast<std::size_t>(byte)] = TagByte::Gap;
    }
    for (const char byte : {'\n', '\r', '<', '>', '?', ';', '&', '"', '\''}) {
        bytes[static_cast<std::size_t>(byte)] = TagByte::Mark;
    }
    bytes[':'] = TagByte::Colon;
    for (std::size_t byte = 0x80; byte < bytes.size(); ++byte)
        bytes[byte] = TagByte::Wide;
    return bytes;
}

constexpr TagBytes kTagBytes = MakeTagBytes();

constexpr TagByte KindOf(char byte) { return kTagBytes[static_cast<unsigned char>(byte)]; }

constexpr bool EndsName(char byte) {
    return KindOf(byte) == TagByte::Gap || KindOf(byte) == TagByte::Mark;
}

// Tells whether `byte` is part of a name in the document type, where other bytes than in a tag
// come next to names.
constexpr bool IsInDtdName(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
           (byte >= '0' && byte <= '9') || byte == '_' || byte == '-' || byte == '.' ||
           byte == ':' || static_cast<unsigned char>(byte) >= 0x80;
}

constexpr bool StartsDtdName(char byte) {
    return IsInDtdName(byte) && byte != '-' && byte != '.' && byte != ':' &&
           !(byte >= '0' && byte <= '9');
}

constexpr bool IsQuote(char byte) { return byte == '"' || byte == '\''; }

// Runs shorter than this are counted byte by byte, which is faster for them.
constexpr std::size_t kShortRun = 32;

long CountLineBreaks(std::string_view text, bool lastWasCr) {
    long count = std::count(text.begin(), text.end(), '\n');
    if (text.find('\r') == std::string_view::npos) {
        return count - (lastWasCr && text.front() == '\n' ? 1 : 0);
    }
    count = 0;
    for (const char byte : text) {
        if (byte == '\r' || (byte == '\n' && !lastWasCr)) ++count;
        lastWasCr = byte == '\r';
    }
    return count;
}

// Returns how many bytes of a character are missing after `byte` when `due` were before it.
int ContinuationsAfter(int due, char byte) {
    const unsigned lead = static_cast<unsigned char>(byte);
    if (IsContinuation(byte)) return std::max(0, due - 1);
    return lead < 0xC0 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
}

}  // namespace

bool MarkupTracker::IsSilent(char byte) const {
    if (byte == ':') return names_ == Names::Prefixed && inName_ && !colonSeen_;
    return (IsContinuation(byte) && continuationsDue_ > 0) || (byte == '\n' && lastWasCr_);
}

Construct MarkupTracker::Inside() const {
    switch (state_) {
    case State::Text:
    case State::Reference: return Construct::None;
    case State::Open:
    case State::Bang:
    case State::BangDash: return subsetLevel_ > 0 ? Construct::Declaration : Construct::Tag;
    case State::Tag: return Construct::Tag;
    case State::Comment:
    case State::CommentDash:
    case State::CommentDashes: return Construct::Comment;
    case State::CData:
    case State::CDataBracket:
    case State::CDataBrackets: return Construct::CData;
    case State::Target:
    case State::Instruction:
    case State::InstructionQuestion: return Construct::ProcessingInstruction;
    case State::Value:
    case State::ValueReference:
        return around_ == State::Tag ? Construct::Value : Construct::Literal;
    case State::Literal: return Construct::Literal;
    case State::DocumentType:
    case State::Subset: return Construct::DocumentType;
    case State::Keyword:
    case State::Declaration: return Construct::Declaration;
    }
    return Construct::None;
}

Place MarkupTracker::InsideSince() const {
    switch (Inside()) {
    case Construct::Value:
    case Construct::Literal: return literalStart_;
    case Construct::DocumentType: return documentTypeStart_;
    default: return markupStart_;
    }
}

void MarkupTracker::Advance(std::string_view text) {
    while (!text.empty()) {
        std::size_t moved = 0;
        if (state_ == State::Tag) {
            moved = MoveInTag(text);
        } else if ((moved = BulkLength(text)) > 0) {
            Skip(text.substr(0, moved));
        }
        text.remove_prefix(moved);
        if (text.empty()) break;
        Step(text.front());  // a byte that ended the run, so it matters
        text.remove_prefix(1);
    }
}

std::size_t MarkupTracker::AdvanceToLine(std::string_view text, long line) {
    const std::size_t length = text.size();
    while (!text.empty() && line_ < line) {
        std::size_t moved = 0;
        if (state_ == State::Tag) moved = MoveInTag(text);
        if (moved == 0) moved = MoveTowardsLine(text, line);
        text.remove_prefix(moved);
    }
    return length - text.size();
}

// Moves over some bytes, but not over the start of the line.
std::size_t MarkupTracker::MoveTowardsLine(std::string_view text, long line) {
    std::string_view run = text.substr(0, BulkLength(text));
    if (run.empty()) {
        Step(text.front());
        return 1;
    }
    if (line_ + CountLineBreaks(run, lastWasCr_) >= line) {
        run = run.substr(0, run.find_first_of("\r\n") + 1);
    }
    Skip(run);
    return run.size();
}

// Inside a tag, moves over names and blanks up to the next byte that needs a closer look.
std::size_t MarkupTracker::MoveInTag(std::string_view text) {
    std::size_t length = 0;
    bool inName = inName_;
    bool colonSeen = colonSeen_;
    long silentColons = 0;
    for (; length < text.size(); ++length) {
        const TagByte kind = KindOf(text[length]);
        if (kind == TagByte::Mark || kind == TagByte::Wide) break;
        if (kind == TagByte::Colon && inName && !colonSeen) {
            ++silentColons;
            colonSeen = true;
        }
        inName = kind != TagByte::Gap;
        colonSeen = colonSeen && inName;
    }
    if (length == 0) return 0;
    inName_ = inName;
    colonSeen_ = colonSeen;
    column_ += static_cast<long>(length);
    if (names_ == Names::Prefixed) silentColons_ += silentColons;
    lastWasCr_ = false;
    continuationsDue_ = 0;
    return length;
}

// Returns how many bytes from the start of `text` on change nothing but line and column.
std::size_t MarkupTracker::BulkLength(std::string_view text) const {
    char stop = '<';
    switch (state_) {
    case State::Text: break;
    case State::Comment: stop = '-'; break;
    case State::CData: stop = ']'; break;
    case State::Instruction: stop = '?'; break;
    case State::Value:
    case State::Literal: stop = quote_; break;
    default: return 0;
    }
    if (text.front() == stop) return 0;
    const std::size_t length = std::min(text.find(stop), text.size());
    if (state_ != State::Text && state_ != State::Value) return length;
    return std::min(text.substr(0, length).find('&'), length);
}

// Moves over bytes that change nothing but line and column.
void MarkupTracker::Skip(std::string_view run) {
    if (run.size() < kShortRun) {
        for (const char byte : run)
            Count(byte, byte != ':' && IsSilent(byte));
        return;
    }
    std::string_view tail = run;  // what stands on the line at the end of the run
    const long lineBreaks = CountLineBreaks(run, lastWasCr_);
    if (lineBreaks > 0) {
        line_ += lineBreaks;
        column_ = 1;
        silentColons_ = 0;
        std::size_t tailStart = run.size();
        while (!IsLineBreak(run[tailStart - 1]))
            --tailStart;
        tail.remove_prefix(tailStart);
    } else if (lastWasCr_ && run.front() == '\n') {
        tail.remove_prefix(1);
    }
    column_ +=
        std::count_if(tail.begin(), tail.end(), [](char byte) { return !IsContinuation(byte); });
    lastWasCr_ = run.back() == '\r';
    for (const char byte : run.substr(run.size() - std::min<std::size_t>(run.size(), 4))) {
        continuationsDue_ = ContinuationsAfter(continuationsDue_, byte);
    }
}

void MarkupTracker::Step(char byte) {
    const bool silent = IsSilent(byte);
    Change(byte);
    Count(byte, silent);
}

void MarkupTracker::Count(char byte, bool silent) {
    if (IsLineBreak(byte)) {
        if (!silent) {
            ++line_;
            column_ = 1;
            silentColons_ = 0;
        }
    } else if (byte == ':' || !silent) {
        ++column_;
        if (silent) ++silentColons_;
    }
    lastWasCr_ = byte == '\r';
    continuationsDue_ = ContinuationsAfter(continuationsDue_, byte);
}

void MarkupTracker::Change(char byte) {
    switch (state_) {
    case State::Text:
        if (byte == '<') {
            EnterMarkup();
        } else if (byte == '&') {
            state_ = State::Reference;
        }
        break;
    case State::Reference:
        FollowName(byte);
        if (!inName_) state_ = State::Text;
        if (byte == '<') Change(byte);
        break;
    case State::Open:
    case State::Bang:
    case State::BangDash: ChangeOpen(byte); break;
    case State::Comment:
    case State::CommentDash:
    case State::CommentDashes: ChangeComment(byte); break;
    case State::CData:
    case State::CDataBracket:
    case State::CDataBrackets: ChangeCData(byte); break;
    case State::Target:
    case State::Instruction:
    case State::InstructionQuestion: ChangeInstruction(byte); break;
    case State::Tag: ChangeTag(byte); break;
    case State::Value:
    case State::ValueReference: ChangeValue(byte); break;
    case State::Literal:
        if (byte == quote_) state_ = around_;
        break;
    case State::DocumentType: ChangeDocumentType(byte); break;
    case State::Subset: ChangeSubset(byte); break;
    case State::Keyword: ChangeKeyword(byte); break;
    case State::Declaration: ChangeDeclaration(byte); break;
    }
}

// After "<", "<!" and "<!-".
void MarkupTracker::ChangeOpen(char byte) {
    const bool isInSubset = subsetLevel_ > 0;
    if (state_ == State::BangDash) {
        if (byte == '-' || !isInSubset) {
            state_ = State::Comment;
        } else {
            ChangeKeyword(byte);
        }
    } else if (state_ == State::Bang) {
        if (byte == '-') {
            state_ = State::BangDash;
        } else if (isInSubset) {
            ChangeKeyword(byte);
        } else if (byte == '[') {
            state_ = State::CData;
        } else {
            documentTypeStart_ = markupStart_;
            state_ = State::DocumentType;
            ChangeDocumentType(byte);
        }
    } else if (byte == '!') {
        state_ = State::Bang;
        keywordLength_ = 0;
    } else if (byte == '?') {
        state_ = State::Target;
    } else if (isInSubset) {
        ++subsetLevel_;
        state_ = State::Subset;
        ChangeSubset(byte);
    } else {
        state_ = State::Tag;
        ChangeTag(byte);
    }
}

void MarkupTracker::ChangeComment(char byte) {
    if (state_ == State::CommentDashes && byte == '>') {
        state_ = Outside();
    } else if (byte != '-') {
        state_ = State::Comment;
    } else {
        state_ = state_ == State::Comment ? State::CommentDash : State::CommentDashes;
    }
}

void MarkupTracker::ChangeCData(char byte) {
    if (state_ == State::CDataBrackets && byte == '>') {
        state_ = Outside();
    } else if (byte != ']') {
        state_ = State::CData;
    } else {
        state_ = state_ == State::CData ? State::CDataBracket : State::CDataBrackets;
    }
}

void MarkupTracker::ChangeInstruction(char byte) {
    if (state_ == State::InstructionQuestion && byte == '>') {
        state_ = Outside();
    } else if (byte == '?') {
        state_ = State::InstructionQuestion;
    } else if (state_ == State::InstructionQuestion || IsBlank(byte)) {
        state_ = State::Instruction;
    }
    if (state_ == State::Target && subsetLevel_ == 0) {
        FollowName(byte);
    } else {
        inName_ = false;
        colonSeen_ = false;
    }
}

void MarkupTracker::ChangeTag(char byte) {
    FollowName(byte);
    if (byte == '>') {
        state_ = State::Text;
    } else if (byte == '<') {
        EnterMarkup();  // a tag that was never closed: the next one begins here
    } else if (IsQuote(byte)) {
        EnterLiteral(State::Value, byte);
    }
}

void MarkupTracker::ChangeValue(char byte) {
    if (state_ == State::ValueReference) {
        FollowName(byte);
        if (inName_) return;
        state_ = State::Value;
    }
    if (byte == quote_) {
        state_ = around_;
    } else if (byte == '&') {
        state_ = State::ValueReference;
    }
}

void MarkupTracker::ChangeDocumentType(char byte) {
    FollowDtdName(byte);
    if (byte == '>') {
        state_ = State::Text;
        markupStart_ = documentTypeStart_;
    } else if (byte == '[') {
        state_ = State::Subset;
        subsetLevel_ = 1;
    } else if (IsQuote(byte)) {
        EnterLiteral(State::Literal, byte);
    }
}

// The names in the subset are skipped, but for those of the declarations that the reader knows.
void MarkupTracker::ChangeSubset(char byte) {
    if (byte == '[') {
        ++subsetLevel_;
    } else if (byte == ']' || byte == '>') {
        if (--subsetLevel_ == 0) state_ = State::DocumentType;
    } else if (byte == '<') {
        EnterMarkup();
    } else if (IsQuote(byte)) {
        EnterLiteral(State::Literal, byte);
    }
}

// Behind "<!" and in the name that follows it, if one does.
void MarkupTracker::ChangeKeyword(char byte) {
    state_ = State::Keyword;
    if (keywordLength_ == 0 ? StartsDtdName(byte) : IsInDtdName(byte)) {
        FollowDtdName(byte);
        if (keywordLength_ < keyword_.size()) keyword_[keywordLength_++] = byte;
        return;
    }
    const std::string_view keyword(keyword_.data(), keywordLength_);
    if (keyword == "ENTITY" || keyword == "NOTATION") {
        declarationWords_ = 0;
        inName_ = colonSeen_ = false;
        state_ = State::Declaration;
        ChangeDeclaration(byte);
    } else {
        inName_ = colonSeen_ = false;
        ++subsetLevel_;
        state_ = State::Subset;
        ChangeSubset(byte);
    }
}

// An entity has its text behind its name; behind more names, there is no reference to follow.
void MarkupTracker::ChangeDeclaration(char byte) {
    const bool wasInName = inName_;
    FollowDtdName(byte);
    if (wasInName && !inName_ && declarationWords_ < 2) ++declarationWords_;
    if (byte == '>') {
        state_ = State::Subset;
    } else if (IsQuote(byte)) {
        const bool isText = declarationWords_ == 1 && keyword_[0] == 'E';
        EnterLiteral(isText ? State::Value : State::Literal, byte);
    }
}

void MarkupTracker::FollowName(char byte) {
    if (EndsName(byte)) {
        inName_ = false;
        colonSeen_ = false;
    } else {
        if (byte == ':' && inName_) colonSeen_ = true;
        inName_ = true;
    }
}

void MarkupTracker::FollowDtdName(char byte) {
    if (!IsInDtdName(byte)) {
        inName_ = false;
        colonSeen_ = false;
    } else {
        FollowName(byte);
    }
}

void MarkupTracker::EnterMarkup() {
    state_ = State::Open;
    markupStart_ = {line_, column_};
}

void MarkupTracker::EnterLiteral(State literal, char quote) {
    around_ = state_;
    state_ = literal;
    quote_ = quote;
    literalStart_ = {line_, column_};
}

}  // namespace Tool
