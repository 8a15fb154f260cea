// SPDX-License-Identifier: MIT
//! [write first]
#include <espalier/espalier.h>

int main(int argc, char** argv) {
    Xml::UTF8Encoding utf8;
    Xml::XmlTextWriter writer(argc > 1 ? argv[1] : "plants.xml", &utf8);
    writer.SetFormatting(Xml::Formatting::Indented);
    writer.SetNewLineChars("\n");  // CR LF at first
    writer.WriteStartDocument();
    writer.WriteStartElement("plants");
    writer.WriteStartElement("plant");
    writer.WriteAttributeString("id", "p-101");
    writer.WriteElementString("title", "Pear & quince");
    writer.Close();  // ends the elements that are open, and closes the file
}
//! [write first]
