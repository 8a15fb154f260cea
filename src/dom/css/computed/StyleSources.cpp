// SPDX-License-Identifier: MIT
#include "dom/css/computed/StyleSources.h"

#include <espalier/dom/HTMLDocument.h>
#include <espalier/dom/HTMLElement.h>
#include <espalier/dom/css/CSSStyleRule.h>
#include <espalier/dom/css/CSSStyleSheet.h>
#include <espalier/dom/css/MediaQueryList.h>
#include <espalier/dom/css/ParseDeclarations.h>

#include "dom/NodeAccess.h"
#include "dom/XhtmlNames.h"
#include "dom/css/SelectorSubject.h"
#include "dom/css/SheetLink.h"
#include "xml/SeededHash.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace Dom::CSS::detail {

namespace {

using Source = DeclaredValue::Source;

// Of rules that are not important the one wins that comes from the document, or is more specific.
auto RankOf(const MatchedRule& match) {
    return std::tuple(-static_cast<int>(match.rule->Origin()), match.specificity);
}

bool IsLess(const MatchedRule& a, const MatchedRule& b) { return RankOf(a) < RankOf(b); }

// Tells whether the attribute "style" of an element is a style: that of XHTML, SVG and MathML, of
// elements that a page has made, and of those without a namespace in HTML that has none.
bool HasStyleAttribute(const Element& element) {
    constexpr std::string_view kSvg = "http://www.w3.org/2000/svg";
    constexpr std::string_view kMathMl = "http://www.w3.org/1998/Math/MathML";
    const std::string_view uri = SelectorSubject(element).NamespaceUri();
    if (uri == Dom::detail::kXhtmlUri || uri == kSvg || uri == kMathMl) return true;
    if (dynamic_cast<const HTMLElement*>(&element) != nullptr) return true;
    const Document* const document = Dom::detail::NodeAccess::Data(element).document;
    const Element* const root = document != nullptr ? document->DocumentElement() : nullptr;
    return uri.empty() && root != nullptr && IsNamed(*root, "", "html");
}

// Returns the override style of an element or of a part of it, however the part has been named when
// it was made.
const CSSStyleDeclaration* OverrideOf(const HTMLDocument& page, const Element& element,
                                      std::string_view pseudo) {
    pseudo.remove_prefix(std::min(pseudo.find_first_not_of(':'), pseudo.size()));
    if (pseudo.empty()) return page.FindOverrideStyle(element);
    for (const char* const colons : {"", ":", "::"}) {
        const auto* const style = page.FindOverrideStyle(element, astring(colons) + pseudo);
        if (style != nullptr) return style;
    }
    return nullptr;
}

DeclarationBlock ReadBlock(const CSSStyleRule& rule) {
    const CSSStyleSheet* const sheet = rule.ParentStyleSheet();
    return {rule.Style(), sheet != nullptr ? sheet->Href() : astring()};
}

}  // namespace

std::size_t StyleSources::HashOfText::operator()(std::string_view text) const {
    return Xml::detail::SeededHash(text.data(), static_cast<unsigned>(text.size()));
}

void StyleSources::SetContext(const MediaContext& context) {
    context_ = context;
    Forget();
}

void StyleSources::Add(const CSSStyleSheet& sheet) {
    sheets_.push_back({&sheet, {}});
    Forget();
}

void StyleSources::Add(CollectedSheet&& sheet) {
    owned_.reserve(owned_.size() + 1);
    sheets_.push_back({sheet.sheet.get(), sheet.importMedia});
    owned_.push_back(std::move(sheet));
    Forget();
}

std::vector<const CSSStyleSheet*> StyleSources::Sheets() const {
    std::vector<const CSSStyleSheet*> result;
    for (const Entry& entry : sheets_)
        result.push_back(entry.sheet);
    return result;
}

void StyleSources::Forget() {
    index_ = nullptr;
    byRule_.clear();
    byText_.clear();
}

void StyleSources::MakeIndex() {
    auto index = std::make_unique<RuleIndex>();
    for (const Entry& entry : sheets_) {
        const bool isImported = std::ranges::all_of(
            entry.importMedia,
            [this](const astring& media) { return MatchesMedia(media, context_); });
        if (isImported) index->Add(*entry.sheet, context_);
    }
    index_ = std::move(index);
}

void StyleSources::Find(const Element& element, const ElementNames& names, PseudoClass part,
                        std::string_view pseudo, const AncestorFilter* ancestors, Match& match) {
    if (index_ == nullptr) MakeIndex();
    index_->buckets_->Match(element, names, part, ancestors, candidates_, match.rules);
    if (!std::ranges::is_sorted(match.rules, IsLess)) {
        std::ranges::stable_sort(match.rules, IsLess);
    }
    match.others.clear();
    if (part == PseudoClass::Unknown) AddAttribute(element, match.others);
    AddOverride(element, pseudo, match.others);
}

void StyleSources::AddAttribute(const Element& element, std::vector<StyleLayer>& layers) {
    const astring* const text = SelectorSubject(element).Attribute("style");
    if (text == nullptr || text->empty() || !HasStyleAttribute(element)) return;
    const Document* const document = Dom::detail::NodeAccess::Data(element).document;
    const astring base = document != nullptr ? document->DocumentURI() : astring();
    layers.push_back({&BlockOf(*text, base), nullptr, Source::StyleAttribute, CSSRule::Author, 0});
}

void StyleSources::AddOverride(const Element& element, std::string_view pseudo,
                               std::vector<StyleLayer>& layers) {
    const Dom::detail::DocumentData& data = Dom::detail::NodeAccess::Data(element);
    if (data.overrides.empty()) return;
    const auto* const page = dynamic_cast<const HTMLDocument*>(data.document);
    const CSSStyleDeclaration* const style =
        page != nullptr ? OverrideOf(*page, element, pseudo) : nullptr;
    if (style == nullptr || style->Length() == 0) return;
    layers.push_back({&BlockOf(style->CssText(), page->DocumentURI()), nullptr,
                      Source::OverrideStyle, CSSRule::Author, 0});
}

const DeclarationBlock& StyleSources::BlockOf(const CSSStyleRule& rule) {
    const auto place = byRule_.find(&rule);
    if (place != byRule_.end()) return *place->second;
    return *byRule_.emplace(&rule, std::make_unique<DeclarationBlock>(ReadBlock(rule)))
                .first->second;
}

const DeclarationBlock& StyleSources::BlockOf(const astring& text, const astring& baseAddress) {
    const astring whole = baseAddress + '\n' + text;
    const auto place = byText_.find(whole);
    if (place != byText_.end()) return place->second->block;
    auto made = std::make_unique<TextBlock>(
        TextBlock{whole, DeclarationBlock(*ParseDeclarations(text), baseAddress)});
    const std::string_view key = made->key;
    return byText_.emplace(key, std::move(made)).first->second->block;
}

std::vector<StyleLayer> StyleSources::LayersOf(const Match& match) {
    std::vector<StyleLayer> layers;
    layers.reserve(match.rules.size() + match.others.size());
    for (const MatchedRule& each : match.rules) {
        layers.push_back(
            {&BlockOf(*each.rule), each.rule, Source::Rule, each.rule->Origin(), each.specificity});
    }
    layers.insert(layers.end(), match.others.begin(), match.others.end());
    return layers;
}

const DeclarationBlock* StyleSources::Update(const CSSStyleRule& rule) {
    const auto place = byRule_.find(&rule);
    if (place == byRule_.end()) return nullptr;
    *place->second = ReadBlock(rule);
    return place->second.get();
}

}  // namespace Dom::CSS::detail
