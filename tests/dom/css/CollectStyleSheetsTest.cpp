// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CollectStyleSheets.h>

#include "dom/HtmlPage.h"
#include "dom/css/SheetMap.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>  // std::ref
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Dom::HTMLDocument;
using Dom::CSS::CollectedSheet;
using Dom::CSS::CollectStyleSheets;
using Dom::CSS::MissingSheet;
using support::Collected;
using support::SheetMap;

std::string Page(const std::string& content, const std::string& prolog = "") {
    return prolog + "<html xmlns='http://www.w3.org/1999/xhtml'>" + content + "</html>";
}

// What a document of each class finds.
void ExpectCollected(const std::string& xml, const std::string& expected,
                     const std::string& asked) {
    SCOPED_TRACE(xml);
    const std::unique_ptr<Dom::Document> documents[] = {std::make_unique<Dom::Document>(),
                                                        std::make_unique<HTMLDocument>()};
    for (const auto& document : documents) {
        SheetMap host{{"a.css", "p{a:b}"}, {"b.css", "q{a:b}"}};
        document->LoadXml(xml);
        EXPECT_EQ(Collected(CollectStyleSheets(*document, std::ref(host))), expected);
        EXPECT_EQ(host.Asked(), asked);
        EXPECT_EQ(document->StyleSheets().Length(), 0U);
    }
}

}  // namespace

TEST(CollectStyleSheets, FindsThemInTheOrderOfTheDocument) {
    ExpectCollected(Page("<head><style>s{a:b}</style><link rel='stylesheet' href='a.css'/></head>"
                         "<body><svg xmlns='http://www.w3.org/2000/svg'><g><style>t{a:b}</style>"
                         "</g></svg><p><link rel='stylesheet' href='b.css'/></p></body>",
                         "<?xml-stylesheet href='b.css'?><?xml-stylesheet href='a.css'?>"),
                    "b.css[q { a: b }] a.css[p { a: b }] [s { a: b }] a.css[p { a: b }] "
                    "[t { a: b }] b.css[q { a: b }]",
                    "b.css|a.css|a.css|b.css|");
}

TEST(CollectStyleSheets, OfInstructionsThoseBeforeTheRootCount) {
    const struct {
        const char* xml;
        bool counts;
    } kCases[] = {
        {"<?xml-stylesheet href='a.css' type='text/css'?><r/>", true},
        {"<?xml-stylesheet href='a.css'?><r/>", true},
        {"<?xml-stylesheet href='a.css' type=''?><r/>", true},
        {"<?xml-stylesheet href='a.css' type='TEXT/CSS'?><r/>", true},
        {"<?xml-stylesheet href='a.css' type='text/css; charset=utf-8'?><r/>", true},
        {"<?xml-stylesheet href='a.css' type=' text/css '?><r/>", true},
        {"<!-- c --><?x y?><?xml-stylesheet href='a.css'?><r/>", true},
        {"<?xml-stylesheet href='a.css#x'?><r/>", true},
        {"<?xml-stylesheet href=' a.css '?><r/>", true},
        {"<?xml-stylesheet href='&#97;.css'?><r/>", true},
        {"<?xml-stylesheet href='a.css' alternate='no'?><r/>", true},
        {"<?xml-stylesheet href='a.css' alternate='yes'?><r/>", false},
        {"<?xml-stylesheet alternate='yes' href='a.css' title='x'?><r/>", false},
        // As StyleProcessingInstruction has it.
        {"<?xml-stylesheet href='a.css' altenate='yes'?><r/>", false},
        {"<?xml-stylesheet href='a.css' type='text/xsl'?><r/>", false},
        {"<?xml-stylesheet href='a.css' type='text/cssx'?><r/>", false},
        {"<?xml-stylesheet href='#a.css'?><r/>", false},
        {"<?xml-stylesheet href=''?><r/>", false},
        {"<?xml-stylesheet type='text/css'?><r/>", false},
        {"<?xml-stylesheet?><r/>", false},
        {"<?xml-stylesheet type='text/css' &amp; href='a.css'?><r/>", false},
        {"<?XML-STYLESHEET href='a.css'?><r/>", false},
        {"<?other href='a.css'?><r/>", false},
        {"<r><?xml-stylesheet href='a.css'?></r>", false},
        {"<r/><?xml-stylesheet href='a.css'?>", false},
    };
    for (const auto& c : kCases)
        ExpectCollected(c.xml, c.counts ? "a.css[p { a: b }]" : "", c.counts ? "a.css|" : "");
}

TEST(CollectStyleSheets, OfLinksThoseToSheetsThatCountDo) {
    const struct {
        const char* attributes;
        bool counts;
    } kCases[] = {
        {"rel='stylesheet' href='a.css'", true},
        {"rel='stylesheet' type='text/css' href='a.css'", true},
        {"rel='stylesheet' type='Text/Css;x=y' href='a.css'", true},
        {"rel='stylesheet' type='' href='a.css'", true},
        {"rel='StyleSheet' href='a.css'", true},
        {"rel=' x  stylesheet\ny' href='a.css'", true},
        {"rel='stylesheet' href=' a.css\n'", true},
        {"rel='stylesheet' href='a.css#x'", true},
        {"rel='stylesheet' href='a.css' title='x'", true},
        {"rel='alternates stylesheet' href='a.css'", true},
        {"rel='alternate stylesheet' href='a.css'", false},
        {"rel='stylesheet ALTERNATE' href='a.css'", false},
        {"rel='stylesheet' href='a.css' disabled='disabled'", false},
        {"rel='stylesheet' href='a.css' disabled=''", false},
        {"rel='stylesheet' href='a.css' disabled='no'", false},
        {"rel='alternate' href='a.css'", false},
        {"rel='stylesheets' href='a.css'", false},
        {"rel='' href='a.css'", false},
        {"href='a.css'", false},
        {"rev='stylesheet' href='a.css'", false},
        {"rel='stylesheet' type='text/xsl' href='a.css'", false},
        {"rel='stylesheet' type='text' href='a.css'", false},
        {"rel='stylesheet'", false},
        {"rel='stylesheet' href=''", false},
        {"rel='stylesheet' href='  '", false},
        {"rel='stylesheet' href='#a.css'", false},
    };
    for (const auto& c : kCases) {
        ExpectCollected(Page(std::string("<link ") + c.attributes + "/>"),
                        c.counts ? "a.css[p { a: b }]" : "", c.counts ? "a.css|" : "");
    }
}

TEST(CollectStyleSheets, OfStylesTheTypeTells) {
    const struct {
        const char* element;
        const char* expected;
    } kCases[] = {
        {"<style>p{a:b}</style>", "[p { a: b }]"},
        {"<style type='text/css'>p{a:b}</style>", "[p { a: b }]"},
        {"<style type='TEXT/css ; x=y'>p{a:b}</style>", "[p { a: b }]"},
        {"<style type=''>p{a:b}</style>", "[p { a: b }]"},
        {"<style type='text/xsl'>p{a:b}</style>", ""},
        {"<style disabled='disabled'>p{a:b}</style>", "[p { a: b }]"},
        {"<style disabled='yes'>p{a:b}</style>", ""},
        {"<style/>", "[]"},
        {"<style><![CDATA[p > q{a:b}]]></style>", "[p > q { a: b }]"},
        {"<style>p{<!-- x:y; -->a:b<i>;c:d</i>}</style>", "[p { a: b }]"},
        {"<style>p::before{a:b}q{c red;d:e}</style>", "[p::before { a: b } | q { d: e }]"},
    };
    for (const auto& c : kCases)
        ExpectCollected(Page(c.element), c.expected, "");
}

TEST(CollectStyleSheets, ElementsCountByTheirNamespace) {
    const struct {
        const char* xml;
        const char* expected;
    } kCases[] = {
        {"<h:html xmlns:h='http://www.w3.org/1999/xhtml'><h:style>p{a:b}</h:style></h:html>",
         "[p { a: b }]"},
        {"<x><h:style xmlns:h='http://www.w3.org/1999/xhtml' h:type='text/xsl'>p{a:b}</h:style>"
         "</x>",
         ""},
        {"<svg xmlns='http://www.w3.org/2000/svg'><style>p{a:b}</style></svg>", "[p { a: b }]"},
        {"<svg xmlns='http://www.w3.org/2000/svg'><link rel='stylesheet' href='a.css'/></svg>", ""},
        {"<html><style>p{a:b}</style></html>", "[p { a: b }]"},
        {"<html><link rel='stylesheet' href='a.css'/></html>", "a.css[p { a: b }]"},
        {"<html><svg xmlns='http://www.w3.org/2000/svg'><style>p{a:b}</style></svg></html>",
         "[p { a: b }]"},
        {"<page><style>p{a:b}</style></page>", ""},
        {"<svg><style>p{a:b}</style></svg>", ""},
        {"<html xmlns='x'><style>p{a:b}</style></html>", ""},
        {"<html xmlns='http://www.w3.org/1999/xhtml'><style xmlns=''>p{a:b}</style></html>", ""},
        {"<html xmlns='http://www.w3.org/1999/xhtml'><STYLE>p{a:b}</STYLE></html>", ""},
        {"<HTML><style>p{a:b}</style></HTML>", ""},
    };
    for (const auto& c : kCases) {
        ExpectCollected(c.xml, c.expected,
                        std::string(c.expected).starts_with("a.css") ? "a.css|" : "");
    }
}

TEST(CollectStyleSheets, AnEmptyDocumentHasNone) {
    const Dom::Document document;
    std::vector<MissingSheet> missing;
    EXPECT_TRUE(CollectStyleSheets(document, {}, &missing).empty());
    EXPECT_TRUE(missing.empty());
}

TEST(CollectStyleSheets, ASheetTellsWhoseItIs) {
    SheetMap host{{"http://h/d/a.css", "@import 'c.css' tv; p{a:b}"}, {"http://h/d/c.css", ""}};
    HTMLDocument page;
    page.LoadXml(Page("<link rel='stylesheet' href='a.css' title='t' media='print'/>"
                      "<style title='u' media='screen'>p{a:b}</style>",
                      "<?xml-stylesheet href='a.css' title='v' media='tv'?>"),
                 "http://h/d/page.html");
    const std::vector<CollectedSheet> sheets = CollectStyleSheets(page, std::ref(host));
    ASSERT_EQ(sheets.size(), 5U);
    Dom::Node* const link = page.DocumentElement()->FirstChild();
    const struct {
        std::size_t index;
        Dom::Node* owner;
        const char* href;
        const char* title;
        const char* media;
    } kCases[] = {
        {0, nullptr, "http://h/d/c.css", "", ""},
        {1, page.FirstChild(), "http://h/d/a.css", "v", "tv"},
        {2, nullptr, "http://h/d/c.css", "", ""},
        {3, link, "http://h/d/a.css", "t", "print"},
        {4, link->NextSibling(), "http://h/d/page.html", "u", "screen"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.index);
        const Dom::CSS::CSSStyleSheet& sheet = *sheets[c.index].sheet;
        EXPECT_EQ(sheet.OwnerNode(), c.owner);
        EXPECT_EQ(sheet.Href(), c.href);
        EXPECT_EQ(sheet.Title(), c.title);
        EXPECT_EQ(sheet.GetMediaList().MediaText(), c.media);
        EXPECT_EQ(sheet.Type(), "text/css");
        EXPECT_EQ(sheet.Origin(), Dom::CSS::CSSRule::Author);
        EXPECT_FALSE(sheet.Disabled());
        const bool isImported = c.owner == nullptr;
        EXPECT_EQ(sheet.ParentStyleSheet(), isImported ? sheets[c.index + 1].sheet.get() : nullptr);
        EXPECT_EQ(sheet.OwnerRule(),
                  isImported ? sheets[c.index + 1].sheet->CssRules().Item(0) : nullptr);
    }
}

TEST(CollectStyleSheets, AddressesAreRelativeToTheDocument) {
    const struct {
        const char* uri;
        const char* href;
        const char* address;
    } kCases[] = {
        {"http://h.example/a/b.html", "c.css", "http://h.example/a/c.css"},
        {"http://h.example/a/b.html", "../c.css", "http://h.example/c.css"},
        {"http://h.example/a/b.html", "//o/c.css", "http://o/c.css"},
        {"http://h.example/a/b.html", "?c", "http://h.example/a/b.html?c"},
        {"http://h.example/a/b.html", "https://o.example/c.css", "https://o.example/c.css"},
        {"dir/page.xhtml", "./c.css", "dir/c.css"},
        {"", "c.css", "c.css"},
        {"dir/page.xhtml", "data:text/css,p{a:b}", "data:text/css,p{a:b}"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(std::string(c.uri) + " " + c.href);
        SheetMap host{};
        HTMLDocument page;
        page.LoadXml(Page(std::string("<link rel='stylesheet' href='") + c.href + "'/>",
                          std::string("<?xml-stylesheet href='") + c.href + "'?>"),
                     c.uri);
        std::vector<MissingSheet> missing;
        EXPECT_TRUE(CollectStyleSheets(page, std::ref(host), &missing).empty());
        EXPECT_EQ(host.Asked(), std::string(c.address) + "|" + c.address + "|");
        ASSERT_EQ(missing.size(), 2U);
        EXPECT_EQ(missing[0].address, c.address);
        EXPECT_EQ(missing[0].reason, "Not found");
    }
}

TEST(CollectStyleSheets, ABaseCountsForWhatStandsBehindIt) {
    SheetMap host{};
    HTMLDocument page;
    page.LoadXml(Page("<link rel='stylesheet' href='a.css'/><base target='x'/><base href=' d/ '/>"
                      "<link rel='stylesheet' href='b.css'/><style>@import 'c.css';</style>"
                      "<base href='e/'/><link rel='stylesheet' href='d.css'/>",
                      "<?xml-stylesheet href='i.css'?>"),
                 "http://h/p.html");
    const std::vector<CollectedSheet> sheets = CollectStyleSheets(page, std::ref(host));
    EXPECT_EQ(host.Asked(),
              "http://h/i.css|http://h/a.css|http://h/d/b.css|http://h/d/c.css|http://h/d/d.css|");
    ASSERT_EQ(sheets.size(), 1U);
    EXPECT_EQ(sheets[0].sheet->Href(), "http://h/d/");
}

TEST(CollectStyleSheets, XmlBaseAndForeignBasesAreNotLookedAt) {
    SheetMap host{};
    HTMLDocument page;
    page.LoadXml(
        "<html xmlns='http://www.w3.org/1999/xhtml' xml:base='http://o/'>"
        "<base xmlns='' href='d/'/><link rel='stylesheet' href='a.css'/></html>",
        "http://h/p.html");
    CollectStyleSheets(page, std::ref(host));
    EXPECT_EQ(host.Asked(), "http://h/a.css|");
}

TEST(CollectStyleSheets, WithoutAHostThereAreStylesAlone) {
    HTMLDocument page;
    page.LoadXml(
        Page("<link rel='stylesheet' href='l.css'/>"
             "<style>@import 'm.css'; p{a:b}</style>",
             "<?xml-stylesheet href='i.css'?>"));
    std::vector<MissingSheet> missing;
    EXPECT_EQ(Collected(CollectStyleSheets(page, {}, &missing)),
              "[@import \"m.css\"; | p { a: b }]");
    EXPECT_EQ(support::Missing(missing), "i.css Not found, l.css Not found, m.css Not found");
    EXPECT_EQ(CollectStyleSheets(page).size(), 1U);
}

TEST(CollectStyleSheets, TheDocumentKeepsItsOwn) {
    HTMLDocument page;
    page.LoadXml(Page("<style>p{a:b}</style>"));
    Dom::CSS::LoadStyleSheets(page, {});
    const Dom::StyleSheets::StyleSheet* const own = page.StyleSheets().Item(0);
    const std::vector<CollectedSheet> sheets = CollectStyleSheets(page);
    EXPECT_EQ(page.StyleSheets().Length(), 1U);
    EXPECT_EQ(support::AsStyle(page.DocumentElement()->FirstChild())->Sheet(), own);
    EXPECT_NE(sheets[0].sheet.get(), own);
}

TEST(CollectStyleSheets, SheetsMayOutliveTheDocument) {
    auto page = std::make_unique<HTMLDocument>();
    page->LoadXml(Page("<style>p{a:b}</style>"));
    const std::vector<CollectedSheet> sheets = CollectStyleSheets(*page);
    page.reset();
    EXPECT_EQ(Collected(sheets), "[p { a: b }]");
}

TEST(CollectStyleSheets, WhatTheHostThrowsPasses) {
    HTMLDocument page;
    page.LoadXml(Page("<style>p{a:b}</style><link rel='stylesheet' href='a.css'/>"));
    for (const std::string failing : {"a.css", "b.css", "c.css"}) {
        SCOPED_TRACE(failing);
        const auto host = [&failing](const astring& address,
                                     const astring&) -> std::optional<astring> {
            if (address == failing) throw std::runtime_error("offline");
            return address == "a.css" ? "@import 'b.css'; @import 'c.css';" : "p{a:b}";
        };
        std::vector<MissingSheet> missing;
        EXPECT_THROW(CollectStyleSheets(page, host, &missing), std::runtime_error);
        EXPECT_TRUE(missing.empty());
    }
}
