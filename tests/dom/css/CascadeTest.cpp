// SPDX-License-Identifier: MIT

// How declarations are merged: which of two properties wins, what the winner carries, and in which
// order the properties are afterwards.

#include <espalier/dom/css/CSSStyleDeclaration.h>
#include <espalier/dom/css/CSSStyleRule.h>
#include <espalier/dom/css/CSSUnknownRule.h>

#include "dom/css/DeclarationText.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace {

using Dom::CSS::CSSPropertyImpl;
using Dom::CSS::CSSRule;
using Dom::CSS::CSSStyleDeclaration;
using Dom::CSS::CSSStyleRule;
using Dom::CSS::CSSUnknownRule;
using support::Declared;
using support::PropertiesOf;

// A declaration of "margin-top", written out or by a shorthand.
std::string MarginTop(const char* value, bool important, bool shorthand) {
    return std::string(shorthand ? "margin: " : "margin-top: ") + value +
           (important ? " !important" : "");
}

// The margin-top that is left when `later` is merged over `earlier`.
struct Side {
    CSSRule::RULE_ORIGIN origin;
    int specificity;
};
std::string Winner(const std::string& earlier, Side earlierSide, const std::string& later,
                   Side laterSide) {
    CSSStyleDeclaration merged(nullptr);
    merged.Cascade(Declared(earlier), earlierSide.origin, earlierSide.specificity);
    merged.Cascade(Declared(later), laterSide.origin, laterSide.specificity);
    return merged.GetPropertyValue("margin-top").str();
}

constexpr CSSRule::RULE_ORIGIN kOrigins[] = {CSSRule::Author, CSSRule::User, CSSRule::UserAgent};

}  // namespace

// Each row says who wins, the later one or the earlier one (L, E), in nine columns: the later one's
// origin is less, equal, greater, and in each of these its specificity is less, equal, greater.
TEST(Cascade, TheWholeTable) {
    const struct {
        bool laterImportant;
        bool earlierImportant;
        bool laterShorthand;
        bool earlierShorthand;
        const char* winners;
    } kCases[] = {
        {true, false, false, false, "LLL LLL LLL"},  {true, false, false, true, "LLL LLL LLL"},
        {true, false, true, false, "LLL LLL LLL"},   {true, false, true, true, "LLL LLL LLL"},
        {false, true, false, false, "EEE EEE EEE"},  {false, true, false, true, "EEE EEE EEE"},
        {false, true, true, false, "EEE EEE EEE"},   {false, true, true, true, "EEE EEE EEE"},
        {true, true, false, false, "EEE ELL LLL"},   {true, true, false, true, "EEE LLL LLL"},
        {true, true, true, false, "EEE ELL LLL"},    {true, true, true, true, "EEE ELL LLL"},
        {false, false, false, false, "LLL ELL EEE"}, {false, false, false, true, "LLL LLL EEE"},
        {false, false, true, false, "LLL ELL EEE"},  {false, false, true, true, "LLL ELL EEE"},
    };
    constexpr int kSpecificities[] = {999, 1000, 1'000'001};
    for (const auto& c : kCases) {
        const std::string earlier = MarginTop("E", c.earlierImportant, c.earlierShorthand);
        const std::string later = MarginTop("L", c.laterImportant, c.laterShorthand);
        for (const CSSRule::RULE_ORIGIN earlierOrigin : kOrigins) {
            for (const CSSRule::RULE_ORIGIN laterOrigin : kOrigins) {
                const std::size_t group =
                    laterOrigin < earlierOrigin ? 0 : (laterOrigin == earlierOrigin ? 4 : 8);
                for (std::size_t column = 0; column < 3; ++column) {
                    EXPECT_EQ(Winner(earlier, {earlierOrigin, 1000}, later,
                                     {laterOrigin, kSpecificities[column]}),
                              std::string(1, c.winners[group + column]))
                        << earlier << " in " << earlierOrigin << ", then " << later << " in "
                        << laterOrigin << " with " << kSpecificities[column];
                }
            }
        }
    }
}

// Among important properties the greater number of an origin wins, among others the smaller one.
TEST(Cascade, ThreeOriginsInEveryOrder) {
    const CSSRule::RULE_ORIGIN orders[][3] = {
        {CSSRule::Author, CSSRule::User, CSSRule::UserAgent},
        {CSSRule::Author, CSSRule::UserAgent, CSSRule::User},
        {CSSRule::User, CSSRule::Author, CSSRule::UserAgent},
        {CSSRule::User, CSSRule::UserAgent, CSSRule::Author},
        {CSSRule::UserAgent, CSSRule::Author, CSSRule::User},
        {CSSRule::UserAgent, CSSRule::User, CSSRule::Author},
    };
    for (const auto& order : orders) {
        CSSStyleDeclaration merged(nullptr);
        for (const CSSRule::RULE_ORIGIN origin : order) {
            const std::string number = std::to_string(origin);
            merged.Cascade(Declared("a: n" + number + "; b: n" + number + " !important"), origin,
                           5);
        }
        EXPECT_EQ(merged.GetPropertyValue("a"), "n0");
        EXPECT_EQ(merged.GetPropertyValue("b"), "n2");
        EXPECT_EQ(merged.Length(), 2U);
    }
}

// Deliberate: what is written out beats what a shorthand made, however specific that was.
TEST(Cascade, DeliberateAPropertyBeatsOneOfAShorthandWhateverTheSpecificity) {
    CSSStyleDeclaration merged(nullptr);
    merged.Cascade(Declared("margin: 1px"), CSSRule::Author, 5'000'000);
    merged.Cascade(Declared("margin-left: 2px"), CSSRule::Author, 0);
    EXPECT_EQ(PropertiesOf(merged),
              "[margin-top: 1px]; [margin-right: 1px]; [margin-bottom: 1px]; margin-left: 2px");
    merged.Cascade(Declared("margin: 3px"), CSSRule::Author, 0);
    EXPECT_EQ(merged.GetPropertyValue("margin-left"), "3px");  // 0 is at least 0
    EXPECT_EQ(merged.GetPropertyValue("margin-top"), "1px");
}

// --- what the copies carry ---

TEST(Cascade, CopiesCarryTheArgumentsWhenTheSourceHasNoRule) {
    CSSStyleDeclaration merged(nullptr);
    const Declared source("a: 1 !important; padding: 2px");
    merged.Cascade(source, CSSRule::User, 42);
    ASSERT_EQ(PropertiesOf(merged), PropertiesOf(source));
    for (unsigned i = 0; i < merged.Length(); ++i) {
        const CSSPropertyImpl* const copy = merged.Properties().Item(i);
        EXPECT_EQ(copy->Origin(), CSSRule::User);
        EXPECT_EQ(copy->Specificity(), 42);
        EXPECT_NE(copy->GetCSSValue(), source.Properties().Item(i)->GetCSSValue());
    }
    EXPECT_EQ(source.Properties().Item(0)->Origin(), CSSRule::Author);
    merged.GetPropertyCSSValue("a")->SetCssText("9");
    EXPECT_EQ(source.GetPropertyValue("a"), "1");
}

TEST(Cascade, CopiesCarryOriginAndSpecificityOfTheStyleRuleWhateverTheArguments) {
    CSSStyleRule rule(nullptr, nullptr, CSSRule::User);
    rule.SetCssText("p.a { a: 1 }");
    CSSStyleDeclaration merged(nullptr);
    merged.Cascade(rule.Style(), CSSRule::UserAgent, 42);
    EXPECT_EQ(merged.Properties().Item(0)->Origin(), CSSRule::User);
    EXPECT_EQ(merged.Properties().Item(0)->Specificity(), 1001);
    // Those of the rule as it is, not as it was when the property was read.
    rule.SetSelectorText("#b");
    merged.Cascade(rule.Style(), CSSRule::UserAgent, 42);
    EXPECT_EQ(merged.Properties().Item(0)->Specificity(), 1'000'000);
}

TEST(Cascade, CopiesCarryTheOriginOfAnotherRuleAndTheSpecificityGiven) {
    CSSUnknownRule rule(nullptr, nullptr, CSSRule::UserAgent);
    const Declared source("a: 1", &rule);
    CSSStyleDeclaration merged(nullptr);
    merged.Cascade(source, CSSRule::User, 42);
    EXPECT_EQ(merged.Properties().Item(0)->Origin(), CSSRule::UserAgent);
    EXPECT_EQ(merged.Properties().Item(0)->Specificity(), 42);
}

TEST(Cascade, TheRulesOfTheSourcesDecide) {
    CSSStyleRule specific(nullptr, nullptr, CSSRule::Author);
    specific.SetCssText("#a { color: specific }");
    CSSStyleRule later(nullptr, nullptr, CSSRule::Author);
    later.SetCssText("p { color: later }");
    CSSStyleRule agent(nullptr, nullptr, CSSRule::UserAgent);
    agent.SetCssText("#a { color: agent }");
    CSSStyleDeclaration merged(nullptr);
    for (const CSSStyleRule* const rule : {&agent, &specific, &later, &agent})
        merged.Cascade(rule->Style(), CSSRule::Author, 9'000'000);
    EXPECT_EQ(merged.CssText(), "color: specific");
}

// The destination's own rule does not matter, only what its properties carry.
TEST(Cascade, TheRuleOfTheDestinationDoesNotCount) {
    CSSUnknownRule rule(nullptr, nullptr, CSSRule::UserAgent);
    CSSStyleDeclaration merged(&rule);
    merged.Cascade(Declared("a: 1"), CSSRule::Author, 5);
    EXPECT_EQ(merged.Properties().Item(0)->Origin(), CSSRule::Author);
    merged.Cascade(Declared("a: 2"), CSSRule::User, 9);
    EXPECT_EQ(merged.CssText(), "a: 1");
    EXPECT_EQ(merged.ParentRule(), &rule);
}

// --- the order afterwards, and names that come twice ---

// With more properties than fit a short list the merge may take another way; the result is the
// same.
TEST(Cascade, WinnersGoToTheEndAndLosersChangeNothing) {
    const struct {
        const char* before;
        const char* source;
        const char* after;
    } kCases[] = {
        {"", "", ""},
        {"a: 1", "", "a: 1"},
        {"", "a: 1; b: 2", "a: 1; b: 2"},
        {"a: 1; b: 2; c: 3", "b: x", "a: 1; c: 3; b: x"},
        {"a: 1; b: 2; c: 3", "c: x; a: y", "b: 2; c: x; a: y"},
        {"a: 1; b: 2; c: 3", "d: x; b: y; e: z", "a: 1; c: 3; d: x; b: y; e: z"},
        {"a: 1 !important; b: 2", "a: x; b: y", "a: 1 !important; b: y"},
        {"a: 1; b: 2", "a: x !important; b: y", "a: x !important; b: y"},
        {"a: 1; A: 2", "A: x; B: y", "a: 1; A: x; B: y"},
        // What a source says twice: the later one is compared with the copy of the earlier one.
        {"", "a: x; a: y", "a: y"},
        {"", "a: x; b: y; a: z", "b: y; a: z"},
        {"", "a: x !important; b: y; a: z", "a: x !important; b: y"},
        {"a: 1; b: 2", "a: x; a: y; a: z", "b: 2; a: z"},
        // What the declaration says twice: the first one counts.
        {"a: 1; b: 2; a: 3", "a: x", "b: 2; a: 3; a: x"},
        {"a: 1; b: 2; a: 3", "a: x; a: y", "b: 2; a: x; a: y"},
        {"a: 1; b: 2; a: 3", "a: x; a: y; a: z", "b: 2; a: y; a: z"},
        {"a: 1 !important; a: 2", "a: x", "a: 1 !important; a: 2"},
        {"a: 1; a: 2 !important", "a: x; a: y", "a: 2 !important; a: x"},
        {"a: 1; a: 2 !important", "a: x; a: y !important", "a: x; a: y !important"},
        {"margin: 1px", "margin: 2px",
         "[margin-top: 2px]; [margin-right: 2px]; [margin-bottom: 2px]; [margin-left: 2px]"},
        {"margin-top: 1px", "margin: 2px",
         "[margin-top: 2px]; [margin-right: 2px]; [margin-bottom: 2px]; [margin-left: 2px]"},
        {"margin: i", "margin: j",
         "margin: i; [margin-top: j]; [margin-right: j]; "
         "[margin-bottom: j]; [margin-left: j]"},
    };
    std::string filler;
    for (int i = 0; i < 40; ++i)
        filler += (i > 0 ? "; f" : "f") + std::to_string(i) + ": " + std::to_string(i);
    for (const auto& c : kCases) {
        SCOPED_TRACE(std::string(c.before) + " / " + c.source);
        Declared merged(c.before);
        merged.Cascade(Declared(c.source), CSSRule::Author, 0);
        EXPECT_EQ(PropertiesOf(merged), c.after);

        Declared longer(filler + "; " + c.before);
        longer.Cascade(Declared(c.source), CSSRule::Author, 0);
        const std::string after = c.after;
        EXPECT_EQ(PropertiesOf(longer), filler + (after.empty() ? "" : "; ") + after);
    }
}

TEST(Cascade, AnOwnOneKeepsWhatItHas) {
    const struct {
        const char* text;
        int specificity;
        CSSRule::RULE_ORIGIN origin;
        const char* after;
    } kCases[] = {
        {"a: 1; b: 2", 0, CSSRule::Author, "a: 1; b: 2"},
        {"a: 1; b: 2", -1, CSSRule::Author, "a: 1; b: 2"},
        {"a: 1; a: 2", 0, CSSRule::Author, "a: 1; a: 2"},
        {"a: 1; b: 2; a: 3", 0, CSSRule::Author, "a: 1; b: 2; a: 3"},
        {"a: 1 !important; b: 2", 0, CSSRule::User, "b: 2; a: 1 !important"},
        {"margin: 1px; margin-top: 2px", 0, CSSRule::Author,
         "[margin-top: 1px]; [margin-right: 1px]; [margin-bottom: 1px]; [margin-left: 1px]; "
         "margin-top: 2px"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        Declared declaration(c.text);
        declaration.Cascade(declaration, c.origin, c.specificity);
        EXPECT_EQ(PropertiesOf(declaration), c.after);
    }
}

TEST(Cascade, KeepsEveryKindOfValue) {
    const Declared source("a: inherit; b: calc(1px); c: d, e; f: url(g) h; i: \"j\"; k:");
    CSSStyleDeclaration merged(nullptr);
    merged.Cascade(source, CSSRule::Author, 0);
    EXPECT_EQ(merged.CssText(), source.CssText());
    for (const char* const name : {"a", "b", "c", "f", "i", "k"})
        EXPECT_EQ(support::KindOf(merged.GetPropertyCSSValue(name)),
                  support::KindOf(source.GetPropertyCSSValue(name)));
}

namespace {

std::string Numbered(int count, const char* value) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += "p" + std::to_string(i) + ": " + value + ";";
    return text;
}

}  // namespace

TEST(CascadeHostile, ManyPropertiesTakeLinearTime) {
    constexpr int kMany = 200'000;
    Declared merged(Numbered(kMany, "1"));
    merged.Cascade(Declared(Numbered(kMany, "2")), CSSRule::Author, 0);
    EXPECT_EQ(merged.Length(), static_cast<unsigned>(kMany));
    EXPECT_EQ(merged.Item(0), "p0");
    EXPECT_EQ(merged.Item(kMany - 1), "p" + std::to_string(kMany - 1));
    for (const CSSPropertyImpl* property : merged.Properties())
        ASSERT_EQ(property->Value(), "2");
    merged.Cascade(merged, CSSRule::Author, 0);
    EXPECT_EQ(merged.Length(), static_cast<unsigned>(kMany));
    merged.Cascade(Declared(Numbered(kMany, "3")), CSSRule::User, 0);
    EXPECT_EQ(merged.GetPropertyValue("p0"), "2");
}

TEST(CascadeHostile, OnePropertyManyTimesTakesLinearTime) {
    constexpr int kMany = 200'000;
    std::string text;
    for (int i = 0; i < kMany; ++i)
        text += "p: 1;";
    Declared merged(text);
    merged.Cascade(Declared(text + "p: 2"), CSSRule::Author, 0);
    EXPECT_EQ(merged.Length(), static_cast<unsigned>(kMany));
    EXPECT_EQ(merged.Properties().Item(kMany - 1)->Value(), "2");
}
