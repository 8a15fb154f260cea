// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace support {

/// Returns the bytes of a file; an empty text when it cannot be read.
std::string ContentOf(const std::string& fileName);

/// Fails the test where a page has not `expected` between the line `<!-- name -->` and the next
/// line `<!-- end -->`. With ESPALIER_UPDATE_CASES=1 writes it there.
void ExpectGeneratedPart(const std::string& fileName, const std::string& name,
                         const std::string& expected);

}  // namespace support
