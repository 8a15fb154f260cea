// SPDX-License-Identifier: MIT
#include "common/Bars.h"

#include "common/Table.h"

#include <algorithm>
#include <cmath>

namespace bench {

namespace {

// How many decimals a number needs, at most 2.
int DecimalsOf(double number) {
    if (number == std::floor(number)) return 0;
    return number * 10 == std::floor(number * 10) ? 1 : 2;
}

}  // namespace

std::string FormatBars(const std::vector<Bar>& bars) {
    std::string text;
    for (const Bar& bar : bars) {
        const std::string verdict = bar.IsMet() ? "OK" : "MISS";
        const std::string numbers = FormatNumber(bar.measured, 2) + " " + bar.unit + ", wanted " +
                                    (bar.isMost ? "at most " : "") +
                                    FormatNumber(bar.wanted, DecimalsOf(bar.wanted));
        text += verdict + std::string(6 - verdict.size(), ' ') + bar.title + ": " + numbers + "\n";
    }
    return text;
}

bool AreMet(const std::vector<Bar>& bars) {
    return std::all_of(bars.begin(), bars.end(), [](const Bar& bar) { return bar.IsMet(); });
}

}  // namespace bench
