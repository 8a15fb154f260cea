// SPDX-License-Identifier: MIT

// The document type declaration: external identifiers, and the declarations of entities and
// notations in the internal subset. Other declarations are stepped over by their nesting.

#include "xml/Messages.h"
#include "xml/ReaderCore.h"
#include "xml/Utf8Append.h"

namespace Xml::detail {

// [28] doctypedecl ::= '<!DOCTYPE' S Name (S ExternalID)? S? ('[' intSubset ']' S?)? '>'
//
// Entered just after "<!".
ReaderCore::Pass ReaderCore::ParseDoctype() {
    const ScannedName& keyword = scanner_.ScanName();
    if (keyword.text != "DOCTYPE") scanner_.Throw(Message::kExpectedDoctype, keyword.text);
    if (doctypeSeen_) scanner_.Throw(Message::kDoctypeAlreadyDefined);
    if (Depth() > 0 || rootCount_ > 0) scanner_.Throw(Message::kUnexpectedToken, keyword.text);
    doctypeSeen_ = true;
    if (scanner_.NextMarkupToken() != XmlToken::NAME) scanner_.Throw(Message::kUnexpectedToken);
    const astring name(scanner_.Name().text);
    value_.clear();
    ParseDoctypeParts();
    return ReportNamed(XmlNodeType::DocumentType, name);
}

// Parses what follows the name of the root element, up to and with ">".
void ReaderCore::ParseDoctypeParts() {
    bool mayHaveId = true;
    bool mayHaveSubset = true;
    for (;;) {
        const XmlToken token = scanner_.ScanDtdToken();
        if (token == XmlToken::TAGEND) return;
        if (token == XmlToken::NAME && mayHaveId) {
            ParseDoctypeId();
        } else if (token == XmlToken::DOCTYPEBEGIN && mayHaveSubset) {
            scanner_.StartCapture();
            ParseSubset();
            const std::string_view subset = scanner_.EndCapture();
            value_ = subset.substr(0, subset.size() - 1);  // without "]"
            mayHaveSubset = false;
        } else {
            ThrowUnexpected(token);
        }
        mayHaveId = false;
    }
}

void ReaderCore::ParseDoctypeId() {
    astring publicId;
    astring systemId;
    const bool isPublic = scanner_.Name().text == "PUBLIC";
    ParseExternalID(publicId, systemId, false);
    if (isPublic) AddDoctypePart(publicName_, publicId);
    AddDoctypePart(systemName_, systemId);
}

// Adds a pseudo-attribute, which is never visited by itself.
void ReaderCore::AddDoctypePart(XmlName& name, const astring& value) {
    XmlAttribute& attribute = AddAttribute(name);
    attribute.value = value;
    attribute.place = scanner_.NodePlace();
    attribute.hasPlace = true;
    attribute.quote = '"';
}

// [28b] intSubset ::= (markupdecl | DeclSep)*
//
// Parses up to and with "]". Only nesting counts for what is not declared here: comments,
// processing instructions and literals are units, because what they hold does not nest.
void ReaderCore::ParseSubset() {
    for (int level = 1; level > 0;) {
        const char delimiter = scanner_.NextDtdDelimiter();
        switch (delimiter) {
        case '"':
        case '\'': SkipDtdLiteral(delimiter); break;
        case '<':
            if (ParseSubsetMarkup()) ++level;
            break;
        case '[': ++level; break;
        case '>':
        case ']': --level; break;
        default: scanner_.Throw(Message::kEofInDtd);
        }
    }
}

void ReaderCore::SkipDtdLiteral(char quote) {
    if (!scanner_.SkipLiteral(quote)) scanner_.Throw(Message::kEofInDtd);
}

// Parses what follows "<".
// Returns whether it opened a level that its ">" is to close.
bool ReaderCore::ParseSubsetMarkup() {
    Place place = scanner_.SettledPlace();
    --place.column;
    astring skipped;
    switch (scanner_.ScanDtdMarkup()) {
    case XmlToken::COMMENT: scanner_.ScanComment(skipped); return false;
    case XmlToken::PI: scanner_.ScanPI(skipped); return false;
    case XmlToken::DECL: break;
    default: return true;
    }
    const ScannedName& keyword = scanner_.ScanName();
    if (keyword.text == "ENTITY") {
        ParseEntityDecl(place);
        return false;
    }
    if (keyword.text == "NOTATION") {
        ParseNotationDecl(place);
        return false;
    }
    return true;
}

// Declarations.

void ReaderCore::ThrowUnexpected(XmlToken token) const {
    if (token == XmlToken::ENDOFFILE) scanner_.Throw(Message::kEofInDtd);
    scanner_.Throw(Message::kUnexpectedToken, astring(scanner_.TokenText()) + XmlTokenName(token));
}

void ReaderCore::ExpectDtdToken(XmlToken token, XmlToken expected) const {
    if (token != expected) ThrowUnexpected(token);
}

// Returns the new record; null when its name is declared already.
EntityRecord* ReaderCore::Declare(EntityKind kind, std::string_view name, Place place) {
    if (!entities_) entities_ = std::make_unique<EntityTable>();
    EntityRecord* const record = entities_->Declare(kind, name);
    if (record != nullptr) record->place = place;
    return record;
}

// [71] GEDecl ::= '<!ENTITY' S Name S EntityDef S? '>'
// [72] PEDecl ::= '<!ENTITY' S '%' S Name S PEDef S? '>'
void ReaderCore::ParseEntityDecl(Place place) {
    XmlToken token = scanner_.ScanDtdToken();
    const bool isParameter = token == XmlToken::PERCENT;
    if (isParameter) token = scanner_.ScanDtdToken();
    ExpectDtdToken(token, XmlToken::NAME);
    const astring name(scanner_.Name().text);

    astring text;
    std::unique_ptr<EntityIds> ids;
    token = scanner_.ScanDtdToken();
    const bool isExternal = token == XmlToken::NAME;
    if (isExternal) {
        ids = std::make_unique<EntityIds>();
        ParseExternalID(ids->publicId, ids->systemId, false);
    } else {
        ExpectDtdToken(token, XmlToken::QUOTE);
        ParseEntityLiteral(text);
    }
    EntityRecord* const record =
        Declare(isParameter ? EntityKind::Parameter : EntityKind::General, name, place);
    if (record != nullptr) {
        record->text = std::move(text);
        record->ids = std::move(ids);
    }
    if (isExternal) {
        ParseNdata(record, isParameter);
    } else {
        ExpectDtdToken(scanner_.ScanDtdToken(), XmlToken::TAGEND);
    }
}

// [9] EntityValue
//
// Character references are replaced at once; references to general entities are left to whoever
// refers to this one (XML 1.0 section 4.4.7), but must be well-formed.
void ReaderCore::ParseEntityLiteral(astring& text) {
    for (;;) {
        switch (scanner_.ScanEntityValue(text)) {
        case XmlToken::ENTTEXT: break;
        case XmlToken::CHARREF: AppendUtf8(text, scanner_.ScanCharRef(digits_)); break;
        case XmlToken::ENTITYREF:
            ScanGeneralReference();
            AppendReference(text, "&", referenceName_);
            break;
        case XmlToken::PEREF: scanner_.Throw(Message::kParameterInValue);
        case XmlToken::ENDQUOTE: return;
        default: scanner_.Throw(Message::kMissingCloseQuote);
        }
    }
}

// [76] NDataDecl ::= S 'NDATA' S Name
//
// Parses what follows the identifier of an external entity, up to and with ">". `record` is null
// when the entity was declared before.
void ReaderCore::ParseNdata(EntityRecord* record, bool isParameter) {
    const bool isSeparated = scanner_.SkipWhitespace();
    const XmlToken token = scanner_.ScanDtdToken();
    if (token == XmlToken::TAGEND) return;
    if (token == XmlToken::ENDOFFILE) scanner_.Throw(Message::kEofInDtd);
    if (!isSeparated || token != XmlToken::NAME || scanner_.Name().text != "NDATA") {
        scanner_.Throw(Message::kExpectedNdata);
    }
    if (isParameter) scanner_.Throw(Message::kNotationOfParameter);
    if (!scanner_.SkipWhitespace()) scanner_.Throw(Message::kNoSpaceAfterNdata);
    ExpectDtdToken(scanner_.ScanDtdToken(), XmlToken::NAME);
    const std::string_view notation = scanner_.Name().text;
    if (!entities_ || entities_->Find(EntityKind::Notation, notation) == nullptr) {
        scanner_.Throw(Message::kUndeclaredNotation);
    }
    if (record != nullptr) record->ids->notation = notation;
    ExpectDtdToken(scanner_.ScanDtdToken(), XmlToken::TAGEND);
}

// [82] NotationDecl ::= '<!NOTATION' S Name S (ExternalID | PublicID) S? '>'
void ReaderCore::ParseNotationDecl(Place place) {
    if (!scanner_.SkipWhitespace()) scanner_.Throw(Message::kNoSpaceAfterNotation);
    ExpectDtdToken(scanner_.ScanDtdToken(), XmlToken::NAME);
    const astring name(scanner_.Name().text);
    if (name.find(':') != astring::npos) scanner_.Throw(Message::kColonInNotation);
    if (!scanner_.SkipWhitespace()) scanner_.Throw(Message::kNoSpaceAfterNotationName);
    ExpectDtdToken(scanner_.ScanDtdToken(), XmlToken::NAME);
    auto ids = std::make_unique<EntityIds>();
    ParseExternalID(ids->publicId, ids->systemId, true);
    EntityRecord* const record = Declare(EntityKind::Notation, name, place);
    if (record == nullptr) scanner_.Throw(Message::kDuplicateNotation);
    record->ids = std::move(ids);
    ExpectDtdToken(scanner_.ScanDtdToken(), XmlToken::TAGEND);
}

// External identifiers.

// [75] ExternalID ::= 'SYSTEM' S SystemLiteral | 'PUBLIC' S PubidLiteral S SystemLiteral
//
// Entered behind the keyword. With `publicAlone` a public identifier needs no second literal.
void ReaderCore::ParseExternalID(astring& publicId, astring& systemId, bool publicAlone) {
    const bool isPublic = scanner_.Name().text == "PUBLIC";
    if (!isPublic && scanner_.Name().text != "SYSTEM") {
        scanner_.Throw(Message::kSyntaxErrorInEntity);
    }
    ExpectDtdToken(scanner_.ScanDtdToken(), XmlToken::QUOTE);
    if (isPublic && !ParsePublicID(publicId, publicAlone)) return;
    scanner_.ScanLiteral(systemId);
    scanner_.SkipEndQuote();
}

// Parses a public identifier and the quotation mark that opens the system identifier.
// Returns false when there is none, which `publicAlone` allows.
bool ReaderCore::ParsePublicID(astring& publicId, bool publicAlone) {
    scanner_.ScanPubidLiteral(publicId);
    scanner_.SkipEndQuote();
    const bool isSeparated = scanner_.SkipWhitespace();
    if (!isSeparated && publicAlone) return false;
    const XmlToken token = scanner_.ScanDtdToken();
    if (token == XmlToken::ENDOFFILE) scanner_.Throw(Message::kEofInDtd);
    if (token != XmlToken::QUOTE) scanner_.Throw(Message::kNoSystemId);
    if (!isSeparated) scanner_.Throw(Message::kNoSpaceAfterPublicId);
    return true;
}

}  // namespace Xml::detail
