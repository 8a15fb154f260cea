// SPDX-License-Identifier: MIT
#pragma once

#include "Console.h"
#include "InputOptions.h"
#include "Output.h"
#include "Progress.h"

namespace Tool {

/// What a verb works with: where answers, complaints and progress go, how documents are read.
struct Context {
    Output out;                 ///< answers
    Progress progress;          ///< how far the work has come
    Console console{progress};  ///< everything else
    InputOptions input;         ///< how documents are read
};

}  // namespace Tool
