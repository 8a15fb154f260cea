// SPDX-License-Identifier: MIT
// expat with namespaces. A name is delivered as namespace, separator, local name, and is left as it
// is. The parser is kept and reset for each further document.
#include "reader/ExpatEncoding.h"
#include "sax/EventLibrary.h"

#include <expat.h>

#include <stdexcept>

namespace bench {

namespace {

template <typename Sink>
class ExpatEventsVisitor final : public EventVisitor<Sink> {
public:
    ExpatEventsVisitor() : parser_(XML_ParserCreateNS(nullptr, JoinedEventName::kSeparator)) {
        if (parser_ == nullptr) throw std::runtime_error("no parser");
    }
    ExpatEventsVisitor(const ExpatEventsVisitor&) = delete;
    ExpatEventsVisitor& operator=(const ExpatEventsVisitor&) = delete;
    ~ExpatEventsVisitor() override { XML_ParserFree(parser_); }

    void Visit(std::string_view document, Sink& sink) override {
        XML_ParserReset(parser_, nullptr);
        XML_SetUserData(parser_, &sink);
        XML_SetElementHandler(parser_, StartElement, EndElement);
        XML_SetStartNamespaceDeclHandler(parser_, StartNamespace);
        XML_SetCharacterDataHandler(parser_, Characters);
        XML_SetProcessingInstructionHandler(parser_, Instruction);
        XML_SetUnknownEncodingHandler(parser_, MapEncoding, nullptr);
        if (XML_Parse(parser_, document.data(), static_cast<int>(document.size()), XML_TRUE) !=
            XML_STATUS_OK) {
            throw std::runtime_error(XML_ErrorString(XML_GetErrorCode(parser_)));
        }
    }

private:
    static Sink& SinkOf(void* sink) { return *static_cast<Sink*>(sink); }

    static void StartElement(void* user, const XML_Char* name, const XML_Char** attributes) {
        Sink& sink = SinkOf(user);
        for (; *attributes != nullptr; attributes += 2) {
            sink.Attribute(JoinedEventName{attributes[0]}, attributes[1]);
        }
        sink.Start(JoinedEventName{name});
    }

    static void EndElement(void* user, const XML_Char* name) {
        SinkOf(user).End(JoinedEventName{name});
    }

    static void StartNamespace(void* user, const XML_Char* prefix, const XML_Char* uri) {
        SinkOf(user).Attribute(EventName{nullptr, prefix == nullptr ? "xmlns" : prefix},
                               uri == nullptr ? "" : uri);
    }

    static void Characters(void* user, const XML_Char* text, int length) {
        SinkOf(user).Text(text, static_cast<std::size_t>(length));
    }

    static void Instruction(void* user, const XML_Char* target, const XML_Char* data) {
        SinkOf(user).Instruction(target, data);
    }

    XML_Parser parser_;  // owned
};

}  // namespace

template <typename Sink>
std::unique_ptr<EventVisitor<Sink>> MakeExpatEvents() {
    return std::make_unique<ExpatEventsVisitor<Sink>>();
}

template std::unique_ptr<EventVisitor<Touch>> MakeExpatEvents();
template std::unique_ptr<EventVisitor<Digest>> MakeExpatEvents();

std::string ExpatEventsVersion() { return XML_ExpatVersion(); }

}  // namespace bench
