// SPDX-License-Identifier: MIT
#pragma once

// The messages of the scanner and the reader. They are interface: docs/errors.md lists them, and
// tests quote the literal text.

namespace Xml::detail::Message {

// The scanner.
inline constexpr char kInvalidCharacter[] = "Invalid character";
inline constexpr char kUnexpectedEof[] = "Unexpected end of file";
inline constexpr char kInputBufferOverflow[] = "Input buffer overflow";
inline constexpr char kCharacterOverflow[] = "Character entity overflow";
inline constexpr char kTokenOverflow[] = "Buffer overflow while reading markup token";
inline constexpr char kTokenTooBig[] = "Input buffer full - token too big";
inline constexpr char kSyntaxError[] = "Syntax error";
inline constexpr char kExpectedElementName[] = "Syntax error: Expected element name";
inline constexpr char kUnexpectedToken[] = "Unexpected token";
inline constexpr char kSecondColon[] = "Illegal second colon in qualified name";
inline constexpr char kCommentHoldsDashes[] = "XML comments may not contain '--'";
inline constexpr char kEofInComment[] = "Unexpected end of file while scanning for '-->'";
inline constexpr char kEofInCData[] = "Unexpected end of file while scanning for ']]>'";
inline constexpr char kEofInPI[] = "Unexpected end of file while looking for '?>'";
inline constexpr char kEofInLiteral[] = "Unexpected end of file while scanning for end quote";
inline constexpr char kInvalidPublicId[] = "Invalid Public ID character";
inline constexpr char kEofInDtdMarkup[] = "Unexpected end of file while scanning DTD";
inline constexpr char kEofInDtdToken[] = "Unexpected end of file in DTD";

// The reader.
inline constexpr char kNoSource[] = "No source stream to parse";
inline constexpr char kMissingRoot[] = "Missing root element";
inline constexpr char kMissingEndElement[] = "Missing end element";
inline constexpr char kUnexpectedEndTag[] = "Unexpected end tag";
inline constexpr char kMismatchedEndTag1[] = "End tag '";
inline constexpr char kMismatchedEndTag2[] = "' doesn't match start tag '";
inline constexpr char kUnexpectedDeclaration[] = "Unexpected xml declaration";
inline constexpr char kInvalidPIName[] = "Invalid PI Name";
inline constexpr char kUnexpectedTokenInPI[] = "Unexpected token in processing instruction";
inline constexpr char kSyntaxErrorInElement[] = "Syntax error in element";
inline constexpr char kDuplicateAttribute[] = "Duplicate attribute";
inline constexpr char kInvalidDeclaration[] = "Invalid xml declaration";
inline constexpr char kUnsupportedVersion[] = "Unsupported XML version";
inline constexpr char kUnsupportedEncoding[] = "Unsupported encoding";
inline constexpr char kInvalidXmlSpace[] = "Invalid xml:space attribute value";
inline constexpr char kBadLanguage[] = "Bad language ID";
inline constexpr char kMissingCloseQuote[] = "Unexpected token or missing close quote";
inline constexpr char kEbcdic[] = "EBCDIC encoding not supported";
inline constexpr char kInvalidOperationNamespaces[] = "Invalid Operation";
inline constexpr char kInvalidOperation[] = "Invalid operation";

// References and the document type.
inline constexpr char kBadName[] = "Bad name";
inline constexpr char kInvalidNamedEntity[] = "Invalid named entity";
inline constexpr char kInvalidReference[] = "Invalid character reference";
inline constexpr char kUndeclaredEntity[] = "Undeclared entity";
inline constexpr char kCyclicEntity[] = "Cyclic entity reference";
inline constexpr char kExpansionLimit[] = "Entity expansion limit exceeded";
inline constexpr char kNestingLimit[] = "Entity nesting limit exceeded";
inline constexpr char kExpectedDoctype[] = "Expected DOCTYPE";
inline constexpr char kDoctypeAlreadyDefined[] = "DOCTYPE already defined";
inline constexpr char kEofInDtd[] = "Unexpected end of file while parsing DTD";
inline constexpr char kParameterInValue[] = "PE reference not allowed in parsed entity value";
inline constexpr char kNotationOfParameter[] =
    "Cannot use the NDATA keyword in a parameter entity declaration";
inline constexpr char kNoSpaceAfterNdata[] = "Whitespace expected after NDATA";
inline constexpr char kUndeclaredNotation[] = "Reference to undeclared notation";
inline constexpr char kExpectedNdata[] = "'NDATA' or '>' expected";
inline constexpr char kNoSpaceAfterNotation[] = "Whitespace required after NOTATION";
inline constexpr char kColonInNotation[] = "Colon not allowed in NOTATION name";
inline constexpr char kNoSpaceAfterNotationName[] = "Whitespace required after notation name";
inline constexpr char kDuplicateNotation[] = "Duplicate notation name";
inline constexpr char kSyntaxErrorInEntity[] = "Syntax error in entity declaration";
inline constexpr char kNoSpaceAfterPublicId[] =
    "Whitespace required between public ID and system ID";
inline constexpr char kNoSystemId[] = "Public ID requires two literals";

// Navigation and content.
inline constexpr char kArgumentOutOfRange[] = "Argument out of range";
inline constexpr char kNotAnElement[] = "Not an element node";
inline constexpr char kUnexpectedElement[] = "Unexpected element";
inline constexpr char kNotAnEndElement[] = "Not an end element node";
inline constexpr char kReadFailed[] = "Read failed";
inline constexpr char kInvalidNodeType[] = "Invalid node type";
inline constexpr char kUnexpectedNodeType[] = "Unexpected node type";

}  // namespace Xml::detail::Message
