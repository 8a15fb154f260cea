// SPDX-License-Identifier: MIT
// The destructors of the interfaces stand here, so that their tables are in the library alone.

#include <espalier/sax/Attributes.h>
#include <espalier/sax/ContentHandler.h>
#include <espalier/sax/DTDHandler.h>
#include <espalier/sax/EntityResolver.h>
#include <espalier/sax/ErrorHandler.h>
#include <espalier/sax/Locator.h>

namespace sax {

Attributes::~Attributes() = default;
ContentHandler::~ContentHandler() = default;
DTDHandler::~DTDHandler() = default;
EntityResolver::~EntityResolver() = default;
ErrorHandler::~ErrorHandler() = default;
Locator::~Locator() = default;

}  // namespace sax
