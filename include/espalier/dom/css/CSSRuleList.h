// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/dom/DOMList.h>
#include <espalier/dom/css/CSSRule.h>

namespace Dom::CSS {

/// The rules of a style sheet, which own them.
class ESPALIER_EXPORT CSSRuleList : public DOMList<CSSRule*> {
public:
    CSSRuleList();
    ~CSSRuleList() override;

    // The order of the virtual functions is part of the binary interface: append, never reorder.

    /// Returns this object as "Dom::CSS::CSSRuleList", or null for other names.
    virtual void* QueryInterface(const char* className);

    /// Takes a rule out, which belongs to the caller and to no sheet then; nothing happens when it
    /// is not in the list.
    void RemoveItem(CSSRule* rule);
    /// Takes rule `index` out in the same way; nothing happens when there are not as many.
    void RemoveItemAt(unsigned long index);

protected:
    using DOMList<CSSRule*>::RemoveItemsIf;  // rules know their sheet
    using DOMList<CSSRule*>::SwapItems;
};

}  // namespace Dom::CSS
