// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Document.h>

#include "Document.h"

namespace Tool {

/// Reads a document to its end and makes a tree of it, with all its white space and without an
/// address.
/// \throws Xml::Exception for an error in the document
void LoadTree(Document& document, Dom::Document& tree);

}  // namespace Tool
