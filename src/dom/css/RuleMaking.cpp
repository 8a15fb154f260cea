// SPDX-License-Identifier: MIT
#include "dom/css/RuleMaking.h"

#include <espalier/dom/DOMException.h>
#include <espalier/dom/css/CSSCharsetRule.h>
#include <espalier/dom/css/CSSGroupingRule.h>
#include <espalier/dom/css/CSSImportRule.h>
#include <espalier/dom/css/CSSPageRule.h>
#include <espalier/dom/css/CSSStyleSheet.h>
#include <espalier/dom/css/ParseStyleSheet.h>

#include "dom/css/Messages.h"
#include "dom/css/PropertyBuilder.h"
#include "dom/css/TextCursor.h"
#include "dom/css/ValueReading.h"
#include "dom/css/Weight.h"

#include <utility>
#include <vector>

namespace Dom::CSS::detail {

namespace {

// Returns the name of a property without escapes.
std::string_view PlainName(std::string_view name, astring& buffer) {
    if (name.find('\\') == std::string_view::npos) return name;
    TextCursor cursor(name);
    const bool hasStar = SkipCharacter(cursor, '*');
    astring rest;
    buffer = hasStar ? "*" : "";
    buffer += ReadName(cursor, rest);
    return buffer;
}

CSSGroupingRule* AsGroup(CSSRule& rule) {
    const bool isGroup =
        rule.Type() == CSSRule::MEDIA_RULE || rule.Type() == CSSRule::SUPPORTS_RULE;
    return isGroup ? static_cast<CSSGroupingRule*>(&rule) : nullptr;
}

}  // namespace

const char* RuleMaking::Keep(CSSStyleSheet& sheet, std::unique_ptr<const std::string> text) {
    sheet.sources_.push_back(std::move(text));
    return sheet.sources_.back()->c_str();
}

void RuleMaking::SetPlace(CSSRule& rule, SourcePlace place, const char* source) {
    rule.place_ = place;
    rule.source_ = source;
}

// The text that a rule begins in stays with the sheet that it was read into. Rules are not deep in
// each other, so this may recurse, and needs no memory.
void RuleMaking::Move(CSSRule& rule, CSSStyleSheet* sheet, CSSRule* parentRule) noexcept {
    rule.parentStyleSheet_ = sheet;
    rule.parentRule_ = parentRule;
    rule.source_ = nullptr;
    if (CSSGroupingRule* const group = AsGroup(rule)) {
        for (CSSRule* const inner : group->CssRules())
            Move(*inner, sheet, group);
    }
}

void RuleMaking::SetSelectors(CSSStyleRule& rule, std::string_view selectors, int specificity) {
    rule.SetSelectors(astring(selectors));
    rule.specificity_ = specificity;
}

void RuleMaking::SetSelectors(CSSPageRule& rule, std::string_view selectors) {
    rule.selectorText_ = selectors;
}

void RuleMaking::SetCondition(CSSGroupingRule& rule, std::string_view condition) {
    rule.SetConditionText(condition);
}

void RuleMaking::SetImport(CSSImportRule& rule, std::string_view href, std::string_view media) {
    rule.href_ = href;
    rule.media_.SetMediaText(media);
}

void RuleMaking::SetEncoding(CSSCharsetRule& rule, std::string_view name) { rule.encoding_ = name; }

bool RuleMaking::SetDeclarations(CSSStyleDeclaration& style, std::string_view text) {
    try {
        style.SetText(text, WeightOf(style.parentRule_), ValueReading::Exact);
        return true;
    } catch (const DOMException&) {
        style.SetText({}, {}, ValueReading::Exact);
        return false;
    }
}

void RuleMaking::AddDeclaration(CSSStyleDeclaration& style, const ScannedDeclaration& declaration) {
    astring name;
    std::string value;
    std::string_view text = declaration.value;
    if (declaration.hasComment) text = value = WithoutComments(text);
    if (!declaration.unclosed.empty()) text = value = std::string(text) + declaration.unclosed;
    PropertyBuilder(style.List(), WeightOf(style.parentRule_), ValueReading::Exact)
        .AddProperty(PlainName(declaration.name, name), declaration.important, text);
}

std::unique_ptr<CSSRule> MakeRule(const char* text, const CSSRule& like) {
    CSSStyleSheet sheet(like.Origin(), nullptr, "", "");
    std::vector<DroppedText> dropped;
    ParseStyleSheet(sheet, std::string_view(text), {.dropped = &dropped});
    CSSRule* const rule = sheet.CssRules().Item(0);
    bool isGood = sheet.CssRules().Length() == 1 && rule->Type() == like.Type();
    for (const DroppedText& fault : dropped)
        isGood = isGood && fault.kind == DroppedText::Kind::Declaration;
    if (!isGood) DOMException::ThrowDOMException(DOMException::SYNTAX_ERR, Message::kRule);
    sheet.CssRules().RemoveItemAt(0);
    return std::unique_ptr<CSSRule>(rule);
}

}  // namespace Dom::CSS::detail
