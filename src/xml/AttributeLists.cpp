// SPDX-License-Identifier: MIT
#include "xml/AttributeLists.h"

#include "xml/SeededHash.h"

#include <algorithm>  // std::find_if
#include <utility>

namespace Xml::detail {

namespace {

unsigned KeyLength(std::string_view key) { return static_cast<unsigned>(key.size()); }

Xml::HashMap NewMap() {
    Xml::HashMap map(8, true);
    map.SetKey(SeededHash, XmlKeyCompareBinary);
    return map;
}

}  // namespace

bool AttributeList::Declare(AttributeDeclaration declaration) {
    constexpr std::size_t kFew = 8;  // so many are compared one by one
    if (Find(declaration.name) != nullptr) return false;
    declarations_.push_back(std::make_unique<AttributeDeclaration>(std::move(declaration)));
    const AttributeDeclaration& added = *declarations_.back();
    if (added.hasDefault) defaults_.push_back(&added);
    hasTypes_ = hasTypes_ || added.type != AttributeType::CData;
    if (byName_ != nullptr) {
        Index(*declarations_.back());
    } else if (declarations_.size() > kFew) {
        byName_ = std::make_unique<Xml::HashMap>(NewMap());
        for (const auto& declared : declarations_)
            Index(*declared);
    }
    return true;
}

void AttributeList::Index(AttributeDeclaration& declaration) {
    byName_->Insert(declaration.name.data(), KeyLength(declaration.name), &declaration);
}

const AttributeDeclaration* AttributeList::Find(std::string_view name) const {
    if (byName_ != nullptr) {
        return static_cast<const AttributeDeclaration*>(
            byName_->Find(name.data(), KeyLength(name)));
    }
    const auto found = std::find_if(declarations_.begin(), declarations_.end(),
                                    [name](const auto& one) { return one->name == name; });
    return found == declarations_.end() ? nullptr : found->get();
}

AttributeLists::AttributeLists() : byElement_(NewMap()) {}

AttributeList& AttributeLists::ListOf(std::string_view element) {
    void* const found = byElement_.Find(element.data(), KeyLength(element));
    if (found != nullptr) return *static_cast<AttributeList*>(found);
    AttributeList& list = lists_.emplace_back();
    byElement_.Insert(element.data(), KeyLength(element), &list);
    return list;
}

const AttributeList* AttributeLists::Find(std::string_view element) const {
    return static_cast<const AttributeList*>(byElement_.Find(element.data(), KeyLength(element)));
}

void TrimTokens(astring& value) {
    char* to = value.begin();
    bool isPending = false;
    for (const char c : value.view()) {
        if (c == ' ') {
            isPending = to != value.begin();
            continue;
        }
        if (std::exchange(isPending, false)) *to++ = ' ';
        *to++ = c;
    }
    value.resize(static_cast<std::size_t>(to - value.begin()));
}

}  // namespace Xml::detail
