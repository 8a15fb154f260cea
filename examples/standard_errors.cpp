// SPDX-License-Identifier: MIT
// Provokes the messages of the standard mode outside of the document type: standard_errors
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

// A document with so many elements that get a long attribute from the document type.
std::string Supplied(int elements) {
    std::string text = "<!DOCTYPE a [<!ATTLIST b x CDATA '" + std::string(100000, 'x') + "'>]><a>";
    for (int i = 0; i < elements; ++i)
        text += "<b/>";
    return text + "</a>";
}

const Document kDocuments[] = {
    // The input and the declaration.
    {std::string("<\0a\0/\0>\0", 8), "<\\x00a\\x00/\\x00>\\x00"},
    {"\xEF\xBB\xBF<?xml version='1.0' encoding='ISO-8859-1'?><a/>",
     "ISO-8859-1 declared behind a mark of UTF-8"},
    {"<?xml version='1.0'encoding='UTF-8'?><a/>"},
    {"<?xml encoding='UTF-8'?><a/>"},
    {"<?xml version='1.0' author='me'?><a/>"},
    {"<?xml version='1.0' encoding='UTF-8' x?><a/>"},
    {"<?xml version='1.0' standalone='no' encoding='UTF-8'?><a/>"},
    {"<?xml version '1.0'?><a/>"},
    {"<?xml version=1.0?><a/>"},
    {"<?xml version='2.0'?><a/>"},
    {"<?xml version='1.0' encoding='8bit'?><a/>"},
    {"<?xml version='1.0' standalone='maybe'?><a/>"},

    // Tags.
    {"<p:1 xmlns:p='urn:p'/>"},
    {"<a/><b/>"},
    {"text<a/>"},
    {"&amp;<a/>"},
    {"<a x='1'y='2'/>"},
    {"<a 1='x'/>"},
    {"<a></a b>"},
    {"<a></ a>"},
    {"<a x/>"},
    {"<a x=y/>"},
    {"<a x='<'/>"},
    {"<a x='1"},
    {"<a>]]></a>"},
    {"<a><![CDATAx]]></a>"},
    {"<?pi+?><a/>"},
    {"<?XML x?><a/>"},
    {"<?p:i x?><a/>"},
    {"<? pi?><a/>"},

    // References.
    {"<a>fish & chips</a>"},
    {"<a>&amp</a>"},
    {"<a>&#1a;</a>"},
    {"<a>&#0;</a>"},
    {"<!DOCTYPE a [<!ENTITY % p ''>%p;]><a>&p:e;</a>"},
    {R"(<?xml version='1.0' standalone='yes'?><!DOCTYPE a [<!ENTITY % p "<!ENTITY e ''>">%p;]><a>&e;</a>)"},
    {"<!DOCTYPE a [<!ENTITY e SYSTEM 'e' NDATA n>]><a>&e;</a>"},
    {"<!DOCTYPE a [<!ENTITY e SYSTEM 'e'>]><a x='&e;'/>"},
    {"<!DOCTYPE a [<!ENTITY e '<'>]><a x='&e;'/>"},
    {"<!DOCTYPE a [<!ENTITY e ']]>'>]><a>&e;</a>"},
    {"<!DOCTYPE a [<!ENTITY e '<b>'>]><a>&e;</b></a>"},
    {"<!DOCTYPE a [<!ENTITY e '</a>'>]><a>&e;"},
    {Supplied(200), "200 elements, each supplied with 100,000 bytes"},

    // Namespaces.
    {"<p:a/>"},
    {"<a xmlns:p=''/>"},
    {"<a xmlns:xmlns='urn:a'/>"},
    {"<xmlns:a/>"},
    {"<a xmlns:xml='urn:a'/>"},
    {"<a xmlns:p='http://www.w3.org/XML/1998/namespace'/>"},
    {"<a xmlns='http://www.w3.org/2000/xmlns/'/>"},
};

void ReadAll(const std::string& text) {
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(text.data()),
                            static_cast<long>(text.size()));
    Xml::XmlTextReader reader;
    reader.SetStream(&stream, false);
    reader.SetConformance(Xml::XmlConformance::Standard);
    reader.SetEntityHandling(Xml::XmlEntityHandling::ExpandEntities);
    while (reader.Read())
        continue;
}

bool Provoke(const Document& document) {
    const std::string& shown = document.shown.empty() ? document.text : document.shown;
    try {
        ReadAll(document.text);
    } catch (const Xml::Exception& error) {
        std::cout << shown << "\n    " << error.LineNumber() << ":" << error.LinePos() << ": "
                  << error.What();
        if (*error.Argument() != '\0') std::cout << " (" << error.Argument() << ")";
        std::cout << "\n";
        return true;
    }
    std::cerr << shown << ": nothing was thrown\n";
    return false;
}

}  // namespace

int main() {
    bool all = true;
    for (const Document& document : kDocuments)
        all &= Provoke(document);
    return all ? 0 : 1;
}
