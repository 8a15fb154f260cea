// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CSSRuleList.h>

#include "dom/InterfaceName.h"
#include "dom/css/RuleMaking.h"

namespace Dom::CSS {

CSSRuleList::CSSRuleList() = default;
CSSRuleList::~CSSRuleList() = default;

void* CSSRuleList::QueryInterface(const char* className) {
    return Dom::detail::IsInterface(className, "Dom::CSS::CSSRuleList") ? this : nullptr;
}

void CSSRuleList::RemoveItem(CSSRule* rule) {
    CSSRule* const* const found = std::find(begin(), end(), rule);
    RemoveItemAt(static_cast<unsigned long>(found - begin()));
}

// Who takes a rule may keep it for longer than the sheet is there.
void CSSRuleList::RemoveItemAt(unsigned long index) {
    if (index >= Length()) return;
    CSSRule* const rule = Item(index);
    DOMList<CSSRule*>::RemoveItemAt(index);
    if (rule != nullptr) detail::RuleMaking::Move(*rule, nullptr, nullptr);
}

}  // namespace Dom::CSS
