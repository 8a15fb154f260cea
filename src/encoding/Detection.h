// SPDX-License-Identifier: MIT
#pragma once

#include "encoding/CharCodec.h"

#include <cstddef>
#include <string_view>

namespace Xml::detail {

/// What the first bytes of an input say about its encoding.
struct Detection {
    const CharCodec* codec;  ///< never null
    int skip;                ///< how many bytes of byte-order mark come before the text
    bool ebcdic;             ///< the input is to be refused: "EBCDIC encoding not supported"
};

/// Finds the encoding of an input from its first four bytes; with fewer it is UTF-8.
/// `installed` is the codec that is kept where the bytes say nothing.
Detection DetectEncoding(const unsigned char* bytes, std::size_t count, const CharCodec& installed);

/// Returns the codec that an encoding declaration selects in a document for which `detected` was
/// found: `detected` itself for a name that is not known, null for one that is refused. Names
/// compare with case.
const CharCodec* ResolveEncodingName(std::string_view name, const CharCodec& detected);

}  // namespace Xml::detail
