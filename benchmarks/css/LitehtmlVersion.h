// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace bench {

/// Returns the version of litehtml; empty where CMake has not found it out: its headers do not say.
inline std::string LitehtmlVersion() { return ESPALIER_LITEHTML_VERSION; }

}  // namespace bench
