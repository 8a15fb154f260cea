// SPDX-License-Identifier: MIT
#pragma once

#include "common/Bars.h"

#include <string>
#include <vector>

namespace bench {

/// What one library, or one way, has reached.
struct ChartBar {
    std::string title;
    bool isOurs = false;
    double least = 0;  ///< of all rounds; NaN where nothing was measured
    double median = 0;
    double most = 0;
};

/// Bars that belong together, such as those of one document.
struct ChartGroup {
    std::string title;  ///< empty when the chart has only this group
    std::vector<ChartBar> bars;
};

/// Figures that can be drawn on one scale.
struct Chart {
    std::string name;   ///< of the picture: performance-NAME.svg
    std::string title;  ///< what is measured
    std::string unit;
    bool isLessBetter = false;
    std::vector<ChartGroup> groups;
};

/// A library that took part.
struct LibraryVersion {
    std::string title;
    std::string version;
};

/// All that a program has to tell.
struct Figures {
    std::string compiler;  ///< with its version
    std::vector<LibraryVersion> libraries;
    std::vector<Chart> charts;
    std::vector<Bar> bars;
};

/// Returns the lines that ParseFigures() understands. Fields are parted by tabulators:
///
///     compiler NAME
///     library TITLE VERSION
///     chart NAME TITLE UNIT (more|less)
///     group TITLE
///     bar TITLE (ours|peer) LEAST MEDIAN MOST
///     limit TITLE MEASURED WANTED (least|most) UNIT (OK|MISS)
///
/// A `group` is one of the last `chart`, a `bar` one of the last `group`; `more` is better, or
/// `less`; WANTED is the least that is allowed, or the most.
std::string FormatFigures(const Figures& figures);

/// Reads them back.
/// \throws std::runtime_error with the number of the line that it does not understand
Figures ParseFigures(const std::string& text);

}  // namespace bench
