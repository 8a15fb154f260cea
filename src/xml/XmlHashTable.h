// SPDX-License-Identifier: MIT
#pragma once

// What stands behind the table pointer of an XmlHashMap, and the operations that can report more
// than the plain functions do.

#include <espalier/xml/XmlHash.h>

namespace Xml::detail {

/// Makes `target`, which holds no table, a second holder of the table of `source`.
void ShareHashTable(XmlHashMap& target, const XmlHashMap& source) noexcept;

/// \name Change a table
/// These are the plain functions of the same names, which hide one case.
/// \return false, with nothing changed, when the table is shared and there is no memory for a copy
/// @{
bool HashRemoveKey(XmlHashMap& map, const void* key, unsigned length) noexcept;
bool HashRemoveItem(XmlHashMap& map, XmlHashItem* item) noexcept;
bool HashClear(XmlHashMap& map) noexcept;
/// @}

}  // namespace Xml::detail
