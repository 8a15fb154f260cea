// SPDX-License-Identifier: MIT
#include "xml/SubsetParser.h"

#include <espalier/io/Exception.h>

#include "xml/Messages.h"
#include "xml/StandardMessages.h"
#include "xml/SubsetMessages.h"

namespace Xml::detail {

SubsetParser::SubsetParser(XmlScanner& scanner, SubsetHost& host,
                           std::unique_ptr<EntityTable>& entities,
                           std::unique_ptr<AttributeLists>& lists, DoctypeFacts& facts,
                           bool namespaces, int nesting)
    : scanner_(scanner),
      host_(host),
      entities_(entities),
      lists_(lists),
      facts_(facts),
      namespaces_(namespaces),
      nesting_(nesting),
      parts_(scanner, namespaces) {}

// [28b] intSubset ::= (markupdecl | DeclSep)*
void SubsetParser::Parse() {
    scanner_.SetCountsColons(true);
    Construct subset{"internal subset", scanner_.SettledPlace()};
    --subset.place.column;
    for (;;) {
        parts_.Enter(subset);
        scanner_.SkipWhitespace();
        if (scanner_.AtEnd() && !parameters_.empty()) {
            PopParameter();
            continue;
        }
        switch (parts_.Peek()) {
        case '<': ParseMarkup(); break;
        case '%': ParseParameterReference(); break;
        case ']':
            if (!parameters_.empty()) {
                scanner_.Throw(Message::kSubsetEndInEntity, parameters_.back()->name);
            }
            scanner_.Accept("]");
            scanner_.SetCountsColons(false);
            return;
        default: scanner_.Throw(Message::kExpectedMarkup);
        }
    }
}

// Parameter entities.

// [69] PEReference ::= '%' Name ';'
//
// What cannot be read is passed over: that it is declared is a matter of validity. Behind it,
// declarations of entities and attributes say no longer what holds, as that may have been declared
// before (XML 1.0 section 5.1).
void SubsetParser::ParseParameterReference() {
    parts_.Enter({"reference to a parameter entity", scanner_.SettledPlace()});
    scanner_.Accept("%");
    if (scanner_.AtEnd()) parts_.ThrowEnd();
    const ScannedName& scanned = scanner_.ScanName();
    if (scanned.token == XmlToken::ERROR) scanner_.Throw(Message::kExpectedParameter);
    const astring name(scanned.text);
    if (namespaces_ && scanned.colon >= 0) scanner_.Throw(Message::kColonInEntity, name);
    if (scanner_.AtEnd()) parts_.ThrowEnd();
    if (!scanner_.Accept(";")) scanner_.Throw(Message::kExpectedReferenceEnd, name);

    facts_.refersToParameters = true;
    EntityRecord* const record = entities_ ? entities_->Find(EntityKind::Parameter, name) : nullptr;
    if (record == nullptr || record->isExternal) {
        facts_.misses = true;
    } else {
        PushParameter(*record);
    }
}

void SubsetParser::PushParameter(EntityRecord& record) {
    if (record.inUse) {
        const Place place = parameters_.back()->place;
        Exception::ThrowException(Message::kCyclicEntity, record.name, place.line, place.column);
    }
    if (static_cast<int>(parameters_.size()) >= nesting_) {
        scanner_.Throw(Message::kNestingLimit, record.name);
    }
    host_.CountParameter(record);
    scanner_.PushString(record.text);
    record.inUse = true;
    parameters_.push_back(&record);
    facts_.isInParameter = true;
    parts_.SetEntity(&record.name);
}

void SubsetParser::PopParameter() {
    scanner_.PopState();
    parameters_.back()->inUse = false;
    parameters_.pop_back();
    facts_.isInParameter = !parameters_.empty();
    parts_.SetEntity(parameters_.empty() ? nullptr : &parameters_.back()->name);
}

// Markup.

// [29] markupdecl ::= elementdecl | AttlistDecl | EntityDecl | NotationDecl | PI | Comment
void SubsetParser::ParseMarkup() {
    const Place place = scanner_.SettledPlace();
    if (scanner_.Accept("<!--")) {
        ParseComment(place);
    } else if (scanner_.Accept("<?")) {
        ParseInstruction(place);
    } else if (scanner_.Accept("<!")) {
        ParseDeclaration(place);
    } else {
        scanner_.Accept("<");
        parts_.Enter({"declaration", place});
        parts_.Peek();
        scanner_.Throw(Message::kExpectedMarkup);
    }
}

void SubsetParser::ParseDeclaration(Place place) {
    parts_.Enter({"declaration", place});
    if (scanner_.Accept("ELEMENT")) return ParseElement(place);
    if (scanner_.Accept("ATTLIST")) return ParseAttributeList(place);
    if (scanner_.Accept("ENTITY")) return ParseEntity(place);
    if (scanner_.Accept("NOTATION")) return ParseNotation(place);
    if (parts_.Peek() == '[') scanner_.Throw(Message::kConditionalSection);
    const ScannedName& keyword = scanner_.ScanName();
    if (keyword.token == XmlToken::ENDOFFILE) parts_.ThrowEnd();
    scanner_.Accept("-");  // the first half of "--"
    if (scanner_.AtEnd()) parts_.ThrowEnd();
    scanner_.Throw(Message::kUnknownDeclaration, scanner_.TokenText());
}

// [15] Comment ::= '<!--' ((Char - '-') | ('-' (Char - '-')))* '-->'
void SubsetParser::ParseComment(Place place) {
    if (!scanner_.SkipComment()) parts_.ThrowEnd({"comment", place});
}

// [16] PI ::= '<?' PITarget (S (Char* - (Char* '?>' Char*)))? '?>'
void SubsetParser::ParseInstruction(Place place) {
    parts_.Enter({"processing instruction", place});
    const ScannedName& target = parts_.ScanName(Message::kExpectedTarget);
    if (IsXmlInAnyCase(target.text) || (namespaces_ && target.colon >= 0)) {
        scanner_.Throw(Message::kInvalidPIName, target.text);
    }
    if (scanner_.SkipWhitespace()) {
        if (!scanner_.SkipPI()) parts_.ThrowEnd();
    } else if (!scanner_.Accept("?>")) {
        scanner_.Accept("?");
        parts_.Peek();
        scanner_.Throw(Message::kUnexpectedTokenInPI);
    }
}

}  // namespace Xml::detail
