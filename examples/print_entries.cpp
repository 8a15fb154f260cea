// SPDX-License-Identifier: MIT
// Prints the entries of an Atom feed, in the order of the feed: print_entries samples/feed.xml
#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextReader.h>

#include <iostream>

namespace {

constexpr const char* kAtom = "http://www.w3.org/2005/Atom";

struct Entry {
    astring title;
    astring updated;
};

//! [read entries]
// Reads an entry; the reader stands on its start tag and is left behind its end tag.
Entry ReadEntry(Xml::XmlTextReader& reader) {
    Entry entry;
    reader.ReadStartElement("entry", kAtom);
    while (reader.IsStartElement()) {
        if (reader.IsStartElement("title", kAtom)) {
            entry.title = reader.ReadElementString();
        } else if (reader.IsStartElement("updated", kAtom)) {
            entry.updated = reader.ReadElementString();
        } else {
            reader.SkipElement();
        }
    }
    reader.ReadEndElement();
    return entry;
}

void PrintFeed(Xml::XmlTextReader& reader) {
    reader.ReadStartElement("feed", kAtom);
    while (reader.IsStartElement()) {
        if (reader.IsStartElement("entry", kAtom) && !reader.IsEmptyElement()) {
            const Entry entry = ReadEntry(reader);
            std::cout << entry.updated.substr(0, 10) << "  " << entry.title << "\n";
        } else {
            reader.SkipElement();
        }
    }
}
//! [read entries]

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: print_entries FILE\n";
        return 2;
    }
    try {
        Xml::XmlTextReader reader;
        reader.Open(argv[1]);
        PrintFeed(reader);
    } catch (const Xml::Exception& error) {
        std::cerr << argv[1] << ":" << error.LineNumber() << ": " << error.What() << " "
                  << error.Argument() << "\n";
        return 1;
    }
    return 0;
}
