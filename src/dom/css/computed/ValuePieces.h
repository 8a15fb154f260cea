// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include <forward_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Dom::CSS::detail {

/// One of the component values that the value of a property is made of (CSS Syntax Level 3
/// section 5): functions and brackets with what is in them are one.
struct Piece {
    enum class Kind : unsigned char {
        Ident,
        Number,
        Percentage,
        Dimension,
        Hash,
        String,
        Address,   ///< "url()"
        Function,  ///< all others
        Block,     ///< something in brackets
        Comma,
        Slash
    };

    Kind kind;
    bool isInteger = false;      ///< of numbers
    double number = 0;           ///< of numbers, percentages and dimensions
    std::string_view text = {};  ///< as written, but for keywords that have needless escapes
    std::string_view name = {};  ///< of identifiers and functions, without escapes; the unit; the
                                 ///< digits behind "#"
};

/// The pieces that a value is made of, with white space and comments between them left out.
class ValuePieces {
public:
    /// \param value is copied
    explicit ValuePieces(std::string_view value);
    ValuePieces(const ValuePieces&) = delete;
    ValuePieces& operator=(const ValuePieces&) = delete;

    /// Tells whether all of the value is there; else it has something that no shorthand may have.
    bool IsWhole() const { return isWhole_; }
    /// Tells whether a part of the value depends on variables.
    bool HasVariables() const { return hasVariables_; }
    std::span<const Piece> Get() const { return pieces_; }

private:
    bool Read(const char*& at);
    bool ReadNumber(const char*& at);
    bool ReadName(const char*& at);
    bool ReadComponent(const char*& at, Piece::Kind kind, std::string_view name);
    std::string_view WithoutEscapes(std::string_view name);

    std::string text_;
    std::forward_list<astring> names_;  // those that had escapes
    std::vector<Piece> pieces_;
    bool isWhole_ = true;
    bool hasVariables_ = false;
};

/// Finds the next number in a function, such as "calc()", and moves the text behind it.
/// \param text of a function, or the rest of it
/// \param unit gets what follows the number: a unit, "%" or nothing
/// \return false when there is none
bool FindNumber(std::string_view& text, std::string_view& unit);

/// Returns the texts of pieces with blanks between them, but not before commas.
astring TextOf(std::span<const Piece> pieces);

}  // namespace Dom::CSS::detail
