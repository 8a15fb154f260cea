// SPDX-License-Identifier: MIT
#include <espalier/dom/css/StyleSheet.h>

#include "support/PrintAstring.h"

#include <gtest/gtest.h>

namespace {

class Sheet final : public Dom::StyleSheets::StyleSheet {
public:
    explicit Sheet(Dom::Node* owner = nullptr, StyleSheet* parent = nullptr, const char* href = "",
                   const char* title = "")
        : StyleSheet("text/css", owner, parent, href, title) {}
};

}  // namespace

TEST(StyleSheet, KeepsWhatItIsMadeWith) {
    // Only the addresses count here.
    int place = 0;
    auto* const node = reinterpret_cast<Dom::Node*>(&place);
    Sheet parent;
    const Sheet sheet(node, &parent, "a.css", "Title");
    EXPECT_EQ(sheet.Type(), "text/css");
    EXPECT_EQ(sheet.OwnerNode(), node);
    EXPECT_EQ(sheet.ParentStyleSheet(), &parent);
    EXPECT_EQ(sheet.Href(), "a.css");
    EXPECT_EQ(sheet.Title(), "Title");
    EXPECT_TRUE(sheet.GetMediaList().IsEmpty());
    EXPECT_EQ(parent.OwnerNode(), nullptr);
    EXPECT_EQ(parent.ParentStyleSheet(), nullptr);
}

TEST(StyleSheet, IsEnabledAtFirst) {
    Sheet sheet;
    EXPECT_FALSE(sheet.Disabled());
    sheet.Disable();
    sheet.Disable();
    EXPECT_TRUE(sheet.Disabled());
    sheet.Enable();
    EXPECT_FALSE(sheet.Disabled());
}

TEST(StyleSheet, ItsMediaCanBeChanged) {
    Sheet sheet;
    sheet.GetMediaList().AppendMedium("print");
    EXPECT_EQ(sheet.GetMediaList().MediaText(), "print");
}

TEST(StyleSheet, AnswersToItsName) {
    Sheet sheet;
    Dom::StyleSheets::StyleSheet* const base = &sheet;
    EXPECT_EQ(sheet.QueryInterface("Dom::StyleSheets::StyleSheet"), base);
    EXPECT_EQ(sheet.QueryInterface("Dom::CSS::CSSStyleSheet"), nullptr);
    EXPECT_EQ(sheet.QueryInterface("StyleSheet"), nullptr);
}
