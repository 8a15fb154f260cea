// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/dom/Forward.h>

namespace Dom::StyleSheets {

/// What a node has to do with the style sheet that it makes or links to.
///
/// A sheet is kept in one place at most. Whoever deletes it, Sheet() is null from then on.
class ESPALIER_EXPORT LinkStyle {
public:
    /// \param sheet may be null; who derives from this class owns it
    explicit LinkStyle(StyleSheet* sheet);
    LinkStyle(const LinkStyle&) = delete;
    LinkStyle& operator=(const LinkStyle&) = delete;

    // The order of the virtual functions is part of the binary interface: append, never reorder.

    /// Returns this object as "Dom::StyleSheets::LinkStyle", a node as what the node is, too; null
    /// for other names.
    virtual void* QueryInterface(const char* name);

    virtual ~LinkStyle();

    /// Returns the sheet, or null.
    StyleSheet* Sheet() const { return sheet_; }

protected:
    /// Keeps another sheet, or none. The one before is not deleted; `sheet` leaves who kept it.
    void SetSheet(StyleSheet* sheet);

private:
    friend class StyleSheet;

    StyleSheet* sheet_ = nullptr;
};

}  // namespace Dom::StyleSheets
