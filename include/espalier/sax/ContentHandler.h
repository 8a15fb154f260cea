// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/sax/Forward.h>

namespace sax {

/// Receives what stands in a document, in its order.
///
/// Strings end with a zero byte, are UTF-8, and are valid until the function returns. A function
/// that throws ends the parse; the exception passes through XMLReader::parse().
///
/// What an XMLReader reports, and what not, is told there.
class ESPALIER_EXPORT ContentHandler {
public:
    // The order of the virtual functions is part of the binary interface: append, never reorder.

    virtual ~ContentHandler();

    /// Receives an object that tells where in the document the parse is. It is valid until
    /// endDocument() has returned; where something is thrown, until that leaves parse().
    virtual void setDocumentLocator(const Locator* locator) = 0;

    /// Receives the beginning, once, before anything that stands in the document.
    virtual void startDocument() = 0;

    /// Receives the end, once, also after a fatal error that an ErrorHandler has taken. When
    /// parse() throws, there is no such call.
    virtual void endDocument() = 0;

    /// Never called by XMLReader.
    virtual void startPrefixMapping(const char* prefix, const char* uri) = 0;
    /// Never called by XMLReader.
    virtual void endPrefixMapping(const char* prefix) = 0;

    /// Receives a start tag, or an empty-element tag; endElement() follows that at once.
    /// \param uri the namespace; empty without one
    /// \param localName the name without its prefix
    /// \param qName the name as it stands in the document
    virtual void startElement(const char* uri, const char* localName, const char* qName,
                              const Attributes& attributes) = 0;

    /// Receives an end tag, or the end of an empty-element tag, with the names of its start.
    virtual void endElement(const char* uri, const char* localName, const char* qName) = 0;

    /// Receives text: `length` bytes from `text + start` on. One text may come in several parts.
    virtual void characters(const char* text, int start, int length) = 0;

    /// Receives text that is nothing but white space, in the same way.
    virtual void ignorableWhitespace(const char* text, int start, int length) = 0;

    /// Receives a processing instruction; `data` is what follows the target and white space.
    virtual void processingInstruction(const char* target, const char* data) = 0;

    /// Receives the name of an entity that is referred to in a text and cannot be read. XMLReader
    /// calls this only where it was given a reader whose Conformance() is
    /// Xml::XmlConformance::Standard; otherwise external entities stand for nothing, and undeclared
    /// ones are errors.
    virtual void skippedEntity(const char* name) = 0;

protected:
    ContentHandler() = default;
    ContentHandler(const ContentHandler&) = default;
    ContentHandler& operator=(const ContentHandler&) = default;
};

}  // namespace sax
