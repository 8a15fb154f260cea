// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>
#include <espalier/dom/css/SourcePlace.h>

namespace Dom::CSS {

/// Something in a style sheet that ParseStyleSheet() has left out.
struct DroppedText {
    /// What it is.
    enum class Kind {
        Declaration,  ///< a declaration; the others of its block are there
        Rule          ///< a rule with its block
    };

    Kind kind = Kind::Declaration;  ///< what has been left out
    SourcePlace place;  ///< where the fault is: in a selector, or where what is left out begins
    astring text;       ///< the begin of what is left out, at most 80 bytes
    astring reason;     ///< a message, such as "Expected ':'"
};

}  // namespace Dom::CSS
