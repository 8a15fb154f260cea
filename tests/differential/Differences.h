// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <span>
#include <string_view>

/// \file
/// Where the reader decides otherwise than XML 1.0 and Namespaces in XML 1.0, and why. The tests
/// and the fuzz target that compare it with other parsers allow these differences and no others,
/// and docs/conformance.md is made of them.
namespace differential {

/// What becomes of a document in which a difference shows.
enum class Effect {
    Accepted,  ///< it is malformed, and the reader accepts it
    Refused,   ///< it is well-formed, and the reader refuses it
    Told       ///< it is well-formed, and the reader tells other nodes than the standard means
};

/// A difference that is deliberate.
struct Difference {
    Effect effect = Effect::Accepted;
    const char* name = "";
    const char* standard = "";  ///< what the standard asks for
    const char* reader = "";    ///< what the reader does
    const char* reason = "";

    /// What a document has, one of them, in which the difference shows.
    std::array<const char*, 3> signs = {};

    /// For Refused: the messages of the reader. Null behind the last one.
    std::array<const char*, 5> messages = {};

    /// For Accepted: expat's numbers of the errors that it finds; 0 behind the last one.
    std::array<int, 10> expatErrors = {};

    bool HasMessage(std::string_view message) const;
    bool HasExpatError(int error) const;

    /// Tells whether the document has one of the signs.
    bool MayShowIn(std::string_view document) const;
};

/// Returns all differences, those of one effect together.
std::span<const Difference> Differences();

/// Returns the difference of that name; null when there is none.
const Difference* FindDifference(std::string_view name);

}  // namespace differential
