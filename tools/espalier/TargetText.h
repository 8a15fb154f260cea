// SPDX-License-Identifier: MIT
#pragma once

#include "MarkupTracker.h"
#include "Target.h"

#include <stdexcept>
#include <string>
#include <string_view>

namespace Tool {

/// Thrown for a character that cannot be written, neither as it is nor as a reference.
class MissingCharacter : public std::runtime_error {
public:
    MissingCharacter(const std::string& message, Place where)
        : std::runtime_error(message), where_(where) {}

    /// Returns where the character is, as ColumnCount::Escaped.
    Place Where() const { return where_; }

private:
    Place where_;
};

/// Makes texts as they are in a document those that the target is to have: with its line breaks,
/// and with references to the characters that its encoding does not have.
///
/// The texts that are returned are valid until the next call, or as long as the text that was
/// given.
class TargetText {
public:
    /// \param target, newLine not owned
    TargetText(const Target& target, std::string_view newLine);

    /// Returns a text or the value of an attribute, which is in a document as it is given.
    /// \param place where it begins, for messages
    /// \throws MissingCharacter for one in the name of a reference, or that no reference may be to
    std::string_view Text(std::string_view text, Place place);

    /// Returns markup that holds no references.
    /// \param place where it begins, for messages
    /// \throws MissingCharacter
    std::string_view Markup(std::string_view text, Place place);

    /// Returns a name.
    /// \param place where it begins, for messages
    /// \throws MissingCharacter
    std::string_view Name(std::string_view name, Place place);

private:
    std::string_view Break(std::string_view text);
    std::string_view Refer(std::string_view text, Place place);
    bool IsPlain(std::string_view text) const;

    const Target& target_;
    std::string_view newLine_;
    std::string broken_;    // with line breaks
    std::string referred_;  // with references
};

}  // namespace Tool
