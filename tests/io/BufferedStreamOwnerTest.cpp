// SPDX-License-Identifier: MIT
//
// Who owns the inner stream, and what happens when it fails.
#include <espalier/io/BufferedStream.h>

#include "support/ExpectThrow.h"
#include "support/FailingStream.h"
#include "support/FileTest.h"
#include "support/RecordingStream.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using Calls = std::vector<std::string>;
using IO::BufferedStream;
using IO::SeekOrigin;
using support::Pattern;
using support::ReadAll;
using support::RecordingStream;
using support::Write;

// Reads `count` bytes in one call and returns what was delivered.
std::string Read(IO::Stream& stream, int count) {
    std::string bytes(static_cast<std::size_t>(count), '\0');
    const int delivered = stream.Read(reinterpret_cast<unsigned char*>(bytes.data()), 0, count);
    bytes.resize(static_cast<std::size_t>(delivered));
    return bytes;
}

TEST(BufferedStreamOwner, OwnershipDecidesWhatHappensToTheInnerStream) {
    for (const bool owns : {true, false}) {
        SCOPED_TRACE(owns);
        bool destroyed = false;
        auto inner = std::make_unique<RecordingStream>();
        inner->destroyed = &destroyed;
        RecordingStream& recording = *inner;
        auto stream = std::make_unique<BufferedStream>(
            owns ? static_cast<IO::Stream*>(inner.release()) : &recording, owns);
        Write(*stream, "abc");
        stream->Close();
        EXPECT_EQ(recording.TakeCalls(), owns ? Calls({"Write 3", "Close"}) : Calls({"Write 3"}));
        stream.reset();
        EXPECT_EQ(destroyed, owns);
    }
}

TEST(BufferedStreamOwner, TheDestructorWritesWhatIsPending) {
    RecordingStream inner;
    { Write(*std::make_unique<BufferedStream>(&inner, false), "abc"); }
    EXPECT_EQ(inner.TakeCalls(), Calls({"Write 3"}));
    EXPECT_EQ(inner.Content(), "abc");
}

TEST(BufferedStreamOwner, ATransferMovesBufferAndInnerStream) {
    bool destroyed = false;
    auto* inner = new RecordingStream(Pattern(1000));
    inner->destroyed = &destroyed;
    {
        BufferedStream first(inner, true);
        Read(first, 10);
        BufferedStream second(first);
        EXPECT_EQ(second.Position(), 10);
        EXPECT_EQ(Read(second, 5), Pattern(15).substr(10));
        EXPECT_EQ(inner->TakeCalls(), Calls({"Read 512"}));

        // Without an inner stream nothing can be done, and nothing goes wrong.
        EXPECT_FALSE(first.CanRead());
        EXPECT_FALSE(first.CanSeek());
        EXPECT_FALSE(first.CanWrite());
        EXPECT_EQ(first.Length(), 0);
        EXPECT_EQ(first.Position(), 0);
        EXPECT_EQ(Read(first, 5), "");
        EXPECT_EQ(first.Seek(5, SeekOrigin::Begin), 0);
        EXPECT_NO_THROW(Write(first, "abc"));
        EXPECT_NO_THROW(first.Flush());
        EXPECT_NO_THROW(first.SetLength(5));
        EXPECT_NO_THROW(first.Close());

        Write(second, "!");
        BufferedStream third(std::move(second));
        EXPECT_EQ(third.Position(), 16);
        third.Flush();
        EXPECT_EQ(inner->Content()[15], '!');
        EXPECT_FALSE(destroyed);
    }
    EXPECT_TRUE(destroyed);
}

TEST(BufferedStreamOwner, AssignmentClosesAndDeletesWhatTheTargetHad) {
    bool firstDestroyed = false;
    auto* firstInner = new RecordingStream();
    firstInner->destroyed = &firstDestroyed;
    RecordingStream target;  // takes over what first had pending
    class Forward : public RecordingStream {
    public:
        explicit Forward(RecordingStream& to) : to_(to) {}
        void Write(const unsigned char* buffer, int offset, int count) override {
            to_.Write(buffer, offset, count);
        }
        void Close() override { to_.Close(); }

    private:
        RecordingStream& to_;
    };
    RecordingStream secondInner("abc");
    {
        BufferedStream first(new Forward(target), true);
        BufferedStream second(&secondInner, false);
        BufferedStream third(firstInner, true);
        Write(first, "pending");
        first = second;
        EXPECT_EQ(target.TakeCalls(), Calls({"Write 7", "Close"}));
        EXPECT_EQ(Read(first, 3), "abc");
        EXPECT_FALSE(second.CanRead());

        BufferedStream& same = third;
        third = same;
        EXPECT_FALSE(firstDestroyed);
        EXPECT_TRUE(third.CanRead());
        EXPECT_EQ(firstInner->TakeCalls(), Calls());
        third = std::move(first);
        EXPECT_TRUE(firstDestroyed);
    }
    EXPECT_EQ(secondInner.TakeCalls(), Calls({"Read 512"}));
}

TEST(BufferedStreamOwner, AssignmentOfAStreamOverTheSameInnerStreamKeepsItsOwner) {
    bool destroyed = false;
    auto* inner = new RecordingStream("abc");
    inner->destroyed = &destroyed;
    {
        BufferedStream owner(inner, true);
        BufferedStream guest(inner, false);
        owner = guest;
        EXPECT_FALSE(destroyed);
        EXPECT_TRUE(owner.CanRead());
    }
    EXPECT_TRUE(destroyed);
}

TEST(BufferedStreamOwner, WhenWritingFailsTheBytesStayPending) {
    RecordingStream inner;
    support::FailingStream failing(inner, 1, support::Failure::Throw);
    BufferedStream stream(&failing, false);
    Write(stream, "abc");
    EXPECT_THROW_FULL(stream.Flush(), support::FailingStream::kMessage, "", -1, -1);
    EXPECT_EQ(stream.Position(), 3);
    stream.Flush();
    EXPECT_EQ(inner.Content(), "abc");
}

TEST(BufferedStreamOwner, AFailingCloseClosesTheInnerStreamAllTheSame) {
    class Refusing : public RecordingStream {
    public:
        explicit Refusing(Calls& log) : log_(log) {}
        void Write(const unsigned char*, int, int) override {
            log_.push_back("Write");
            Xml::Exception::ThrowException("Refused");
        }
        void Close() override {
            log_.push_back("Close");
            Xml::Exception::ThrowException("Refused too");
        }

    private:
        Calls& log_;
    };
    Calls calls;
    {
        BufferedStream stream(new Refusing(calls), true);
        Write(stream, "abc");
        EXPECT_THROW_FULL(stream.Close(), "Refused", "", -1, -1);
        EXPECT_EQ(calls, Calls({"Write", "Close"}));
    }
    // The destructor closes once more, and keeps the error to itself.
    EXPECT_EQ(calls, Calls({"Write", "Close", "Close"}));
}

TEST(BufferedStreamOwner, WhicheverCallFailsTheStreamClosesAndDestructs) {
    for (const support::Failure failure : {support::Failure::Throw, support::Failure::EndEarly}) {
        bool hasFailed = true;
        int calls = 0;
        while (hasFailed) {
            ++calls;
            SCOPED_TRACE(calls);
            RecordingStream inner(Pattern(2000));
            support::FailingStream failing(inner, calls, failure);
            int thrown = 0;
            {
                BufferedStream stream(&failing, false);
                const auto attempt = [&](const auto& call) {
                    try {
                        call();
                    } catch (const Xml::Exception&) {
                        ++thrown;
                    }
                };
                attempt([&] { Read(stream, 10); });
                attempt([&] { Write(stream, "abc"); });
                attempt([&] { Read(stream, 300); });
                attempt([&] { stream.Seek(-5, SeekOrigin::Current); });
                attempt([&] { Write(stream, Pattern(300)); });
                attempt([&] { Write(stream, "def"); });
                attempt([&] { stream.SetLength(2500); });
                attempt([&] { stream.Flush(); });
                Write(stream, "ghi");
                attempt([&] { stream.Close(); });
            }
            hasFailed = failing.HasFailed();
            EXPECT_EQ(thrown, hasFailed && failure == support::Failure::Throw ? 1 : 0);
        }
        EXPECT_GT(calls, 10);
    }
}

TEST(BufferedStreamOwner, AFailingReadLosesNoBytes) {
    const std::string content = Pattern(2000);
    for (const int count : {200, 700}) {
        SCOPED_TRACE(count);
        RecordingStream inner(content);
        support::FailingStream failing(inner, 2, support::Failure::Throw);
        BufferedStream stream(&failing, false);
        Read(stream, 200);
        Read(stream, 200);
        EXPECT_THROW_FULL(Read(stream, count), support::FailingStream::kMessage, "", -1, -1);
        EXPECT_EQ(stream.Position(), 400);
        EXPECT_TRUE(ReadAll(stream) == content.substr(400));
    }
}

}  // namespace
