// SPDX-License-Identifier: MIT
// Tells whether a document is well-formed by the recommendations: is_well_formed FILE
//
// Then shows what the default mode lets pass.
#include <espalier/io/Exception.h>
#include <espalier/io/FileStream.h>
#include <espalier/io/StringStream.h>
#include <espalier/xml/XmlTextReader.h>

#include <iostream>

namespace {

//! [by the standard]
// Tells whether a document is well-formed by XML 1.0 and Namespaces in XML 1.0.
bool IsWellFormed(IO::Stream& stream) {
    Xml::XmlTextReader reader;
    reader.SetConformance(Xml::XmlConformance::Standard);
    reader.SetStream(&stream, false);
    try {
        while (reader.Read())
            continue;
    } catch (const Xml::Exception& error) {
        std::cout << error.LineNumber() << ":" << error.LinePos() << ": " << error.What() << "\n";
        return false;
    }
    return true;
}
//! [by the standard]

const char* const kLenient[] = {
    "<a x='1'y='2'/>",
    "<a/><b/>",
    "<p:a/>",
    "<!DOCTYPE a [<!ELEMENT a (b,c|d)>]><a/>",
};

}  // namespace

int main(int argc, char** argv) {
    try {
        IO::FileStream file(argc > 1 ? argv[1] : "samples/catalogue.xml", IO::FileMode::Open, 1, 1);
        std::cout << (IsWellFormed(file) ? "well-formed" : "not well-formed") << "\n";
        for (const char* const document : kLenient) {
            std::cout << document << "\n    ";
            IO::StringStream stream(document, false);
            IsWellFormed(stream);
        }
    } catch (const Xml::Exception& error) {
        std::cerr << error.What() << "\n";
        return 1;
    }
    return 0;
}
