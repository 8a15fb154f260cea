// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

namespace bench {

/// The class that one of a hundred elements has, and no other; they have no elements in them.
/// Bootstrap 5 has one rule for it.
inline constexpr char kRareClass[] = "fst-italic";

/// Makes a page of exactly so many elements, which XML and HTML read alike: rows of cards, tables,
/// lists, buttons and forms with the class names of Bootstrap 5; the same one every time. It links
/// to the sheet "bootstrap.css". \pre at least 1,000 elements
std::string MakeCardPage(std::size_t elements);

}  // namespace bench
