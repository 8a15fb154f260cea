// SPDX-License-Identifier: MIT
#pragma once

#include "xml/EntityTable.h"
#include "xml/ReaderCore.h"

#include <string_view>

namespace sax::detail {

/// Tells whether a reference is to be passed over that is not an error: a reader that keeps to the
/// standard lets references to entities pass that it cannot read, because they are external or
/// may be declared where nothing is read (XML 1.0 section 4.4.3).
inline bool IsSkipped(const Xml::detail::ReaderCore& core, std::string_view entity) {
    if (core.conformance != Xml::XmlConformance::Standard) return false;
    const Xml::detail::EntityTable* const table = core.Entities();
    const Xml::detail::EntityRecord* const record =
        table == nullptr ? nullptr : table->FindGeneral(entity);
    return record == nullptr || record->isExternal;
}

}  // namespace sax::detail
