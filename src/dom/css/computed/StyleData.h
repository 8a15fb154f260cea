// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include "dom/css/computed/CustomValues.h"
#include "dom/css/computed/PropertyTable.h"

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace Dom::CSS::detail {

/// What stands for the colour of the element itself.
inline constexpr std::string_view kCurrentColor = "currentcolor";

/// The value of a property with an id.
struct SetValue {
    PropertyId id;
    SharedText value;
};

/// Values of different properties, sorted by id. Those that are not there are initial ones.
class ValueList {
public:
    /// Returns the value of a property, or null.
    const SharedText* Find(PropertyId id) const;
    void Set(PropertyId id, SharedText value);
    void Remove(PropertyId id);
    const std::vector<SetValue>& All() const { return values_; }

private:
    std::vector<SetValue> values_;
};

/// The computed style of an element, or of many.
struct StyleData : std::enable_shared_from_this<StyleData> {
    std::shared_ptr<const ValueList> inherited;  ///< properties that are inherited; not null
    ValueList own;                               ///< the others
    std::shared_ptr<const CustomValues> custom;  ///< may be null
    std::vector<NamedValue> others;              ///< that are not known, sorted by name
    double fontSize = 16;                        ///< of the element, in pixels
    double rootFontSize = 16;                    ///< of the root element
    bool dependsOnParent = false;                ///< on more than what is inherited by itself
    bool hasItems = false;                       ///< it is a flex or grid container
    std::size_t substituted = 0;                 ///< bytes that variables have been replaced by

    /// Returns the value of a property that is known.
    std::string_view Value(PropertyId id) const;
    /// Returns the value of a property that is not, or of a custom one; or null.
    SharedText FindNamed(std::string_view name) const;
    /// Returns the values that a property is among.
    const ValueList& ListFor(PropertyId id) const;
};

}  // namespace Dom::CSS::detail
