// SPDX-License-Identifier: MIT
// Prints the titles of an e-book: book_titles samples/herbal.epub
#include <espalier/io.h>
#include <espalier/xml/XmlTextReader.h>

#include <iostream>

namespace {

constexpr char kDublinCore[] = "http://purl.org/dc/elements/1.1/";

//! [package of a book]
// Returns the name of the member that describes the book.
astring PackageOf(const astring& book) {
    IO::ZipFileStream container(book, "META-INF/container.xml");
    Xml::XmlTextReader reader;
    reader.SetStream(&container, false);
    while (reader.Read()) {
        if (reader.IsStartElement("rootfile")) return reader.GetAttribute("full-path");
    }
    return "";
}
//! [package of a book]

//! [titles of a book]
void PrintTitles(const astring& book) {
    IO::ZipFileStream package(book, PackageOf(book));
    Xml::XmlTextReader reader;
    reader.SetStream(&package, false);
    while (reader.Read()) {
        if (reader.NodeType() == Xml::XmlNodeType::Element && reader.LocalName() == "title" &&
            reader.NamespaceURI() == kDublinCore) {
            std::cout << reader.ReadString() << "\n";
        }
    }
}
//! [titles of a book]

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: book_titles BOOK.epub\n";
        return 2;
    }
    try {
        PrintTitles(argv[1]);
    } catch (const Xml::Exception& error) {
        std::cerr << argv[1] << ": " << error.What() << "\n";
        return 1;
    }
    return 0;
}
