// SPDX-License-Identifier: MIT
//
// Lets every single allocation of making, changing, merging and matching styles fail, one run for
// each: nothing is lost, and what was to be changed can be used and destroyed.
#include <espalier/dom.h>
#include <espalier/dom/css/CSSStyleDeclaration.h>
#include <espalier/dom/css/CSSStyleRule.h>
#include <espalier/dom/css/CSSStyleSheet.h>
#include <espalier/dom/css/ParseStyleSheet.h>
#include <espalier/dom/css/Selector.h>

#include "support/FailingAllocation.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Dom::CSS::CSSRule;
using Dom::CSS::CSSStyleDeclaration;
using Dom::CSS::CSSStyleRule;
using Dom::CSS::CSSStyleSheet;

// No string keeps it inside.
#define LONG(text) text "-that-is-longer-than-what-a-string-keeps-inside"

template <typename Run>
bool HasMemory(const Run& run) {
    try {
        run();
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

constexpr char kDeclaration[] =
    LONG("name") ": " LONG("value") "; margin: 1px 2px !important; list: a, 'b', url(c), #123; "
                 "border: 1px solid red; background: red none 0 0; calc: calc(1px + 2px); "
                 "inherited: inherit; color: " LONG("a") " " LONG("b") " !important";

const char* const kRules[] = {
    "p { color: red }",
    LONG("selector") " > p.k[a=b]:not(.l), q + r { a: b; " LONG("n") ": " LONG("v") " }",
    "@media " LONG("print") " { p { a: b } }",
};

std::string Texts(const CSSStyleSheet& sheet) {
    std::string texts;
    for (const CSSRule* const rule : sheet.CssRules())
        texts += rule->CssText().str() + "\n";
    return texts;
}

using Change = void (*)(CSSStyleDeclaration& declaration);

const Change kChanges[] = {
    [](CSSStyleDeclaration& d) { d.SetCssText(kDeclaration); },
    [](CSSStyleDeclaration& d) { d.SetCssText(astring(kDeclaration)); },
    [](CSSStyleDeclaration& d) { d.SetProperty(LONG("name"), LONG("value"), "important"); },
    [](CSSStyleDeclaration& d) { d.SetProperty("old", LONG("value"), ""); },
    [](CSSStyleDeclaration& d) { d.SetProperty("padding", "1px 2px", ""); },
    [](CSSStyleDeclaration& d) { d.RemoveProperty("old"); },
    [](CSSStyleDeclaration& d) { d.GetPropertyCSSValue("old")->SetCssText("a, b, " LONG("c")); },
    [](CSSStyleDeclaration& d) { d.CssText(); },
    [](CSSStyleDeclaration& d) { const CSSStyleDeclaration copy(d); },
    [](CSSStyleDeclaration& d) {
        CSSStyleDeclaration target(nullptr);
        target.SetProperty("a", "b", "");
        target = d;
    },
    [](CSSStyleDeclaration& d) {
        CSSStyleDeclaration source(nullptr);
        source.SetCssText(kDeclaration);
        d.Cascade(source, CSSRule::Author, 5);
        d.Cascade(source, CSSRule::Author, 6);
    },
    [](CSSStyleDeclaration& d) { d.Cascade(d, CSSRule::Author, 5); },
};

}  // namespace

TEST(CssAllocation, EveryAllocationOfAChangeMayFail) {
    long failures = 0;
    for (std::size_t i = 0; i < std::size(kChanges); ++i) {
        SCOPED_TRACE(i);
        failures += FailingAllocation::ForEachFailure([&](FailingAllocation& failure) {
            {
                std::optional<CSSStyleDeclaration> declaration;
                FailingAllocation::Exempt([&] {
                    declaration.emplace(nullptr);
                    declaration->SetCssText("old: a b c; " LONG("other") ": 1; margin: 1px");
                });
                const bool hasMemory = HasMemory([&] { kChanges[i](*declaration); });
                FailingAllocation::Exempt([&] {
                    EXPECT_EQ(hasMemory, !failure.HasFailed());
                    declaration->SetProperty("last", "red", "");
                    EXPECT_EQ(declaration->GetPropertyValue("last"), "red");
                    declaration->SetCssText("a: b");
                    EXPECT_EQ(declaration->CssText(), "a: b");
                    declaration.reset();
                });
            }
            FailingAllocation::Exempt([&] { EXPECT_EQ(failure.LiveCount(), 0); });
        });
    }
    EXPECT_GT(failures, 100);
}

TEST(CssAllocation, ARuleThatIsNotInsertedLeavesTheSheetAsItWas) {
    for (const char* const text : kRules) {
        SCOPED_TRACE(text);
        const long failures = FailingAllocation::ForEachFailure([&](FailingAllocation& failure) {
            {
                std::optional<CSSStyleSheet> sheet;
                FailingAllocation::Exempt([&] {
                    sheet.emplace(CSSRule::Author, nullptr, "", "");
                    for (unsigned long i = 0; i < 16; ++i)  // so that the list has to grow
                        sheet->InsertRule("old { a: b }", i);
                });
                const bool hasMemory = HasMemory([&] { sheet->InsertRule(text, 3); });
                FailingAllocation::Exempt([&] {
                    EXPECT_EQ(hasMemory, !failure.HasFailed());
                    EXPECT_EQ(sheet->CssRules().Length(), hasMemory ? 17U : 16U);
                    if (!hasMemory) {
                        EXPECT_EQ(Texts(*sheet).find("p"), std::string::npos);
                    }
                    sheet->InsertRule("q { }", 0);
                    sheet.reset();
                });
            }
            FailingAllocation::Exempt([&] { EXPECT_EQ(failure.LiveCount(), 0); });
        });
        EXPECT_EQ(failures, *text == '@' ? 3 : 2) << "the rule with its texts, and the list";
    }
}

TEST(CssAllocation, PropertiesAreMadeLaterWhenMemoryIsOut) {
    for (const char* const text : kRules) {
        if (*text == '@') continue;
        SCOPED_TRACE(text);
        const long failures = FailingAllocation::ForEachFailure([&](FailingAllocation& failure) {
            {
                std::optional<CSSStyleSheet> sheet;
                const CSSStyleDeclaration* style = nullptr;
                FailingAllocation::Exempt([&] {
                    sheet.emplace(CSSRule::Author, nullptr, "", "");
                    sheet->InsertRule(text, 0);
                    style = &static_cast<CSSStyleRule*>(sheet->CssRules().Item(0))->Style();
                });
                const bool hasMemory = HasMemory([&] { EXPECT_GT(style->Length(), 0U); });
                FailingAllocation::Exempt([&] {
                    EXPECT_EQ(hasMemory, !failure.HasFailed());
                    EXPECT_GT(style->Length(), 0U);
                    sheet.reset();
                });
            }
            FailingAllocation::Exempt([&] { EXPECT_EQ(failure.LiveCount(), 0); });
        });
        EXPECT_GE(failures, 2) << "the list, and a property";
    }
}

TEST(CssAllocation, EveryAllocationOfAMatchMayFail) {
    static constexpr char kSelector[] = "r > " LONG("p") ".k:nth-child(2), p[a=" LONG("v") "]";
    Dom::Document document;
    document.LoadXml("<r><p/><p class='k' a='" LONG("v") "'/><q/></r>");
    Dom::Element* const root = document.DocumentElement();
    Dom::Element* const child = static_cast<Dom::Element*>(root->FirstChild()->NextSibling());
    long failures = FailingAllocation::ForEachFailure([&](FailingAllocation& failure) {
        std::optional<CSSStyleRule> rule;
        FailingAllocation::Exempt([&] {
            rule.emplace(nullptr, nullptr, CSSRule::Author);
            rule->SetSelectorText(kSelector);
        });
        const bool hasMemory = HasMemory([&] { rule->MatchesSelector(child, ""); });
        FailingAllocation::Exempt([&] {
            EXPECT_EQ(hasMemory, !failure.HasFailed());
            EXPECT_TRUE(rule->MatchesSelector(child, ""));
            EXPECT_FALSE(rule->MatchesSelector(root, ""));
            rule.reset();
        });
    });
    EXPECT_GT(failures, 0);
    failures = FailingAllocation::ForEachFailure([&](FailingAllocation& failure) {
        const bool hasMemory =
            HasMemory([&] { EXPECT_TRUE(Dom::CSS::Selector(kSelector).Matches(*child)); });
        FailingAllocation::Exempt([&] { EXPECT_EQ(hasMemory, !failure.HasFailed()); });
    });
    EXPECT_GT(failures, 0);
}

TEST(CssAllocation, ASheetThatIsNotReadWholeHasWholeRules) {
    const char* const kText =
        "@charset \"utf-8\";@import url(" LONG("address") ");" LONG("p") ", q{a:b;c d;margin:1px}"
        "@media print{" LONG("r") "{--x:{y;};e:'" LONG("f") "'/**/}@x{y}}@page " LONG("z") "{a:b}";
    const long failures = FailingAllocation::ForEachFailure([&](FailingAllocation& failure) {
        {
            std::optional<CSSStyleSheet> sheet;
            std::optional<std::vector<Dom::CSS::DroppedText>> dropped;
            FailingAllocation::Exempt([&] {
                sheet.emplace(CSSRule::Author, nullptr, "", "");
                dropped.emplace();
            });
            const bool hasMemory = HasMemory(
                [&] { ParseStyleSheet(*sheet, std::string_view(kText), {.dropped = &*dropped}); });
            FailingAllocation::Exempt([&] {
                EXPECT_EQ(hasMemory, !failure.HasFailed());
                EXPECT_LE(sheet->CssRules().Length(), 5U);
                EXPECT_EQ(sheet->CssRules().Length() == 5 && dropped->size() == 1, hasMemory);
                for (const CSSRule* const rule : sheet->CssRules())
                    EXPECT_FALSE(rule->CssText().empty());
                sheet.reset();
                dropped.reset();
            });
        }
        FailingAllocation::Exempt([&] { EXPECT_EQ(failure.LiveCount(), 0); });
    });
    EXPECT_GT(failures, 30);
}
