// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/dom/css/StyleSheetList.h>

namespace Dom::StyleSheets {

/// A list of style sheets, to change. It owns the sheets.
class ESPALIER_EXPORT StyleSheetListImpl : public StyleSheetList {
public:
    StyleSheetListImpl();
    ~StyleSheetListImpl() override;

    using DOMList<StyleSheet*>::AddItem;
    using DOMList<StyleSheet*>::RemoveItem;
    using DOMList<StyleSheet*>::RemoveItemAt;
};

}  // namespace Dom::StyleSheets
