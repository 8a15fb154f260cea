// SPDX-License-Identifier: MIT
#pragma once

// The messages of the writer. They are interface: docs/errors.md lists them, and tests quote the
// literal text.

namespace Xml::detail::Message {

// Arguments.
inline constexpr char kNoStream[] = "Invalid Argument: a_Stream";
inline constexpr char kStreamNotWritable[] = "Invalid Argument: Stream not writable";
inline constexpr char kNoEncoding[] = "Invalid Argument: a_Encoding";
inline constexpr char kBadNewLineChars[] =
    "Invalid Argument: Non-whitespace character in new line characters";
inline constexpr char kEmptyName[] = "Invalid Argument: Empty name";
inline constexpr char kNoName[] = "Invalid Argument: Not a valid XML name";
inline constexpr char kNoNmToken[] = "Invalid Argument: Not a valid Nmtoken";
inline constexpr char kRootDiffers[] =
    "Invalid Argument: Root element name does not match document type";
inline constexpr char kPrefixNotDeclared[] = "Invalid Argument: Prefix not declared";
inline constexpr char kInvalidPrefix[] = "Invalid Argument: Invalid Prefix";
inline constexpr char kNoNamespaces[] = "Invalid Argument: Namespaces not enabled";
inline constexpr char kEmptyNamespace[] = "Invalid Argument: Prefix defined for empty namespace";
inline constexpr char kMissingNamespace[] = "Bad attribute: Missing namespace URI";
inline constexpr char kBadXmlSpace[] = "Bad attribute: Invalid xml:space value";
inline constexpr char kBadCharacter[] = "Invalid XML character";
inline constexpr char kBadWhitespace[] = "Invalid whitespace character";
inline constexpr char kNoReader[] = "Invalid Argument";
inline constexpr char kBadPosition[] = "Invalid XmlReader position";

// States.
inline constexpr char kWriterClosed[] = "Invalid Operation: Writer closed";
inline constexpr char kAlreadyClosed[] = "Invalid Operation: Writer already closed";
inline constexpr char kNamespacesFixed[] =
    "Invalid Operation: Namespace support cannot be changed while writing the XML file";
inline constexpr char kBadState[] = "Invalid state";
inline constexpr char kNoDoctypeHere[] = "Invalid Operation: Doctype not allowed in this state";
inline constexpr char kNotInElement[] = "Invalid Operation: Writer not in an element";
inline constexpr char kWrongState[] = "Invalid Operation: Wrong state";
inline constexpr char kNotInAttribute[] = "Invalid Operation: Not in attribute";
inline constexpr char kNoTextHere[] = "Invalid Operation: Text not allowed in this state";
inline constexpr char kNotInContent[] = "Invalid Operation: Not in content state";
inline constexpr char kNoReferenceHere[] = "Invalid Operation: Invalid state";

}  // namespace Xml::detail::Message
