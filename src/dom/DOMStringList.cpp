// SPDX-License-Identifier: MIT
#include <espalier/dom/DOMStringList.h>

#include <algorithm>

namespace Dom {

const astring& DOMStringList::Item(std::size_t index) const {
    static const astring none;
    return index < strings_.size() ? strings_[index] : none;
}

bool DOMStringList::Contains(std::string_view string) const {
    return std::ranges::find(strings_, string) != strings_.end();
}

}  // namespace Dom
