// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The messages of this layer.

namespace sax::detail::Message {

// Features and properties; the name follows.
inline constexpr char kFeatureNotRecognized[] = "Feature not recognized: ";
inline constexpr char kFeatureNotSupported[] = "Feature not supported: ";
inline constexpr char kFeatureNotNow[] = "Feature can't be set at this time: ";
inline constexpr char kPropertyNotRecognized[] = "Property not recognized: ";

inline constexpr char kInvalidOperation[] = "Invalid operation";

// Fatal errors.
inline constexpr char kNoInput[] = "No input source found.";
inline constexpr char kMissingStart[] = "Missing start element";
inline constexpr char kError[] = "Error in XML-document.";
inline constexpr char kUnsupported[] = "Unsupported XML-document.";
inline constexpr char kUnclosed[] = "Unclosed element found.";
inline constexpr char kInternal[] = "Internal error in the SAX interface.";

// Helpers.
inline constexpr char kDeclareTooLate[] =
    "Illegal state: declarePrefix() can't be called after the context has been used.";
inline constexpr char kDeclUrisTooLate[] =
    "Illegal state: setNamespaceDeclUris() was called after a context was pushed.";
inline constexpr char kBadSubscript[] = "invalid vector<T> subscript";

}  // namespace sax::detail::Message
