// SPDX-License-Identifier: MIT
#pragma once

#include "Events.h"

namespace differential {

/// Says what becomes of references to entities.
enum class References {
    Kept,     ///< each is a text "&name;"
    Expanded  ///< as far as entities are texts
};

/// Loads a document as a tree and tells it event by event, as if it were read: CDATA sections are
/// texts.
Reading ReadAsTree(const std::string& document, References references = References::Kept);

/// The same with the tree of libxml2.
Reading ReadAsLibxmlTree(const std::string& document, References references = References::Kept);

}  // namespace differential
