// SPDX-License-Identifier: MIT
#include "tools/RunProgram.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr unsigned kNobody = 65534;
constexpr int kCannotRun = 126;

// Two ends of a pipe or of a terminal, closed when the object goes.
struct Channel {
    int ours = -1;
    int theirs = -1;

    Channel() = default;
    Channel(const Channel&) = delete;
    Channel& operator=(const Channel&) = delete;
    ~Channel() {
        CloseOurs();
        CloseTheirs();
    }

    void CloseOurs() { Close(ours); }
    void CloseTheirs() { Close(theirs); }

    static void Close(int& descriptor) {
        if (descriptor >= 0) ::close(descriptor);
        descriptor = -1;
    }
};

void OpenToRead(Channel& channel, bool terminal) {
    std::array<int, 2> ends{};
    if (terminal) {
        winsize size{24, 80, 0, 0};
        ASSERT_EQ(::openpty(ends.data(), ends.data() + 1, nullptr, nullptr, &size), 0);
    } else {
        ASSERT_EQ(::pipe(ends.data()), 0);
    }
    channel.ours = ends[0];
    channel.theirs = ends[1];
}

void OpenToWrite(Channel& channel) {
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe(ends.data()), 0);
    channel.theirs = ends[0];
    channel.ours = ends[1];
    // The program may read more slowly than we write; then its output has to be read meanwhile.
    ASSERT_EQ(::fcntl(channel.ours, F_SETFL, O_NONBLOCK), 0);
}

[[noreturn]] void BecomeProgram(const ProgramSetup& setup, const Channel& in, const Channel& out,
                                const Channel& errors) {
    ::dup2(in.theirs, STDIN_FILENO);
    ::dup2(out.theirs, STDOUT_FILENO);
    ::dup2(errors.theirs, STDERR_FILENO);
    for (int descriptor = STDERR_FILENO + 1; descriptor < 64; ++descriptor)
        ::close(descriptor);
    if (setup.asNobody && ::geteuid() == 0 && ::setuid(kNobody) != 0) ::_exit(kCannotRun);
    // Nobody can write where coverage counts.
    if (setup.asNobody) ::setenv("LLVM_PROFILE_FILE", "/dev/null", 1);
    ::unsetenv("NO_COLOR");
    ::setenv("TERM", "xterm", 1);
    for (const std::string& variable : setup.environment) {
        const std::size_t equals = variable.find('=');
        ::setenv(variable.substr(0, equals).c_str(), variable.substr(equals + 1).c_str(), 1);
    }
    std::vector<std::string> words{ESPALIER_PROGRAM};
    words.insert(words.end(), setup.arguments.begin(), setup.arguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    ::execv(ESPALIER_PROGRAM, pointers.data());
    ::_exit(kCannotRun);
}

// Feeds and drains the program until it has closed its ends.
class Conversation {
public:
    Conversation(const ProgramSetup& setup, Channel& in, Channel& out, Channel& errors)
        : setup_(setup), in_(in), out_(out), errors_(errors), pending_(setup.input) {}

    ProgramResult Run() {
        while (out_.ours >= 0 || errors_.ours >= 0) {
            if (pending_.empty() && in_.ours >= 0) NextInput();
            std::array<pollfd, 3> ends{
                {{in_.ours, POLLOUT, 0}, {out_.ours, POLLIN, 0}, {errors_.ours, POLLIN, 0}}};
            if (::poll(ends.data(), ends.size(), -1) < 0) break;
            if (ends[0].revents != 0) Feed();
            if (ends[1].revents != 0) Drain(out_, result_.out);
            if (ends[2].revents != 0) Drain(errors_, result_.errors);
            if (result_.out.size() >= setup_.outputLimit) out_.CloseOurs();
        }
        return std::move(result_);
    }

private:
    void NextInput() {
        if (setup_.nextInput) pending_ = setup_.nextInput();
        if (pending_.empty()) in_.CloseOurs();
    }

    void Feed() {
        const ssize_t written = ::write(in_.ours, pending_.data(), pending_.size());
        if (written >= 0) {
            pending_.erase(0, static_cast<std::size_t>(written));
        } else if (errno != EAGAIN) {
            in_.CloseOurs();  // the program reads no more
        }
    }

    static void Drain(Channel& channel, std::string& text) {
        std::array<char, 65536> buffer;
        const ssize_t count = ::read(channel.ours, buffer.data(), buffer.size());
        if (count > 0) {
            text.append(buffer.data(), static_cast<std::size_t>(count));
        } else {
            channel.CloseOurs();  // a terminal whose other end is gone answers with an error
        }
    }

    const ProgramSetup& setup_;
    Channel& in_;
    Channel& out_;
    Channel& errors_;
    std::string pending_;
    ProgramResult result_;
};

}  // namespace

ProgramResult RunProgram(const ProgramSetup& setup) {
    std::signal(SIGPIPE, SIG_IGN);
    Channel in;
    Channel out;
    Channel errors;
    OpenToWrite(in);
    OpenToRead(out, setup.outputToTerminal);
    OpenToRead(errors, setup.errorsToTerminal);
    if (!setup.outputFile.empty()) {
        out.CloseTheirs();
        out.theirs = ::open(setup.outputFile.c_str(), O_WRONLY);
    }

    const pid_t child = ::fork();
    if (child == 0) BecomeProgram(setup, in, out, errors);
    in.CloseTheirs();
    out.CloseTheirs();
    errors.CloseTheirs();
    ProgramResult result = Conversation(setup, in, out, errors).Run();

    int status = 0;
    rusage usage{};
    EXPECT_EQ(::wait4(child, &status, 0, &usage), child);
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    result.peakKilobytes = usage.ru_maxrss;
    EXPECT_NE(result.exitCode, kCannotRun) << "cannot run " << ESPALIER_PROGRAM;
    return result;
}

ProgramResult RunProgram(std::vector<std::string> arguments, std::string input) {
    ProgramSetup setup;
    setup.arguments = std::move(arguments);
    setup.input = std::move(input);
    return RunProgram(setup);
}
