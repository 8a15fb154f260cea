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
};

}  // namespace Dom::StyleSheets
