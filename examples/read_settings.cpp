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
    std::string* text = nullptr;  // the option that takes text
    Xml::XmlTextReader reader;
    reader.Open(fileName);
    while (reader.Read()) {
        switch (reader.NodeType()) {
        case Xml::XmlNodeType::Element:
            text = nullptr;
            if (reader.Name() == "option") {
                std::string& value = settings[reader.GetAttribute("name").str()];
                value = reader.GetAttribute("value").str();
                if (!reader.IsEmptyElement()) text = &value;
            }
            break;
        case Xml::XmlNodeType::EndElement: text = nullptr; break;
        case Xml::XmlNodeType::Text:
        case Xml::XmlNodeType::CDATA:
            if (text != nullptr) *text += reader.Value().view();
            break;
        default: break;
        }
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
        //! [walk attributes]
        for (bool more = reader.MoveToFirstAttribute(); more; more = reader.MoveToNextAttribute()) {
            std::cout << " " << reader.Name() << "=" << reader.QuoteChar() << reader.Value()
                      << reader.QuoteChar();
        }
        reader.MoveToElement();
        //! [walk attributes]
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
