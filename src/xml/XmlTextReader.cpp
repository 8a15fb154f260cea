// SPDX-License-Identifier: MIT
#include <espalier/io/Exception.h>
#include <espalier/io/FileStream.h>
#include <espalier/xml/XmlTextReader.h>

#include "encoding/CharClass.h"
#include "xml/Messages.h"
#include "xml/NameBytes.h"
#include "xml/ReaderCore.h"
#include "xml/RunScan.h"

namespace Xml {

namespace {

constexpr unsigned kRead = 1;         // the access of a file that is read
constexpr unsigned kDenyNothing = 3;  // others may read and write the file meanwhile

// API misuse has no place in a document.
[[noreturn]] void ThrowMisuse(const char* message, const char* operation) {
    Exception::ThrowException(message, operation, -1, -1);
}

// Calls `accept` with the class of each character.
// Returns whether all were accepted; bytes that are no character never are.
template <typename Accept>
bool AllCharacters(std::string_view text, Accept accept) {
    const auto* at = reinterpret_cast<const unsigned char*>(text.data());
    for (const auto* const end = at + text.size(); at != end;) {
        int charClass = detail::ToInt(detail::CharClass::Invalid);
        int length = 1;
        if (*at < 0x80) {
            charClass = detail::ToInt(detail::kAsciiClass[*at]);
        } else {
            length = detail::SequenceLength(at, end);
            if (length <= 0) return false;
            charClass = detail::ClassOfScalarValue(detail::utf8::Combine(at, length));
        }
        if (!accept(charClass)) return false;
        at += length;
    }
    return true;
}

}  // namespace

XmlTextReader::XmlTextReader() : core_(std::make_unique<detail::ReaderCore>(node_)) {}

XmlTextReader::~XmlTextReader() = default;

bool XmlTextReader::Open(const astring& fileName) {
    Close();
    auto stream =
        std::make_unique<IO::FileStream>(fileName, IO::FileMode::Open, kRead, kDenyNothing);
    core_->OpenStream(stream.release(), true);
    return true;
}

bool XmlTextReader::SetStream(IO::Stream* stream, bool owns) {
    Close();
    if (stream == nullptr) return false;
    core_->OpenStream(stream, owns);
    return true;
}

void XmlTextReader::Close() { core_->Close(); }

XmlTextReader::XmlReadStateEnum XmlTextReader::ReadState() const { return core_->readState; }

bool XmlTextReader::Eof() const { return core_->readState == EndOfFile; }

bool XmlTextReader::Namespaces() const { return core_->namespaces; }

void XmlTextReader::SetNamespaces(bool namespaces) {
    // Deliberate: this message and the next two differ in their capital, and the states in which
    // the settings may change differ too.
    if (core_->readState != Closed && core_->readState != Initial) {
        ThrowMisuse(detail::Message::kInvalidOperationNamespaces, "SetNamespaces");
    }
    core_->namespaces = namespaces;
}

bool XmlTextReader::Normalization() const { return core_->Normalization(); }

void XmlTextReader::SetNormalization(bool normalization) {
    if (core_->readState == Closed) {
        ThrowMisuse(detail::Message::kInvalidOperation, "SetNormalization");
    }
    core_->SetNormalization(normalization);
}

XmlTextReader::XmlWsHandlingEnum XmlTextReader::WhitespaceHandling() const {
    return core_->whitespaceHandling;
}

void XmlTextReader::SetWhitespaceHandling(XmlWsHandlingEnum handling) {
    if (core_->readState == Closed) {
        ThrowMisuse(detail::Message::kInvalidOperation, "SetWhitespaceHandling");
    }
    core_->whitespaceHandling = handling;
}

XmlConformance XmlTextReader::Conformance() const { return core_->conformance; }

void XmlTextReader::SetConformance(XmlConformance conformance) {
    if (core_->readState != Closed && core_->readState != Initial) {
        ThrowMisuse(detail::Message::kInvalidOperationNamespaces, "SetConformance");
    }
    core_->conformance = conformance;
}

XmlEntityHandling XmlTextReader::EntityHandling() const { return core_->entityHandling; }

void XmlTextReader::SetEntityHandling(XmlEntityHandling handling) {
    core_->entityHandling = handling;
}

const XmlEntityLimits& XmlTextReader::EntityLimits() const { return core_->entityLimits; }

void XmlTextReader::SetEntityLimits(const XmlEntityLimits& limits) { core_->entityLimits = limits; }

astring XmlTextReader::Encoding() const { return core_->EncodingName(); }

bool XmlTextReader::Read() { return core_->Read(); }

void XmlTextReader::ResolveEntity() { core_->ResolveEntity(); }

bool XmlTextReader::CanResolveEntity() const { return true; }

const astring& XmlTextReader::NormalizedValue() const {
    core_->NormalizeCurrentValue();
    return *node_.value;
}

bool XmlTextReader::HasValue() const {
    switch (node_.type) {
    case XmlNodeType::Attribute:
    case XmlNodeType::Text:
    case XmlNodeType::CDATA:
    case XmlNodeType::ProcessingInstruction:
    case XmlNodeType::Comment:
    case XmlNodeType::DocumentType:
    case XmlNodeType::XmlDeclaration:
    case XmlNodeType::SignificantWhitespace:
    case XmlNodeType::Whitespace: return true;
    default: return false;
    }
}

char XmlTextReader::QuoteChar() const { return core_->QuoteChar(); }

int XmlTextReader::LineNumber() const { return core_->NodePlace().line; }

int XmlTextReader::LinePosition() const { return core_->NodePlace().column; }

const astring& XmlTextReader::XmlLang() const { return core_->Language(); }

XmlSpace XmlTextReader::GetXmlSpace() const { return core_->Space(); }

int XmlTextReader::AttributeCount() const { return core_->AttributeCount(); }

bool XmlTextReader::HasAttributes() const { return AttributeCount() > 0; }

XmlAttributeRange XmlTextReader::Attributes() const { return {*this, AttributeCount()}; }

const astring& XmlTextReader::GetAttribute(int i) const { return core_->AttributeValue(i); }

const astring& XmlTextReader::GetAttribute(std::string_view name) const {
    return core_->AttributeValue(name);
}

const astring& XmlTextReader::GetAttribute(std::string_view localName,
                                           std::string_view namespaceURI) const {
    return core_->AttributeValue(localName, namespaceURI);
}

const astring& XmlTextReader::Item(int i) const {
    return core_->AttributeValue(node_.type == XmlNodeType::Element ? i : -1);
}

void XmlTextReader::MoveToAttribute(int i) {
    core_->LeaveValue();
    if (core_->IsOnElement() && !core_->MoveToAttribute(i)) {
        ThrowMisuse(detail::Message::kArgumentOutOfRange, "MoveToAttribute");
    }
}

bool XmlTextReader::MoveToAttribute(std::string_view name) { return core_->MoveToAttribute(name); }

bool XmlTextReader::MoveToAttribute(std::string_view localName, std::string_view namespaceURI) {
    return core_->MoveToAttribute(localName, namespaceURI);
}

bool XmlTextReader::MoveToElement() { return core_->MoveToElement(); }

bool XmlTextReader::MoveToFirstAttribute() { return core_->MoveToAttribute(0); }

bool XmlTextReader::MoveToNextAttribute() { return core_->MoveToNextAttribute(); }

bool XmlTextReader::ReadAttributeValue() { return core_->ReadAttributeValue(); }

bool XmlTextReader::IsDefault() const {
    return node_.type == XmlNodeType::Attribute &&
           core_->AttributeAt(core_->AttributeIndex()).isDefault;
}

int XmlTextReader::GetCurrentAttributeIndex() const { return core_->AttributeIndex(); }

const astring& XmlTextReader::LookupNamespace(std::string_view prefix) const {
    return core_->LookupNamespace(prefix);
}

const astring& XmlAttributeRef::Name() const {
    return reader_->core_->AttributeAt(index_).name->qualified;
}

const astring& XmlAttributeRef::LocalName() const {
    return reader_->core_->AttributeAt(index_).name->local;
}

const astring& XmlAttributeRef::Prefix() const {
    return reader_->core_->AttributeAt(index_).name->prefix;
}

const astring& XmlAttributeRef::NamespaceURI() const {
    return *reader_->core_->AttributeAt(index_).uri;
}

const astring& XmlAttributeRef::Value() const { return reader_->GetAttribute(index_); }

bool XmlAttributeRef::IsDefault() const { return reader_->core_->AttributeAt(index_).isDefault; }

bool XmlTextReader::IsName(std::string_view name, bool allowColon) {
    bool isFirst = true;
    return !name.empty() && AllCharacters(name, [&isFirst, allowColon](int charClass) {
        const bool isColon = allowColon && charClass == detail::ToInt(detail::CharClass::Colon);
        const bool fits =
            isFirst ? detail::IsNameStartClass(charClass) : detail::IsNameClass(charClass);
        isFirst = false;
        return fits || isColon;
    });
}

bool XmlTextReader::IsNameToken(std::string_view token) {
    return !token.empty() && AllCharacters(token, [](int charClass) {
        return detail::IsNameClass(charClass) ||
               charClass == detail::ToInt(detail::CharClass::Colon);
    });
}

}  // namespace Xml
