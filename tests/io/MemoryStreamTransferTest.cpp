// SPDX-License-Identifier: MIT
//
// Ownership of the buffer travels with construction and assignment.
#include <espalier/io/MemoryStream.h>

#include "support/ExpectThrow.h"
#include "support/FileTest.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

namespace {

using IO::MemoryStream;
using std::string;
using support::Write;

string Content(const MemoryStream& stream) {
    return {reinterpret_cast<const char*>(stream.GetBuffer()),
            static_cast<std::size_t>(stream.Length())};
}

TEST(MemoryStreamTransfer, TheNewStreamGrowsAndTheOldOneIsFixed) {
    MemoryStream first;
    Write(first, "abcdef");
    first.SetPosition(2);
    MemoryStream second(first);
    for (MemoryStream* stream : {&first, &second}) {
        EXPECT_EQ(stream->Length(), 6);
        EXPECT_EQ(stream->Position(), 2);
        EXPECT_EQ(stream->Capacity(), 1024);
        EXPECT_EQ(Content(*stream), "abcdef");
        EXPECT_TRUE(stream->CanWrite());
    }
    EXPECT_EQ(first.GetBuffer(), second.GetBuffer());
    EXPECT_THROW_FULL(first.SetCapacity(2000),
                      "MemoryStream::SetCapacity: Stream has fixed capacity", "", -1, -1);
    EXPECT_THROW_FULL(Write(first, string(1023, 'x')), "MemoryStream::Write: Buffer full", "", -1,
                      -1);
    EXPECT_THROW_FULL(first.SetLength(1025),
                      "MemoryStream::SetLength: Length greater than maximum capaciy", "", -1, -1);
    second.SetCapacity(2000);
    EXPECT_EQ(second.Capacity(), 2000);
}

TEST(MemoryStreamTransfer, TheOldStreamSurvivesWhateverTheNewOneDoes) {
    for (const int what : {0, 1, 2, 3}) {
        SCOPED_TRACE(what);
        MemoryStream first;
        Write(first, "abc");
        auto second = std::make_unique<MemoryStream>(first);
        switch (what) {
        case 0: Write(*second, string(100'000, 'x')); break;
        case 1: second->SetCapacity(3); break;
        case 2: second->SetLength(1'000'000); break;
        default: second.reset();
        }
        EXPECT_EQ(Content(first), "abc");
        first.SetPosition(1);
        EXPECT_EQ(first.ReadByte(), 'b');
        Write(first, string(1000, 'y'));
        EXPECT_EQ(first.Length(), 1002);
    }
}

TEST(MemoryStreamTransfer, TheNewStreamSurvivesTheOldOne) {
    auto first = std::make_unique<MemoryStream>();
    Write(*first, "abc");
    MemoryStream second(*first);
    first.reset();
    Write(second, string(100'000, 'x'));
    EXPECT_EQ(Content(second).substr(0, 4), "abcx");
}

TEST(MemoryStreamTransfer, AStreamWithoutABufferIsTransferredToo) {
    MemoryStream first;
    MemoryStream second(first);
    EXPECT_EQ(second.GetBuffer(), nullptr);
    Write(second, "abc");
    EXPECT_EQ(Content(second), "abc");
    EXPECT_EQ(first.Length(), 0);
    EXPECT_THROW_FULL(Write(first, "x"), "MemoryStream::Write: Buffer full", "", -1, -1);
    first.SetLength(5);
    EXPECT_EQ(first.Length(), 0);
}

TEST(MemoryStreamTransfer, ACallersBytesArePassedOn) {
    const unsigned char constant[] = "abc";
    MemoryStream readOnly(constant, 3);
    MemoryStream second(readOnly);
    EXPECT_EQ(second.GetBuffer(), constant);
    EXPECT_FALSE(second.CanWrite());
    EXPECT_EQ(readOnly.ReadByte(), 'a');

    unsigned char buffer[] = "abc";
    MemoryStream fixed(buffer, 3);
    second = fixed;
    EXPECT_TRUE(second.CanWrite());
    second.WriteByte('X');
    EXPECT_EQ(fixed.ReadByte(), 'X');
}

TEST(MemoryStreamTransfer, AClosedStreamStaysClosed) {
    MemoryStream first;
    Write(first, "abc");
    first.Close();
    MemoryStream second(first);
    EXPECT_THROW_FULL(second.ReadByte(), "MemoryStream::Read: Stream is closed", "", -1, -1);
    MemoryStream third;
    third.Close();
    MemoryStream open;
    Write(open, "abc");
    third = open;
    EXPECT_NO_THROW(third.SetPosition(0));
    EXPECT_EQ(third.ReadByte(), 'a');  // what counts is the state that was taken over
}

class ClosingNoted : public MemoryStream {
public:
    using MemoryStream::MemoryStream;
    using MemoryStream::operator=;
    void Close() override {
        ++closed;
        MemoryStream::Close();
    }
    int closed = 0;
};

TEST(MemoryStreamTransfer, AssignmentClosesATargetThatOwnsABuffer) {
    MemoryStream source;
    Write(source, "new");
    ClosingNoted owner;
    Write(owner, "old");
    owner = source;
    EXPECT_EQ(owner.closed, 1);
    EXPECT_EQ(Content(owner), "new");
    Write(owner, "er");
    EXPECT_EQ(Content(owner), "newer");

    ClosingNoted without;  // a growable stream that has no buffer yet
    MemoryStream another;
    Write(another, "new");
    without = another;
    EXPECT_EQ(without.closed, 0);

    unsigned char buffer[] = "abc";
    ClosingNoted fixed(buffer, 3);
    MemoryStream third;
    fixed = third;
    EXPECT_EQ(fixed.closed, 0);
}

TEST(MemoryStreamTransfer, AssignmentToItselfDoesNothing) {
    ClosingNoted stream;
    Write(stream, "abc");
    MemoryStream& same = stream;
    stream = same;
    EXPECT_EQ(stream.closed, 0);
    EXPECT_EQ(Content(stream), "abc");
    Write(stream, string(2000, 'x'));
    EXPECT_EQ(stream.Length(), 2003);
}

MemoryStream Make() {
    MemoryStream stream;
    Write(stream, "abc");
    return stream;
}

TEST(MemoryStreamTransfer, StreamsAreReturnedAndMoved) {
    MemoryStream stream = Make();
    EXPECT_EQ(Content(stream), "abc");
    stream = Make();
    MemoryStream moved(std::move(stream));
    Write(moved, string(2000, 'x'));
    EXPECT_EQ(moved.Length(), 2003);
}

TEST(MemoryStreamTransfer, ChainsOfTransfersFreeTheBlockOnce) {
    MemoryStream first;
    Write(first, "abc");
    MemoryStream second(first);
    MemoryStream third(second);
    MemoryStream fourth;
    fourth = third;
    Write(fourth, string(5000, 'x'));
    for (const MemoryStream* stream : {&first, &second, &third})
        EXPECT_EQ(Content(*stream), "abc");
    first = second;  // both are views of the same block
    EXPECT_EQ(Content(first), "abc");
}

}  // namespace
