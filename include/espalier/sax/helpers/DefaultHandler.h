// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/sax/ContentHandler.h>
#include <espalier/sax/DTDHandler.h>
#include <espalier/sax/EntityResolver.h>
#include <espalier/sax/ErrorHandler.h>

namespace sax::helpers {

/// A handler that does nothing, to derive from: a handler of one's own then has the functions that
/// it is interested in.
class ESPALIER_EXPORT DefaultHandler : public EntityResolver,
                                       public DTDHandler,
                                       public ContentHandler,
                                       public ErrorHandler {
public:
    DefaultHandler();
    ~DefaultHandler() override;

    /// Returns null.
    InputSource* resolveEntity(const char* publicId, const char* systemId) override;

    void notationDecl(const char* name, const char* publicId, const char* systemId) override;
    void unparsedEntityDecl(const char* name, const char* publicId, const char* systemId,
                            const char* notationName) override;

    void setDocumentLocator(const Locator* locator) override;
    void startDocument() override;
    void endDocument() override;
    void startPrefixMapping(const char* prefix, const char* uri) override;
    void endPrefixMapping(const char* prefix) override;
    void startElement(const char* uri, const char* localName, const char* qName,
                      const Attributes& attributes) override;
    void endElement(const char* uri, const char* localName, const char* qName) override;
    void characters(const char* text, int start, int length) override;
    void ignorableWhitespace(const char* text, int start, int length) override;
    void processingInstruction(const char* target, const char* data) override;
    void skippedEntity(const char* name) override;

    void warning(const SAXParseException& exception) override;
    void error(const SAXParseException& exception) override;

    /// Throws a copy of `exception`.
    void fatalError(const SAXParseException& exception) override;
};

}  // namespace sax::helpers
