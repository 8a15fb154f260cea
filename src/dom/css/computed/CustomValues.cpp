// SPDX-License-Identifier: MIT
#include "dom/css/computed/CustomValues.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Dom::CSS::detail {

namespace {

std::string_view NameOf(const NamedValue& value) { return *value.name; }

// Returns what is in either, sorted; `own` goes before `inherited`.
std::vector<NamedValue> Merged(const std::vector<NamedValue>& own,
                               const std::vector<NamedValue>& inherited) {
    std::vector<NamedValue> all;
    all.reserve(own.size() + inherited.size());
    std::ranges::set_union(own, inherited, std::back_inserter(all), {}, NameOf, NameOf);
    return all;
}

}  // namespace

CustomValues::CustomValues(std::shared_ptr<const CustomValues> parent, std::vector<NamedValue> own)
    : parent_(std::move(parent)), own_(std::move(own)) {
    if (parent_ != nullptr) {
        count_ = parent_->count_;
        steps_ = parent_->steps_ + 1;
    }
    std::erase_if(own_, [this](const NamedValue& each) {
        if (parent_ != nullptr && parent_->Find(*each.name) != nullptr) return false;
        return ++count_ > kMost;
    });
    count_ = std::min(count_, kMost);
    if (steps_ < kMostSteps) return;
    own_ = All();
    count_ = own_.size();
    steps_ = 0;
    parent_ = nullptr;
}

SharedText CustomValues::Find(std::string_view name) const {
    for (const CustomValues* values = this; values != nullptr; values = values->parent_.get()) {
        const auto place = std::ranges::lower_bound(values->own_, name, {}, NameOf);
        if (place != values->own_.end() && NameOf(*place) == name) return place->value;
    }
    return nullptr;
}

std::vector<NamedValue> CustomValues::All() const {
    std::vector<NamedValue> all;
    for (const CustomValues* values = this; values != nullptr; values = values->parent_.get())
        all = Merged(all, values->own_);
    std::erase_if(all, [](const NamedValue& each) { return each.value == nullptr; });
    return all;
}

}  // namespace Dom::CSS::detail
