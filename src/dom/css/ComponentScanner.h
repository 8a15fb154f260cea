// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace Dom::CSS::detail {

/// Goes through the text of a style sheet by the component values of CSS Syntax Level 3 section 5:
/// strings, addresses, escapes, comments and brackets, with what is in them, are each passed over
/// as a whole. The text ends at its first NUL.
class ComponentScanner {
public:
    /// The characters that ScanTo() may stop at; several at once.
    enum Stop : unsigned { kSemicolon = 1, kOpeningBrace = 2, kClosingBrace = 4 };

    /// What ScanTo() has passed over; several at once.
    enum Seen : unsigned {
        kComment = 1,    ///< a comment
        kBang = 2,       ///< "!" outside of strings and brackets; see LastBang()
        kHiddenEnd = 4,  ///< ";" or "!" within strings and the like
        kBlock = 8,      ///< a block in braces
        kBad = 16,       ///< a string or an address with an error, or a bracket without its other
        kUnclosed = 32,  ///< the text has ended in brackets or in a string
        kBangs = 64      ///< several "!"
    };

    explicit ComponentScanner(const char* text) : at_(text) {}

    const char* At() const { return at_; }
    char Front() const { return *at_; }
    bool IsAtEnd() const { return *at_ == '\0'; }
    /// Moves to a later place.
    void MoveTo(const char* at) { at_ = at; }
    void Step() { ++at_; }

    /// Skips white space and comments; tells whether there was a comment.
    bool SkipSpace();
    /// Moves to the first of some characters that is not within anything, or to the end.
    /// \param stops of Stop
    /// \return of Seen
    unsigned ScanTo(unsigned stops);
    /// Passes over a string, a function from its name on, or what stands in brackets. Nothing else
    /// may be where it begins.
    /// \return of Seen
    unsigned ScanComponent();
    /// Returns where the last "!" of the last ScanTo() stands.
    const char* LastBang() const { return lastBang_; }
    /// Returns the brackets that were open at the end of the last ScanTo(), the inner one last, as
    /// what would close them.
    const std::string& Open() const { return open_; }

    /// Goes through the whole text, and returns it with a blank in place of each comment.
    std::string WithoutComments();

    /// Skips a name (section 4.3.9), with its escapes; empty when there is none.
    std::string_view SkipName();

private:
    void SkipComment();
    template <bool OfOneComponent>
    unsigned Scan(unsigned stops);
    void ScanSlash();
    void ScanBang();
    void ScanString();
    void ScanBracket();
    void SkipEscape();
    void ScanEscape();
    void ScanAddress();
    void SkipBadAddress();
    bool Close(char bracket);
    bool IsAddress() const;
    bool StopsAt(unsigned stops) const;

    const char* at_;
    const char* begin_ = nullptr;  // of what ScanTo() goes through
    const char* lastBang_ = nullptr;
    unsigned seen_ = 0;
    std::string open_;
    std::string* bare_ = nullptr;  // gets the text without comments, or null
    const char* kept_ = nullptr;   // where what it does not have yet begins
};

/// Tells whether an escape begins at a backslash (section 4.3.8).
bool IsEscape(const char* backslash);

}  // namespace Dom::CSS::detail
