// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/css/CSSGroupingRule.h>
#include <espalier/dom/css/CSSStyleSheet.h>
#include <espalier/dom/css/DroppedText.h>

#include "dom/css/BlockScanner.h"
#include "dom/css/ComponentScanner.h"
#include "dom/css/DropRecorder.h"

#include <memory>
#include <string_view>
#include <vector>

namespace Dom::CSS::detail {

/// Reads the text of a style sheet into rules (CSS Syntax Level 3 section 5.4), and leaves out what
/// is no rule.
class SheetParser {
public:
    /// \param text that the sheet keeps; ends with its first NUL
    /// \param dropped gets what is left out; may be null
    SheetParser(CSSStyleSheet& sheet, const char* text, std::vector<DroppedText>* dropped);

    void Parse();

private:
    using Kind = DroppedText::Kind;

    // What stands before the block or the ";" of a rule.
    struct Prelude {
        const char* begin = nullptr;  // of the rule
        std::string_view text;        // behind the name of the rule, without white space around
        std::string bare;             // what `text` is in when it had comments
        unsigned seen = 0;
    };

    void SkipBetweenRules();
    void ScanPrelude(Prelude& prelude, unsigned stops);
    void ParseStyleRule();
    void ParseAtRule();
    void ParseNamedRule(std::string_view name, const Prelude& prelude);
    bool ParseImport(const Prelude& prelude);
    bool ParseCharset(const Prelude& prelude);
    template <typename Rule>
    void OpenGroup(const Prelude& prelude);
    void ParseFontFace(const Prelude& prelude);
    void ParsePage(const Prelude& prelude);
    void KeepUnknown(const Prelude& prelude);
    void ParseDeclarations(CSSStyleDeclaration& style);
    bool SkipBlock();
    void DropBlock(const Prelude& prelude, const char* reason);

    template <typename Rule>
    std::unique_ptr<Rule> Make(const char* begin);
    CSSRuleList& Rules();
    void Add(std::unique_ptr<CSSRule> rule);

    CSSStyleSheet& sheet_;
    const char* const text_;
    ComponentScanner scanner_;
    std::vector<CSSGroupingRule*> open_;  // that the next rule is in, the inner one last
    std::vector<ScannedDeclaration> declarations_;
    DropRecorder drops_;
    bool mayImport_ = true;          // nothing but what may stand before imports has come
    bool isLayerStatement_ = false;  // the rule that is being read is "@layer" without a block
};

}  // namespace Dom::CSS::detail
