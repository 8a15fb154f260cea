// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>

namespace Dom::CSS {

/// Packs the three numbers of a specificity into one: 1000 times 1000 for each id, 1000 for each
/// class, attribute or pseudo-class, 1 for each element. Too many make the largest `int`.
ESPALIER_EXPORT int CSS_SPECIFICITY(int ids, int classes, int elements);

/// Returns the specificity of selectors, summed over all of them, or -1 when the text is refused.
///
/// \param selectorText selectors with commas between them, up to "{" or its NUL
/// \note These are the selectors of CSS 2.1 with the pseudo-classes of Selectors Level 3, less "~",
///     "|", "::" and the operators of attributes other than "=". An attribute is refused behind an
///     id or another attribute.
ESPALIER_EXPORT int CSS_SPECIFICITY(const char* selectorText);

}  // namespace Dom::CSS
