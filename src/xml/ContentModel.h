// SPDX-License-Identifier: MIT
#pragma once

#include "xml/DeclarationScanner.h"
#include "xml/XmlScanner.h"

namespace Xml::detail {

/// Parses the content of an element declaration (XML 1.0 [46]): EMPTY, ANY or a group. Nothing of
/// it is kept, since only a validating processor needs it.
void ParseContentModel(XmlScanner& scanner, DeclarationScanner& parts);

}  // namespace Xml::detail
