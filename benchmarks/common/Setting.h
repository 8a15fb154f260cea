// SPDX-License-Identifier: MIT
#pragma once

#include "common/Table.h"

#include <string>

namespace bench {

/// Returns the machine, the compiler and the libraries as the caller names them, a line each.
std::string DescribeSetting(const std::string& libraries, TableFormat format);

/// Returns the version of our library.
std::string EspalierVersion();

}  // namespace bench
