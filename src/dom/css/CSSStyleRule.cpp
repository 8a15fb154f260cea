// SPDX-License-Identifier: MIT
#include <espalier/dom/DOMException.h>
#include <espalier/dom/css/CSSStyleRule.h>
#include <espalier/dom/css/Specificity.h>

#include "dom/InterfaceName.h"
#include "dom/css/CompiledSelectors.h"
#include "dom/css/CssCharacters.h"
#include "dom/css/Messages.h"
#include "dom/css/Skipping.h"
#include "dom/css/Weight.h"

#include <memory>
#include <utility>

namespace Dom::CSS {

namespace {

using detail::Message::kBlock;
using detail::Message::kDeclaration;
using detail::Message::kSelector;

[[noreturn]] void Refuse(const char* message) {
    DOMException::ThrowDOMException(DOMException::SYNTAX_ERR, message);
}

// Returns the specificity of selectors.
int CheckedSpecificity(const char* text) {
    const int specificity = CSS_SPECIFICITY(text);
    if (specificity < 0) Refuse(kSelector);
    return specificity;
}

std::string_view TrimmedBetween(const char* begin, const char* end) {
    return detail::Trimmed({begin, static_cast<std::size_t>(end - begin)});
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
    const char* const block = detail::FindBlock(text);
    if (*block != '{') Refuse(kDeclaration);
    const int specificity = CheckedSpecificity(text);
    const std::string_view body = detail::Trimmed(block + 1);
    if (body.empty() || body.back() != '}') Refuse(kBlock);

    // The properties take the specificity of the rule along, so that is set before they are read.
    astring selectors = TrimmedBetween(text, block);
    specificity_ = specificity;
    style_.SetText(body.substr(0, body.size() - 1), {Origin(), specificity});
    SetSelectors(std::move(selectors));
}

void CSSStyleRule::SetSelectorText(const astring& text) {
    const int specificity = CheckedSpecificity(text.c_str());
    SetSelectors(astring(TrimmedBetween(text.c_str(), detail::FindBlock(text.c_str()))));
    specificity_ = specificity;
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
