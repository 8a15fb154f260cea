// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>

#include <memory>
#include <string_view>
#include <vector>

namespace Dom::CSS {

namespace detail {
struct StyleData;
}  // namespace detail

/// The values that the properties of an element have (CSS 2.1 section 6.1.2), by a StyleResolver.
///
/// Values are computed: lengths are in "px", colours are "rgb(r, g, b)" or "rgba(r, g, b, a)",
/// weights of fonts are numbers, addresses are absolute, "inherit" and variables are replaced by
/// what they stand for. Percentages that wait for a layout stay as they are.
///
/// It is cheap to copy, never changes, and may be kept longer than the resolver and the document.
///
/// \note May be used from different threads at once.
class ESPALIER_EXPORT ComputedStyle {
public:
    /// The style that has all properties at their initial values.
    ComputedStyle();
    ComputedStyle(const ComputedStyle&);
    ComputedStyle(ComputedStyle&&) noexcept;
    ComputedStyle& operator=(const ComputedStyle&);
    ComputedStyle& operator=(ComputedStyle&&) noexcept;
    ~ComputedStyle();

    /// Returns the value of a property; the empty string for a name that is not known and not
    /// declared, and for a shorthand such as "margin".
    /// \param property in any case, but for custom properties ("--x")
    astring Value(std::string_view property) const;
    /// Tells whether the value is not the initial one by default: it has been declared for the
    /// element, or it is inherited from one that it was declared for.
    bool IsSet(std::string_view property) const;
    /// Returns the names of the properties that IsSet() is true for, in alphabetical order.
    std::vector<astring> Names() const;
    /// Returns the names of all properties that are known and no shorthands, in alphabetical order.
    static std::vector<astring> KnownNames();

    /// Tells whether both are one style. Elements that are styled alike, below parents that are,
    /// mostly share it; but different styles may have the same values, too.
    friend bool operator==(const ComputedStyle& left, const ComputedStyle& right) {
        return left.data_ == right.data_;
    }

private:
    friend class StyleResolver;

    explicit ComputedStyle(std::shared_ptr<const detail::StyleData> data);

    std::shared_ptr<const detail::StyleData> data_;
};

}  // namespace Dom::CSS
