// SPDX-License-Identifier: MIT

// What stands between tags: text with its references, white space, CDATA sections, comments and
// processing instructions.

#include "xml/DeclarationScanner.h"
#include "xml/Messages.h"
#include "xml/ReaderCore.h"
#include "xml/StandardMessages.h"
#include "xml/Utf8Append.h"
#include "xml/XmlCharacters.h"

namespace Xml::detail {

// Makes a node with a name and the value value_ the current one.
ReaderCore::Pass ReaderCore::ReportNamed(XmlNodeType::XML_NODE_TYPE type, std::string_view name) {
    ReportValue(type);
    contentSeen_ = true;
    ownName_.qualified = name;
    ownName_.local = name;
    node_.name = &ownName_;
    node_.isRaw = false;  // line ends are normalized in text only
    return Pass::Node;
}

// Parses what comes next inside of an element.
ReaderCore::Pass ReaderCore::ParseBeginTag() {
    scanner_.MarkNode();
    value_.clear();
    const XmlToken token = scanner_.ScanText(value_);
    switch (token) {
    case XmlToken::NONE: return ParseTag();
    case XmlToken::ENDOFFILE: return Pass::End;
    case XmlToken::WHITESPACE: return HandleWhitespace();
    case XmlToken::ENDENTITY: return ReportEntityEnd();
    default: return ParseText(token);
    }
}

// Parses markup, with the position at "<".
ReaderCore::Pass ReaderCore::ParseTag() {
    tagBegin_ = nullptr;
    tagOffset_ = scanner_.CapturedLength();
    const XmlToken token = scanner_.ScanMarkup();
    if (token != XmlToken::PI) contentSeen_ = true;
    switch (token) {
    case XmlToken::TAG: return ParseElement();
    case XmlToken::ENDTAG: return ParseEndTag();
    case XmlToken::PI: return ParsePI();
    case XmlToken::COMMENT: return ParseComment();
    case XmlToken::CDATA: return ParseCData();
    default:
        return conformance == XmlConformance::Standard ? ParseStandardDoctype() : ParseDoctype();
    }
}

// Joins everything up to the next markup to one text; `token` was scanned already. What is empty,
// because its entities are, is no text.
ReaderCore::Pass ReaderCore::ParseText(XmlToken token) {
    for (;; token = scanner_.ScanText(value_)) {
        switch (token) {
        case XmlToken::NONE:
        case XmlToken::ENDENTITY:
            return value_.empty() ? Pass::Repeat : ReportValue(XmlNodeType::Text);
        case XmlToken::ENDOFFILE: return Pass::End;
        case XmlToken::CHARREF:
        case XmlToken::ENTITYREF:
            if (ReplaceReference(token, value_, nullptr)) break;
            switch (standard_ ? TakeStandardReference(false) : TakeReference(false)) {
            case Reference::Taken: break;
            case Reference::Reported: return Pass::Node;
            case Reference::Pushed: return Pass::Repeat;
            case Reference::Waits:
                referencePlace_ = ReferencePlace();
                parseState_ = ParseState::PsReference;
                return ReportValue(XmlNodeType::Text);
            }
            break;
        default: break;  // TEXT and WHITESPACE have been appended
        }
    }
}

// Goes on at the reference that ended a text.
ReaderCore::Pass ReaderCore::ParsePendingReference() {
    parseState_ = ParseState::PsContent;
    value_.clear();
    const Reference reference = standard_ ? TakeStandardReference(true) : TakeReference(true);
    if (reference == Reference::Reported) return Pass::Node;
    if (reference == Reference::Pushed) return Pass::Repeat;
    scanner_.MarkNodeAt(referencePlace_);
    return ParseText(scanner_.ScanText(value_));
}

// Scans a reference behind its start and appends what it stands for to `text`. What is written is
// appended to `raw`, if there is one.
// Returns false for a reference to a general entity, which the caller has to deal with.
bool ReaderCore::ReplaceReference(XmlToken token, astring& text, astring* raw) {
    if (token == XmlToken::ENTITYREF) {
        if (ReplacePredefined(text, raw)) return true;
        ScanGeneralReference();
        if (raw != nullptr) AppendReference(*raw, "&", referenceName_);
        return false;
    }
    // What an entity's text says is a reference was not checked when the text was read.
    const bool isStored = parseState_ == ParseState::PsEntityReturn;
    const int code = scanner_.ScanCharRef(digits_, !isStored);
    if (isStored && !IsXmlCharacter(code)) scanner_.Throw(Message::kInvalidReference);
    if (raw != nullptr) AppendReference(*raw, "&#", digits_);
    if (entityHandling == XmlEntityHandling::ExpandNothing) {
        AppendReference(text, "&#", digits_);
    } else {
        AppendUtf8(text, code);
    }
    return true;
}

// XML 1.0 section 4.6; replaced whatever the handling of entities.
bool ReaderCore::ReplacePredefined(astring& text, astring* raw) {
    constexpr struct {
        std::string_view name;
        char character;
    } kPredefined[] = {{"amp;", '&'}, {"lt;", '<'}, {"gt;", '>'}, {"quot;", '"'}, {"apos;", '\''}};
    for (const auto& entity : kPredefined) {
        if (*scanner_.Position() != static_cast<unsigned char>(entity.name[0])) continue;
        if (!scanner_.Accept(entity.name)) continue;
        text += entity.character;
        if (raw != nullptr) (*raw += '&') += entity.name;
        return true;
    }
    return false;
}

void ReaderCore::ScanGeneralReference() {
    const ScannedName& name = scanner_.ScanName();
    if (name.token == XmlToken::ERROR) {
        scanner_.Throw(standard_ ? Message::kExpectedEntityName : Message::kBadName);
    }
    referenceName_ = name.text;
    if (standard_ && name.colon >= 0) scanner_.Throw(Message::kColonInEntity, referenceName_);
    if (!scanner_.Accept(";")) {
        scanner_.Throw(standard_ ? Message::kExpectedSemicolon : Message::kInvalidNamedEntity);
    }
}

// Returns where the general reference starts that has just been scanned.
Place ReaderCore::ReferencePlace() const {
    Place place = scanner_.CurrentPlace();
    const auto* const name = reinterpret_cast<const unsigned char*>(referenceName_.data());
    const auto counts = utf8::CountCharacters(name, name + referenceName_.length());
    place.column -= static_cast<int>(counts.all) + 2;  // "&" and ";"
    // The colon that splits a name does not count (PlaceCounter).
    if (scanner_.Name().colon >= 0) ++place.column;
    return place;
}

void ReaderCore::AppendReference(astring& text, std::string_view start, std::string_view name) {
    text += start;
    text += name;
    text += ';';
}

ReaderCore::Pass ReaderCore::HandleWhitespace() {
    contentSeen_ = true;
    const XmlNodeType::XML_NODE_TYPE type = WhitespaceType();
    return type == XmlNodeType::None ? Pass::Repeat : ReportValue(type);
}

ReaderCore::Pass ReaderCore::ParseComment() {
    value_.clear();
    scanner_.ScanComment(value_);
    return ReportValue(XmlNodeType::Comment);
}

ReaderCore::Pass ReaderCore::ParseCData() {
    if (Depth() == 0) {
        scanner_.Throw(standard_ ? Message::kTextOutsideRoot : Message::kUnexpectedToken,
                       scanner_.TokenText());
    }
    value_.clear();
    scanner_.ScanCData(value_);
    return ReportValue(XmlNodeType::CDATA);
}

// [17] PITarget ::= Name - (('X' | 'x') ('M' | 'm') ('L' | 'l')); with namespaces it has no colon.
void ReaderCore::RefuseTarget(const ScannedName& target) const {
    const bool isReserved = IsXmlInAnyCase(target.text);
    if (!isReserved && target.colon < 0) return;
    if (!standard_) scanner_.Throw(Message::kInvalidPIName);
    scanner_.Throw(isReserved ? Message::kReservedTarget : Message::kColonInTarget, target.text);
}

// [16] PI ::= '<?' PITarget (S (Char* - (Char* '?>' Char*)))? '?>'
ReaderCore::Pass ReaderCore::ParsePI() {
    const ScannedName& target = scanner_.ScanName();
    if (standard_ && target.token == XmlToken::ENDOFFILE) scanner_.Throw(Message::kUnexpectedEof);
    if (target.token != XmlToken::NAME) {
        scanner_.Throw(standard_ ? Message::kExpectedPITarget : Message::kUnexpectedToken);
    }
    if (target.text == "xml") {
        if (contentSeen_) scanner_.Throw(Message::kUnexpectedDeclaration);
        return standard_ ? ParseStandardXmlDecl() : ParseXmlDecl();
    }
    if (standard_ && !contentSeen_) SettleStandardEncoding(false);
    RefuseTarget(target);
    const astring name(target.text);
    value_.clear();
    const bool isSeparated = scanner_.SkipWhitespace();
    if (isSeparated || scanner_.AtEnd()) {
        scanner_.ScanPI(value_);
    } else if (!scanner_.Accept("?>")) {
        scanner_.Throw(standard_ ? Message::kExpectedPIEnd : Message::kUnexpectedTokenInPI);
    }
    return ReportNamed(XmlNodeType::ProcessingInstruction, name);
}

}  // namespace Xml::detail
