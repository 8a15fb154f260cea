// SPDX-License-Identifier: MIT
// Shows of what the attributes of a document are made: value_parts samples/letter.xml
#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextReader.h>

#include <iostream>

namespace {

//! [parts of a value]
// Steps through the value of the current attribute, and through the entities that it refers to.
void PrintParts(Xml::XmlTextReader& reader) {
    while (reader.ReadAttributeValue()) {
        std::cout << "  " << reader.NodeType().ToString() << " " << reader.Name() << reader.Value()
                  << "\n";
        if (reader.NodeType() == Xml::XmlNodeType::EntityReference) reader.ResolveEntity();
    }
}
//! [parts of a value]

void PrintElement(Xml::XmlTextReader& reader) {
    //! [walk attributes]
    for (bool more = reader.MoveToFirstAttribute(); more; more = reader.MoveToNextAttribute()) {
        std::cout << reader.Name() << "=" << reader.QuoteChar() << reader.Value()
                  << reader.QuoteChar() << "\n";
        PrintParts(reader);
    }
    reader.MoveToElement();
    //! [walk attributes]
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: value_parts FILE\n";
        return 2;
    }
    try {
        Xml::XmlTextReader reader;
        reader.Open(argv[1]);
        while (reader.Read()) {
            if (reader.NodeType() == Xml::XmlNodeType::Element) PrintElement(reader);
        }
    } catch (const Xml::Exception& error) {
        std::cerr << argv[1] << ":" << error.LineNumber() << ": " << error.What() << "\n";
        return 1;
    }
    return 0;
}
