// SPDX-License-Identifier: MIT
#include <espalier/dom/HTMLLinkElement.h>

#include "dom/HtmlPage.h"
#include "dom/SheetCases.h"
#include "support/FailingStream.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

namespace {

using Dom::HTMLLinkElement;
using Dom::CSS::CSSStyleSheet;
using support::kXhtml;
using support::Rules;
using support::StreamOf;

const struct {
    const char* name;
    const astring& (HTMLLinkElement::*get)() const;
} kAttributes[] = {
    {"charset", &HTMLLinkElement::Charset},   {"href", &HTMLLinkElement::Href},
    {"hreflang", &HTMLLinkElement::Hreflang}, {"media", &HTMLLinkElement::Media},
    {"rel", &HTMLLinkElement::Rel},           {"rev", &HTMLLinkElement::Rev},
    {"target", &HTMLLinkElement::Target},     {"type", &HTMLLinkElement::Type},
};

// A link with attributes as they are written in a page.
class Link {
public:
    explicit Link(const std::string& attributes) {
        page_.LoadXml("<link xmlns='http://www.w3.org/1999/xhtml' " + attributes + "/>");
    }
    HTMLLinkElement* operator->() { return support::AsLink(page_.DocumentElement()); }

    CSSStyleSheet* Create(std::string_view text) {
        IO::MemoryStream stream = StreamOf(text);
        return (*this)->CreateStyleSheet(&stream);
    }

    Dom::HTMLDocument& Page() { return page_; }

private:
    Dom::HTMLDocument page_;
};

}  // namespace

TEST(HTMLLinkElement, HasAttributesWithoutANamespace) {
    for (const char* const uri : {"", kXhtml, "urn:other"}) {
        SCOPED_TRACE(uri);
        Dom::HTMLDocument page;
        HTMLLinkElement link(uri, "link", &page);
        for (const auto& attribute : kAttributes) {
            SCOPED_TRACE(attribute.name);
            EXPECT_EQ((link.*attribute.get)(), "");
            link.SetAttribute(attribute.name, attribute.name);
        }
        for (const auto& attribute : kAttributes) {
            SCOPED_TRACE(attribute.name);
            EXPECT_EQ((link.*attribute.get)(), attribute.name);
        }
    }
}

TEST(HTMLLinkElement, HasAttributesInTheNamespaceOfXhtmlButNoOther) {
    for (const auto& attribute : kAttributes) {
        SCOPED_TRACE(attribute.name);
        Dom::HTMLDocument page;
        HTMLLinkElement link("urn:other", "link", &page);
        link.SetAttributeNS("urn:other", astring("o:") + attribute.name, "foreign");
        EXPECT_EQ((link.*attribute.get)(), "");
        link.SetAttributeNS(kXhtml, astring("h:") + attribute.name, "xhtml");
        EXPECT_EQ((link.*attribute.get)(), "xhtml");
        link.SetAttribute(attribute.name, "plain");
        EXPECT_EQ((link.*attribute.get)(), "plain");
    }
}

// An attribute may be filed under its name although it has a namespace.
TEST(HTMLLinkElement, AnAttributeThatIsFiledByItsNameCountsByItsNamespace) {
    for (const auto& attribute : kAttributes) {
        SCOPED_TRACE(attribute.name);
        Dom::HTMLDocument page;
        for (const bool isXhtml : {true, false}) {
            HTMLLinkElement link(kXhtml, "link", &page);
            Dom::Attr* const node =
                page.CreateAttributeNS(isXhtml ? kXhtml : "urn:other", attribute.name);
            node->SetValue("value");
            link.SetAttributeNode(node);
            EXPECT_EQ(link.GetAttribute(attribute.name), "value");
            EXPECT_EQ((link.*attribute.get)(), isXhtml ? "value" : "");
            link.SetAttributeNS(kXhtml, astring("h:") + attribute.name, "other");
            EXPECT_EQ((link.*attribute.get)(), isXhtml ? "value" : "other");
        }
    }
}

TEST(HTMLLinkElement, IsDisabledByItsAttribute) {
    const struct {
        const char* attributes;
        bool disabled;
    } kCases[] = {
        {"", false},
        {"disabled=''", false},
        {"disabled='yes'", true},
        {"disabled='YES'", true},
        {"disabled='Yes'", true},
        {"disabled='true'", true},
        {"disabled='TrUe'", true},
        {"disabled='1'", true},
        {"disabled='no'", false},
        {"disabled='false'", false},
        {"disabled='0'", false},
        {"disabled='11'", false},
        {"disabled='disabled'", false},
        {"disabled='yes '", false},
        {"disabled=' true'", false},
        {"disabled='y'", false},
        {"Disabled='yes'", false},
        {"xmlns:h='http://www.w3.org/1999/xhtml' h:disabled='yes'", true},
        {"xmlns:o='urn:o' o:disabled='yes'", false},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.attributes);
        Link link(std::string("type='text/css' ") + c.attributes);
        EXPECT_EQ(link->Disabled(), c.disabled);
        const CSSStyleSheet* const sheet = link.Create("p { color: red }");
        ASSERT_NE(sheet, nullptr);
        EXPECT_EQ(sheet->Disabled(), c.disabled);
    }
}

TEST(HTMLLinkElement, MakesASheetOfItsTypeAlone) {
    const struct {
        const char* attributes;
        bool makesSheet;
    } kCases[] = {
        {"type='text/css'", true},
        {"", false},
        {"type=''", false},
        {"type='text/CSS'", false},
        {"type='TEXT/CSS'", false},
        {"type=' text/css'", false},
        {"type='text/css '", false},
        {"type='text/css; charset=utf-8'", false},
        {"type='text/xsl'", false},
        {"xmlns:h='http://www.w3.org/1999/xhtml' h:type='text/css'", true},
        {"xmlns:o='urn:o' o:type='text/css'", false},
        // What the link is for is not looked at.
        {"type='text/css' rel='icon'", true},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.attributes);
        Link link(c.attributes);
        const CSSStyleSheet* const sheet = link.Create("p { color: red }");
        EXPECT_EQ(Rules(sheet), c.makesSheet ? "[p { color: red }]" : "null");
        EXPECT_EQ(link->Sheet(), sheet);
    }
}

TEST(HTMLLinkElement, TheSheetHasWhatTheLinkSays) {
    Link link("type='text/css' href='a/b.css' title='t' media='screen, print' charset='UTF-8'");
    CSSStyleSheet* const sheet = link.Create("p { color: red }");
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(sheet->Type(), "text/css");
    EXPECT_EQ(sheet->OwnerNode(), link.operator->());
    EXPECT_EQ(sheet->ParentStyleSheet(), nullptr);
    EXPECT_EQ(sheet->Href(), "a/b.css");
    EXPECT_EQ(sheet->Title(), "");
    EXPECT_EQ(sheet->GetMediaList().MediaText(), "screen, print");
    EXPECT_EQ(sheet->OwnerRule(), nullptr);
    EXPECT_EQ(sheet->Origin(), Dom::CSS::CSSRule::Author);
    EXPECT_EQ(static_cast<int>(sheet->Origin()), 0);
    EXPECT_FALSE(sheet->Disabled());
    EXPECT_EQ(sheet->CssRules().Item(0)->ParentStyleSheet(), sheet);
    EXPECT_EQ(sheet->CssRules().Item(0)->ParentRule(), nullptr);
    // It is not put into a list.
    EXPECT_EQ(link.Page().StyleSheets().Length(), 0U);
}

TEST(HTMLLinkElement, WithoutMediaTheSheetHasNone) {
    Link link("type='text/css' media=''");
    EXPECT_TRUE(link.Create("")->GetMediaList().IsEmpty());
}

TEST(HTMLLinkElement, LeavesOutWhatTheSheetRefuses) {
    for (const auto& c : support::kSheetCases) {
        SCOPED_TRACE(c.text);
        Link link("type='text/css' charset='UTF-8'");
        EXPECT_EQ(Rules(link.Create(c.text)), c.rules);
    }
}

TEST(HTMLLinkElement, TheCharsetNamesTheEncoding) {
    for (const support::CharsetCase& c : support::CharsetCases()) {
        SCOPED_TRACE(c.charset);
        Link link(std::string("type='text/css' charset='") + c.charset + "'");
        EXPECT_EQ(Rules(link.Create(c.bytes)), c.rules);
    }
}

TEST(HTMLLinkElement, WithoutAStreamTheSheetHasNoRules) {
    Link link("type='text/css'");
    const CSSStyleSheet* const sheet = link->CreateStyleSheet(nullptr);
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(sheet->CssRules().Length(), 0U);
    EXPECT_EQ(link->Sheet(), sheet);
}

TEST(HTMLLinkElement, AStreamThatThrowsEndsTheSheet) {
    const std::string text = "p { a: b }" + std::string(1100, ' ') + "q { c: d }";
    IO::MemoryStream memory = StreamOf(text);
    support::FailingStream stream(memory, 2, support::Failure::Throw);
    Link link("type='text/css' charset='UTF-8'");
    EXPECT_EQ(Rules(link->CreateStyleSheet(&stream)), "[p { a: b }]");
    EXPECT_TRUE(stream.HasFailed());
}

TEST(HTMLLinkElement, AnotherSheetTakesThePlaceOfTheOneBefore) {
    Link link("type='text/css' charset='UTF-8'");
    Dom::StyleSheets::StyleSheetListImpl& list = link.Page().StyleSheets();
    list.AddItem(link.Create("p { a: b }"));
    CSSStyleSheet* const second = link.Create("q { c: d }");
    EXPECT_EQ(link->Sheet(), second);
    EXPECT_EQ(Rules(second), "[q { c: d }]");
    EXPECT_EQ(list.Length(), 0U);  // the first one is deleted
    list.AddItem(second);
    EXPECT_EQ(list.Length(), 1U);
}

TEST(HTMLLinkElement, TheSheetBeforeIsDeletedAlsoWhenTheTypeIsRefused) {
    Link link("type='text/css'");
    link.Page().StyleSheets().AddItem(link.Create("p { a: b }"));
    link->SetAttribute("type", "text/xsl");
    EXPECT_EQ(link.Create("p { a: b }"), nullptr);
    EXPECT_EQ(link->Sheet(), nullptr);
    EXPECT_EQ(link.Page().StyleSheets().Length(), 0U);
}

TEST(HTMLLinkElement, ACloneHasNoSheet) {
    Link link("type='text/css' href='a.css'");
    link.Create("p { a: b }");
    const std::unique_ptr<Dom::Node> clone(link->CloneNode(true));
    HTMLLinkElement* const copy = support::AsLink(clone.get());
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->Href(), "a.css");
    EXPECT_EQ(copy->Sheet(), nullptr);
    EXPECT_NE(link->Sheet(), nullptr);
}

TEST(HTMLLinkElement, AnswersToTheNamesOfItsClasses) {
    Dom::HTMLDocument page;
    HTMLLinkElement link(kXhtml, "link", &page);
    Dom::Node* const node = &link;
    Dom::StyleSheets::LinkStyle* const keeper = &link;
    Dom::CSS::ElementCSSInlineStyle* const style = &link;
    for (const char* const name :
         {"Dom::HTMLLinkElement", "Dom::HTMLElement", "Dom::Element", "Dom::Node"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(node->QueryInterface(name), node);
        EXPECT_EQ(keeper->QueryInterface(name), node);
        EXPECT_EQ(style->QueryInterface(name), node);
    }
    EXPECT_EQ(node->QueryInterface("Dom::StyleSheets::LinkStyle"), keeper);
    EXPECT_EQ(node->QueryInterface("Dom::CSS::ElementCSSInlineStyle"), style);
    EXPECT_EQ(node->QueryInterface("Dom::HTMLStyleElement"), nullptr);
}
