// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/css/CSSStyleSheet.h>
#include <espalier/dom/css/CssReader.h>

#include "Context.h"
#include "Excerpt.h"
#include "ExitCode.h"
#include "Input.h"
#include "SheetEncoding.h"
#include "SheetText.h"

#include <memory>
#include <optional>
#include <string>

namespace Tool {

/// A rule of a style sheet, or something in it that was refused.
struct SheetItem {
    Place place;                              ///< where it begins
    const Dom::CSS::CSSRule* rule = nullptr;  ///< null when it was refused
    std::string refusal;                      ///< why it was refused
};

/// A style sheet that is read rule by rule. One rule is held at a time.
class Sheet {
public:
    /// Opens the sheet.
    /// \param name a file name, or "-" for standard input
    /// \throws Xml::Exception when it cannot be opened
    Sheet(const std::string& name, const SheetEncoding& encoding, Context& context);

    /// Returns the name for messages.
    const std::string& DisplayName() const { return input_.DisplayName(); }

    /// Returns what comes next, or nothing at the end. The rule is there until the next call.
    /// Where there is something that is no rule, that is refused and the last that comes.
    std::optional<SheetItem> Next();

    /// Writes about what was refused last: where it is, why, and the line.
    ExitCode ExplainRefusal(const SheetItem& item);

    /// Writes why the sheet could not be read to its end; nothing when it could.
    ExitCode ExplainFailure();

private:
    Place Here() const { return {reader_.LineNumber(), reader_.LinePos()}; }
    bool IsBehindRule() const;
    SheetItem Insert(Place place, const astring& rule);

    Context& context_;
    Input input_;
    SheetText text_;
    Dom::CSS::CssReader reader_;
    Dom::CSS::CSSStyleSheet sheet_;
    bool isBroken_ = false;  // there is no rule where the reader is
    bool isOver_ = false;
};

}  // namespace Tool
