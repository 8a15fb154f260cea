// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/DOMImplementation.h>
#include <espalier/dom/Forward.h>

namespace Dom::detail {

/// Returns the implementation that a document has, or one that knows what the library does.
DOMImplementation& ImplementationOf(const Document* document);

}  // namespace Dom::detail
