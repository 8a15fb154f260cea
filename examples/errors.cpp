// SPDX-License-Identifier: MIT
// Provokes every message of the reader and prints it: errors
//
// The table in docs/errors.md shows the same inputs; a test compares the two.
#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>

#include <iostream>
#include <string>

namespace {

struct Document {
    std::string text;
    std::string shown = {};  // what is printed instead, where the text is no pleasure to read
};

// A document that refers to the last of some entities, each of which refers so many times to the
// one before; the first refers to none.
std::string Chain(int entities, int references) {
    std::string text = "<!DOCTYPE a [<!ENTITY e0 'x'>";
    for (int i = 1; i <= entities; ++i) {
        text += "<!ENTITY e" + std::to_string(i) + " '";
        for (int j = 0; j < references; ++j)
            text += "&e" + std::to_string(i - 1) + ";";
        text += "'>";
    }
    return text + "]><a>&e" + std::to_string(entities) + ";</a>";
}

const Document kDocuments[] = {
    // Beginning and end.
    {"<!-- no more -->"},
    {"<a><b></b>"},
    {"<a><b/></a", ""},
    {"Lorem"},

    // Characters and references.
    {"<a>\x01</a>", "<a>\\x01</a>"},
    {"<a>\xFF</a>", "<a>\\xFF</a>"},
    {"<a>&#0;</a>"},
    {"<a>&#1a;</a>"},
    {"<a>&#x110000;</a>"},
    {"<a>&#" + std::string(1025, '0') + ";</a>", "a character reference with 1025 digits"},
    {"<a>fish & chips</a>"},
    {"<a>&amp</a>"},
    {"<a>&e;</a>"},
    {R"(<!DOCTYPE a [<!ENTITY e "&#38;#0;">]><a>&e;</a>)"},
    {R"(<!DOCTYPE a [<!ENTITY e "&e;">]><a>&e;</a>)"},
    {Chain(30, 2), "30 entities, each referring twice to the one before"},
    {Chain(1024, 1), "1024 entities, each referring to the one before"},

    // Tags.
    {"<a>< b/></a>"},
    {"<a 1='x'/>"},
    {"<a x/>"},
    {"<a x=y/>"},
    {"<a x='<'/>"},
    {"<a x"},
    {"<" + std::string(1025, 'n') + "/>", "an element name of 1025 bytes"},
    {"<a:b:c/>"},
    {"<a x='1' x='2'/>"},
    {"<a xml:space='no'/>"},
    {"<a xml:lang='!'/>"},
    {"<a/></a>"},
    {"<a></b>"},
    {"<a></a b>"},

    // Text, sections and comments.
    {"text<a/>"},
    {"<a>]]></a>"},
    {"<a><![CDATA[x"},
    {"<a><![CDATAx]]></a>"},
    {"<![CDATA[x]]><a/>"},
    {"<!--a--b--><a/>"},
    {"<!--a"},

    // Instructions and the declaration.
    {"<?XML x?><a/>"},
    {"<?pi+?><a/>"},
    {"<?pi x"},
    {"<? pi?><a/>"},
    {" <?xml version='1.0'?><a/>"},
    {"<?xml encoding='UTF-8'?><a/>"},
    {"<?xml version='1.1'?><a/>"},
    {"<?xml version='1.0' encoding='UTF-16'?><a/>"},
    {"<?xml version='1.0' standalone='maybe'?><a/>"},

    // The document type.
    {"<!ELEMENT a ANY><a/>"},
    {"<!DOCTYPE a><!DOCTYPE a><a/>"},
    {"<!DOCTYPE 'a'><a/>"},
    {"<a/><!DOCTYPE a>"},
    {"<!DOCTYPE a 'b'><a/>"},
    {"<!DOCTYPE a b><a/>"},
    {"<!DOCTYPE a ["},
    {"<!DOCTYPE a [<"},
    {"<!DOCTYPE a [<!"},

    // External identifiers.
    {"<!DOCTYPE a SYSTEM b><a/>"},
    {"<!DOCTYPE a SYSTEM 'b"},
    {"<!DOCTYPE a SYSTEM '" + std::string(1025, 'b') + "'><a/>",
     "a document type with a system identifier of 1025 bytes"},
    {"<!DOCTYPE a PUBLIC '{' 'b'><a/>"},
    {"<!DOCTYPE a PUBLIC 'b'><a/>"},
    {"<!DOCTYPE a PUBLIC 'b''c'><a/>"},

    // Declarations of entities.
    {"<!DOCTYPE a [<!ENTITY 1 'x'>]><a/>"},
    {"<!DOCTYPE a [<!ENTITY e>]><a/>"},
    {"<!DOCTYPE a [<!ENTITY e 'x' y>]><a/>"},
    {"<!DOCTYPE a [<!ENTITY e x 'y'>]><a/>"},
    {"<!DOCTYPE a [<!ENTITY e '%p;'>]><a/>"},
    {"<!DOCTYPE a [<!ENTITY e 'x"},
    {"<!DOCTYPE a [<!ENTITY e SYSTEM 'x' y>]><a/>"},
    {"<!DOCTYPE a [<!ENTITY % e SYSTEM 'x' NDATA n>]><a/>"},
    {"<!DOCTYPE a [<!ENTITY e SYSTEM 'x' NDATA>]><a/>"},
    {"<!DOCTYPE a [<!ENTITY e SYSTEM 'x' NDATA n>]><a/>"},

    // Declarations of notations.
    {"<!DOCTYPE a [<!NOTATION>]><a/>"},
    {"<!DOCTYPE a [<!NOTATION a:b SYSTEM 'x'>]><a/>"},
    {"<!DOCTYPE a [<!NOTATION n>]><a/>"},
    {"<!DOCTYPE a [<!NOTATION n SYSTEM 'x'><!NOTATION n SYSTEM 'x'>]><a/>"},
};

void Print(const std::string& input, const Xml::Exception& error) {
    std::cout << input << "\n    " << error.LineNumber() << ":" << error.LinePos() << ": "
              << error.What();
    if (*error.Argument() != '\0') std::cout << " (" << error.Argument() << ")";
    std::cout << "\n";
}

//! [read from memory]
void ReadAll(const std::string& text) {
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(text.data()),
                            static_cast<long>(text.size()));
    Xml::XmlTextReader reader;
    reader.SetStream(&stream, false);
    reader.SetEntityHandling(Xml::XmlEntityHandling::ExpandEntities);
    while (reader.Read())
        continue;
}
//! [read from memory]

// Calls what must throw.
template <typename Call>
bool Provoke(const std::string& input, Call call) {
    try {
        call();
    } catch (const Xml::Exception& error) {
        Print(input, error);
        return true;
    }
    std::cerr << input << ": nothing was thrown\n";
    return false;
}

// Calls that come at the wrong time.
bool ProvokeMisuse() {
    Xml::XmlTextReader closed;
    bool all = Provoke("Read() without an input", [&closed] { closed.Read(); });
    Xml::XmlTextReader fresh;
    all &= Provoke("SetNormalization() on a closed reader",
                   [&fresh] { fresh.SetNormalization(true); });
    all &= Provoke("SetWhitespaceHandling() on a closed reader",
                   [&fresh] { fresh.SetWhitespaceHandling(Xml::XmlTextReader::WsNone); });
    constexpr unsigned char kText[] = {'<', 'a', '/', '>'};
    IO::MemoryStream stream(kText, sizeof kText);
    fresh.SetStream(&stream, false);
    fresh.Read();
    all &= Provoke("SetNamespaces() after Read()", [&fresh] { fresh.SetNamespaces(false); });
    return all;
}

// A call, made on the first node of a document, that does not fit that node.
struct Call {
    const char* shown;
    const char* document;
    void (*call)(Xml::XmlTextReader& reader);
};

const Call kCalls[] = {
    {"ResolveEntity() on <a/>", "<a/>", [](auto& reader) { reader.ResolveEntity(); }},
    {"MoveToAttribute(1) on <a x='1'/>", "<a x='1'/>",
     [](auto& reader) { reader.MoveToAttribute(1); }},
    {"ReadStartElement() twice on <a></a>", "<a></a>",
     [](auto& reader) {
         reader.ReadStartElement();
         reader.ReadStartElement();
     }},
    {"ReadStartElement(\"b\") on <a/>", "<a/>", [](auto& reader) { reader.ReadStartElement("b"); }},
    {"ReadEndElement() on <a/>", "<a/>", [](auto& reader) { reader.ReadEndElement(); }},
    {"ReadEndElement() on </a>, with nothing behind it", "<a></a>",
     [](auto& reader) {
         reader.ReadStartElement("a");
         reader.ReadEndElement();
     }},
    {"ReadElementString() on the text of <a>x</a>", "<a>x</a>",
     [](auto& reader) {
         reader.ReadStartElement("a");
         reader.ReadElementString();
     }},
    {"ReadElementString() on <a><b/></a>", "<a><b/></a>",
     [](auto& reader) { reader.ReadElementString(); }},
    {"ReadString() on the attribute of <a x='1'/>, with nothing behind it", "<a x='1'/>",
     [](auto& reader) {
         reader.MoveToFirstAttribute();
         reader.ReadString();
     }},
};

bool ProvokeCall(const Call& call) {
    const std::string text = call.document;
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(text.data()),
                            static_cast<long>(text.size()));
    Xml::XmlTextReader reader;
    reader.SetStream(&stream, false);
    reader.Read();
    return Provoke(call.shown, [&reader, &call] { call.call(reader); });
}

}  // namespace

int main() {
    bool all = true;
    for (const Document& document : kDocuments) {
        const std::string& input = document.shown.empty() ? document.text : document.shown;
        all &= Provoke(input, [&document] { ReadAll(document.text); });
    }
    for (const Call& call : kCalls)
        all &= ProvokeCall(call);
    all &= ProvokeMisuse();
    return all ? 0 : 1;
}
