// SPDX-License-Identifier: MIT
#pragma once

#include "Excerpt.h"
#include "MarkupTracker.h"
#include "SourceText.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace Tool {

/// The text of a style sheet around the place that is looked at, which only moves forward.
///
/// What has been taken is kept from that place on, and before it as much of its line as can be
/// shown. So an error can be shown wherever the sheet comes from, and every byte is looked at once.
class SheetText {
public:
    /// \param form of UTF-16, a byte-order mark at the start says whether it is that
    explicit SheetText(SourceForm form) : decoder_(form, nullptr, BadBytes::Kept), form_(form) {}

    /// Takes bytes, which go on where the last ones ended.
    void Take(std::string_view bytes);

    /// Moves to a place, or as far towards it as there is text. Lines end as they do in CSS 2.1
    /// (section 4.1.1, nl), also by a form feed.
    void MoveTo(Place place);

    /// Returns the line of the place, as far as it has been taken.
    Excerpt Line() const;

private:
    static constexpr std::size_t kShown = 512;     // bytes on each side of the place
    static constexpr std::size_t kSlack = 65'536;  // bytes behind us that may stay

    bool IsAtBreak() const;
    void Step();
    void Forget();
    std::size_t ShownFrom() const;

    SourceDecoder decoder_;
    SourceForm form_;
    bool atStart_ = true;
    std::string text_;
    std::size_t position_ = 0;   // of the place
    std::size_t lineStart_ = 0;  // of its line, or of what is left of that
    bool isLineCut_ = false;
    bool isBehindReturn_ = false;
    Place place_;
};

}  // namespace Tool
