// SPDX-License-Identifier: MIT
#pragma once

#include "Events.h"

namespace differential {

/// Loads a document as a tree and tells it event by event, as if it were read: CDATA sections are
/// texts, and a reference to an entity is a text "&name;".
Reading ReadAsTree(const std::string& document);

/// The same with the tree of libxml2, which does not expand entities either.
Reading ReadAsLibxmlTree(const std::string& document);

}  // namespace differential
