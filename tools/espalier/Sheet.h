// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>
#include <espalier/dom/css/CSSStyleSheet.h>
#include <espalier/dom/css/DroppedText.h>

#include "Context.h"
#include "ExitCode.h"
#include "Input.h"
#include "SheetText.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Tool {

/// Something in a style sheet that is to be told.
struct SheetRemark {
    Dom::CSS::SourcePlace place;
    std::string reason;  ///< why it is left out; empty for a property that is not known
    std::string what;    ///< what is left out, "rule" or "declaration"; or the name of the property

    bool IsLeftOut() const { return !reason.empty(); }
};

/// A style sheet with all its rules, and what has been left out of it.
class Sheet {
public:
    /// Opens the sheet.
    /// \param name a file name, or "-" for standard input
    /// \throws Xml::Exception when it cannot be opened
    Sheet(const std::string& name, Context& context);

    /// Returns the name for messages.
    const std::string& DisplayName() const { return input_.DisplayName(); }

    /// Reads the sheet. When that fails, writes why; there are no rules then.
    /// \param encoding of a sheet that does not say its own
    /// \param tellsUnknown whether there are remarks about properties that are not known
    ExitCode Read(std::string_view encoding, bool tellsUnknown);

    const Dom::CSS::CSSRuleList& Rules() const { return sheet_->CssRules(); }
    /// Returns what has been left out, and which properties are not known, in the order of the
    /// text. Names that begin with "-" are those of vendors, and not told.
    const std::vector<SheetRemark>& Remarks() const { return remarks_; }

    /// Writes about something that is to be told: where it is, why, and the line. To be called in
    /// the order of the text.
    void Explain(const SheetRemark& remark);

private:
    void FindUnknown(const Dom::CSS::CSSRuleList& rules);

    Context& context_;
    Input input_;
    astring text_;
    std::optional<SheetText> lines_;  // of text_
    std::unique_ptr<Dom::CSS::CSSStyleSheet> sheet_;
    std::vector<SheetRemark> remarks_;
};

}  // namespace Tool
