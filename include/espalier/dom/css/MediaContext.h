// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include <optional>

namespace Dom::CSS {

/// What style sheets are shown on: what media queries ask about (Media Queries Level 3 section 4).
/// Lengths are in CSS pixels, of which an inch has 96.
struct MediaContext {
    /// How moving pictures come to a television.
    enum class Scan {
        None,         ///< it is no television
        Progressive,  ///< line by line
        Interlace     ///< every other line, then those between
    };

    astring type = "screen";                  ///< "print", "speech" and so on
    double width = 1280;                      ///< of the window, or of the page box
    double height = 720;                      ///< the same; not less than the width is "portrait"
    std::optional<double> deviceWidth = {};   ///< of the screen or the sheet; none: as `width`
    std::optional<double> deviceHeight = {};  ///< the same for the height
    double resolution = 1;                    ///< dots for a pixel ("dppx")
    int color = 8;                            ///< bits for each colour; 0 without colours
    int colorIndex = 0;                       ///< entries of the table of colours; 0 without one
    int monochrome = 0;                       ///< bits for a dot without colours; 0 with colours
    bool grid = false;                        ///< a terminal, with one size of letters
    Scan scan = Scan::None;                   ///< of a television
    double fontSize = 16;                     ///< that nobody has changed: what an "em" is
};

}  // namespace Dom::CSS
