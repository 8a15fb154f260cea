// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>
#include <espalier/dom/Element.h>

#include <string_view>

namespace Dom::detail {

inline constexpr std::string_view kXhtmlUri = "http://www.w3.org/1999/xhtml";

/// Tells whether an element has an attribute of that local name and of its own namespace.
inline bool HasAttributeOfOwn(const Element& element, std::string_view name) {
    return !element.NamespaceURI().empty() && element.HasAttributeNS(element.NamespaceURI(), name);
}

/// Returns the value of that attribute or else of the one of that name; empty without either.
inline const astring& XhtmlAttribute(const Element& element, std::string_view name) {
    return HasAttributeOfOwn(element, name) ? element.GetAttributeNS(element.NamespaceURI(), name)
                                            : element.GetAttribute(name);
}

/// Tells whether the value of an attribute "disabled" says so.
bool SaysDisabled(std::string_view value);

}  // namespace Dom::detail
