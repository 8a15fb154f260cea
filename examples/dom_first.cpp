// SPDX-License-Identifier: MIT
// Changes one plant of a catalogue: dom_first samples/catalogue.xml new.xml
//! [edit a tree]
#include <espalier/espalier.h>

int main(int argc, char** argv) {
    Dom::Document document;
    document.Load(argc > 1 ? argv[1] : "samples/catalogue.xml");
    Dom::Element* const plant = document.GetElementById("p-103");
    plant->SetAttribute("stock", "25");
    plant->RemoveChild(plant->LastChild())->DestroyNode();  // the note

    Xml::UTF8Encoding utf8;
    Xml::XmlTextWriter writer(argc > 2 ? argv[2] : "new.xml", &utf8);
    writer.SetFormatting(Xml::Formatting::Indented);
    writer.SetNewLineChars("\n");
    Dom::WriteNode(document, writer);
    writer.Close();
}
//! [edit a tree]
