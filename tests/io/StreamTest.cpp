// SPDX-License-Identifier: MIT
#include <espalier/io.h>

#include "support/VirtualSlot.h"

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>

namespace {

// As little as a stream can be: everything but Close() has a default.
class Least : public IO::Stream {
public:
    void Close() override {}
};

static_assert(std::is_abstract_v<IO::Stream>);
static_assert(std::has_virtual_destructor_v<IO::Stream>);

TEST(Stream, TheBaseSupportsNothing) {
    Least stream;
    unsigned char buffer[2] = {1, 2};
    EXPECT_FALSE(stream.CanRead());
    EXPECT_FALSE(stream.CanSeek());
    EXPECT_FALSE(stream.CanWrite());
    EXPECT_EQ(stream.Length(), 0);
    EXPECT_EQ(stream.Position(), 0);
    EXPECT_EQ(stream.Read(buffer, 0, 2), 0);
    EXPECT_EQ(buffer[0], 1);
    EXPECT_EQ(stream.Seek(5, IO::SeekOrigin::Begin), 0);
    EXPECT_EQ(stream.ReadByte(), -1);
    EXPECT_NO_THROW(stream.SetLength(5));
    EXPECT_NO_THROW(stream.Write(buffer, 0, 2));
    EXPECT_NO_THROW(stream.WriteByte('x'));
    EXPECT_NO_THROW(stream.Flush());
    EXPECT_NO_THROW(stream.SetPosition(3));
    EXPECT_EQ(stream.Length(), 0);
}

TEST(Stream, AssignmentOfTheBaseDoesNothing) {
    IO::StringStream first("first", true);
    IO::StringStream second("second", true);
    IO::Stream& base = first;
    EXPECT_EQ(&(base = second), &base);
    EXPECT_EQ(first.GetString(), "first");
}

TEST(Stream, TheOneByteCallsGoThroughReadWriteAndSeek) {
    class Counting : public Least {
    public:
        int Read(unsigned char* buffer, int offset, int count) override {
            EXPECT_EQ(offset, 0);
            EXPECT_EQ(count, 1);
            *buffer = 0xFE;
            return result;
        }
        void Write(const unsigned char* buffer, int offset, int count) override {
            EXPECT_EQ(offset, 0);
            EXPECT_EQ(count, 1);
            written = *buffer;
        }
        long Seek(long offset, IO::SeekOrigin origin) override {
            EXPECT_TRUE(origin == IO::SeekOrigin::Begin);
            return sought = offset;
        }
        int result = 1;
        int written = -1;
        long sought = -1;
    };
    Counting stream;
    EXPECT_EQ(stream.ReadByte(), 0xFE);
    for (const int other : {0, -1, 2}) {  // anything but 1 is no byte
        stream.result = other;
        EXPECT_EQ(stream.ReadByte(), -1);
    }
    stream.WriteByte(0xFF);
    EXPECT_EQ(stream.written, 0xFF);
    constexpr long kFar = std::numeric_limits<long>::max() / 3;
    stream.SetPosition(kFar);
    EXPECT_EQ(stream.sought, kFar);
}

TEST(Stream, NullIsOneSharedStreamThatIsAlwaysAtItsEnd) {
    IO::Stream* stream = IO::Stream::Null();
    EXPECT_EQ(stream, IO::Stream::Null());
    EXPECT_TRUE(stream->CanRead());
    EXPECT_FALSE(stream->CanSeek());
    EXPECT_TRUE(stream->CanWrite());
    unsigned char buffer[2] = {1, 2};
    for (int round = 0; round < 2; ++round) {  // Close() changes nothing
        stream->Write(buffer, 0, 2);
        stream->WriteByte('x');
        stream->SetLength(10);
        stream->Flush();
        EXPECT_EQ(stream->Seek(1, IO::SeekOrigin::End), 0);
        EXPECT_EQ(stream->Read(buffer, 0, 2), 0);
        EXPECT_EQ(stream->ReadByte(), -1);
        EXPECT_EQ(stream->Length(), 0);
        EXPECT_EQ(stream->Position(), 0);
        stream->Close();
    }
}

TEST(Stream, TheVirtualFunctionsHaveTheirPlaces) {
    if (!support::kKnowsVirtualSlots) GTEST_SKIP() << "another ABI";
    using IO::MemoryStream;
    using IO::Stream;
    using support::VirtualSlot;
    // 0 and 1 are the destructor.
    EXPECT_EQ(VirtualSlot(&Stream::CanRead), 2);
    EXPECT_EQ(VirtualSlot(&Stream::CanSeek), 3);
    EXPECT_EQ(VirtualSlot(&Stream::CanWrite), 4);
    EXPECT_EQ(VirtualSlot(&Stream::Length), 5);
    EXPECT_EQ(VirtualSlot(&Stream::Position), 6);
    EXPECT_EQ(VirtualSlot(&Stream::Close), 7);
    EXPECT_EQ(VirtualSlot(&Stream::Flush), 8);
    EXPECT_EQ(VirtualSlot(&Stream::Read), 9);
    EXPECT_EQ(VirtualSlot(&Stream::Seek), 10);
    EXPECT_EQ(VirtualSlot(&Stream::SetLength), 11);
    EXPECT_EQ(VirtualSlot(&Stream::Write), 12);
    EXPECT_EQ(VirtualSlot(&MemoryStream::Capacity), 13);
    EXPECT_EQ(VirtualSlot(&MemoryStream::SetCapacity), 14);
    EXPECT_EQ(VirtualSlot(&MemoryStream::GetBuffer), 15);
    EXPECT_EQ(VirtualSlot(&MemoryStream::ToArray), 16);
}

}  // namespace
