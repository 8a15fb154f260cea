// SPDX-License-Identifier: MIT
#pragma once

#include "dom/css/CharacterFlags.h"
#include "dom/css/CssSource.h"
#include "dom/css/TextPlace.h"

#include <cstddef>
#include <string_view>

namespace Dom::CSS::detail {

/// Recognises the pieces that CSS text is made of.
///
/// Every function looks at the place in the text where the last one ended, moves it past what it
/// accepts, and returns whether that was something.
class CssScanner {
public:
    explicit CssScanner(IO::Stream* stream) : source(stream) { text_.reserve(kReserved); }

    /// Drops the text that has been read and begins a new piece, with all ranges empty.
    void Begin() {
        // When little is left behind what has been read, so that little is to be moved.
        if (position_ > kKept && text_.length() - position_ <= kKept) DropRead();
        start_ = placed_ = position_;
        name_ = value_ = priority_ = {position_, position_};
        hasComments_ = false;
    }
    /// Drops everything.
    void Close();
    /// Lets the place of the piece be here; its text begins where it did.
    void PlaceHere() { placed_ = position_; }
    /// Lets the text of the piece begin at its place.
    void BeginAtPlace() { start_ = placed_; }

    /// \name Scans
    /// @{
    bool ScanSpace() {
        const std::size_t begin = position_;
        position_ = BehindSpace(begin);
        return position_ > begin;
    }
    bool ScanComment() { return Has(position_) && text_[position_] == '/' && SkipComment(); }
    bool ScanName();
    bool ScanColon() { return ScanOne(':'); }
    bool ScanSemicolon() { return ScanOne(';'); }
    bool ScanOpeningBrace() { return ScanOne('{'); }
    bool ScanClosingBrace() { return ScanOne('}'); }
    /// Scans text up to "{"; without one it is passed over.
    bool ScanSelector();
    /// Scans the value of a property, and leaves comments out of it.
    void ScanValue();
    /// Scans "!" and letters.
    bool ScanPriority();
    /// Scans a property that follows ";" and white space, or one of both or neither, when all of it
    /// up to the ";" or "}" is there and none of it is a comment, a string or "/", and adds it to
    /// `text`. The property has no ranges.
    bool AppendPlainProperty(astring& text, std::string_view separator);
    /// Scans white space, with or without ";" before it, where "}" follows and all of that is
    /// there.
    void SkipToClosingBrace();
    /// Scans white space and comments.
    void SkipSpaceAndComments() {
        while (ScanSpace() || ScanComment()) {
        }
    }
    /// @}

    /// \name What was scanned
    /// Views become invalid with the next scan.
    /// @{
    std::string_view Text() const { return Between({start_, position_}); }
    std::string_view Name() const { return Between(name_); }
    std::string_view Value() const { return hasComments_ ? joined_.view() : Between(value_); }
    std::string_view Priority() const { return Between(priority_); }
    /// @}

    /// \name Where the piece begins
    /// Counted from 1; columns in characters.
    /// @{
    int LineNumber() const { return PlaceOf(placed_).line; }
    int LinePos() const { return PlaceOf(placed_).column; }
    /// @}

    /// Tells whether the piece began at the end of all text.
    bool BeganAtEnd() const { return IsEnd(start_); }
    /// Tells whether the place of the piece is the end of all text.
    bool IsPlacedAtEnd() const { return IsEnd(placed_); }

    CssSource source;

private:
    // A part of the text.
    struct Range {
        std::size_t begin = 0;
        std::size_t end = 0;
    };

    static constexpr std::size_t kReserved = 1024;
    static constexpr std::size_t kKept = 128;  // more that has been read goes soon

    std::string_view Between(Range range) const {
        return std::string_view(text_).substr(range.begin, range.end - range.begin);
    }
    bool IsEnd(std::size_t position) const {
        return source.IsUsedUp() && position >= text_.length();
    }
    bool Has(std::size_t position) { return position < text_.length() || ReadUpTo(position); }
    bool ReadUpTo(std::size_t position);
    bool ScanOne(char character) {
        if (!Has(position_) || text_[position_] != character) return false;
        ++position_;
        return true;
    }
    // Returns the first place from `position` on where a byte has none of `flags`. The NUL that
    // ends the text has none.
    std::size_t BehindAll(std::size_t position, unsigned flags) {
        do {
            const char* const text = text_.c_str();
            while (Is(text[position], flags))
                ++position;
        } while (position == text_.length() && ReadUpTo(position));
        return position;
    }
    bool SkipComment();
    void DropRead();
    std::size_t BehindSpace(std::size_t position) { return BehindAll(position, kBlank); }
    void TakeString(char quote);
    void LeaveOutComment(std::size_t& pieceBegin);
    TextPlace PlaceOf(std::size_t position) const;
    std::size_t FindEndOfComment(std::size_t position);
    bool IsCommentAt(std::size_t position);
    bool ValueGoesOn();

    astring text_;
    std::size_t start_ = 0;     // of the piece
    std::size_t placed_ = 0;    // where the piece is said to be
    std::size_t position_ = 0;  // where the next scan begins
    Range name_;
    Range value_;
    Range priority_;
    bool hasComments_ = false;  // in the value
    astring joined_;            // the value without them
    TextPlace place_;           // of the begin of the text
};

}  // namespace Dom::CSS::detail
