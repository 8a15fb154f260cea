// SPDX-License-Identifier: MIT
// Brings a catalogue up to date and prints it: dom_edit samples/catalogue.xml
#include <espalier/espalier.h>

#include <iostream>
#include <string_view>
#include <vector>

namespace {

using Dom::Document;
using Dom::Element;
using Dom::Node;

//! [make nodes]
constexpr char kCatalogue[] = "https://nursery.example/catalogue";

// Makes an element with a text in it. It is the caller's until it is put into the tree.
Dom::NodePtr MakeElement(Document& document, std::string_view name, std::string_view text) {
    Dom::NodePtr element(document.CreateElementNS(kCatalogue, name));
    element->AppendChild(document.CreateTextNode(text));
    return element;
}

// Puts a new plant in front of all others of a department.
void AddPlant(Document& document, Element& department, std::string_view id,
              std::string_view title) {
    Dom::NodePtr plant(document.CreateElementNS(kCatalogue, "plant"));
    static_cast<Element&>(*plant).SetAttribute("id", id);
    plant->AppendChild(MakeElement(document, "title", title).release());
    department.InsertChild(plant.release(), department.FirstChild());
}
//! [make nodes]

//! [change nodes]
// Takes the plants out that are sold out, and says of the others when they were counted.
void UpdatePlants(Document& document, std::string_view day) {
    // A list follows the tree, so what is to be removed is remembered first.
    std::vector<Element*> plants;
    for (Node* const node : document.GetElementsByTagName("plant"))
        plants.push_back(static_cast<Element*>(node));
    for (Element* const plant : plants) {
        if (plant->GetAttribute("stock") == "0") {
            delete plant->ParentNode()->RemoveChild(plant);
        } else {
            plant->SetAttribute("counted", day);
        }
    }
}

// Replaces every note by a comment.
void HideNotes(Document& document) {
    std::vector<Node*> notes;
    for (Node* const note : document.GetElementsByTagName("note"))
        notes.push_back(note);
    for (Node* const note : notes) {
        Node* const comment = document.CreateComment(note->TextContent());
        delete note->ParentNode()->ExchangeChild(comment, note);
    }
}
//! [change nodes]

//! [save]
void Save(const Document& document, IO::Stream& stream) {
    Xml::UTF8Encoding utf8;
    Xml::XmlTextWriter writer(&stream, &utf8);
    writer.SetFormatting(Xml::Formatting::Indented);
    writer.SetNewLineChars("\n");
    Dom::WriteNode(document, writer);
    writer.Close();
}
//! [save]

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: dom_edit FILE\n";
        return 2;
    }
    try {
        Document document;
        document.Load(argv[1]);
        UpdatePlants(document, "2026-03-21");
        HideNotes(document);
        Node* const department = document.GetElementsByTagName("department").Item(0);
        if (department != nullptr) {
            AddPlant(document, static_cast<Element&>(*department), "p-104",
                     "Quince, half standard");
        }
        IO::FileStream output(1, 2, false);  // descriptor 1, to write, not to be closed
        Save(document, output);
    } catch (const Xml::Exception& error) {
        std::cerr << argv[1] << ":" << error.LineNumber() << ":" << error.LinePos() << ": "
                  << error.What() << "\n";
        return 1;
    }
    return 0;
}
