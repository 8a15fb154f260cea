// SPDX-License-Identifier: MIT
//
// Parses arbitrary bytes with handlers. The first byte of the input chooses features and handlers,
// the second how many bytes the stream gives at a time, the third the event at which a handler
// throws, if any, the fourth how many nodes a ready reader has read before; the rest is the
// document. It is parsed in one piece too, and both parses must tell the same. Whatever ended them,
// the parser must then parse another document.

#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/sax/Attributes.h>
#include <espalier/sax/Features.h>
#include <espalier/sax/InputSource.h>
#include <espalier/sax/Locator.h>
#include <espalier/sax/SAXParseException.h>
#include <espalier/sax/XMLReader.h>
#include <espalier/sax/helpers/AttributesImpl.h>
#include <espalier/sax/helpers/DefaultHandler.h>
#include <espalier/xml/XmlTextReader.h>

#include "../tests/support/TrickleStream.h"
#include "ReaderStory.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace {

using fuzz::Require;
using fuzz::Story;
using Bytes = std::span<const unsigned char>;

constexpr Xml::XmlEntityLimits kLimits = {1 << 16, 4, 64};  // what a fuzzer has the time for

// The bits of the first byte.
enum Choice : unsigned {
    kNoNamespaces = 1,
    kNamespacePrefixes = 2,
    kNormalization = 4,
    kReportReaderErrors = 8,
    kErrorHandler = 16,
    kDtdHandler = 32,
    kNoContentHandler = 64,
    kReadyReader = 128
};

struct Stopped {};

bool Same(const char* one, const char* other) { return std::strcmp(one, other) == 0; }

// Tells all events, and checks what holds for each.
class Teller : public sax::helpers::DefaultHandler {
public:
    // `throwAt` is the number of the event that throws; 0 for none. A whole document closes what
    // it opens; a reader that had begun before may not.
    Teller(sax::XMLReader& reader, unsigned throwAt, bool isWhole)
        : reader_(reader), throwAt_(throwAt), isWhole_(isWhole) {}

    Story story;
    bool isEnded = false;

    void setDocumentLocator(const sax::Locator* locator) override {
        Require(locator_ == nullptr && locator != nullptr);
        locator_ = locator;
        Tell("locator");
    }
    void startDocument() override {
        Require(locator_ != nullptr && !isStarted_);
        isStarted_ = true;
        Tell("document");
    }
    void endDocument() override {
        Require(isStarted_ && !isEnded);
        Require(!isWhole_ || open_.empty() || hasFailed_);
        isEnded = true;
        Tell("end document");
    }
    void startElement(const char* uri, const char* localName, const char* qName,
                      const sax::Attributes& attributes) override {
        open_.emplace_back(qName);
        for (const char* const text : {uri, localName, qName})
            Tell(text);
        TellAttributes(attributes);
        TellAttributes(sax::helpers::AttributesImpl(attributes));
        TellNode("start");
    }
    void endElement(const char* uri, const char* localName, const char* qName) override {
        Require(!isWhole_ || (!open_.empty() && open_.back() == qName));
        if (!open_.empty()) open_.pop_back();
        for (const char* const text : {uri, localName, qName})
            Tell(text);
        TellNode("end");
    }
    void characters(const char* text, int start, int length) override {
        Require(start == 0 && length >= 0 && text[length] == '\0');
        Tell({text, static_cast<std::size_t>(length)});
        TellNode("text");
    }
    void ignorableWhitespace(const char* text, int start, int length) override {
        Require(std::strspn(text, " \t\r\n") == static_cast<std::size_t>(length));
        Require(start == 0 && length > 0);
        Tell(text);
        TellNode("blank");
    }
    void processingInstruction(const char* target, const char* data) override {
        Tell(target);
        Tell(data);
        TellNode("instruction");
    }
    void notationDecl(const char* name, const char* publicId, const char* systemId) override {
        for (const char* const text : {name, publicId, systemId})
            Tell(text);
        Tell("notation");
    }
    void unparsedEntityDecl(const char* name, const char* publicId, const char* systemId,
                            const char* notationName) override {
        for (const char* const text : {name, publicId, systemId, notationName})
            Tell(text);
        Tell("unparsed");
    }
    void fatalError(const sax::SAXParseException& exception) override {
        hasFailed_ = true;
        Tell(exception.getMessage());
        story.Tell(exception.getLineNumber());
        story.Tell(exception.getColumnNumber());
    }
    void startPrefixMapping(const char*, const char*) override { Require(false); }
    void endPrefixMapping(const char*) override { Require(false); }
    void skippedEntity(const char*) override { Require(false); }

private:
    void Tell(std::string_view text) {
        story.Tell(text);
        if (++events_ == throwAt_) throw Stopped();
    }

    // Tells an event that stands in the document.
    void TellNode(const char* kind) {
        Require(isStarted_ && !isEnded);
        Require(locator_->getLineNumber() >= 1 && locator_->getColumnNumber() >= 1);
        story.Tell(locator_->getLineNumber());
        story.Tell(locator_->getColumnNumber());
        story.Tell(int{reader_.getFeature(sax::features::kIsStandalone)});
        Tell(kind);
    }

    void TellAttributes(const sax::Attributes& attributes) {
        const int count = attributes.getLength();
        Require(attributes.getQName(count) == nullptr && attributes.getQName(-1) == nullptr);
        for (int i = 0; i < count; ++i) {
            const char* const qName = attributes.getQName(i);
            Require(Same(attributes.getType(i), "CDATA"));
            Require(attributes.getIndex(qName) == i);
            Require(Same(attributes.getValue(qName), attributes.getValue(i)));
            const int index = attributes.getIndex(attributes.getURI(i), attributes.getLocalName(i));
            Require(index >= 0 && Same(attributes.getLocalName(index), attributes.getLocalName(i)));
            Require(Same(attributes.getURI(index), attributes.getURI(i)));
            Tell(attributes.getURI(i));
            Tell(attributes.getLocalName(i));
            Tell(qName);
            Tell(attributes.getValue(i));
        }
    }

    sax::XMLReader& reader_;
    const sax::Locator* locator_ = nullptr;
    std::vector<std::string> open_;  // elements
    unsigned events_ = 0;
    unsigned throwAt_;
    bool isWhole_;
    bool isStarted_ = false;
    bool hasFailed_ = false;
};

// One parse of a document.
class Session {
public:
    Session(unsigned choice, unsigned throwAt, unsigned nodesBefore)
        : choice_(choice), throwAt_(throwAt), nodesBefore_(nodesBefore) {
        reader_.setFeature(sax::features::kNamespaces, !Has(kNoNamespaces));
        reader_.setFeature(sax::features::kNamespacePrefixes, Has(kNamespacePrefixes));
        reader_.setFeature(sax::features::kNormalization, Has(kNormalization));
        reader_.setReportReaderErrors(Has(kReportReaderErrors));
        reader_.setEntityLimits(kLimits);
    }

    Story Run(Bytes document, int bytesPerRead) {
        IO::MemoryStream memory(document.data(), static_cast<long>(document.size()));
        support::TrickleStream stream(memory, bytesPerRead);
        Teller teller(reader_, throwAt_, !Has(kReadyReader));
        reader_.setContentHandler(Has(kNoContentHandler) ? nullptr : &teller);
        reader_.setDTDHandler(Has(kDtdHandler) ? &teller : nullptr);
        reader_.setErrorHandler(Has(kErrorHandler) ? &teller : nullptr);
        const bool isComplete = ParseAndTell(stream, teller);
        Require(Has(kNoContentHandler) || teller.isEnded == isComplete);
        RequireUsable();
        return teller.story;
    }

private:
    bool Has(Choice bit) const { return (choice_ & bit) != 0; }

    void Parse(IO::Stream& stream) {
        if (!Has(kReadyReader)) {
            reader_.parse(sax::InputSource(&stream, "document"));
            return;
        }
        Xml::XmlTextReader ready;
        ready.SetStream(&stream, false);
        ready.SetEntityLimits(kLimits);
        for (unsigned i = 0; i < nodesBefore_ && ready.Read(); ++i) {
        }
        const bool normalization = ready.Normalization();
        reader_.parse(sax::InputSource(&ready));
        Require(ready.Normalization() == normalization);
    }

    // Returns whether nothing was thrown.
    bool ParseAndTell(IO::Stream& stream, Teller& teller) {
        try {
            Parse(stream);
            return true;
        } catch (const Stopped&) {
            teller.story.Tell("stopped");
        } catch (const Xml::Exception& error) {
            teller.story.TellError(error);
        } catch (const sax::SAXParseException& error) {
            teller.story.Tell(error.getMessage());
            teller.story.Tell(error.getLineNumber());
            teller.story.Tell(error.getColumnNumber());
        }
        // A handler that throws in endDocument() has been called.
        teller.isEnded = false;
        return false;
    }

    void RequireUsable() {
        Teller teller(reader_, 0, true);
        reader_.setContentHandler(&teller);
        reader_.setErrorHandler(nullptr);
        sax::InputSource source;
        source.setCharacterStream("<a><b x='1'/>text</a>");
        reader_.parse(source);
        Require(teller.isEnded);
    }

    sax::XMLReader reader_;
    unsigned choice_;
    unsigned throwAt_;
    unsigned nodesBefore_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 4) return 0;
    const Bytes document(data + 4, size - 4);
    Session session(data[0], data[2], data[3] % 16);
    const Story whole = session.Run(document, 1024);
    Require(session.Run(document, data[1] % 64 + 1) == whole);
    return 0;
}
