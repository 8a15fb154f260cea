// SPDX-License-Identifier: MIT
#pragma once

#include "InputEncoding.h"
#include "LimitedStream.h"

namespace Tool {

/// How documents are read; the same for all verbs.
struct InputOptions {
    const InputEncoding* encoding = nullptr;  ///< whatever a document says; null: what it says
    SizeLimits limits;
};

}  // namespace Tool
