// SPDX-License-Identifier: MIT

// The attribute-list declarations of the internal subset.

#include "xml/Messages.h"
#include "xml/SubsetMessages.h"
#include "xml/SubsetParser.h"

#include <algorithm>
#include <utility>  // std::move

namespace Xml::detail {

namespace {

void TurnWhiteSpaceIntoSpaces(astring& text) {
    const auto isOther = [](char c) { return c == '\t' || c == '\n' || c == '\r'; };
    std::replace_if(text.begin(), text.end(), isOther, ' ');
}

}  // namespace

// [52] AttlistDecl ::= '<!ATTLIST' S Name AttDef* S? '>'
// [53] AttDef ::= S Name S AttType S DefaultDecl
void SubsetParser::ParseAttributeList(Place place) {
    parts_.Enter({"attribute-list declaration", place});
    parts_.RequireSpace(Message::kNoSpaceAfterAttlist);
    const astring element(parts_.ScanName(Message::kExpectedElementType).text);
    AttributeList* list = nullptr;
    for (;;) {
        const bool isSeparated = scanner_.SkipWhitespace();
        if (scanner_.Accept(">")) return;
        if (!isSeparated) parts_.Fail(Message::kNoSpaceBeforeAttribute);
        AttributeDeclaration attribute = ParseAttribute();
        if (!facts_.Declares()) continue;
        if (!lists_) lists_ = std::make_unique<AttributeLists>();
        if (list == nullptr) list = &lists_->ListOf(element);
        list->Declare(std::move(attribute));
    }
}

AttributeDeclaration SubsetParser::ParseAttribute() {
    AttributeDeclaration attribute;
    attribute.place = scanner_.SettledPlace();
    attribute.name = parts_.ScanName(Message::kExpectedAttribute).text;
    parts_.RequireSpace(Message::kNoSpaceAfterAttribute);
    attribute.type = ParseType();
    parts_.RequireSpace(Message::kNoSpaceAfterType);
    ParseDefault(attribute);
    return attribute;
}

// [54] AttType ::= StringType | TokenizedType | EnumeratedType
AttributeType SubsetParser::ParseType() {
    constexpr struct {
        std::string_view name;
        AttributeType type;
    } kTypes[] = {
        {"CDATA", AttributeType::CData},       {"ID", AttributeType::Id},
        {"IDREF", AttributeType::IdRef},       {"IDREFS", AttributeType::IdRefs},
        {"ENTITY", AttributeType::Entity},     {"ENTITIES", AttributeType::Entities},
        {"NMTOKEN", AttributeType::NmToken},   {"NMTOKENS", AttributeType::NmTokens},
        {"NOTATION", AttributeType::Notation},
    };
    if (scanner_.Accept("(")) {
        ParseEnumeration();
        return AttributeType::Enumeration;
    }
    const std::string_view name = parts_.ScanName(Message::kExpectedType).text;
    for (const auto& type : kTypes) {
        if (type.name != name) continue;
        if (type.type == AttributeType::Notation) ParseNotations();
        return type.type;
    }
    scanner_.Throw(Message::kExpectedType, name);
}

// [58] NotationType ::= 'NOTATION' S '(' S? Name (S? '|' S? Name)* S? ')'
void SubsetParser::ParseNotations() {
    parts_.RequireSpace(Message::kNoSpaceAfterNotationType);
    parts_.Require('(', Message::kExpectedNotations);
    do {
        scanner_.SkipWhitespace();
        parts_.ScanPlainName(Message::kExpectedNotation, Message::kColonInNotation);
    } while (!IsGroupOver(Message::kExpectedTokenBar));
}

// [59] Enumeration ::= '(' S? Nmtoken (S? '|' S? Nmtoken)* S? ')'
//
// Entered behind "(".
void SubsetParser::ParseEnumeration() {
    do {
        scanner_.SkipWhitespace();
        parts_.ScanToken(Message::kExpectedToken);
    } while (!IsGroupOver(Message::kExpectedTokenBar));
}

// Steps over the "|" or the ")" behind a name, and tells whether it was the latter.
bool SubsetParser::IsGroupOver(const char* message) {
    scanner_.SkipWhitespace();
    if (scanner_.Accept(")")) return true;
    parts_.Require('|', message);
    return false;
}

// [60] DefaultDecl ::= '#REQUIRED' | '#IMPLIED' | (('#FIXED' S)? AttValue)
void SubsetParser::ParseDefault(AttributeDeclaration& attribute) {
    if (scanner_.Accept("#REQUIRED") || scanner_.Accept("#IMPLIED")) return;
    if (scanner_.Accept("#FIXED")) {
        parts_.RequireSpace(Message::kNoSpaceAfterFixed);
        if (!parts_.IsAtQuote()) parts_.Fail(Message::kExpectedFixedValue);
    }
    if (!parts_.IsAtQuote()) parts_.Fail(Message::kExpectedDefault);
    attribute.hasDefault = true;
    ParseDefaultValue(attribute.value);
    if (attribute.type != AttributeType::CData) TrimTokens(attribute.value);
}

// [10] AttValue
//
// Normalizes the value (XML 1.0 section 3.3.3): white space of the literal turns into spaces, what
// character references stand for does not.
void SubsetParser::ParseDefaultValue(astring& value) {
    const Construct declaration = parts_.Enter(parts_.OpenLiteral());
    astring part;
    for (;;) {
        part.clear();
        switch (parts_.ScanValuePart(&XmlScanner::ScanValue, part)) {
        case XmlToken::ENDQUOTE: parts_.Enter(declaration); return;
        case XmlToken::NONE: scanner_.Throw(Message::kLessThanInDefault);
        case XmlToken::ENTITYREF: {
            const std::string_view name = parts_.ScanEntityName();
            const int character = PredefinedCharacter(name);
            if (character != 0) {
                value += static_cast<char>(character);
            } else {
                host_.AppendEntity(value, name);
            }
            break;
        }
        case XmlToken::CHARREF: value += part; break;
        default: TurnWhiteSpaceIntoSpaces(part); value += part;
        }
    }
}

}  // namespace Xml::detail
