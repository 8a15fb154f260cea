// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CSSStyleRule.h>
#include <espalier/dom/css/CSSStyleSheet.h>
#include <espalier/dom/css/RuleIndex.h>

#include "dom/DomNodes.h"
#include "dom/css/Matching.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

using Dom::CSS::CSSRule;
using Dom::CSS::CSSStyleRule;
using Dom::CSS::CSSStyleSheet;
using Dom::CSS::MatchedRule;
using Dom::CSS::RuleIndex;

class RuleIndexTest : public testing::Test {
protected:
    void Insert(const std::string& rule) { sheet_.InsertRule(rule, sheet_.CssRules().Length()); }

    // The selectors that select an element, each with its specificity.
    static std::string Matched(const RuleIndex& index, const Dom::Element& element,
                               std::string_view pseudo = {}) {
        std::string text;
        for (const MatchedRule& match : index.Match(element, pseudo)) {
            text += text.empty() ? "" : "; ";
            text += match.rule->SelectorText().str() + " " + std::to_string(match.specificity);
        }
        return text;
    }

    CSSStyleSheet sheet_{CSSRule::Author, nullptr, "", ""};
    Dom::Document document_;
};

}  // namespace

TEST_F(RuleIndexTest, RulesComeInTheirOrderWhateverTheyAreFoundBy) {
    document_.LoadXml("<r><p id='i' class='k j'/><q class='k'/></r>");
    for (const char* const rule : {"p {}", "* {}", ".j {}", "#i {}", "q {}", "r > .k {}", "p.z {}",
                                   "@media x {}", "p:first-child {}", ".k {}", "r {}"})
        Insert(rule);
    RuleIndex index;
    EXPECT_EQ(Matched(index, *document_.DocumentElement()), "");
    index.Add(sheet_);
    const auto elements = support::ElementsOf(document_);
    ASSERT_EQ(elements.size(), 3U);
    EXPECT_EQ(Matched(index, *elements[0]), "* 0; r 1");
    EXPECT_EQ(Matched(index, *elements[1]),
              "p 1; * 0; .j 1000; #i 1000000; r > .k 1001; p:first-child 1001; .k 1000");
    EXPECT_EQ(Matched(index, *elements[2]), "* 0; q 1; r > .k 1001; .k 1000");
    const RuleIndex moved = std::move(index);
    EXPECT_EQ(Matched(moved, *elements[0]), "* 0; r 1");
}

TEST_F(RuleIndexTest, ARuleComesOnceWithTheGreatestSpecificity) {
    document_.LoadXml("<p id='i' class='k j k'/>");
    Insert("p, .k, .j.k, q#i, .k.k {}");
    Insert(".k, p {}");
    RuleIndex index;
    index.Add(sheet_);
    EXPECT_EQ(Matched(index, *document_.DocumentElement()),
              "p, .k, .j.k, q#i, .k.k 2000; .k, p 1000");
}

TEST_F(RuleIndexTest, PartsOfElements) {
    document_.LoadXml("<p/>");
    Insert("p {}");
    Insert("p:before {}");
    Insert("p, p:after {}");
    RuleIndex index;
    index.Add(sheet_);
    const Dom::Element& p = *document_.DocumentElement();
    EXPECT_EQ(Matched(index, p), "p 1; p, p:after 1");
    EXPECT_EQ(Matched(index, p, "before"), "p:before 2");
    EXPECT_EQ(Matched(index, p, "after"), "p, p:after 2");
    EXPECT_EQ(Matched(index, p, "selection"), "");
    EXPECT_EQ(Matched(index, p, "hover"), "");
}

TEST_F(RuleIndexTest, OtherResultsAreReplaced) {
    document_.LoadXml("<p/>");
    Insert("p {}");
    RuleIndex index;
    index.Add(static_cast<const CSSStyleRule&>(*sheet_.CssRules().Item(0)));
    std::vector<MatchedRule> result(3);
    index.Match(*document_.DocumentElement(), {}, result);
    ASSERT_EQ(result.size(), 1U);
    EXPECT_EQ(result[0].rule, sheet_.CssRules().Item(0));
}

// All rules of a class for each of its words would be more than memory holds.
TEST_F(RuleIndexTest, AClassThatIsSaidAgainAddsNothing) {
    constexpr int kMany = 30'000;
    std::string classes;
    for (int i = 0; i < kMany; ++i) {
        classes += "k ";
        Insert(".k {}");
    }
    Dom::Element* const root = support::AddElement(document_, "root");
    root->SetAttribute("class", classes);
    RuleIndex index;
    index.Add(sheet_);
    EXPECT_EQ(index.Match(*root).size(), static_cast<std::size_t>(kMany));
}
