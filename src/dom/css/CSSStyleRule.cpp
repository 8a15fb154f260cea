// SPDX-License-Identifier: MIT
#include <espalier/dom/DOMException.h>
#include <espalier/dom/css/CSSStyleRule.h>

#include "dom/InterfaceName.h"
#include "dom/css/CompiledSelectors.h"
#include "dom/css/CssCharacters.h"
#include "dom/css/DeclarationScanner.h"
#include "dom/css/Messages.h"
#include "dom/css/Skipping.h"
#include "dom/css/SpecificitySum.h"
#include "dom/css/ValueReading.h"
#include "dom/css/WaitingText.h"
#include "dom/css/Weight.h"

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

namespace Dom::CSS {

namespace {

using detail::Message::kBlock;
using detail::Message::kDeclaration;
using detail::Message::kSelector;

[[noreturn]] void Refuse(const char* message) {
    DOMException::ThrowDOMException(DOMException::SYNTAX_ERR, message);
}

// The parts of the text of a rule.
struct RuleText {
    int specificity;
    std::string_view selectors;
    std::string_view declaration;
};

enum class Block { MayBeMissing, Required };

RuleText ReadRule(const char* begin, Block block) {
    const std::string_view text = begin;
    const char* end = nullptr;
    const int specificity = detail::SpecificitySum(text, end);
    if (specificity < 0) end = detail::FindBlock(begin);
    if (block == Block::Required && *end != '{') Refuse(kDeclaration);
    if (specificity < 0) Refuse(kSelector);
    RuleText rule{specificity, detail::Trimmed({begin, static_cast<std::size_t>(end - begin)}), {}};
    if (block == Block::MayBeMissing) return rule;
    const std::string_view body =
        detail::Trimmed(text.substr(static_cast<std::size_t>(end + 1 - begin)));
    if (body.empty() || body.back() != '}') Refuse(kBlock);
    rule.declaration = body.substr(0, body.size() - 1);
    return rule;
}

}  // namespace

CSSStyleRule::CSSStyleRule(CSSStyleSheet* sheet, CSSRule* parentRule, RULE_ORIGIN origin)
    : CSSRule(STYLE_RULE, origin, sheet, parentRule), style_(this) {}

CSSStyleRule::~CSSStyleRule() { delete compiled_.load(std::memory_order_relaxed); }

void* CSSStyleRule::QueryInterface(const char* className) {
    if (Dom::detail::IsInterface(className, "Dom::CSS::CSSStyleRule")) return this;
    return CSSRule::QueryInterface(className);
}

astring CSSStyleRule::CssText() const {
    astring text = selectorText_;
    text.append(" { ").append(style_.CssText()).append(" }");
    return text;
}

void CSSStyleRule::SetCssText(const char* text) {
    const RuleText rule = ReadRule(text, Block::Required);
    astring selectors = rule.selectors;
    // The properties take the specificity of the rule along, so that is set before they are read.
    specificity_ = rule.specificity;
    style_.SetText(rule.declaration, {Origin(), rule.specificity}, detail::ValueReading::Literal);
    SetSelectors(std::move(selectors));
}

void CSSStyleRule::SetSelectorText(const astring& text) {
    const RuleText rule = ReadRule(text.c_str(), Block::MayBeMissing);
    SetSelectors(astring(rule.selectors));
    specificity_ = rule.specificity;
}

// The piece: [ rule | declaration that waits | selectors and NUL ]
std::unique_ptr<CSSStyleRule> CSSStyleRule::Make(CSSStyleSheet* sheet, CSSRule* parentRule,
                                                 RULE_ORIGIN origin, const char* text) {
    const RuleText parts = ReadRule(text, Block::Required);
    if (!detail::IsSurelyDeclaration(parts.declaration)) {
        auto rule = std::make_unique<CSSStyleRule>(sheet, parentRule, origin);
        rule->SetCssText(text);
        return rule;
    }
    static_assert(alignof(detail::WaitingText) <= alignof(CSSStyleRule));
    const std::size_t size = sizeof(CSSStyleRule);
    const std::size_t waitingSize = detail::WaitingText::SizeFor(parts.declaration.size());
    const std::size_t room = parts.selectors.size() + 1;
    auto* const memory = static_cast<char*>(::operator new(size + waitingSize + room));
    std::unique_ptr<CSSStyleRule> rule(::new (memory) CSSStyleRule(sheet, parentRule, origin));

    rule->specificity_ = parts.specificity;
    char* const selectors = memory + size + waitingSize;
    *std::copy(parts.selectors.begin(), parts.selectors.end(), selectors) = '\0';
    rule->selectorText_ = astring(astring::Placed{selectors, parts.selectors.size(), room});
    rule->style_.waiting_ =
        detail::WaitingText::PlaceAt(memory + size, parts.declaration, {origin, parts.specificity},
                                     detail::ValueReading::Literal)
            .release();
    return rule;
}

void* CSSStyleRule::operator new(std::size_t size) { return ::operator new(size); }

void* CSSStyleRule::operator new(std::size_t size, std::align_val_t alignment) {
    return ::operator new(size, alignment);
}

void CSSStyleRule::operator delete(void* memory) { ::operator delete(memory); }

void CSSStyleRule::operator delete(void* memory, std::align_val_t alignment) {
    ::operator delete(memory, alignment);
}

void CSSStyleRule::SetSelectors(astring&& selectors) noexcept {
    selectorText_ = std::move(selectors);
    delete compiled_.exchange(nullptr);
}

const detail::CompiledSelectors& CSSStyleRule::Compiled() const {
    const detail::CompiledSelectors* compiled = compiled_.load(std::memory_order_acquire);
    if (compiled != nullptr) return *compiled;
    // Another thread may be faster.
    auto fresh = std::make_unique<detail::CompiledSelectors>(selectorText_);
    if (compiled_.compare_exchange_strong(compiled, fresh.get())) return *fresh.release();
    return *compiled;
}

bool CSSStyleRule::MatchesSelector(Element* element, const astring& pseudo) const {
    return element != nullptr && Compiled().Match(*element, pseudo);
}

bool CSSStyleRule::MatchesSelector(const astring& elementName, const astring& id,
                                   const astring& classes) const {
    return Compiled().Match(elementName, id, classes);
}

}  // namespace Dom::CSS
