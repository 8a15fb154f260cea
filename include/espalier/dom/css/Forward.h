// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Declares the classes of this folder for headers that only name them.

namespace Dom::CSS {
class CSSPrimitiveTypeImpl;
class CSSPrimitiveValue;
class CSSPropertyImpl;
class CSSRule;
class CSSRuleList;
class CSSStyleDeclaration;
class CSSStyleRule;
class CSSStyleSheet;
class CSSUnknownRule;
class CSSValue;
class CSSValueList;
class Counter;
class CssNodeType;
class CssReader;
class ElementCSSInlineStyle;
class RGBColor;
class Rect;
class RuleIndex;
class Selector;

namespace detail {
class CompactProperty;
class CompiledSelectors;
class CssScanner;
struct Primitive;
}  // namespace detail
}  // namespace Dom::CSS
