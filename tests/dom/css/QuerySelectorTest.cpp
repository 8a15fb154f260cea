// SPDX-License-Identifier: MIT

// Queries over trees, namespaces in selectors, and where a selector goes wrong.

#include <espalier/dom/Document.h>
#include <espalier/dom/css/QuerySelector.h>
#include <espalier/dom/css/SelectorException.h>

#include "dom/DomNodes.h"
#include "dom/ExpectDomError.h"
#include "dom/css/Matching.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Dom::Document;
using Dom::Element;
using Dom::Node;
using Dom::CSS::Closest;
using Dom::CSS::Matches;
using Dom::CSS::NamespacePrefixes;
using Dom::CSS::QuerySelector;
using Dom::CSS::QuerySelectorAll;
using Dom::CSS::Selector;

constexpr char kList[] =
    "<r n='0'><ul n='1'><li n='2'><b n='3'/></li><!-- c --><li n='4' class='k'>t<ul n='5'>"
    "<li n='6'/></ul></li></ul><p n='7'><b n='8'/></p></r>";

// The labels of elements, with blanks between them.
template <typename ElementPointer>
std::string Labels(const std::vector<ElementPointer>& elements) {
    std::string labels;
    for (const Element* const element : elements)
        labels += (labels.empty() ? "" : " ") + element->GetAttribute("n").str();
    return labels;
}

std::string Label(const Element* element) {
    return element == nullptr ? "none" : element->GetAttribute("n").str();
}

Element& ElementAt(Document& document, const char* label) {
    return *QuerySelector(document, std::string("[n='") + label + "']");
}

}  // namespace

TEST(QuerySelector, FindsWhatIsBelowInDocumentOrder) {
    Document document;
    document.LoadXml(kList);
    const struct {
        const char* root;  // null for the document
        const char* selector;
        const char* all;
    } kCases[] = {
        {nullptr, "*", "0 1 2 3 4 5 6 7 8"},
        {nullptr, "r", "0"},
        {nullptr, "b, li", "2 3 4 6 8"},
        {nullptr, "li li", "6"},
        {nullptr, "none", ""},
        {"0", "r", ""},
        {"0", "r > p", "7"},
        {"1", "*", "2 3 4 5 6"},
        {"1", "ul", "5"},
        // What stands above counts in a selector.
        {"1", "r li", "2 4 6"},
        {"4", "ul > li", "6"},
        {"4", ":root li", "6"},
        {"5", ".k li", "6"},
        {"7", "b:first-child", "8"},
        {"3", "*", ""},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.selector);
        Node& root = c.root == nullptr ? static_cast<Node&>(document) : ElementAt(document, c.root);
        const Node& constRoot = root;
        EXPECT_EQ(Labels(QuerySelectorAll(root, c.selector)), c.all);
        EXPECT_EQ(Labels(QuerySelectorAll(constRoot, c.selector)), c.all);
        const std::string all = c.all;
        const std::string first = all.empty() ? "none" : all.substr(0, all.find(' '));
        EXPECT_EQ(Label(QuerySelector(root, c.selector)), first);
        EXPECT_EQ(Label(QuerySelector(constRoot, c.selector)), first);
        const Selector selector(c.selector);
        EXPECT_EQ(Label(QuerySelector(root, selector)), first);
        EXPECT_EQ(Labels(QuerySelectorAll(constRoot, selector)), c.all);
    }
}

TEST(QuerySelector, AsksOneNodeOrThoseAbove) {
    Document document;
    document.LoadXml(kList);
    Element& inner = ElementAt(document, "6");
    EXPECT_TRUE(Matches(inner, "li li"));
    EXPECT_FALSE(Matches(inner, "b"));
    EXPECT_FALSE(Matches(document, "*"));
    EXPECT_FALSE(Matches(*ElementAt(document, "4").FirstChild(), "*"));
    const Node& text = *ElementAt(document, "4").FirstChild();
    EXPECT_EQ(Label(Closest(inner, "li")), "6");
    EXPECT_EQ(Label(Closest(inner, "ul")), "5");
    EXPECT_EQ(Label(Closest(inner, ".k")), "4");
    EXPECT_EQ(Label(Closest(inner, "r > ul")), "1");
    EXPECT_EQ(Label(Closest(inner, "p")), "none");
    EXPECT_EQ(Label(Closest(text, "*")), "4");
    EXPECT_EQ(Label(Closest(document, "*")), "none");
    EXPECT_EQ(Label(Closest(inner, Selector("ul"))), "5");
}

TEST(QuerySelector, NodesWithoutADocumentAreSearched) {
    Document document;
    document.LoadXml(kList);
    Element& list = ElementAt(document, "1");
    const Dom::NodePtr taken(list.ParentNode()->RemoveChild(&list));
    EXPECT_EQ(Labels(QuerySelectorAll(list, "li")), "2 4 6");
    EXPECT_EQ(Labels(QuerySelectorAll(list, "r li")), "");
    EXPECT_EQ(Labels(QuerySelectorAll(document, "li")), "");
}

TEST(QuerySelector, LooksAtTrueLinks) {
    Document document;
    Element* const root = support::AddElement(document, "r");
    Element* const last = support::AddElement(*root, "b");
    Element* const first = document.CreateElement("a");
    root->InsertBefore(first, last);
    const std::vector<Element*> expected{first, last};
    EXPECT_EQ(QuerySelectorAll(*root, "*"), expected);
    EXPECT_EQ(QuerySelector(*root, "a + b"), last);
}

TEST(QuerySelector, DepthCostsNoStack) {
    Document document;
    Element* at = support::AddElement(document, "r");
    for (int i = 0; i < 200'000; ++i)
        at = support::AddElement(*at, "d");
    EXPECT_EQ(QuerySelectorAll(document, "d").size(), 200'000U);
    EXPECT_EQ(Closest(*at, "r"), document.DocumentElement());
}

// The results are those of cssselect2, too, but for two things: it has no "[*|k]", and the default
// namespace does not count for ".c", although Selectors Level 3 section 6.2 implies "*" there.
TEST(QuerySelector, NamespacesHavePrefixes) {
    Document document;
    document.LoadXml(
        "<r n='0' xmlns:s='urn:s' xmlns:t='urn:t'><a n='1' k='v'/><s:a n='2' s:k='v'/>"
        "<a xmlns='urn:t' n='3' s:k='v' t:k='w'/><t:b n='4' class='c'/><b n='5' class='c'/></r>");
    const NamespacePrefixes prefixes = {{"x", "urn:s"}, {"y", "urn:t"}, {"n", ""}};
    NamespacePrefixes withDefault = prefixes;
    withDefault.push_back({"", "urn:t"});
    const struct {
        const char* selector;
        const char* all;
        const char* allWithDefault;
    } kCases[] = {
        {"a", "1 2 3", "3"},
        {"*|a", "1 2 3", "1 2 3"},
        {"|a", "1", "1"},
        {"n|a", "1", "1"},
        {"x|a", "2", "2"},
        {"y|a", "3", "3"},
        {"y|*", "3 4", "3 4"},
        {"*|*", "0 1 2 3 4 5", "0 1 2 3 4 5"},
        {"|*", "0 1 5", "0 1 5"},
        {"*", "0 1 2 3 4 5", "3 4"},
        {".c", "4 5", "4"},
        {"*|*.c", "4 5", "4 5"},
        {"y|b.c", "4", "4"},
        {"r > x|a", "2", ""},
        {"|r > x|a", "2", "2"},
        {"x|a + y|a", "3", "3"},
        {"*|*:not(x|a)", "0 1 3 4 5", "0 1 3 4 5"},
        {"*|*:not(.c)", "0 1 2 3", "0 1 2 3"},
        {"*|*:not(a)", "0 4 5", "0 1 2 4 5"},
        {"*|*:not(*)", "", "0 1 2 5"},
        {"*|*[k]", "1", "1"},
        {"*|*[|k]", "1", "1"},
        {"*|*[x|k]", "2 3", "2 3"},
        {"*|*[ x|k = v ]", "2 3", "2 3"},
        {"*|*[y|k='v']", "", ""},
        {"*|*[*|k]", "1 2 3", "1 2 3"},
        {"*|*[*|k=w]", "3", "3"},
        {"*|*[*|k|=w]", "3", "3"},
        {"*|*[k|=v]", "1", "1"},
        {"*|*[n|k]", "1", "1"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.selector);
        EXPECT_EQ(Labels(QuerySelectorAll(document, Selector(c.selector, prefixes))), c.all);
        EXPECT_EQ(Labels(QuerySelectorAll(document, Selector(c.selector, withDefault))),
                  c.allWithDefault);
    }
    for (const char* const unknown : {"z|a", "[z|k]", "*:not(z|a)", "X|a", "a, z|*"})
        EXPECT_DOM_ERROR(Selector(unknown, prefixes), "12 Syntax error in selector");
    EXPECT_DOM_ERROR(QuerySelector(document, "x|a"), "12 Syntax error in selector");
    for (const char* const bad :
         {"|", "x|", "*|", "x||a", "[x|]", "[|]", "[*]", "[*|*]", "x| a", "|x|a", "[x|=]"})
        EXPECT_DOM_ERROR(Selector(bad, prefixes), "12 Syntax error in selector") << bad;
}

TEST(QuerySelector, TheLastOfEqualPrefixesCounts) {
    Document document;
    document.LoadXml("<a n='1' xmlns='urn:b'/>");
    EXPECT_EQ(Labels(QuerySelectorAll(document, Selector("p|a", {{"p", "urn:a"}, {"p", "urn:b"}}))),
              "1");
}

TEST(QuerySelector, ErrorsHaveAPlace) {
    const struct {
        const char* selector;
        std::size_t position;
    } kCases[] = {
        {"", 0},
        {"a >", 3},
        {"a b >", 5},
        {"a > > b", 4},
        {"a,,b", 2},
        {"a[", 2},
        {"a[b", 3},
        {"a[b=]", 4},
        {"a[b!=c]", 3},
        {"a:unknown b", 1},
        {"a::what", 1},
        {"p, q:what, ", 4},
        {"a:not(b", 7},
        {"a:not(:not(b))", 6},
        {"a$", 1},
        {"a{", 1},
        {"z|a", 0},
        {"a z|b", 2},
        {"a:nth-child(x)", 12},
        {".1", 1},
        {"#", 1},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.selector);
        try {
            const Selector selector(c.selector);
            FAIL() << "no error";
        } catch (const Dom::CSS::SelectorException& error) {
            EXPECT_EQ(error.Position(), c.position);
            EXPECT_EQ(error.Code(), Dom::DOMException::SYNTAX_ERR);
            EXPECT_STREQ(error.What(), "DOMException: Syntax error in selector");
        }
    }
}
