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

/// What a document that is read by the standard declares its encoding to be.
struct NamedEncoding {
    const CharCodec* codec;  ///< null when it is not known, or contradicts the first bytes
    bool isKnown;
};

/// Finds the encoding of a declaration. Names compare without case (XML 1.0 section 4.3.3).
/// \param detected what the first bytes show
/// \param hasMark whether a byte-order mark is among them
NamedEncoding FindNamedEncoding(std::string_view name, const CharCodec& detected, bool hasMark);

}  // namespace Xml::detail
