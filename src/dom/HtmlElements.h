// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/HTMLElement.h>
#include <espalier/dom/NodeParts.h>

#include "dom/XhtmlNames.h"

#include <string_view>

namespace Dom::detail {

/// Returns what tells the class of an element that was made with a namespace: its local name when
/// that is the one of XHTML, else nothing.
inline std::string_view ClassNameOf(const NodeName& name) {
    return *name.uri == kXhtmlUri ? name.LocalName() : std::string_view();
}

/// Makes an element of the class of pages that `className` tells, in the pool, for a place in the
/// tree that it gets at once.
HTMLElement* MakeHtmlElement(DocumentData& data, const NodeName* name, std::string_view className);

}  // namespace Dom::detail
