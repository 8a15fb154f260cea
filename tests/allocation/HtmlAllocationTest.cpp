// SPDX-License-Identifier: MIT
//
// Lets every single allocation of making pages, their sheets and their styles fail, one run for
// each: nothing is lost, and the page can be used and destroyed.
#include <espalier/css.h>
#include <espalier/dom.h>

#include "dom/HtmlPage.h"
#include "support/FailingAllocation.h"

#include <gtest/gtest.h>

#include <iterator>
#include <memory>
#include <new>
#include <optional>
#include <string>

namespace {

using Dom::HTMLDocument;

// No string keeps it inside.
#define LONG(text) text "-that-is-longer-than-what-a-string-keeps-inside"

constexpr char kPage[] =
    "<?xml-stylesheet href='" LONG("a") "&amp;b' title='" LONG("t") "' media='" LONG("m")
    "' type='text/css' charset='UTF-8' altenate='yes'?>"
    "<html xmlns='http://www.w3.org/1999/xhtml'><head>"
    "<title>" LONG("t") "</title>"
    "<link rel='stylesheet' type='text/css' href='" LONG("h") "' media='" LONG("m") "'/>"
    "<style title='" LONG("t") "' media='" LONG("m") "'>p { a: " LONG("b") " } q ~ r { c: d }"
    "s { margin: 1px " LONG("x") " }</style></head>"
    "<body style='a: " LONG("v") "; " LONG("n") ": 1px 2px' id='" LONG("i") "'><object><applet/>"
    "</object><form id='f'/></body></html>";

constexpr char kSheet[] = "p { a: " LONG("b") " } q ~ r { c: d } s { e: f }";

Dom::HTMLElement& Body(HTMLDocument& page) { return *support::AsHtml(page.Body()); }

// Runs something, and tells whether there was memory for it. A reader says in its own way that
// there is none.
template <typename Run>
bool HasMemory(const Run& run) {
    try {
        run();
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    } catch (const Xml::Exception& error) {
        FailingAllocation::Exempt([&] { EXPECT_STREQ(error.What(), "Out of memory"); });
        return false;
    }
}

using Work = void (*)(HTMLDocument& page);

// What is tried with a page, again and again.
const Work kWorks[] = {
    [](HTMLDocument& page) {
        for (const char* const name : {"link", "style", "meta", "p"})
            delete page.CreateElementNS(support::kXhtml, astring(LONG("prefix") ":") + name);
    },
    [](HTMLDocument& page) { delete page.DocumentElement()->CloneTree(); },
    [](HTMLDocument& page) { delete page.CloneNode(false); },
    [](HTMLDocument& page) { page.SetTitle(LONG("title")); },
    [](HTMLDocument& page) { (void)page.Title(); },
    [](HTMLDocument& page) { page.SetCookie(LONG("cookie")); },
    [](HTMLDocument& page) { (void)page.Domain(); },
    [](HTMLDocument& page) { Body(page).SetLang(LONG("lang")); },
    [](HTMLDocument& page) { Body(page).SetId(LONG("id")); },
    [](HTMLDocument& page) { Body(page).Style().SetProperty(LONG("a"), LONG("b"), ""); },
    [](HTMLDocument& page) {
        Body(page).Style().SetProperty(LONG("a"), LONG("b"), "");
        Body(page).SyncStyle();
    },
    [](HTMLDocument& page) {
        for (const char* const pseudo : {"", LONG("pseudo")})
            page.GetOverrideStyle(page.Body(), pseudo)->SetProperty(LONG("a"), LONG("b"), "");
    },
    [](HTMLDocument& page) {
        (void)page.Applets().Length();
        (void)page.Forms().NamedItem("f");
    },
    [](HTMLDocument& page) {
        IO::MemoryStream stream = support::StreamOf(kSheet);
        support::AsInstruction(page.FirstChild())->CreateStyleSheet(&stream);
    },
    [](HTMLDocument& page) {
        Dom::CSS::LoadStyleSheets(page,
                                  [](const astring&, const astring&) -> std::optional<astring> {
                                      return astring(kSheet);
                                  });
    },
    [](HTMLDocument& page) {
        page.Writeln("<html><!-- " LONG("comment") " -->");
        page.Write("</html>");
        page.Close();
    },
};

}  // namespace

TEST(HtmlAllocation, EveryAllocationOfLoadingMayFail) {
    const long failures = FailingAllocation::ForEachFailure([](FailingAllocation& failure) {
        bool hasMemory = false;
        {
            std::optional<HTMLDocument> page;
            hasMemory = HasMemory([&page] {
                page.emplace();
                page->LoadXml(kPage);
            });
            FailingAllocation::Exempt([&] { page.reset(); });
        }
        FailingAllocation::Exempt([&] {
            EXPECT_EQ(hasMemory, !failure.HasFailed());
            EXPECT_EQ(failure.LiveCount(), 0);
        });
    });
    EXPECT_GT(failures, 20);
}

TEST(HtmlAllocation, EveryAllocationOfWorkOnAPageMayFail) {
    for (const Work& work : kWorks) {
        SCOPED_TRACE(&work - std::begin(kWorks));
        const long failures = FailingAllocation::ForEachFailure([&](FailingAllocation& failure) {
            std::optional<HTMLDocument> page;
            FailingAllocation::Exempt([&] {
                page.emplace();
                page->LoadXml(kPage, "http://" LONG("host") "/");
            });
            const bool hasMemory = HasMemory([&] { work(*page); });
            FailingAllocation::Exempt([&] {
                // Whoever can do without memory goes on.
                EXPECT_TRUE(hasMemory || failure.HasFailed());
                if (page->Body() != nullptr) {
                    work(*page);  // and it works when there is memory again
                    for (Dom::StyleSheets::StyleSheet* const sheet : page->StyleSheets())
                        EXPECT_NE(sheet->OwnerNode(), nullptr);
                }
                page.reset();
                EXPECT_EQ(failure.LiveCount(), 0);
            });
        });
        EXPECT_GT(failures, 0);
    }
}

// A sheet that is half made is freed, and the node has none.
TEST(HtmlAllocation, AHalfMadeSheetIsNobodys) {
    const long failures = FailingAllocation::ForEachFailure([](FailingAllocation& failure) {
        std::optional<HTMLDocument> page;
        FailingAllocation::Exempt([&] {
            page.emplace();
            page->LoadXml(kPage);
            support::AsStyle(page->DocumentElement()->FirstChild()->LastChild())
                ->CreateStyleSheet();
        });
        auto* const style = support::AsStyle(page->DocumentElement()->FirstChild()->LastChild());
        const bool hasMemory = HasMemory([style] { style->CreateStyleSheet(); });
        FailingAllocation::Exempt([&] {
            EXPECT_EQ(hasMemory, !failure.HasFailed());
            EXPECT_EQ(style->Sheet() != nullptr, hasMemory);
            page.reset();
            EXPECT_EQ(failure.LiveCount(), 0);
        });
    });
    EXPECT_GT(failures, 10);
}
