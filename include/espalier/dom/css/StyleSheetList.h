// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/dom/DOMList.h>
#include <espalier/dom/css/StyleSheet.h>

namespace Dom::StyleSheets {

/// A list of style sheets, to look at.
class ESPALIER_EXPORT StyleSheetList : public DOMList<StyleSheet*> {
public:
    StyleSheetList();
    ~StyleSheetList() override;

    // The order of the virtual functions is part of the binary interface: append, never reorder.

    /// Returns this object as the class `name`, for example "Dom::StyleSheets::StyleSheetList", or
    /// null when it is none.
    virtual void* QueryInterface(const char* name);

protected:
    using DOMList<StyleSheet*>::AddItem;
    using DOMList<StyleSheet*>::AddItemAt;
    using DOMList<StyleSheet*>::RemoveItem;
    using DOMList<StyleSheet*>::RemoveItemAt;
    using DOMList<StyleSheet*>::RemoveItemsIf;  // sheets know their lists
    using DOMList<StyleSheet*>::SwapItems;
    using DOMList<StyleSheet*>::Clear;
};

}  // namespace Dom::StyleSheets
