// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>
#include <espalier/dom/Forward.h>

#include "dom/NodeAccess.h"
#include "dom/css/SelectorParts.h"

#include <string_view>

namespace Dom::CSS::detail {

/// What selectors are compared with: an element, or a name with an id and classes.
class SelectorSubject {
public:
    explicit SelectorSubject(const Element& element) : element_(&element) {}
    SelectorSubject(std::string_view name, const astring& id, const astring& classes)
        : name_(name), id_(&id), classes_(&classes) {}

    /// Returns the element, or null.
    const Element* GetElement() const { return element_; }
    /// Returns the local name.
    std::string_view Name() const;
    /// Returns the namespace; empty when there is none.
    std::string_view NamespaceUri() const;
    /// Returns the value of an attribute without a namespace, or null when there is none.
    const astring* Attribute(std::string_view name) const;
    /// Calls `test` with the values of attributes with a local name in a namespace, or in all,
    /// until it returns true; tells whether it did.
    template <typename Test>
    bool AnyAttribute(const NamespaceTest& space, std::string_view name, Test test) const;

private:
    const Element* element_ = nullptr;
    std::string_view name_;
    const astring* id_ = nullptr;
    const astring* classes_ = nullptr;
};

template <typename Test>
bool SelectorSubject::AnyAttribute(const NamespaceTest& space, std::string_view name,
                                   Test test) const {
    using Dom::detail::AttributeTable;
    const AttributeTable* const table =
        element_ == nullptr ? nullptr : Dom::detail::NodeAccess::Table(*element_);
    if (table == nullptr) return false;
    for (const AttributeTable::Entry& entry : table->All()) {
        const Dom::detail::NodeName& own = entry.Name();
        const bool isThere = own.LocalName() == name &&
                             (space.kind == NamespaceTest::Kind::Any || *own.uri == space.uri);
        if (isThere && test(entry.Value())) return true;
    }
    return false;
}

}  // namespace Dom::CSS::detail
