// SPDX-License-Identifier: MIT

// The rules with "@" that ParseStyleSheet() makes.

#include <espalier/dom/Document.h>
#include <espalier/dom/Element.h>
#include <espalier/dom/css/CSSCharsetRule.h>
#include <espalier/dom/css/CSSFontFaceRule.h>
#include <espalier/dom/css/CSSImportRule.h>
#include <espalier/dom/css/CSSMediaRule.h>
#include <espalier/dom/css/CSSPageRule.h>
#include <espalier/dom/css/CSSStyleRule.h>
#include <espalier/dom/css/CSSSupportsRule.h>
#include <espalier/dom/css/MediaContext.h>
#include <espalier/dom/css/RuleIndex.h>

#include "dom/ExpectDomError.h"
#include "dom/css/SheetStory.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

using Dom::CSS::CSSRule;
using Dom::CSS::CSSStyleSheet;
using Dom::CSS::DroppedText;
using Dom::CSS::ParseStyleSheet;
using support::ExpectSheets;

template <typename Rule>
Rule& RuleOf(const CSSStyleSheet& sheet, unsigned index, const char* name) {
    void* const rule = sheet.CssRules().Item(index)->QueryInterface(name);
    EXPECT_NE(rule, nullptr) << name;
    return *static_cast<Rule*>(rule);
}

}  // namespace

TEST(ParseStyleSheetRules, Media) {
    ExpectSheets({
        {"@media print{a{b:c}}d{e:f}", "@media print { a { b: c } } | d { e: f }"},
        {"@MEDIA screen , print {a{b:c}d{e:f}}", "@media screen , print { a { b: c } d { e: f } }"},
        {"@media{a{b:c}}", "@media { a { b: c } }"},
        {"@media a{}", "@media a { }"},
        {"@media (a){@media (b){c{d:e}}f{g:h}}i{j:k}",
         "@media (a) { @media (b) { c { d: e } } f { g: h } } | i { j: k }"},
        {"@media a{@supports (b:c){d{e:f}}}", "@media a { @supports (b:c) { d { e: f } } }"},
        {"@media a;b{c:d}", "b { c: d }", "1:1 Expected a block"},
        {"@media a{b;c{d:e}f{g:h}}i{j:k}", "@media a { f { g: h } } | i { j: k }",
         "1:11 Syntax error in selector"},
        {"@media a{b}c{d:e}", "@media a { } | c { d: e }", "1:10 Expected a block"},
        {"@media a{@b c}d{e:f}", "@media a { @b c } | d { e: f }"},
        {"@media a{@media b}d{e:f}", "@media a { } | d { e: f }", "1:10 Expected a block"},
        {"@media a/* b */and/**/(c){}", "@media a and (c) { }"},
    });
}

TEST(ParseStyleSheetRules, Import) {
    ExpectSheets({
        {"@import 'a.css';", "@import \"a.css\";"},
        {"@import\"a.css\"print;", "@import \"a.css\" print;"},
        {"@import url(a.css);", "@import \"a.css\";"},
        {"@import URL( 'a.css' ) screen, print ;", "@import \"a.css\" screen, print;"},
        {"@import 'a\\62 \\\"c';", "@import \"ab\\\"c\";"},
        {"@import url(a\\)b);", "@import \"a)b\";"},
        {"@charset \"x\";@import 'a';@import 'b';",
         "@charset \"x\"; | @import \"a\"; | @import \"b\";"},
        {"@layer a, b;@import 'a';", "@layer a, b; | @import \"a\";"},
        {"@layer a{}@import 'a';", "@layer a{}", "1:11 Import rule behind other rules"},
        {"a{}@import 'b';c{}", "a {  } | c {  }", "1:4 Import rule behind other rules"},
        // What is left out does not count.
        {"&{}@import 'b';", "@import \"b\";", "1:1 Syntax error in selector"},
        {"@media a{@import 'b';c{d:e}}", "@media a { c { d: e } }",
         "1:10 Import rule behind other rules"},
        {"@import a.css;b{c:d}", "b { c: d }", "1:1 Syntax error in import rule"},
        {"@import;b{c:d}", "b { c: d }", "1:1 Syntax error in import rule"},
        {"@import 'a'{b:c}d{e:f}", "d { e: f }", "1:1 Syntax error in import rule"},
        {"@import 'a\n';b{c:d}", "", "1:1 Syntax error in import rule"},
    });
}

TEST(ParseStyleSheetRules, Charset) {
    ExpectSheets({
        {"@charset \"UTF-8\";a{b:c}", "@charset \"UTF-8\"; | a { b: c }"},
        {"@charset \"\";", "@charset \"\";"},
        {" @charset \"UTF-8\";", "", "1:2 Charset rule not at the begin of the style sheet"},
        {"@charset 'UTF-8';a{}", "a {  }", "1:1 Charset rule not at the begin of the style sheet"},
        {"@CHARSET \"UTF-8\";a{}", "a {  }",
         "1:1 Charset rule not at the begin of the style sheet"},
        {"@charset  \"UTF-8\";a{}", "a {  }",
         "1:1 Charset rule not at the begin of the style sheet"},
        {"@charset \"a\" \"b\";", "", "1:1 Charset rule not at the begin of the style sheet"},
        {"@charset \"", "", "1:1 Charset rule not at the begin of the style sheet"},
        {"a{}@charset \"UTF-8\";", "a {  }",
         "1:4 Charset rule not at the begin of the style sheet"},
    });
}

TEST(ParseStyleSheetRules, FontFaceAndPage) {
    ExpectSheets({
        {"@font-face{font-family:a;src:url(b) format('c')}",
         "@font-face { font-family: a; src: url(b) format('c') }"},
        {"@font-face a{b:c}", "", "1:1 Syntax error in rule"},
        {"@font-face;a{}", "a {  }", "1:1 Expected a block"},
        {"@page{margin-top:1in}", "@page { margin-top: 1in }"},
        {"@page a:first{b:c;d e}", "@page a:first { b: c }", "1:19 Expected ':'"},
        {"@page{@top-left{a:b}c:d}", "@page { c: d }", "1:7 Rule in a style block"},
        {"@page;a{}", "a {  }", "1:1 Expected a block"},
    });
}

TEST(ParseStyleSheetRules, OthersAreKeptAsTheyStand) {
    ExpectSheets({
        {"@a;", "@a;"},
        {"@a b 'c;' (d;e) ; f{}", "@a b 'c;' (d;e) ; | f {  }"},
        {"@a{b{c:d}e{f:g}} h{}", "@a{b{c:d}e{f:g}} | h {  }"},
        {"@keyframes a { 0% {b:c} to{d:e} }", "@keyframes a { 0% {b:c} to{d:e} }"},
        {"@namespace svg url(x);", "@namespace svg url(x);"},
        {"@-ms-viewport { a : b }", "@-ms-viewport { a : b }"},
        {"@a /* b */ c;", "@a /* b */ c;"},
        {"@m\\65 dia a{b{c:d}}", "@media a { b { c: d } }"},
    });
}

TEST(ParseStyleSheetRules, HaveTheirClasses) {
    const auto sheet = ParseStyleSheet(
        "@charset \"x\";@import 'a' print;@media b{c{}}@supports (d:e){}@font-face{f:g}@page h{i:j}"
        "@k;");
    const unsigned short types[] = {2, 3, 4, 12, 5, 6, 0};
    ASSERT_EQ(sheet->CssRules().Length(), std::size(types));
    for (unsigned i = 0; i < std::size(types); ++i)
        EXPECT_EQ(sheet->CssRules().Item(i)->Type(), types[i]);
    EXPECT_EQ(RuleOf<Dom::CSS::CSSCharsetRule>(*sheet, 0, "Dom::CSS::CSSCharsetRule").Encoding(),
              "x");
    auto& import = RuleOf<Dom::CSS::CSSImportRule>(*sheet, 1, "Dom::CSS::CSSImportRule");
    EXPECT_EQ(import.Href(), "a");
    EXPECT_EQ(import.GetMediaList().MediaText(), "print");
    auto& media = RuleOf<Dom::CSS::CSSMediaRule>(*sheet, 2, "Dom::CSS::CSSMediaRule");
    EXPECT_EQ(media.GetMediaList().MediaText(), "b");
    EXPECT_EQ(media.CssRules().Length(), 1U);
    RuleOf<Dom::CSS::CSSGroupingRule>(*sheet, 2, "Dom::CSS::CSSGroupingRule");
    EXPECT_EQ(
        RuleOf<Dom::CSS::CSSSupportsRule>(*sheet, 3, "Dom::CSS::CSSSupportsRule").ConditionText(),
        "(d:e)");
    EXPECT_EQ(RuleOf<Dom::CSS::CSSFontFaceRule>(*sheet, 4, "Dom::CSS::CSSFontFaceRule")
                  .Style()
                  .GetPropertyValue("f"),
              "g");
    auto& page = RuleOf<Dom::CSS::CSSPageRule>(*sheet, 5, "Dom::CSS::CSSPageRule");
    EXPECT_EQ(page.SelectorText(), "h");
    EXPECT_EQ(page.Style().GetPropertyValue("i"), "j");
    for (unsigned i = 0; i < std::size(types); ++i) {
        EXPECT_NE(sheet->CssRules().Item(i)->QueryInterface("Dom::CSS::CSSRule"), nullptr);
        EXPECT_EQ(sheet->CssRules().Item(i)->QueryInterface("other"), nullptr);
    }
}

TEST(ParseStyleSheetRules, KnowTheirSheetTheirParentAndTheirOrigin) {
    Dom::CSS::CSSStyleSheet sheet(CSSRule::User, nullptr, "", "");
    ParseStyleSheet(sheet, "@media a{@media b{c{d:e}}}f{g:h}");
    auto& outer = static_cast<Dom::CSS::CSSMediaRule&>(*sheet.CssRules().Item(0));
    auto& inner = static_cast<Dom::CSS::CSSMediaRule&>(*outer.CssRules().Item(0));
    auto& style = static_cast<Dom::CSS::CSSStyleRule&>(*inner.CssRules().Item(0));
    EXPECT_EQ(outer.ParentRule(), nullptr);
    EXPECT_EQ(inner.ParentRule(), &outer);
    EXPECT_EQ(style.ParentRule(), &inner);
    for (const CSSRule* const rule : {static_cast<CSSRule*>(&outer), static_cast<CSSRule*>(&inner),
                                      static_cast<CSSRule*>(&style)}) {
        EXPECT_EQ(rule->ParentStyleSheet(), &sheet);
        EXPECT_EQ(rule->Origin(), CSSRule::User);
    }
    EXPECT_EQ(style.Style().Properties().Item(0)->Origin(), CSSRule::User);
    EXPECT_EQ(style.Style().Properties().Item(0)->Specificity(), 1);

    // A rule that is taken out outlives the sheet.
    sheet.CssRules().RemoveItemAt(0);
    const std::unique_ptr<CSSRule> taken(&outer);
    EXPECT_EQ(style.ParentStyleSheet(), nullptr);
    EXPECT_EQ(style.ParentRule(), &inner);
    EXPECT_EQ(PlaceOf(style.Style(), 0), Dom::CSS::SourcePlace());
}

TEST(ParseStyleSheetRules, AreNotInMoreThan256Others) {
    std::string text;
    for (int i = 0; i < 300; ++i)
        text += "@media a{";
    text += "b{c:d}";
    std::vector<DroppedText> dropped;
    const auto sheet = ParseStyleSheet(text, {.dropped = &dropped});
    int depth = 0;
    const Dom::CSS::CSSRuleList* rules = &sheet->CssRules();
    for (; rules->Length() > 0; ++depth)
        rules = &static_cast<const Dom::CSS::CSSMediaRule*>(rules->Item(0))->CssRules();
    EXPECT_EQ(depth, 256);
    EXPECT_EQ(support::DropsOf(dropped), "1:2305 Rules are nested too deep");
}

TEST(ParseStyleSheetRules, CanBeReplacedByATextOfTheirKind) {
    const struct {
        const char* before;
        const char* text;
        const char* after;
    } kCases[] = {
        {"@charset \"a\";", "@charset \"b\";", "@charset \"b\";"},
        {"@import 'a';", " @import url(b) print; ", "@import \"b\" print;"},
        {"@media a{b{c:d}}", "@media e{f{g:h}}", "@media e { f { g: h } }"},
        {"@supports (a:b){}", "@supports (c:d){e{f:g}}", "@supports (c:d) { e { f: g } }"},
        {"@font-face{a:b}", "@font-face{c:d}", "@font-face { c: d }"},
        {"@page{a:b}", "@page c{d:e}", "@page c { d: e }"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        const auto sheet = ParseStyleSheet(c.before);
        CSSRule& rule = *sheet->CssRules().Item(0);
        const std::string before = rule.CssText().str();
        for (const char* const other :
             {"", "a{b:c}", "@x;", "&{}", "@media a{}b{}", "@page{}@page{}"})
            EXPECT_DOM_ERROR(rule.SetCssText(other), "12 Syntax error in rule");
        EXPECT_EQ(rule.CssText(), before);
        rule.SetCssText(c.text);
        EXPECT_EQ(rule.CssText(), c.after);
        EXPECT_EQ(rule.ParentStyleSheet(), sheet.get());
    }
}

TEST(ParseStyleSheetRules, RulesOfAReplacedRuleAreItsOwn) {
    CSSStyleSheet sheet(CSSRule::User, nullptr, "", "");
    ParseStyleSheet(sheet, "@media a{}@page{}");
    auto& media = static_cast<Dom::CSS::CSSMediaRule&>(*sheet.CssRules().Item(0));
    media.SetCssText("@media b{@media c{d{e:f}}}");
    auto& inner = static_cast<Dom::CSS::CSSMediaRule&>(*media.CssRules().Item(0));
    const CSSRule& style = *inner.CssRules().Item(0);
    EXPECT_EQ(inner.ParentRule(), &media);
    EXPECT_EQ(style.ParentRule(), &inner);
    for (const CSSRule* const rule : {static_cast<const CSSRule*>(&inner), &style}) {
        EXPECT_EQ(rule->ParentStyleSheet(), &sheet);
        EXPECT_EQ(rule->Origin(), CSSRule::User);
    }
    auto& page = static_cast<Dom::CSS::CSSPageRule&>(*sheet.CssRules().Item(1));
    page.SetCssText("@page{g:h}");
    EXPECT_EQ(page.Style().Properties().Item(0)->Origin(), CSSRule::User);
    EXPECT_EQ(page.Style().ParentRule(), &page);
}

TEST(ParseStyleSheetRules, AnIndexTakesThoseThatCountForAMedium) {
    Dom::Document document;
    document.LoadXml("<a/>");
    const Dom::Element& element = *document.DocumentElement();
    const auto sheet = ParseStyleSheet(
        "a{b:1}@media print{a{b:2}}@media screen{a{b:3}@media (min-width:2000px){a{b:4}}"
        "@media (color){a{b:5}}}@supports (c:d){a{b:6}}a{b:7}");
    const auto values = [&](const Dom::CSS::MediaContext& context) {
        Dom::CSS::RuleIndex index;
        index.Add(*sheet, context);
        std::string text;
        for (const Dom::CSS::MatchedRule& match : index.Match(element))
            text += match.rule->Style().GetPropertyValue("b").str();
        return text;
    };
    EXPECT_EQ(values({}), "1357");
    EXPECT_EQ(values({.type = "print"}), "127");
    EXPECT_EQ(values({.width = 2000}), "13457");
    sheet->GetMediaList().SetMediaText("print");
    EXPECT_EQ(values({}), "");
    EXPECT_EQ(values({.type = "print"}), "127");
    sheet->Disable();
    EXPECT_EQ(values({.type = "print"}), "");
    Dom::CSS::RuleIndex all;
    all.Add(*sheet);
    EXPECT_EQ(all.Match(element).size(), 2U);
}
