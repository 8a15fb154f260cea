// SPDX-License-Identifier: MIT
//
// Collects the sheets of a page, and asks for the style of its elements. The input is settings, a
// byte each: how deep imports may be, how many sheets there may be, the seed of the changes, whose
// highest bit adds the sheet of a user agent; then texts: the page, and the sheets that addresses
// lead to, which the last character of an address tells.
//
// The sheets are collected twice, which gives the same; none is behind the one that imports it, and
// no limit is passed. What explains a value says the same value. After changes of the page, of
// rules and of the medium a resolver that has seen them says what one says that has not.

#include <espalier/css.h>
#include <espalier/dom.h>
#include <espalier/xml/XmlTextReader.h>

#include "CssInput.h"
#include "ReaderStory.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>  // std::ref
#include <iterator>    // std::size
#include <optional>
#include <string>
#include <string_view>
#include <utility>  // std::move
#include <vector>

namespace {

using Dom::HTMLDocument;
using Dom::CSS::CollectedSheet;
using Dom::CSS::MissingSheet;
using Dom::CSS::SheetLimits;
using fuzz::Require;

constexpr std::size_t kMostSheets = 4;

// Gives the sheets of an input.
class Host {
public:
    explicit Host(fuzz::CssInput& input) {
        while (!input.IsAtEnd() && texts_.size() < kMostSheets)
            texts_.emplace_back(input.Text());
    }

    std::optional<astring> operator()(const astring& address, const astring& /*encoding*/) {
        Require(!address.empty());
        ++asked_;
        const auto last = static_cast<unsigned char>(address[address.size() - 1]);
        const std::size_t index = last % (kMostSheets + 1);
        if (index >= texts_.size()) return std::nullopt;
        return texts_[index];
    }

    std::size_t Asked() const { return asked_; }

private:
    std::vector<astring> texts_;
    std::size_t asked_ = 0;
};

// All that tells a collection from another one.
std::string StoryOf(const std::vector<CollectedSheet>& sheets,
                    const std::vector<MissingSheet>& missing) {
    std::string story;
    for (const CollectedSheet& collected : sheets) {
        for (const astring& media : collected.importMedia)
            story += "<" + media.str() + ">";
        story += collected.sheet->Href().str() + "\n" + collected.sheet->Title().str() + "\n" +
                 collected.sheet->GetMediaList().MediaText().str() + "\n";
        for (const Dom::CSS::CSSRule* const rule : collected.sheet->CssRules())
            story += rule->CssText().str() + "\n";
    }
    for (const MissingSheet& sheet : missing)
        story += sheet.address.str() + "\n" + sheet.reason.str() + "\n";
    return story;
}

int DepthOf(const Dom::StyleSheets::StyleSheet& sheet) {
    int depth = 0;
    for (const auto* parent = sheet.ParentStyleSheet(); parent != nullptr;
         parent = parent->ParentStyleSheet())
        ++depth;
    return depth;
}

void CheckOrder(const std::vector<CollectedSheet>& sheets, const SheetLimits& limits) {
    std::vector<const Dom::StyleSheets::StyleSheet*> behind;
    for (auto collected = sheets.rbegin(); collected != sheets.rend(); ++collected) {
        const Dom::CSS::CSSStyleSheet& sheet = *collected->sheet;
        const bool isImported = sheet.ParentStyleSheet() != nullptr;
        Require(isImported == (sheet.OwnerRule() != nullptr));
        Require(isImported == (sheet.OwnerNode() == nullptr));
        Require(DepthOf(sheet) <= limits.importDepth);
        Require(!isImported || std::ranges::find(behind, sheet.ParentStyleSheet()) != behind.end());
        behind.push_back(&sheet);
    }
}

void CheckMissing(const std::vector<MissingSheet>& missing) {
    constexpr std::array<std::string_view, 5> kReasons = {"Not found", "Imported by itself",
                                                          "Imported too deep", "Too many bytes",
                                                          "Too many sheets"};
    for (const MissingSheet& sheet : missing) {
        const auto* const reason = std::ranges::find(kReasons, sheet.reason.view());
        Require(reason != kReasons.end());
        Require(reason < kReasons.begin() + 3 || &sheet == &missing.back());
    }
}

using Dom::Element;
using Dom::CSS::ComputedStyle;
using Dom::CSS::CSSRule;
using Dom::CSS::StyleResolver;

constexpr const char* kPseudos[] = {"", "before"};
constexpr std::size_t kMostElements = 48;
constexpr std::size_t kMostExplained = 12;

// The first elements of a page.
std::vector<Element*> ElementsOf(const Dom::Document& document) {
    std::vector<Element*> elements;
    Dom::Node* node = document.FirstChild();
    while (node != nullptr && elements.size() < kMostElements) {
        if (node->NodeType() == Dom::Node::ELEMENT_NODE) {
            elements.push_back(static_cast<Element*>(node));
        }
        Dom::Node* next = node->FirstChild();
        for (; next == nullptr && node != nullptr && node != &document; node = node->ParentNode())
            next = node->NextSibling();
        node = next;
    }
    return elements;
}

// All that a resolver says of the elements.
std::string StylesOf(StyleResolver& resolver, const std::vector<Element*>& elements) {
    std::string story;
    for (const Element* const element : elements) {
        for (const char* const pseudo : kPseudos) {
            const ComputedStyle style = resolver.StyleOf(*element, pseudo);
            for (const astring& name : style.Names())
                story += name.str() + ": " + style.Value(name).str() + "\n";
            story += "--\n";
        }
    }
    return story;
}

void CheckExplanation(StyleResolver& resolver, const Element& element, const astring& name,
                      const char* pseudo) {
    using Dom::CSS::StyleExplanation;
    const StyleExplanation why = resolver.Explain(element, name, pseudo);
    Require(why.value == resolver.StyleOf(element, pseudo).Value(name));
    Require((why.kind == StyleExplanation::Kind::Initial) == (why.element == nullptr));
    if (why.kind == StyleExplanation::Kind::Declared) {
        Require(why.element == &element && !why.declarations.empty());
    }
    for (const Dom::CSS::DeclaredValue& declared : why.declarations) {
        const bool isRule = declared.source == Dom::CSS::DeclaredValue::Source::Rule;
        Require(isRule == (declared.rule != nullptr) && isRule == (declared.sheet != nullptr));
    }
}

void CheckExplanations(StyleResolver& resolver, const std::vector<Element*>& elements) {
    const std::size_t count = std::min(elements.size(), kMostExplained);
    for (std::size_t i = 0; i < count; ++i) {
        for (const char* const pseudo : kPseudos) {
            const ComputedStyle style = resolver.StyleOf(*elements[i], pseudo);
            Require(style == resolver.StyleOf(*elements[i], pseudo));
            std::vector<astring> names = style.Names();
            for (const char* const name : {"color", "margin-top", "font-size", "--x", "nothing"})
                names.emplace_back(name);
            for (const astring& name : names)
                CheckExplanation(resolver, *elements[i], name, pseudo);
        }
    }
}

// Changes that two resolvers with the same sheets see.
class Changes {
public:
    Changes(unsigned seed, StyleResolver& first, StyleResolver& second)
        : state_(seed + 1), resolvers_{&first, &second} {}

    void Make(const std::vector<Element*>& elements) {
        switch (Below(5)) {
        case 0: return ChangeRule();
        case 1: return DeleteRule();
        case 2: {
            Dom::CSS::MediaContext context;
            context.type = Below(2) == 0 ? "print" : "screen";
            for (StyleResolver* const resolver : resolvers_)
                resolver->SetContext(context);
            return;
        }
        default: return ChangeElement(elements);
        }
    }

private:
    std::size_t Below(std::size_t limit) {
        state_ = state_ * 1103515245U + 12345U;
        return (state_ >> 16) % limit;
    }

    void ChangeElement(const std::vector<Element*>& elements) {
        constexpr const char* kNames[] = {"class", "id", "style", "lang"};
        constexpr const char* kValues[] = {"c", "i", "color: red; --x: 1px", "a b", ""};
        if (elements.empty()) return;
        elements[Below(elements.size())]->SetAttribute(kNames[Below(std::size(kNames))],
                                                       kValues[Below(std::size(kValues))]);
    }

    // The same rule of a sheet of the document, for both.
    struct Picked {
        unsigned long index = 0;
        std::array<CSSRule*, 2> rules = {};  // null when there is none
    };

    Picked PickRule() {
        Picked picked;
        const std::size_t sheet = Below(kMostIndex);
        picked.index = Below(kMostIndex);
        for (std::size_t i = 0; i < resolvers_.size(); ++i) {
            std::vector<const Dom::CSS::CSSStyleSheet*> sheets = resolvers_[i]->Sheets();
            std::erase(sheets, &Dom::CSS::HtmlStyleSheet());
            if (sheets.empty()) continue;
            const Dom::CSS::CSSRuleList& rules = sheets[sheet % sheets.size()]->CssRules();
            if (rules.Length() == 0) continue;
            picked.index %= rules.Length();
            picked.rules[i] = rules.Item(picked.index);
        }
        return picked;
    }

    void ChangeRule() {
        const Picked picked = PickRule();
        if (picked.rules[0] == nullptr || picked.rules[0]->Type() != CSSRule::STYLE_RULE) return;
        for (std::size_t i = 0; i < resolvers_.size(); ++i) {
            auto& rule = static_cast<Dom::CSS::CSSStyleRule&>(*picked.rules[i]);
            rule.Style().SetProperty("color", "blue", "");
            resolvers_[i]->RuleHasChanged(rule);
        }
    }

    void DeleteRule() {
        const Picked picked = PickRule();
        if (picked.rules[0] == nullptr) return;
        for (std::size_t i = 0; i < resolvers_.size(); ++i) {
            picked.rules[i]->ParentStyleSheet()->DeleteRule(picked.index);
            resolvers_[i]->SheetsHaveChanged();
        }
    }

    static constexpr std::size_t kMostIndex = 1000;

    std::uint32_t state_;
    std::array<StyleResolver*, 2> resolvers_;
};

void CheckStyles(const Dom::Document& page, unsigned settings, std::vector<CollectedSheet> sheets,
                 std::vector<CollectedSheet> same) {
    StyleResolver resolver;
    StyleResolver fresh;
    constexpr unsigned kUserAgent = 0x80;
    if ((settings & kUserAgent) != 0) {
        resolver.AddSheet(Dom::CSS::HtmlStyleSheet());
        fresh.AddSheet(Dom::CSS::HtmlStyleSheet());
    }
    resolver.AddSheets(std::move(sheets));
    fresh.AddSheets(std::move(same));
    const std::vector<Element*> elements = ElementsOf(page);
    CheckExplanations(resolver, elements);
    Changes changes(settings, resolver, fresh);
    for (unsigned i = 0; i <= settings % 8; ++i) {
        changes.Make(elements);
        StylesOf(resolver, elements);
    }
    Require(StylesOf(resolver, elements) == StylesOf(fresh, elements));
    CheckExplanations(resolver, elements);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::CssInput input(data, size);
    SheetLimits limits;
    limits.importDepth = static_cast<int>(input.Byte() % 10);
    limits.sheets = input.Byte() % 64;
    limits.bytes = 65536;
    const unsigned settings = input.Byte();

    HTMLDocument page;
    try {
        page.LoadXml(input.Text(), "http://host.example/dir/page.xhtml");
    } catch (const Xml::Exception&) {
        // What was read before is a page, too.
    }
    Host host(input);
    const auto collect = [&](std::vector<MissingSheet>& missing) {
        return Dom::CSS::CollectStyleSheets(page, std::ref(host), &missing, limits);
    };
    std::vector<MissingSheet> missing;
    std::vector<CollectedSheet> sheets = collect(missing);
    Require(host.Asked() <= limits.sheets);
    CheckOrder(sheets, limits);
    CheckMissing(missing);
    std::vector<MissingSheet> missingAgain;
    std::vector<CollectedSheet> again = collect(missingAgain);
    Require(StoryOf(again, missingAgain) == StoryOf(sheets, missing));
    CheckStyles(page, settings, std::move(sheets), std::move(again));
    return 0;
}
