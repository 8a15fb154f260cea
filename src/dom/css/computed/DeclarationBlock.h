// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>
#include <espalier/dom/css/CSSStyleDeclaration.h>

#include "dom/css/computed/PropertyTable.h"

#include <vector>

namespace Dom::CSS::detail {

/// The values that every property may have (CSS Cascading Level 3 section 7.3).
enum class WideKeyword : unsigned char { None, Inherit, Initial, Unset };

/// Returns the keyword that a value is; "revert" is taken for "unset".
WideKeyword FindWideKeyword(std::string_view value);

/// What a declaration says of one property that is no shorthand.
struct BlockEntry {
    /// The `id` of properties that are known by their name alone.
    static constexpr PropertyId kNamed = 0xFFFF;

    PropertyId id = kNamed;
    bool isImportant = false;
    bool hasVariables = false;  ///< so `value` is looked into when they are known
    WideKeyword keyword = WideKeyword::None;
    unsigned source = 0;  ///< the index of the property among those of the declaration
    astring name;         ///< of properties without an `id`
    astring shorthand;    ///< that `value` is of, with variables; else empty
    astring value;
};

/// The properties of a declaration, ready to be merged: shorthands are taken apart, and what CSS
/// says to ignore is left out.
class DeclarationBlock {
public:
    /// \param baseAddress what addresses in the declaration are relative to
    DeclarationBlock(const CSSStyleDeclaration& declaration, const astring& baseAddress);

    /// Returns the entries, in the order of the declaration.
    const std::vector<BlockEntry>& Entries() const { return entries_; }
    const astring& BaseAddress() const { return baseAddress_; }

private:
    void Add(const CSSPropertyImpl& property, unsigned source);
    void AddShorthand(BlockEntry&& entry);
    void AddKnown(PropertyId id, BlockEntry&& entry);

    std::vector<BlockEntry> entries_;
    astring baseAddress_;
};

/// Tells whether a name is that of a custom property: "--x".
inline bool IsCustomProperty(std::string_view name) { return name.starts_with("--"); }

/// Returns a name with small letters, but for custom properties, which are what they are.
astring PropertyName(std::string_view name);

}  // namespace Dom::CSS::detail
