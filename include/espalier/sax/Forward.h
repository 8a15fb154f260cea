// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Declares the classes of this folder for headers that only name them.

namespace sax {
class Attributes;
class ContentHandler;
class DTDHandler;
class EntityResolver;
class ErrorHandler;
class InputSource;
class Locator;
class SAXException;
class SAXParseException;
class XMLReader;
}  // namespace sax
