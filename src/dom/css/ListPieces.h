// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace Dom::CSS::detail {

/// Returns what separates the values in a text: a comma or a space. Strings in quotes and what
/// stands in parentheses separate nothing.
/// \param text without white space around it
/// \return NUL when there is only one value
char FindSeparator(std::string_view text);

/// Splits a text into the pieces between its separators, less white space around them. Pieces
/// between two commas may be empty. A space as the separator stands for white space of any kind and
/// length.
class ListPieces {
public:
    /// \param text without white space around it
    ListPieces(std::string_view text, char separator)
        : at_(text.data()), end_(at_ + text.size()), separator_(separator), isOver_(text.empty()) {}

    /// Sets `piece` to the next piece, as long as there is one.
    bool Next(std::string_view& piece);

private:
    const char* at_;
    const char* end_;
    char separator_;
    bool isOver_;
};

}  // namespace Dom::CSS::detail
