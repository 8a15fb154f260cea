// SPDX-License-Identifier: MIT
#pragma once

#include "Events.h"

namespace differential {

/// Expects that both tell the same, and that the other parser finds no error. `peer` names it. Only
/// the first difference is shown: documents are long.
void ExpectSameEvents(const Reading& ours, const Reading& theirs, const char* peer);

}  // namespace differential
