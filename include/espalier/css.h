// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Style sheets, in the manner of DOM Level 2 Style, and selectors.

/// \namespace Dom::CSS
/// Style sheets, rules, values, selectors, and the computed style of elements.

#include <espalier/dom/css/CSSCharsetRule.h>
#include <espalier/dom/css/CSSFontFaceRule.h>
#include <espalier/dom/css/CSSGroupingRule.h>
#include <espalier/dom/css/CSSImportRule.h>
#include <espalier/dom/css/CSSMediaRule.h>
#include <espalier/dom/css/CSSPageRule.h>
#include <espalier/dom/css/CSSPrimitiveValue.h>
#include <espalier/dom/css/CSSPropertyImpl.h>
#include <espalier/dom/css/CSSRule.h>
#include <espalier/dom/css/CSSRuleList.h>
#include <espalier/dom/css/CSSStyleDeclaration.h>
#include <espalier/dom/css/CSSStyleRule.h>
#include <espalier/dom/css/CSSStyleSheet.h>
#include <espalier/dom/css/CSSSupportsRule.h>
#include <espalier/dom/css/CSSUnknownRule.h>
#include <espalier/dom/css/CSSValue.h>
#include <espalier/dom/css/CSSValueList.h>
#include <espalier/dom/css/CollectStyleSheets.h>
#include <espalier/dom/css/ComputedStyle.h>
#include <espalier/dom/css/Counter.h>
#include <espalier/dom/css/CssHelpers.h>
#include <espalier/dom/css/CssNodeType.h>
#include <espalier/dom/css/CssReader.h>
#include <espalier/dom/css/DecodeStyleSheet.h>
#include <espalier/dom/css/DocumentStyle.h>
#include <espalier/dom/css/DroppedText.h>
#include <espalier/dom/css/ElementCSSInlineStyle.h>
#include <espalier/dom/css/Forward.h>
#include <espalier/dom/css/HtmlStyleSheet.h>
#include <espalier/dom/css/KnownProperty.h>
#include <espalier/dom/css/LinkStyle.h>
#include <espalier/dom/css/LoadStyleSheets.h>
#include <espalier/dom/css/MediaContext.h>
#include <espalier/dom/css/MediaList.h>
#include <espalier/dom/css/MediaQueryList.h>
#include <espalier/dom/css/NamespacePrefix.h>
#include <espalier/dom/css/ParseDeclarations.h>
#include <espalier/dom/css/ParseStyleSheet.h>
#include <espalier/dom/css/QuerySelector.h>
#include <espalier/dom/css/RGBColor.h>
#include <espalier/dom/css/Rect.h>
#include <espalier/dom/css/RuleIndex.h>
#include <espalier/dom/css/Selector.h>
#include <espalier/dom/css/SelectorException.h>
#include <espalier/dom/css/SourcePlace.h>
#include <espalier/dom/css/Specificity.h>
#include <espalier/dom/css/StyleExplanation.h>
#include <espalier/dom/css/StyleResolver.h>
#include <espalier/dom/css/StyleSheet.h>
#include <espalier/dom/css/StyleSheetList.h>
#include <espalier/dom/css/StyleSheetListImpl.h>
