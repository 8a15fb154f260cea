// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/dom/Forward.h>
#include <espalier/dom/css/Selector.h>

#include <string_view>
#include <vector>

/// \file
/// Finds elements of a tree by selectors.
///
/// \code
///     for (Dom::Element* const link : Dom::CSS::QuerySelectorAll(document, "nav a[href]")) ...
/// \endcode
///
/// A node is a document, an element or any other node; only elements are found. Selectors look at
/// the whole tree: QuerySelector(list, "body li") finds an "li" below `list` also when "body" is
/// above it. Parents and children are those of the tree, also when InsertBefore() left links that
/// do not show them. Nothing recurses.
///
/// Those that take a text throw what the constructor of Selector throws: SelectorException, a
/// DOMException SYNTAX_ERR "Syntax error in selector".

namespace Dom::CSS {

/// \name The first one
/// Return the first element below a node, in document order, that a selector selects; or null.
/// @{
ESPALIER_EXPORT Element* QuerySelector(Node& root, const Selector& selector);
ESPALIER_EXPORT const Element* QuerySelector(const Node& root, const Selector& selector);
ESPALIER_EXPORT Element* QuerySelector(Node& root, std::string_view selector);
ESPALIER_EXPORT const Element* QuerySelector(const Node& root, std::string_view selector);
/// @}

/// \name All of them
/// Return the elements below a node that a selector selects, in document order. The list does not
/// follow changes of the tree.
/// @{
ESPALIER_EXPORT std::vector<Element*> QuerySelectorAll(Node& root, const Selector& selector);
ESPALIER_EXPORT std::vector<const Element*> QuerySelectorAll(const Node& root,
                                                             const Selector& selector);
ESPALIER_EXPORT std::vector<Element*> QuerySelectorAll(Node& root, std::string_view selector);
ESPALIER_EXPORT std::vector<const Element*> QuerySelectorAll(const Node& root,
                                                             std::string_view selector);
/// @}

/// \name This one
/// Tell whether a node is an element that a selector selects.
/// @{
ESPALIER_EXPORT bool Matches(const Node& node, const Selector& selector);
ESPALIER_EXPORT bool Matches(const Node& node, std::string_view selector);
/// @}

/// \name The next one upwards
/// Return the node itself or its nearest ancestor that is an element and that a selector selects;
/// or null.
/// @{
ESPALIER_EXPORT Element* Closest(Node& node, const Selector& selector);
ESPALIER_EXPORT const Element* Closest(const Node& node, const Selector& selector);
ESPALIER_EXPORT Element* Closest(Node& node, std::string_view selector);
ESPALIER_EXPORT const Element* Closest(const Node& node, std::string_view selector);
/// @}

}  // namespace Dom::CSS
