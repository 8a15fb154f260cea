// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/css/Selector.h>

#include "Context.h"

#include <optional>
#include <string>
#include <string_view>

namespace Tool {

/// Returns the selector that an argument is; or nothing, after it has complained, with a caret
/// below the error.
/// \param verb the name of the verb, for the complaint
std::optional<Dom::CSS::Selector> ReadSelector(const std::string& text,
                                               const Dom::CSS::NamespacePrefixes& prefixes,
                                               std::string_view verb, Context& context);

}  // namespace Tool
