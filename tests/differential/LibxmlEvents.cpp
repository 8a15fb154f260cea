// SPDX-License-Identifier: MIT
#include "Events.h"

#include <libxml/xmlreader.h>

#include <memory>

namespace differential {
namespace {

std::string_view TextOf(const xmlChar* text) {
    return text == nullptr ? std::string_view() : reinterpret_cast<const char*>(text);
}

std::string NameOf(xmlTextReaderPtr reader) {
    return ExpandedName(TextOf(xmlTextReaderConstNamespaceUri(reader)),
                        TextOf(xmlTextReaderConstLocalName(reader)));
}

EventList::Attributes TakeAttributes(xmlTextReaderPtr reader) {
    EventList::Attributes attributes;
    while (xmlTextReaderMoveToNextAttribute(reader) == 1) {
        if (xmlTextReaderIsNamespaceDecl(reader) == 1) continue;
        attributes.emplace_back(NameOf(reader), TextOf(xmlTextReaderConstValue(reader)));
    }
    xmlTextReaderMoveToElement(reader);
    return attributes;
}

void AddNode(xmlTextReaderPtr reader, EventList& events) {
    switch (xmlTextReaderNodeType(reader)) {
    case XML_READER_TYPE_ELEMENT: {
        const std::string name = NameOf(reader);
        const bool isEmpty = xmlTextReaderIsEmptyElement(reader) == 1;
        events.Start(name, TakeAttributes(reader));
        if (isEmpty) events.End(name);
        break;
    }
    case XML_READER_TYPE_END_ELEMENT: events.End(NameOf(reader)); break;
    case XML_READER_TYPE_TEXT:
    case XML_READER_TYPE_CDATA:
    case XML_READER_TYPE_WHITESPACE:
    case XML_READER_TYPE_SIGNIFICANT_WHITESPACE:
        events.Text(TextOf(xmlTextReaderConstValue(reader)));
        break;
    case XML_READER_TYPE_COMMENT: events.Comment(TextOf(xmlTextReaderConstValue(reader))); break;
    case XML_READER_TYPE_PROCESSING_INSTRUCTION:
        events.Instruction(TextOf(xmlTextReaderConstName(reader)),
                           TextOf(xmlTextReaderConstValue(reader)));
        break;
    default: break;
    }
}

}  // namespace

Reading ReadWithLibxml(const std::string& fileName, Detail detail) {
    constexpr int kOptions =
        XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_NOERROR | XML_PARSE_NOWARNING;
    const std::unique_ptr<xmlTextReader, decltype(&xmlFreeTextReader)> reader(
        xmlReaderForFile(fileName.c_str(), nullptr, kOptions), &xmlFreeTextReader);
    if (!reader) return {{}, "cannot be opened"};
    EventList events(detail);
    int status = xmlTextReaderRead(reader.get());
    for (; status == 1; status = xmlTextReaderRead(reader.get()))
        AddNode(reader.get(), events);
    return {events.Lines(), status == 0 ? "" : "is refused"};
}

}  // namespace differential
