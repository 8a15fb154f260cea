// SPDX-License-Identifier: MIT
#include <espalier/dom.h>
#include <espalier/encoding/Encoding.h>
#include <espalier/encoding/UnicodeEncodings.h>
#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/sax/Attributes.h>
#include <espalier/sax/InputSource.h>
#include <espalier/sax/XMLReader.h>
#include <espalier/sax/helpers/DefaultHandler.h>
#include <espalier/xml/Formatting.h>
#include <espalier/xml/XmlTextReader.h>
#include <espalier/xml/XmlTextWriter.h>

#include "allocation/EntryPoints.h"

#include <memory>

namespace allocation {
namespace {

using Xml::XmlConformance;
using Xml::XmlEntityHandling;
using Xml::XmlNodeType;
using Xml::XmlTextReader;

// No string keeps it inside.
#define LONG(text) text "-that-is-longer-than-what-a-string-keeps-inside"

// What every kind of node is made of.
constexpr std::string_view kDocument =
    "<?xml version='1.0' encoding='ISO-8859-1' standalone='yes'?>\n"
    "<!DOCTYPE r [<!NOTATION n SYSTEM '" LONG("n") "'><!ENTITY e 'text of an &#65; entity'>"
    "<!ENTITY m '<b>&e;</b> and more text'>]>\n"
    "<r xmlns='urn:" LONG("r") "' xmlns:p='urn:p' xml:lang='en-GB-oed'>"
    "<p:c x='1' p:x='&lt;&#65;\r\n&e;' xml:space='preserve'>  some text &amp; more \r\n"
    "&m;<!-- " LONG("comment") " --><?target " LONG("data") "?><![CDATA[" LONG("section") "]]>"
    "<d>one</d> two <d>three</d></p:c><f><g h='i'/>four</f></r>\n";

// Of what the standard mode does besides: attribute lists, and parameter entities.
constexpr std::string_view kStandardDocument =
    "<?xml version='1.0'?><!DOCTYPE r [<!ENTITY % p \"<!ENTITY e 'text'>\">%p;"
    "<!ELEMENT r (#PCDATA|a)*><!ATTLIST r d CDATA '" LONG("supplied") "' i ID #IMPLIED>"
    "<!ATTLIST a t NMTOKENS ' b  c ' u (x|y) 'x'>]>"
    "<r i=' 1 '>&e;<a/><a u='y' t='  z '>]] &gt;</a></r>";

void Look(XmlTextReader& reader, Sum& sum) {
    while (reader.Read()) {
        sum.Add(reader.Name());
        sum.Add(reader.NamespaceURI());
        sum.Add(reader.Value());
        sum.Add(reader.XmlLang());
        for (bool more = reader.MoveToFirstAttribute(); more; more = reader.MoveToNextAttribute()) {
            sum.Add(reader.Name());
            sum.Add(reader.Value());
            sum.Add(reader.GetAttribute(reader.Name()));
            while (reader.ReadAttributeValue()) {
                sum.Add(reader.Value());
                if (reader.NodeType() == XmlNodeType::EntityReference) reader.ResolveEntity();
            }
        }
        if (reader.NodeType() == XmlNodeType::EntityReference) reader.ResolveEntity();
    }
}

void ReadWith(IO::Stream& stream, Sum& sum, XmlConformance conformance,
              XmlEntityHandling entities) {
    XmlTextReader reader;
    reader.SetStream(&stream, false);
    reader.SetConformance(conformance);
    reader.SetEntityHandling(entities);
    reader.SetNormalization(entities == XmlEntityHandling::ExpandEntities);
    Look(reader, sum);
}

// Goes to the first child of the root, behind "<r ...>".
void EnterRoot(XmlTextReader& reader, IO::Stream& stream) {
    reader.SetEntityHandling(XmlEntityHandling::ExpandEntities);
    reader.SetStream(&stream, false);
    reader.ReadStartElement("r");
}

void ReadParts(IO::Stream& stream, Sum& sum) {
    XmlTextReader reader;
    EnterRoot(reader, stream);
    sum.Add(reader.IsStartElement("c", "urn:p"));
    reader.ReadStartElement("c", "urn:p");
    sum.Add(reader.ReadString());
    sum.Add(reader.ReadElementString());
    sum.Add(reader.ReadString());
    reader.Skip();  // the comment
    reader.Skip();
    sum.Add(reader.ReadString());
    char characters[16];
    while (const int count = reader.ReadChars(characters, 0, 7))
        sum.Add(std::string_view(characters, static_cast<std::size_t>(count)));
    while (reader.Read())
        sum.Add(reader.Name());
}

void ReadMarkup(IO::Stream& stream, Sum& sum) {
    XmlTextReader reader;
    EnterRoot(reader, stream);
    sum.Add(reader.ReadOuterXml());
    sum.Add(reader.ReadInnerXml());
    while (reader.Read())
        sum.Add(reader.Name());
}

void SkipParts(IO::Stream& stream, Sum& sum) {
    XmlTextReader reader;
    EnterRoot(reader, stream);
    reader.Skip();
    sum.Add(reader.Name());
    sum.Add(reader.SkipElement());
    sum.Add(reader.MoveToContent());
    sum.Add(reader.Read());
}

// Writes all nodes of the input again.
void Write(IO::Stream& stream, Sum& sum, Xml::Encoding* encoding) {
    XmlTextReader reader;
    reader.SetStream(&stream, false);
    // Blanks around the root are nothing that can be written.
    reader.SetWhitespaceHandling(XmlTextReader::WsSignificant);
    IO::MemoryStream target;
    {
        Xml::XmlTextWriter writer(&target, encoding);
        writer.SetFormatting(Xml::Formatting::Indented);
        writer.WriteNode(&reader, true);
        writer.Close();
    }
    sum.Add(std::string_view(reinterpret_cast<const char*>(target.GetBuffer()),
                             static_cast<std::size_t>(target.Length())));
}

// Adds up what it is told.
class Listener : public sax::helpers::DefaultHandler {
public:
    explicit Listener(Sum& sum) : sum_(sum) {}

    void startElement(const char* uri, const char*, const char* qName,
                      const sax::Attributes& attributes) override {
        sum_.Add(uri);
        sum_.Add(qName);
        for (int i = 0; i < attributes.getLength(); ++i)
            sum_.Add(attributes.getValue(i));
    }
    void characters(const char* text, int start, int length) override {
        sum_.Add(std::string_view(text + start, static_cast<std::size_t>(length)));
    }
    void processingInstruction(const char*, const char* data) override { sum_.Add(data); }

private:
    Sum& sum_;
};

void Parse(IO::Stream& stream, Sum& sum) {
    sax::XMLReader reader;
    reader.setReportReaderErrors(true);
    Listener listener(sum);
    reader.setContentHandler(&listener);
    reader.setDTDHandler(&listener);
    reader.parse(sax::InputSource(&stream, LONG("system")));
}

// Loads a tree, copies it, changes the copy and writes it.
template <typename DocumentType>
void LoadTree(IO::Stream& stream, Sum& sum) {
    DocumentType document;
    {
        XmlTextReader reader;
        reader.SetStream(&stream, false);
        document.Load(reader, "http://host.example/" LONG("page"));
    }
    const std::unique_ptr<Dom::Node> copy(document.CloneTree());
    auto& tree = static_cast<Dom::Document&>(*copy);
    Dom::Element* const root = tree.DocumentElement();
    root->SetAttribute(LONG("added"), LONG("value"));
    root->AppendChild(tree.CreateTextNode(LONG("text")));
    root->AppendChild(root->FirstChild()->CloneTree());
    root->Normalize();
    sum.Add(root->TextContent());
    IO::MemoryStream target;
    Xml::UTF8Encoding encoding;
    {
        Xml::XmlTextWriter writer(&target, &encoding);
        Dom::WriteNode(tree, writer);
        writer.Close();
    }
    sum.Add(std::string_view(reinterpret_cast<const char*>(target.GetBuffer()),
                             static_cast<std::size_t>(target.Length())));
}

constexpr EntryPoint kPoints[] = {
    {"XmlTextReader, entities resolved", kDocument,
     [](IO::Stream& stream, Sum& sum) {
         ReadWith(stream, sum, XmlConformance::Compatible, XmlEntityHandling::ExpandCharEntities);
     }},
    {"XmlTextReader, entities expanded", kDocument,
     [](IO::Stream& stream, Sum& sum) {
         ReadWith(stream, sum, XmlConformance::Compatible, XmlEntityHandling::ExpandEntities);
     }},
    {"XmlTextReader, standard mode, entities resolved", kStandardDocument,
     [](IO::Stream& stream, Sum& sum) {
         ReadWith(stream, sum, XmlConformance::Standard, XmlEntityHandling::ExpandCharEntities);
     }},
    {"XmlTextReader, standard mode, entities expanded", kStandardDocument,
     [](IO::Stream& stream, Sum& sum) {
         ReadWith(stream, sum, XmlConformance::Standard, XmlEntityHandling::ExpandEntities);
     }},
    {"XmlTextReader::ReadString() and the like", kDocument, ReadParts},
    {"XmlTextReader::ReadOuterXml(), ReadInnerXml()", kDocument, ReadMarkup},
    {"XmlTextReader::Skip(), SkipElement()", kDocument, SkipParts},
    {"XmlTextWriter, UTF-16", kDocument,
     [](IO::Stream& stream, Sum& sum) { Write(stream, sum, Xml::Encoding::Unicode()); }},
    {"XmlTextWriter, a code page", kDocument,
     [](IO::Stream& stream, Sum& sum) { Write(stream, sum, Xml::Encoding::Windows_1252()); }},
    {"sax::XMLReader", kDocument, Parse},
    {"Dom::Document", kDocument, LoadTree<Dom::Document>},
    {"Dom::HTMLDocument", kDocument, LoadTree<Dom::HTMLDocument>},
};

}  // namespace

std::span<const EntryPoint> XmlEntryPoints() { return kPoints; }

}  // namespace allocation
