// SPDX-License-Identifier: MIT
//
// Streams over pipes, which cannot seek and are interrupted by signals.
#include <espalier/io/FileStream.h>

#include "support/ExpectThrow.h"
#include "support/FileTest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <pthread.h>
#include <string>
#include <sys/stat.h>
#include <sys/time.h>
#include <thread>
#include <unistd.h>

namespace {

using IO::FileStream;
using support::kRead;
using support::kReadWrite;
using support::kWrite;
using support::Pattern;
using support::ReadAll;
using support::Write;

constexpr auto kPause = std::chrono::milliseconds(30);

struct Pipe {
    Pipe() { EXPECT_EQ(::pipe2(ends, O_CLOEXEC), 0); }
    int ReadEnd() const { return ends[0]; }
    int WriteEnd() const { return ends[1]; }
    int ends[2] = {-1, -1};
};

volatile std::sig_atomic_t interruptions = 0;

// Interrupts the calls of the thread that made it every millisecond: the handler is installed
// without SA_RESTART, so that the system does not take the calls up again by itself.
class Interrupter {
public:
    Interrupter() {
        interruptions = 0;
        struct sigaction action = {};
        action.sa_handler = [](int) { interruptions = interruptions + 1; };
        ::sigaction(SIGALRM, &action, &before_);
        const itimerval everyMillisecond = {{0, 1000}, {0, 1000}};
        ::setitimer(ITIMER_REAL, &everyMillisecond, nullptr);
    }
    Interrupter(const Interrupter&) = delete;
    Interrupter& operator=(const Interrupter&) = delete;
    ~Interrupter() {
        const itimerval never = {};
        ::setitimer(ITIMER_REAL, &never, nullptr);
        ::sigaction(SIGALRM, &before_, nullptr);
    }

    // To be called by the other threads, so that the signals go to the one under test.
    static void BlockInThisThread() {
        sigset_t signals;
        ::sigemptyset(&signals);
        ::sigaddset(&signals, SIGALRM);
        ::pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    }

private:
    struct sigaction before_ = {};
};

class FileStreamPipeTest : public support::FileTest {};

TEST_F(FileStreamPipeTest, WhatNeedsSeekingAnswersMinusOne) {
    const Pipe pipe;
    FileStream reader(pipe.ReadEnd(), kRead, true);
    FileStream writer(pipe.WriteEnd(), kWrite, true);
    for (FileStream* stream : {&reader, &writer}) {
        EXPECT_TRUE(stream->CanSeek());
        EXPECT_EQ(stream->Length(), -1);
        EXPECT_EQ(stream->Position(), -1);
        EXPECT_EQ(stream->Seek(0, IO::SeekOrigin::Begin), -1);
        EXPECT_EQ(stream->Seek(0, IO::SeekOrigin::Current), -1);
        EXPECT_EQ(stream->Seek(0, IO::SeekOrigin::End), -1);
    }
    Write(writer, "abc");
    EXPECT_NO_THROW(writer.Flush());  // there is nothing to commit
    EXPECT_THROW_FULL(writer.SetLength(0), "File write error", "", -1, -1);
    writer.Close();
    EXPECT_EQ(ReadAll(reader), "abc");
}

TEST_F(FileStreamPipeTest, AHandleOnAPipeAnswersMinusOneToo) {
    const Pipe pipe;
    FileStream reader(::fdopen(pipe.ReadEnd(), "r"), kRead, true);
    FileStream writer(::fdopen(pipe.WriteEnd(), "w"), kWrite, true);
    for (FileStream* stream : {&reader, &writer}) {
        EXPECT_EQ(stream->Length(), -1);
        EXPECT_EQ(stream->Position(), -1);
        EXPECT_EQ(stream->Seek(0, IO::SeekOrigin::End), -1);
    }
    Write(writer, "abc");
    writer.Close();
    EXPECT_EQ(ReadAll(reader), "abc");
}

TEST_F(FileStreamPipeTest, ReadGivesWhatIsThere) {
    const Pipe pipe;
    FileStream reader(pipe.ReadEnd(), kRead, true);
    FileStream writer(pipe.WriteEnd(), kWrite, true);
    Write(writer, "abc");
    unsigned char buffer[16] = {};
    EXPECT_EQ(reader.Read(buffer, 0, 16), 3);  // and does not wait for more
}

TEST_F(FileStreamPipeTest, ANamedPipeIsOpenedByName) {
    const std::string path = Path("fifo");
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    const int bothEnds = ::open(path.c_str(), O_RDWR | O_CLOEXEC);  // so that no open waits
    FileStream writer(path, IO::FileMode::Open, kWrite, support::kDenyAll);
    FileStream reader(path, IO::FileMode::Open, kRead, support::kDenyAll);
    Write(writer, "abc");
    unsigned char buffer[16] = {};
    EXPECT_EQ(reader.Read(buffer, 0, 2), 2);
    EXPECT_EQ(reader.Read(buffer, 0, 16), 1);
    ::close(bothEnds);
}

TEST_F(FileStreamPipeTest, AnInterruptedReadIsTakenUpAgain) {
    const Pipe pipe;
    FileStream reader(pipe.ReadEnd(), kRead, true);
    std::thread writer([&pipe] {
        Interrupter::BlockInThisThread();
        std::this_thread::sleep_for(kPause);
        FileStream stream(pipe.WriteEnd(), kWrite, true);
        Write(stream, "abc");
    });
    std::string all;
    {
        const Interrupter interrupter;
        all = ReadAll(reader);
    }
    writer.join();
    EXPECT_EQ(all, "abc");
    EXPECT_GT(interruptions, 0);
}

TEST_F(FileStreamPipeTest, AnInterruptedOrShortWriteIsTakenUpAgain) {
    const std::string content = Pattern(1'000'000);  // many times what a pipe holds
    const Pipe pipe;
    std::string all;
    std::thread reader([&] {
        Interrupter::BlockInThisThread();
        std::this_thread::sleep_for(kPause);
        FileStream stream(pipe.ReadEnd(), kRead, true);
        all = ReadAll(stream, 5000);
    });
    {
        const Interrupter interrupter;
        FileStream writer(pipe.WriteEnd(), kWrite, true);
        Write(writer, content);
    }
    reader.join();
    EXPECT_TRUE(all == content) << all.size();
    EXPECT_GT(interruptions, 0);
}

TEST_F(FileStreamPipeTest, AnInterruptedReadOfAHandleIsTakenUpAgain) {
    const std::string content = Pattern(300'000);
    const Pipe pipe;
    FileStream reader(::fdopen(pipe.ReadEnd(), "r"), kRead, true);
    std::thread writer([&] {
        Interrupter::BlockInThisThread();
        std::this_thread::sleep_for(kPause);
        FileStream stream(pipe.WriteEnd(), kWrite, true);
        Write(stream, content.substr(0, 1000));
        std::this_thread::sleep_for(kPause);
        Write(stream, content.substr(1000));
    });
    std::string all;
    {
        const Interrupter interrupter;
        all = ReadAll(reader, 70'000);
    }
    writer.join();
    EXPECT_TRUE(all == content) << all.size();
    EXPECT_GT(interruptions, 0);
}

TEST_F(FileStreamPipeTest, WritingToAPipeThatNobodyReadsIsAnError) {
    const auto before = std::signal(SIGPIPE, SIG_IGN);
    const Pipe pipe;
    ::close(pipe.ReadEnd());
    FileStream writer(pipe.WriteEnd(), kWrite, true);
    EXPECT_THROW_FULL(writer.WriteByte('x'), "File write error", "", -1, -1);
    std::signal(SIGPIPE, before);
}

}  // namespace
