// SPDX-License-Identifier: MIT
#pragma once

#include "dom/css/computed/CustomValues.h"
#include "dom/css/computed/DeclarationBlock.h"

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace Dom::CSS::detail {

/// What an element declares for a custom property.
struct CustomDeclaration {
    std::string_view name;
    std::string_view value;
    WideKeyword keyword;
};

/// Computes the custom properties of an element: variables in them are replaced, and those that
/// depend on themselves have no value (CSS Custom Properties Level 1 section 2.3). Nor have those
/// that depend on others which depend on others, and so on, more than 64 times.
/// \param declared sorted by name, each name once
/// \param inherited those of the element above; may be null
/// \param budget how many bytes variables may be replaced by; less after that
std::shared_ptr<const CustomValues> ResolveCustom(const std::vector<CustomDeclaration>& declared,
                                                  std::shared_ptr<const CustomValues> inherited,
                                                  std::size_t& budget);

}  // namespace Dom::CSS::detail
