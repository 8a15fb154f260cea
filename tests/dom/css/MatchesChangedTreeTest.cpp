// SPDX-License-Identifier: MIT

// Selectors follow the true tree, whatever its links tell, and every change of it; they take linear
// time in deep and wide trees.

#include <espalier/dom/css/CSSStyleRule.h>
#include <espalier/dom/css/Selector.h>

#include "dom/DomNodes.h"
#include "dom/css/Matching.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {

using Dom::NodePtr;
using Dom::CSS::CSSRule;
using Dom::CSS::CSSStyleRule;
using Dom::CSS::Selector;

// A root with the children a, b and c, and one rule for each selector, made once.
class ChangedTree : public testing::Test {
protected:
    ChangedTree() {
        for (const char* const selector : kSelectors) {
            rules_.push_back(std::make_unique<CSSStyleRule>(nullptr, nullptr, CSSRule::Author));
            rules_.back()->SetSelectorText(selector);
        }
    }

    Dom::Element* Make(const char* name) { return document_.CreateElement(name); }

    // Compares each selector with the names of the children of the root in their true order, and
    // with what the names say about it.
    void ExpectChildren(const std::string& names) {
        SCOPED_TRACE(names);
        ASSERT_EQ(support::TrueChildren(*root_), names);
        std::vector<Dom::Element*> children;
        for (Dom::Node& child : root_->Children())
            children.push_back(static_cast<Dom::Element*>(&child));
        const std::size_t count = children.size();
        for (std::size_t i = 0; i < count; ++i) {
            Dom::Element* const child = children[i];
            std::size_t ofType = 0;
            std::size_t position = 0;
            for (std::size_t k = 0; k < count; ++k) {
                if (children[k]->NodeName() != child->NodeName()) continue;
                ++ofType;
                if (k <= i) ++position;
            }
            const bool expected[] = {
                i == 0,
                i + 1 == count,
                count == 1,
                i % 2 == 0,
                (count - i) % 2 == 1,
                i >= 2,
                position == 1,
                position == ofType,
                ofType == 1,
                position == 2,
                ofType - position == 1,
                i > 0,
                i > 0 && children[i - 1]->NodeName() == "n",
                i > 1 && children[i - 2]->NodeName() == "a" && children[i - 1]->NodeName() == "n",
            };
            static_assert(std::size(expected) == std::size(kSelectors));
            for (std::size_t k = 0; k < std::size(kSelectors); ++k)
                EXPECT_EQ(rules_[k]->MatchesSelector(child, ""), expected[k])
                    << kSelectors[k] << ", child " << i;
        }
        EXPECT_EQ(empty_.Matches(*root_), count == 0);
    }

    static constexpr const char* kSelectors[] = {
        ":first-child",
        ":last-child",
        ":only-child",
        ":nth-child(odd)",
        ":nth-last-child(odd)",
        ":nth-child(n+3)",
        ":first-of-type",
        ":last-of-type",
        ":only-of-type",
        ":nth-of-type(2)",
        ":nth-last-of-type(2)",
        "* + *",
        "n + *",
        "a + n + *",
    };
    Dom::Document document_;
    Dom::Element* root_ = support::AddElement(document_, "root");
    Dom::Element* a_ = support::AddElement(*root_, "a");
    Dom::Element* b_ = support::AddElement(*root_, "b");
    Dom::Element* c_ = support::AddElement(*root_, "c");
    const Selector empty_{":empty"};

private:
    std::vector<std::unique_ptr<CSSStyleRule>> rules_;
};

}  // namespace

TEST_F(ChangedTree, AppendingAndRemoving) {
    ExpectChildren("a b c");
    root_->AppendChild(Make("a"));
    ExpectChildren("a b c a");
    NodePtr removed(root_->RemoveChild(b_));
    ExpectChildren("a c a");
    removed = NodePtr(root_->RemoveChild(a_));
    ExpectChildren("c a");
    root_->AppendChild(removed.release());
    ExpectChildren("c a a");
    while (Dom::Node* const child = root_->LastChild()) {
        child->DestroyNode();
        ExpectChildren(support::TrueChildren(*root_));
    }
}

// InsertBefore() leaves the link of the node before as it was; the tree is another one all the
// same.
TEST_F(ChangedTree, AnInsertedNodeIsASiblingThoughNoLinkTellsOfIt) {
    ExpectChildren("a b c");
    root_->InsertBefore(Make("n"), b_);
    EXPECT_EQ(a_->NextSibling(), b_);
    ExpectChildren("a n b c");
    root_->InsertBefore(Make("n"), a_);
    ExpectChildren("n a n b c");
    root_->InsertBefore(Make("b"), c_);
    ExpectChildren("n a n b b c");
    root_->InsertBefore(Make("c"), nullptr);
    ExpectChildren("n a n b b c c");
    const NodePtr removed(root_->RemoveChild(a_));
    ExpectChildren("n n b b c c");
}

TEST_F(ChangedTree, AReplacedNodeIsNoSiblingThoughLinksLeadToIt) {
    ExpectChildren("a b c");
    const NodePtr old(root_->ReplaceChild(Make("n"), b_));
    EXPECT_EQ(a_->NextSibling(), b_);
    ExpectChildren("a n c");
    const NodePtr last(root_->ReplaceChild(Make("n"), c_));
    ExpectChildren("a n n");
    const NodePtr first(root_->ReplaceChild(Make("n"), a_));
    ExpectChildren("n n n");
}

TEST_F(ChangedTree, NodesThatTellTheirNeighbours) {
    ExpectChildren("a b c");
    root_->InsertChild(Make("n"), b_);
    ExpectChildren("a n b c");
    const NodePtr old(root_->ExchangeChild(Make("b"), a_));
    ExpectChildren("b n b c");
    root_->InsertChild(c_, b_);
    ExpectChildren("b n c b");
}

TEST_F(ChangedTree, ANodeThatMovesToAnotherParent) {
    Dom::Element* const inside = support::AddElement(*b_, "inside");
    const Selector first("b > :first-child");
    const Selector only("b > :only-child");
    EXPECT_TRUE(only.Matches(*inside));
    b_->InsertBefore(a_, inside);
    ExpectChildren("b c");
    EXPECT_TRUE(first.Matches(*a_));
    EXPECT_FALSE(first.Matches(*inside));
    EXPECT_FALSE(only.Matches(*inside));
    EXPECT_TRUE(Selector("a + inside").Matches(*inside));
}

TEST_F(ChangedTree, AttributesThatChange) {
    const Selector id("#x");
    const Selector type(".k > a");
    const Selector has("[k]");
    EXPECT_FALSE(id.Matches(*a_));
    a_->SetAttribute("id", "x");
    EXPECT_TRUE(id.Matches(*a_));
    a_->SetAttribute("id", "y");
    EXPECT_FALSE(id.Matches(*a_));
    EXPECT_FALSE(type.Matches(*a_));
    root_->SetAttribute("class", "j k");
    EXPECT_TRUE(type.Matches(*a_));
    a_->SetAttribute("k", "");
    EXPECT_TRUE(has.Matches(*a_));
    a_->RemoveAttribute("k");
    EXPECT_FALSE(has.Matches(*a_));
}

TEST_F(ChangedTree, TextsThatChange) {
    const Selector contains(":contains(\"x\")");
    EXPECT_TRUE(empty_.Matches(*a_));
    Dom::Text* const text = support::AddText(*a_, "");
    EXPECT_TRUE(empty_.Matches(*a_));  // a text of no length is none
    text->SetData("axb");
    EXPECT_FALSE(empty_.Matches(*a_));
    EXPECT_TRUE(contains.Matches(*a_));
    EXPECT_TRUE(contains.Matches(*root_));
    text->SetData("ab");
    EXPECT_FALSE(contains.Matches(*root_));
}

// Positions that are far from all others are kept, too, until the tree changes.
TEST_F(ChangedTree, PositionsOfManyChildren) {
    constexpr int kMany = 200;
    for (int i = 0; i < kMany; ++i)
        support::AddElement(*root_, i % 3 == 0 ? "a" : "n");
    const auto check = [this] { ExpectChildren(support::TrueChildren(*root_)); };
    check();
    check();
    Dom::Node* const middle = root_->ChildNodes().Item(kMany / 2);
    root_->InsertChild(Make("n"), middle);
    check();
    check();
    const NodePtr removed(root_->RemoveChild(middle));
    check();
    root_->InsertBefore(Make("b"), root_->ChildNodes().Item(kMany / 3));
    check();
    const Selector third(":nth-child(3)");
    Dom::Document other;
    for (int round = 0; round < 3; ++round) {
        Dom::Element* const top = support::AddElement(other, "top");
        std::vector<Dom::Element*> children;
        for (int i = 0; i < kMany; ++i)
            children.push_back(support::AddElement(*top, "a"));
        for (int i = kMany - 1; i >= 0; --i)
            EXPECT_EQ(third.Matches(*children[static_cast<std::size_t>(i)]), i == 2) << i;
        top->DestroyNode();  // the next one may lie where this one was
    }
    check();
}

// Elements that are in no document have parents and siblings, too.
TEST_F(ChangedTree, ATreeOfItsOwn) {
    const NodePtr top(Make("top"));
    Dom::Element* const first = support::AddElement(*top, "x");
    Dom::Element* const second = support::AddElement(*top, "x");
    EXPECT_TRUE(Selector("top > x + x").Matches(*second));
    EXPECT_FALSE(Selector("root x").Matches(*second));
    EXPECT_TRUE(Selector("x:first-child").Matches(*first));
    EXPECT_TRUE(Selector("x:nth-last-child(1)").Matches(*second));
    EXPECT_FALSE(Selector("top > top").Matches(static_cast<Dom::Element&>(*top)));
    EXPECT_FALSE(Selector("* + top").Matches(static_cast<Dom::Element&>(*top)));
}

// --- time ---

TEST(MatchesHostile, ADeepTreeTakesLinearTimeAndNoStack) {
    constexpr int kDepth = 300'000;
    Dom::Document document;
    Dom::Element* element = support::AddElement(document, "root");
    for (int i = 0; i < kDepth; ++i)
        element = support::AddElement(*element, "a");
    const struct {
        const char* selector;
        bool matches;
    } kCases[] = {
        {"root a a a a a a a a a a", true},
        {"root > a a > a a > a a > a a > a", true},
        {"z a a a a a a a a a a a a a a", false},
        {"z > a a > a a > a a > a a > a a > a", false},
        {"b + a a > a a > a b + a a > a a", false},
        {"root a > a a > z a > a a", false},
        {"a:first-child a:last-child a:only-child a:nth-child(1) > a", true},
        {"a:not(a) a a a a a a", false},
        {"a:lang(en)", false},
        {"a:empty", true},
    };
    for (const auto& c : kCases) {
        CSSStyleRule rule(nullptr, nullptr, CSSRule::Author);
        rule.SetSelectorText(c.selector);
        EXPECT_EQ(rule.MatchesSelector(element, ""), c.matches) << c.selector;
    }
    EXPECT_FALSE(Selector("a:contains('x')").Matches(*document.DocumentElement()));
    EXPECT_FALSE(Selector("root:contains('x')").Matches(*document.DocumentElement()));
}

TEST(MatchesHostile, PositionsAmongManySiblingsTakeLinearTime) {
    constexpr int kMany = 300'000;
    Dom::Document document;
    Dom::Element* const root = support::AddElement(document, "root");
    for (int i = 0; i < kMany; ++i)
        support::AddElement(*root, i % 2 == 0 ? "a" : "b");
    const Selector selectors[] = {
        Selector(":nth-child(3n+1)"),  Selector(":nth-last-child(odd)"),
        Selector("a:nth-of-type(2n)"), Selector("b:nth-last-of-type(2n+1)"),
        Selector("a:last-of-type"),    Selector("b:first-of-type"),
        Selector("a:only-of-type"),    Selector("a + b:last-child"),
    };
    const int expected[] = {100'000, 150'000, 75'000, 75'000, 1, 1, 0, 1};
    int counts[std::size(selectors)] = {};
    // All selectors for one element, so that what one keeps must not drive out what another keeps.
    for (Dom::Node& child : root->Children()) {
        for (std::size_t i = 0; i < std::size(selectors); ++i)
            counts[i] += selectors[i].Matches(static_cast<Dom::Element&>(child)) ? 1 : 0;
    }
    for (std::size_t i = 0; i < std::size(selectors); ++i)
        EXPECT_EQ(counts[i], expected[i]) << selectors[i].Text();
}

// Rows are given classes one after the other as they match; attributes are not in the way.
TEST(MatchesHostile, PositionsStayKnownWhileAttributesChange) {
    constexpr int kMany = 100'000;
    Dom::Document document;
    Dom::Element* const root = support::AddElement(document, "root");
    for (int i = 0; i < kMany; ++i)
        support::AddElement(*root, "row")->SetAttribute("class", "old");
    const Selector odd("row:nth-child(odd)");
    int count = 0;
    for (Dom::Node& child : root->Children()) {
        auto& row = static_cast<Dom::Element&>(child);
        if (!odd.Matches(row)) continue;
        ++count;
        row.SetAttribute("class", "odd");
        row.GetAttributeNode("class")->SetValue("very odd");
        row.RemoveAttribute("class");
        row.SetAttributeNode(document.CreateAttribute("id"));
    }
    EXPECT_EQ(count, kMany / 2);
}

// Each element is far from the one before, and of a type of its own.
TEST(MatchesHostile, PositionsInAnyOrderTakeLinearTime) {
    constexpr std::size_t kMany = 200'000;
    Dom::Document document;
    Dom::Element* const root = support::AddElement(document, "root");
    std::vector<const Dom::Element*> elements;
    for (std::size_t i = 0; i < kMany; ++i)
        elements.push_back(support::AddElement(*root, "a" + std::to_string(i / 2)));
    const struct {
        const char* selector;
        int expected;
    } kCases[] = {
        {":nth-child(4n+1)", 50'000},
        {":nth-last-child(4n+1)", 50'000},
        {":nth-of-type(2)", 100'000},
        {":nth-last-of-type(2)", 100'000},
        {":first-of-type", 100'000},
        {":only-of-type", 0},
        {":nth-child(2) ~ :nth-child(n+199999)", 2},
    };
    for (const auto& c : kCases) {
        const Selector selector(c.selector);
        int count = 0;
        for (std::uint64_t i = 0; i < kMany; ++i)
            count += selector.Matches(*elements[i * 99'991 % kMany]) ? 1 : 0;
        EXPECT_EQ(count, c.expected) << c.selector;
    }
}

// A selector that looks at the siblings before asks for their positions from the last one on.
TEST(MatchesHostile, PositionsOfEarlierSiblingsTakeLinearTime) {
    constexpr int kMany = 300'000;
    Dom::Document document;
    Dom::Element* const root = support::AddElement(document, "root");
    for (int i = 0; i < kMany; ++i)
        support::AddElement(*root, i % 2 == 0 ? "a" : "b");
    const auto* const last = static_cast<Dom::Element*>(root->LastChild());
    EXPECT_TRUE(Selector(":nth-child(2) ~ b").Matches(*last));
    EXPECT_TRUE(Selector("a:nth-of-type(1) ~ b").Matches(*last));
    EXPECT_FALSE(Selector(":nth-last-child(300001) ~ b").Matches(*last));
    EXPECT_FALSE(Selector("b:first-of-type ~ a ~ b:first-of-type").Matches(*last));
}

TEST(MatchesHostile, ManySiblingsBeforeAreLookedThroughOnce) {
    constexpr int kMany = 300'000;
    Dom::Document document;
    Dom::Element* const root = support::AddElement(document, "root");
    for (int i = 0; i < kMany; ++i)
        support::AddElement(*root, "a");
    const auto* const last = static_cast<Dom::Element*>(root->LastChild());
    EXPECT_TRUE(Selector("a ~ a + a ~ a + a ~ a").Matches(*last));
    EXPECT_FALSE(Selector("z + a ~ a + a ~ a + a ~ a + a ~ a").Matches(*last));
    EXPECT_FALSE(Selector("z ~ a ~ a ~ a ~ a ~ a ~ a ~ a").Matches(*last));
    EXPECT_FALSE(Selector("z > a ~ a + a ~ a").Matches(*last));
}

// Trying all ancestors for all siblings for all ancestors would take years.
TEST(MatchesHostile, MixedCombinatorsAreNotExponential) {
    Dom::Document document;
    Dom::Element* element = support::AddElement(document, "a");
    for (int depth = 0; depth < 60; ++depth) {
        for (int i = 0; i < 60; ++i)
            support::AddElement(*element, "a");
        element = static_cast<Dom::Element*>(element->LastChild());
    }
    std::string selector = "z > a";
    for (int i = 0; i < 12; ++i)
        selector += " a ~ a > a + a ~ a";
    EXPECT_FALSE(Selector(selector).Matches(*element));
    EXPECT_TRUE(Selector(selector.substr(4)).Matches(*element));
}

TEST(MatchesHostile, LongSelectorsTakeLinearTimeAndNoStack) {
    constexpr int kMany = 200'000;
    std::string group = "z0";
    std::string chain = "a";
    std::string classes = "a";
    std::string nested;
    for (int i = 1; i < kMany; ++i) {
        group += ", z" + std::to_string(i);
        chain += " > a";
        classes += ".k";
    }
    Dom::Document document;
    document.LoadXml("<a class='k'><a/></a>");
    const Dom::Element& root = *document.DocumentElement();
    EXPECT_FALSE(Selector(group).Matches(root));
    EXPECT_TRUE(Selector(group + ", a").Matches(root));
    EXPECT_FALSE(Selector(chain).Matches(root));
    EXPECT_TRUE(Selector(classes).Matches(root));
    for (int i = 0; i < kMany; ++i)
        nested += ":not(";
    CSSStyleRule rule(nullptr, nullptr, CSSRule::Author);
    rule.SetSelectorText("a" + nested + "b" + std::string(kMany, ')'));
    rule.MatchesSelector(document.DocumentElement(), "");  // whatever it is, it ends
    EXPECT_EQ(rule.Specificity(), 1001);
}
