// SPDX-License-Identifier: MIT
#include "dom/css/computed/StyleData.h"

#include "dom/css/computed/DeclarationBlock.h"

#include <algorithm>
#include <utility>

namespace Dom::CSS::detail {

namespace {

template <typename Values>
auto PlaceFor(Values& values, PropertyId id) {
    return std::ranges::lower_bound(values, id, {}, &SetValue::id);
}

}  // namespace

const SharedText* ValueList::Find(PropertyId id) const {
    const auto place = PlaceFor(values_, id);
    return place != values_.end() && place->id == id ? &place->value : nullptr;
}

void ValueList::Set(PropertyId id, SharedText value) {
    const auto place = PlaceFor(values_, id);
    if (place != values_.end() && place->id == id) {
        place->value = std::move(value);
    } else {
        values_.insert(place, {id, std::move(value)});
    }
}

void ValueList::Remove(PropertyId id) {
    const auto place = PlaceFor(values_, id);
    if (place != values_.end() && place->id == id) values_.erase(place);
}

const ValueList& StyleData::ListFor(PropertyId id) const {
    return KnownProperties()[id].isInherited ? *inherited : own;
}

std::string_view StyleData::Value(PropertyId id) const {
    static const PropertyId color = *FindProperty("color");
    const SharedText* const set = ListFor(id).Find(id);
    const std::string_view value = set != nullptr ? (*set)->view() : KnownProperties()[id].initial;
    return value == kCurrentColor ? Value(color) : value;
}

SharedText StyleData::FindNamed(std::string_view name) const {
    if (IsCustomProperty(name)) return custom != nullptr ? custom->Find(name) : nullptr;
    const auto nameOf = [](const NamedValue& each) { return each.name->view(); };
    const auto place = std::ranges::lower_bound(others, name, {}, nameOf);
    return place != others.end() && nameOf(*place) == name ? place->value : nullptr;
}

}  // namespace Dom::CSS::detail
