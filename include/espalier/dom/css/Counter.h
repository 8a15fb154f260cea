// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

namespace Dom::CSS {

/// The parts of a counter: CSS 2.1 section 12.4.
class Counter {
public:
    Counter() = default;
    Counter(astring identifier, astring listStyle, astring separator)
        : identifier_(static_cast<astring&&>(identifier)),
          listStyle_(static_cast<astring&&>(listStyle)),
          separator_(static_cast<astring&&>(separator)) {}

    /// Returns the name of the counter.
    const astring& Identifier() const { return identifier_; }
    /// Returns the style of its numbers, or empty.
    const astring& ListStyle() const { return listStyle_; }
    /// Returns what stands between the numbers of nested counters, or empty.
    const astring& Separator() const { return separator_; }

private:
    astring identifier_;
    astring listStyle_;
    astring separator_;
};

}  // namespace Dom::CSS
