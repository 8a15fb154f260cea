// SPDX-License-Identifier: MIT
#pragma once

// The messages of the document type in standard mode. They are interface: docs/errors.md lists
// them, and tests quote the literal text. Some of Messages.h serve here, too.

namespace Xml::detail::Message {

// The document type declaration.
inline constexpr char kUnknownMarkup[] = "Expected DOCTYPE or '--' behind '<!'";
inline constexpr char kUnknownMarkupInElement[] = "Expected '--' or '[CDATA[' behind '<!'";
inline constexpr char kLateDoctype[] = "Document type declaration behind the root element's start";
inline constexpr char kNoSpaceAfterDoctype[] = "Whitespace expected behind DOCTYPE";
inline constexpr char kExpectedRootName[] = "Expected the name of the root element";
inline constexpr char kExpectedDoctypePart[] =
    "Expected SYSTEM, PUBLIC, '[' or '>' in the document type declaration";
inline constexpr char kExpectedSubset[] =
    "Expected '[' or '>' behind the external identifier of the document type";
inline constexpr char kExpectedDoctypeEnd[] =
    "Expected '>' at the end of the document type declaration";

// External identifiers.
inline constexpr char kNoSpaceAfterSystem[] = "Whitespace expected behind SYSTEM";
inline constexpr char kNoSpaceAfterPublic[] = "Whitespace expected behind PUBLIC";
inline constexpr char kExpectedSystemId[] = "Expected a system identifier in quotation marks";
inline constexpr char kExpectedPublicId[] = "Expected a public identifier in quotation marks";

// The internal subset.
inline constexpr char kExpectedMarkup[] =
    "Expected a declaration, '%' or ']' in the internal subset";
inline constexpr char kUnknownDeclaration[] =
    "Expected ELEMENT, ATTLIST, ENTITY, NOTATION or '--' behind '<!'";
inline constexpr char kConditionalSection[] = "Conditional section in the internal subset";
inline constexpr char kSubsetEndInEntity[] = "']' of the internal subset in a parameter entity";
inline constexpr char kExpectedTarget[] = "Expected the target of the processing instruction";
inline constexpr char kExpectedParameter[] = "Expected the name of a parameter entity behind '%'";
inline constexpr char kExpectedReferenceEnd[] =
    "Expected ';' behind the name of a parameter entity";
inline constexpr char kParameterInDeclaration[] =
    "Parameter entity reference inside of a declaration";

// Element declarations.
inline constexpr char kNoSpaceAfterElement[] = "Whitespace expected behind ELEMENT";
inline constexpr char kExpectedElementType[] = "Expected the name of an element type";
inline constexpr char kNoSpaceAfterElementType[] =
    "Whitespace expected behind the name of an element type";
inline constexpr char kExpectedContent[] = "Expected EMPTY, ANY or '(' in the element declaration";
inline constexpr char kExpectedParticle[] = "Expected a name or '(' in the content model";
inline constexpr char kExpectedSeparator[] = "Expected '|', ',' or ')' in the content model";
inline constexpr char kExpectedBar[] = "Expected '|' or ')' in a group with '|'";
inline constexpr char kExpectedComma[] = "Expected ',' or ')' in a group with ','";
inline constexpr char kExpectedMixedBar[] = "Expected '|' or ')' in mixed content";
inline constexpr char kExpectedMixedName[] = "Expected a name behind '|' in mixed content";
inline constexpr char kExpectedMixedEnd[] = "Expected '*' behind mixed content with names";
inline constexpr char kExpectedElementEnd[] = "Expected '>' at the end of the element declaration";

// Attribute-list declarations.
inline constexpr char kNoSpaceAfterAttlist[] = "Whitespace expected behind ATTLIST";
inline constexpr char kNoSpaceBeforeAttribute[] =
    "Expected whitespace or '>' in the attribute-list declaration";
inline constexpr char kExpectedAttribute[] =
    "Expected the name of an attribute or '>' in the attribute-list declaration";
inline constexpr char kNoSpaceAfterAttribute[] =
    "Whitespace expected behind the name of an attribute";
inline constexpr char kExpectedType[] = "Expected the type of an attribute";
inline constexpr char kNoSpaceAfterType[] = "Whitespace expected behind the type of an attribute";
inline constexpr char kNoSpaceAfterNotationType[] = "Whitespace expected between NOTATION and '('";
inline constexpr char kExpectedNotations[] = "Expected '(' behind NOTATION";
inline constexpr char kExpectedNotation[] = "Expected the name of a notation";
inline constexpr char kExpectedToken[] = "Expected a name token in the enumeration";
inline constexpr char kExpectedTokenBar[] = "Expected '|' or ')' in the enumeration";
inline constexpr char kExpectedDefault[] =
    "Expected #REQUIRED, #IMPLIED, #FIXED or a default value in quotation marks";
inline constexpr char kNoSpaceAfterFixed[] = "Whitespace expected behind #FIXED";
inline constexpr char kExpectedFixedValue[] = "Expected a default value in quotation marks";
inline constexpr char kLessThanInDefault[] = "'<' in a default value";

// Entity and notation declarations.
inline constexpr char kNoSpaceAfterEntity[] = "Whitespace expected behind ENTITY";
inline constexpr char kNoSpaceAfterPercent[] = "Whitespace expected behind '%'";
inline constexpr char kExpectedEntity[] = "Expected the name of an entity";
inline constexpr char kNoSpaceAfterEntityName[] =
    "Whitespace expected behind the name of an entity";
inline constexpr char kExpectedEntityValue[] =
    "Expected a value in quotation marks, SYSTEM or PUBLIC in the entity declaration";
inline constexpr char kExpectedEntityEnd[] = "Expected '>' at the end of the entity declaration";
inline constexpr char kNoSpaceBeforeNdata[] = "Whitespace expected before NDATA";
inline constexpr char kExpectedNotationId[] =
    "Expected SYSTEM or PUBLIC in the notation declaration";
inline constexpr char kExpectedNotationEnd[] =
    "Expected '>' at the end of the notation declaration";

// Ends in the wrong place, with what they leave open and where that begins.
inline constexpr char kFileEndsIn[] = "Unexpected end of file in the ";
inline constexpr char kEntityEndsIn[] = "A parameter entity ends in the ";
inline constexpr char kBeginsAt[] = " that begins at line ";

}  // namespace Xml::detail::Message
