// SPDX-License-Identifier: MIT
#include "dom/css/computed/ListPool.h"

#include "xml/SeededHash.h"

#include <algorithm>

namespace Dom::CSS::detail {

namespace {

std::uint64_t HashOf(const ValueList& list) {
    std::uint64_t hash = Xml::detail::kHashMultipliers[0];
    for (const SetValue& each : list.All()) {
        const astring& text = *each.value;
        const unsigned own =
            Xml::detail::SeededHash(text.data(), static_cast<unsigned>(text.size()));
        hash = Xml::detail::FoldedProduct(hash ^ own, Xml::detail::kHashMultipliers[1] ^ each.id);
    }
    return hash;
}

bool AreEqual(const ValueList& a, const ValueList& b) {
    return std::ranges::equal(a.All(), b.All(), [](const SetValue& x, const SetValue& y) {
        return x.id == y.id && (x.value == y.value || *x.value == *y.value);
    });
}

}  // namespace

std::shared_ptr<const ValueList> ListPool::Share(std::shared_ptr<const ValueList> list) {
    const std::uint64_t hash = HashOf(*list);
    const auto [begin, end] = lists_.equal_range(hash);
    for (auto place = begin; place != end; ++place) {
        std::shared_ptr<const ValueList> other = place->second.lock();
        if (other == nullptr) {
            place->second = list;
            return list;
        }
        if (AreEqual(*other, *list)) return other;
    }
    lists_.emplace(hash, list);
    return list;
}

void ListPool::DropUnused() {
    std::erase_if(lists_, [](const auto& each) { return each.second.expired(); });
}

}  // namespace Dom::CSS::detail
