// SPDX-License-Identifier: MIT
#include <espalier/dom/css/ComputedStyle.h>

#include "dom/css/computed/DeclarationBlock.h"
#include "dom/css/computed/StyleData.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace Dom::CSS {

namespace {

std::shared_ptr<const detail::StyleData> InitialStyle() {
    static const std::shared_ptr<const detail::StyleData> initial = [] {
        auto data = std::make_shared<detail::StyleData>();
        data->inherited = std::make_shared<const detail::ValueList>();
        return data;
    }();
    return initial;
}

}  // namespace

ComputedStyle::ComputedStyle() : data_(InitialStyle()) {}
ComputedStyle::ComputedStyle(std::shared_ptr<const detail::StyleData> data)
    : data_(std::move(data)) {}
ComputedStyle::ComputedStyle(const ComputedStyle&) = default;
ComputedStyle::ComputedStyle(ComputedStyle&& other) noexcept = default;
ComputedStyle& ComputedStyle::operator=(const ComputedStyle&) = default;
ComputedStyle& ComputedStyle::operator=(ComputedStyle&&) noexcept = default;
ComputedStyle::~ComputedStyle() = default;

astring ComputedStyle::Value(std::string_view property) const {
    const std::optional<detail::PropertyId> id = detail::FindProperty(property);
    if (id) return data_->Value(*id);
    const detail::SharedText value = data_->FindNamed(detail::PropertyName(property));
    return value != nullptr ? *value : astring();
}

bool ComputedStyle::IsSet(std::string_view property) const {
    const std::optional<detail::PropertyId> id = detail::FindProperty(property);
    if (id) return data_->ListFor(*id).Find(*id) != nullptr;
    return data_->FindNamed(detail::PropertyName(property)) != nullptr;
}

std::vector<astring> ComputedStyle::Names() const {
    std::vector<astring> names;
    for (const detail::ValueList* const list : {data_->inherited.get(), &data_->own}) {
        for (const detail::SetValue& value : list->All())
            names.emplace_back(detail::KnownProperties()[value.id].name);
    }
    for (const detail::NamedValue& value : data_->others)
        names.push_back(*value.name);
    if (data_->custom != nullptr) {
        for (const detail::NamedValue& value : data_->custom->All())
            names.push_back(*value.name);
    }
    std::ranges::sort(names);
    return names;
}

std::vector<astring> ComputedStyle::KnownNames() {
    std::vector<astring> names;
    for (const detail::PropertyInfo& property : detail::KnownProperties())
        names.emplace_back(property.name);
    return names;
}

}  // namespace Dom::CSS
