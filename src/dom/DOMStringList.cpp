// SPDX-License-Identifier: MIT
#include <espalier/dom/DOMStringList.h>

#include <algorithm>

namespace Dom {

const astring& DOMStringList::Item(std::size_t index) const {
    static const astring none;
    return index < strings_.size() ? strings_[index] : none;
}

bool DOMStringList::Contains(std::string_view string) const {
    return std::ranges::any_of(strings_, [string](const astring& one) { return one == string; });
}

}  // namespace Dom
