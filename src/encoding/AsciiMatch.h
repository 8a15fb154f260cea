// SPDX-License-Identifier: MIT
#pragma once

namespace Xml::detail {

/// CharCodec::MatchAscii() for the encodings in which an ASCII character is one byte.
inline bool MatchAsciiBytes(const unsigned char* position, const unsigned char* end,
                            const char* literal, const unsigned char*& matchedEnd) {
    while (*literal != 0 && position < end && *position == static_cast<unsigned char>(*literal)) {
        ++position;
        ++literal;
    }
    matchedEnd = position;
    return *literal == 0;
}

}  // namespace Xml::detail
