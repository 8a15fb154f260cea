// SPDX-License-Identifier: MIT
#include "dom/css/AncestorFilter.h"

#include "xml/SeededHash.h"

namespace Dom::CSS::detail {

std::uint32_t HashOfName(NameKind kind, std::string_view name) {
    const std::uint32_t hash =
        Xml::detail::SeededHash(name.data(), static_cast<unsigned>(name.size()));
    return hash ^ (static_cast<std::uint32_t>(kind) * 0x9E3779B9U);
}

}  // namespace Dom::CSS::detail
