// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/dom/css/CSSStyleDeclaration.h>

namespace Dom::CSS {

/// What an element with a style of its own has.
class ESPALIER_EXPORT ElementCSSInlineStyle {
public:
    ElementCSSInlineStyle();
    ElementCSSInlineStyle(const ElementCSSInlineStyle&) = delete;
    ElementCSSInlineStyle& operator=(const ElementCSSInlineStyle&) = delete;

    // The order of the virtual functions is part of the binary interface: append, never reorder.

    /// Returns this object as "Dom::CSS::ElementCSSInlineStyle", an element as what it is, too;
    /// null for other names.
    virtual void* QueryInterface(const char* className);

    virtual ~ElementCSSInlineStyle();

    /// Returns the style, to look at or to change.
    CSSStyleDeclaration& Style() {
        UpdateStyle();
        return style_;
    }

protected:
    /// Brings the style up to date before Style() returns it. An element that has it in an
    /// attribute reads that; here nothing happens.
    virtual void UpdateStyle();

    /// Returns the style as it is.
    CSSStyleDeclaration& CurrentStyle() { return style_; }

private:
    CSSStyleDeclaration style_;
};

}  // namespace Dom::CSS
