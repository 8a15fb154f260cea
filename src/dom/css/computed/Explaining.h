// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/css/StyleExplanation.h>

#include "dom/css/computed/ElementStyles.h"

#include <string_view>

namespace Dom::CSS::detail {

/// Tells why a property of an element, or of a part of it, has its value.
StyleExplanation Explain(ElementStyles& styles, const Element& element, std::string_view property,
                         std::string_view pseudo);

}  // namespace Dom::CSS::detail
