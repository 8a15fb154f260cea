// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>

namespace bench {

/// Where the document refers to the entity that makes the work.
enum class BombPlace { Content, Attribute };

/// A document that is small and means endless work, or work that never ends.
struct Bomb {
    const char* title;
    BombPlace where;
    std::string (*make)(BombPlace where);
    const char* message;  ///< the error that it has to be refused with
    int leastLine;        ///< the first line on which it may be refused
};

/// Returns all bombs.
std::span<const Bomb> Bombs();

}  // namespace bench
