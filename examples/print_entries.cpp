// SPDX-License-Identifier: MIT
// Prints the entries of an Atom feed, newest first as they stand: print_entries samples/feed.xml
#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextReader.h>

#include <iostream>
#include <string>

namespace {

constexpr const char* kAtom = "http://www.w3.org/2005/Atom";

struct Entry {
    std::string title;
    std::string updated;
};

//! [read entries]
// Reads an entry; the reader stands on its start tag and is left on its end tag.
Entry ReadEntry(Xml::XmlTextReader& reader) {
    Entry entry;
    std::string* field = nullptr;  // where text goes
    const int depth = reader.Depth();
    while (reader.Read()) {
        const bool isChild = reader.Depth() == depth + 1;
        switch (reader.NodeType()) {
        case Xml::XmlNodeType::Element:
            field = nullptr;
            if (isChild && reader.NamespaceURI() == kAtom) {
                if (reader.LocalName() == "title") field = &entry.title;
                if (reader.LocalName() == "updated") field = &entry.updated;
            }
            break;
        case Xml::XmlNodeType::EndElement:
            if (reader.Depth() == depth) return entry;
            field = nullptr;
            break;
        case Xml::XmlNodeType::Text:
        case Xml::XmlNodeType::CDATA:
            if (field != nullptr) *field += reader.Value().view();
            break;
        default: break;
        }
    }
    return entry;
}
//! [read entries]

void PrintEntries(const char* fileName) {
    Xml::XmlTextReader reader;
    reader.Open(fileName);
    while (reader.Read()) {
        const bool isEntry = reader.NodeType() == Xml::XmlNodeType::Element &&
                             reader.LocalName() == "entry" && reader.NamespaceURI() == kAtom &&
                             !reader.IsEmptyElement();
        if (!isEntry) continue;
        const Entry entry = ReadEntry(reader);
        std::cout << entry.updated.substr(0, 10) << "  " << entry.title << "\n";
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: print_entries FILE\n";
        return 2;
    }
    try {
        PrintEntries(argv[1]);
    } catch (const Xml::Exception& error) {
        std::cerr << argv[1] << ":" << error.LineNumber() << ": " << error.What() << "\n";
        return 1;
    }
    return 0;
}
