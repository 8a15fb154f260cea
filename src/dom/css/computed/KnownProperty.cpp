// SPDX-License-Identifier: MIT
#include <espalier/dom/css/KnownProperty.h>

#include "dom/css/computed/DeclarationBlock.h"
#include "dom/css/computed/PropertyTable.h"
#include "dom/css/computed/ShorthandExpansion.h"

namespace Dom::CSS {

bool IsKnownProperty(std::string_view name) {
    return detail::IsCustomProperty(name) || detail::FindProperty(name).has_value() ||
           !detail::LonghandsOf(detail::PropertyName(name)).empty();
}

}  // namespace Dom::CSS
