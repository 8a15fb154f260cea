// SPDX-License-Identifier: MIT

// How many elements of two samples a list of selectors selects, and which: the second number is the
// sum of their positions in the document, from 1 on.
//
// The numbers were made by other implementations: cssselect2 0.7.0 and cssselect 1.2.0 with lxml
// 4.9.2, which agreed wherever both know the selector; the latter alone knows :contains(). Text of
// nothing but white space was taken out of the documents before, as Document::Load() leaves it out.

#include <espalier/dom/css/CSSStyleRule.h>
#include <espalier/dom/css/QuerySelector.h>
#include <espalier/dom/css/Specificity.h>

#include "dom/css/Matching.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace {

using Dom::CSS::CSSRule;
using Dom::CSS::CSSStyleRule;
using Dom::CSS::Selector;

struct Selection {
    const char* selector;
    int count;
    int sum;
};

constexpr Selection kPage[] = {
    // clang-format off
    {"*", 27, 378},
    {"p", 2, 34},
    {"P", 0, 0},
    {"table", 1, 10},
    {"tr", 4, 69},
    {"html p", 2, 34},
    {"html > p", 0, 0},
    {"body > p", 2, 34},
    {"body > *", 4, 52},
    {"body p, head *", 6, 52},
    {"h1 + p", 1, 9},
    {"h1 + table", 0, 0},
    {"h1 ~ p", 2, 34},
    {"p ~ p", 1, 25},
    {"p + p", 0, 0},
    {"p + table + p", 1, 25},
    {"table tr td", 6, 123},
    {"table > tr", 0, 0},
    {"tbody > tr > td", 6, 123},
    {"tr > td + td", 3, 63},
    {"td:first-child", 3, 60},
    {"td:last-child", 3, 63},
    {"th:first-child + th", 1, 14},
    {"tr:nth-child(odd)", 3, 50},
    {"tr:nth-child(even)", 1, 19},
    {"tr:nth-child(2n+1)", 3, 50},
    {"tr:nth-child(-n+2)", 3, 47},
    {"tr:nth-last-child(1)", 2, 34},
    {"tr:nth-last-child(n+2)", 2, 35},
    {"body > :nth-child(3)", 1, 10},
    {"body > p:nth-of-type(2)", 1, 25},
    {"body > p:nth-last-of-type(2)", 1, 9},
    {"head > :first-of-type", 4, 18},
    {"head > :only-of-type", 4, 18},
    {"body > :only-of-type", 2, 18},
    {"thead > tr:only-child", 1, 12},
    {"table :only-child", 1, 12},
    {"*:empty", 3, 35},
    {"head > *:empty", 2, 9},
    {"br", 1, 26},
    {"p > br", 1, 26},
    {".odd", 2, 38},
    {"tr.odd td", 4, 82},
    {"tr:not(.odd)", 2, 31},
    {"tbody > :not(.odd) > td", 2, 41},
    {".page", 1, 8},
    {".page.title", 1, 8},
    {".title.page", 1, 8},
    {".title.hours", 0, 0},
    {"#notice", 1, 9},
    {"p#notice.warning", 1, 9},
    {"#notice.hours", 0, 0},
    {"*.warning, .hours", 2, 19},
    {"[class]", 5, 65},
    {"[class=odd]", 2, 38},
    {"[class=\"page title\"]", 1, 8},
    {"[class~=title]", 1, 8},
    {"[class~=pag]", 0, 0},
    {"[class^=pa]", 1, 8},
    {"[class$=le]", 1, 8},
    {"[class*=a]", 2, 17},
    {"[lang|=en]", 1, 1},
    {"[href^='mailto:']", 1, 27},
    {"a[href$=\".example\"]", 1, 27},
    {"a[href*=nursery][title]", 1, 27},
    {"[type='text/css']", 2, 11},
    {"meta[name][content]", 1, 4},
    {"[summary] td", 6, 123},
    {":not([class]) > a", 1, 27},
    {"a:link", 1, 27},
    {":link", 2, 32},
    {":root", 1, 1},
    {":root > body", 1, 7},
    {"html:root > head > title", 1, 3},
    {"p:lang(en)", 2, 34},
    {":lang(fr)", 0, 0},
    {":hover", 0, 0},
    {"a:not(:hover)", 1, 27},
    {"p:not(#notice) a", 1, 27},
    {"tr:not(:first-child):not(:last-child)", 1, 19},
    {"tbody tr + tr > td:first-child", 2, 43},
    {"td:contains(\"16\")", 2, 42},
    {"p:contains(\"welcome\")", 1, 25},
    {"*:contains(\"October\")", 6, 78},
    // clang-format on
};

constexpr Selection kCatalogue[] = {
    // clang-format off
    {"*", 27, 378},
    {"plant", 5, 63},
    {"catalogue > department > plant", 5, 63},
    {"department plant", 5, 63},
    {"catalogue > plant", 0, 0},
    {"plant + plant", 3, 42},
    {"plant ~ plant", 3, 42},
    {"plant:first-child + plant", 2, 30},
    {"plant:first-child ~ plant", 3, 42},
    {"department:last-of-type > plant", 2, 40},
    {"department + department plant", 2, 40},
    {"department ~ delivery", 1, 27},
    {"plant:nth-child(2)", 2, 30},
    {"plant:nth-child(2n)", 2, 30},
    {"plant:nth-last-child(2)", 2, 26},
    {"plant:nth-last-of-type(1)", 2, 34},
    {"title:first-child", 5, 68},
    {"plant > :last-child", 5, 81},
    {"plant > :nth-last-child(2)", 5, 76},
    {"note:nth-child(4)", 3, 49},
    {"note:last-child", 3, 49},
    {"price + note", 3, 49},
    {"latin + price + note", 3, 49},
    {"title ~ note", 3, 49},
    {"title ~ price", 5, 78},
    {"plant > :not(title)", 13, 200},
    {"plant:not([stock=\"0\"])", 4, 51},
    {"plant:not(#p-101) > note", 2, 42},
    {"#p-102", 1, 8},
    {"#p-102 > title", 1, 9},
    {"[id^=\"p-1\"]", 3, 23},
    {"[id$=\"1\"]", 2, 21},
    {"[id*=\"-2\"]", 2, 40},
    {"[stock]", 5, 63},
    {"[stock=\"3\"]", 1, 8},
    {"[stock='0'] note", 1, 16},
    {"[id][stock]", 5, 63},
    {"[name=\"Wall fruit\"] plant", 3, 23},
    {"[name~=fruit]", 1, 2},
    {"[name~=\"Wall\"] > plant > latin", 3, 29},
    {"[currency=EUR]", 5, 78},
    {"[currency|=EUR]", 5, 78},
    {"plant, delivery", 6, 90},
    {"department > plant:last-child, title", 7, 102},
    {"*:empty", 1, 27},
    {"catalogue > :empty", 1, 27},
    {"catalogue:root", 1, 1},
    {":root > :last-child", 1, 27},
    {":root > :nth-child(n+2)", 2, 44},
    {":lang(en) > plant", 5, 63},
    {"latin:contains(\"us\")", 3, 29},
    {"title:contains(\"fan\")", 2, 22},
    {"plant:contains(\"Clematis\")", 1, 18},
    {"note:contains(\"<itself>\")", 1, 16},
    {"price:contains(\".\")", 5, 78},
    {"plant:only-of-type", 0, 0},
    {"delivery:only-of-type", 1, 27},
    {"delivery[free-from]", 1, 27},
    {"delivery[free-from^=\"120\"]", 1, 27},
    {"department:first-child plant:nth-of-type(odd) > price", 2, 21},
    // clang-format on
};

template <std::size_t Count>
void ExpectSelections(const char* file, int elements, const Selection (&selections)[Count]) {
    Dom::Document document;
    document.Load(std::string(ESPALIER_SAMPLES "/") + file);
    const std::vector<Dom::Element*> all = support::ElementsOf(document);
    ASSERT_EQ(all.size(), static_cast<std::size_t>(elements));
    int rules = 0;
    for (const Selection& expected : selections) {
        SCOPED_TRACE(expected.selector);
        const Selector selector(expected.selector);
        // The selectors of rules are fewer; those that are taken select the same.
        CSSStyleRule rule(nullptr, nullptr, CSSRule::Author);
        const bool isForRules = Dom::CSS::CSS_SPECIFICITY(expected.selector) >= 0;
        if (isForRules) rule.SetSelectorText(expected.selector);
        rules += isForRules ? 1 : 0;
        const std::vector<Dom::Element*> found =
            Dom::CSS::QuerySelectorAll(document, expected.selector);
        auto next = found.begin();
        int count = 0;
        int sum = 0;
        for (int i = 0; i < elements; ++i) {
            Dom::Element* const element = all[static_cast<std::size_t>(i)];
            const bool matches = selector.Matches(*element);
            EXPECT_EQ(next != found.end() && *next == element, matches) << "element " << i + 1;
            next += matches ? 1 : 0;
            count += matches ? 1 : 0;
            sum += matches ? i + 1 : 0;
            if (isForRules) {
                EXPECT_EQ(rule.MatchesSelector(element, ""), matches) << "element " << i + 1;
            }
        }
        EXPECT_EQ(count, expected.count);
        EXPECT_EQ(sum, expected.sum);
    }
    EXPECT_GT(rules, static_cast<int>(Count) / 2);
}

}  // namespace

TEST(SelectorAgreement, APage) { ExpectSelections("page.xhtml", 27, kPage); }

TEST(SelectorAgreement, ACatalogue) { ExpectSelections("catalogue.xml", 27, kCatalogue); }
