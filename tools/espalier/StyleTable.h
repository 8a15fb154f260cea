// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/css/StyleExplanation.h>

#include "Output.h"
#include "SheetNames.h"
#include "StyleRow.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Tool {

/// Writes the style of elements as tables: a line with the path of the element, and one for each
/// property with its value and where that comes from, below it those of the declarations that have
/// lost.
class StyleTable {
public:
    /// What a table looks like.
    struct Look {
        bool hasLosers = true;
        bool isColored = false;
    };

    /// \param names not owned, must live longer
    StyleTable(const SheetNames& names, Look look);

    void Write(Output& out, const StyledElement& styled);

private:
    // A line of the table.
    struct Line {
        std::string name;  // empty for a declaration that has lost
        std::string value;
        std::string where;
    };

    // Whom something is declared for.
    struct Target {
        const Dom::Element& element;
        std::string_view pseudo;
    };

    Line LineOf(const StyleRow& row, const Target& target);
    Line LoserOf(const StyleRow& row, const Dom::CSS::DeclaredValue& declared,
                 const Target& target);
    std::string WhereOf(const Dom::CSS::DeclaredValue& declared, const Target& target);
    std::string OneLine(std::string_view text);
    void WriteHeading(Output& out, const StyledElement& styled);
    void WriteLine(Output& out, const Line& line, std::size_t nameWidth, std::size_t valueWidth);
    void WriteColored(Output& out, std::string_view color, std::string_view text);

    const SheetNames& names_;
    Look look_;
    std::unique_ptr<Output> scratch_;  // what OneLine() writes to
};

}  // namespace Tool
