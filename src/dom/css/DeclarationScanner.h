// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include "dom/css/TextCursor.h"

#include <string_view>

namespace Dom::CSS::detail {

/// Goes through the properties of a declaration.
///
/// CSS 2.1 section 4.1.1: declaration [ ';' declaration ]* with a name and an importance for each.
class DeclarationScanner {
public:
    explicit DeclarationScanner(std::string_view text) : cursor_(text) { SkipBlanks(cursor_); }

    /// Goes to the next property; false at the end, or where the text is wrong.
    bool Next();
    /// Returns what is wrong with the text; null when nothing is.
    const char* Error() const { return error_; }

    /// \name The property
    /// Valid until Next().
    /// @{
    std::string_view Name() const { return name_; }
    /// Returns the value without white space around it.
    std::string_view Value() const { return value_; }
    bool IsImportant() const { return isImportant_; }
    /// @}

private:
    bool Refuse(const char* message) {
        error_ = message;
        return false;
    }
    bool ReadImportance();

    TextCursor cursor_;
    bool isFirst_ = true;
    bool isImportant_ = false;
    std::string_view name_;
    std::string_view value_;
    astring nameBuffer_;
    const char* error_ = nullptr;
};

/// Tells whether properties can certainly be made of a text. May be false for a text of which they
/// can be made, too.
bool IsSurelyDeclaration(std::string_view text);

}  // namespace Dom::CSS::detail
