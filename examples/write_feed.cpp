// SPDX-License-Identifier: MIT
// Writes a feed, with markup of another namespace in it, to the standard output.
#include <espalier/espalier.h>

#include <iostream>

namespace {

//! [write feed]
constexpr char kAtom[] = "http://www.w3.org/2005/Atom";
constexpr char kXhtml[] = "http://www.w3.org/1999/xhtml";
constexpr char kXml[] = "http://www.w3.org/XML/1998/namespace";

struct Entry {
    const char* id;
    const char* title;
    const char* updated;
};

// The text of an entry is XHTML: mixed content, in which the writer adds no white space.
void WriteText(Xml::XmlTextWriter& writer) {
    writer.WriteStartElement("content", kAtom);
    writer.WriteAttributeString("type", "xhtml");
    writer.WriteStartElement("h", "div", kXhtml);
    writer.WriteString("Down to ");
    writer.WriteElementString("strong", kXhtml, "45\u00b0");
    writer.WriteString(" in April.");
    writer.WriteEndElement();
    writer.WriteEndElement();
}

void WriteEntry(Xml::XmlTextWriter& writer, const Entry& entry) {
    writer.WriteStartElement("entry", kAtom);
    writer.WriteElementString("id", kAtom, entry.id);
    writer.WriteElementString("title", kAtom, entry.title);
    writer.WriteElementString("updated", kAtom, entry.updated);
    WriteText(writer);
    writer.WriteEndElement();
}

void WriteFeed(IO::Stream& stream, Xml::Encoding& encoding) {
    Xml::XmlTextWriter writer(&stream, &encoding);
    writer.SetFormatting(Xml::Formatting::Indented);
    writer.SetNewLineChars("\n");
    writer.WriteStartDocument();
    writer.WriteStartElement("feed", kAtom);
    writer.WriteAttributeString("lang", kXml, "en-GB");
    writer.WriteElementString("title", kAtom, "Notes from the walled garden");
    writer.WriteStartElement("link", kAtom);
    writer.WriteAttributeString("href", "https://nursery.example/notes/?page=1&sort=new");
    writer.WriteEndElement();
    WriteEntry(writer,
               {"tag:nursery.example,2026:notes/42", "Tying in the pears", "2026-03-21T07:30:00Z"});
    writer.Close();
}
//! [write feed]

}  // namespace

int main() {
    try {
        //! [write to a string]
        IO::StringStream stream;
        Xml::UTF8Encoding utf8;
        WriteFeed(stream, utf8);
        std::cout << stream.GetString() << "\n";
        //! [write to a string]
    } catch (const Xml::Exception& error) {
        std::cerr << error.What() << "\n";
        return 1;
    }
    return 0;
}
