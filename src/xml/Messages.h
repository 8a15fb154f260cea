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
inline constexpr char kUndeclaredEntity[] = "Undeclared entity";
inline constexpr char kExpectedDoctype[] = "Expected DOCTYPE";
inline constexpr char kDoctypeAlreadyDefined[] = "DOCTYPE already defined";
inline constexpr char kEofInDtd[] = "Unexpected end of file while parsing DTD";

}  // namespace Xml::detail::Message
