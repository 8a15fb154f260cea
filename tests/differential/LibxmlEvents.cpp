// SPDX-License-Identifier: MIT
#include "Events.h"
#include "Libxml.h"

namespace differential {
namespace {

// What the private pointer of a parser context leads to. A context that libxml2 makes for the text
// of an entity has the same.
EventList& EventsOf(void* context) {
    return *static_cast<EventList*>(static_cast<xmlParserCtxtPtr>(context)->_private);
}

bool IsInSubset(void* context) { return static_cast<xmlParserCtxtPtr>(context)->inSubset != 0; }

// An attribute is five pointers: local name, prefix, namespace, and begin and end of the value.
constexpr std::ptrdiff_t kPointersPerAttribute = 5;

void OnStart(void* context, const xmlChar* name, const xmlChar*, const xmlChar* uri, int,
             const xmlChar**, int count, int defaultedCount, const xmlChar** attributes) {
    EventList::Attributes taken;
    // Attributes that the document type supplies come after those of the tag.
    for (int i = 0; i < count - defaultedCount; ++i) {
        const xmlChar** const attribute = attributes + i * kPointersPerAttribute;
        taken.emplace_back(ExpandedName(TextOf(attribute[2]), TextOf(attribute[0])),
                           TextOf(attribute[3], attribute[4]));
    }
    EventsOf(context).Start(ExpandedName(TextOf(uri), TextOf(name)), std::move(taken));
}

void OnEnd(void* context, const xmlChar* name, const xmlChar*, const xmlChar* uri) {
    EventsOf(context).End(ExpandedName(TextOf(uri), TextOf(name)));
}

void OnText(void* context, const xmlChar* text, int length) {
    EventsOf(context).Text(TextOf(text, text + length));
}

void OnComment(void* context, const xmlChar* text) {
    if (!IsInSubset(context)) EventsOf(context).Comment(TextOf(text));
}

void OnInstruction(void* context, const xmlChar* target, const xmlChar* data) {
    if (!IsInSubset(context)) EventsOf(context).Instruction(TextOf(target), TextOf(data));
}

void SetHandlers(xmlSAXHandler& handlers) {
    handlers.startElementNs = OnStart;
    handlers.endElementNs = OnEnd;
    handlers.characters = OnText;
    handlers.ignorableWhitespace = OnText;
    handlers.cdataBlock = OnText;
    handlers.comment = OnComment;
    handlers.processingInstruction = OnInstruction;
}

std::string MessageOf(const xmlParserCtxt& context) {
    const char* const message = context.lastError.message;
    std::string text = message == nullptr ? "is refused" : message;
    while (!text.empty() && text.back() == '\n')
        text.pop_back();
    return text;
}

}  // namespace

Reading ReadWithLibxml(const std::string& document, Detail detail) {
    constexpr int kOptions = XML_PARSE_NOENT | XML_PARSE_NONET | XML_PARSE_HUGE |
                             XML_PARSE_NOERROR | XML_PARSE_NOWARNING;
    const LibxmlContext context = MakeLibxmlContext();
    EventList events(detail);
    context->_private = &events;
    SetHandlers(*context->sax);
    xmlDoc* const tree =
        xmlCtxtReadMemory(context.get(), document.data(), static_cast<int>(document.size()),
                          nullptr, nullptr, kOptions);
    xmlFreeDoc(tree);
    const bool isGood = context->wellFormed != 0 && context->nsWellFormed != 0;
    return {events.Lines(), isGood ? "" : MessageOf(*context)};
}

}  // namespace differential
