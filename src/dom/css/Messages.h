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

// Why a forgiving parser leaves something out, besides those of declarations and selectors.
inline constexpr char kValue[] = "Invalid property value";
inline constexpr char kAtRuleInBlock[] = "Rule in a style block";
inline constexpr char kBlockMissing[] = "Expected a block";
inline constexpr char kImport[] = "Syntax error in import rule";
inline constexpr char kLateImport[] = "Import rule behind other rules";
inline constexpr char kCharset[] = "Charset rule not at the begin of the style sheet";
inline constexpr char kDepth[] = "Rules are nested too deep";
inline constexpr char kRule[] = "Syntax error in rule";

// Why a sheet that something leads to is not there.
inline constexpr char kNotFound[] = "Not found";
inline constexpr char kImportedByItself[] = "Imported by itself";
inline constexpr char kImportedTooDeep[] = "Imported too deep";
inline constexpr char kTooManyBytes[] = "Too many bytes";
inline constexpr char kTooManySheets[] = "Too many sheets";

// Rules and sheets.
inline constexpr char kSelector[] = "Syntax error in selector";
inline constexpr char kDeclaration[] = "Expected style declaration after selector";
inline constexpr char kBlock[] = "Syntax error in style block";
inline constexpr char kInsertionPoint[] = "Specified index is not a valid insertion point";
inline constexpr char kNoSuchRule[] =
    "Specified index does not correspond to a rule in the style sheet's rule list";

}  // namespace Dom::CSS::detail::Message
