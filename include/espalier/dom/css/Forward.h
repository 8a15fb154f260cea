// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Declares the classes of this folder for headers that only name them.

namespace Dom::CSS {
class CSSCharsetRule;
class CSSFontFaceRule;
class CSSGroupingRule;
class CSSImportRule;
class CSSMediaRule;
class CSSPageRule;
class CSSPrimitiveTypeImpl;
class CSSPrimitiveValue;
class CSSPropertyImpl;
class CSSRule;
class CSSRuleList;
class CSSStyleDeclaration;
class CSSStyleRule;
class CSSStyleSheet;
class CSSSupportsRule;
class CSSUnknownRule;
class CSSValue;
class CSSValueList;
class Counter;
class CssNodeType;
class CssReader;
class ElementCSSInlineStyle;
class MediaQueryList;
class RGBColor;
class Rect;
class RuleIndex;
class Selector;
struct MediaContext;

namespace detail {
class CompactProperty;
class CompiledSelectors;
class CssScanner;
class MediaQueries;
class RuleBuckets;
class RuleMaking;
class StyleSources;
struct Primitive;
}  // namespace detail
}  // namespace Dom::CSS
