// SPDX-License-Identifier: MIT

// Copies from a reader to a writer.

#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextReader.h>
#include <espalier/xml/XmlTextWriter.h>

#include "xml/WriterMessages.h"

namespace Xml {

namespace {

void RequireReader(const XmlTextReader* reader) {
    if (reader == nullptr) {
        Exception::ThrowException(detail::Message::kNoReader, astring(), -1, -1);
    }
}

// Writes the attribute that the reader stands on, part by part.
void WriteAttribute(XmlTextWriter& writer, XmlTextReader& reader) {
    writer.WriteStartAttribute(reader.Prefix(), reader.LocalName(), reader.NamespaceURI());
    while (reader.ReadAttributeValue()) {
        if (reader.NodeType() == XmlNodeType::EntityReference) {
            writer.WriteEntityRef(reader.Name());
        } else if (reader.NodeType() != XmlNodeType::EndEntity) {
            writer.WriteString(reader.Value());
        }
    }
    writer.WriteEndAttribute();
}

void WriteElement(XmlTextWriter& writer, XmlTextReader& reader, bool defaultAttributes) {
    const bool isEmpty = reader.IsEmptyElement();
    writer.WriteStartElement(reader.Prefix(), reader.LocalName(), reader.NamespaceURI());
    writer.WriteAttributes(&reader, defaultAttributes);
    if (isEmpty) writer.WriteEndElement();
}

void WriteCurrent(XmlTextWriter& writer, XmlTextReader& reader, bool defaultAttributes) {
    switch (reader.NodeType()) {
    case XmlNodeType::Element: WriteElement(writer, reader, defaultAttributes); break;
    case XmlNodeType::Text: writer.WriteString(reader.Value()); break;
    case XmlNodeType::CDATA: writer.WriteCData(reader.Value()); break;
    case XmlNodeType::EntityReference: writer.WriteEntityRef(reader.Name()); break;
    case XmlNodeType::ProcessingInstruction:
    case XmlNodeType::XmlDeclaration:
        writer.WriteProcessingInstruction(reader.Name(), reader.Value());
        break;
    case XmlNodeType::Comment: writer.WriteComment(reader.Value()); break;
    case XmlNodeType::DocumentType:
        writer.WriteDocType(reader.Name(), reader.GetAttribute("PUBLIC"),
                            reader.GetAttribute("SYSTEM"), reader.Value());
        break;
    case XmlNodeType::EndElement: writer.WriteFullEndElement(); break;
    case XmlNodeType::SignificantWhitespace:
    case XmlNodeType::Whitespace: writer.WriteWhitespace(reader.Value()); break;
    default: break;
    }
}

}  // namespace

void XmlTextWriter::WriteAttributes(XmlTextReader* reader, bool /*defaultAttributes*/) {
    RequireReader(reader);
    const XmlNodeType type = reader->NodeType();
    const bool isOnNode = type == XmlNodeType::Element || type == XmlNodeType::XmlDeclaration;
    if (!isOnNode && type != XmlNodeType::Attribute) {
        Exception::ThrowException(detail::Message::kBadPosition, astring(), -1, -1);
    }
    if (isOnNode && !reader->MoveToFirstAttribute()) return;
    do {
        WriteAttribute(*this, *reader);
    } while (reader->MoveToNextAttribute());
    if (isOnNode) reader->MoveToElement();
}

void XmlTextWriter::WriteNode(XmlTextReader* reader, bool defaultAttributes) {
    RequireReader(reader);
    const int depth = reader->NodeType() == XmlNodeType::None ? -1 : reader->Depth();
    bool isInside = true;
    do {
        WriteCurrent(*this, *reader, defaultAttributes);
        if (!reader->Read()) return;
        isInside = reader->Depth() > depth ||
                   (reader->Depth() == depth && reader->NodeType() == XmlNodeType::EndElement);
    } while (isInside);
}

}  // namespace Xml
