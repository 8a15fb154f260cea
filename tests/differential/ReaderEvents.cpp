// SPDX-License-Identifier: MIT
#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextReader.h>

#include "Events.h"

namespace differential {
namespace {

using Xml::XmlNodeType;
using Xml::XmlTextReader;

std::string NameOf(const XmlTextReader& reader) {
    return ExpandedName(reader.NamespaceURI(), reader.LocalName());
}

EventList::Attributes TakeAttributes(XmlTextReader& reader) {
    EventList::Attributes attributes;
    for (bool more = reader.MoveToFirstAttribute(); more; more = reader.MoveToNextAttribute()) {
        if (reader.Name() == "xmlns" || reader.Prefix() == "xmlns") continue;
        attributes.emplace_back(NameOf(reader), reader.Value());
    }
    reader.MoveToElement();
    return attributes;
}

void AddNode(XmlTextReader& reader, EventList& events) {
    switch (reader.NodeType()) {
    case XmlNodeType::Element: {
        const std::string name = NameOf(reader);
        const bool isEmpty = reader.IsEmptyElement();
        events.Start(name, TakeAttributes(reader));
        if (isEmpty) events.End(name);
        break;
    }
    case XmlNodeType::EndElement: events.End(NameOf(reader)); break;
    case XmlNodeType::Text:
    case XmlNodeType::CDATA:
    case XmlNodeType::Whitespace:
    case XmlNodeType::SignificantWhitespace: events.Text(reader.Value()); break;
    case XmlNodeType::Comment: events.Comment(reader.Value()); break;
    case XmlNodeType::ProcessingInstruction:
        events.Instruction(reader.Name(), reader.Value());
        break;
    default: break;
    }
}

}  // namespace

Reading ReadWithReader(const std::string& fileName, Detail detail) {
    EventList events(detail);
    try {
        XmlTextReader reader;
        reader.Open(fileName);
        reader.SetNormalization(true);
        while (reader.Read())
            AddNode(reader, events);
    } catch (const Xml::Exception& error) {
        const std::string place =
            std::to_string(error.LineNumber()) + ":" + std::to_string(error.LinePos()) + ": ";
        return {events.Lines(), place + error.What()};
    }
    return {events.Lines(), ""};
}

}  // namespace differential
