// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The messages of style sheets.

namespace Dom::CSS::detail::Message {

// Values.
inline constexpr char kNotAFloatUnit[] = "Unit type is not a float unit";
inline constexpr char kNotAFloat[] = "Primitive value is not a float value";
inline constexpr char kFloatNotConvertible[] =
    "The float value can't be converted into the specified unit";
inline constexpr char kStringNotConvertible[] =
    "The string value can't be converted into the specified unit";
inline constexpr char kNotAString[] = "Primitive value is not a string value";
inline constexpr char kNotACounter[] = "Primitive value is not a counter value";
inline constexpr char kNotARectangle[] = "Primitive value is not a rectangle value";
inline constexpr char kNotAColor[] = "Primitive value is not a color value";
inline constexpr char kInherit[] = "Setting cssText of inherit value not supported";

// Declarations.
inline constexpr char kPropertyName[] = "Invalid property name";
inline constexpr char kColon[] = "Expected ':'";
inline constexpr char kImportance[] = "Invalid importance identifier";
inline constexpr char kAfterProperty[] = "Unexpected token after property";
inline constexpr char kValueMissing[] = "Property value missing";

// Rules and sheets.
inline constexpr char kSelector[] = "Syntax error in selector";
inline constexpr char kDeclaration[] = "Expected style declaration after selector";
inline constexpr char kBlock[] = "Syntax error in style block";
inline constexpr char kInsertionPoint[] = "Specified index is not a valid insertion point";
inline constexpr char kNoSuchRule[] =
    "Specified index does not correspond to a rule in the style sheet's rule list";

}  // namespace Dom::CSS::detail::Message
