// SPDX-License-Identifier: MIT
#include "dom/css/computed/DeclarationBlock.h"

#include "dom/css/AsciiCase.h"
#include "dom/css/computed/PlainNames.h"
#include "dom/css/computed/ShorthandExpansion.h"
#include "dom/css/computed/ValueComputing.h"
#include "dom/css/computed/VariableSubstitution.h"

#include <algorithm>
#include <utility>

namespace Dom::CSS::detail {

WideKeyword FindWideKeyword(std::string_view value) {
    if (EqualIgnoringCase(value, "inherit")) return WideKeyword::Inherit;
    if (EqualIgnoringCase(value, "initial")) return WideKeyword::Initial;
    if (EqualIgnoringCase(value, "unset") || EqualIgnoringCase(value, "revert")) {
        return WideKeyword::Unset;
    }
    return WideKeyword::None;
}

astring PropertyName(std::string_view name) {
    astring result = name;
    if (!IsCustomProperty(name)) std::transform(name.begin(), name.end(), result.begin(), ToLower);
    return result;
}

namespace {

// Tells whether the variables in a value are written as they should be, whatever they stand for.
// If not, the declaration is dropped (CSS Custom Properties Level 1 section 3).
bool AreWellFormed(std::string_view value) {
    return SubstituteVariables(value, [](std::string_view) { return std::string_view(); })
        .has_value();
}

}  // namespace

DeclarationBlock::DeclarationBlock(const CSSStyleDeclaration& declaration,
                                   const astring& baseAddress)
    : baseAddress_(baseAddress) {
    const CSSStyleDeclaration::CSSPropertyList& properties = declaration.Properties();
    entries_.reserve(properties.Length());
    unsigned source = 0;
    for (const CSSPropertyImpl* const property : properties)
        Add(*property, source++);
}

void DeclarationBlock::Add(const CSSPropertyImpl& property, unsigned source) {
    BlockEntry entry;
    entry.name = PropertyName(property.Name());
    entry.value = property.Value();
    if (entry.value.find('\\') != astring::npos) entry.value = PlainNames(entry.value);
    entry.isImportant = property.Important();
    entry.source = source;
    entry.keyword = FindWideKeyword(entry.value);
    entry.hasVariables = entry.keyword == WideKeyword::None && HasVariables(entry.value);
    if (entry.hasVariables && !AreWellFormed(entry.value)) return;
    if (const std::optional<PropertyId> id = FindProperty(entry.name)) {
        AddKnown(*id, std::move(entry));
    } else if (!LonghandsOf(entry.name).empty()) {
        AddShorthand(std::move(entry));
    } else {
        entries_.push_back(std::move(entry));
    }
}

void DeclarationBlock::AddKnown(PropertyId id, BlockEntry&& entry) {
    const bool isSure = entry.keyword != WideKeyword::None || entry.hasVariables;
    if (!isSure && !IsValidValue(KnownProperties()[id], entry.value)) return;
    entry.id = id;
    entry.name.clear();
    entries_.push_back(std::move(entry));
}

// Of a shorthand with variables each property waits for the whole value.
void DeclarationBlock::AddShorthand(BlockEntry&& entry) {
    std::vector<Longhand> longhands;
    if (entry.hasVariables) {
        entry.shorthand = entry.name;
        for (const std::string_view name : LonghandsOf(entry.shorthand))
            longhands.push_back({name, entry.value});
    } else if (!ExpandShorthand(entry.name, entry.value, longhands)) {
        return;
    }
    const std::size_t first = entries_.size();
    for (Longhand& longhand : longhands) {
        BlockEntry part = entry;
        part.name = longhand.name;
        part.value = std::move(longhand.value);
        if (!part.hasVariables) part.keyword = FindWideKeyword(part.value);
        const std::optional<PropertyId> id = FindProperty(part.name);
        if (id) {
            AddKnown(*id, std::move(part));
        } else {
            entries_.push_back(std::move(part));
        }
    }
    // One bad value makes the whole shorthand bad.
    if (entries_.size() - first != longhands.size()) {
        entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(first), entries_.end());
    }
}

}  // namespace Dom::CSS::detail
