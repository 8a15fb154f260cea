// SPDX-License-Identifier: MIT
#pragma once

#include <span>

namespace differential {

/// A document in which a difference of the effect Told shows.
struct Telling {
    const char* difference = "";
    const char* document = "";
    const char* reader = "";  ///< the events that the reader tells, joined by a comma and a blank
};

std::span<const Telling> Tellings();

}  // namespace differential
