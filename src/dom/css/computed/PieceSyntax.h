// SPDX-License-Identifier: MIT
#pragma once

#include "dom/css/computed/ValuePieces.h"

#include <string_view>

namespace Dom::CSS::detail {

/// What a piece of a value may be; several at once.
enum PieceType : unsigned {
    kLengthPiece = 1,
    kPercentagePiece = 2,
    kNumberPiece = 4,
    kIntegerPiece = 8,
    kTimePiece = 16,
    kAnglePiece = 32,
    kColorPiece = 64,
    kImagePiece = 128,
    kStringPiece = 256,
    kNamePiece = 512,     ///< a name that the author has made up
    kNotNegative = 1024,  ///< numbers of all kinds are not below 0
    kLengthOrPercentage = kLengthPiece | kPercentagePiece
};

/// What one piece of a value may be.
struct PieceSyntax {
    unsigned types = 0;               ///< of PieceType
    std::string_view keywords = {};   ///< in small letters, with blanks between them
    std::string_view functions = {};  ///< the names of further functions, likewise
};

/// Tells whether a piece is what it may be. What functions have in their parentheses is not
/// looked at.
bool Fits(const Piece& piece, const PieceSyntax& syntax);

/// Tells whether a piece is one of some keywords, in any case.
bool IsKeyword(const Piece& piece, std::string_view keywords);

/// Tells whether a piece is "inherit" or the like, which may only be the whole of a value
/// (CSS Cascading Level 5 section 7.3).
bool IsWideKeyword(const Piece& piece);

}  // namespace Dom::CSS::detail
