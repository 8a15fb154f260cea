// SPDX-License-Identifier: MIT
// Lists the titles in a catalogue: read_titles samples/catalogue.xml
#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextReader.h>

#include <iostream>

namespace {

//! [read titles]
void PrintTitles(const char* fileName) {
    Xml::XmlTextReader reader;
    reader.Open(fileName);
    while (reader.Read()) {
        const bool isElement = reader.NodeType() == Xml::XmlNodeType::Element;
        if (isElement && reader.Name() == "title") std::cout << reader.ReadString() << "\n";
    }
}
//! [read titles]

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: read_titles FILE\n";
        return 2;
    }
    //! [catch]
    try {
        PrintTitles(argv[1]);
    } catch (const Xml::Exception& error) {
        std::cerr << argv[1] << ":" << error.LineNumber() << ":" << error.LinePos() << ": "
                  << error.What() << " " << error.Argument() << "\n";
        return 1;
    }
    //! [catch]
    return 0;
}
