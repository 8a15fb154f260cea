// SPDX-License-Identifier: MIT
#include "css/RuleMatching.h"

#include <espalier/dom/Document.h>
#include <espalier/dom/Element.h>
#include <espalier/dom/css/CSSStyleRule.h>
#include <espalier/dom/css/RuleIndex.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>

#include "css/MadePage.h"
#include "css/SheetReading.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace bench {

namespace {

using Dom::CSS::CSSRule;
using Dom::CSS::CSSStyleRule;
using Dom::CSS::CSSStyleSheet;
using Dom::CSS::MatchedRule;
using Dom::CSS::RuleIndex;

constexpr std::size_t kElementsPerAsked = 50;

class Page {
public:
    Page() {
        const std::string text = MakePage(kMatchedElements);
        IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(text.data()),
                                static_cast<long>(text.size()));
        Xml::XmlTextReader reader;
        reader.SetStream(&stream, false);
        document_.Load(reader, "");
        Collect(*document_.DocumentElement());
        if (elements_.size() != kMatchedElements)
            throw std::runtime_error("a page of " + std::to_string(elements_.size()) +
                                     " elements was made");
        for (std::size_t i = 0; i < elements_.size(); i += kElementsPerAsked)
            some_.push_back(elements_[i]);
    }

    const std::vector<Dom::Element*>& Elements() const { return elements_; }
    // Returns a part of them.
    const std::vector<Dom::Element*>& Some() const { return some_; }

private:
    void Collect(Dom::Element& element) {
        elements_.push_back(&element);
        for (Dom::Node* child = element.FirstChild(); child != nullptr;
             child = child->NextSibling()) {
            if (child->NodeType() == Dom::Node::ELEMENT_NODE) {
                Collect(static_cast<Dom::Element&>(*child));
            }
        }
    }

    Dom::Document document_;
    std::vector<Dom::Element*> elements_;
    std::vector<Dom::Element*> some_;
};

// Returns how many rules there are for all of the elements.
std::size_t MatchAll(const RuleIndex& index, const std::vector<Dom::Element*>& elements) {
    std::size_t matches = 0;
    std::vector<MatchedRule> rules;
    for (const Dom::Element* const element : elements) {
        index.Match(*element, {}, rules);
        matches += rules.size();
    }
    return matches;
}

// Calls `visit` with each rule that selects an element, found by asking all rules.
template <typename Visit>
void AskEachRule(const CSSStyleSheet& sheet, Dom::Element* element, Visit visit) {
    for (const CSSRule* const rule : sheet.CssRules()) {
        const auto* const style = static_cast<const CSSStyleRule*>(rule);
        if (style->MatchesSelector(element, "")) visit(style);
    }
}

void CheckSame(const CSSStyleSheet& sheet, const Page& page) {
    RuleIndex index;
    index.Add(sheet);
    std::size_t matches = 0;
    for (Dom::Element* const element : page.Some()) {
        std::vector<const CSSStyleRule*> expected;
        AskEachRule(sheet, element, [&](const CSSStyleRule* rule) { expected.push_back(rule); });
        const std::vector<MatchedRule> found = index.Match(*element);
        if (!std::ranges::equal(found, expected, {}, &MatchedRule::rule)) {
            throw std::runtime_error("the index finds other rules than MatchesSelector() does");
        }
        matches += found.size();
    }
    if (matches == 0) throw std::runtime_error("no rule selects an element");
}

// Returns the seconds that a work takes, the median of the rounds.
double SecondsOf(const Work& work, MeasureOptions options,
                 const std::function<void()>& prepare = {}) {
    options.prepare = prepare;
    return 1 / Measure(1, std::span(&work, 1), options).speeds[0];
}

}  // namespace

MatchingResult MeasureMatching(const MeasureOptions& options) {
    const std::string text = MakeSheetOfRules(kMatchedRules).text;
    const Page page;
    std::unique_ptr<CSSStyleSheet> sheet = LoadEspalierSheet(text);
    CheckSame(*sheet, page);

    MatchingResult result;
    RuleIndex index;
    // Selectors are compiled once, so each pass gets rules that nobody has asked yet.
    const auto makeFresh = [&] {
        index = RuleIndex();
        sheet = LoadEspalierSheet(text);
    };
    result.indexSeconds = SecondsOf([&] { index.Add(*sheet); }, options, makeFresh);
    result.bothSeconds = SecondsOf(
        [&] {
            index.Add(*sheet);
            result.matches = MatchAll(index, page.Elements());
        },
        options, makeFresh);

    volatile std::size_t sink = 0;
    result.matchSeconds =
        SecondsOf([&] { sink = sink + MatchAll(index, page.Elements()); }, options);
    result.asked = page.Some().size();
    result.indexOnThem = SecondsOf([&] { sink = sink + MatchAll(index, page.Some()); }, options);
    result.oneByOneSeconds = SecondsOf(
        [&] {
            for (Dom::Element* const element : page.Some())
                AskEachRule(*sheet, element, [&](const CSSStyleRule*) { sink = sink + 1; });
        },
        options);
    return result;
}

void CheckMatching() {
    CheckSame(*LoadEspalierSheet(MakeSheetOfRules(kMatchedRules).text), Page());
}

}  // namespace bench
