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
    CSSStyleDeclaration& Style() { return style_; }

private:
    CSSStyleDeclaration style_;
};

}  // namespace Dom::CSS
