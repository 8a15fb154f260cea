// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Node.h>

#include <memory>

namespace Dom {

/// Owns a node that is not in a tree yet, or any more.
///
/// \code
///     Dom::NodePtr item(document.CreateElement("item"));
///     ...                                          // destroyed when something throws
///     list->AppendChild(item.get());
///     item.release();                              // now the list owns it
/// \endcode
using NodePtr = std::unique_ptr<Node>;

}  // namespace Dom
