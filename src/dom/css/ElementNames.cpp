// SPDX-License-Identifier: MIT
#include "dom/css/ElementNames.h"

#include "dom/css/CssCharacters.h"
#include "dom/css/SelectorSubject.h"

#include <algorithm>

namespace Dom::CSS::detail {

namespace {

// The classes of most elements are few; those of one that has many are sorted.
constexpr std::size_t kFew = 16;

void RemoveRepeated(std::vector<HashedName>& names) {
    if (names.size() > kFew) {
        std::ranges::sort(names, {}, &HashedName::text);
        names.erase(std::unique(names.begin(), names.end()), names.end());
        return;
    }
    std::size_t kept = 0;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const auto end = names.begin() + static_cast<std::ptrdiff_t>(kept);
        if (std::find(names.begin(), end, names[i]) == end) names[kept++] = names[i];
    }
    names.resize(kept);
}

}  // namespace

void ElementNames::Set(const Element& element) {
    const SelectorSubject subject(element);
    type_ = HashedName(NameKind::Type, subject.Name());
    const astring* const id = subject.Attribute("id");
    id_ = id != nullptr && !id->empty() ? HashedName(NameKind::Id, *id) : HashedName();
    classes_.clear();
    const astring* const classes = subject.Attribute("class");
    if (classes == nullptr) return;
    std::string_view rest = Trimmed(*classes);
    while (!rest.empty()) {
        const std::string_view word = rest.substr(0, rest.find_first_of(kSpace));
        classes_.emplace_back(NameKind::Class, word);
        rest = Trimmed(rest.substr(word.size()));
    }
    RemoveRepeated(classes_);
}

void ElementNames::AddTo(AncestorFilter& filter) const {
    filter.Add(type_.hash);
    if (!id_.text.empty()) filter.Add(id_.hash);
    for (const HashedName& name : classes_)
        filter.Add(name.hash);
}

}  // namespace Dom::CSS::detail
