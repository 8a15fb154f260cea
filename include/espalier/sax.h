// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Events: a parser that calls handlers, in the manner of SAX2.

/// \namespace sax
/// Events in the manner of SAX2: the parser, its handlers and exceptions; namespaces in scope.

/// \namespace sax::helpers
/// Handlers that do nothing, lists of attributes, and what else programs with handlers want.

#include <espalier/sax/Attributes.h>
#include <espalier/sax/ContentHandler.h>
#include <espalier/sax/DTDHandler.h>
#include <espalier/sax/EntityResolver.h>
#include <espalier/sax/ErrorHandler.h>
#include <espalier/sax/Features.h>
#include <espalier/sax/Forward.h>
#include <espalier/sax/InputSource.h>
#include <espalier/sax/Locator.h>
#include <espalier/sax/SAXException.h>
#include <espalier/sax/SAXNotRecognizedException.h>
#include <espalier/sax/SAXNotSupportedException.h>
#include <espalier/sax/SAXParseException.h>
#include <espalier/sax/XMLReader.h>
#include <espalier/sax/helpers/AttributesImpl.h>
#include <espalier/sax/helpers/DefaultHandler.h>
#include <espalier/sax/helpers/LocatorImpl.h>
#include <espalier/sax/helpers/NamespaceSupport.h>
#include <espalier/sax/helpers/SAXEnumeration.h>
