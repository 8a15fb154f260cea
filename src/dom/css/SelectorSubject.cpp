// SPDX-License-Identifier: MIT
#include "dom/css/SelectorSubject.h"

#include "dom/NodeAccess.h"

namespace Dom::CSS::detail {

namespace {

const astring* GivenValue(const astring* value) { return value->empty() ? nullptr : value; }

}  // namespace

std::string_view SelectorSubject::Name() const {
    return element_ != nullptr ? element_->LocalNameView() : name_;
}

std::string_view SelectorSubject::NamespaceUri() const {
    if (element_ == nullptr) return {};
    return Dom::detail::NodeAccess::Name(*element_).uri->view();
}

const astring* SelectorSubject::Attribute(std::string_view name) const {
    if (element_ == nullptr) {
        if (name == "id") return GivenValue(id_);
        return name == "class" ? GivenValue(classes_) : nullptr;
    }
    const Dom::detail::AttributeTable* const table = Dom::detail::NodeAccess::Table(*element_);
    if (table == nullptr) return nullptr;
    const std::size_t index = table->Find(name);
    return index == Dom::detail::AttributeTable::kNone ? nullptr : &table->At(index).Value();
}

}  // namespace Dom::CSS::detail
