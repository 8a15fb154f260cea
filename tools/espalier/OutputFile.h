// SPDX-License-Identifier: MIT
#pragma once

#include "Context.h"
#include "ExitCode.h"
#include "FileReplacement.h"

#include <fmt/format.h>

#include <string>

namespace Tool {

/// Sends an output somewhere else as long as it lives.
class Redirection {
public:
    /// \param out, target not owned, must live longer
    Redirection(Output& out, IO::Stream& target) : out_(out) { out_.SetTarget(&target); }
    ~Redirection() { out_.SetTarget(nullptr); }

    Redirection(const Redirection&) = delete;
    Redirection& operator=(const Redirection&) = delete;

private:
    Output& out_;
};

/// Calls `work`, and puts its answers into a file if it says that all is well. Otherwise the file
/// stays as it was. Says why when the file cannot be written.
/// \param name of the file; empty: standard output
/// \param work returns an ExitCode
template <typename Work>
ExitCode WithOutputFile(const std::string& name, Context& context, Work work) {
    if (name.empty()) return work();
    try {
        FileReplacement file(name);
        const Redirection redirection(context.out, file);
        const ExitCode code = work();
        context.out.Flush();
        if (code == ExitCode::Yes) file.Commit();
        return code;
    } catch (const ReplacementError& error) {
        context.console.Write(fmt::format("{}: error: {}\n", name, error.what()));
        return ExitCode::InputOutput;
    }
}

}  // namespace Tool
