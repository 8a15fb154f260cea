// SPDX-License-Identifier: MIT
// Copies a document of any size node by node, without the notes and prices in it, and with another
// name for one element: filter samples/catalogue.xml
#include <espalier/espalier.h>

#include <iostream>
#include <string_view>

namespace {

using Xml::XmlNodeType;

//! [copy node]
void CopyElement(Xml::XmlTextReader& reader, Xml::XmlTextWriter& writer, std::string_view name) {
    const bool isEmpty = reader.IsEmptyElement();  // ask before the attributes are visited
    writer.WriteStartElement(name);
    writer.WriteAttributes(&reader, true);
    if (isEmpty) writer.WriteEndElement();
}

void CopyDeclaration(const Xml::XmlTextReader& reader, Xml::XmlTextWriter& writer) {
    const bool isGiven = !reader.GetAttribute("standalone").empty();
    if (isGiven) {
        writer.WriteStartDocument(reader.GetAttribute("standalone") == "yes");
    } else {
        writer.WriteStartDocument();
    }
}

// Writes the node on which the reader stands. Both have namespaces off: names and declarations are
// copied as they are.
void CopyNode(Xml::XmlTextReader& reader, Xml::XmlTextWriter& writer) {
    switch (reader.NodeType()) {
    case XmlNodeType::XmlDeclaration: CopyDeclaration(reader, writer); break;
    case XmlNodeType::DocumentType:
        writer.WriteDocType(reader.Name(), reader.GetAttribute("PUBLIC"),
                            reader.GetAttribute("SYSTEM"), reader.Value());
        break;
    case XmlNodeType::Element: CopyElement(reader, writer, reader.Name()); break;
    case XmlNodeType::EndElement: writer.WriteEndElement(); break;
    case XmlNodeType::Text: writer.WriteString(reader.Value()); break;
    case XmlNodeType::CDATA: writer.WriteCData(reader.Value()); break;
    case XmlNodeType::Whitespace:
    case XmlNodeType::SignificantWhitespace:
        if (reader.Depth() > 1) writer.WriteWhitespace(reader.Value());  // not around the root
        break;
    case XmlNodeType::EntityReference: writer.WriteEntityRef(reader.Name()); break;
    case XmlNodeType::Comment: writer.WriteComment(reader.Value()); break;
    case XmlNodeType::ProcessingInstruction:
        writer.WriteProcessingInstruction(reader.Name(), reader.Value());
        break;
    default: break;
    }
}
//! [copy node]

//! [filter]
void Filter(const char* fileName, IO::Stream& output) {
    Xml::XmlTextReader reader;
    reader.Open(fileName);
    reader.SetNamespaces(false);
    reader.SetWhitespaceHandling(Xml::XmlTextReader::WsSignificant);  // that of the writer instead
    Xml::UTF8Encoding utf8;
    Xml::XmlTextWriter writer(&output, &utf8);
    writer.SetNamespaces(false);
    writer.SetFormatting(Xml::Formatting::Indented);
    writer.SetNewLineChars("\n");
    writer.SetNewLineHandling(Xml::NewLineHandling::NoHandling);

    reader.Read();
    while (reader.NodeType() != XmlNodeType::None) {
        const bool isElement = reader.NodeType() == XmlNodeType::Element;
        if (isElement && (reader.Name() == "note" || reader.Name() == "price")) {
            reader.SkipElement();  // goes on to what is behind it
            continue;
        }
        if (isElement && reader.Name() == "latin") {
            CopyElement(reader, writer, "name");
        } else {
            CopyNode(reader, writer);
        }
        reader.Read();
    }
    writer.Close();
}
//! [filter]

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: filter FILE\n";
        return 2;
    }
    try {
        IO::FileStream output(1, 2, false);  // descriptor 1, to write, not to be closed
        Filter(argv[1], output);
    } catch (const Xml::Exception& error) {
        std::cerr << argv[1] << ":" << error.LineNumber() << ":" << error.LinePos() << ": "
                  << error.What() << "\n";
        return 1;
    }
    return 0;
}
