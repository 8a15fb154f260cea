// SPDX-License-Identifier: MIT
#pragma once

// The messages that only the standard mode of the reader has, outside of the document type. They
// are interface: docs/errors.md lists them, and tests quote the literal text.

namespace Xml::detail::Message {

// The input and the XML declaration.
inline constexpr char kNoEncodingNamed[] =
    "Byte order mark or encoding declaration expected: without them a document is in UTF-8";
inline constexpr char kEncodingContradicts[] =
    "Encoding declaration contradicts the first bytes of the document";
inline constexpr char kExpectedSpaceInDeclaration[] =
    "Whitespace expected between the parts of the xml declaration";
inline constexpr char kExpectedVersion[] = "Expected 'version' in the xml declaration";
inline constexpr char kExpectedDeclarationPart[] =
    "Expected 'encoding', 'standalone' or '?>' in the xml declaration";
inline constexpr char kExpectedStandalonePart[] =
    "Expected 'standalone' or '?>' in the xml declaration";
inline constexpr char kExpectedDeclarationEnd[] = "Expected '?>' at the end of the xml declaration";
inline constexpr char kExpectedEqualsInDeclaration[] = "Expected '=' in the xml declaration";
inline constexpr char kExpectedValueInDeclaration[] =
    "Expected a quoted value in the xml declaration";
inline constexpr char kInvalidVersion[] = "Version number expected: '1.' and digits";
inline constexpr char kInvalidEncodingName[] =
    "Encoding name expected: a letter, then letters, digits, '.', '_' and '-'";
inline constexpr char kInvalidStandalone[] = "Expected 'yes' or 'no' as the value of standalone";

// Names.
inline constexpr char kExpectedLocalName[] = "Expected a name behind the colon";

// Markup.
inline constexpr char kSecondRoot[] = "Only one document element is allowed";
inline constexpr char kTextOutsideRoot[] = "Text is not allowed outside of the document element";
inline constexpr char kReferenceOutsideRoot[] =
    "References are not allowed outside of the document element";
inline constexpr char kExpectedSpaceBeforeAttribute[] = "Whitespace expected before the attribute";
inline constexpr char kExpectedTagEnd[] = "Expected an attribute, '>' or '/>' in the start tag";
inline constexpr char kExpectedEndTagEnd[] = "Expected '>' at the end of the end tag";
inline constexpr char kExpectedEndTagName[] = "Expected the name of the element in the end tag";
inline constexpr char kExpectedEquals[] = "Expected '=' behind the name of the attribute";
inline constexpr char kExpectedAttributeValue[] = "Expected a quoted value behind the '='";
inline constexpr char kLessInValue[] = "'<' is not allowed in the value of an attribute";
inline constexpr char kEofInValue[] = "Unexpected end of file in the value of an attribute";
inline constexpr char kBracketsInText[] = "']]>' is not allowed in text";
inline constexpr char kExpectedCDataStart[] = "Expected '[' behind '<![CDATA'";
inline constexpr char kExpectedPIEnd[] = "Expected whitespace or '?>' behind the target";
inline constexpr char kReservedTarget[] = "The target 'xml' is reserved in all its spellings";
inline constexpr char kColonInTarget[] =
    "Colon not allowed in the target of a processing instruction";
inline constexpr char kExpectedPITarget[] = "Expected the target of the processing instruction";

// References.
inline constexpr char kExpectedEntityName[] = "Expected the name of an entity behind '&'";
inline constexpr char kExpectedSemicolon[] = "Expected ';' behind the name of the entity";
inline constexpr char kExpectedDigit[] = "Expected digits and ';' in the character reference";
inline constexpr char kNoXmlCharacter[] = "Reference to a character that XML does not allow";
inline constexpr char kColonInEntity[] = "Colon not allowed in the name of an entity";
inline constexpr char kEntityInParameter[] =
    "Reference in a standalone document to an entity declared in a parameter entity";
inline constexpr char kUnparsedEntity[] = "Reference to an unparsed entity";
inline constexpr char kExternalInValue[] =
    "Reference to an external entity in the value of an attribute";
inline constexpr char kLessInEntityInValue[] =
    "Reference in the value of an attribute to an entity whose text has a '<'";
inline constexpr char kBracketsInEntity[] = "']]>' is not allowed in the text of an entity";
inline constexpr char kElementLeavesEntity[] =
    "Element does not end in the entity in which it begins";
inline constexpr char kEndTagOfOuterElement[] =
    "End tag in an entity of an element that begins outside of it";
inline constexpr char kSuppliedLimit[] = "Limit on supplied attributes exceeded";

// Namespaces.
inline constexpr char kUndeclaredPrefix[] = "Undeclared prefix";
inline constexpr char kEmptyPrefix[] = "A prefix cannot be bound to an empty namespace name";
inline constexpr char kXmlnsDeclared[] = "The prefix 'xmlns' cannot be declared";
inline constexpr char kXmlnsElement[] = "The prefix 'xmlns' is not allowed for elements";
inline constexpr char kXmlRebound[] = "The prefix 'xml' cannot be bound to another namespace name";
inline constexpr char kXmlNameBound[] =
    "The namespace name of the prefix 'xml' cannot be bound to another prefix";
inline constexpr char kXmlnsNameBound[] =
    "The namespace name of the prefix 'xmlns' cannot be bound";

}  // namespace Xml::detail::Message
