// SPDX-License-Identifier: MIT
//! [first]
#include <espalier/xml.h>

#include <iostream>

int main(int argc, char** argv) {
    Xml::XmlTextReader reader;
    reader.Open(argc > 1 ? argv[1] : "samples/catalogue.xml");
    while (reader.Read()) {
        if (reader.NodeType() == Xml::XmlNodeType::Element && reader.Name() == "plant") {
            std::cout << reader.GetAttribute("id") << ": " << reader.GetAttribute("stock") << "\n";
        }
    }
}
//! [first]
