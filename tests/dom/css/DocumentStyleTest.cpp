// SPDX-License-Identifier: MIT
#include <espalier/dom/css/DocumentStyle.h>

#include "dom/css/CountedSheet.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>

using Dom::StyleSheets::DocumentStyle;

static_assert(std::has_virtual_destructor_v<DocumentStyle>);

TEST(DocumentStyle, OwnsTheSheetsOfItsList) {
    int count = 0;
    {
        DocumentStyle style;
        EXPECT_EQ(style.StyleSheets().Length(), 0U);
        auto* const sheet = new CountedSheet(count);
        style.StyleSheets().AddItem(sheet);
        EXPECT_EQ(std::as_const(style).StyleSheets().Item(0), sheet);
    }
    EXPECT_EQ(count, 0);
}

TEST(DocumentStyle, AnswersToItsNameAndToItsShortName) {
    DocumentStyle style;
    EXPECT_EQ(style.QueryInterface("DocumentStyle"), &style);
    EXPECT_EQ(style.QueryInterface("Dom::StyleSheets::DocumentStyle"), &style);
    EXPECT_EQ(style.QueryInterface("Dom::DocumentStyle"), nullptr);
    EXPECT_EQ(style.QueryInterface("Dom::Document"), nullptr);
}
