// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/css/CSSStyleSheet.h>
#include <espalier/dom/css/NamespacePrefix.h>

namespace Dom::CSS::detail {

/// Returns what the prefixes in the selectors of a sheet stand for: those of its rules "@namespace"
/// before all others but "@charset", "@import" and "@layer" (CSS Namespaces section 2). Not
/// more than 256 are known.
NamespacePrefixes PrefixesOf(const CSSStyleSheet& sheet);

}  // namespace Dom::CSS::detail
