// SPDX-License-Identifier: MIT
// Writes a document in windows-1252 and reads it again.
#include <espalier/encoding.h>
#include <espalier/io.h>
#include <espalier/xml.h>

#include <iostream>

namespace {

//! [write in a code page]
// Writes the price of a pear tree. The page has the letter U+00E9; the writer makes a reference of
// the euro sign.
void WritePrice(IO::Stream& to) {
    Xml::XmlTextWriter writer(&to, Xml::Encoding::Windows_1252());
    writer.WriteStartDocument();
    writer.WriteElementString("price", "Beurr\u00E9 Hardy: 20 \u20AC");
    writer.Close();
}
//! [write in a code page]

}  // namespace

int main() {
    try {
        IO::MemoryStream document;
        WritePrice(document);
        document.SetPosition(0);
        for (int byte = 0; (byte = document.ReadByte()) >= 0;) {
            if (byte < 0x80) {
                std::cout << static_cast<char>(byte);
            } else {
                std::cout << "<" << std::hex << byte << ">";
            }
        }
        std::cout << "\n";

        document.SetPosition(0);
        Xml::XmlTextReader reader;
        reader.SetStream(&document, false);
        reader.MoveToContent();
        std::cout << reader.Encoding() << ": " << reader.ReadElementString() << "\n";
    } catch (const Xml::Exception& error) {
        std::cerr << error.What() << "\n";
        return 1;
    }
    return 0;
}
