// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>

#include <cstddef>
#include <string_view>
#include <vector>

namespace Dom {

/// A list of strings, as DOM Level 3 Core has it. Copies share nothing.
class ESPALIER_EXPORT DOMStringList {
public:
    /// Makes an empty list.
    DOMStringList() = default;
    explicit DOMStringList(std::vector<astring> strings) : strings_(std::move(strings)) {}

    /// Returns string `index`, from 0 on; empty when there is none. Valid until the list changes.
    const astring& Item(std::size_t index) const;
    /// Returns the number of strings.
    std::size_t Length() const { return strings_.size(); }
    /// Tells whether `string` is in the list.
    bool Contains(std::string_view string) const;

    /// \name Iteration
    /// Over the strings, in their order.
    /// @{
    auto begin() const { return strings_.begin(); }
    auto end() const { return strings_.end(); }
    /// @}

private:
    std::vector<astring> strings_;
};

}  // namespace Dom
