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
    {"<!DOCTYPE a ["},
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

}  // namespace

int main() {
    bool all = true;
    for (const Document& document : kDocuments) {
        const std::string& input = document.shown.empty() ? document.text : document.shown;
        all &= Provoke(input, [&document] { ReadAll(document.text); });
    }
    all &= ProvokeMisuse();
    return all ? 0 : 1;
}
