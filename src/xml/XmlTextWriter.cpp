// SPDX-License-Identifier: MIT
#include <espalier/encoding/Encoding.h>
#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextWriter.h>

#include "io/ByteRange.h"
#include "xml/WriterCore.h"
#include "xml/WriterMessages.h"

#include <span>
#include <utility>  // std::move

namespace Xml {

XmlTextWriter::XmlTextWriter() : core_(std::make_unique<detail::WriterCore>()) {}

XmlTextWriter::XmlTextWriter(IO::Stream* stream, Encoding* encoding) : XmlTextWriter() {
    core_->Open(stream, encoding);
}

XmlTextWriter::XmlTextWriter(const char* fileName, Encoding* encoding)
    : XmlTextWriter(astring(TextArgument(fileName).view()), encoding) {}

XmlTextWriter::XmlTextWriter(const astring& fileName, Encoding* encoding) : XmlTextWriter() {
    core_->OpenFile(fileName, encoding);
}

XmlTextWriter::XmlTextWriter(const XmlTextWriter& other) : XmlTextWriter() {
    core_->settings = other.core_->settings;
}

XmlTextWriter& XmlTextWriter::operator=(const XmlTextWriter& other) {
    detail::WriterSettings settings = other.core_->settings;
    core_->settings = std::move(settings);  // all of them, or none when memory is missing
    return *this;
}

XmlTextWriter::~XmlTextWriter() = default;

// Settings.

Formatting XmlTextWriter::GetFormatting() const { return core_->settings.formatting; }
void XmlTextWriter::SetFormatting(Formatting formatting) {
    core_->settings.formatting = formatting;
}

void XmlTextWriter::SetIndentation(int indentation) {
    core_->settings.indentation = indentation < 0 ? 0 : indentation;
}

char XmlTextWriter::GetIndentChar() const { return core_->settings.indentChar; }
void XmlTextWriter::SetIndentChar(char character) { core_->settings.indentChar = character; }

char XmlTextWriter::GetQuoteChar() const { return core_->settings.quoteChar; }
void XmlTextWriter::SetQuoteChar(char quote) { core_->settings.quoteChar = quote; }

bool XmlTextWriter::CheckCharacters() const { return core_->settings.checkCharacters; }
void XmlTextWriter::SetCheckCharacters(bool check) { core_->settings.checkCharacters = check; }

bool XmlTextWriter::CloseOutput() const { return core_->settings.closeOutput; }
void XmlTextWriter::SetCloseOutput(bool close) { core_->settings.closeOutput = close; }

NewLineHandling XmlTextWriter::GetNewLineHandling() const {
    return core_->settings.newLineHandling;
}
void XmlTextWriter::SetNewLineHandling(const NewLineHandling& handling) {
    core_->settings.newLineHandling = handling;
}

const astring& XmlTextWriter::GetNewLineChars() const { return core_->settings.newLineChars; }

void XmlTextWriter::SetNewLineChars(TextArgument characters) {
    if (characters.view().find_first_not_of(" \t\r\n") != std::string_view::npos) {
        Exception::ThrowException(detail::Message::kBadNewLineChars, astring(), -1, -1);
    }
    core_->settings.newLineChars = characters.view();
}

bool XmlTextWriter::GetNamespaces() const { return core_->settings.namespaces; }

void XmlTextWriter::SetNamespaces(bool namespaces) {
    if (core_->State() != WriteState::Start) {
        Exception::ThrowException(detail::Message::kNamespacesFixed, astring(), -1, -1);
    }
    core_->settings.namespaces = namespaces;
}

// State.

WriteState XmlTextWriter::GetWriteState() const { return core_->State(); }

XmlSpace XmlTextWriter::GetXmlSpace() const { return core_->Space(); }

const astring& XmlTextWriter::GetXmlLang() const { return core_->Language(); }

const astring& XmlTextWriter::LookupPrefix(TextArgument ns) const {
    return core_->PrefixOf(ns.view());
}

void XmlTextWriter::Flush() { core_->Flush(); }

void XmlTextWriter::Close() { core_->Close(); }

// Documents.

void XmlTextWriter::WriteStartDocument() { core_->StartDocument(nullptr); }

void XmlTextWriter::WriteStartDocument(bool standalone) {
    core_->StartDocument(standalone ? "yes" : "no");
}

void XmlTextWriter::WriteEndDocument() { core_->EndDocument(); }

void XmlTextWriter::WriteDocType(TextArgument name, TextArgument publicId, TextArgument systemId,
                                 TextArgument subset) {
    core_->DocType(name.view(), publicId.view(), systemId.view(), subset.view());
}

// Elements.

void XmlTextWriter::WriteStartElement(TextArgument localName) {
    core_->StartElement({}, localName.view(), {});
}

void XmlTextWriter::WriteStartElement(TextArgument localName, TextArgument ns) {
    core_->StartElement({}, localName.view(), ns.view());
}

void XmlTextWriter::WriteStartElement(TextArgument prefix, TextArgument localName,
                                      TextArgument ns) {
    core_->StartElement(prefix.view(), localName.view(), ns.view());
}

void XmlTextWriter::WriteEndElement() { core_->EndElement(); }

void XmlTextWriter::WriteFullEndElement() { core_->FullEndElement(); }

void XmlTextWriter::WriteElementString(TextArgument localName, TextArgument text) {
    core_->ElementString({}, localName.view(), {}, text.view());
}

void XmlTextWriter::WriteElementString(TextArgument localName, TextArgument ns, TextArgument text) {
    core_->ElementString({}, localName.view(), ns.view(), text.view());
}

void XmlTextWriter::WriteElementString(TextArgument prefix, TextArgument localName, TextArgument ns,
                                       TextArgument text) {
    core_->ElementString(prefix.view(), localName.view(), ns.view(), text.view());
}

// Attributes.

void XmlTextWriter::WriteStartAttribute(TextArgument localName) {
    core_->StartAttribute({}, localName.view(), {});
}

void XmlTextWriter::WriteStartAttribute(TextArgument localName, TextArgument ns) {
    core_->StartAttribute({}, localName.view(), ns);
}

void XmlTextWriter::WriteStartAttribute(TextArgument prefix, TextArgument localName,
                                        TextArgument ns) {
    core_->StartAttribute(prefix.view(), localName.view(), ns);
}

void XmlTextWriter::WriteEndAttribute() { core_->EndAttribute(); }

void XmlTextWriter::WriteAttributeString(TextArgument localName, TextArgument value) {
    core_->AttributeString({}, localName.view(), {}, value.view());
}

void XmlTextWriter::WriteAttributeString(TextArgument localName, TextArgument ns,
                                         TextArgument value) {
    core_->AttributeString({}, localName.view(), ns, value.view());
}

void XmlTextWriter::WriteAttributeString(TextArgument prefix, TextArgument localName,
                                         TextArgument ns, TextArgument value) {
    core_->AttributeString(prefix.view(), localName.view(), ns, value.view());
}

// Content.

void XmlTextWriter::WriteString(TextArgument text) { core_->String(text.view()); }

void XmlTextWriter::WriteWhitespace(TextArgument text) { core_->Whitespace(text.view()); }

void XmlTextWriter::WriteCData(TextArgument text) { core_->CData(text.view()); }

void XmlTextWriter::WriteComment(TextArgument text) { core_->Comment(text.view()); }

void XmlTextWriter::WriteProcessingInstruction(TextArgument name, TextArgument text) {
    core_->Instruction(name.view(), text.view());
}

void XmlTextWriter::WriteEntityRef(TextArgument name) { core_->EntityRef(name.view()); }

void XmlTextWriter::WriteName(TextArgument name) { core_->Name(name.view()); }

void XmlTextWriter::WriteNmToken(TextArgument token) { core_->NmToken(token.view()); }

void XmlTextWriter::WriteRaw(TextArgument text) { core_->Raw(text.view()); }

void XmlTextWriter::WriteRaw(const char* text, int length) {
    const bool isEmpty = text == nullptr || length <= 0;
    core_->Raw(isEmpty ? std::string_view()
                       : std::string_view(text, static_cast<std::size_t>(length)));
}

namespace {

std::span<const unsigned char> BytesAt(const unsigned char* buffer, int offset, int count) {
    const IO::detail::ByteRange range = IO::detail::FoldOffset(offset, count);
    if (buffer == nullptr || range.count == 0) return {};
    return {buffer + range.offset, static_cast<std::size_t>(range.count)};
}

}  // namespace

void XmlTextWriter::WriteBase64(const unsigned char* buffer, int offset, int count) {
    core_->Base64(BytesAt(buffer, offset, count));
}

void XmlTextWriter::WriteBinHex(const unsigned char* buffer, int offset, int count) {
    core_->BinHex(BytesAt(buffer, offset, count));
}

}  // namespace Xml
