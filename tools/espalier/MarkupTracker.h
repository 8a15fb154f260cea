// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace Tool {

/// A place in a document as people count it: lines and characters, from 1 on.
struct Place {
    long line = 1;
    long column = 1;

    bool operator==(const Place&) const = default;
};

/// What a place in a document is inside of.
enum class Construct {
    None,
    Tag,
    Value,  ///< of an attribute
    Comment,
    CData,
    ProcessingInstruction,
    DocumentType,
    Declaration,  ///< of an entity or a notation, in the document type
    Literal       ///< between quotation marks in the document type
};

/// Follows the markup of a document only so far as to know where it stands: on which line, in
/// which column, inside what.
///
/// It exists because the reader does not count the colon of a prefixed name as a column, while
/// an editor does: the tracker counts both ways, and so translates from the one to the other. It
/// expects UTF-8 without a byte-order mark and accepts anything; for text that is not well-formed
/// its idea of the construct is a guess, its lines and columns are not.
///
/// A tracker is a small value: a copy is a bookmark from which to go on later.
class MarkupTracker {
public:
    enum class Names { Prefixed, Whole };

    /// \param names whether the reader takes the colon of a name for the end of its prefix
    explicit MarkupTracker(Names names = Names::Prefixed) : names_(names) {}

    /// Moves over all of `text`.
    void Advance(std::string_view text);

    /// Moves to the start of line `line`, or over all of `text` when that does not come.
    /// \return the number of bytes passed
    std::size_t AdvanceToLine(std::string_view text, long line);

    /// Moves over one byte.
    void Step(char byte);

    /// Tells whether the reader's column is the same before and after `byte`, the next one: it is
    /// the colon of a prefixed name, the LF of a CR LF, or not the first byte of a character. A
    /// byte that continues no character counts as one.
    bool IsSilent(char byte) const;

    long Line() const { return line_; }
    /// Returns the column as people count it.
    long Column() const { return column_; }
    /// Returns the column as the reader counts it.
    long ReaderColumn() const { return column_ - silentColons_; }

    Construct Inside() const;
    /// Returns where Inside() began; after markup, in text, where that began.
    Place InsideSince() const;

private:
    // state                 entered by        left by
    // --------------------  ----------------  ------------------------------------
    // Text                                    < to Open, & to Reference
    // Reference             &                 ; or anything that is in no name to Text
    // Open                  <                 ! to Bang, ? to Target, else Tag or Subset
    // Bang                  <!                - to BangDash, [ to CData, else DocumentType
    //                                         or, inside of that, Keyword
    // BangDash              <!-               - to Comment, else Keyword
    // Comment ...Dashes     <!--              --> to Text or Subset
    // CData ...Brackets     <![               ]]>
    // Target                <?                ? to Instruction Question, blank to Instruction
    // Instruction           <? and a target   ?> to Text or Subset
    // Tag                   < and a name      > to Text, quotation marks to Value
    // Value                 " or '            the same mark to Tag or Declaration, & to
    //                                         ValueReference
    // ValueReference        &                 ; or anything that is in no name to Value
    // DocumentType          <!                > to Text, [ to Subset, marks to Literal
    // Subset                [                 the > or ] that closes it to DocumentType, < to
    //                                         Open, marks to Literal
    // Keyword               <! in Subset      the end of a name to Declaration for an entity or
    //                                         a notation, else Subset
    // Declaration           <!ENTITY          > to Subset, marks to Value around the text of an
    //                                         entity, else Literal
    // Literal               " or '            the same mark to where it came from
    enum class State : unsigned char {
        Text,
        Reference,
        Open,
        Bang,
        BangDash,
        Comment,
        CommentDash,
        CommentDashes,
        CData,
        CDataBracket,
        CDataBrackets,
        Target,
        Instruction,
        InstructionQuestion,
        Tag,
        Value,
        ValueReference,
        DocumentType,
        Subset,
        Keyword,
        Declaration,
        Literal
    };

    std::size_t MoveTowardsLine(std::string_view text, long line);
    std::size_t MoveInTag(std::string_view text);
    std::size_t BulkLength(std::string_view text) const;
    void Skip(std::string_view run);
    void Count(char byte, bool silent);
    void Change(char byte);
    void ChangeOpen(char byte);
    void ChangeComment(char byte);
    void ChangeCData(char byte);
    void ChangeInstruction(char byte);
    void ChangeTag(char byte);
    void ChangeValue(char byte);
    void ChangeDocumentType(char byte);
    void ChangeSubset(char byte);
    void ChangeKeyword(char byte);
    void ChangeDeclaration(char byte);
    void FollowName(char byte);
    void FollowDtdName(char byte);
    void EnterMarkup();
    void EnterLiteral(State literal, char quote);
    State Outside() const { return subsetLevel_ > 0 ? State::Subset : State::Text; }

    Names names_;
    State state_ = State::Text;
    bool lastWasCr_ = false;     // a LF that comes next belongs to the line break before it
    int continuationsDue_ = 0;   // bytes that are missing to the character before
    bool inName_ = false;        // in Tag, Target and Reference: a character of a name came last
    bool colonSeen_ = false;     // the name has had its colon
    char quote_ = '"';           // the mark that ends the value or literal
    State around_ = State::Tag;  // what the value or literal is in
    int subsetLevel_ = 0;        // what is open in the internal subset, itself included
    std::array<char, 9> keyword_{};  // the start of what follows "<!", one more than is looked for
    std::size_t keywordLength_ = 0;  // of what is in keyword_
    int declarationWords_ = 0;       // names in the declaration that have ended, up to the second
    long line_ = 1;                  // line of the next byte
    long column_ = 1;                // column of the next byte, every character counted
    long silentColons_ = 0;          // colons of this line that the reader did not count
    Place markupStart_;              // where the last "<" of a construct stands
    Place documentTypeStart_;        // where the "<" of the document type stands
    Place literalStart_;             // where the last opening quotation mark stands
};

}  // namespace Tool
