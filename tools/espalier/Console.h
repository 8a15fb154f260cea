// SPDX-License-Identifier: MIT
#pragma once

#include "Progress.h"

#include <string>
#include <string_view>

namespace Tool {

/// When colours are used.
enum class ColorChoice { Auto, Always, Never };

/// Standard error: complaints, notes and the progress line, none of which mix with the answers on
/// standard output.
class Console {
public:
    /// \param progress is erased before anything is written; not owned, must live longer
    explicit Console(Progress& progress) : progress_(progress) {}

    /// Says when colours are used: `Auto` is on a terminal, unless the environment variable
    /// NO_COLOR is set and not empty (https://no-color.org) or TERM is "dumb".
    void SetColor(ColorChoice choice) { choice_ = choice; }

    /// Tells whether colours are used on standard error, on standard output.
    bool ColorsErrors() const;
    bool ColorsOutput() const;

    /// Writes `text` as it is.
    void Write(std::string_view text);

    /// Writes "espalier: MESSAGE" and a line feed: a complaint about the program's own work.
    void Complain(std::string_view message);

private:
    bool Colors(int descriptor) const;

    Progress& progress_;
    ColorChoice choice_ = ColorChoice::Auto;
};

}  // namespace Tool
