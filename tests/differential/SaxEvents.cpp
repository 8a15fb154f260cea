// SPDX-License-Identifier: MIT
#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/sax/Attributes.h>
#include <espalier/sax/Features.h>
#include <espalier/sax/InputSource.h>
#include <espalier/sax/XMLReader.h>
#include <espalier/sax/helpers/DefaultHandler.h>

#include "Events.h"

namespace differential {
namespace {

class Recorder : public sax::helpers::DefaultHandler {
public:
    explicit Recorder(EventList& events) : events_(events) {}

    void startElement(const char* uri, const char* localName, const char*,
                      const sax::Attributes& attributes) override {
        EventList::Attributes taken;
        for (int i = 0; i < attributes.getLength(); ++i) {
            const std::string_view qName = attributes.getQName(i);
            if (qName == "xmlns" || qName.starts_with("xmlns:")) continue;
            taken.emplace_back(ExpandedName(attributes.getURI(i), attributes.getLocalName(i)),
                               attributes.getValue(i));
        }
        events_.Start(ExpandedName(uri, localName), std::move(taken));
    }
    void endElement(const char* uri, const char* localName, const char*) override {
        events_.End(ExpandedName(uri, localName));
    }
    void characters(const char* text, int start, int length) override {
        events_.Text({text + start, static_cast<std::size_t>(length)});
    }
    void ignorableWhitespace(const char* text, int start, int length) override {
        characters(text, start, length);
    }
    void processingInstruction(const char* target, const char* data) override {
        events_.Instruction(target, data);
    }

private:
    EventList& events_;
};

}  // namespace

Reading ReadWithEvents(const std::string& document) {
    EventList events(Detail::Whole);
    Recorder recorder(events);
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(document.data()),
                            static_cast<long>(document.size()));
    try {
        sax::XMLReader reader;
        reader.setFeature(sax::features::kNormalization, true);
        reader.setContentHandler(&recorder);
        reader.parse(sax::InputSource(&stream, "document"));
    } catch (const Xml::Exception& error) {
        const std::string place =
            std::to_string(error.LineNumber()) + ":" + std::to_string(error.LinePos()) + ": ";
        return {events.Lines(), place + error.What()};
    }
    return {events.Lines(), ""};
}

}  // namespace differential
