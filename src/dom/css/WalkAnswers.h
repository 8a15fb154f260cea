// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Forward.h>

#include <cstddef>
#include <cstdint>
#include <optional>

namespace Dom::CSS::detail {

/// What is asked at each node of a walk along ancestors or earlier siblings.
struct WalkQuestion {
    std::uint64_t asker = 0;  ///< who asks: the serial number of selectors, kLanguageAsker
    unsigned part = 0;        ///< which of his questions
};

/// Who asks for the ancestor that declares the language.
inline constexpr std::uint64_t kLanguageAsker = 0;

/// How many nodes a walk passes before it is worth remembering what it comes to.
inline constexpr std::size_t kShortWalk = 16;

/// Goes to the next node of a walk.
using WalkStep = const Element* (*)(const Element&);

/// Returns what a walk from here on comes to, if this thread remembers that and the document has
/// not changed since.
std::optional<const Element*> RememberedAnswer(WalkQuestion question, const Element& element);

/// Remembers what a walk comes to from any of the first `passed` nodes on, for some of them.
///
/// Kept for the nodes that are 16, 32, 64 and so on away from the begin, so that a walk that begins
/// near this one comes to one of them soon, wherever it begins. Does nothing for a walk that is
/// short, or without memory.
void RememberAnswer(WalkQuestion question, const Element& start, WalkStep step, std::size_t passed,
                    const Element* answer) noexcept;

}  // namespace Dom::CSS::detail
