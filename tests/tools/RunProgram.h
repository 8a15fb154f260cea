// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>

/// What the program is run with.
struct ProgramSetup {
    std::vector<std::string> arguments;  ///< without the name of the program
    std::string input;                   ///< what stands on standard input
    /// Delivers standard input in pieces instead, until a piece is empty.
    std::function<std::string()> nextInput = nullptr;
    std::size_t outputLimit = std::string::npos;  ///< standard output is closed after so many bytes
    std::string outputFile = {};                  ///< standard output goes there instead
    std::vector<std::string> environment = {};    ///< "NAME=value", added to the test's own
    bool errorsToTerminal = false;                ///< standard error is a terminal
    bool outputToTerminal = false;                ///< standard output is a terminal
    bool asNobody = false;                        ///< runs without the rights of root
};

/// What has become of a run.
struct ProgramResult {
    int exitCode = -1;       ///< the exit code; below 0, the signal that ended the program
    std::string out;         ///< standard output
    std::string errors;      ///< standard error
    long peakKilobytes = 0;  ///< the most memory that was resident at once
};

/// Runs the program `espalier` to its end.
ProgramResult RunProgram(const ProgramSetup& setup);

/// The same for arguments and standard input alone.
ProgramResult RunProgram(std::vector<std::string> arguments, std::string input = {});
