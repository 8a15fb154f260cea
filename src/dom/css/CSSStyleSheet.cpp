// SPDX-License-Identifier: MIT
#include <espalier/dom/DOMException.h>
#include <espalier/dom/css/CSSStyleRule.h>
#include <espalier/dom/css/CSSStyleSheet.h>
#include <espalier/dom/css/CSSUnknownRule.h>

#include "dom/InterfaceName.h"
#include "dom/css/CssCharacters.h"
#include "dom/css/Messages.h"

#include <memory>

namespace Dom::CSS {

namespace {

constexpr char kType[] = "text/css";

bool IsAtRule(const char* text) {
    while (detail::IsSpace(*text))
        ++text;
    return *text == '@';
}

}  // namespace

CSSStyleSheet::CSSStyleSheet(Node* ownerNode, StyleSheet* parentStyleSheet, const astring& href,
                             const astring& title)
    : StyleSheet(kType, ownerNode, parentStyleSheet, href, title) {}

CSSStyleSheet::CSSStyleSheet(CSSRule* ownerRule, StyleSheet* parentStyleSheet, const astring& href,
                             const astring& title)
    : StyleSheet(kType, nullptr, parentStyleSheet, href, title), ownerRule_(ownerRule) {}

CSSStyleSheet::CSSStyleSheet(CSSRule::RULE_ORIGIN origin, StyleSheet* parentStyleSheet,
                             const astring& href, const astring& title)
    : StyleSheet(kType, nullptr, parentStyleSheet, href, title), origin_(origin) {}

CSSStyleSheet::~CSSStyleSheet() = default;

void* CSSStyleSheet::QueryInterface(const char* name) {
    if (Dom::detail::IsInterface(name, "Dom::CSS::CSSStyleSheet")) return this;
    return StyleSheet::QueryInterface(name);
}

unsigned long CSSStyleSheet::InsertRule(const char* text, unsigned long index) {
    if (index > rules_.Length()) {
        DOMException::ThrowDOMException(DOMException::INDEX_SIZE_ERR,
                                        detail::Message::kInsertionPoint);
    }
    std::unique_ptr<CSSRule> rule;
    if (IsAtRule(text)) {
        rule = std::make_unique<CSSUnknownRule>(this, ownerRule_, origin_);
        rule->SetCssText(text);
    } else {
        rule = CSSStyleRule::Make(this, ownerRule_, origin_, text);
    }
    rules_.AddItemAt(index, rule.get());
    static_cast<void>(rule.release());  // the list's now
    return index;
}

unsigned long CSSStyleSheet::InsertRule(const astring& text, unsigned long index) {
    return InsertRule(text.c_str(), index);
}

// Deliberate: the index behind the last rule is no error.
void CSSStyleSheet::DeleteRule(unsigned long index) {
    if (index > rules_.Length()) {
        DOMException::ThrowDOMException(DOMException::INDEX_SIZE_ERR, detail::Message::kNoSuchRule);
    }
    const std::unique_ptr<CSSRule> rule(rules_.Item(index));
    rules_.RemoveItemAt(index);
}

}  // namespace Dom::CSS
