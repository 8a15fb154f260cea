// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The messages of this layer.

namespace Dom::detail::Message {

inline constexpr char kPrefix[] = "DOMException: ";

// What every operation checks.
inline constexpr char kNodeExpected[] = "Node expected";
inline constexpr char kReadOnly[] = "This node is read-only";

// Children.
inline constexpr char kAppendFromReadOnly[] = "The parent of the node being appended is read-only";
inline constexpr char kInsertFromReadOnly[] = "The parent of the node being inserted is read-only";
inline constexpr char kAppendFromOther[] =
    "The node to append is was created from a different document than the one that created this "
    "node";
inline constexpr char kInsertFromOther[] =
    "The node to insert is was created from a different document than the one that created this "
    "node";
inline constexpr char kReplaceFromOther[] =
    "The node to replace is was created from a different document than the one that created this "
    "node";
inline constexpr char kAppendAncestor[] = "The node to append is one of this node's ancestors";
inline constexpr char kInsertAncestor[] = "The node to insert is one of this node's ancestors";
inline constexpr char kReplaceAncestor[] = "The node to replace is one of this node's ancestors";
inline constexpr char kAlreadyChild[] = "The node is already a child of this node";
inline constexpr char kNotChild[] = "The old child is not a child of this node";

// Children of a document.
inline constexpr char kOneRoot[] = "A document can only have one root element";
inline constexpr char kOneDtd[] = "A document can only have one DTD";
inline constexpr char kDtdOutsideProlog[] =
    "Document type description only allowed in document prologue";
inline constexpr char kDeclarationNotAllowed[] =
    "XML declaration not allowed in non-document nodes";
inline constexpr char kTextNotAllowed[] =
    "Non-whitespace text node not allowed as child of document";
inline constexpr char kNotAllowed[] = "Node not allowed as child of document";

// Names and attributes. The key follows the first part.
inline constexpr char kInvalidPrefix[] = "Invalid prefix specified";
inline constexpr char kAttributeFromOther[] =
    "The attribute to set was created from a different document than the one that created this map";
inline constexpr char kAttributeInUse[] =
    "The attribute to set is already an attribute of another Element object";
inline constexpr char kOnlyAttributes[] = "Elements only accept Attr nodes as attributes";
inline constexpr char kNoNodeNamed[] = "No node named ";
inline constexpr char kInThisMap[] = " in this map";

// Documents. The version stands between the two parts.
inline constexpr char kVersion[] = "XML version \"";
inline constexpr char kNotSupported[] = "\" not supported!";
inline constexpr char kNotWellFormed[] = "Document not well-formed";
inline constexpr char kNotImplemented[] = "Not implemented";
inline constexpr char kNoFeature[] = "Feature not implemented!";
inline constexpr char kTypeNotSupported[] = "Node type not supported";

}  // namespace Dom::detail::Message
