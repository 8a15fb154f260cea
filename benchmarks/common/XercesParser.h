// SPDX-License-Identifier: MIT
// What the adapters of Xerces' SAX2 parser have in common. Needs Xerces.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>

namespace bench {

/// Xerces' parser, made once for many documents. It checks no grammar, loads nothing, and reports
/// declarations of namespaces among the attributes.
class XercesParser {
public:
    /// `handler` gets content and fatal errors, and is to live as long as the parser. `scanner` is
    /// one of XMLUni's names: fgWFXMLScanner, the fastest, knows no document types.
    XercesParser(xercesc::DefaultHandler& handler, const XMLCh* scanner)
        : reader_(xercesc::XMLReaderFactory::createXMLReader()) {
        using xercesc::XMLUni;
        reader_->setProperty(XMLUni::fgXercesScannerName, const_cast<XMLCh*>(scanner));
        reader_->setFeature(XMLUni::fgSAX2CoreValidation, false);
        reader_->setFeature(XMLUni::fgXercesLoadExternalDTD, false);
        reader_->setFeature(XMLUni::fgSAX2CoreNameSpacePrefixes, true);
        reader_->setContentHandler(&handler);
        reader_->setErrorHandler(&handler);
    }

    void SetLexicalHandler(xercesc::LexicalHandler& handler) {
        reader_->setLexicalHandler(&handler);
    }

    /// Throws std::runtime_error with what Xerces says when the handler throws its error on.
    void Parse(std::string_view document) {
        const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(document.data()),
                                                document.size(), "document", false);
        try {
            reader_->parse(source);
        } catch (const xercesc::SAXException& error) {
            char* message = xercesc::XMLString::transcode(error.getMessage());
            const std::string text = message;
            xercesc::XMLString::release(&message);
            throw std::runtime_error(text);
        }
    }

private:
    // What Xerces needs as long as it is used.
    struct Platform {
        Platform() { xercesc::XMLPlatformUtils::Initialize(); }
        Platform(const Platform&) = delete;
        Platform& operator=(const Platform&) = delete;
        ~Platform() { xercesc::XMLPlatformUtils::Terminate(); }
    };

    Platform platform_;
    std::unique_ptr<xercesc::SAX2XMLReader> reader_;
};

}  // namespace bench
