// SPDX-License-Identifier: MIT
// Lists the options of a settings file, then all attributes of all its elements:
// read_settings samples/settings.xml
#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextReader.h>

#include <iostream>
#include <map>
#include <string>

namespace {

//! [read settings]
// Options by name. An option has its value in an attribute or, when that is too long, in its text.
std::map<std::string, std::string> ReadSettings(const char* fileName) {
    std::map<std::string, std::string> settings;
    Xml::XmlTextReader reader;
    reader.Open(fileName);
    reader.SetEntityHandling(Xml::XmlEntityHandling::ExpandEntities);
    while (reader.Read()) {
        if (reader.NodeType() != Xml::XmlNodeType::Element || reader.Name() != "option") continue;
        std::string& value = settings[reader.GetAttribute("name").str()];
        value = reader.GetAttribute("value").str();
        if (!reader.IsEmptyElement()) value += reader.ReadString().view();
    }
    return settings;
}
//! [read settings]

void PrintAttributes(const char* fileName) {
    Xml::XmlTextReader reader;
    reader.Open(fileName);
    //! [skip white space]
    reader.SetWhitespaceHandling(Xml::XmlTextReader::WsNone);
    //! [skip white space]
    while (reader.Read()) {
        if (reader.NodeType() != Xml::XmlNodeType::Element) continue;
        std::cout << reader.LineNumber() << ":" << reader.LinePosition() << " " << reader.Name();
        //! [loop over attributes]
        for (const Xml::XmlAttributeRef attribute : reader.Attributes())
            std::cout << " " << attribute.Name() << "=" << attribute.Value();
        //! [loop over attributes]
        std::cout << "\n";
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: read_settings FILE\n";
        return 2;
    }
    try {
        for (const auto& [name, value] : ReadSettings(argv[1]))
            std::cout << name << " = " << value << "\n";
        PrintAttributes(argv[1]);
    } catch (const Xml::Exception& error) {
        std::cerr << argv[1] << ":" << error.LineNumber() << ": " << error.What() << "\n";
        return 1;
    }
    return 0;
}
