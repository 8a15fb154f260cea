// SPDX-License-Identifier: MIT
#pragma once

#include "support/DocumentForms.h"

#include <optional>
#include <string>
#include <string_view>

namespace conformance {

/// Returns the document in another form, with a mark where the form has one, and with its encoding
/// declared as `name`, if one is declared.
/// \return nothing where the document is neither in UTF-8 nor in UTF-16 with a mark, or where its
///     mark or its bytes contradict the declaration, so that they are what is wrong
std::optional<std::string> Rewrite(std::string_view document, const support::DocumentForm& form,
                                   std::string_view name);

}  // namespace conformance
