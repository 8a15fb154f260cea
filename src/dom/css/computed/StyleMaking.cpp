// SPDX-License-Identifier: MIT
#include "dom/css/computed/StyleMaking.h"

#include "dom/css/AsciiCase.h"
#include "dom/css/computed/CustomResolution.h"
#include "dom/css/computed/SpecifiedValue.h"
#include "dom/css/computed/StyleAdjustment.h"
#include "dom/css/computed/ValueComputing.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace Dom::CSS::detail {

namespace {

// The properties that others depend on.
struct FirstProperties {
    PropertyId fontSize = *FindProperty("font-size");
    PropertyId fontWeight = *FindProperty("font-weight");
    PropertyId color = *FindProperty("color");
};

const FirstProperties& First() {
    static const FirstProperties first;
    return first;
}

class StyleMaker {
public:
    StyleMaker(const Cascaded& cascaded, const StyleData* parent, StyledPlace place,
               const MediaContext& context, std::size_t budget)
        : cascaded_(cascaded),
          parent_(parent),
          place_(place),
          style_(std::make_shared<StyleData>()),
          budget_(budget),
          rest_(budget) {
        context_.initialFontSize = context.fontSize;
        context_.viewportWidth = context.width;
        context_.viewportHeight = context.height;
    }

    std::shared_ptr<StyleData> Make();

private:
    // A declared value, with what it stands for put in.
    struct Specified {
        WideKeyword keyword;
        std::string_view value;  // of the entry, or of text_
    };

    void Inherit();
    void MakeCustom();
    void MakeFontSize();
    void MakeColor();
    void Apply(const LayerEntry& winner);
    void AddOther(const LayerEntry& winner);
    const LayerEntry* WinnerFor(PropertyId id) const;
    Specified Resolve(const LayerEntry& winner);
    SharedText Compute(PropertyId id, std::string_view value, const LayerEntry& winner);
    void Set(PropertyId id, SharedText value);
    void Remove(PropertyId id);

    const Cascaded& cascaded_;
    const StyleData* parent_;
    const StyledPlace place_;
    std::shared_ptr<StyleData> style_;
    std::shared_ptr<ValueList> inherited_;  // null until something is changed
    ComputingContext context_;
    astring text_;  // a value whose variables have been replaced
    const std::size_t budget_;
    std::size_t rest_;  // of the budget
};

void StyleMaker::Inherit() {
    static const auto none = std::make_shared<const ValueList>();
    style_->inherited = parent_ != nullptr ? parent_->inherited : none;
    if (parent_ == nullptr) {
        style_->fontSize = style_->rootFontSize = context_.initialFontSize;
    } else {
        style_->custom = parent_->custom;
        style_->fontSize = parent_->fontSize;
        style_->rootFontSize = parent_->rootFontSize;
    }
}

void StyleMaker::MakeCustom() {
    std::vector<CustomDeclaration> declared;
    for (const LayerEntry& winner : cascaded_.Named()) {
        if (IsCustomProperty(winner.entry->name)) {
            declared.push_back({winner.entry->name, winner.entry->value, winner.entry->keyword});
        }
    }
    if (!declared.empty()) style_->custom = ResolveCustom(declared, style_->custom, rest_);
}

const LayerEntry* StyleMaker::WinnerFor(PropertyId id) const {
    const auto place = std::ranges::lower_bound(
        cascaded_.Known(), id, {}, [](const LayerEntry& each) { return each.entry->id; });
    return place != cascaded_.Known().end() && place->entry->id == id ? &*place : nullptr;
}

StyleMaker::Specified StyleMaker::Resolve(const LayerEntry& winner) {
    const BlockEntry& entry = *winner.entry;
    if (!entry.hasVariables) return {entry.keyword, entry.value};
    SpecifiedValue specified = SpecifyValue(entry, style_->custom.get(), rest_);
    text_ = std::move(specified.value);
    return {specified.keyword, text_};
}

// "currentcolor" stays what it is, also where it is inherited (CSS Color Level 4 section 9.1).
SharedText StyleMaker::Compute(PropertyId id, std::string_view value, const LayerEntry& winner) {
    static const SharedText current = std::make_shared<const astring>(kCurrentColor);
    if (id != First().color && EqualIgnoringCase(value, kCurrentColor)) return current;
    context_.baseAddress = winner.layer->block->BaseAddress();
    return std::make_shared<const astring>(ComputedValue(KnownProperties()[id], value, context_));
}

void StyleMaker::Set(PropertyId id, SharedText value) {
    if (!KnownProperties()[id].isInherited) return style_->own.Set(id, std::move(value));
    if (inherited_ == nullptr) {
        inherited_ = std::make_shared<ValueList>(*style_->inherited);
        style_->inherited = inherited_;
    }
    inherited_->Set(id, std::move(value));
}

void StyleMaker::Remove(PropertyId id) {
    if (style_->ListFor(id).Find(id) == nullptr) return;
    if (KnownProperties()[id].isInherited) {
        inherited_ = std::make_shared<ValueList>(*style_->inherited);
        style_->inherited = inherited_;
        inherited_->Remove(id);
    } else {
        style_->own.Remove(id);
    }
}

void StyleMaker::Apply(const LayerEntry& winner) {
    const PropertyId id = winner.entry->id;
    const PropertyInfo& info = KnownProperties()[id];
    Specified specified = Resolve(winner);
    if (specified.keyword == WideKeyword::Unset) {
        specified.keyword = info.isInherited ? WideKeyword::Inherit : WideKeyword::Initial;
    }
    switch (specified.keyword) {
    case WideKeyword::Inherit:
        // What is inherited anyway is there.
        if (parent_ != nullptr && !info.isInherited) {
            style_->dependsOnParent = true;
            const SharedText* const value = parent_->own.Find(id);
            Set(id, value != nullptr ? *value : std::make_shared<const astring>(info.initial));
        }
        break;
    case WideKeyword::Initial: Remove(id); break;
    default: Set(id, Compute(id, specified.value, winner)); break;
    }
}

// All other lengths may be relative to the size of the font, so it comes first.
void StyleMaker::MakeFontSize() {
    context_.parentFontSize = style_->fontSize;
    context_.rootFontSize = style_->rootFontSize;
    if (const LayerEntry* const winner = WinnerFor(First().fontSize)) {
        context_.fontSize = style_->fontSize;
        Apply(*winner);
        const SharedText* const size = style_->inherited->Find(First().fontSize);
        style_->fontSize = size != nullptr ? PixelsOf(**size) : context_.initialFontSize;
    }
    if (parent_ == nullptr) style_->rootFontSize = style_->fontSize;
    context_.fontSize = style_->fontSize;
    context_.rootFontSize = style_->rootFontSize;
}

void StyleMaker::MakeColor() {
    context_.color = parent_ != nullptr ? parent_->Value(First().color)
                                        : KnownProperties()[First().color].initial;
    if (const LayerEntry* const winner = WinnerFor(First().color)) Apply(*winner);
    context_.color = style_->Value(First().color);
}

void StyleMaker::AddOther(const LayerEntry& winner) {
    const astring& name = winner.entry->name;
    if (IsCustomProperty(name)) return;
    const Specified specified = Resolve(winner);
    if (specified.keyword == WideKeyword::None) {
        style_->others.push_back(
            {std::make_shared<astring>(name), std::make_shared<astring>(specified.value)});
    } else if (specified.keyword == WideKeyword::Inherit && parent_ != nullptr) {
        style_->dependsOnParent = true;
        if (SharedText value = parent_->FindNamed(name)) {
            style_->others.push_back({std::make_shared<astring>(name), std::move(value)});
        }
    }
}

std::shared_ptr<StyleData> StyleMaker::Make() {
    Inherit();
    MakeCustom();
    MakeFontSize();
    context_.parentWeight = parent_ != nullptr ? parent_->Value(First().fontWeight)
                                               : KnownProperties()[First().fontWeight].initial;
    MakeColor();
    for (const LayerEntry& winner : cascaded_.Known()) {
        const PropertyId id = winner.entry->id;
        if (id != First().fontSize && id != First().color) Apply(winner);
    }
    for (const LayerEntry& winner : cascaded_.Named())
        AddOther(winner);
    AdjustStyle(*style_, place_);
    style_->substituted = budget_ - rest_;
    return style_;
}

}  // namespace

std::shared_ptr<StyleData> MakeStyle(const Cascaded& cascaded, const StyleData* parent,
                                     StyledPlace place, const MediaContext& context,
                                     std::size_t budget) {
    return StyleMaker(cascaded, parent, place, context, budget).Make();
}

}  // namespace Dom::CSS::detail
