// SPDX-License-Identifier: MIT
#include "dom/css/computed/Explaining.h"

#include <espalier/dom/css/CSSStyleRule.h>

#include "dom/css/Relatives.h"
#include "dom/css/computed/SpecifiedValue.h"

#include <cstddef>
#include <limits>
#include <optional>
#include <unordered_map>
#include <vector>

namespace Dom::CSS::detail {

namespace {

using Kind = StyleExplanation::Kind;

// A property, as it is looked for.
struct Wanted {
    explicit Wanted(std::string_view property) {
        const std::optional<PropertyId> known = FindProperty(property);
        id = known.value_or(BlockEntry::kNamed);
        if (!known) name = PropertyName(property);
        isInherited = known ? KnownProperties()[id].isInherited : IsCustomProperty(name);
    }

    PropertyId id;
    astring name;  // when it has no id
    bool isInherited;
};

// Describes declarations; the places of those in one rule are found together.
class Description {
public:
    explicit Description(std::string_view property) : property_(property) {}

    DeclaredValue Describe(const LayerEntry& found) {
        const StyleLayer& layer = *found.layer;
        const BlockEntry& entry = *found.entry;
        const bool isPart = !entry.shorthand.empty();
        DeclaredValue value{layer.source,
                            isPart ? entry.shorthand : astring(property_),
                            entry.value,
                            entry.isImportant,
                            layer.origin,
                            layer.specificity,
                            layer.rule,
                            nullptr,
                            {}};
        if (layer.rule != nullptr) {
            value.sheet = layer.rule->ParentStyleSheet();
            value.place = PlaceIn(*layer.rule, entry.source);
        }
        return value;
    }

private:
    SourcePlace PlaceIn(const CSSStyleRule& rule, unsigned index) {
        const auto [entry, isNew] = places_.try_emplace(&rule);
        if (isNew) entry->second = PlacesOf(rule.Style());
        // A rule that has changed may have fewer.
        return index < entry->second.size() ? entry->second[index] : SourcePlace();
    }

    std::string_view property_;
    std::unordered_map<const CSSStyleRule*, std::vector<SourcePlace>> places_;
};

// Tells what wins says: a value, or what to take in its place.
WideKeyword Meaning(const LayerEntry& winner, const Wanted& wanted, const CustomValues* custom) {
    const BlockEntry& entry = *winner.entry;
    WideKeyword keyword = entry.keyword;
    if (entry.hasVariables && !IsCustomProperty(wanted.name)) {
        std::size_t budget = std::numeric_limits<std::size_t>::max();
        keyword = SpecifyValue(entry, custom, budget).keyword;
    }
    if (keyword != WideKeyword::Unset) return keyword;
    return wanted.isInherited ? WideKeyword::Inherit : WideKeyword::Initial;
}

astring ValueIn(const StyleData& style, const Wanted& wanted) {
    if (wanted.id != BlockEntry::kNamed) return style.Value(wanted.id);
    const SharedText value = style.FindNamed(wanted.name);
    return value != nullptr ? *value : astring();
}

// Looks for the element that a value comes from, from the one that was asked for upwards.
class Search {
public:
    Search(ElementStyles& styles, const Wanted& wanted, const Element& element,
           std::string_view pseudo)
        : styles_(styles), wanted_(wanted), element_(&element), pseudo_(pseudo) {}

    // Goes to where the value is declared.
    // \return false when nothing is but the initial value
    bool Run() {
        while (!FindHere()) {
            if (meaning_ != WideKeyword::Inherit || !GoUp()) return false;
        }
        return true;
    }
    const Element* Place() const { return element_; }
    bool HasGoneUp() const { return hasGoneUp_; }
    const std::vector<LayerEntry>& Found() const { return found_; }

private:
    bool FindHere() {
        // What is found lasts until the next question, so the style comes first.
        const auto custom = styles_.StyleOf(*element_, pseudo_)->custom;
        found_ = styles_.CascadedFor(*element_, pseudo_)->All(wanted_.id, wanted_.name);
        const WideKeyword byDefault =
            wanted_.isInherited ? WideKeyword::Inherit : WideKeyword::Initial;
        meaning_ = found_.empty() ? byDefault : Meaning(found_.front(), wanted_, custom.get());
        return meaning_ == WideKeyword::None;
    }
    bool GoUp() {
        if (pseudo_.empty()) {
            const Element* const parent = ParentOf(*element_);
            if (parent == nullptr) return false;
            element_ = parent;
        }
        pseudo_ = {};
        return hasGoneUp_ = true;
    }

    ElementStyles& styles_;
    const Wanted& wanted_;
    const Element* element_;
    std::string_view pseudo_;
    std::vector<LayerEntry> found_;
    WideKeyword meaning_ = WideKeyword::None;
    bool hasGoneUp_ = false;
};

}  // namespace

StyleExplanation Explain(ElementStyles& styles, const Element& element, std::string_view property,
                         std::string_view pseudo) {
    const Wanted wanted(property);
    StyleExplanation explanation{Kind::Initial, {}, nullptr, {}};
    if (!PartOf(pseudo)) return explanation;
    if (PartOf(pseudo) == PseudoClass::Unknown) pseudo = {};
    explanation.value = ValueIn(*styles.StyleOf(element, pseudo), wanted);
    Search search(styles, wanted, element, pseudo);
    std::vector<LayerEntry> declared;
    if (search.Run()) {
        explanation.kind = search.HasGoneUp() ? Kind::Inherited : Kind::Declared;
        explanation.element = search.Place();
        declared = search.Found();
    } else {
        declared = styles.CascadedFor(element, pseudo)->All(wanted.id, wanted.name);
    }
    Description description(property);
    for (const LayerEntry& each : declared)
        explanation.declarations.push_back(description.Describe(each));
    return explanation;
}

}  // namespace Dom::CSS::detail
