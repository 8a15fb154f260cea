// SPDX-License-Identifier: MIT
#include "NodeWriter.h"

#include "Colors.h"
#include "Escape.h"

namespace Tool {

NodeWriter::NodeWriter(Output& out, Document& document, NodeForm form, AttributePlace attributes,
                       bool colored)
    : out_(out),
      document_(document),
      reader_(document.Reader()),
      form_(form),
      attributes_(attributes),
      colored_(colored) {
    document_.FollowColumns();
}

void NodeWriter::WriteNode() {
    WriteLine();
    if (attributes_ != AttributePlace::Beneath) return;
    if (reader_.NodeType() != Xml::XmlNodeType::Element) return;
    for (bool more = reader_.MoveToFirstAttribute(); more; more = reader_.MoveToNextAttribute())
        WriteLine();
    reader_.MoveToElement();
}

void NodeWriter::WriteLine() {
    if (form_ == NodeForm::Json) {
        WriteJson();
    } else {
        WriteText();
    }
    out_.Write('\n');
}

// Tells whether the line of the current node has its attributes. A declaration has them as its
// value; those of a document type, which has no other place for them, are no attributes to visit.
bool NodeWriter::WritesAttributesWithin() const {
    const Xml::XmlNodeType type = reader_.NodeType();
    if (type == Xml::XmlNodeType::DocumentType) return true;
    return type == Xml::XmlNodeType::Element && attributes_ == AttributePlace::Within;
}

void NodeWriter::WriteText() {
    StartColor(kTypeColor);
    out_.Write(reader_.NodeType().ToString());
    EndColor();
    out_.Write(' ');
    StartColor(kNameColor);
    out_.Write(reader_.Name().empty() ? std::string_view("-") : reader_.Name().view());
    EndColor();
    out_.Write(' ');
    out_.WriteNumber(reader_.Depth());
    out_.Write(' ');
    out_.WriteNumber(reader_.LineNumber());
    out_.Write(':');
    out_.WriteNumber(Column());
    if (!reader_.NamespaceURI().empty()) {
        out_.Write(" {");
        WriteWord(out_, reader_.NamespaceURI());
        out_.Write('}');
    }
    if (WritesAttributesWithin()) WriteTextAttributes();
    if (reader_.HasValue()) {
        out_.Write(' ');
        StartColor(kValueColor);
        WriteQuoted(out_, Value());
        EndColor();
    }
    if (reader_.IsEmptyElement()) out_.Write(" /");
}

void NodeWriter::WriteTextAttributes() {
    for (const Xml::XmlAttributeRef attribute : reader_.Attributes()) {
        out_.Write(' ');
        out_.Write(attribute.Name());
        out_.Write('=');
        StartColor(kValueColor);
        WriteQuoted(out_, attribute.Value());
        EndColor();
    }
}

void NodeWriter::WriteJson() {
    const Xml::XmlNodeType type = reader_.NodeType();
    out_.Write("{\"type\":\"");
    out_.Write(type.ToString());
    out_.Write("\",\"depth\":");
    out_.WriteNumber(reader_.Depth());
    out_.Write(",\"line\":");
    out_.WriteNumber(reader_.LineNumber());
    out_.Write(",\"column\":");
    out_.WriteNumber(Column());
    if (!reader_.Name().empty()) WriteMember(",\"name\":", reader_.Name());
    if (!reader_.NamespaceURI().empty()) WriteMember(",\"namespace\":", reader_.NamespaceURI());
    if (type == Xml::XmlNodeType::Element) {
        out_.Write(reader_.IsEmptyElement() ? ",\"empty\":true" : ",\"empty\":false");
    }
    if (WritesAttributesWithin()) WriteJsonAttributes();
    if (reader_.HasValue()) WriteMember(",\"value\":", Value());
    out_.Write('}');
}

void NodeWriter::WriteJsonAttributes() {
    if (reader_.AttributeCount() == 0) return;
    std::string_view intro = ",\"attributes\":[{\"name\":";
    for (const Xml::XmlAttributeRef attribute : reader_.Attributes()) {
        WriteMember(intro, attribute.Name());
        if (!attribute.NamespaceURI().empty()) {
            WriteMember(",\"namespace\":", attribute.NamespaceURI());
        }
        WriteMember(",\"value\":", attribute.Value());
        intro = "},{\"name\":";
    }
    out_.Write("}]");
}

void NodeWriter::WriteMember(std::string_view intro, std::string_view value) {
    out_.Write(intro);
    WriteJsonString(out_, value);
}

void NodeWriter::StartColor(std::string_view color) {
    if (colored_) out_.Write(color);
}

void NodeWriter::EndColor() {
    if (colored_) out_.Write(kNoColor);
}

std::string_view NodeWriter::Value() {
    if (reader_.NodeType() != Xml::XmlNodeType::XmlDeclaration) return reader_.Value();
    declaration_ = document_.Value();
    return declaration_;
}

// Returns the column of the current node or attribute as people count it.
long NodeWriter::Column() const {
    return document_.ColumnOf({reader_.LineNumber(), reader_.LinePosition()});
}

}  // namespace Tool
