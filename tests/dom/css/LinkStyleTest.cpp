// SPDX-License-Identifier: MIT
#include <espalier/dom/css/LinkStyle.h>
#include <espalier/dom/css/StyleSheetListImpl.h>

#include "dom/css/CountedSheet.h"

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

namespace {

static_assert(std::has_virtual_destructor_v<Dom::StyleSheets::LinkStyle>);

// Keeps a sheet and owns it, as the nodes do.
class Link final : public Dom::StyleSheets::LinkStyle {
public:
    using LinkStyle::LinkStyle;
    using LinkStyle::SetSheet;
    ~Link() override { delete Sheet(); }
};

}  // namespace

TEST(LinkStyle, HasTheSheetThatItWasMadeWith) {
    EXPECT_EQ(Link(nullptr).Sheet(), nullptr);
    int count = 0;
    {
        auto* const sheet = new CountedSheet(count);
        const Link link(sheet);
        EXPECT_EQ(link.Sheet(), sheet);
    }
    EXPECT_EQ(count, 0);
}

TEST(LinkStyle, ForgetsASheetThatIsDeleted) {
    int count = 0;
    auto* const sheet = new CountedSheet(count);
    const Link link(sheet);
    delete sheet;
    EXPECT_EQ(link.Sheet(), nullptr);
}

TEST(LinkStyle, AnotherSheetTakesThePlaceAndTheFirstStays) {
    int count = 0;
    const auto first = std::make_unique<CountedSheet>(count);
    auto* const second = new CountedSheet(count);
    Link link(first.get());
    link.SetSheet(second);
    EXPECT_EQ(link.Sheet(), second);
    EXPECT_EQ(count, 2);
    link.SetSheet(second);
    EXPECT_EQ(link.Sheet(), second);
}

TEST(LinkStyle, ASheetIsKeptInOnePlace) {
    int count = 0;
    {
        auto* const sheet = new CountedSheet(count);
        const Link first(sheet);
        const Link second(sheet);
        EXPECT_EQ(first.Sheet(), nullptr);
        EXPECT_EQ(second.Sheet(), sheet);
    }
    EXPECT_EQ(count, 0);
}

// The node that made it and the document's list both own it; it is deleted once.
TEST(LinkStyle, ASheetInAListIsDeletedOnceInAnyOrder) {
    for (const bool listFirst : {true, false}) {
        SCOPED_TRACE(listFirst);
        int count = 0;
        auto* const sheet = new CountedSheet(count);
        auto link = std::make_unique<Link>(sheet);
        auto list = std::make_unique<Dom::StyleSheets::StyleSheetListImpl>();
        list->AddItem(sheet);
        if (listFirst) {
            list.reset();
            EXPECT_EQ(link->Sheet(), nullptr);
        } else {
            link.reset();
            EXPECT_EQ(list->Length(), 0U);
        }
        EXPECT_EQ(count, 0);
    }
}

TEST(LinkStyle, AnswersToItsName) {
    Link link(nullptr);
    Dom::StyleSheets::LinkStyle* const base = &link;
    EXPECT_EQ(base->QueryInterface("Dom::StyleSheets::LinkStyle"), base);
    EXPECT_EQ(base->QueryInterface("LinkStyle"), nullptr);
}
