// SPDX-License-Identifier: MIT
// libxml2's SAX2 interface: callbacks, no tree. The parser context is made once; each further
// document goes through xmlCtxtReadMemory, which keeps its buffers and its dictionary of names.
#include "sax/EventLibrary.h"

#include <libxml/parser.h>

#include <stdexcept>

namespace bench {

namespace {

// Depths and lengths as in the corpus are refused without XML_PARSE_HUGE; without XML_PARSE_NOENT
// an ampersand in an attribute's value would be delivered as "&#38;".
constexpr int kOptions = XML_PARSE_HUGE | XML_PARSE_NOENT | XML_PARSE_NONET | XML_PARSE_NOERROR;

// The five pointers of an attribute in the array that startElementNs gets.
enum AttributeField { kLocalName, kPrefix, kUri, kValueBegin, kValueEnd, kFieldsOfAttribute };

const char* Chars(const xmlChar* text) { return reinterpret_cast<const char*>(text); }

template <typename Sink>
class LibxmlEventsVisitor final : public EventVisitor<Sink> {
public:
    LibxmlEventsVisitor() : context_(xmlNewParserCtxt()) {
        if (context_ == nullptr) throw std::runtime_error("no parser context");
        xmlSAXHandler handler = {};
        handler.initialized = XML_SAX2_MAGIC;
        handler.startElementNs = StartElement;
        handler.endElementNs = EndElement;
        handler.characters = Characters;
        handler.ignorableWhitespace = Characters;
        handler.cdataBlock = Characters;
        handler.processingInstruction = Instruction;
        *context_->sax = handler;
        context_->userData = this;
    }
    LibxmlEventsVisitor(const LibxmlEventsVisitor&) = delete;
    LibxmlEventsVisitor& operator=(const LibxmlEventsVisitor&) = delete;
    ~LibxmlEventsVisitor() override { xmlFreeParserCtxt(context_); }

    void Visit(std::string_view document, Sink& sink) override {
        sink_ = &sink;
        xmlFreeDoc(xmlCtxtReadMemory(context_, document.data(), static_cast<int>(document.size()),
                                     nullptr, nullptr, kOptions));
        if (context_->wellFormed == 0) throw std::runtime_error("not well-formed");
    }

private:
    static Sink& SinkOf(void* visitor) {
        return *static_cast<LibxmlEventsVisitor*>(visitor)->sink_;
    }

    static void StartElement(void* visitor, const xmlChar* localName, const xmlChar* /*prefix*/,
                             const xmlChar* uri, int namespaceCount, const xmlChar** namespaces,
                             int attributeCount, int /*defaulted*/, const xmlChar** attributes) {
        Sink& sink = SinkOf(visitor);
        for (int i = 0; i < namespaceCount; ++i) {
            const xmlChar* const prefix = namespaces[2 * i];
            const xmlChar* const bound = namespaces[2 * i + 1];
            sink.Attribute(EventName{nullptr, prefix == nullptr ? "xmlns" : Chars(prefix)},
                           bound == nullptr ? "" : Chars(bound));
        }
        for (int i = 0; i < attributeCount; ++i) {
            const xmlChar** attribute = attributes + kFieldsOfAttribute * i;
            sink.Attribute(EventName{Chars(attribute[kUri]), Chars(attribute[kLocalName])},
                           std::string_view(Chars(attribute[kValueBegin]),
                                            static_cast<std::size_t>(attribute[kValueEnd] -
                                                                     attribute[kValueBegin])));
        }
        sink.Start(EventName{Chars(uri), Chars(localName)});
    }

    static void EndElement(void* visitor, const xmlChar* localName, const xmlChar* /*prefix*/,
                           const xmlChar* uri) {
        SinkOf(visitor).End(EventName{Chars(uri), Chars(localName)});
    }

    static void Characters(void* visitor, const xmlChar* text, int length) {
        SinkOf(visitor).Text(Chars(text), static_cast<std::size_t>(length));
    }

    static void Instruction(void* visitor, const xmlChar* target, const xmlChar* data) {
        SinkOf(visitor).Instruction(Chars(target), data == nullptr ? "" : Chars(data));
    }

    xmlParserCtxtPtr context_;  // owned
    Sink* sink_ = nullptr;      // of the running Visit()
};

}  // namespace

template <typename Sink>
std::unique_ptr<EventVisitor<Sink>> MakeLibxmlEvents() {
    return std::make_unique<LibxmlEventsVisitor<Sink>>();
}

template std::unique_ptr<EventVisitor<Touch>> MakeLibxmlEvents();
template std::unique_ptr<EventVisitor<Digest>> MakeLibxmlEvents();

std::string LibxmlEventsVersion() { return LIBXML_DOTTED_VERSION; }

}  // namespace bench
