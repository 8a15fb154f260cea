// SPDX-License-Identifier: MIT
// How a page is written piece by piece, and the styles that override those of its elements.
#include <espalier/css.h>
#include <espalier/dom.h>

#include "dom/DomNodes.h"
#include "dom/ExpectDomError.h"
#include "dom/HtmlPage.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using Dom::HTMLDocument;
using Dom::CSS::CSSStyleDeclaration;

}  // namespace

TEST(HTMLDocumentWriting, WhatIsWrittenIsLoadedInTheEnd) {
    HTMLDocument page;
    page.LoadXml("<old/>", "http://a.example/x");
    page.Open();
    EXPECT_FALSE(page.HasChildNodes());
    page.Write("<html><he");
    page.Write("ad/>");
    EXPECT_FALSE(page.HasChildNodes());
    page.Writeln("<p>a");
    page.Writeln("");
    page.Write("b</p></html>");
    page.Close();
    ASSERT_NE(page.DocumentElement(), nullptr);
    EXPECT_EQ(page.DocumentElement()->TextContent(), "a\n\nb");
    EXPECT_EQ(page.DocumentURI(), "http://a.example/x");
    EXPECT_EQ(support::ClassOf(page.DocumentElement()), "HTMLElement");
}

TEST(HTMLDocumentWriting, WritingOpensTheDocument) {
    for (const bool line : {true, false}) {
        SCOPED_TRACE(line);
        HTMLDocument page;
        page.LoadXml("<a-name-that-is-longer-than-what-a-string-keeps-inside/>");
        const astring& own = page.DocumentElement()->NodeName();
        if (line) {
            page.Writeln("<!-- -->" + own);
        } else {
            page.Write(own);  // which is destroyed
        }
        EXPECT_FALSE(page.HasChildNodes());
        EXPECT_THROW(page.Close(), Xml::Exception);
        page.Writeln("<html/>");
        page.Close();
        EXPECT_EQ(page.DocumentElement()->NodeName(), "html");
    }
}

TEST(HTMLDocumentWriting, ADocumentThatIsNotOpenIsNotClosed) {
    HTMLDocument page;
    page.LoadXml("<html/>");
    page.Close();
    EXPECT_NE(page.DocumentElement(), nullptr);
    page.Open();
    page.Write("<html/>");
    page.Close();
    page.Close();
    EXPECT_NE(page.DocumentElement(), nullptr);
}

TEST(HTMLDocumentWriting, OpeningAgainStartsAgain) {
    HTMLDocument page;
    page.Open();
    page.Write("<a/>");
    page.Open();
    page.Write("<b/>");
    page.Close();
    EXPECT_EQ(page.DocumentElement()->NodeName(), "b");
}

TEST(HTMLDocumentWriting, ClosingThrowsWhatLoadingThrows) {
    const struct {
        const char* text;
        const char* error;
    } kCases[] = {
        {"<a>", "other"},
        {"text", "other"},
        {"<?xml version='1.1'?><a/>", "9 XML version \"1.1\" not supported!"},
        {"<!-- no root -->", "other"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        HTMLDocument page;
        page.Write(c.text);
        const std::string error = support::DomErrorOf([&] { page.Close(); });
        EXPECT_EQ(error.substr(0, std::string(c.error).size()), c.error);
        // What was collected is dropped.
        EXPECT_EQ(support::DomErrorOf([&] { page.Close(); }), "");
        page.Write("<b/>");
        page.Close();
        EXPECT_EQ(page.DocumentElement()->NodeName(), "b");
    }
}

TEST(HTMLDocumentWriting, NothingWrittenIsAnEmptyText) {
    HTMLDocument empty;
    const std::string expected = support::DomErrorOf([&] { empty.LoadXml(""); });
    HTMLDocument page;
    page.LoadXml("<a/>");
    page.Open();
    EXPECT_EQ(support::DomErrorOf([&] { page.Close(); }), expected);
    EXPECT_FALSE(page.HasChildNodes());
}

TEST(HTMLDocumentWriting, OpeningDestroysNodesWithTheirSheets) {
    HTMLDocument page;
    page.LoadXml("<html xmlns='http://www.w3.org/1999/xhtml'><style>p { a: b }</style></html>");
    auto* const style = support::AsStyle(page.DocumentElement()->FirstChild());
    page.StyleSheets().AddItem(style->CreateStyleSheet());
    const Dom::NodePtr free(page.CreateElement("p"));
    page.Open();
    EXPECT_EQ(page.StyleSheets().Length(), 0U);
    EXPECT_EQ(free->NodeName(), "p");
}

TEST(HTMLDocumentWriting, ListsSeeThatTheDocumentIsEmpty) {
    HTMLDocument page;
    page.LoadXml("<html><form/></html>");
    const Dom::NodeList list = page.GetElementsByTagName("form");
    EXPECT_NE(list.Item(0), nullptr);
    EXPECT_EQ(page.Forms().Length(), 1U);
    page.Open();
    EXPECT_EQ(list.Item(0), nullptr);
    EXPECT_EQ(page.Forms().Length(), 0U);
    EXPECT_EQ(page.ChildNodes().Length(), 0U);
}

// Override styles.

TEST(HTMLDocumentOverride, IsMadeOnTheFirstCall) {
    HTMLDocument page;
    page.LoadXml("<html><p/></html>");
    Dom::Element* const p = static_cast<Dom::Element*>(page.DocumentElement()->FirstChild());
    EXPECT_EQ(page.FindOverrideStyle(*p), nullptr);
    CSSStyleDeclaration* const style = page.GetOverrideStyle(p);
    ASSERT_NE(style, nullptr);
    EXPECT_EQ(style->Length(), 0U);
    EXPECT_EQ(style->ParentRule(), nullptr);
    style->SetProperty("color", "red", "");
    EXPECT_EQ(page.GetOverrideStyle(p), style);
    EXPECT_EQ(page.FindOverrideStyle(*p), style);
    EXPECT_EQ(page.GetOverrideStyle(p)->CssText(), "color: red");
    EXPECT_EQ(support::AsHtml(p)->Style().CssText(), "");
}

TEST(HTMLDocumentOverride, EachPseudoElementHasItsOwn) {
    HTMLDocument page;
    page.LoadXml("<html/>");
    Dom::Element* const root = page.DocumentElement();
    CSSStyleDeclaration* const own = page.GetOverrideStyle(root);
    CSSStyleDeclaration* const before = page.GetOverrideStyle(root, "before");
    CSSStyleDeclaration* const after = page.GetOverrideStyle(root, "after");
    EXPECT_NE(own, before);
    EXPECT_NE(before, after);
    EXPECT_EQ(page.GetOverrideStyle(root, ""), own);
    EXPECT_EQ(page.GetOverrideStyle(root, "before"), before);
    EXPECT_EQ(page.FindOverrideStyle(*root, "after"), after);
    EXPECT_EQ(page.FindOverrideStyle(*root, "first-line"), nullptr);
}

TEST(HTMLDocumentOverride, ThereIsNoneForElementsOfOthers) {
    HTMLDocument page;
    HTMLDocument other;
    other.LoadXml("<html/>");
    EXPECT_EQ(page.GetOverrideStyle(nullptr), nullptr);
    EXPECT_EQ(page.GetOverrideStyle(other.DocumentElement()), nullptr);
    EXPECT_EQ(page.FindOverrideStyle(*other.DocumentElement()), nullptr);
}

TEST(HTMLDocumentOverride, GoesWithTheElement) {
    constexpr char kLong[] = "a-value-that-is-longer-than-what-a-string-keeps-inside";
    HTMLDocument page;
    for (int round = 0; round < 3; ++round) {
        page.LoadXml("<html><p><q/></p></html>");
        Dom::Node* const p = page.DocumentElement()->FirstChild();
        auto* const q = static_cast<Dom::Element*>(p->FirstChild());
        page.GetOverrideStyle(q)->SetProperty("a", kLong, "");
        page.GetOverrideStyle(page.DocumentElement())->SetProperty("b", kLong, "");
        // Taken out it keeps it.
        p->RemoveChild(q);
        EXPECT_EQ(page.GetOverrideStyle(q)->GetPropertyValue("a"), kLong);
        delete q;
        // An element that may lie in the same place has none.
        for (int i = 0; i < 3; ++i) {
            auto* const made = support::AddElement(*p, "r");
            EXPECT_EQ(page.FindOverrideStyle(*made), nullptr);
        }
    }
}

TEST(HTMLDocumentOverride, AnElementThatOutlivesItsDocumentIsDestroyedWithIt) {
    auto page = std::make_unique<HTMLDocument>();
    const Dom::NodePtr element(page->CreateElement("p"));
    CSSStyleDeclaration* const style =
        page->GetOverrideStyle(static_cast<Dom::Element*>(element.get()));
    style->SetProperty("a", "a-value-that-is-longer-than-what-a-string-keeps-inside", "");
    page.reset();
    EXPECT_EQ(style->Length(), 1U);
}
