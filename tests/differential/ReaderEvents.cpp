// SPDX-License-Identifier: MIT
#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>

#include "Events.h"

namespace differential {
namespace {

using Xml::XmlEntityHandling;
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

Reading ReadWithReader(const std::string& document, Detail detail) {
    EventList events(detail);
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(document.data()),
                            static_cast<long>(document.size()));
    try {
        XmlTextReader reader;
        reader.SetStream(&stream, false);
        reader.SetNormalization(true);
        reader.SetEntityHandling(detail == Detail::Whole ? XmlEntityHandling::ExpandEntities
                                                         : XmlEntityHandling::ExpandNothing);
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
