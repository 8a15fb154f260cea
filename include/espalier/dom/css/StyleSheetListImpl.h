// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/dom/css/StyleSheetList.h>

namespace Dom::StyleSheets {

/// A list of style sheets, to change.
///
/// It owns the sheets, but does not insist: a sheet that is deleted by someone else, such as the
/// node that made it, leaves the list.
class ESPALIER_EXPORT StyleSheetListImpl : public StyleSheetList {
public:
    StyleSheetListImpl();
    ~StyleSheetListImpl() override;

    void* QueryInterface(const char* name) override;

    /// Adds a sheet at the end and takes it over.
    /// \pre the list does not hold it already
    void AddItem(StyleSheet* sheet);
    /// Takes a sheet out, which belongs to the caller then, or to the node that made it; nothing
    /// happens when it is not in the list.
    void RemoveItem(StyleSheet* sheet);
    /// Takes sheet `index` out in the same way; nothing happens when there are not as many.
    void RemoveItemAt(unsigned long index);

private:
    friend class StyleSheet;
};

}  // namespace Dom::StyleSheets
