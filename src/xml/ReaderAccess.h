// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/xml/XmlTextReader.h>

namespace Xml::detail {

/// Lets the layers above work on a reader without copies.
class ReaderAccess {
public:
    static ReaderCore& Core(XmlTextReader& reader) { return *reader.core_; }
};

}  // namespace Xml::detail
