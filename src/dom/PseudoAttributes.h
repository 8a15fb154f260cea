// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include <string_view>

namespace Dom::detail {

/// Takes pseudo-attributes, NAME="VALUE", out of the data of an instruction, one after the other.
class PseudoAttributes {
public:
    explicit PseudoAttributes(std::string_view data) : rest_(data) {}

    /// Goes to the next one. Returns false when there is none, or it has a fault; then there is no
    /// other one behind it either.
    bool Next();

    /// \name The current one
    /// @{
    std::string_view Name() const { return name_; }
    /// The value, with references to characters replaced.
    const astring& Value() const { return value_; }
    /// @}

private:
    void SkipSpace();
    bool SkipCharacter(char character);
    bool ReadName();
    bool ReadValue();
    bool ReadReference();

    std::string_view rest_;
    std::string_view name_;
    astring value_;
};

}  // namespace Dom::detail
