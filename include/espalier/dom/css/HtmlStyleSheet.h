// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/dom/css/CSSStyleSheet.h>

namespace Dom::CSS {

/// Returns how HTML looks when no sheet says anything: a sheet of a user agent, such as the one in
/// CSS 2.1 appendix D, with the elements of HTML 5. It is made once, is for all threads to read,
/// and must not be changed.
ESPALIER_EXPORT const CSSStyleSheet& HtmlStyleSheet();

}  // namespace Dom::CSS
