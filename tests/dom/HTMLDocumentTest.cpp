// SPDX-License-Identifier: MIT
#include <espalier/dom/DOMImplementation.h>
#include <espalier/dom/DocumentType.h>
#include <espalier/dom/Element.h>
#include <espalier/dom/HTMLDocument.h>

#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using Dom::HTMLDocument;

constexpr char kXhtml[] = "http://www.w3.org/1999/xhtml";

}  // namespace

TEST(HTMLDocument, HasARootElement) {
    Dom::DOMImplementation implementation;
    const HTMLDocument document(kXhtml, "html", nullptr, &implementation);
    ASSERT_NE(document.DocumentElement(), nullptr);
    EXPECT_EQ(document.DocumentElement()->NodeName(), "html");
    EXPECT_EQ(document.DocumentElement()->NamespaceURI(), kXhtml);
    EXPECT_EQ(document.DocumentElement()->OwnerDocument(), &document);
    EXPECT_EQ(document.FirstChild(), document.LastChild());
    EXPECT_EQ(document.Implementation(), &implementation);
    EXPECT_EQ(document.Doctype(), nullptr);
    EXPECT_EQ(document.NodeName(), "#document");
    EXPECT_EQ(document.XmlVersion(), "1.0");
}

TEST(HTMLDocument, HasARootElementWithoutAName) {
    const HTMLDocument document("", "", nullptr, nullptr);
    ASSERT_NE(document.DocumentElement(), nullptr);
    EXPECT_EQ(document.DocumentElement()->NodeName(), "");
}

TEST(HTMLDocument, AnswersToTheNamesOfItsClasses) {
    HTMLDocument document(kXhtml, "html", nullptr, nullptr);
    Dom::Node* const node = &document;
    Dom::Document* const base = &document;
    EXPECT_EQ(node->QueryInterface("Dom::HTMLDocument"), &document);
    EXPECT_EQ(node->QueryInterface("Dom::Document"), base);
    EXPECT_EQ(node->QueryInterface("Dom::Node"), node);
    Dom::StyleSheets::DocumentStyle* const style = &document;
    EXPECT_EQ(node->QueryInterface("DocumentStyle"), style);
    EXPECT_EQ(node->QueryInterface("Dom::StyleSheets::DocumentStyle"), style);
    EXPECT_EQ(style->QueryInterface("Dom::HTMLDocument"), &document);
    EXPECT_EQ(node->QueryInterface("Dom::Element"), nullptr);
    Dom::Document plain;
    EXPECT_EQ(plain.QueryInterface("Dom::HTMLDocument"), nullptr);
}

TEST(HTMLDocument, ACloneHasThePropertiesAndNoChildren) {
    Dom::DOMImplementation implementation;
    HTMLDocument document(kXhtml, "html", nullptr, &implementation);
    document.LoadXml("<?xml version='1.0' encoding='utf-8' standalone='yes'?><html/>", "a/b.html");
    document.SetStrictErrorChecking(false);
    for (const bool deep : {true, false}) {
        SCOPED_TRACE(deep);
        const std::unique_ptr<Dom::Node> node(document.CloneNode(deep));
        auto* const clone = static_cast<HTMLDocument*>(node->QueryInterface("Dom::HTMLDocument"));
        ASSERT_NE(clone, nullptr);
        EXPECT_FALSE(clone->HasChildNodes());
        EXPECT_EQ(clone->OwnerDocument(), nullptr);
        EXPECT_EQ(clone->Implementation(), &implementation);
        EXPECT_EQ(clone->DocumentURI(), "a/b.html");
        EXPECT_EQ(clone->XmlEncoding(), "utf-8");
        EXPECT_EQ(clone->InputEncoding(), document.InputEncoding());
        EXPECT_EQ(clone->XmlVersion(), "1.0");
        EXPECT_TRUE(clone->XmlStandalone());
        EXPECT_FALSE(clone->StrictErrorChecking());
        EXPECT_EQ(clone->StyleSheets().Length(), 0U);
    }
}

TEST(HTMLDocument, IsMadeForTheNameHtmlAlone) {
    const struct {
        const char* uri;
        const char* name;
        bool isHtml;
    } kCases[] = {
        {kXhtml, "html", true},    {"", "html", true},  {kXhtml, "HTML", false},
        {kXhtml, "h:html", false}, {kXhtml, "", false},
    };
    Dom::DOMImplementation implementation;
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        const std::unique_ptr<Dom::Node> node(
            implementation.CreateDocument(c.uri, c.name, nullptr));
        EXPECT_EQ(node->QueryInterface("Dom::HTMLDocument") != nullptr, c.isHtml);
        ASSERT_NE(node->FirstChild(), nullptr);
        EXPECT_EQ(node->FirstChild()->NodeName(), c.name);
        EXPECT_EQ(node->FirstChild()->NamespaceURI(), c.uri);
        EXPECT_EQ(
            static_cast<Dom::Document*>(node->QueryInterface("Dom::Document"))->Implementation(),
            &implementation);
    }
}

TEST(HTMLDocument, LoadsDocuments) {
    HTMLDocument document(kXhtml, "html", nullptr, nullptr);
    document.LoadXml("<html xmlns='http://www.w3.org/1999/xhtml'><body id='b'>x</body></html>");
    ASSERT_NE(document.DocumentElement(), nullptr);
    EXPECT_EQ(document.DocumentElement()->NamespaceURI(), kXhtml);
    EXPECT_EQ(document.GetElementById("b"), document.DocumentElement()->FirstChild());
    EXPECT_EQ(document.DocumentElement()->TextContent(), "x");
}
