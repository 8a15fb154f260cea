// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>
#include <vector>

/// \file
/// The tests of the suite on which the default mode of the reader and the standard mode part.
namespace conformance {

/// What the default mode does with a document, where the standard mode does otherwise.
enum class Parting {
    Accepts,  ///< it accepts what is malformed
    Refuses,  ///< it refuses what is well-formed
    Tells     ///< both accept it, and the default mode tells it otherwise
};

/// Tests on which the modes part for the same reason. A test may stand in several, if they are of
/// one kind.
struct DefaultDifference {
    Parting parting = Parting::Accepts;
    const char* name = "";   ///< the name of the difference in docs/conformance.md
    const char* tests = "";  ///< the names of the tests, with white space between them
};

/// Returns all of them, those of one kind together.
std::span<const DefaultDifference> DefaultDifferences();

/// Returns the names of the tests one by one.
std::vector<std::string> TestsOf(const DefaultDifference& difference);

}  // namespace conformance
