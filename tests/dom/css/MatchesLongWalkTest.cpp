// SPDX-License-Identifier: MIT

// Selectors that walk along many ancestors or siblings: the same answers as those of a matcher that
// remembers nothing, in any order, after any change, from any thread; and in linear time.

#include <espalier/dom/css/QuerySelector.h>
#include <espalier/dom/css/Selector.h>

#include "dom/DomNodes.h"
#include "dom/css/Matching.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <numeric>
#include <random>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

using Dom::Element;
using Dom::CSS::QuerySelectorAll;
using Dom::CSS::Selector;

class Random {
public:
    explicit Random(unsigned seed) : engine_(seed) {}
    std::size_t Below(std::size_t limit) { return engine_() % limit; }
    bool OneOf(std::size_t count) { return Below(count) == 0; }

private:
    std::mt19937 engine_;
};

// A compound, and what stands between it and the one before: ' ', '>', '+' or '~'.
struct Compound {
    char combinator;
    char name;  // 'k' for a class of that name
};

using Compounds = std::vector<Compound>;

Compounds RandomCompounds(Random& random) {
    Compounds compounds(2 + random.Below(5));
    for (Compound& compound : compounds)
        compound = {"  >+~~"[random.Below(6)], "aabckk"[random.Below(6)]};
    return compounds;
}

std::string TextOf(const Compounds& compounds) {
    std::string text;
    for (const Compound& compound : compounds) {
        if (!text.empty()) text += std::string(" ") + compound.combinator + " ";
        text += compound.name == 'k' ? std::string(".k") : std::string(1, compound.name);
    }
    return text;
}

bool Fits(const Compound& compound, const Element& element) {
    return compound.name == 'k' ? element.HasAttribute("class")
                                : element.NodeName() == std::string(1, compound.name);
}

// The elements of a document, with the numbers of what stands above and before them. Number 0
// stands for nothing.
struct Elements {
    explicit Elements(Dom::Document& document) : all(support::ElementsOf(document)) {
        all.insert(all.begin(), nullptr);
        std::map<const Dom::Node*, std::size_t> numbers;
        std::map<const Dom::Node*, std::size_t> last;  // child seen of each parent
        for (std::size_t i = 1; i < all.size(); ++i) {
            const Dom::Node* const parent = all[i]->ParentNode();
            numbers[all[i]] = i;
            above.push_back(numbers[parent]);
            before.push_back(std::exchange(last[parent], i));
        }
    }

    std::vector<Element*> all;
    std::vector<std::size_t> above{0};
    std::vector<std::size_t> before{0};
};

// Tells which elements compounds select, compound by compound, from the root down.
class PlainMatcher {
public:
    PlainMatcher(const Compounds& compounds, const Elements& elements) {
        for (const Compound& compound : compounds)
            Add(compound, elements);
    }

    bool Selects(std::size_t element) const { return selected_[element].own; }

private:
    // What the begin of a selector selects: the element itself, it or one above, it or one before.
    struct Selected {
        bool own = false;
        bool above = false;
        bool before = false;
    };

    void Add(const Compound& compound, const Elements& elements) {
        const bool isFirst = selected_.empty();
        selected_.resize(elements.all.size());
        std::vector<Selected> added(elements.all.size());
        for (std::size_t i = 1; i < added.size(); ++i) {
            const std::size_t parent = elements.above[i];
            const std::size_t previous = elements.before[i];
            const bool fits = compound.combinator == '>'   ? selected_[parent].own
                              : compound.combinator == ' ' ? selected_[parent].above
                              : compound.combinator == '+' ? selected_[previous].own
                                                           : selected_[previous].before;
            const bool own = Fits(compound, *elements.all[i]) && (isFirst || fits);
            added[i] = {own, own || added[parent].above, own || added[previous].before};
        }
        selected_ = std::move(added);
    }

    std::vector<Selected> selected_;
};

// A tree of chains and rows of some hundred elements.
void FillRandomly(Dom::Document& document, Random& random) {
    Element* at = support::AddElement(document, "a");
    while (support::ElementsOf(document).size() < 250) {
        const std::size_t count = 1 + random.Below(60);
        const bool isChain = random.OneOf(2);
        Element* made = nullptr;
        for (std::size_t i = 0; i < count; ++i) {
            made = support::AddElement(*at, std::string(1, "aaaaaabc"[random.Below(8)]));
            if (random.OneOf(30)) made->SetAttribute("class", "k");
            if (isChain) at = made;
        }
        if (random.OneOf(2)) at = made;
        if (random.OneOf(5)) at = document.DocumentElement();
    }
}

void ChangeRandomly(Dom::Document& document, Random& random) {
    const std::vector<Element*> elements = support::ElementsOf(document);
    Element* const one = elements[1 + random.Below(elements.size() - 1)];
    switch (random.Below(4)) {
    case 0: one->SetAttribute("class", "k"); break;
    case 1:
        if (one->HasAttribute("class")) one->RemoveAttribute("class");
        break;
    case 2:
        one->ParentNode()->InsertBefore(
            document.CreateElement(std::string(1, "abc"[random.Below(3)])), one);
        break;
    default:
        if (one->ChildNodes().Length() < 5) one->ParentNode()->RemoveChild(one)->DestroyNode();
    }
}

// The numbers of elements, from the first on, from the last on, or mixed.
std::vector<std::size_t> RandomOrder(const Elements& elements, Random& random) {
    std::vector<std::size_t> order(elements.all.size() - 1);
    std::iota(order.begin(), order.end(), 1U);
    if (random.OneOf(3)) std::reverse(order.begin(), order.end());
    if (random.OneOf(3)) {
        for (std::size_t i = order.size(); i > 1; --i)
            std::swap(order[i - 1], order[random.Below(i)]);
    }
    return order;
}

// Compares a selector with the plain matcher, for all elements in some order.
void ExpectSame(const Compounds& compounds, const Selector& selector, const Elements& elements,
                Random& random, long& matches) {
    const PlainMatcher plain(compounds, elements);
    for (const std::size_t i : RandomOrder(elements, random)) {
        ASSERT_EQ(selector.Matches(*elements.all[i]), plain.Selects(i)) << selector.Text();
        matches += plain.Selects(i) ? 1 : 0;
    }
}

// A row, or a chain, of `count` elements within <r>, the first one an <x>, the others <a>.
Element* MakeMany(Dom::Document& document, std::size_t count, bool isChain) {
    Element* at = support::AddElement(document, "r");
    Element* made = support::AddElement(*at, "x");
    for (std::size_t i = 1; i < count; ++i) {
        if (isChain) at = made;
        made = support::AddElement(*at, "a");
    }
    return made;
}

// The child of the root that MakeMany() has made first.
Element* FirstElement(Dom::Document& document) {
    return static_cast<Element*>(document.DocumentElement()->FirstChild());
}

struct Count {
    const char* selector;
    std::size_t expected;
};

constexpr std::size_t kMany = 100'000;

}  // namespace

TEST(MatchesLongWalk, RandomSelectorsOnTreesThatChange) {
    constexpr int kTrees = 10;
    constexpr int kSelectors = 60;
    constexpr int kChanges = 4;
    Random random(20261122);
    long matches = 0;
    for (int tree = 0; tree < kTrees; ++tree) {
        Dom::Document documents[2];
        for (Dom::Document& document : documents)
            FillRandomly(document, random);
        std::vector<Compounds> compounds;
        std::vector<Selector> selectors;
        for (int i = 0; i < kSelectors; ++i) {
            compounds.push_back(RandomCompounds(random));
            selectors.emplace_back(TextOf(compounds.back()));
        }
        for (int change = 0; change < kChanges; ++change) {
            const Elements elements[] = {Elements(documents[0]), Elements(documents[1])};
            for (std::size_t i = 0; i < 2 * selectors.size(); ++i) {
                ExpectSame(compounds[i / 2], selectors[i / 2], elements[i % 2], random, matches);
                if (HasFatalFailure()) return;
            }
            ChangeRandomly(documents[change % 2], random);
        }
    }
    EXPECT_GT(matches, 10'000);  // or nothing was tested
}

TEST(MatchesLongWalk, AnAnswerEndsWithTheChangeOfWhatItCameFrom) {
    Dom::Document document;
    Element* const last = MakeMany(document, 100, true);
    Element* const first = FirstElement(document);
    const Selector below("x a");
    EXPECT_TRUE(below.Matches(*last));
    Element* const other = document.CreateElement("y");
    Dom::Node* const rest = first->RemoveChild(first->FirstChild());
    EXPECT_FALSE(below.Matches(*last));
    first->ParentNode()->AppendChild(other)->AppendChild(rest);
    EXPECT_FALSE(below.Matches(*last));
    EXPECT_TRUE(Selector("y a").Matches(*last));
    other->SetAttribute("class", "k");
    const Selector classed(".k a");
    EXPECT_TRUE(classed.Matches(*last));
    other->GetAttributeNode("class")->SetValue("l");
    EXPECT_FALSE(classed.Matches(*last));
}

TEST(MatchesLongWalk, AnAnswerEndsWithTheTextThatItCameFrom) {
    Dom::Document document;
    Element* const last = MakeMany(document, 100, false);
    Dom::Text* const text = support::AddText(*FirstElement(document), "one");
    const Selector selector("x:contains('two') ~ a");
    EXPECT_FALSE(selector.Matches(*last));
    text->SetData("two");
    EXPECT_TRUE(selector.Matches(*last));
    text->SetData("");
    EXPECT_FALSE(selector.Matches(*last));
    EXPECT_TRUE(Selector("x:empty ~ a").Matches(*last));
}

TEST(MatchesLongWalk, TheLanguageIsThatOfTheNearestThatDeclaresOne) {
    Dom::Document document;
    Element* const last = MakeMany(document, 100, true);
    Element* const root = document.DocumentElement();
    const Selector english(":lang(en)");
    const Selector german(":lang(de)");
    EXPECT_FALSE(english.Matches(*last));
    root->SetAttribute("lang", "en-GB");
    EXPECT_TRUE(english.Matches(*last));
    FirstElement(document)->SetAttribute("xml:lang", "de");
    EXPECT_FALSE(english.Matches(*last));
    EXPECT_TRUE(german.Matches(*last));
    last->SetAttribute("lang", "");
    EXPECT_FALSE(german.Matches(*last));
    EXPECT_TRUE(german.Matches(*static_cast<Element*>(last->ParentNode())));
}

// A document, or a selector, is another one though it lies where one was before.
TEST(MatchesLongWalk, NothingIsRememberedOfWhatIsGone) {
    const Selector above("x a");
    const Selector before("x ~ a");
    for (int i = 0; i < 20; ++i) {
        const bool isChain = i % 2 == 0;
        Dom::Document document;
        const Element* const last = MakeMany(document, 100, isChain);
        EXPECT_EQ(above.Matches(*last), isChain) << i;
        EXPECT_EQ(before.Matches(*last), !isChain) << i;
        EXPECT_EQ(Selector("x a").Matches(*last), isChain) << i;
        EXPECT_FALSE(Selector("y a").Matches(*last)) << i;
        EXPECT_FALSE(Selector("y ~ a").Matches(*last)) << i;
    }
}

// Of two trees of the same shape one has an x on top.
TEST(MatchesLongWalk, EachDocumentHasItsOwnAnswers) {
    const Selector selector("x a");
    for (int i = 0; i < 20; ++i) {
        Dom::Document document;
        Element* at = support::AddElement(document, i % 2 == 0 ? "x" : "y");
        for (int depth = 0; depth < 100; ++depth)
            at = support::AddElement(*at, "a");
        EXPECT_EQ(selector.Matches(*at), i % 2 == 0) << i;
    }
}

TEST(MatchesLongWalk, ADocumentMayGoFromThreadToThread) {
    Dom::Document document;
    Element* const last = MakeMany(document, 100, false);
    Element* const first = FirstElement(document);
    const Selector selector(".k ~ a");
    EXPECT_FALSE(selector.Matches(*last));
    bool matched = false;
    std::thread other([&] {
        matched = selector.Matches(*last);
        first->SetAttribute("class", "k");
    });
    other.join();
    EXPECT_FALSE(matched);
    EXPECT_TRUE(selector.Matches(*last));
}

TEST(MatchesHostile, SiblingsOfManyElementsTakeLinearTime) {
    Dom::Document document;
    MakeMany(document, kMany, false);
    constexpr Count kCases[] = {
        {"x ~ a", kMany - 1},     {"y ~ a", 0},     {"y ~ x ~ a", 0}, {"x ~ a ~ a", kMany - 2},
        {"x + a ~ a", kMany - 2}, {"y + a ~ a", 0}, {"y > a ~ a", 0}, {"r > x ~ a", kMany - 1},
        {"y x ~ a", 0},
    };
    for (const Count& c : kCases)
        EXPECT_EQ(QuerySelectorAll(document, c.selector).size(), c.expected) << c.selector;
}

TEST(MatchesHostile, AncestorsOfManyElementsTakeLinearTime) {
    Dom::Document document;
    MakeMany(document, kMany, true);
    constexpr Count kCases[] = {
        {"x a", kMany - 1},     {"y a", 0},          {"y x a", 0},           {"x a a", kMany - 2},
        {"x > a a", kMany - 2}, {"y > a a", 0},      {"y a a", 0},           {"y ~ a a", 0},
        {":lang(en)", 0},       {"a:lang(en) a", 0}, {"r > x a", kMany - 1},
    };
    for (const Count& c : kCases)
        EXPECT_EQ(QuerySelectorAll(document, c.selector).size(), c.expected) << c.selector;
}

// The elements at the side of a deep chain come from the innermost one on.
TEST(MatchesHostile, AncestorsTakeLinearTimeFromTheDeepestOn) {
    Dom::Document document;
    Element* deep = MakeMany(document, kMany / 2, true);
    for (; deep->NodeName() == "a"; deep = static_cast<Element*>(deep->ParentNode()))
        support::AddElement(*deep, "b");
    EXPECT_EQ(QuerySelectorAll(document, "x b").size(), kMany / 2 - 1);
    EXPECT_EQ(QuerySelectorAll(document, "y b").size(), 0U);
    EXPECT_EQ(QuerySelectorAll(document, "r > x b").size(), kMany / 2 - 1);
}

TEST(MatchesHostile, SiblingsInAnyOrderTakeLinearTime) {
    Dom::Document document;
    MakeMany(document, kMany, false);
    const std::vector<Element*> elements = support::ElementsOf(document);
    const Selector selector("x ~ a");
    EXPECT_EQ(std::count_if(elements.rbegin(), elements.rend(),
                            [&](const Element* one) { return selector.Matches(*one); }),
              static_cast<std::ptrdiff_t>(kMany - 1));
}
