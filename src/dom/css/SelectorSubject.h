// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>
#include <espalier/dom/Forward.h>

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
    /// Returns the value of an attribute without a namespace, or null when there is none.
    const astring* Attribute(std::string_view name) const;

private:
    const Element* element_ = nullptr;
    std::string_view name_;
    const astring* id_ = nullptr;
    const astring* classes_ = nullptr;
};

}  // namespace Dom::CSS::detail
