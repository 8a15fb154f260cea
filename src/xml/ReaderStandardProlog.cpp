// SPDX-License-Identifier: MIT

// What stands outside of the document element, by the standard: the XML declaration with its
// grammar and the encodings that it may name, and what is refused.

#include <espalier/io/Exception.h>

#include "encoding/Detection.h"
#include "xml/Messages.h"
#include "xml/ReaderCore.h"
#include "xml/StandardMessages.h"

#include <algorithm>  // std::all_of

namespace Xml::detail {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

// [26] VersionNum ::= '1.' [0-9]+
bool IsVersion(std::string_view text) {
    return text.size() > 2 && text.substr(0, 2) == "1." &&
           std::all_of(text.begin() + 2, text.end(), IsDigit);
}

// [81] EncName ::= [A-Za-z] ([A-Za-z0-9._] | '-')*
bool IsEncodingName(std::string_view text) {
    return !text.empty() && IsLetter(text.front()) &&
           std::all_of(text.begin(), text.end(), [](char c) {
               return IsLetter(c) || IsDigit(c) || c == '.' || c == '_' || c == '-';
           });
}

}  // namespace

// [23] XMLDecl ::= '<?xml' VersionInfo EncodingDecl? SDDecl? S? '?>'
//
// Entered just after "xml". The value of the node is the text between it and "?>".
ReaderCore::Pass ReaderCore::ParseStandardXmlDecl() {
    lastPart_ = DeclarationPart::None;
    bool isSeparated = scanner_.SkipWhitespace();
    scanner_.StartCapture();
    bool isEncodingDeclared = false;
    for (const DeclarationPart part :
         {DeclarationPart::Version, DeclarationPart::Encoding, DeclarationPart::Standalone}) {
        if (!ParseStandardPart(part, isSeparated)) continue;
        isEncodingDeclared = isEncodingDeclared || part == DeclarationPart::Encoding;
        isSeparated = scanner_.SkipWhitespace();
    }
    if (!scanner_.Accept("?>")) {
        if (scanner_.AtEnd()) scanner_.Throw(Message::kUnexpectedEof);
        constexpr const char* kExpected[] = {
            Message::kExpectedVersion, Message::kExpectedDeclarationPart,
            Message::kExpectedStandalonePart, Message::kExpectedDeclarationEnd};
        scanner_.Throw(kExpected[static_cast<std::size_t>(lastPart_)]);
    }
    const std::string_view text = scanner_.EndCapture();
    value_ = text.substr(0, text.size() - 2);  // without "?>"
    SettleStandardEncoding(isEncodingDeclared);
    return ReportNamed(XmlNodeType::XmlDeclaration, "xml");
}

// Parses `name = "value"` when it is that of the part.
bool ReaderCore::ParseStandardPart(DeclarationPart part, bool isSeparated) {
    XmlName& name = partNames_[static_cast<std::size_t>(part)];
    if (!scanner_.LookingAt(name.qualified)) {
        if (part == DeclarationPart::Version) scanner_.Throw(Message::kExpectedVersion);
        return false;
    }
    if (!isSeparated) scanner_.Throw(Message::kExpectedSpaceInDeclaration);
    scanner_.Accept(name.qualified);
    scanner_.SkipWhitespace();
    if (!scanner_.Accept("=")) scanner_.Throw(Message::kExpectedEqualsInDeclaration);
    if (scanner_.NextMarkupToken() != XmlToken::QUOTE) {
        scanner_.Throw(Message::kExpectedValueInDeclaration);
    }
    XmlAttribute& attribute = AddAttribute(name);
    attribute.place = scanner_.NodePlace();  // the parts are not visited one by one
    attribute.hasPlace = true;
    attribute.quote = scanner_.QuoteChar();
    attribute.value.clear();
    XmlToken token = scanner_.ScanValue(attribute.value);
    if (token == XmlToken::TEXT) token = scanner_.ScanValue(attribute.value);
    if (token != XmlToken::ENDQUOTE) scanner_.Throw(Message::kExpectedValueInDeclaration);
    lastPart_ = part;
    HandleStandardPart(part, attribute.value);
    return true;
}

void ReaderCore::HandleStandardPart(DeclarationPart part, const astring& value) {
    switch (part) {
    case DeclarationPart::None: break;
    case DeclarationPart::Version:
        if (!IsVersion(value)) scanner_.Throw(Message::kInvalidVersion);
        break;
    case DeclarationPart::Encoding: {
        if (!IsEncodingName(value)) scanner_.Throw(Message::kInvalidEncodingName);
        const NamedEncoding named = FindNamedEncoding(value, *scanner_.Codec(), scanner_.HasMark());
        if (!named.isKnown) scanner_.Throw(Message::kUnsupportedEncoding, value);
        if (named.codec == nullptr) scanner_.Throw(Message::kEncodingContradicts, value);
        scanner_.InstallCodec(*named.codec);
        break;
    }
    case DeclarationPart::Standalone:
        if (value != "yes" && value != "no") scanner_.Throw(Message::kInvalidStandalone);
        standalone_ = doctype_.isStandalone = value == "yes";
        break;
    }
}

// XML 1.0 section 4.3.3: what has neither a mark nor a declaration of its encoding is in UTF-8.
void ReaderCore::SettleStandardEncoding(bool isDeclared) {
    scanner_.SettleEncoding();
    const CodecKind kind = scanner_.Codec()->Kind();
    const bool isWide = kind == CodecKind::Utf16 || kind == CodecKind::Ucs4;
    if (isWide && !isDeclared && !scanner_.HasMark()) scanner_.Throw(Message::kNoEncodingNamed);
}

// Refuses what has been scanned, at the place where it begins; white space before it is allowed.
void ReaderCore::ThrowInProlog(XmlToken token) const {
    const bool isText = token == XmlToken::TEXT;
    Place place = scanner_.NodePlace();
    for (const char c : value_.view().substr(0, value_.view().find_first_not_of(" \t\n"))) {
        ++place.column;
        if (c == '\n') place = {place.line + 1, 1};
    }
    Exception::ThrowException(isText ? Message::kTextOutsideRoot : Message::kReferenceOutsideRoot,
                              isText ? value_ : astring(scanner_.TokenText()), place.line,
                              place.column);
}

}  // namespace Xml::detail
