// SPDX-License-Identifier: MIT
#pragma once

#include "common/Measure.h"

#include <string>

namespace bench {

/// Writes bytes as base64 and compares the text with RFC 4648, section 4.
/// \return an empty text when it is right, else what is wrong
std::string CheckBase64();

/// Measures WriteBase64() in memory beside memcpy, in bytes of input. The first speed is ours, the
/// second that of memcpy.
Measurement MeasureBase64(const MeasureOptions& options);

}  // namespace bench
