// SPDX-License-Identifier: MIT
#include "tools/RunProgram.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace {

// Feeds a document for a second and a half, so that the program has time to show its progress.
std::function<std::string()> SlowDocument() {
    using Clock = std::chrono::steady_clock;
    return [end = Clock::now() + std::chrono::milliseconds(1500), state = 0]() mutable {
        if (state == 0) {
            state = 1;
            return std::string("<a>");
        }
        if (Clock::now() < end) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
            return std::string(40000, ' ');
        }
        return state++ == 1 ? std::string("</b>") : std::string();
    };
}

}  // namespace

TEST(Terminal, ErrorsAreColoredOnATerminalOnly) {
    const struct {
        bool terminal;
        std::vector<std::string> options;
        std::vector<std::string> environment;
        bool colored;
    } kCases[] = {
        {true, {}, {}, true},
        {false, {}, {}, false},
        {true, {}, {"NO_COLOR=1"}, false},
        {true, {}, {"NO_COLOR="}, true},
        {true, {}, {"TERM=dumb"}, false},
        {true, {"--color", "never"}, {}, false},
        {false, {"--color", "always"}, {}, true},
        {false, {"--color=always"}, {"NO_COLOR=1"}, true},
    };
    for (const auto& c : kCases) {
        ProgramSetup setup;
        setup.arguments = {"check"};
        setup.arguments.insert(setup.arguments.end(), c.options.begin(), c.options.end());
        setup.environment = c.environment;
        setup.errorsToTerminal = c.terminal;
        setup.input = "<a></b>";
        const ProgramResult result = RunProgram(setup);
        EXPECT_EQ(result.exitCode, 3);
        EXPECT_EQ(result.errors.find("\x1B[31merror:") != std::string::npos, c.colored)
            << result.errors;
    }
}

TEST(Terminal, NodesAreColoredOnATerminalOnly) {
    ProgramSetup setup;
    setup.arguments = {"events"};
    setup.input = "<a/>";
    EXPECT_EQ(RunProgram(setup).out, "Element a 1 1:1 /\n");
    setup.outputToTerminal = true;
    EXPECT_EQ(RunProgram(setup).out, "\x1B[36mElement\x1B[0m \x1B[1ma\x1B[0m 1 1:1 /\r\n");
}

TEST(Terminal, LongWorkShowsItsProgressAndErasesIt) {
    ProgramSetup setup;
    setup.arguments = {"check", "--color", "never"};
    setup.errorsToTerminal = true;
    setup.nextInput = SlowDocument();
    const ProgramResult result = RunProgram(setup);
    EXPECT_EQ(result.exitCode, 3);
    const std::size_t shown = result.errors.find("iB/s\x1B[K");
    const std::size_t erased = result.errors.find("\r\x1B[K<stdin>:");
    ASSERT_NE(shown, std::string::npos) << result.errors;
    ASSERT_NE(erased, std::string::npos) << result.errors;
    EXPECT_LT(shown, erased);
}

TEST(Terminal, ProgressIsShownOnATerminalOnlyAndWhenWanted) {
    ProgramSetup setup;
    setup.arguments = {"check"};
    setup.nextInput = SlowDocument();
    EXPECT_TRUE(RunProgram(setup).errors.starts_with("<stdin>:1:"));

    setup.arguments = {"check", "--progress", "never", "--color", "never"};
    setup.errorsToTerminal = true;
    setup.nextInput = SlowDocument();
    EXPECT_TRUE(RunProgram(setup).errors.starts_with("<stdin>:1:"));
}
