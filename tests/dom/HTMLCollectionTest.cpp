// SPDX-License-Identifier: MIT
#include <espalier/dom/HTMLCollection.h>

#include "dom/DomNodes.h"
#include "dom/HtmlPage.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Dom::HTMLCollection;
using Dom::HTMLDocument;

// The attributes "k" of the members, and a "!" when lists and loops tell different things.
std::string Keys(const HTMLCollection& collection) {
    std::string keys;
    std::size_t index = 0;
    for (Dom::Node* const node : collection) {
        keys += static_cast<Dom::Element*>(node)->GetAttribute("k").str();
        if (collection.Item(index++) != node) keys += "!";
    }
    if (collection.Length() != index || collection.Item(index) != nullptr) keys += "!";
    return keys;
}

std::string Key(Dom::Node* node) {
    return node == nullptr ? "-" : static_cast<Dom::Element*>(node)->GetAttribute("k").str();
}

}  // namespace

TEST(HTMLCollection, HoldsTheElementsOfAPage) {
    const struct {
        const char* body;
        const char* forms;
        const char* images;
        const char* applets;
        const char* links;
        const char* anchors;
    } kCases[] = {
        {"", "", "", "", "", ""},
        {"<form k='1'/><p><form k='2'><form k='3'/></form></p>", "123", "", "", "", ""},
        {"<FORM k='1'/><forms k='2'/>", "", "", "", "", ""},
        {"<h:form k='1' xmlns:h='urn:any'/>", "1", "", "", "", ""},
        {"<img k='1'/><image k='2'/><p><img k='3'/></p>", "", "13", "", "", ""},
        {"<applet k='1'/><object k='2'/><object k='3'><p><applet k='4'/></p></object>", "", "",
         "134", "", ""},
        {"<object k='1'><object k='2'><applet k='3'/></object><object k='4'/></object>", "", "",
         "123", "", ""},
        {"<object k='1'/><applet k='2'/><object k='3'/>", "", "", "2", "", ""},
        {"<a k='1' href=''/><a k='2'/><area k='3' href='x'/><area k='4'/><link k='5' href='x'/>",
         "", "", "", "13", ""},
        {"<a k='1' name='n'/><a k='2' name=''/><a k='3' href='x'/><area k='4' name='n'/>", "", "",
         "", "3", "12"},
        {"<a k='1' href='x' name='n'/>", "", "", "", "1", "1"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.body);
        HTMLDocument page;
        page.LoadXml(std::string("<html><body>") + c.body + "</body></html>");
        EXPECT_EQ(Keys(page.Forms()), c.forms);
        EXPECT_EQ(Keys(page.Images()), c.images);
        EXPECT_EQ(Keys(page.Applets()), c.applets);
        EXPECT_EQ(Keys(page.Links()), c.links);
        EXPECT_EQ(Keys(page.Anchors()), c.anchors);
    }
}

TEST(HTMLCollection, TheRootElementMayBeAMember) {
    HTMLDocument page;
    page.LoadXml("<form k='1'><form k='2'/></form>");
    EXPECT_EQ(Keys(page.Forms()), "12");
}

TEST(HTMLCollection, IsLive) {
    HTMLDocument page;
    page.LoadXml("<html><body><object k='o'/><a k='1'/></body></html>");
    Dom::Element* const body = page.Body();
    auto* const a = static_cast<Dom::Element*>(body->LastChild());
    const HTMLCollection links = page.Links();
    const HTMLCollection applets = page.Applets();
    const HTMLCollection& forms = page.Forms();
    EXPECT_EQ(Keys(links), "");
    a->SetAttribute("href", "x");
    EXPECT_EQ(Keys(links), "1");
    a->RemoveAttribute("href");
    EXPECT_EQ(Keys(links), "");
    EXPECT_EQ(Keys(applets), "");
    auto* const applet = page.CreateElement("applet");
    body->FirstChild()->AppendChild(applet);
    EXPECT_EQ(Keys(applets), "o");
    applet->SetAttribute("k", "p");
    EXPECT_EQ(Keys(applets), "op");
    delete applet;
    EXPECT_EQ(Keys(applets), "");
    support::AddElement(*body, "form")->SetAttribute("k", "f");
    EXPECT_EQ(Keys(forms), "f");
    page.LoadXml("<form k='g'/>");
    EXPECT_EQ(Keys(forms), "g");
}

TEST(HTMLCollection, SeesWhatInsertBeforeHidesFromOtherLists) {
    HTMLDocument page;
    page.LoadXml("<html><body><form k='1'/><form k='3'/></body></html>");
    Dom::Element* const made = page.CreateElement("form");
    made->SetAttribute("k", "2");
    page.Body()->InsertBefore(made, page.Body()->LastChild());
    EXPECT_EQ(page.GetElementsByTagName("form").Length(), 2U);
    EXPECT_EQ(Keys(page.Forms()), "123");
}

TEST(HTMLCollection, EndsWithWhatIsBelowItsRoot) {
    HTMLDocument page;
    page.LoadXml("<html><body k='b'><form k='1'/></body><form k='2'/></html>");
    const HTMLCollection below(page.Body(), HTMLCollection::Forms);
    EXPECT_EQ(Keys(below), "1");
    const HTMLCollection copy = below;
    EXPECT_EQ(Keys(copy), "1");
    const HTMLCollection empty;
    EXPECT_EQ(Keys(empty), "");
    EXPECT_EQ(empty.NamedItem("x"), nullptr);
    const HTMLCollection none(nullptr, HTMLCollection::Forms);
    EXPECT_EQ(Keys(none), "");
    HTMLDocument other;
    EXPECT_EQ(Keys(other.Forms()), "");
}

TEST(HTMLCollection, FindsMembersByIdAndThenByName) {
    HTMLDocument page;
    page.LoadXml(
        "<html xmlns='http://www.w3.org/1999/xhtml'><body>"
        "<form k='1' name='a'/><form k='2' id='a'/><form k='3' id='a'/><form k='4' name='b'/>"
        "<form k='5' name='b'/><form k='6' id='' name=''/><p k='7' id='c'/>"
        "<h:form xmlns:h='http://www.w3.org/1999/xhtml' k='8' h:id='d'/></body></html>");
    const struct {
        const char* name;
        const char* key;
    } kCases[] = {
        {"a", "2"}, {"b", "4"}, {"c", "-"}, {"d", "8"}, {"", "-"}, {"A", "-"}, {"x", "-"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(Key(page.Forms().NamedItem(c.name)), c.key);
    }
}

// Each takes its own time only, not that of the whole tree again for every object.
TEST(HTMLCollectionHostile, ObjectsInEachOtherTakeLinearTime) {
    constexpr int kDepth = 50000;
    HTMLDocument page;
    page.LoadXml("<html/>");
    Dom::Node* at = page.DocumentElement();
    for (int i = 0; i < kDepth; ++i)
        at = support::AddElement(*at, "object");
    EXPECT_EQ(page.Applets().Length(), 0U);
    for (int i = 0; i < kDepth; ++i)
        support::AddElement(*at, "applet");
    EXPECT_EQ(page.Applets().Length(), 2U * kDepth);
}
