// SPDX-License-Identifier: MIT
#pragma once

#include "PeekedStream.h"

#include <string>
#include <string_view>

namespace Tool {

/// Looks into a document up to the end of its XML declaration, or as far as it takes to see that
/// it has none.
/// \return what was seen
std::string_view PeekDeclaration(PeekedStream& document);

/// Returns the name of the encoding that an XML declaration names, or empty.
/// \param attributes what stands between "<?xml" and "?>"
std::string_view DeclaredName(std::string_view attributes);

/// Makes the declaration of a document that has been recoded to UTF-8 name an encoding that no
/// reader knows, so that it does not follow it. The new name is as long as the old one.
/// \return the old name; empty when nothing had to be changed
std::string MaskDeclaredName(PeekedStream& document);

/// Returns `attributes` with `name` instead of the mask.
std::string WithoutMask(std::string_view attributes, std::string_view name);

}  // namespace Tool
