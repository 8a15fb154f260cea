// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/dom/css/StyleSheetListImpl.h>

namespace Dom::StyleSheets {

/// What a document has to do with style sheets: a list of them, which it owns.
class ESPALIER_EXPORT DocumentStyle {
public:
    DocumentStyle();
    DocumentStyle(const DocumentStyle&) = delete;
    DocumentStyle& operator=(const DocumentStyle&) = delete;

    // The order of the virtual functions is part of the binary interface: append, never reorder.

    /// Returns this object as "Dom::StyleSheets::DocumentStyle" or, for short, "DocumentStyle"; a
    /// document as what a document is, too; null for other names.
    virtual void* QueryInterface(const char* name);

    virtual ~DocumentStyle();

    /// Returns the style sheets of the document.
    StyleSheetListImpl& StyleSheets() { return styleSheets_; }
    const StyleSheetListImpl& StyleSheets() const { return styleSheets_; }

private:
    StyleSheetListImpl styleSheets_;
};

}  // namespace Dom::StyleSheets
