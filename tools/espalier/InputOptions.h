// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/xml/XmlConformance.h>

#include "InputEncoding.h"
#include "LimitedStream.h"

namespace Tool {

/// How documents are read; the same for all verbs.
struct InputOptions {
    const InputEncoding* encoding = nullptr;  ///< whatever a document says; null: what it says
    SizeLimits limits;
    Xml::XmlConformance conformance;  ///< by which rules documents are judged
};

}  // namespace Tool
