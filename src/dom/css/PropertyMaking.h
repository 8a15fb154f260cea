// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/css/CSSPropertyImpl.h>
#include <espalier/dom/css/CSSRule.h>

#include "dom/css/ValueReading.h"

#include <memory>
#include <string_view>

namespace Dom::CSS::detail {

/// What a property is besides its name and value.
struct PropertyTraits {
    bool important;
    CSSRule::RULE_ORIGIN origin;
    int specificity;
    bool shorthand;
};

/// Makes a property whose value is what a text says.
/// \param text without white space around it
std::unique_ptr<CSSPropertyImpl> MakeProperty(std::string_view name, std::string_view text,
                                              const PropertyTraits& traits, ValueReading reading);

/// Makes a property with the name of another and a copy of its value.
std::unique_ptr<CSSPropertyImpl> CopyProperty(const CSSPropertyImpl& property,
                                              const PropertyTraits& traits);

}  // namespace Dom::CSS::detail
