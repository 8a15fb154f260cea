// SPDX-License-Identifier: MIT
// Shows a document in each of the three ways to handle entities, and a bomb that is refused:
// entity_modes samples/letter.xml
#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>

#include <iostream>
#include <string>

namespace {

//! [entity modes]
// Prints what a document holds, with references handled in one of the three ways.
void PrintContent(const char* fileName, Xml::XmlEntityHandling handling) {
    Xml::XmlTextReader reader;
    reader.Open(fileName);
    reader.SetWhitespaceHandling(Xml::XmlTextReader::WsNone);
    reader.SetEntityHandling(handling);
    reader.ReadStartElement("letter");
    std::cout << handling.ToString() << "\n";
    do {
        std::cout << "  " << reader.NodeType().ToString() << " " << reader.Name() << reader.Value()
                  << "\n";
    } while (reader.Read());
}
//! [entity modes]

// A short document whose entities double what they refer to, twenty times.
std::string Bomb() {
    std::string text = "<!DOCTYPE a [<!ENTITY e0 'ten bytes.'>";
    for (int i = 1; i <= 20; ++i) {
        const std::string inner = "&e" + std::to_string(i - 1) + ";";
        text += "<!ENTITY e" + std::to_string(i) + " '" + inner + inner + "'>";
    }
    return text + "]><a>&e20;</a>";
}

//! [entity limits]
// Reads a document that may expand to a megabyte, and no further, however long it is itself.
void ReadStrictly(IO::Stream& stream) {
    Xml::XmlEntityLimits limits;
    limits.expandedBytes = 1024 * 1024;
    limits.amplification = 0;
    limits.nesting = 50;
    Xml::XmlTextReader reader;
    reader.SetEntityLimits(limits);
    reader.SetStream(&stream, false);
    reader.SetEntityHandling(Xml::XmlEntityHandling::ExpandEntities);
    while (reader.Read())
        continue;
}
//! [entity limits]

bool IsBombRefused() {
    const std::string text = Bomb();
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(text.data()),
                            static_cast<long>(text.size()));
    try {
        ReadStrictly(stream);
    } catch (const Xml::Exception& error) {
        std::cout << error.What() << ": " << error.Argument() << "\n";
        return true;
    }
    return false;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: entity_modes FILE\n";
        return 2;
    }
    try {
        PrintContent(argv[1], Xml::XmlEntityHandling::ExpandNothing);
        PrintContent(argv[1], Xml::XmlEntityHandling::ExpandCharEntities);
        PrintContent(argv[1], Xml::XmlEntityHandling::ExpandEntities);
    } catch (const Xml::Exception& error) {
        std::cerr << argv[1] << ":" << error.LineNumber() << ": " << error.What() << "\n";
        return 1;
    }
    return IsBombRefused() ? 0 : 1;
}
