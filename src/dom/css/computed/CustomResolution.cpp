// SPDX-License-Identifier: MIT
#include "dom/css/computed/CustomResolution.h"

#include "dom/css/computed/VariableSubstitution.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace Dom::CSS::detail {

namespace {

class Resolution {
public:
    Resolution(const std::vector<CustomDeclaration>& declared, const CustomValues* inherited,
               std::size_t& budget)
        : declared_(declared),
          inherited_(inherited),
          budget_(budget),
          states_(declared.size()),
          values_(declared.size()) {}

    std::vector<NamedValue> Run();

private:
    enum class State : unsigned char { Waiting, Open, Done };

    // Variables that depend on each other cost stack.
    static constexpr unsigned kMostOpen = 64;

    void Resolve(std::size_t index);
    SharedText Find(std::string_view name);
    SharedText Inherited(std::string_view name) const;

    const std::vector<CustomDeclaration>& declared_;
    const CustomValues* inherited_;
    std::size_t& budget_;
    std::vector<State> states_;
    std::vector<SharedText> values_;  // null for those that have none
    std::vector<bool> inCircle_ = std::vector<bool>(declared_.size());
    std::vector<std::size_t> open_;
};

SharedText Resolution::Inherited(std::string_view name) const {
    return inherited_ != nullptr ? inherited_->Find(name) : nullptr;
}

// Returns the value that another property refers to.
SharedText Resolution::Find(std::string_view name) {
    const auto place = std::ranges::lower_bound(declared_, name, {}, &CustomDeclaration::name);
    if (place == declared_.end() || place->name != name) return Inherited(name);
    const auto index = static_cast<std::size_t>(place - declared_.begin());
    if (states_[index] == State::Waiting && open_.size() < kMostOpen) Resolve(index);
    if (states_[index] != State::Open) return values_[index];
    // All that are open since then depend on each other.
    const auto first = std::ranges::find(open_, index);
    std::for_each(first, open_.end(), [this](std::size_t each) { inCircle_[each] = true; });
    return nullptr;
}

void Resolution::Resolve(std::size_t index) {
    const CustomDeclaration& declared = declared_[index];
    states_[index] = State::Open;
    open_.push_back(index);
    if (!HasVariables(declared.value)) {
        values_[index] = std::make_shared<const astring>(declared.value);
    } else {
        SharedText last;  // of what the substitution has asked for
        const auto lookup = [&](std::string_view name) -> std::optional<std::string_view> {
            last = Find(name);
            return last != nullptr ? std::optional(last->view()) : std::nullopt;
        };
        std::optional<astring> text =
            SubstituteVariables(declared.value, lookup, std::min(kMostSubstituted, budget_));
        if (text && !inCircle_[index]) {
            budget_ -= text->size();
            values_[index] = std::make_shared<const astring>(std::move(*text));
        }
    }
    open_.pop_back();
    states_[index] = State::Done;
}

std::vector<NamedValue> Resolution::Run() {
    std::vector<NamedValue> own;
    for (std::size_t i = 0; i < declared_.size(); ++i) {
        if (declared_[i].keyword == WideKeyword::None) continue;
        const bool isInitial = declared_[i].keyword == WideKeyword::Initial;
        if (!isInitial) values_[i] = Inherited(declared_[i].name);
        states_[i] = State::Done;
    }
    for (std::size_t i = 0; i < declared_.size(); ++i) {
        if (states_[i] == State::Waiting) Resolve(i);
        own.push_back({std::make_shared<const astring>(declared_[i].name), values_[i]});
    }
    return own;
}

}  // namespace

std::shared_ptr<const CustomValues> ResolveCustom(const std::vector<CustomDeclaration>& declared,
                                                  std::shared_ptr<const CustomValues> inherited,
                                                  std::size_t& budget) {
    std::vector<NamedValue> own = Resolution(declared, inherited.get(), budget).Run();
    return std::make_shared<const CustomValues>(std::move(inherited), std::move(own));
}

}  // namespace Dom::CSS::detail
