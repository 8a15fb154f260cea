// SPDX-License-Identifier: MIT
#include <espalier/sax/SAXParseException.h>
#include <espalier/sax/helpers/DefaultHandler.h>

namespace sax::helpers {

DefaultHandler::DefaultHandler() = default;
DefaultHandler::~DefaultHandler() = default;

InputSource* DefaultHandler::resolveEntity(const char*, const char*) { return nullptr; }

void DefaultHandler::notationDecl(const char*, const char*, const char*) {}
void DefaultHandler::unparsedEntityDecl(const char*, const char*, const char*, const char*) {}

void DefaultHandler::setDocumentLocator(const Locator*) {}
void DefaultHandler::startDocument() {}
void DefaultHandler::endDocument() {}
void DefaultHandler::startPrefixMapping(const char*, const char*) {}
void DefaultHandler::endPrefixMapping(const char*) {}
void DefaultHandler::startElement(const char*, const char*, const char*, const Attributes&) {}
void DefaultHandler::endElement(const char*, const char*, const char*) {}
void DefaultHandler::characters(const char*, int, int) {}
void DefaultHandler::ignorableWhitespace(const char*, int, int) {}
void DefaultHandler::processingInstruction(const char*, const char*) {}
void DefaultHandler::skippedEntity(const char*) {}

void DefaultHandler::warning(const SAXParseException&) {}
void DefaultHandler::error(const SAXParseException&) {}

void DefaultHandler::fatalError(const SAXParseException& exception) {
    throw SAXParseException(exception);
}

}  // namespace sax::helpers
