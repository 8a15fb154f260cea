// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include <vector>

namespace Dom::CSS {

/// What a prefix in selectors stands for (CSS Namespaces section 3).
struct NamespacePrefix {
    astring prefix;  ///< empty for types without a prefix
    astring uri;     ///< of the namespace
};

/// Prefixes; of several that are the same the last one counts.
using NamespacePrefixes = std::vector<NamespacePrefix>;

}  // namespace Dom::CSS
