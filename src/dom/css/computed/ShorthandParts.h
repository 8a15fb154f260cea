// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include "dom/css/computed/PieceSyntax.h"
#include "dom/css/computed/ValuePieces.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string_view>

/// \file
/// How the values of shorthands are taken apart: a function for each way in which they are made.

namespace Dom::CSS::detail {

/// A value that is being taken apart: what is left of it, and what has been found.
///
/// What has been found is kept by the index of the property in the list of the shorthand. What is
/// not there keeps its initial value.
class ShorthandParts {
public:
    /// No shorthand stands for more properties.
    static constexpr std::size_t kMost = 17;

    /// \param syntaxes what the pieces of the shorthand may be
    /// \param initials the initial values of the properties
    ShorthandParts(std::span<const Piece> pieces, std::span<const PieceSyntax> syntaxes,
                   std::span<const std::string_view> initials)
        : rest_(pieces), syntaxes_(syntaxes), initials_(initials) {}

    std::span<const PieceSyntax> Syntaxes() const { return syntaxes_; }
    std::span<const std::string_view> Initials() const { return initials_; }
    std::span<const Piece> Rest() const { return rest_; }
    bool IsAtEnd() const { return rest_.empty(); }

    /// Takes some pieces, as many as there must be.
    std::span<const Piece> Take(std::size_t count) {
        const std::span<const Piece> taken = rest_.first(count);
        rest_ = rest_.subspan(count);
        return taken;
    }
    /// Takes the pieces at the front that fit, at most some.
    std::span<const Piece> TakeFitting(const PieceSyntax& syntax, std::size_t most) {
        return Take(CountFitting(syntax, most));
    }
    /// Takes a piece of a kind, if it comes next.
    bool Skip(Piece::Kind kind) {
        if (rest_.empty() || rest_.front().kind != kind) return false;
        rest_ = rest_.subspan(1);
        return true;
    }
    bool IsNext(const PieceSyntax& syntax) const { return CountFitting(syntax, 1) == 1; }
    bool IsNextKeyword(std::string_view keywords) const {
        return !rest_.empty() && IsKeyword(rest_.front(), keywords);
    }

    bool IsSet(std::size_t index) const { return !values_[index].empty(); }
    astring& Value(std::size_t index) { return values_[index]; }
    /// Sets a value that is not there yet; false when it is.
    bool Set(std::size_t index, std::span<const Piece> pieces) {
        if (IsSet(index)) return false;
        values_[index] = TextOf(pieces);
        return true;
    }
    /// Takes the next piece as the first value that it fits and that is not there yet; false when
    /// there is none.
    /// \param first index of the value that the first syntax is of
    bool TakeAsAny(std::span<const PieceSyntax> syntaxes, std::size_t first = 0) {
        for (std::size_t i = 0; i < syntaxes.size(); ++i) {
            if (IsSet(first + i) || !IsNext(syntaxes[i])) continue;
            return Set(first + i, Take(1));
        }
        return false;
    }

private:
    std::size_t CountFitting(const PieceSyntax& syntax, std::size_t most) const {
        most = std::min(most, rest_.size());
        std::size_t count = 0;
        while (count < most && Fits(rest_[count], syntax))
            ++count;
        return count;
    }

    std::span<const Piece> rest_;
    std::span<const PieceSyntax> syntaxes_;
    std::span<const std::string_view> initials_;
    std::array<astring, kMost> values_;
};

/// \name Ways
/// All return false when the value is not valid. What is left of it is not looked at.
/// @{

/// One to four pieces of the first syntax, for the sides of a box (CSS 2.1 section 8.3).
bool ExpandSides(ShorthandParts& parts);
/// One or two pieces of the first syntax; one is for both.
bool ExpandPair(ShorthandParts& parts);
/// One piece for each syntax, in any order, and any may be missing.
bool ExpandAnyOrder(ShorthandParts& parts);
/// As before for each part between commas (CSS Transitions Level 1 section 2.5, CSS Animations
/// Level 1 section 3.10).
bool ExpandLayers(ShorthandParts& parts);
/// As ExpandLayers(), but of several layers none is "none".
bool ExpandTransition(ShorthandParts& parts);

bool ExpandBorder(ShorthandParts& parts);          ///< CSS Backgrounds Level 3 section 3.4
bool ExpandBorderRadius(ShorthandParts& parts);    ///< CSS Backgrounds Level 3 section 4.1
bool ExpandBorderImage(ShorthandParts& parts);     ///< CSS Backgrounds Level 3 section 5.7
bool ExpandBackground(ShorthandParts& parts);      ///< CSS Backgrounds Level 3 section 2.10
bool ExpandFont(ShorthandParts& parts);            ///< CSS Fonts Level 3 section 3.7
bool ExpandListStyle(ShorthandParts& parts);       ///< CSS 2.1 section 12.5.1
bool ExpandTextDecoration(ShorthandParts& parts);  ///< CSS Text Decoration Level 4 section 2.5
bool ExpandTextEmphasis(ShorthandParts& parts);    ///< CSS Text Decoration Level 3 section 3.3
bool ExpandFlex(ShorthandParts& parts);            ///< CSS Flexible Box Layout Level 1 section 7.1
bool ExpandColumns(ShorthandParts& parts);         ///< CSS Multi-column Layout Level 1 section 3.3
bool ExpandPlaceContent(ShorthandParts& parts);    ///< CSS Box Alignment Level 3 section 5.3
bool ExpandPlaceItems(ShorthandParts& parts);      ///< CSS Box Alignment Level 3 section 6.6
bool ExpandPlaceSelf(ShorthandParts& parts);       ///< CSS Box Alignment Level 3 section 6.4
bool ExpandGridLines(ShorthandParts& parts);       ///< CSS Grid Layout Level 1 section 8.4
/// @}

}  // namespace Dom::CSS::detail
