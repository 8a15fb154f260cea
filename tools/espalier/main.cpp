// SPDX-License-Identifier: MIT
#include "CommandLine.h"

#include <csignal>
#include <memory>
#include <new>

namespace {

Tool::ExitCode Run(const std::vector<std::string>& arguments, Tool::Context& context) {
    using Tool::ExitCode;
    try {
        const ExitCode code = Tool::RunCommandLine(arguments, context);
        context.out.Flush();
        return code;
    } catch (const Tool::BrokenPipe&) {
        return ExitCode::Yes;  // whoever reads the output has seen enough
    } catch (const Tool::OutputError& error) {
        context.console.Complain(std::string("standard output: ") + error.what());
        return ExitCode::InputOutput;
    } catch (const std::bad_alloc&) {
        context.console.Complain("out of memory");
        return ExitCode::Limit;
    }
}

}  // namespace

int main(int argc, char** argv) {
    // A closed pipe is told by write() and ends the work in order.
    (void)std::signal(SIGPIPE, SIG_IGN);
    const auto context = std::make_unique<Tool::Context>();
    return static_cast<int>(Run({argv + 1, argv + argc}, *context));
}
