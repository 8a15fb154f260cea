// SPDX-License-Identifier: MIT
#pragma once

#include "Excerpt.h"
#include "MarkupTracker.h"

#include <cstddef>
#include <string_view>

namespace Tool {

/// The text of a style sheet around the place that is looked at, which only moves forward. So every
/// byte is looked at once.
class SheetText {
public:
    /// \param text in UTF-8; not owned
    explicit SheetText(std::string_view text) : text_(text) {}

    /// Moves to a place, or as far towards it as there is text. Lines end as they do in CSS Syntax
    /// Level 3 (section 3.3), also by a form feed.
    void MoveTo(Place place);

    /// Returns the line of the place.
    Excerpt Line() const;

private:
    static constexpr std::size_t kShown = 512;  // bytes on each side of the place

    bool IsAtBreak() const;
    void Step();

    std::string_view text_;
    std::size_t position_ = 0;   // of the place
    std::size_t lineStart_ = 0;  // of its line
    bool isBehindReturn_ = false;
    Place place_;
};

}  // namespace Tool
