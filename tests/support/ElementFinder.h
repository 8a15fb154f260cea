// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace support {

/// An element as it stands in a document that outlives it.
struct FoundElement {
    std::string_view name;
    std::string_view outer;  ///< with its tags
    std::string_view inner;  ///< between its tags; empty for an empty-element tag
    bool isEmptyTag = false;
};

/// Finds the elements in the text of a well-formed document, in the order of their start tags. It
/// knows nothing but where tags, comments, CDATA sections, processing instructions and document
/// types begin and end, and shares nothing with the library.
/// \throws std::invalid_argument when the tags do not fit together
std::vector<FoundElement> FindElements(std::string_view document);

}  // namespace support
