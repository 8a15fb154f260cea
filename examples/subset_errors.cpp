// SPDX-License-Identifier: MIT
// Provokes the messages of the document type in standard mode and prints them: subset_errors
//
// The table in docs/errors.md shows the same inputs; a test compares the two.
#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>

#include <iostream>
#include <string>

namespace {

const char* const kDocuments[] = {
    // The declaration itself.
    "<!ELEMENT a ANY><a/>",
    "<a><!ELEMENT a ANY></a>",
    "<a/><!DOCTYPE a>",
    "<!DOCTYPE[]><a/>",
    "<!DOCTYPE []><a/>",
    "<!DOCTYPE a b><a/>",
    "<!DOCTYPE a SYSTEM 'x' 'y'><a/>",
    "<!DOCTYPE a [] SYSTEM 'x'><a/>",

    // External identifiers.
    "<!DOCTYPE a SYSTEM'x'><a/>",
    "<!DOCTYPE a PUBLIC'x' 'y'><a/>",
    "<!DOCTYPE a SYSTEM x><a/>",
    "<!DOCTYPE a PUBLIC x><a/>",

    // The internal subset.
    "<!DOCTYPE a [<a/>]><a/>",
    "<!DOCTYPE a [<!element a ANY>]><a/>",
    "<!DOCTYPE a [<![INCLUDE[]]>]><a/>",
    "<!DOCTYPE a [<? x?>]><a/>",
    "<!DOCTYPE a [% p;]><a/>",
    "<!DOCTYPE a [%p ]><a/>",
    "<!DOCTYPE a [<!ELEMENT a %p;>]><a/>",
    "<!DOCTYPE a [<!ENTITY % p ']'>%p;",

    // Declarations of elements.
    "<!DOCTYPE a [<!ELEMENT>]><a/>",
    "<!DOCTYPE a [<!ELEMENT (b)>]><a/>",
    "<!DOCTYPE a [<!ELEMENT a(b)>]><a/>",
    "<!DOCTYPE a [<!ELEMENT a b>]><a/>",
    "<!DOCTYPE a [<!ELEMENT a (b,)>]><a/>",
    "<!DOCTYPE a [<!ELEMENT a (b c)>]><a/>",
    "<!DOCTYPE a [<!ELEMENT a (b|c,d)>]><a/>",
    "<!DOCTYPE a [<!ELEMENT a (b,c|d)>]><a/>",
    "<!DOCTYPE a [<!ELEMENT a (#PCDATA,b)>]><a/>",
    "<!DOCTYPE a [<!ELEMENT a (#PCDATA|(b))*>]><a/>",
    "<!DOCTYPE a [<!ELEMENT a (#PCDATA|b)>]><a/>",
    "<!DOCTYPE a [<!ELEMENT a (b) *>]><a/>",

    // Declarations of attributes.
    "<!DOCTYPE a [<!ATTLIST>]><a/>",
    "<!DOCTYPE a [<!ATTLIST a b CDATA 'x'c CDATA 'y'>]><a/>",
    "<!DOCTYPE a [<!ATTLIST a 'b'>]><a/>",
    "<!DOCTYPE a [<!ATTLIST a b>]><a/>",
    "<!DOCTYPE a [<!ATTLIST a b cdata 'x'>]><a/>",
    "<!DOCTYPE a [<!ATTLIST a b CDATA'x'>]><a/>",
    "<!DOCTYPE a [<!ATTLIST a b NOTATION(n) 'n'>]><a/>",
    "<!DOCTYPE a [<!ATTLIST a b NOTATION n 'n'>]><a/>",
    "<!DOCTYPE a [<!ATTLIST a b NOTATION () 'n'>]><a/>",
    "<!DOCTYPE a [<!ATTLIST a b (c|) 'c'>]><a/>",
    "<!DOCTYPE a [<!ATTLIST a b (c,d) 'c'>]><a/>",
    "<!DOCTYPE a [<!ATTLIST a b CDATA x>]><a/>",
    "<!DOCTYPE a [<!ATTLIST a b CDATA #FIXED'x'>]><a/>",
    "<!DOCTYPE a [<!ATTLIST a b CDATA #FIXED x>]><a/>",
    "<!DOCTYPE a [<!ATTLIST a b CDATA '<'>]><a/>",

    // Declarations of entities and notations.
    "<!DOCTYPE a [<!ENTITY>]><a/>",
    "<!DOCTYPE a [<!ENTITY %e 'x'>]><a/>",
    "<!DOCTYPE a [<!ENTITY 'x'>]><a/>",
    "<!DOCTYPE a [<!ENTITY a:b 'x'>]><a/>",
    "<!DOCTYPE a [<!ENTITY e'x'>]><a/>",
    "<!DOCTYPE a [<!ENTITY e x>]><a/>",
    "<!DOCTYPE a [<!ENTITY e 'x' 'y'>]><a/>",
    "<!DOCTYPE a [<!ENTITY e SYSTEM 'x'NDATA n>]><a/>",
    "<!DOCTYPE a [<!NOTATION n 'x'>]><a/>",
    "<!DOCTYPE a [<!NOTATION n SYSTEM 'x' 'y'>]><a/>",

    // Ends.
    "<!DOCTYPE a [<!-- x",
    "<!DOCTYPE a [<!ENTITY % p '<!-- x'>%p;-->]><a/>",
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

bool Provoke(const std::string& document) {
    try {
        ReadAll(document);
    } catch (const Xml::Exception& error) {
        std::cout << document << "\n    " << error.LineNumber() << ":" << error.LinePos() << ": "
                  << error.What();
        if (*error.Argument() != '\0') std::cout << " (" << error.Argument() << ")";
        std::cout << "\n";
        return true;
    }
    std::cerr << document << ": nothing was thrown\n";
    return false;
}

}  // namespace

int main() {
    bool all = true;
    for (const char* const document : kDocuments)
        all &= Provoke(document);
    return all ? 0 : 1;
}
