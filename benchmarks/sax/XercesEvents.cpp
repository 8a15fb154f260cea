// SPDX-License-Identifier: MIT
// Xerces' SAX2 parser with its scanner for documents without a grammar, which is its fastest. The
// parser is made once. Lengths of names are not asked for: it would have to count.
#include "sax/EventLibrary.h"

#include <stdexcept>
#include <type_traits>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>
#include <xercesc/util/XercesVersion.hpp>

namespace bench {

namespace {

namespace xc = xercesc;

// What Xerces needs as long as it is used.
struct Platform {
    Platform() { xc::XMLPlatformUtils::Initialize(); }
    Platform(const Platform&) = delete;
    Platform& operator=(const Platform&) = delete;
    ~Platform() { xc::XMLPlatformUtils::Terminate(); }
};

// Returns the whole text for comparing, and its first unit for measuring.
template <typename Sink>
std::u16string_view ViewOf(const XMLCh* text) {
    if (text == nullptr || *text == 0) return {};
    if constexpr (std::is_same_v<Sink, Touch>) return {text, 1};
    return text;
}

template <typename Sink>
class XercesEventsVisitor final : public EventVisitor<Sink>, private xc::DefaultHandler {
public:
    XercesEventsVisitor() : parser_(xc::XMLReaderFactory::createXMLReader()) {
        parser_->setProperty(xc::XMLUni::fgXercesScannerName,
                             const_cast<XMLCh*>(xc::XMLUni::fgWFXMLScanner));
        parser_->setFeature(xc::XMLUni::fgSAX2CoreValidation, false);
        // Declarations of namespaces are among the attributes.
        parser_->setFeature(xc::XMLUni::fgSAX2CoreNameSpacePrefixes, true);
        parser_->setContentHandler(this);
        parser_->setErrorHandler(this);
    }

    void Visit(std::string_view document, Sink& sink) override {
        sink_ = &sink;
        const xc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(document.data()),
                                           document.size(), "document", false);
        try {
            parser_->parse(source);
        } catch (const xc::SAXException& error) {
            char* message = xc::XMLString::transcode(error.getMessage());
            const std::string text = message;
            xc::XMLString::release(&message);
            throw std::runtime_error(text);
        }
    }

private:
    void startElement(const XMLCh* const uri, const XMLCh* const localName,
                      const XMLCh* const /*name*/, const xc::Attributes& attributes) override {
        const XMLSize_t count = attributes.getLength();
        for (XMLSize_t i = 0; i < count; ++i) {
            sink_->Attribute(
                WideEventName{UriOf(attributes, i), ViewOf<Sink>(attributes.getLocalName(i))},
                ViewOf<Sink>(attributes.getValue(i)));
        }
        sink_->Start(WideEventName{ViewOf<Sink>(uri), ViewOf<Sink>(localName)});
    }

    // Declarations have a namespace of their own here, and none elsewhere.
    static std::u16string_view UriOf(const xc::Attributes& attributes, XMLSize_t i) {
        const std::u16string_view uri = ViewOf<Sink>(attributes.getURI(i));
        if constexpr (std::is_same_v<Sink, Touch>) return uri;
        return uri == xc::XMLUni::fgXMLNSURIName ? std::u16string_view() : uri;
    }

    void endElement(const XMLCh* const uri, const XMLCh* const localName,
                    const XMLCh* const /*name*/) override {
        sink_->End(WideEventName{ViewOf<Sink>(uri), ViewOf<Sink>(localName)});
    }

    void characters(const XMLCh* const text, const XMLSize_t length) override {
        sink_->Text({text, length});
    }

    void ignorableWhitespace(const XMLCh* const text, const XMLSize_t length) override {
        sink_->Text({text, length});
    }

    void processingInstruction(const XMLCh* const target, const XMLCh* const data) override {
        sink_->Instruction(ViewOf<Sink>(target), ViewOf<Sink>(data));
    }

    void fatalError(const xc::SAXParseException& error) override { throw error; }

    Platform platform_;
    std::unique_ptr<xc::SAX2XMLReader> parser_;
    Sink* sink_ = nullptr;  // of the running Visit()
};

}  // namespace

template <typename Sink>
std::unique_ptr<EventVisitor<Sink>> MakeXercesEvents() {
    return std::make_unique<XercesEventsVisitor<Sink>>();
}

template std::unique_ptr<EventVisitor<Touch>> MakeXercesEvents();
template std::unique_ptr<EventVisitor<Digest>> MakeXercesEvents();

std::string XercesEventsVersion() { return XERCES_FULLVERSIONDOT; }

}  // namespace bench
