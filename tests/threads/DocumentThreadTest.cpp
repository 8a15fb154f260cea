// SPDX-License-Identifier: MIT
//
// Documents, pages and styles in different threads: each thread has its own, and what may be shared
// between them is constant. As in ThreadTest.cpp, most of what could go wrong shows under
// ThreadSanitizer only.
#include <espalier/css.h>
#include <espalier/dom.h>
#include <espalier/encoding/Encoding.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/sax/InputSource.h>
#include <espalier/sax/XMLReader.h>
#include <espalier/sax/helpers/DefaultHandler.h>
#include <espalier/xml/XmlTextWriter.h>

#include "threads/RunAtOnce.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace {

using threads::kThreads;
using threads::RunAtOnce;

constexpr char kPage[] =
    "<html xmlns='http://www.w3.org/1999/xhtml'><head><style>p { margin: 1px }</style></head>"
    "<body><ul><li/><li/><li/><li/><li/><li/><li/><li/><li/><li/><li/><li/><li/><li/><li/><li/>"
    "<li class='last'/></ul><p id='i' style='color: red'>text</p></body></html>";

constexpr char kSheet[] =
    "li:nth-child(17) { color: #00f; width: calc(1px + 2px) } p { --x: 3px; padding: var(--x) }"
    "@media (min-width: 10px) { li.last { font-size: 20px } }";

std::unique_ptr<Dom::HTMLDocument> NewPage() {
    auto page = std::make_unique<Dom::HTMLDocument>();
    page->LoadXml(kPage, "http://host.example/");
    return page;
}

TEST(DocumentThreads, LoadChangeWriteAndDestroyTheirOwn) {
    std::array<std::string, kThreads> written;
    RunAtOnce([&written](std::size_t number) {
        const auto page = NewPage();
        page->SetTitle("a title");
        page->GetElementById("i")->SetAttribute("title", "t");
        IO::MemoryStream target;
        Xml::XmlTextWriter writer(&target, Xml::Encoding::UTF8());
        Dom::WriteNode(*page, writer);
        writer.Close();
        written[number].assign(reinterpret_cast<const char*>(target.GetBuffer()),
                               static_cast<std::size_t>(target.Length()));
    });
    EXPECT_NE(written[0].find("title=\"t\""), std::string::npos);
    for (const std::string& text : written)
        EXPECT_EQ(text, written[0]);
}

// Counts what it is told.
class Counter : public sax::helpers::DefaultHandler {
public:
    int elements = 0;

    void startElement(const char*, const char*, const char*, const sax::Attributes&) override {
        ++elements;
    }
};

TEST(XMLReaderThreads, ParseAtOnce) {
    std::array<int, kThreads> elements{};
    RunAtOnce([&elements](std::size_t number) {
        for (int round = 0; round < 20; ++round) {
            sax::XMLReader reader;
            Counter counter;
            reader.setContentHandler(&counter);
            sax::InputSource source;
            source.setCharacterStream(kPage);
            reader.parse(source);
            elements[number] += counter.elements;
        }
    });
    for (const int count : elements)
        EXPECT_EQ(count, 20 * 23);
}

// Each thread has a page and a resolver; the sheet, and that of HTML, are everybody's.
TEST(StyleResolverThreads, ShareSheets) {
    const auto sheet = Dom::CSS::ParseStyleSheet(kSheet);
    const Dom::CSS::CSSStyleSheet& shared = *sheet;
    std::array<std::string, kThreads> values;
    RunAtOnce([&](std::size_t number) {
        const auto page = NewPage();
        Dom::CSS::StyleResolver resolver;
        resolver.AddSheet(Dom::CSS::HtmlStyleSheet());
        resolver.AddSheet(shared);
        resolver.AddSheetsOf(*page);
        for (Dom::Element* const element : Dom::CSS::QuerySelectorAll(*page, "li.last, p")) {
            const Dom::CSS::ComputedStyle style = resolver.StyleOf(*element);
            for (const char* const name :
                 {"color", "width", "padding-left", "font-size", "display"})
                values[number] += style.Value(name).str() + ";";
        }
        const auto& p = *page->GetElementById("i");
        values[number] += resolver.Explain(p, "margin-left").value.str();
    });
    EXPECT_EQ(values[0],
              "rgb(0, 0, 255);3px;0px;20px;list-item;rgb(255, 0, 0);auto;3px;16px;block;1px");
    for (const std::string& text : values)
        EXPECT_EQ(text, values[0]);
}

TEST(RuleIndexThreads, ShareOneForTheirOwnDocuments) {
    const auto sheet = Dom::CSS::ParseStyleSheet(kSheet);
    Dom::CSS::RuleIndex index;
    index.Add(*sheet, {});
    const Dom::CSS::RuleIndex& shared = index;
    const Dom::CSS::Selector selector("ul > li:nth-last-child(-n+2)");
    const Dom::CSS::MediaQueryList media("print, screen and (min-width: 10px)");
    std::array<std::size_t, kThreads> found{};
    RunAtOnce([&](std::size_t number) {
        const auto page = NewPage();
        for (int round = 0; round < 10; ++round) {
            for (Dom::Element* const element : Dom::CSS::QuerySelectorAll(*page, selector))
                found[number] += 1 + 100 * shared.Match(*element).size();
            found[number] += media.Matches({}) ? 10'000U : 0U;
        }
    });
    for (const std::size_t count : found)
        EXPECT_EQ(count, 10 * (2 + 200 + 10'000));
}

TEST(ComputedStyleThreads, ReadOneAtOnce) {
    const auto page = NewPage();
    Dom::CSS::StyleResolver resolver;
    const Dom::CSS::ComputedStyle style = resolver.StyleOf(*page->GetElementById("i"));
    std::array<int, kThreads> equal{};
    RunAtOnce([&](std::size_t number) {
        for (int round = 0; round < 50; ++round) {
            const Dom::CSS::ComputedStyle copy = style;
            equal[number] += copy == style && copy.Value("color") == "rgb(255, 0, 0)" &&
                             copy.Names().size() == style.Names().size();
        }
    });
    for (const int count : equal)
        EXPECT_EQ(count, 50);
}

}  // namespace
