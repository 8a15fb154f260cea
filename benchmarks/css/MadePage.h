// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

namespace bench {

/// Makes an XHTML-like page of so many elements with the names, classes and ids of the made sheets,
/// the same one every time.
std::string MakePage(std::size_t elements);

}  // namespace bench
