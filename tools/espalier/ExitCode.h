// SPDX-License-Identifier: MIT
#pragma once

namespace Tool {

/// What the program tells its caller, in the order from harmless to bad.
enum class ExitCode : int {
    Yes = 0,            ///< done; the answer is yes
    No = 1,             ///< done; the answer is no: nothing matched, something would change
    Usage = 2,          ///< the command line makes no sense
    NotWellFormed = 3,  ///< a document is not well-formed
    InputOutput = 4,    ///< something could not be opened, read or written
    Limit = 5           ///< a limit of the library or of the machine was hit
};

/// Returns the code that a run with both outcomes ends with.
constexpr ExitCode Worse(ExitCode a, ExitCode b) {
    return static_cast<int>(a) < static_cast<int>(b) ? b : a;
}

}  // namespace Tool
