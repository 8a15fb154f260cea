// SPDX-License-Identifier: MIT
// Our events, with the features that a parser has when it is made. It is kept from document to
// document.
#include <espalier/io/MemoryStream.h>
#include <espalier/sax/Attributes.h>
#include <espalier/sax/InputSource.h>
#include <espalier/sax/XMLReader.h>
#include <espalier/sax/helpers/DefaultHandler.h>

#include "sax/EventLibrary.h"

namespace bench {

namespace {

template <typename Sink>
class EspalierSaxVisitor final : public EventVisitor<Sink>, private sax::helpers::DefaultHandler {
public:
    EspalierSaxVisitor() { parser_.setContentHandler(this); }

    void Visit(std::string_view document, Sink& sink) override {
        sink_ = &sink;
        IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(document.data()),
                                static_cast<long>(document.size()));
        parser_.parse(sax::InputSource(&stream, ""));
    }

private:
    void startElement(const char* uri, const char* localName, const char* /*qName*/,
                      const sax::Attributes& attributes) override {
        for (int i = 0, count = attributes.getLength(); i < count; ++i) {
            sink_->Attribute(EventName{attributes.getURI(i), attributes.getLocalName(i)},
                             attributes.getValue(i));
        }
        sink_->Start(EventName{uri, localName});
    }
    void endElement(const char* uri, const char* localName, const char* /*qName*/) override {
        sink_->End(EventName{uri, localName});
    }
    void characters(const char* text, int start, int length) override {
        sink_->Text(text + start, static_cast<std::size_t>(length));
    }
    void ignorableWhitespace(const char* text, int start, int length) override {
        sink_->Whitespace(text + start, static_cast<std::size_t>(length));
    }
    void processingInstruction(const char* target, const char* data) override {
        sink_->Instruction(target, data);
    }

    sax::XMLReader parser_;
    Sink* sink_ = nullptr;  // of the running Visit()
};

}  // namespace

template <typename Sink>
std::unique_ptr<EventVisitor<Sink>> MakeEspalierSax() {
    return std::make_unique<EspalierSaxVisitor<Sink>>();
}

template std::unique_ptr<EventVisitor<Touch>> MakeEspalierSax();
template std::unique_ptr<EventVisitor<Digest>> MakeEspalierSax();

}  // namespace bench
