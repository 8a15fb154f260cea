// SPDX-License-Identifier: MIT
#include "dom/css/LaterSelectors.h"

#include "dom/css/AsciiCase.h"

#include <algorithm>
#include <iterator>

namespace Dom::CSS::detail {

namespace {

// Selectors Level 4, CSS Pseudo-Elements Level 4 and what HTML adds to them.
constexpr std::string_view kNames[] = {"any-link",
                                       "autofill",
                                       "backdrop",
                                       "default",
                                       "defined",
                                       "details-content",
                                       "dir",
                                       "file-selector-button",
                                       "focus-visible",
                                       "focus-within",
                                       "fullscreen",
                                       "grammar-error",
                                       "has",
                                       "highlight",
                                       "host",
                                       "host-context",
                                       "in-range",
                                       "invalid",
                                       "is",
                                       "local-link",
                                       "marker",
                                       "modal",
                                       "open",
                                       "optional",
                                       "out-of-range",
                                       "part",
                                       "paused",
                                       "picture-in-picture",
                                       "placeholder",
                                       "placeholder-shown",
                                       "playing",
                                       "popover-open",
                                       "read-only",
                                       "read-write",
                                       "required",
                                       "scope",
                                       "slotted",
                                       "spelling-error",
                                       "state",
                                       "target-text",
                                       "target-within",
                                       "user-invalid",
                                       "user-valid",
                                       "valid",
                                       "where"};

}  // namespace

bool IsOfLaterLevel(std::string_view selectors, std::size_t fault) {
    std::string_view rest = selectors.substr(std::min(fault, selectors.size()));
    if (!rest.starts_with(':')) return false;
    rest.remove_prefix(rest.starts_with("::") ? 2 : 1);
    if (rest.starts_with('-')) return true;
    const std::size_t length =
        rest.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ-0123456789_");
    const std::string_view name = rest.substr(0, length);
    return std::ranges::any_of(
        kNames, [name](std::string_view each) { return EqualIgnoringCase(each, name); });
}

}  // namespace Dom::CSS::detail
