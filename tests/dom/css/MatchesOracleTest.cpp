// SPDX-License-Identifier: MIT

// Random selectors on random trees, against a matcher that simply tries every ancestor and sibling.

#include <espalier/dom/css/CSSStyleRule.h>
#include <espalier/dom/css/Selector.h>
#include <espalier/dom/css/Specificity.h>

#include "dom/DomNodes.h"
#include "dom/css/Matching.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <string>
#include <vector>

namespace {

using Dom::Element;
using Dom::CSS::CSSRule;
using Dom::CSS::CSSStyleRule;
using Dom::CSS::Selector;

// One compound, and what stands between it and the one before: ' ', '>', '+' or '~'.
struct Compound {
    char combinator;
    char name;      // '*' for any
    bool hasClass;  // ".k"
    bool isFirst;   // ":first-child"
};

using Compounds = std::vector<Compound>;

class Random {
public:
    explicit Random(unsigned seed) : engine_(seed) {}
    int Below(int limit) {
        return static_cast<int>(engine_() % static_cast<std::mt19937::result_type>(limit));
    }

private:
    std::mt19937 engine_;
};

Compounds RandomCompounds(Random& random) {
    Compounds compounds(static_cast<std::size_t>(random.Below(6) + 1));
    for (Compound& compound : compounds)
        compound = {" >+~"[random.Below(4)], "aab*"[random.Below(4)], random.Below(5) == 0,
                    random.Below(8) == 0};
    return compounds;
}

std::string TextOf(const Compounds& compounds) {
    std::string text;
    for (const Compound& compound : compounds) {
        if (!text.empty()) {
            text += compound.combinator == ' ' ? std::string(" ")
                                               : std::string(" ") + compound.combinator + " ";
        }
        text += compound.name;
        if (compound.hasClass) text += ".k";
        if (compound.isFirst) text += ":first-child";
    }
    return text;
}

// The element before, by the true order of children.
const Element* Previous(const Element& element) {
    const Element* previous = nullptr;
    for (const Dom::Node& child : element.ParentNode()->Children()) {
        if (&child == &element) return previous;
        previous = static_cast<const Element*>(&child);
    }
    return nullptr;
}

const Element* Parent(const Element& element) {
    const Dom::Node* const parent = element.ParentNode();
    const bool isElement = parent->NodeType() == Dom::DOMNodeType::ELEMENT_NODE;
    return isElement ? static_cast<const Element*>(parent) : nullptr;
}

bool MatchesCompound(const Compound& compound, const Element& element) {
    if (compound.name != '*' && element.NodeName() != std::string(1, compound.name)) return false;
    if (compound.hasClass && !element.HasAttribute("class")) return false;
    return !compound.isFirst || Previous(element) == nullptr;
}

// Whether the first `count` compounds select the element.
bool MatchesAll(const Compounds& compounds, std::size_t count, const Element& element) {
    const Compound& last = compounds[count - 1];
    if (!MatchesCompound(last, element)) return false;
    if (count == 1) return true;
    const bool isSibling = last.combinator == '+' || last.combinator == '~';
    const bool isOneStep = last.combinator == '+' || last.combinator == '>';
    const auto step = isSibling ? Previous : Parent;
    for (const Element* other = step(element); other != nullptr; other = step(*other)) {
        if (MatchesAll(compounds, count - 1, *other)) return true;
        if (isOneStep) return false;
    }
    return false;
}

// Fills the document with elements a and b, some of class k; some are inserted so that the links of
// their neighbours do not show it.
void FillRandomly(Dom::Document& document, Random& random) {
    std::vector<Element*> elements{support::AddElement(document, "a")};
    for (int i = 0; i < 14; ++i) {
        Element* const parent =
            elements[static_cast<std::size_t>(random.Below(static_cast<int>(elements.size())))];
        Element* const made = document.CreateElement(random.Below(2) == 0 ? "a" : "b");
        if (random.Below(4) == 0) made->SetAttribute("class", "k");
        parent->InsertBefore(made, random.Below(3) == 0 ? parent->FirstChild() : nullptr);
        elements.push_back(made);
    }
}

}  // namespace

TEST(MatchesOracle, RandomSelectorsOnRandomTrees) {
    constexpr int kTrees = 150;
    constexpr int kSelectors = 80;
    Random random(20260);
    long matches = 0;
    long asked = 0;
    for (int tree = 0; tree < kTrees; ++tree) {
        Dom::Document document;
        FillRandomly(document, random);
        const std::vector<Element*> elements = support::ElementsOf(document);
        for (int i = 0; i < kSelectors; ++i) {
            const Compounds compounds = RandomCompounds(random);
            const std::string text = TextOf(compounds);
            const Selector selector(text);
            CSSStyleRule rule(nullptr, nullptr, CSSRule::Author);
            const bool isForRules = Dom::CSS::CSS_SPECIFICITY(text.c_str()) >= 0;
            ASSERT_EQ(isForRules, text.find('~') == std::string::npos) << text;
            if (isForRules) rule.SetSelectorText(text);
            for (std::size_t k = 0; k < elements.size(); ++k) {
                const bool expected = MatchesAll(compounds, compounds.size(), *elements[k]);
                ASSERT_EQ(selector.Matches(*elements[k]), expected)
                    << text << ", tree " << tree << ", element " << k;
                if (isForRules) {
                    ASSERT_EQ(rule.MatchesSelector(elements[k], ""), expected) << text;
                }
                matches += expected ? 1 : 0;
                ++asked;
            }
        }
    }
    // Neither answer may be rare, or nothing was tested.
    EXPECT_GT(matches, asked / 50);
    EXPECT_LT(matches, asked / 2);
}
