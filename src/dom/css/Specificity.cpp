// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CssHelpers.h>
#include <espalier/dom/css/Specificity.h>

#include "dom/css/CssCharacters.h"
#include "dom/css/PseudoClass.h"
#include "dom/css/Skipping.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace Dom::CSS {

namespace {

constexpr std::int64_t kStep = 1000;

// Goes through selectors and counts what they consist of.
class SpecificityCounter {
public:
    explicit SpecificityCounter(const char* text) : position_(text) {}

    bool CountGroup();
    std::int64_t Total() const { return (ids_ * kStep + classes_) * kStep + elements_; }

private:
    bool IsAtEnd() const { return *position_ == '\0' || *position_ == '{'; }
    bool CountSelector();
    bool CountToken();
    bool CountElement();
    bool CountId();
    bool CountClass();
    bool CountAttribute();
    bool CountPseudoClass();
    bool SkipAttributeValue();
    bool SkipIdent();

    const char* position_;
    bool hasSubject_ = false;
    std::int64_t ids_ = 0;
    std::int64_t classes_ = 0;
    std::int64_t elements_ = 0;
    astring name_;
};

bool SpecificityCounter::CountGroup() {
    CssHelpers::ParseWhitespace(position_);
    while (!IsAtEnd()) {
        if (!CountSelector()) return false;
        if (IsAtEnd()) break;
        if (!CssHelpers::ParseCommaWhitespace(position_)) return false;
    }
    return true;
}

bool SpecificityCounter::CountSelector() {
    hasSubject_ = false;
    while (!IsAtEnd() && *position_ != ',') {
        if (!CountToken()) return false;
        CssHelpers::ParseWhitespace(position_);
    }
    return true;
}

bool SpecificityCounter::CountToken() {
    switch (*position_) {
    case '#': return CountId();
    case '.': return CountClass();
    case '[': return CountAttribute();
    case ':': return CountPseudoClass();
    case '*':
        ++position_;
        hasSubject_ = true;
        return true;
    case '+':
    case '>':
        ++position_;
        hasSubject_ = false;
        return true;
    default: return CountElement();
    }
}

bool SpecificityCounter::SkipIdent() {
    name_.clear();
    return CssHelpers::ParseIdent(position_, name_);
}

bool SpecificityCounter::CountElement() {
    if (!SkipIdent()) return false;
    ++elements_;
    hasSubject_ = true;
    return true;
}

bool SpecificityCounter::CountId() {
    ++position_;
    name_.clear();
    if (!CssHelpers::ParseName(position_, name_)) return false;
    ++ids_;
    hasSubject_ = false;
    return true;
}

bool SpecificityCounter::CountClass() {
    ++position_;
    if (!SkipIdent()) return false;
    ++classes_;
    hasSubject_ = true;
    return true;
}

// Deliberate: behind an id or another attribute, or at the begin of a selector, an attribute is
// refused.
bool SpecificityCounter::CountAttribute() {
    if (!hasSubject_) return false;
    ++position_;
    CssHelpers::ParseWhitespace(position_);
    if (!SkipIdent()) return false;
    CssHelpers::ParseWhitespace(position_);
    if (*position_ == '=') {
        ++position_;
        if (!SkipAttributeValue()) return false;
    }
    if (*position_ != ']') return false;
    ++position_;
    ++classes_;
    hasSubject_ = false;
    return true;
}

bool SpecificityCounter::SkipAttributeValue() {
    CssHelpers::ParseWhitespace(position_);
    name_.clear();
    if (!CssHelpers::ParseString(position_, name_) && !CssHelpers::ParseIdent(position_, name_)) {
        return false;
    }
    CssHelpers::ParseWhitespace(position_);
    return true;
}

bool SpecificityCounter::CountPseudoClass() {
    ++position_;
    if (!SkipIdent()) return false;
    if (*position_ == '(' && !detail::SkipParentheses(position_)) return false;
    if (detail::CountsAsClass(name_)) ++classes_;
    hasSubject_ = true;
    return true;
}

int Clamp(std::int64_t specificity) {
    return static_cast<int>(std::min<std::int64_t>(specificity, std::numeric_limits<int>::max()));
}

}  // namespace

int CSS_SPECIFICITY(int ids, int classes, int elements) {
    return Clamp((ids * kStep + classes) * kStep + elements);
}

// Deliberate: the selectors of a group are added up.
int CSS_SPECIFICITY(const char* selectorText) {
    SpecificityCounter counter(selectorText);
    return counter.CountGroup() ? Clamp(counter.Total()) : -1;
}

}  // namespace Dom::CSS
