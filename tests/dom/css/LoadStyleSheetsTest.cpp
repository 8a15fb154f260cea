// SPDX-License-Identifier: MIT
#include <espalier/dom/css/LoadStyleSheets.h>
#include <espalier/io/FileMode.h>
#include <espalier/io/FileStream.h>

#include "dom/HtmlPage.h"
#include "dom/css/SheetMap.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <functional>  // std::ref
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Dom::HTMLDocument;
using Dom::CSS::CSSStyleSheet;
using Dom::CSS::LoadStyleSheets;
using support::SheetMap;

// The rules of the sheets of a document, "-" before those that are disabled.
std::string Sheets(Dom::Document& document) {
    std::string text;
    for (Dom::StyleSheets::StyleSheet* const sheet : document.StyleSheets()) {
        if (sheet->Disabled()) text += "-";
        text += support::Rules(
            static_cast<CSSStyleSheet*>(sheet->QueryInterface("Dom::CSS::CSSStyleSheet")));
    }
    return text;
}

std::string Page(const std::string& prolog, const std::string& content) {
    return prolog + "<html xmlns='http://www.w3.org/1999/xhtml'>" + content + "</html>";
}

// What a file beside a sample holds.
std::optional<astring> ReadSample(const astring& address, const astring& encoding) {
    EXPECT_EQ(encoding, "UTF-8");
    IO::FileStream file(address, IO::FileMode::Open, 1, 1);
    astring bytes;
    for (int byte = file.ReadByte(); byte >= 0; byte = file.ReadByte())
        bytes += static_cast<char>(byte);
    return bytes;
}

}  // namespace

TEST(LoadStyleSheets, MakesAllInTheOrderOfTheDocument) {
    SheetMap host{{"i.css", "i { a: b }"}, {"l.css", "l { a: b }"}, {"m.css", "m { a: b }"}};
    HTMLDocument page;
    page.LoadXml(Page("<?xml-stylesheet href='i.css' type='text/css'?>",
                      "<head><style>s { a: b }</style><link rel='stylesheet' type='text/css' "
                      "href='l.css'/></head><body><p><style>t { a: b }</style></p>"
                      "<link rel='stylesheet' type='text/css' href='m.css'/></body>"));
    LoadStyleSheets(page, std::ref(host));
    EXPECT_EQ(Sheets(page), "[i { a: b }][s { a: b }][l { a: b }][t { a: b }][m { a: b }]");
    EXPECT_EQ(host.Asked(), "i.css|l.css|m.css|");
    auto* const instruction = support::AsInstruction(page.FirstChild());
    EXPECT_EQ(page.StyleSheets().Item(0), instruction->Sheet());
}

TEST(LoadStyleSheets, OfLinksSomeAreToStyleSheets) {
    const struct {
        const char* attributes;
        const char* asked;
        const char* sheets;
    } kCases[] = {
        {"rel='stylesheet' type='text/css' href='a.css'", "a.css|", "[p { a: b }]"},
        {"rel='StyleSheet' type='text/css' href='a.css'", "a.css|", "[p { a: b }]"},
        {"rel=' x  stylesheet\ny' type='text/css' href='a.css'", "a.css|", "[p { a: b }]"},
        {"rel='alternate stylesheet' type='text/css' href='a.css'", "a.css|", "-[p { a: b }]"},
        {"rel='stylesheet ALTERNATE' type='text/css' href='a.css'", "a.css|", "-[p { a: b }]"},
        {"rel='stylesheet' type='text/css' href='a.css' disabled='yes'", "a.css|", "-[p { a: b }]"},
        {"rel='stylesheet' type='text/css' href='a.css' charset='UTF-8'", "a.css in UTF-8|",
         "[p { a: b }]"},
        {"rel='stylesheet' type='text/css' href='a.css#x'", "a.css|", "[p { a: b }]"},
        {"rel='stylesheet' type='text/css' href='none.css'", "none.css|", ""},
        {"rel='alternate' type='text/css' href='a.css'", "", ""},
        {"rel='stylesheets' type='text/css' href='a.css'", "", ""},
        {"rel='' type='text/css' href='a.css'", "", ""},
        {"type='text/css' href='a.css'", "", ""},
        {"rel='icon' type='text/css' href='a.css'", "", ""},
        {"rev='stylesheet' type='text/css' href='a.css'", "", ""},
        {"rel='stylesheet' href='a.css'", "", ""},
        {"rel='stylesheet' type='text/xsl' href='a.css'", "", ""},
        {"rel='stylesheet' type='text/css'", "", ""},
        {"rel='stylesheet' type='text/css' href=''", "", ""},
        {"rel='stylesheet' type='text/css' href='#a.css'", "", ""},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.attributes);
        SheetMap host{{"a.css", "p { a: b }"}};
        HTMLDocument page;
        page.LoadXml(Page("", std::string("<link ") + c.attributes + "/>"));
        LoadStyleSheets(page, std::ref(host));
        EXPECT_EQ(host.Asked(), c.asked);
        EXPECT_EQ(Sheets(page), c.sheets);
    }
}

TEST(LoadStyleSheets, OfInstructionsThoseBeforeTheRootCount) {
    const struct {
        const char* xml;
        const char* sheets;
    } kCases[] = {
        {"<?xml-stylesheet href='a.css' type='text/css'?><r/>", "[p { a: b }]"},
        {"<!-- c --><?x y?><?xml-stylesheet type='text/css' href='a.css'?><r/>", "[p { a: b }]"},
        {"<?xml-stylesheet href='a.css' type='text/css' altenate='yes'?><r/>", "-[p { a: b }]"},
        {"<?xml-stylesheet href='a.css' type='text/css'?>"
         "<?xml-stylesheet href='a.css' type='text/css'?><r/>",
         "[p { a: b }][p { a: b }]"},
        {"<?xml-stylesheet href='a.css' type='text/xsl'?><r/>", ""},
        {"<?xml-stylesheet href='#a' type='text/css'?><r/>", ""},
        {"<?xml-stylesheet type='text/css'?><r/>", ""},
        {"<?other href='a.css' type='text/css'?><r/>", ""},
        {"<r><?xml-stylesheet href='a.css' type='text/css'?></r>", ""},
        {"<r/><?xml-stylesheet href='a.css' type='text/css'?>", ""},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.xml);
        SheetMap host{{"a.css", "p { a: b }"}};
        Dom::Document plain;
        plain.LoadXml(c.xml);
        LoadStyleSheets(plain, std::ref(host));
        EXPECT_EQ(Sheets(plain), c.sheets);
        HTMLDocument page;
        page.LoadXml(c.xml);
        LoadStyleSheets(page, std::ref(host));
        EXPECT_EQ(Sheets(page), c.sheets);
    }
}

TEST(LoadStyleSheets, ElementsOfOtherDocumentsMakeNone) {
    Dom::Document plain;
    plain.LoadXml(Page("", "<style>p { a: b }</style>"));
    LoadStyleSheets(plain, nullptr);
    EXPECT_EQ(Sheets(plain), "");
}

TEST(LoadStyleSheets, OfStylesThoseOfAnotherTypeCountForNothing) {
    HTMLDocument page;
    page.LoadXml(Page("",
                      "<style type='text/xsl'>p { a: b }</style>"
                      "<style disabled='1'>q { a: b }</style><style/>"
                      "<meta name='x' content='y'/>"));
    LoadStyleSheets(page, nullptr);
    EXPECT_EQ(Sheets(page), "-[q { a: b }]");
    EXPECT_EQ(page.StyleSheets().Length(), 2U);
}

TEST(LoadStyleSheets, AddressesAreRelativeToTheDocument) {
    const struct {
        const char* uri;
        const char* href;
        const char* address;
    } kCases[] = {
        {"http://h.example/a/b.html", "c.css", "http://h.example/a/c.css"},
        {"http://h.example/a/b.html", "../c.css", "http://h.example/c.css"},
        {"http://h.example/a/b.html", "/c.css", "http://h.example/c.css"},
        {"http://h.example/a/b.html", "https://o.example/c.css", "https://o.example/c.css"},
        {"dir/page.xhtml", "c.css", "dir/c.css"},
        {"page.xhtml", "c.css", "c.css"},
        {"", "c.css", "c.css"},
        {"dir/page.xhtml", "data:text/css,p{a:b}", "data:text/css,p{a:b}"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(std::string(c.uri) + " " + c.href);
        SheetMap host{};
        HTMLDocument page;
        page.LoadXml(
            Page(std::string("<?xml-stylesheet type='text/css' href='") + c.href + "'?>",
                 std::string("<link rel='stylesheet' type='text/css' href='") + c.href + "'/>"),
            c.uri);
        LoadStyleSheets(page, std::ref(host));
        EXPECT_EQ(host.Asked(), std::string(c.address) + "|" + c.address + "|");
        EXPECT_EQ(Sheets(page), "");
    }
}

TEST(LoadStyleSheets, TheSheetHasTheAddressAsItIsWritten) {
    SheetMap host{{"dir/c.css", ""}};
    Dom::Document document;
    document.LoadXml("<?xml-stylesheet type='text/css' href='./c.css'?><r/>", "dir/a.xml");
    LoadStyleSheets(document, std::ref(host));
    ASSERT_EQ(document.StyleSheets().Length(), 1U);
    EXPECT_EQ(document.StyleSheets().Item(0)->Href(), "./c.css");
}

TEST(LoadStyleSheets, WithoutAHostNothingIsFetched) {
    HTMLDocument page;
    page.LoadXml(Page("<?xml-stylesheet href='i.css' type='text/css'?>",
                      "<link rel='stylesheet' type='text/css' href='l.css'/>"
                      "<style>p { a: b }</style>"));
    LoadStyleSheets(page, nullptr);
    EXPECT_EQ(Sheets(page), "[p { a: b }]");
    LoadStyleSheets(page, Dom::CSS::StyleSheetHost());
    EXPECT_EQ(Sheets(page), "[p { a: b }]");
}

TEST(LoadStyleSheets, BytesMayBeOfAnyEncoding) {
    using namespace std::string_literals;
    SheetMap host{{"a.css", ".\0\xE9\0{\0a\0:\0b\0}\0"s}};
    HTMLDocument page;
    page.LoadXml(Page("<?xml-stylesheet href='a.css' type='text/css' charset='UTF-16'?>", ""));
    LoadStyleSheets(page, std::ref(host));
    EXPECT_EQ(Sheets(page), "[.\xC3\xA9 { a: b }]");
}

TEST(LoadStyleSheets, DoneAgainMakesThemAnew) {
    SheetMap host{{"a.css", "a { a: b }"}, {"b.css", "b { a: b }"}};
    HTMLDocument page;
    page.LoadXml(Page("<?xml-stylesheet href='a.css' type='text/css'?>",
                      "<link rel='stylesheet' type='text/css' href='b.css'/>"
                      "<style>p { a: b }</style>"));
    auto* const own = new CSSStyleSheet(Dom::CSS::CSSRule::User, nullptr, "", "");
    own->InsertRule("own { a: b }", 0);
    page.StyleSheets().AddItem(own);
    for (int i = 0; i < 3; ++i) {
        LoadStyleSheets(page, std::ref(host));
        EXPECT_EQ(Sheets(page), "[own { a: b }][a { a: b }][b { a: b }][p { a: b }]");
    }
    // What there is no sheet for any more loses the one that it had.
    auto* const link = support::AsLink(page.DocumentElement()->FirstChild());
    support::AsInstruction(page.FirstChild())->SetData("href='c.css' type='text/css'");
    link->SetAttribute("rel", "icon");
    LoadStyleSheets(page, std::ref(host));
    EXPECT_EQ(Sheets(page), "[own { a: b }][p { a: b }]");
    EXPECT_EQ(link->Sheet(), nullptr);
    EXPECT_EQ(support::AsInstruction(page.FirstChild())->Sheet(), nullptr);
}

TEST(LoadStyleSheets, WhatTheHostThrowsPasses) {
    HTMLDocument page;
    page.LoadXml(Page("",
                      "<style>p { a: b }</style>"
                      "<link rel='stylesheet' type='text/css' href='a.css'/>"
                      "<style>q { a: b }</style>"));
    const auto throwing = [](const astring&, const astring&) -> std::optional<astring> {
        throw std::runtime_error("offline");
    };
    EXPECT_THROW(LoadStyleSheets(page, throwing), std::runtime_error);
    EXPECT_EQ(Sheets(page), "[p { a: b }]");
}

TEST(LoadStyleSheets, ReadsTheSamples) {
    HTMLDocument page;
    page.Load(ESPALIER_SAMPLES "/page.xhtml");
    LoadStyleSheets(page, ReadSample);
    ASSERT_EQ(page.StyleSheets().Length(), 2U);
    const auto rulesOf = [](const Dom::Document& document, unsigned long index) {
        return static_cast<CSSStyleSheet*>(document.StyleSheets().Item(index))->CssRules().Length();
    };
    // The first rule of the sheet stands behind "@charset", which takes it; one is refused.
    EXPECT_EQ(rulesOf(page, 0), 8U);
    EXPECT_EQ(rulesOf(page, 1), 3U);
    EXPECT_EQ(page.StyleSheets().Item(0)->GetMediaList().MediaText(), "screen, print");
    auto* const last = support::AsHtml(page.Body()->LastChild());
    EXPECT_EQ(last->Style().GetPropertyValue("font-size"), "0.9em");

    Dom::Document drawing;
    drawing.Load(ESPALIER_SAMPLES "/drawing.svg");
    LoadStyleSheets(drawing, ReadSample);
    ASSERT_EQ(drawing.StyleSheets().Length(), 1U);
    EXPECT_EQ(rulesOf(drawing, 0), 5U);
}

TEST(LoadStyleSheets, AnEmptyDocumentHasNone) {
    HTMLDocument page;
    LoadStyleSheets(page, nullptr);
    EXPECT_EQ(page.StyleSheets().Length(), 0U);
}

// Whoever goes first takes the sheet with it, and the others forget it.

TEST(LoadStyleSheetsOwnership, TheDocumentMayGoFirst) {
    SheetMap host{{"a.css", "p { a: b }"}};
    for (const bool keepsNodes : {true, false}) {
        SCOPED_TRACE(keepsNodes);
        auto page = std::make_unique<HTMLDocument>();
        page->LoadXml(Page("<?xml-stylesheet href='a.css' type='text/css'?>",
                           "<link rel='stylesheet' type='text/css' href='a.css'/>"
                           "<style>p { a: b }</style>"));
        LoadStyleSheets(*page, std::ref(host));
        EXPECT_EQ(page->StyleSheets().Length(), 3U);
        std::vector<Dom::NodePtr> kept;
        if (keepsNodes) {
            Dom::Element* const root = page->DocumentElement();
            kept.emplace_back(root->RemoveChild(root->FirstChild()));
            kept.emplace_back(root->RemoveChild(root->FirstChild()));
            kept.emplace_back(page->RemoveChild(page->FirstChild()));
        }
        page.reset();
        for (const Dom::NodePtr& node : kept) {
            EXPECT_EQ(
                support::As<Dom::StyleSheets::LinkStyle>(node.get(), "Dom::StyleSheets::LinkStyle")
                    ->Sheet(),
                nullptr);
        }
    }
}

TEST(LoadStyleSheetsOwnership, NodesMayGoFirst) {
    SheetMap host{{"a.css", "p { a: b }"}};
    HTMLDocument page;
    page.LoadXml(Page("<?xml-stylesheet href='a.css' type='text/css'?>",
                      "<link rel='stylesheet' type='text/css' href='a.css'/>"
                      "<style>q { a: b }</style>"));
    LoadStyleSheets(page, std::ref(host));
    delete page.DocumentElement()->FirstChild();
    EXPECT_EQ(Sheets(page), "[p { a: b }][q { a: b }]");
    delete page.FirstChild();
    EXPECT_EQ(Sheets(page), "[q { a: b }]");
    page.LoadXml("<r/>");
    EXPECT_EQ(Sheets(page), "");
}

TEST(LoadStyleSheetsOwnership, SheetsMayGoFirst) {
    HTMLDocument page;
    page.LoadXml(Page("", "<style>p { a: b }</style><style>q { a: b }</style>"));
    LoadStyleSheets(page, nullptr);
    auto* const first = support::AsStyle(page.DocumentElement()->FirstChild());
    auto* const second = support::AsStyle(page.DocumentElement()->LastChild());
    delete page.StyleSheets().Item(0);
    EXPECT_EQ(first->Sheet(), nullptr);
    EXPECT_EQ(Sheets(page), "[q { a: b }]");
    // One that is taken out of the list is the node's alone.
    page.StyleSheets().RemoveItemAt(0);
    EXPECT_EQ(support::Rules(static_cast<CSSStyleSheet*>(second->Sheet())), "[q { a: b }]");
}
