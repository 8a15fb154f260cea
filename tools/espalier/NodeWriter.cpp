// SPDX-License-Identifier: MIT
#include "NodeWriter.h"

#include "Escape.h"

namespace Tool {

namespace {

constexpr std::string_view kTypeColor = "\x1B[36m";
constexpr std::string_view kNameColor = "\x1B[1m";
constexpr std::string_view kValueColor = "\x1B[32m";
constexpr std::string_view kNoColor = "\x1B[0m";

bool HasAttributes(Xml::XmlNodeType type) { return type == Xml::XmlNodeType::Element; }

}  // namespace

void NodeWriter::WriteNode() {
    const Xml::XmlNodeType type = reader_.NodeType();
    const long column = FollowColumn();
    if (form_ == NodeForm::Json) {
        WriteJson(type, column);
    } else {
        WriteText(type, column);
    }
    out_.Write('\n');
}

void NodeWriter::WriteText(Xml::XmlNodeType type, long column) {
    StartColor(kTypeColor);
    out_.Write(type.ToString());
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
    out_.WriteNumber(column);
    if (!reader_.NamespaceURI().empty()) {
        out_.Write(" {");
        WriteWord(out_, reader_.NamespaceURI());
        out_.Write('}');
    }
    if (HasAttributes(type)) WriteTextAttributes();
    if (reader_.HasValue()) {
        out_.Write(' ');
        StartColor(kValueColor);
        WriteQuoted(out_, reader_.Value());
        EndColor();
    }
    if (reader_.IsEmptyElement()) out_.Write(" /");
}

void NodeWriter::WriteTextAttributes() {
    for (bool more = reader_.MoveToFirstAttribute(); more; more = reader_.MoveToNextAttribute()) {
        FollowColumn();
        out_.Write(' ');
        out_.Write(reader_.Name());
        out_.Write('=');
        StartColor(kValueColor);
        WriteQuoted(out_, reader_.Value());
        EndColor();
    }
    reader_.MoveToElement();
}

void NodeWriter::WriteJson(Xml::XmlNodeType type, long column) {
    out_.Write("{\"type\":\"");
    out_.Write(type.ToString());
    out_.Write("\",\"depth\":");
    out_.WriteNumber(reader_.Depth());
    out_.Write(",\"line\":");
    out_.WriteNumber(reader_.LineNumber());
    out_.Write(",\"column\":");
    out_.WriteNumber(column);
    if (!reader_.Name().empty()) WriteMember(",\"name\":", reader_.Name());
    if (!reader_.NamespaceURI().empty()) WriteMember(",\"namespace\":", reader_.NamespaceURI());
    if (type == Xml::XmlNodeType::Element) {
        out_.Write(reader_.IsEmptyElement() ? ",\"empty\":true" : ",\"empty\":false");
    }
    if (HasAttributes(type)) WriteJsonAttributes();
    if (reader_.HasValue()) WriteMember(",\"value\":", reader_.Value());
    out_.Write('}');
}

void NodeWriter::WriteJsonAttributes() {
    if (!reader_.MoveToFirstAttribute()) return;
    std::string_view intro = ",\"attributes\":[{\"name\":";
    do {
        FollowColumn();
        WriteMember(intro, reader_.Name());
        if (!reader_.NamespaceURI().empty()) WriteMember(",\"namespace\":", reader_.NamespaceURI());
        WriteMember(",\"value\":", reader_.Value());
        intro = "},{\"name\":";
    } while (reader_.MoveToNextAttribute());
    out_.Write("}]");
    reader_.MoveToElement();
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

// Returns the column of the current node or attribute as people count it, and takes note of the
// colon of its name, if it has one that the reader does not count.
long NodeWriter::FollowColumn() {
    if (reader_.LineNumber() != colonLine_) {
        colonLine_ = reader_.LineNumber();
        colons_ = 0;
    }
    const long column = reader_.LinePosition() + colons_;
    if (reader_.Namespaces() && reader_.Name().view().find(':') != std::string_view::npos) {
        ++colons_;
    }
    return column;
}

}  // namespace Tool
