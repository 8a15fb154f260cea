// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/sax/Forward.h>
#include <espalier/xml/XmlEntityLimits.h>

#include <memory>

namespace sax {

namespace detail {
class Parser;
}

/// Reads a document and calls handlers for what stands in it, in the manner of SAX2.
///
/// \code
///     class Counter : public sax::helpers::DefaultHandler {
///     public:
///         int elements = 0;
///         void startElement(const char*, const char*, const char*,
///                           const sax::Attributes&) override {
///             ++elements;
///         }
///     };
///
///     Counter counter;
///     sax::XMLReader reader;
///     reader.setContentHandler(&counter);
///     reader.parse("books.xml");
/// \endcode
///
/// Elements, text and processing instructions are reported, and behind the document type the
/// notations and unparsed entities that it declares. CDATA sections are text like other text.
/// Text that is nothing but white space comes as ContentHandler::ignorableWhitespace(), also
/// outside of the root element. Entities that the document declares are replaced. Comments, the
/// document type itself and prefix mappings are not reported; declarations of namespaces are
/// attributes like others, without a namespace.
///
/// A document is judged by the rules of its reader: of a reader of its own by
/// Xml::XmlConformance::Compatible, of one that an InputSource brings by that one's Conformance().
/// By the standard, attributes that the document type supplies are reported like others, and
/// entities that cannot be read are given to ContentHandler::skippedEntity().
///
/// Errors in the document are thrown by parse() as Xml::Exception, with a line and a position, like
/// those of Xml::XmlTextReader; see setReportReaderErrors(). What handlers and streams throw passes
/// through parse(), too. After that the reader can parse the next document.
///
/// Handlers are not owned and stay registered between parses. They may be replaced during a parse.
///
/// \note One thread at a time may use a reader; different readers may be used at once.
class ESPALIER_EXPORT XMLReader {
public:
    XMLReader();

    /// Makes a reader with the handlers, features and limits of another.
    XMLReader(const XMLReader& other);

    /// Takes over the handlers, features and limits of another.
    XMLReader& operator=(const XMLReader& other);

    ~XMLReader();

    /// \name Handlers
    /// Null stands for none, as at first.
    /// @{
    void setEntityResolver(EntityResolver* resolver);
    EntityResolver* getEntityResolver() const;
    void setContentHandler(ContentHandler* handler);
    ContentHandler* getContentHandler() const;
    void setDTDHandler(DTDHandler* handler);
    DTDHandler* getDTDHandler() const;
    void setErrorHandler(ErrorHandler* handler);
    ErrorHandler* getErrorHandler() const;
    /// @}

    /// \name Features and properties
    /// features lists the names.
    /// @{

    /// \throws SAXNotRecognizedException "Feature not recognized: " and the name; SAXException
    ///     "Invalid operation" for features::kIsStandalone when nothing is parsed
    bool getFeature(const char* name) const;

    /// \throws SAXNotRecognizedException "Feature not recognized: " and the name;
    ///     SAXNotSupportedException "Feature not supported: " and the name for what cannot be
    ///     switched on; SAXNotSupportedException "Feature can't be set at this time: " and the name
    ///     for what cannot be set, or not during a parse
    void setFeature(const char* name, bool value);

    /// \throws SAXNotRecognizedException "Property not recognized: " and the name, always
    [[noreturn]] void* getProperty(const char* name) const;
    [[noreturn]] void setProperty(const char* name, const void* value);

    /// @}

    /// Says what becomes of errors that the document's reader throws: with true, they are given to
    /// ErrorHandler::fatalError() like the errors that this class finds itself, and are thrown as
    /// SAXParseException when there is no handler. The message and the argument make one text.
    /// False at first.
    void setReportReaderErrors(bool report);
    /// Returns what setReportReaderErrors() has set.
    bool getReportReaderErrors() const;

    /// Says how far the entities of a document may expand, from the next parse on, as
    /// Xml::XmlTextReader::SetEntityLimits() does. A reader that is given as input keeps its own.
    void setEntityLimits(const Xml::XmlEntityLimits& limits);
    /// Returns what setEntityLimits() has set.
    const Xml::XmlEntityLimits& getEntityLimits() const;

    /// Reads a document from the first source that `input` has.
    ///
    /// A reader that is given is read from where it stands to the next end tag that has the depth
    /// of the node it stands on, or to the end of the document: from a start tag, to the end tag of
    /// that element, which is reported. It keeps its own settings but for normalization, which it
    /// gets back, and is not closed. A handler may move or close it.
    ///
    /// \throws SAXException "Invalid operation" when this object is parsing already
    /// \throws SAXParseException without an ErrorHandler: "No input source found.", "Missing start
    ///     element" when the input has ended before it begins, "Unclosed element found.",
    ///     "Error in XML-document.", "Unsupported XML-document." and "Internal error in the SAX
    ///     interface."
    /// \throws Xml::Exception what the document's reader throws, and when the file that the system
    ///     identifier names cannot be opened, before any event
    void parse(const InputSource& input);

    /// Reads the file `systemId`.
    void parse(const astring& systemId);
    void parse(const char* systemId);

private:
    std::unique_ptr<detail::Parser> parser_;
};

}  // namespace sax
