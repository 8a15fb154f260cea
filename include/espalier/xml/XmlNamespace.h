// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

namespace sax {

/// One namespace declaration in an XmlNsSupport, which owns it.
///
/// It is valid until its context is popped; the object then reuses the record.
struct XmlNamespace {
    XmlNamespace* next = nullptr;      ///< the next older declaration, or the next free record
    XmlNamespace* previous = nullptr;  ///< the declaration that this one shadows, or null
    astring prefix;                    ///< the prefix; empty for the default namespace
    unsigned prefixLength = 0;         ///< length of the prefix in bytes
    astring uri;                       ///< the namespace URI; empty when the binding is undone
    int level = 0;                     ///< the context level at which it was declared
    bool redeclared = false;           ///< the prefix was declared again at the same level
    bool current = true;               ///< the prefix resolves to this declaration now
};

}  // namespace sax
