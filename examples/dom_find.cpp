// SPDX-License-Identifier: MIT
// Finds elements in a catalogue: dom_find samples/catalogue.xml
#include <espalier/dom.h>
#include <espalier/xml.h>

#include <iostream>
#include <string>
#include <string_view>

namespace {

using Dom::Element;
using Dom::Node;

//! [load with entities]
void Load(Dom::Document& document, const char* fileName) {
    Xml::XmlTextReader reader;
    reader.Open(fileName);
    reader.SetWhitespaceHandling(Xml::XmlTextReader::WsSignificant);
    reader.SetEntityHandling(Xml::XmlEntityHandling::ExpandEntities);
    document.Load(reader, fileName);
}
//! [load with entities]

//! [one attribute]
// Returns what an attribute was before, and takes it away.
astring TakeStock(Element& plant) {
    if (!plant.HasAttribute("stock")) plant.SetAttribute("stock", "0");
    const astring stock = plant.GetAttribute("stock");  // "" when there is none
    plant.RemoveAttribute("stock");                     // throws when there is none
    return stock;
}
//! [one attribute]

//! [find]
constexpr char kXml[] = "http://www.w3.org/XML/1998/namespace";

// Returns the text of the first child with that name; empty when there is none.
astring ChildText(const Node& parent, std::string_view name) {
    for (const Node& child : parent.Children()) {
        if (child.NodeName() == name) return child.TextContent();
    }
    return {};
}

void PrintPlant(const Dom::Document& document, std::string_view id) {
    const Element* const plant = document.GetElementById(id);
    if (plant == nullptr) {
        std::cout << id << ": there is none\n";
        return;
    }
    const auto& department = static_cast<const Element&>(*plant->ParentNode());
    std::cout << id << ": " << ChildText(*plant, "title") << ", " << ChildText(*plant, "price")
              << ", under " << department.GetAttribute("name") << "\n";
}

void PrintTotals(const Dom::Document& document) {
    const Dom::NodeList plants = document.GetElementsByTagName("plant");
    long stock = 0;
    for (const Node* const plant : plants)
        stock += std::stol(static_cast<const Element*>(plant)->GetAttribute("stock").str());
    std::cout << plants.Length() << " plants, " << stock << " pieces\n";
    // An attribute with a prefix is asked for by its namespace.
    std::cout << "language: " << document.DocumentElement()->GetAttributeNS(kXml, "lang") << "\n";
}
//! [find]

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: dom_find FILE\n";
        return 2;
    }
    try {
        Dom::Document document;
        Load(document, argv[1]);
        PrintPlant(document, "p-202");
        PrintPlant(document, "p-999");
        PrintTotals(document);
        std::cout << "taken: " << TakeStock(*document.GetElementById("p-202")) << "\n";
    } catch (const Xml::Exception& error) {
        std::cerr << argv[1] << ":" << error.LineNumber() << ":" << error.LinePos() << ": "
                  << error.What() << "\n";
        return 1;
    }
    return 0;
}
