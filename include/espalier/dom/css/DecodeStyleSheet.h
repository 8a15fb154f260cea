// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>

#include <span>
#include <string_view>

namespace Dom::CSS {

/// Returns the text of a style sheet in UTF-8, as ParseStyleSheet() decodes it, without a byte
/// order mark. The places that it tells are places in this text. \param bytes of the sheet \param
/// protocolEncoding,environmentEncoding as in StyleSheetOptions
ESPALIER_EXPORT astring DecodeStyleSheet(std::span<const unsigned char> bytes,
                                         std::string_view protocolEncoding = {},
                                         std::string_view environmentEncoding = {});

}  // namespace Dom::CSS
