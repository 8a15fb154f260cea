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

// Joins the parts of the current attribute's value. Entities in it are resolved as they are met.
std::string ResolvedValue(XmlTextReader& reader) {
    std::string value;
    while (reader.ReadAttributeValue()) {
        if (reader.NodeType() == XmlNodeType::EntityReference) reader.ResolveEntity();
        value += reader.Value().view();
    }
    return value;
}

// With ExpandNothing a value is taken as it is, with references that may not be declared.
EventList::Attributes TakeAttributes(XmlTextReader& reader) {
    EventList::Attributes attributes;
    for (bool more = reader.MoveToFirstAttribute(); more; more = reader.MoveToNextAttribute()) {
        if (reader.Name() == "xmlns" || reader.Prefix() == "xmlns") continue;
        if (reader.IsDefault()) continue;
        std::string name = NameOf(reader);
        const bool isWhole = reader.EntityHandling() != XmlEntityHandling::ExpandNothing;
        attributes.emplace_back(std::move(name),
                                isWhole ? ResolvedValue(reader) : std::string(reader.Value()));
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

// Adds an element with all its attributes, declarations of namespaces first.
void AddExactly(XmlTextReader& reader, EventList& events) {
    EventList::Attributes declarations;
    EventList::Attributes others;
    for (const Xml::XmlAttributeRef attribute : reader.Attributes()) {
        const bool isDeclaration =
            reader.Namespaces() && (attribute.Name() == "xmlns" || attribute.Prefix() == "xmlns");
        const std::string value(attribute.Value());
        if (isDeclaration) {
            declarations.emplace_back(std::string(attribute.Name()), value);
        } else {
            others.emplace_back(ExpandedName(attribute.NamespaceURI(), attribute.LocalName()),
                                value);
        }
    }
    declarations.insert(declarations.end(), others.begin(), others.end());
    events.Start(NameOf(reader), std::move(declarations));
    if (reader.IsEmptyElement()) events.End(NameOf(reader));
}

std::string PlaceAndMessage(const Xml::Exception& error) {
    return std::to_string(error.LineNumber()) + ":" + std::to_string(error.LinePos()) + ": " +
           error.What();
}

Reading ReadAll(const std::string& document, Detail detail, XmlEntityHandling handling,
                bool normalizes = true) {
    EventList events(detail);
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(document.data()),
                            static_cast<long>(document.size()));
    try {
        XmlTextReader reader;
        reader.SetStream(&stream, false);
        reader.SetNormalization(normalizes);
        reader.SetEntityHandling(handling);
        while (reader.Read()) {
            if (reader.NodeType() == XmlNodeType::EntityReference) reader.ResolveEntity();
            AddNode(reader, events);
        }
    } catch (const Xml::Exception& error) {
        return {events.Lines(), PlaceAndMessage(error)};
    }
    return {events.Lines(), ""};
}

}  // namespace

Reading ReadWithReader(const std::string& document, Detail detail) {
    return ReadAll(document, detail,
                   detail == Detail::Whole ? XmlEntityHandling::ExpandEntities
                                           : XmlEntityHandling::ExpandNothing);
}

Reading ReadByStandard(const std::string& document, Detail detail, Names names) {
    EventList events(detail);
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(document.data()),
                            static_cast<long>(document.size()));
    try {
        XmlTextReader reader;
        reader.SetConformance(Xml::XmlConformance::Standard);
        reader.SetNamespaces(names == Names::Qualified);
        reader.SetEntityHandling(XmlEntityHandling::ExpandEntities);
        reader.SetStream(&stream, false);
        while (reader.Read()) {
            const bool isTag = reader.NodeType() == XmlNodeType::Element;
            if (isTag && detail == Detail::Exact) {
                AddExactly(reader, events);
            } else {
                AddNode(reader, events);
            }
            if (reader.NodeType() == XmlNodeType::EntityReference) events.Reference();
        }
    } catch (const Xml::Exception& error) {
        return {events.Lines(), PlaceAndMessage(error)};
    }
    return {events.Lines(), ""};
}

Reading ReadUnnormalized(const std::string& document) {
    return ReadAll(document, Detail::Whole, XmlEntityHandling::ExpandEntities, false);
}

Reading ReadByResolving(const std::string& document) {
    return ReadAll(document, Detail::Whole, XmlEntityHandling::ExpandCharEntities);
}

}  // namespace differential
