// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

namespace bench {

/// What is in a sheet. A group such as "h1, h2" has two selectors and makes one rule.
struct SheetTotals {
    std::size_t rules = 0;
    std::size_t selectors = 0;

    bool operator==(const SheetTotals&) const = default;
};

/// A style sheet of CSS 2 as people write them: groups, classes, ids, descendants, pseudo-classes;
/// lengths, colours, shorthands; comments. No two rules in succession have the same declarations.
struct MadeSheet {
    std::string text;
    SheetTotals totals;
};

/// Makes a sheet of about `bytes`, the same one every time.
MadeSheet MakeSheetOfSize(std::size_t bytes);

/// Makes a sheet of so many rules.
MadeSheet MakeSheetOfRules(std::size_t rules);

/// Returns the text of a made sheet without its comments.
std::string WithoutComments(const std::string& text);

}  // namespace bench
