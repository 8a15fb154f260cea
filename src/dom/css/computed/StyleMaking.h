// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/css/MediaContext.h>

#include "dom/css/computed/Cascade.h"
#include "dom/css/computed/StyleAdjustment.h"
#include "dom/css/computed/StyleData.h"

#include <cstddef>
#include <memory>

namespace Dom::CSS::detail {

/// Computes the style of an element (CSS 2.1 section 6.1.2).
/// \param cascaded what is declared for it
/// \param parent the style of the element above, or of the element that this is a part of; null for
///     the root element
/// \param budget how many bytes variables may be replaced by; those beyond have no value
std::shared_ptr<StyleData> MakeStyle(const Cascaded& cascaded, const StyleData* parent,
                                     StyledPlace place, const MediaContext& context,
                                     std::size_t budget);

}  // namespace Dom::CSS::detail
