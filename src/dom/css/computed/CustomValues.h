// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace Dom::CSS::detail {

/// A text that is never changed, and has as many owners as want it.
using SharedText = std::shared_ptr<const astring>;

/// The value of a property that is known by its name.
struct NamedValue {
    SharedText name;
    SharedText value;  ///< null: it has none, whatever the element above says
};

/// The custom properties of an element, with those that it inherits.
///
/// What an element adds refers to what the one above has, so that a deep tree whose elements all
/// add some takes memory in proportion to their number. Not more than kMost are inherited: those
/// that come on top have no value.
class CustomValues {
public:
    static constexpr std::size_t kMost = 2048;

    /// \param parent may be null
    /// \param own sorted by name, each name once
    CustomValues(std::shared_ptr<const CustomValues> parent, std::vector<NamedValue> own);

    /// Returns the value of a property, or null.
    SharedText Find(std::string_view name) const;
    /// Returns all that have a value, sorted by name.
    std::vector<NamedValue> All() const;

private:
    // So many steps a search may take.
    static constexpr unsigned kMostSteps = 64;

    std::shared_ptr<const CustomValues> parent_;
    std::vector<NamedValue> own_;
    std::size_t count_ = 0;  // at least as many as have a value
    unsigned steps_ = 0;     // to the one that has no parent
};

}  // namespace Dom::CSS::detail
