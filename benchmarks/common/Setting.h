// SPDX-License-Identifier: MIT
#pragma once

#include "common/Figures.h"

#include <string>

namespace bench {

/// Returns figures with the compiler and nothing else.
Figures FiguresOfThisBuild();

/// Returns the machine, the compiler and the libraries, a line each.
std::string DescribeSetting(const Figures& figures);

/// Returns the version of our library.
std::string EspalierVersion();

}  // namespace bench
