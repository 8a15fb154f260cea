// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CSSPropertyImpl.h>

#include "dom/css/Priority.h"

#include <utility>

namespace Dom::CSS {

// The name comes last, so that the value is in hands when there is no memory for it.
CSSPropertyImpl::CSSPropertyImpl(const astring& name, CSSValue* value, bool important,
                                 CSSRule::RULE_ORIGIN origin, int specificity, bool shorthand)
    : CSSPropertyImpl(astring(), std::shared_ptr<CSSValue>(value), important, origin, specificity,
                      shorthand) {
    name_ = name;
}

CSSPropertyImpl::CSSPropertyImpl(astring&& name, std::shared_ptr<CSSValue>&& value, bool important,
                                 CSSRule::RULE_ORIGIN origin, int specificity, bool shorthand)
    : name_(std::move(name)),
      value_(std::move(value)),
      important_(important),
      origin_(origin),
      specificity_(specificity),
      shorthand_(shorthand) {}

// Deliberate: a copy has the same value object, so that a change of one shows in the other.
CSSPropertyImpl::CSSPropertyImpl(const CSSPropertyImpl&) = default;
CSSPropertyImpl& CSSPropertyImpl::operator=(const CSSPropertyImpl&) = default;
CSSPropertyImpl::~CSSPropertyImpl() = default;

astring CSSPropertyImpl::Priority() const { return important_ ? detail::kImportant : ""; }

void CSSPropertyImpl::SetPriority(std::string_view priority) {
    important_ = detail::IsImportant(priority);
}

astring CSSPropertyImpl::CssText() const {
    astring text = name_;
    text += ": ";
    text += value_->CssText();
    if (important_) (text += " !") += detail::kImportant;
    return text;
}

}  // namespace Dom::CSS
