// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/dom/Forward.h>

namespace Dom::StyleSheets {

/// What a node has to do with the style sheet that it makes or links to.
class ESPALIER_EXPORT LinkStyle {
public:
    /// \param sheet may be null; who derives from this class owns it
    explicit LinkStyle(StyleSheet* sheet) : sheet_(sheet) {}
    LinkStyle(const LinkStyle&) = delete;
    LinkStyle& operator=(const LinkStyle&) = delete;

    // The order of the virtual functions is part of the binary interface: append, never reorder.

    virtual ~LinkStyle();

    /// Returns the sheet, or null.
    StyleSheet* Sheet() const { return sheet_; }

protected:
    void SetSheet(StyleSheet* sheet) { sheet_ = sheet; }

private:
    StyleSheet* sheet_;
};

}  // namespace Dom::StyleSheets
