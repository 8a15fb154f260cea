// SPDX-License-Identifier: MIT

// What stands outside of the root element: white space and the XML declaration with its switch of
// the encoding. ReaderDoctype.cpp has the document type declaration.

#include "encoding/Detection.h"
#include "xml/Messages.h"
#include "xml/ReaderCore.h"

namespace Xml::detail {

ReaderCore::Pass ReaderCore::ParseRoot() {
    scanner_.MarkNode();
    value_.clear();
    const XmlToken token = scanner_.ScanText(value_, XmlScanner::kBufferSize);
    switch (token) {
    case XmlToken::NONE: return ParseTag();
    case XmlToken::ENDOFFILE: return Pass::End;
    case XmlToken::WHITESPACE: return HandleWhitespace();
    case XmlToken::ENDENTITY: return ReportEntityEnd();
    default: break;
    }
    if (standard_) ThrowInProlog(token);
    scanner_.Throw(Message::kUnexpectedToken,
                   token == XmlToken::TEXT ? value_.view() : scanner_.TokenText());
}

// [23] XMLDecl ::= '<?xml' VersionInfo EncodingDecl? SDDecl? S? '?>'
//
// Entered just after "xml". The value of the node is the text between it and "?>".
ReaderCore::Pass ReaderCore::ParseXmlDecl() {
    lastPart_ = DeclarationPart::None;
    scanner_.SkipWhitespace();
    scanner_.StartCapture();
    for (;;) {
        const XmlToken token = scanner_.NextMarkupToken();
        if (token == XmlToken::PIEND) break;
        if (token != XmlToken::NAME) {
            scanner_.Throw(Message::kUnexpectedToken, scanner_.TokenText());
        }
        ParseDeclarationPart();
    }
    if (lastPart_ == DeclarationPart::None) scanner_.Throw(Message::kInvalidDeclaration);
    const std::string_view text = scanner_.EndCapture();
    value_ = text.substr(0, text.size() - 2);  // without "?>"
    return ReportNamed(XmlNodeType::XmlDeclaration, "xml");
}

// Parses `name = "value"`, with the name scanned already.
void ReaderCore::ParseDeclarationPart() {
    constexpr DeclarationPart kParts[] = {DeclarationPart::Version, DeclarationPart::Encoding,
                                          DeclarationPart::Standalone};
    DeclarationPart part = DeclarationPart::None;
    for (const DeclarationPart candidate : kParts) {
        if (scanner_.Name().text == partNames_[static_cast<std::size_t>(candidate)].qualified)
            part = candidate;
    }
    if (part == DeclarationPart::None) scanner_.Throw(Message::kUnexpectedToken);
    const bool isFirst = lastPart_ == DeclarationPart::None;
    if (part <= lastPart_ || isFirst != (part == DeclarationPart::Version)) {
        scanner_.Throw(Message::kInvalidDeclaration);
    }
    lastPart_ = part;

    XmlAttribute& attribute = AddAttribute(partNames_[static_cast<std::size_t>(part)]);
    if (scanner_.NextMarkupToken() != XmlToken::EQUALS ||
        scanner_.NextMarkupToken() != XmlToken::QUOTE) {
        scanner_.Throw(Message::kUnexpectedToken);
    }
    ScanDeclarationValue(attribute);
    HandleDeclarationPart(part, attribute.value);
}

// Scans a value behind its quotation mark.
void ReaderCore::ScanDeclarationValue(XmlAttribute& attribute) {
    attribute.place = scanner_.NodePlace();  // the parts are not visited one by one
    attribute.hasPlace = true;
    attribute.quote = scanner_.QuoteChar();
    attribute.value.clear();
    if (scanner_.ScanValue(attribute.value) != XmlToken::TEXT ||
        attribute.value.length() > XmlScanner::kBufferSize ||
        scanner_.ScanValue(attribute.value) != XmlToken::ENDQUOTE) {
        scanner_.Throw(Message::kUnexpectedToken);
    }
}

void ReaderCore::HandleDeclarationPart(DeclarationPart part, const astring& value) {
    switch (part) {
    case DeclarationPart::None: break;
    case DeclarationPart::Version:
        if (value != "1.0" && !readsAnyVersion) scanner_.Throw(Message::kUnsupportedVersion);
        break;
    case DeclarationPart::Encoding: SwitchEncoding(value); break;
    case DeclarationPart::Standalone:
        if (value != "yes" && value != "no") scanner_.Throw(Message::kUnexpectedToken);
        standalone_ = value == "yes";
        break;
    }
}

void ReaderCore::SwitchEncoding(const astring& name) {
    const CharCodec* const codec = ResolveEncodingName(name, *scanner_.Codec());
    if (codec == nullptr) scanner_.Throw(Message::kUnsupportedEncoding);
    scanner_.InstallCodec(*codec);
    if (namesOfUnicode_ && codec->Kind() == CodecKind::SingleByte) ForgetNames();
}

// Forgets the names of earlier documents. None of this one has been read yet.
void ReaderCore::ForgetNames() {
    names_.Clear();
    namesOfOneByte_ = namesOfUnicode_ = false;
}

}  // namespace Xml::detail
