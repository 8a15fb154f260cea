// SPDX-License-Identifier: MIT
//
// One pass over the text. Rules that are in a rule are no recursion: the rule becomes the one that
// the next ones are added to, until its "}".
//
// The declarations of a block are found first; when SetCssText() of a declaration understands all
// of them, which is nearly always so, it gets the text of the block as it is, and else what has
// been found, one by one.
#include "dom/css/SheetParser.h"

#include <espalier/dom/css/CSSCharsetRule.h>
#include <espalier/dom/css/CSSFontFaceRule.h>
#include <espalier/dom/css/CSSImportRule.h>
#include <espalier/dom/css/CSSMediaRule.h>
#include <espalier/dom/css/CSSPageRule.h>
#include <espalier/dom/css/CSSStyleRule.h>
#include <espalier/dom/css/CSSSupportsRule.h>
#include <espalier/dom/css/CSSUnknownRule.h>

#include "dom/css/AddressText.h"
#include "dom/css/AsciiCase.h"
#include "dom/css/CharacterFlags.h"
#include "dom/css/CssCharacters.h"
#include "dom/css/Messages.h"
#include "dom/css/RuleMaking.h"
#include "dom/css/SelectorSummary.h"
#include "dom/css/TextCursor.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace Dom::CSS::detail {

namespace {

// Rules in rules. A list of rules is deleted by recursion, so this bounds the stack, too.
constexpr std::size_t kMostLevels = 256;

// A charset rule has exactly this form: CSS Syntax Level 3 section 3.2.
constexpr std::string_view kCharsetBegin = "@charset \"";

std::string_view TextBetween(const char* begin, const char* end) {
    return {begin, static_cast<std::size_t>(end - begin)};
}

}  // namespace

SheetParser::SheetParser(CSSStyleSheet& sheet, const char* text, std::vector<DroppedText>* dropped)
    : sheet_(sheet), text_(text), scanner_(text), drops_(text, dropped) {}

void SheetParser::Parse() {
    for (;;) {
        SkipBetweenRules();
        switch (scanner_.Front()) {
        case '\0': return;
        case '@': ParseAtRule(); break;
        case '}':
            if (!open_.empty()) {
                open_.pop_back();
                scanner_.Step();
                break;
            }
            [[fallthrough]];
        default: ParseStyleRule(); break;
        }
    }
}

// The marks of comments of HTML count for nothing, but only outside of all blocks.
void SheetParser::SkipBetweenRules() {
    for (;;) {
        scanner_.SkipSpace();
        const char first = scanner_.Front();
        if (!open_.empty() || (first != '<' && first != '-')) return;
        if (std::strncmp(scanner_.At(), "<!--", 4) == 0) {
            scanner_.MoveTo(scanner_.At() + 4);
        } else if (std::strncmp(scanner_.At(), "-->", 3) == 0) {
            scanner_.MoveTo(scanner_.At() + 3);
        } else {
            return;
        }
    }
}

CSSRuleList& SheetParser::Rules() {
    return open_.empty() ? sheet_.CssRules() : open_.back()->CssRules();
}

template <typename Rule>
std::unique_ptr<Rule> SheetParser::Make(const char* begin) {
    CSSRule* const parent = open_.empty() ? sheet_.OwnerRule() : open_.back();
    auto rule = std::make_unique<Rule>(&sheet_, parent, sheet_.Origin());
    RuleMaking::SetPlace(*rule, drops_.PlaceAt(begin), begin);
    return rule;
}

void SheetParser::Add(std::unique_ptr<CSSRule> rule) {
    mayImport_ = mayImport_ && (rule->Type() == CSSRule::IMPORT_RULE ||
                                rule->Type() == CSSRule::CHARSET_RULE || isLayerStatement_);
    Rules().AddItem(rule.get());
    static_cast<void>(rule.release());  // the list's now
}

void SheetParser::ScanPrelude(Prelude& prelude, unsigned stops) {
    if (!open_.empty()) stops |= ComponentScanner::kClosingBrace;
    const char* const begin = scanner_.At();
    prelude.seen = scanner_.ScanTo(stops);
    prelude.text = Trimmed(TextBetween(begin, scanner_.At()));
    constexpr unsigned kNotAsItIs = ComponentScanner::kComment | ComponentScanner::kUnclosed;
    if ((prelude.seen & kNotAsItIs) == 0) return;
    const std::string open = scanner_.Open();
    prelude.bare = WithoutComments(prelude.text);
    prelude.bare.append(open.rbegin(), open.rend());
    prelude.text = prelude.bare;
}

// Moves behind the "}" of a block, from behind its "{".
bool SheetParser::SkipBlock() {
    scanner_.ScanTo(ComponentScanner::kClosingBrace);
    if (scanner_.IsAtEnd()) return false;
    scanner_.Step();
    return true;
}

// Leaves out a rule, from its "{" or whatever has ended what stands before.
void SheetParser::DropBlock(const Prelude& prelude, const char* reason) {
    const SourcePlace place = drops_.IsWanted() ? drops_.PlaceAt(prelude.begin) : SourcePlace();
    if (scanner_.Front() == '{') {
        scanner_.Step();
        SkipBlock();
    } else if (scanner_.Front() == ';') {
        scanner_.Step();
    }
    if (drops_.IsWanted()) drops_.Drop(Kind::Rule, place, prelude.begin, scanner_.At(), reason);
}

void SheetParser::ParseStyleRule() {
    isLayerStatement_ = false;
    Prelude prelude;
    prelude.begin = scanner_.At();
    ScanPrelude(prelude, ComponentScanner::kOpeningBrace);
    if (scanner_.Front() != '{') return DropBlock(prelude, Message::kBlockMissing);
    const SelectorSummary summary = SummarizeSelectors(prelude.text);
    if (summary.fault) {
        // Where comments have been taken out, the offset is that of no place in the text.
        const char* const begin = prelude.begin;
        const std::size_t offset = prelude.bare.empty() ? *summary.fault : 0;
        const SourcePlace place = drops_.PlaceAt(begin + offset);
        scanner_.Step();
        SkipBlock();
        if (drops_.IsWanted())
            drops_.Drop(Kind::Rule, place, begin, scanner_.At(), Message::kSelector);
        return;
    }
    auto rule = Make<CSSStyleRule>(prelude.begin);
    RuleMaking::SetSelectors(*rule, prelude.text, summary.specificity);
    CSSStyleDeclaration& style = rule->Style();
    ParseDeclarations(style);
    Add(std::move(rule));
}

// Reads a block of declarations, from its "{" on.
void SheetParser::ParseDeclarations(CSSStyleDeclaration& style) {
    scanner_.Step();
    const char* const begin = scanner_.At();
    BlockScanner declarations(scanner_);
    std::size_t count = 0;
    for (;; ++count) {
        if (count == declarations_.size()) declarations_.emplace_back();
        if (!declarations.Next(declarations_[count])) break;
    }
    const char* const end = scanner_.At();
    if (!scanner_.IsAtEnd()) scanner_.Step();
    if (declarations.IsPlain() && RuleMaking::SetDeclarations(style, TextBetween(begin, end))) {
        return;
    }
    for (std::size_t i = 0; i < count; ++i) {
        const ScannedDeclaration& declaration = declarations_[i];
        if (declaration.fault == nullptr) RuleMaking::AddDeclaration(style, declaration);
        if (declaration.fault == nullptr || !drops_.IsWanted()) continue;
        drops_.Drop(Kind::Declaration, drops_.PlaceAt(declaration.begin), declaration.begin,
                    declaration.end, declaration.fault);
    }
}

void SheetParser::ParseAtRule() {
    Prelude prelude;
    prelude.begin = scanner_.At();
    scanner_.Step();
    // "@" that begins no name begins no rule of its own either.
    TextCursor cursor(scanner_.At());
    astring buffer;
    const std::string_view name = ReadIdent(cursor, buffer);
    if (name.empty()) {
        scanner_.MoveTo(prelude.begin);
        return ParseStyleRule();
    }
    scanner_.MoveTo(cursor.at);
    ScanPrelude(prelude, ComponentScanner::kOpeningBrace | ComponentScanner::kSemicolon);
    ParseNamedRule(name, prelude);
}

void SheetParser::ParseNamedRule(std::string_view name, const Prelude& prelude) {
    if (EqualIgnoringCase(name, "charset")) {
        if (!ParseCharset(prelude)) DropBlock(prelude, Message::kCharset);
        return;
    }
    if (EqualIgnoringCase(name, "import")) {
        if (!mayImport_ || !open_.empty()) return DropBlock(prelude, Message::kLateImport);
        if (!ParseImport(prelude)) DropBlock(prelude, Message::kImport);
        return;
    }
    // "@layer a;" may stand before imports: CSS Cascading Level 5 section 6.1.
    isLayerStatement_ = EqualIgnoringCase(name, "layer") && scanner_.Front() != '{';
    if (EqualIgnoringCase(name, "media")) return OpenGroup<CSSMediaRule>(prelude);
    if (EqualIgnoringCase(name, "supports")) return OpenGroup<CSSSupportsRule>(prelude);
    if (EqualIgnoringCase(name, "font-face")) return ParseFontFace(prelude);
    if (EqualIgnoringCase(name, "page")) return ParsePage(prelude);
    KeepUnknown(prelude);
}

bool SheetParser::ParseCharset(const Prelude& prelude) {
    if (prelude.begin != text_ || scanner_.Front() != ';') return false;
    const std::string_view rule = TextBetween(prelude.begin, scanner_.At());
    if (!rule.starts_with(kCharsetBegin) || !rule.ends_with('"')) return false;
    if (rule.size() <= kCharsetBegin.size()) return false;
    const std::string_view name =
        rule.substr(kCharsetBegin.size(), rule.size() - kCharsetBegin.size() - 1);
    if (name.find('"') != std::string_view::npos) return false;
    auto made = Make<CSSCharsetRule>(prelude.begin);
    RuleMaking::SetEncoding(*made, name);
    scanner_.Step();
    Add(std::move(made));
    return true;
}

// CSS Cascading Level 3 section 2: '@import' [ <url> | <string> ] <media-query-list>? ';'
bool SheetParser::ParseImport(const Prelude& prelude) {
    if (scanner_.Front() == '{' || (prelude.seen & ComponentScanner::kBad) != 0) return false;
    TextCursor cursor(prelude.text);
    const std::optional<astring> href = ReadAddress(cursor);
    if (!href) return false;
    const std::string_view media =
        Trimmed(TextBetween(cursor.at, prelude.text.data() + prelude.text.size()));
    auto rule = Make<CSSImportRule>(prelude.begin);
    RuleMaking::SetImport(*rule, *href, media);
    if (scanner_.Front() == ';') scanner_.Step();
    Add(std::move(rule));
    return true;
}

template <typename Rule>
void SheetParser::OpenGroup(const Prelude& prelude) {
    if (scanner_.Front() != '{') return DropBlock(prelude, Message::kBlockMissing);
    if (open_.size() == kMostLevels) return DropBlock(prelude, Message::kDepth);
    auto rule = Make<Rule>(prelude.begin);
    RuleMaking::SetCondition(*rule, prelude.text);
    scanner_.Step();
    Rule* const group = rule.get();
    Add(std::move(rule));
    open_.push_back(group);
}

void SheetParser::ParseFontFace(const Prelude& prelude) {
    if (scanner_.Front() != '{') return DropBlock(prelude, Message::kBlockMissing);
    if (!prelude.text.empty()) return DropBlock(prelude, Message::kRule);
    auto rule = Make<CSSFontFaceRule>(prelude.begin);
    ParseDeclarations(rule->Style());
    Add(std::move(rule));
}

void SheetParser::ParsePage(const Prelude& prelude) {
    if (scanner_.Front() != '{') return DropBlock(prelude, Message::kBlockMissing);
    auto rule = Make<CSSPageRule>(prelude.begin);
    RuleMaking::SetSelectors(*rule, prelude.text);
    ParseDeclarations(rule->Style());
    Add(std::move(rule));
}

void SheetParser::KeepUnknown(const Prelude& prelude) {
    auto rule = Make<CSSUnknownRule>(prelude.begin);
    if (scanner_.Front() == '{') {
        scanner_.Step();
        SkipBlock();
    } else if (scanner_.Front() == ';') {
        scanner_.Step();
    }
    rule->SetCssText(astring(Trimmed(TextBetween(prelude.begin, scanner_.At()))));
    Add(std::move(rule));
}

}  // namespace Dom::CSS::detail
