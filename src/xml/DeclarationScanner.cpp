// SPDX-License-Identifier: MIT
#include "xml/DeclarationScanner.h"

#include <espalier/io/Exception.h>

#include "xml/AttributeLists.h"
#include "xml/Messages.h"
#include "xml/StandardMessages.h"
#include "xml/SubsetMessages.h"
#include "xml/Utf8Append.h"

#include <cstring>
#include <string>

namespace Xml::detail {

// What is wrong.

void DeclarationScanner::ThrowEnd(const Construct& construct) const {
    const bool isEntity = entity_ != nullptr;
    const std::string begin = std::to_string(construct.place.line) + ", position " +
                              std::to_string(construct.place.column);
    const astring message = astring(isEntity ? Message::kEntityEndsIn : Message::kFileEndsIn) +
                            astring(construct.noun) + Message::kBeginsAt +
                            astring(std::string_view(begin));
    const Place place = scanner_.CurrentPlace();
    Exception::ThrowException(message, isEntity ? *entity_ : astring(), place.line, place.column);
}

void DeclarationScanner::Fail(const char* message) {
    if (Peek() == '%') scanner_.Throw(Message::kParameterInDeclaration);
    scanner_.Throw(message);
}

// Characters.

char DeclarationScanner::Peek() {
    if (scanner_.AtEnd()) ThrowEnd();
    const unsigned char c = *scanner_.Position();
    return c < 0x80 ? static_cast<char>(c) : '\0';
}

void DeclarationScanner::RequireSpace(const char* message) {
    if (!scanner_.SkipWhitespace()) Fail(message);
}

void DeclarationScanner::Require(char c, const char* message) {
    if (!scanner_.Accept({&c, 1})) Fail(message);
}

void DeclarationScanner::RequireLast(char c, const char* message) {
    scanner_.SkipWhitespace();
    Require(c, message);
}

// Names.

bool IsXmlInAnyCase(std::string_view name) {
    return name.size() == 3 && (name[0] | 0x20) == 'x' && (name[1] | 0x20) == 'm' &&
           (name[2] | 0x20) == 'l';
}

const ScannedName& DeclarationScanner::ScanName(const char* message) {
    if (scanner_.AtEnd()) ThrowEnd();
    const ScannedName& name = scanner_.ScanName();
    if (name.token == XmlToken::ENDOFFILE) ThrowEnd();
    if (name.token != XmlToken::NAME) Fail(message);
    return name;
}

astring DeclarationScanner::ScanPlainName(const char* message, const char* colonMessage) {
    scanner_.SetCountsColons(false);
    const ScannedName& name = ScanName(message);
    scanner_.SetCountsColons(true);
    if (namespaces_ && name.colon >= 0) scanner_.Throw(colonMessage, name.text);
    return astring(name.text);
}

void DeclarationScanner::ScanToken(const char* message) {
    if (!scanner_.SkipNameToken()) Fail(message);
}

// Literals.

Construct DeclarationScanner::OpenLiteral() {
    const Construct literal{"literal", scanner_.SettledPlace()};
    scanner_.ScanDtdToken();
    return literal;
}

// [75] ExternalID ::= 'SYSTEM' S SystemLiteral | 'PUBLIC' S PubidLiteral S SystemLiteral
// [83] PublicID ::= 'PUBLIC' S PubidLiteral
bool DeclarationScanner::ScanExternalId(ExternalId& id, bool publicAlone) {
    if (scanner_.Accept("SYSTEM")) {
        RequireSpace(Message::kNoSpaceAfterSystem);
        if (!IsAtQuote()) Fail(Message::kExpectedSystemId);
        ScanSystemId(id);
        return true;
    }
    if (!scanner_.Accept("PUBLIC")) return false;
    RequireSpace(Message::kNoSpaceAfterPublic);
    if (!IsAtQuote()) Fail(Message::kExpectedPublicId);
    const Construct literal = OpenLiteral();
    if (!scanner_.TakePubidLiteral(id.publicId)) ThrowEnd(literal);
    scanner_.SkipEndQuote();
    for (char& c : id.publicId) {
        if (c == '\n' || c == '\r') c = ' ';
    }
    TrimTokens(id.publicId);  // XML 1.0 section 4.2.2
    id.isPublic = true;
    const bool isSeparated = scanner_.SkipWhitespace();
    if (!IsAtQuote()) {
        if (!publicAlone) Fail(Message::kNoSystemId);
        return true;
    }
    if (!isSeparated) scanner_.Throw(Message::kNoSpaceAfterPublicId);
    ScanSystemId(id);
    return true;
}

void DeclarationScanner::ScanSystemId(ExternalId& id) {
    const Construct literal = OpenLiteral();
    if (!scanner_.TakeLiteral(id.systemId)) ThrowEnd(literal);
    scanner_.SkipEndQuote();
    id.isSystem = true;
}

// References.

// The scanner's own message for the end does not know of declarations.
XmlToken DeclarationScanner::ScanValuePart(XmlToken (XmlScanner::*scan)(astring&), astring& text) {
    XmlToken token = XmlToken::CHARREF;
    try {
        token = (scanner_.*scan)(text);
        if (token == XmlToken::CHARREF) AppendUtf8(text, scanner_.ScanCharRef(digits_));
    } catch (const Exception& error) {
        if (std::strcmp(error.What(), Message::kUnexpectedEof) == 0) ThrowEnd();
        throw;
    }
    if (token == XmlToken::ENDOFFILE) ThrowEnd();
    return token;
}

std::string_view DeclarationScanner::ScanEntityName() {
    const ScannedName& name = scanner_.ScanName();
    if (name.token == XmlToken::ERROR) scanner_.Throw(Message::kBadName);
    if (name.token == XmlToken::ENDOFFILE) ThrowEnd();
    entityName_ = name.text;
    if (namespaces_ && name.colon >= 0) scanner_.Throw(Message::kColonInEntity, entityName_);
    if (!scanner_.Accept(";")) scanner_.Throw(Message::kInvalidNamedEntity);
    return entityName_;
}

}  // namespace Xml::detail
