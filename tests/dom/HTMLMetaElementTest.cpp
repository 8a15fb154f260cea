// SPDX-License-Identifier: MIT
#include <espalier/dom/HTMLMetaElement.h>

#include "dom/HtmlPage.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using Dom::HTMLMetaElement;
using support::kXhtml;

const struct {
    const char* name;
    const astring& (HTMLMetaElement::*get)() const;
} kAttributes[] = {
    {"content", &HTMLMetaElement::Content},
    {"http-equiv", &HTMLMetaElement::HttpEquiv},
    {"name", &HTMLMetaElement::Name},
    {"scheme", &HTMLMetaElement::Scheme},
};

}  // namespace

TEST(HTMLMetaElement, HasAttributes) {
    Dom::HTMLDocument page;
    HTMLMetaElement meta(kXhtml, "meta", &page);
    for (const auto& attribute : kAttributes) {
        SCOPED_TRACE(attribute.name);
        EXPECT_EQ((meta.*attribute.get)(), "");
        meta.SetAttribute(attribute.name, attribute.name);
        EXPECT_EQ((meta.*attribute.get)(), attribute.name);
    }
    for (const auto& attribute : kAttributes) {
        SCOPED_TRACE(attribute.name);
        EXPECT_EQ((meta.*attribute.get)(), attribute.name);
        meta.SetAttributeNS(kXhtml, astring("h:") + attribute.name, "own");
        EXPECT_EQ((meta.*attribute.get)(), "own");
    }
}

TEST(HTMLMetaElement, AnswersToTheNamesOfItsClassesAndKeepsNoSheet) {
    Dom::HTMLDocument page;
    HTMLMetaElement meta(kXhtml, "meta", &page);
    Dom::Node* const node = &meta;
    for (const char* const name :
         {"Dom::HTMLMetaElement", "Dom::HTMLElement", "Dom::Element", "Dom::Node"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(node->QueryInterface(name), node);
    }
    EXPECT_NE(node->QueryInterface("Dom::CSS::ElementCSSInlineStyle"), nullptr);
    EXPECT_EQ(node->QueryInterface("Dom::StyleSheets::LinkStyle"), nullptr);
    EXPECT_EQ(node->QueryInterface("Dom::HTMLLinkElement"), nullptr);
}

TEST(HTMLMetaElement, ACloneIsOneToo) {
    Dom::HTMLDocument page;
    page.LoadXml("<meta xmlns='http://www.w3.org/1999/xhtml' name='n' content='c'/>");
    const std::unique_ptr<Dom::Node> clone(page.DocumentElement()->CloneNode(false));
    HTMLMetaElement* const meta = support::AsMeta(clone.get());
    ASSERT_NE(meta, nullptr);
    EXPECT_EQ(meta->Name(), "n");
    EXPECT_EQ(meta->Content(), "c");
    EXPECT_EQ(meta->OwnerDocument(), &page);
}
