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

/// A style sheet that is read rule by rule, with the rules that a document has that links to it.
/// One of them is held at a time.
class Sheet {
public:
    /// Opens the sheet.
    /// \param name a file name, or "-" for standard input
    /// \throws Xml::Exception when it cannot be opened
    Sheet(const std::string& name, const SheetEncoding& encoding, Context& context);

    /// Returns the name for messages.
    const std::string& DisplayName() const { return input_.DisplayName(); }

    /// Returns what comes next, or nothing at the end. The rule is there until the next call.
    std::optional<SheetItem> Next();

    /// Writes about what Next() has returned that was refused: where it is, why, and the line.
    ExitCode ExplainRefusal(const SheetItem& item);

    /// Writes why the sheet could not be read to its end; nothing when it could.
    ExitCode ExplainFailure();

private:
    Place Here() const { return {reader_.LineNumber(), reader_.LinePos()}; }
    bool FindSelector();
    void NoteFault();
    std::optional<SheetItem> ReadRule();
    bool IsBehindRule() const;
    SheetItem Insert(Place place, const astring& rule);
    SheetItem RefuseAtFault(const char* why);

    Context& context_;
    Input input_;
    SheetText text_;
    Dom::CSS::CssReader reader_;
    Dom::CSS::CSSStyleSheet sheet_;
    bool isAtSelector_ = false;
    bool isInBlock_ = false;      // of declarations, but for that of an at-rule
    bool isInAtRule_ = false;     // or behind it
    std::optional<Place> fault_;  // what no node begins with, since the last rule
    bool isOver_ = false;
};

}  // namespace Tool
