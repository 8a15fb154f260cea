// SPDX-License-Identifier: MIT

// The operations that stand on top of Read(): moving to content, checked tags, text and markup.

#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextReader.h>

#include "encoding/Utf8.h"
#include "xml/Messages.h"
#include "xml/ReaderCore.h"

#include <cstring>
#include <utility>  // std::exchange

namespace Xml {

namespace {

// What ReadString() collects. It never sees the two kinds of white space, because it moves to
// content first.
bool IsCharacterData(XmlNodeType::XML_NODE_TYPE type) {
    return type == XmlNodeType::Text || type == XmlNodeType::CDATA ||
           type == XmlNodeType::Whitespace || type == XmlNodeType::SignificantWhitespace;
}

// Returns the most bytes, up to `room`, of `text` that are whole characters.
std::size_t WholeCharacters(std::string_view text, std::size_t room) {
    if (text.size() <= room) return text.size();
    while (room > 0 && detail::utf8::IsContinuation(static_cast<unsigned char>(text[room])))
        --room;
    return room;
}

}  // namespace

void XmlTextReader::ThrowAtNode(const char* message, std::string_view argument) const {
    Exception::ThrowException(message, astring(argument), LineNumber(), LinePosition());
}

XmlNodeType XmlTextReader::MoveToContent() {
    do {
        switch (node_.type) {
        case XmlNodeType::Attribute: MoveToElement(); return XmlNodeType::Element;
        case XmlNodeType::Element:
        case XmlNodeType::Text:
        case XmlNodeType::CDATA:
        case XmlNodeType::EntityReference:
        case XmlNodeType::EndElement:
        case XmlNodeType::EndEntity: return node_.type;
        default: break;
        }
    } while (Read());
    return node_.type;
}

bool XmlTextReader::IsStartElement() { return MoveToContent() == XmlNodeType::Element; }

bool XmlTextReader::IsStartElement(std::string_view name) {
    return IsStartElement() && Name() == name;
}

bool XmlTextReader::IsStartElement(std::string_view localName, std::string_view namespaceURI) {
    return IsStartElement() && LocalName() == localName && NamespaceURI() == namespaceURI;
}

void XmlTextReader::RequireStartElement() {
    if (!IsStartElement()) {
        ThrowAtNode(detail::Message::kNotAnElement, XmlNodeType(node_.type).ToString());
    }
}

void XmlTextReader::ReadStartElement() {
    RequireStartElement();
    Read();
}

void XmlTextReader::ReadStartElement(std::string_view name) {
    RequireStartElement();
    if (Name() != name) ThrowAtNode(detail::Message::kUnexpectedElement, Name());
    Read();
}

void XmlTextReader::ReadStartElement(std::string_view localName, std::string_view namespaceURI) {
    RequireStartElement();
    if (LocalName() != localName || NamespaceURI() != namespaceURI) {
        ThrowAtNode(detail::Message::kUnexpectedElement, Name());
    }
    Read();
}

void XmlTextReader::ReadEndElement() {
    if (node_.type != XmlNodeType::EndElement) {
        ThrowAtNode(detail::Message::kNotAnEndElement, XmlNodeType(node_.type).ToString());
    }
    const int line = LineNumber();
    const int column = LinePosition();
    if (!Read()) {
        Exception::ThrowException(detail::Message::kReadFailed, astring(), line, column);
    }
}

// Text.

void XmlTextReader::ReadForString() {
    if (!Read())
        Exception::ThrowException(detail::Message::kInvalidOperation, "ReadString", -1, -1);
}

// Moves from an element or attribute to what stands behind its start tag.
void XmlTextReader::EnterForString() {
    if (node_.type == XmlNodeType::Element && !IsEmptyElement()) {
        ReadForString();
    } else if (node_.type == XmlNodeType::Attribute) {
        MoveToElement();
        ReadForString();
    }
}

astring XmlTextReader::ReadString() {
    EnterForString();
    astring text;
    while (IsCharacterData(MoveToContent())) {
        text += Value();
        ReadForString();
    }
    return text;
}

astring XmlTextReader::ReadElementString() {
    if (MoveToContent() != XmlNodeType::Element) {
        ThrowAtNode(detail::Message::kInvalidNodeType, XmlNodeType(node_.type).ToString());
    }
    astring text;
    if (!IsEmptyElement()) {
        text = ReadString();
        if (node_.type != XmlNodeType::EndElement) {
            ThrowAtNode(detail::Message::kUnexpectedNodeType, XmlNodeType(node_.type).ToString());
        }
    }
    Read();
    return text;
}

int XmlTextReader::ReadChars(char* buffer, int index, int count, unsigned /*reserved*/) {
    if (buffer == nullptr || index < 0 || count <= 0) return 0;
    if (node_.type == XmlNodeType::Element) {
        // The element may be the one that ended a text, which 0 has yet to tell.
        if (std::exchange(node_.charsRead, 0) != 0 || IsEmptyElement()) return 0;
        Read();
    }
    int copied = 0;
    for (;;) {
        if (IsCharacterData(node_.type)) {
            const auto rest = Value().view().substr(node_.charsRead);
            const std::size_t length =
                WholeCharacters(rest, static_cast<std::size_t>(count - copied));
            std::memcpy(buffer + index + copied, rest.data(), length);
            copied += static_cast<int>(length);
            node_.charsRead += length;
            if (length < rest.size()) return copied;
        } else if (node_.type != XmlNodeType::Comment &&
                   node_.type != XmlNodeType::ProcessingInstruction) {
            if (node_.type == XmlNodeType::Element && copied > 0) node_.charsRead = 1;
            return copied;
        }
        if (!Read()) return copied;
    }
}

// Whole elements.

void XmlTextReader::Skip() {
    MoveToElement();
    if (node_.type == XmlNodeType::Element && !IsEmptyElement()) {
        core_->ReadToEndTag();
    } else {
        const int depth = node_.depth;
        while (Read() && node_.depth > depth) {
        }
    }
    if (node_.type != XmlNodeType::EndElement) return;
    Read();
    MoveToContent();
}

bool XmlTextReader::SkipElement() {
    MoveToElement();
    if (node_.type == XmlNodeType::Element && !IsEmptyElement()) core_->ReadToEndTag();
    return Read();
}

astring XmlTextReader::ReadInnerXml() {
    if (core_->readState != Interactive) return {};
    if (node_.type == XmlNodeType::Attribute) return Value();
    astring markup;
    if (node_.type == XmlNodeType::Element && !IsEmptyElement()) markup = core_->InnerXml();
    Read();
    return markup;
}

astring XmlTextReader::ReadOuterXml() {
    if (core_->readState != Interactive) return {};
    if (node_.type == XmlNodeType::Attribute) return AttributeMarkup();
    astring markup;
    if (node_.type == XmlNodeType::Element) markup = core_->OuterXml(IsEmptyElement());
    Read();
    return markup;
}

astring XmlTextReader::AttributeMarkup() const {
    astring markup = Name() + '=' + QuoteChar();
    markup += Value();
    markup += QuoteChar();
    return markup;
}

}  // namespace Xml
