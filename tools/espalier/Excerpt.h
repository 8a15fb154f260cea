// SPDX-License-Identifier: MIT
#pragma once

#include "MarkupTracker.h"
#include "SourceText.h"

#include <string>

namespace Tool {

/// How a column is counted.
enum class ColumnCount {
    People,  ///< every character is one
    Reader,  ///< as the reader does, who leaves out colons (see MarkupTracker)
    Escaped  ///< as one who is shown "&amp;" for every "&" (see SourceReader)
};

/// A place found in the text of a document, with the line around it.
struct Excerpt {
    bool found = false;      ///< false: the text does not hold the place; the rest means nothing
    Place place;             ///< the place with the column as people count it
    std::string before;      ///< the line up to the place, or as much of it as was kept
    std::string after;       ///< the line from the place on, or as much of it as was kept
    bool cutBefore = false;  ///< the line has more before `before`
    bool cutAfter = false;   ///< the line has more after `after`
    bool isBehind = false;   ///< the line ends before the place; then `place` is its end
    bool isUnsure = false;   ///< it is not known whether the place is in the document at all
    Construct inside = Construct::None;  ///< what the place is inside of
    Place insideSince;                   ///< where that began
};

/// Finds a place in a text. Takes constant memory, whatever the length of text and lines.
///
/// A column beyond the end of its line is taken relative to that end.
Excerpt FindPlace(SourceText& text, Place place, ColumnCount count);

/// Returns the line of the excerpt and under it a line with a caret, each ended by a line feed:
///
///     4 |   <book></b>
///       |            ^
///
/// Lines that do not fit 80 columns are cut around the caret, which shows as "...". Tabs stay and
/// wide characters count two columns, so that the caret stands under its character. Empty when
/// there is nothing to see; without the caret when the place is behind the line or unsure.
/// \param caretStart, caretEnd what is written around the caret, to colour it
std::string ShowExcerpt(const Excerpt& excerpt, std::string_view caretStart = {},
                        std::string_view caretEnd = {});

}  // namespace Tool
