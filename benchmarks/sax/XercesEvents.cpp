// SPDX-License-Identifier: MIT
// Xerces' SAX2 parser with its scanner for documents without a grammar, which is its fastest. The
// parser is made once. Lengths of names are not asked for: it would have to count.
#include "common/XercesParser.h"
#include "sax/EventLibrary.h"

#include <type_traits>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>
#include <xercesc/util/XercesVersion.hpp>

namespace bench {

namespace {

namespace xc = xercesc;

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
    XercesEventsVisitor() : parser_(*this, xc::XMLUni::fgWFXMLScanner) {}

    void Visit(std::string_view document, Sink& sink) override {
        sink_ = &sink;
        parser_.Parse(document);
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

    XercesParser parser_;
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
