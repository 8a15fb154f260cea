// SPDX-License-Identifier: MIT

// The declarations of elements, entities and notations in the internal subset.

#include "xml/ContentModel.h"
#include "xml/Messages.h"
#include "xml/StandardMessages.h"
#include "xml/SubsetMessages.h"
#include "xml/SubsetParser.h"

#include <memory>
#include <utility>  // std::move

namespace Xml::detail {

namespace {

std::unique_ptr<EntityIds> IdsOf(ExternalId id) {
    return std::make_unique<EntityIds>(
        EntityIds{std::move(id.publicId), std::move(id.systemId), {}});
}

}  // namespace

// [45] elementdecl ::= '<!ELEMENT' S Name S contentspec S? '>'
void SubsetParser::ParseElement(Place place) {
    parts_.Enter({"element declaration", place});
    parts_.RequireSpace(Message::kNoSpaceAfterElement);
    parts_.ScanName(Message::kExpectedElementType);
    parts_.RequireSpace(Message::kNoSpaceAfterElementType);
    ParseContentModel(scanner_, parts_);
    parts_.RequireLast('>', Message::kExpectedElementEnd);
}

// [71] GEDecl ::= '<!ENTITY' S Name S EntityDef S? '>'
// [72] PEDecl ::= '<!ENTITY' S '%' S Name S PEDef S? '>'
//
// What a predefined entity is declared as is no matter of well-formedness (XML 1.0 section 4.6);
// references to one never ask.
void SubsetParser::ParseEntity(Place place) {
    parts_.Enter({"entity declaration", place});
    EntityRecord entity;
    entity.place = place;
    parts_.RequireSpace(Message::kNoSpaceAfterEntity);
    if (scanner_.Accept("%")) {
        entity.kind = EntityKind::Parameter;
        parts_.RequireSpace(Message::kNoSpaceAfterPercent);
    }
    entity.name = parts_.ScanPlainName(Message::kExpectedEntity, Message::kColonInEntity);
    parts_.RequireSpace(Message::kNoSpaceAfterEntityName);
    ParseEntityDefinition(entity);
    parts_.RequireLast('>', Message::kExpectedEntityEnd);
    if (facts_.Declares()) Record(std::move(entity));
}

// [73] EntityDef ::= EntityValue | (ExternalID NDataDecl?)
// [74] PEDef ::= EntityValue | ExternalID
void SubsetParser::ParseEntityDefinition(EntityRecord& entity) {
    if (parts_.IsAtQuote()) {
        ParseEntityValue(entity.text);
        return;
    }
    ExternalId id;
    if (!parts_.ScanExternalId(id)) parts_.Fail(Message::kExpectedEntityValue);
    entity.isExternal = true;
    entity.ids = IdsOf(std::move(id));
    ParseNdata(entity);
}

// [76] NDataDecl ::= S 'NDATA' S Name
void SubsetParser::ParseNdata(EntityRecord& entity) {
    const bool isSeparated = scanner_.SkipWhitespace();
    if (!scanner_.Accept("NDATA")) return;
    if (!isSeparated) scanner_.Throw(Message::kNoSpaceBeforeNdata);
    if (entity.kind == EntityKind::Parameter) scanner_.Throw(Message::kNotationOfParameter);
    parts_.RequireSpace(Message::kNoSpaceAfterNdata);
    entity.ids->notation =
        parts_.ScanPlainName(Message::kExpectedNotation, Message::kColonInNotation);
}

// [9] EntityValue
//
// Character references are replaced at once; references to general entities are left to whoever
// refers to this one (XML 1.0 section 4.4.7), but must be well-formed.
void SubsetParser::ParseEntityValue(astring& text) {
    const Construct declaration = parts_.Enter(parts_.OpenLiteral());
    for (;;) {
        switch (parts_.ScanValuePart(&XmlScanner::ScanEntityValue, text)) {
        case XmlToken::ENDQUOTE: parts_.Enter(declaration); return;
        case XmlToken::PEREF: scanner_.Throw(Message::kParameterInValue);
        case XmlToken::ENTITYREF: ((text += '&') += parts_.ScanEntityName()) += ';'; break;
        default: break;
        }
    }
}

// [82] NotationDecl ::= '<!NOTATION' S Name S (ExternalID | PublicID) S? '>'
void SubsetParser::ParseNotation(Place place) {
    parts_.Enter({"notation declaration", place});
    EntityRecord notation;
    notation.kind = EntityKind::Notation;
    notation.place = place;
    parts_.RequireSpace(Message::kNoSpaceAfterNotation);
    notation.name = parts_.ScanPlainName(Message::kExpectedNotation, Message::kColonInNotation);
    parts_.RequireSpace(Message::kNoSpaceAfterNotationName);
    ExternalId id;
    if (!parts_.ScanExternalId(id, true)) parts_.Fail(Message::kExpectedNotationId);
    parts_.RequireLast('>', Message::kExpectedNotationEnd);
    notation.isExternal = id.isSystem;
    notation.ids = IdsOf(std::move(id));
    Record(std::move(notation));
}

// Keeps the first declaration of each name.
void SubsetParser::Record(EntityRecord entity) {
    if (!entities_) {
        entities_ = std::make_unique<EntityTable>();
        entities_->SetStandard();
    }
    EntityRecord* const record = entities_->Declare(entity.kind, entity.name);
    if (record == nullptr) return;
    *record = std::move(entity);
    record->isInParameter = !parameters_.empty();
}

}  // namespace Xml::detail
