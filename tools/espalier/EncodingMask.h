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

/// What the declaration of a document says of the encoding that the document was in.
struct EncodingMask {
    std::string name;      ///< of that encoding; empty when nothing had to be hidden
    std::string original;  ///< a part of the declaration
    std::string masked;    ///< what stands for that part, and is as long
};

/// Makes the declaration of a document that has been recoded to UTF-8 name UTF-8, or where there is
/// no room for that no encoding, so that a reader does not follow it. What is wrong in the
/// declaration stays wrong.
EncodingMask MaskDeclaredName(PeekedStream& document);

/// Returns `attributes` without the mask.
std::string WithoutMask(std::string_view attributes, const EncodingMask& mask);

}  // namespace Tool
