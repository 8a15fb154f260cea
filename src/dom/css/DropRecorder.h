// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/css/DroppedText.h>

#include "dom/css/TextPlace.h"

#include <vector>

namespace Dom::CSS::detail {

/// Tells what is left out of a text, and where its parts are.
class DropRecorder {
public:
    /// \param dropped gets what is left out; may be null
    DropRecorder(const char* text, std::vector<DroppedText>* dropped)
        : placed_(text), dropped_(dropped) {}

    /// Tells whether somebody wants to know what is left out.
    bool IsWanted() const { return dropped_ != nullptr; }

    /// Returns the line and column of a position. These are asked for in the order of the text.
    SourcePlace PlaceAt(const char* position);

    /// Adds what is left out.
    /// \pre IsWanted()
    void Drop(DroppedText::Kind kind, SourcePlace place, const char* begin, const char* end,
              const char* reason);

private:
    TextPlace place_;  // of placed_
    const char* placed_;
    std::vector<DroppedText>* dropped_;
};

}  // namespace Dom::CSS::detail
