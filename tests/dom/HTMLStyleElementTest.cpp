// SPDX-License-Identifier: MIT
#include <espalier/dom/HTMLStyleElement.h>

#include "dom/HtmlPage.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

namespace {

using Dom::HTMLStyleElement;
using Dom::CSS::CSSStyleSheet;
using support::kXhtml;
using support::Rules;

// An element "style" as it is written in a page.
class Style {
public:
    Style(const std::string& attributes, const std::string& content) {
        page_.LoadXml("<style xmlns='http://www.w3.org/1999/xhtml' " + attributes + ">" + content +
                      "</style>");
    }
    HTMLStyleElement* operator->() { return support::AsStyle(page_.DocumentElement()); }
    Dom::HTMLDocument& Page() { return page_; }

private:
    Dom::HTMLDocument page_;
};

}  // namespace

TEST(HTMLStyleElement, HasAttributes) {
    Dom::HTMLDocument page;
    HTMLStyleElement style(kXhtml, "style", &page);
    EXPECT_EQ(style.Media(), "");
    EXPECT_EQ(style.Type(), "");
    style.SetAttribute("media", "print");
    style.SetAttribute("type", "text/css");
    EXPECT_EQ(style.Media(), "print");
    EXPECT_EQ(style.Type(), "text/css");
    style.SetAttributeNS(kXhtml, "h:media", "screen");
    style.SetAttributeNS("urn:o", "o:type", "x");
    EXPECT_EQ(style.Media(), "screen");
    EXPECT_EQ(style.Type(), "text/css");
}

TEST(HTMLStyleElement, MakesASheetOfItsTypeOrWithoutOne) {
    const struct {
        const char* attributes;
        bool makesSheet;
    } kCases[] = {
        {"", true},
        {"type=''", true},
        {"type='text/css'", true},
        {"type='text/CSS'", false},
        {"type='text/xsl'", false},
        {"type=' '", false},
        {"type='text/css '", false},
        {"xmlns:o='urn:o' o:type='text/xsl'", true},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.attributes);
        Style style(c.attributes, "p { color: red }");
        const CSSStyleSheet* const sheet = style->CreateStyleSheet();
        EXPECT_EQ(Rules(sheet), c.makesSheet ? "[p { color: red }]" : "null");
        EXPECT_EQ(style->Sheet(), sheet);
    }
}

TEST(HTMLStyleElement, TheSheetHasWhatTheElementSays) {
    Style style("title='t' media='screen' href='x.css'", "p { color: red }");
    CSSStyleSheet* const sheet = style->CreateStyleSheet();
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(sheet->Type(), "text/css");
    EXPECT_EQ(sheet->OwnerNode(), style.operator->());
    EXPECT_EQ(sheet->ParentStyleSheet(), nullptr);
    EXPECT_EQ(sheet->Href(), "");
    EXPECT_EQ(sheet->Title(), "t");
    EXPECT_EQ(sheet->GetMediaList().MediaText(), "screen");
    EXPECT_EQ(sheet->OwnerRule(), nullptr);
    EXPECT_EQ(sheet->Origin(), Dom::CSS::CSSRule::Author);
    EXPECT_FALSE(sheet->Disabled());
    EXPECT_EQ(style.Page().StyleSheets().Length(), 0U);
    Style plain("", "");
    EXPECT_TRUE(plain->CreateStyleSheet()->GetMediaList().IsEmpty());
    EXPECT_EQ(static_cast<CSSStyleSheet*>(plain->Sheet())->Title(), "");
}

TEST(HTMLStyleElement, IsDisabledByItsAttribute) {
    const struct {
        const char* attributes;
        bool disabled;
    } kCases[] = {
        {"", false},
        {"disabled='yes'", true},
        {"disabled='YES'", true},
        {"disabled='True'", true},
        {"disabled='1'", true},
        {"disabled='no'", false},
        {"disabled='2'", false},
        {"disabled=''", false},
        {"disabled='disabled'", false},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.attributes);
        Style style(c.attributes, "p { a: b }");
        EXPECT_EQ(style->Disabled(), c.disabled);
        EXPECT_EQ(style->CreateStyleSheet()->Disabled(), c.disabled);
    }
}

TEST(HTMLStyleElement, ReadsItsTexts) {
    const struct {
        const char* content;
        const char* rules;
    } kCases[] = {
        {"", ""},
        {"p { a: b }", "[p { a: b }]"},
        {" p { a: b }\n q { c: d }\n", "[p { a: b }][q { c: d }]"},
        {"<![CDATA[p > q { a: b }]]>", "[p > q { a: b }]"},
        {"p <![CDATA[> q]]> { a: b }", "[p > q { a: b }]"},
        {"p &gt; q { a: b }", "[p > q { a: b }]"},
        // Comments of XML and elements are left out with all that is in them.
        {"<!-- r { c: d } -->p { a: b }", "[p { a: b }]"},
        {"p { a: <b>x<c>y</c></b>z }", "[p { a: z }]"},
        {"<?pi r { c: d }?>p { a: b }", "[p { a: b }]"},
        {".\xC3\xA9 { a: b }", "[.\xC3\xA9 { a: b }]"},
        // What the sheet refuses is left out.
        {"p { a: b } q ~ r { c: d } s { e: f }", "[p { a: b }][s { e: f }]"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.content);
        Style style("", c.content);
        EXPECT_EQ(Rules(style->CreateStyleSheet()), c.rules);
    }
}

TEST(HTMLStyleElement, ReadsWhatIsInReferencesToEntities) {
    Dom::HTMLDocument page("", "html", nullptr, nullptr);
    auto* const made = static_cast<HTMLStyleElement*>(page.CreateElement("style"));
    page.DocumentElement()->AppendChild(made);
    made->AppendChild(page.CreateTextNode("p { "));
    Dom::Node* const outer = made->AppendChild(page.CreateEntityReference("outer"));
    outer->AppendChild(page.CreateTextNode("a: "));
    Dom::Node* const inner = outer->AppendChild(page.CreateEntityReference("inner"));
    inner->AppendChild(page.CreateCDATASection("b"));
    Dom::Node* const element = outer->AppendChild(page.CreateElement("x"));
    element->AppendChild(page.CreateTextNode("not this"));
    outer->AppendChild(page.CreateTextNode("c"));
    made->AppendChild(page.CreateTextNode(" }"));
    // A text's own children are not below the element in the way that counts.
    made->LastChild()->AppendChild(page.CreateTextNode("q { d: e }"));
    EXPECT_EQ(Rules(made->CreateStyleSheet()), "[p { a: bc }]");
}

// The walk ends with the element, and goes by the true links.
TEST(HTMLStyleElement, ReadsNothingBehindIt) {
    Dom::HTMLDocument page;
    page.LoadXml(
        "<html xmlns='http://www.w3.org/1999/xhtml'><style>p { a: b }</style>q { c: d }</html>");
    HTMLStyleElement* const style = support::AsStyle(page.DocumentElement()->FirstChild());
    EXPECT_EQ(Rules(style->CreateStyleSheet()), "[p { a: b }]");
    Dom::Node* const text = style->FirstChild();
    style->InsertBefore(page.CreateTextNode("r { e: f }"), text);
    style->InsertBefore(page.CreateTextNode("s { g: h }"), text);
    EXPECT_EQ(Rules(style->CreateStyleSheet()), "[r { e: f }][s { g: h }][p { a: b }]");
}

TEST(HTMLStyleElement, ReadsDeepReferencesWithoutRecursion) {
    Dom::HTMLDocument page;
    auto* const style = static_cast<HTMLStyleElement*>(page.CreateElement("style"));
    const Dom::NodePtr owner(style);
    Dom::NodePtr chain(page.CreateTextNode("p { a: b }"));
    for (int depth = 0; depth < 100000; ++depth) {
        Dom::NodePtr reference(page.CreateEntityReference("e"));
        reference->AppendChild(chain.release());
        chain = std::move(reference);
    }
    style->AppendChild(chain.release());
    EXPECT_EQ(Rules(style->CreateStyleSheet()), "[p { a: b }]");
}

TEST(HTMLStyleElement, AnotherSheetTakesThePlaceOfTheOneBefore) {
    Style style("", "p { a: b }");
    style.Page().StyleSheets().AddItem(style->CreateStyleSheet());
    style->AppendChild(style.Page().CreateTextNode("q { c: d }"));
    EXPECT_EQ(Rules(static_cast<CSSStyleSheet*>(style->Sheet())), "[p { a: b }]");
    CSSStyleSheet* const second = style->CreateStyleSheet();
    EXPECT_EQ(Rules(second), "[p { a: b }][q { c: d }]");
    EXPECT_EQ(style->Sheet(), second);
    EXPECT_EQ(style.Page().StyleSheets().Length(), 0U);
    style->SetAttribute("type", "text/xsl");
    EXPECT_EQ(style->CreateStyleSheet(), nullptr);
    EXPECT_EQ(style->Sheet(), nullptr);
}

TEST(HTMLStyleElement, ACloneHasNoSheet) {
    Style style("media='print'", "p { a: b }");
    style->CreateStyleSheet();
    const std::unique_ptr<Dom::Node> clone(style->CloneTree());
    HTMLStyleElement* const copy = support::AsStyle(clone.get());
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->Media(), "print");
    EXPECT_EQ(copy->Sheet(), nullptr);
    EXPECT_NE(style->Sheet(), nullptr);
    EXPECT_EQ(Rules(copy->CreateStyleSheet()), "[p { a: b }]");
}

TEST(HTMLStyleElement, AnswersToTheNamesOfItsClasses) {
    Dom::HTMLDocument page;
    HTMLStyleElement style(kXhtml, "style", &page);
    Dom::Node* const node = &style;
    Dom::StyleSheets::LinkStyle* const keeper = &style;
    for (const char* const name :
         {"Dom::HTMLStyleElement", "Dom::HTMLElement", "Dom::Element", "Dom::Node"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(node->QueryInterface(name), node);
        EXPECT_EQ(keeper->QueryInterface(name), node);
    }
    EXPECT_EQ(node->QueryInterface("Dom::StyleSheets::LinkStyle"), keeper);
    EXPECT_NE(node->QueryInterface("Dom::CSS::ElementCSSInlineStyle"), nullptr);
    EXPECT_EQ(node->QueryInterface("Dom::HTMLLinkElement"), nullptr);
}
