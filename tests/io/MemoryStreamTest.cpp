// SPDX-License-Identifier: MIT
#include <espalier/io/MemoryStream.h>

#include "support/ExpectThrow.h"
#include "support/FileTest.h"
#include "support/SeekCases.h"

#include <climits>
#include <gtest/gtest.h>

#include <cstdint>
#include <malloc.h>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

using IO::MemoryStream;
using std::string;
using std::string_view;
using support::Pattern;
using support::Write;

const unsigned char* Bytes(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}

string Content(const MemoryStream& stream) {
    string content(static_cast<std::size_t>(stream.Length()), '\0');
    const long copied =
        stream.ToArray(reinterpret_cast<unsigned char*>(content.data()), stream.Length());
    EXPECT_EQ(copied, stream.Length());
    return content;
}

TEST(MemoryStream, BeginsEmptyAndWithoutABuffer) {
    const MemoryStream stream;
    EXPECT_EQ(stream.Length(), 0);
    EXPECT_EQ(stream.Position(), 0);
    EXPECT_EQ(stream.Capacity(), 0);
    EXPECT_EQ(stream.GetBuffer(), nullptr);
    EXPECT_EQ(stream.ToArray(nullptr, 10), 0);
    EXPECT_TRUE(stream.CanRead());
    EXPECT_TRUE(stream.CanSeek());
    EXPECT_TRUE(stream.CanWrite());
}

TEST(MemoryStream, GrowsByTheLargerOfTheWriteAnd1024) {
    const struct {
        std::vector<int> writes;
        int capacity;
    } kCases[] = {
        {{10}, 1024},
        {{10, 3000}, 1024 + 3000},
        {{1024}, 1024},
        {{1025}, 1025},
        {{1024, 1}, 2048},
        {{1000, 25}, 2048},
        {{3000, 1}, 4024},
        {{3000, 1, 1023}, 4024},
        {{3000, 1, 1023, 1}, 5048},
        {{1, 2000, 2000}, 1024 + 2000 + 2000},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(testing::PrintToString(c.writes));
        MemoryStream stream;
        string expected;
        for (const int count : c.writes) {
            const string bytes = Pattern(static_cast<std::size_t>(count));
            Write(stream, bytes);
            expected += bytes;
        }
        EXPECT_EQ(stream.Capacity(), c.capacity);
        EXPECT_TRUE(Content(stream) == expected);
        EXPECT_EQ(stream.Position(), stream.Length());
    }
}

// Has new memory hold other bytes than zero from now on, or not, where the system can do so.
void FillNewMemory([[maybe_unused]] int byte) {
#ifdef M_PERTURB
    ::mallopt(M_PERTURB, byte);
#endif
}

// How large the allocation behind the stream is in truth.
std::size_t BlockSize(const MemoryStream& stream) {
    auto* const buffer = const_cast<unsigned char*>(stream.GetBuffer());
#ifdef _WIN32
    return ::_msize(buffer);
#else
    return ::malloc_usable_size(buffer);
#endif
}

TEST(MemoryStream, TheBlockBehindTheCapacityDoubles) {
    MemoryStream stream;
    const string bytes = Pattern(1024);
    std::set<std::size_t> blockSizes;
    for (int i = 1; i <= 16 * 1024; ++i) {
        Write(stream, bytes);
        ASSERT_EQ(stream.Capacity(), i * 1024);
        blockSizes.insert(BlockSize(stream));
    }
    // 1 KiB, 2 KiB, ..., 16 MiB: the copying is linear in what was written.
    EXPECT_LE(blockSizes.size(), 15u);
    EXPECT_EQ(stream.Length(), 16 * 1024 * 1024);
    stream.SetPosition(0);
    stream.SetLength(10);
    stream.SetCapacity(20);
    EXPECT_LE(BlockSize(stream), 4096u);  // a page, where large blocks are mapped
    EXPECT_EQ(Content(stream), bytes.substr(0, 10));
}

TEST(MemoryStream, ReadsFoldNegativeOffsets) {
    MemoryStream growable;
    Write(growable, "abcdefghij");
    support::ExpectReadsFold(growable);
    MemoryStream readOnly(Bytes("abcdefghij"), 10);
    support::ExpectReadsFold(readOnly);
    unsigned char buffer[] = "abcdefghij";
    MemoryStream fixed(buffer, 10);
    support::ExpectReadsFold(fixed);
}

TEST(MemoryStream, SeeksStayWithinTheBytes) {
    MemoryStream growable;
    Write(growable, "abcdefghij");
    support::ExpectSeeksClamp(growable);
    growable.Close();  // seeking works on
    support::ExpectSeeksClamp(growable);
}

TEST(MemoryStream, WritesOverwriteAndExtend) {
    const struct {
        long position;
        int offset;
        int count;
        const char* expected;
        long after;
    } kCases[] = {
        {1, 0, 3, "aXYZef", 4},  {4, 0, 3, "abcdXYZ", 7}, {6, 1, 2, "abcdefYZ", 8},
        {1, -1, 3, "aXYdef", 3}, {1, -3, 3, "abcdef", 1}, {1, INT_MIN, INT_MAX, "abcdef", 1},
        {1, 0, 0, "abcdef", 1},  {1, 0, -5, "abcdef", 1},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(testing::Message() << c.offset << ", " << c.count << " at " << c.position);
        MemoryStream stream;
        Write(stream, "abcdef");
        stream.SetPosition(c.position);
        stream.Write(Bytes("XYZ"), c.offset, c.count);
        EXPECT_EQ(Content(stream), c.expected);
        EXPECT_EQ(stream.Position(), c.after);
    }
}

TEST(MemoryStream, AStreamMayBeWrittenItsOwnBytes) {
    MemoryStream stream;
    string expected = Pattern(1000);
    Write(stream, expected);
    for (int i = 0; i < 5; ++i) {
        stream.Write(stream.GetBuffer(), 0, static_cast<int>(stream.Length()));
        expected += expected;
    }
    EXPECT_TRUE(Content(stream) == expected);
    stream.SetPosition(1);
    stream.Write(stream.GetBuffer(), 0, 10);  // they overlap
    EXPECT_TRUE(Content(stream) ==
                expected.substr(0, 1) + expected.substr(0, 10) + expected.substr(11));
}

TEST(MemoryStream, AReadOnlyStreamRefusesToWrite) {
    MemoryStream stream(Bytes("abc"), 3);
    EXPECT_TRUE(stream.CanRead());
    EXPECT_FALSE(stream.CanWrite());
    EXPECT_EQ(stream.Length(), 3);
    EXPECT_EQ(stream.Capacity(), 3);
    EXPECT_EQ(Content(stream), "abc");
    EXPECT_THROW_FULL(stream.SetLength(2), "MemoryStream::SetLength: Stream not open for writing",
                      "", -1, -1);
    EXPECT_THROW_FULL(stream.SetCapacity(5), "MemoryStream::SetCapacity: Stream is read-only", "",
                      -1, -1);
    EXPECT_NO_THROW(stream.Write(Bytes("x"), 0, 0));  // nothing to write, nothing to refuse
    EXPECT_EQ(stream.ReadByte(), 'a');
}

TEST(MemoryStream, DeliberateWriteNotSupportedStandsWithoutAPrefix) {
    MemoryStream stream(Bytes("abc"), 3);
    EXPECT_THROW_FULL(stream.Write(Bytes("x"), 0, 1), "Write not supported", "", -1, -1);
}

TEST(MemoryStream, ACallersBufferIsFixed) {
    unsigned char buffer[9] = "abcdefgh";
    {
        MemoryStream stream(buffer, 8);
        EXPECT_TRUE(stream.CanWrite());
        EXPECT_EQ(stream.Length(), 8);
        EXPECT_EQ(stream.Capacity(), 8);
        EXPECT_EQ(stream.Position(), 0);
        EXPECT_EQ(stream.GetBuffer(), buffer);
        stream.Write(Bytes("XY"), 0, 2);
        stream.SetPosition(7);
        EXPECT_THROW_FULL(stream.Write(Bytes("12"), 0, 2), "MemoryStream::Write: Buffer full", "",
                          -1, -1);
        EXPECT_EQ(stream.Position(), 7);
        EXPECT_EQ(Content(stream), "XYcdefgh");
        stream.WriteByte('!');
        EXPECT_THROW_FULL(stream.WriteByte('?'), "MemoryStream::Write: Buffer full", "", -1, -1);
        EXPECT_THROW_FULL(stream.SetCapacity(9),
                          "MemoryStream::SetCapacity: Stream has fixed capacity", "", -1, -1);
        stream.SetPosition(0);
        stream.SetLength(3);
        EXPECT_EQ(Content(stream), "XYc");
        stream.SetLength(8);  // what the buffer holds comes back
        EXPECT_EQ(Content(stream), "XYcdefg!");
    }
    EXPECT_EQ(string_view(reinterpret_cast<char*>(buffer)), "XYcdefg!");
}

TEST(MemoryStream, DeliberateMaximumCapacityIsMisspelt) {
    unsigned char buffer[8] = {};
    MemoryStream stream(buffer, 8);
    EXPECT_THROW_FULL(stream.SetLength(9),
                      "MemoryStream::SetLength: Length greater than maximum capaciy", "", -1, -1);
}

TEST(MemoryStream, AWriteBehindTheLargestPositionDoesNotFit) {
    unsigned char buffer[1] = {'a'};
    MemoryStream stream(buffer, LONG_MAX);  // says more than there is, which nothing touches
    EXPECT_EQ(stream.Seek(-1, IO::SeekOrigin::End), LONG_MAX - 1);
    EXPECT_THROW_FULL(stream.Write(Bytes("xy"), 0, 2), "MemoryStream::Write: Buffer full", "", -1,
                      -1);
    EXPECT_EQ(stream.Position(), LONG_MAX - 1);
    EXPECT_EQ(buffer[0], 'a');
}

TEST(MemoryStream, NullPointersAndNegativeSizesAreEmpty) {
    const unsigned char* const noConstant = nullptr;
    MemoryStream readOnly(noConstant, 5);
    EXPECT_EQ(readOnly.Length(), 0);
    EXPECT_FALSE(readOnly.CanWrite());
    EXPECT_EQ(readOnly.ReadByte(), -1);
    EXPECT_EQ(MemoryStream(Bytes("abc"), -1).Length(), 0);
    unsigned char* const noBytes = nullptr;
    MemoryStream fixed(noBytes, 5);
    EXPECT_EQ(fixed.Length(), 0);
    EXPECT_THROW_FULL(fixed.WriteByte('x'), "MemoryStream::Write: Buffer full", "", -1, -1);
}

TEST(MemoryStream, SetCapacityMakesTheBufferExactlyThatLarge) {
    MemoryStream stream(100);
    EXPECT_EQ(stream.Capacity(), 100);
    EXPECT_EQ(stream.Length(), 0);
    EXPECT_NE(stream.GetBuffer(), nullptr);
    Write(stream, "abc");
    EXPECT_EQ(stream.Capacity(), 100);
    stream.SetCapacity(3);
    EXPECT_EQ(stream.Capacity(), 3);
    EXPECT_THROW_FULL(stream.SetCapacity(2),
                      "MemoryStream::SetCapacity: Specified capacity smaller than length", "", -1,
                      -1);
    EXPECT_THROW_FULL(stream.SetCapacity(-1),
                      "MemoryStream::SetCapacity: Specified capacity smaller than length", "", -1,
                      -1);
    stream.SetCapacity(5000);
    EXPECT_EQ(stream.Capacity(), 5000);
    EXPECT_EQ(Content(stream), "abc");
}

TEST(MemoryStream, ACapacityOfZeroFreesTheBuffer) {
    MemoryStream stream(0);
    EXPECT_EQ(stream.Capacity(), 0);
    EXPECT_EQ(stream.GetBuffer(), nullptr);
    stream.SetCapacity(10);
    stream.SetCapacity(0);
    EXPECT_EQ(stream.Capacity(), 0);
    EXPECT_EQ(stream.GetBuffer(), nullptr);
    Write(stream, "abc");
    EXPECT_EQ(Content(stream), "abc");
}

TEST(MemoryStream, ANegativeCapacityIsRefused) {
    EXPECT_THROW_FULL(MemoryStream(-1L),
                      "MemoryStream::SetCapacity: Specified capacity smaller than length", "", -1,
                      -1);
}

TEST(MemoryStream, SetLengthCutsAndExtends) {
    MemoryStream stream;
    Write(stream, "abcdef");
    EXPECT_THROW_FULL(stream.SetLength(-1), "MemoryStream::SetLength: Bad argument", "", -1, -1);
    EXPECT_THROW_FULL(stream.SetLength(5),
                      "MemoryStream::SetLength: New length smaller than current position", "", -1,
                      -1);
    stream.SetPosition(2);
    stream.SetLength(3);
    EXPECT_EQ(Content(stream), "abc");
    EXPECT_EQ(stream.Position(), 2);
    EXPECT_EQ(stream.Capacity(), 1024);
    stream.SetLength(1024);
    EXPECT_EQ(stream.Capacity(), 1024);
    // Bytes that were there before come back, and all others are zero.
    EXPECT_TRUE(Content(stream) == "abcdef" + string(1018, '\0'));
    stream.SetLength(5000);
    EXPECT_EQ(stream.Capacity(), 5000);
    EXPECT_TRUE(Content(stream) == "abcdef" + string(4994, '\0'));
}

TEST(MemoryStream, DeliberateSetLengthWithoutABufferDoesNothing) {
    MemoryStream stream;
    stream.SetLength(5);
    EXPECT_EQ(stream.Length(), 0);
    EXPECT_THROW_FULL(stream.SetLength(-1), "MemoryStream::SetLength: Bad argument", "", -1, -1);
    stream.WriteByte('x');
    stream.SetLength(5);
    EXPECT_EQ(stream.Length(), 5);
    EXPECT_EQ(Content(stream), string_view("x\0\0\0\0", 5));
}

TEST(MemoryStream, NewMemoryIsZero) {
    FillNewMemory(0x55);
    MemoryStream stream;
    const string bytes(5000, 'x');
    for (const int count : {10, 3000, 1, 5000}) {
        stream.Write(Bytes(bytes.data()), 0, count);
        const unsigned char* buffer = stream.GetBuffer();
        for (long i = stream.Length(); i < stream.Capacity(); ++i)
            ASSERT_EQ(buffer[i], 0) << i;
    }
    stream.SetCapacity(stream.Capacity() + 10'000);
    for (long i = stream.Length(); i < stream.Capacity(); ++i) {
        ASSERT_EQ(stream.GetBuffer()[i], 0) << i;
    }
    MemoryStream reserved(3000);
    for (long i = 0; i < 3000; ++i)
        ASSERT_EQ(reserved.GetBuffer()[i], 0) << i;
    FillNewMemory(0);
}

TEST(MemoryStream, ToArrayCopiesFromTheStart) {
    MemoryStream stream;
    Write(stream, "abcdef");
    unsigned char buffer[8] = {};
    EXPECT_EQ(stream.ToArray(buffer, 3), 3);
    EXPECT_EQ(string_view(reinterpret_cast<char*>(buffer)), "abc");
    EXPECT_EQ(stream.ToArray(buffer, 8), 6);
    EXPECT_EQ(string_view(reinterpret_cast<char*>(buffer)), "abcdef");
    EXPECT_EQ(stream.ToArray(buffer, 0), 0);
    EXPECT_EQ(stream.ToArray(buffer, -1), 0);
}

TEST(MemoryStream, RefusesWorkAfterCloseAndKeepsItsBytes) {
    MemoryStream stream;
    Write(stream, "abc");
    stream.Close();
    unsigned char buffer[4] = {};
    for (const int count : {1, 0, -1}) {  // before it looks at the count
        EXPECT_THROW_FULL(stream.Read(buffer, 0, count), "MemoryStream::Read: Stream is closed", "",
                          -1, -1);
        EXPECT_THROW_FULL(stream.Write(buffer, 0, count), "MemoryStream::Write: Stream is closed",
                          "", -1, -1);
    }
    EXPECT_THROW_FULL(stream.SetCapacity(-1), "MemoryStream::SetCapacity: Stream is closed", "", -1,
                      -1);
    EXPECT_NO_THROW(stream.Flush());
    EXPECT_EQ(Content(stream), "abc");
    EXPECT_EQ(stream.GetBuffer()[0], 'a');
    EXPECT_EQ(stream.Seek(0, IO::SeekOrigin::Begin), 0);
    stream.SetLength(2);
    EXPECT_EQ(Content(stream), "ab");
    stream.SetLength(1024);
    EXPECT_EQ(stream.Length(), 1024);
    // Beyond the capacity the length is SetCapacity()'s matter.
    EXPECT_THROW_FULL(stream.SetLength(1025), "MemoryStream::SetCapacity: Stream is closed", "", -1,
                      -1);
    EXPECT_EQ(stream.Length(), 1024);
}

TEST(MemoryStream, AClosedReadOnlyStreamIsClosedFirst) {
    MemoryStream stream(Bytes("abc"), 3);
    stream.Close();
    EXPECT_THROW_FULL(stream.Write(Bytes("x"), 0, 1), "MemoryStream::Write: Stream is closed", "",
                      -1, -1);
    EXPECT_THROW_FULL(stream.SetCapacity(5), "MemoryStream::SetCapacity: Stream is closed", "", -1,
                      -1);
    EXPECT_THROW_FULL(stream.SetLength(0), "MemoryStream::SetLength: Stream not open for writing",
                      "", -1, -1);
}

TEST(MemoryStream, WithoutMemorySetCapacityChangesNothing) {
    if (LONG_MAX == INT_MAX) GTEST_SKIP() << "there is as much memory";
    MemoryStream stream;
    Write(stream, "abc");
    EXPECT_THROW_FULL(stream.SetCapacity(LONG_MAX), "MemoryStream::SetCapacity: Out of memory", "",
                      -1, -1);
    EXPECT_THROW_FULL(stream.SetLength(LONG_MAX), "MemoryStream::SetCapacity: Out of memory", "",
                      -1, -1);
    EXPECT_EQ(stream.Capacity(), 1024);
    EXPECT_EQ(Content(stream), "abc");
    MemoryStream empty;
    EXPECT_THROW_FULL(empty.SetCapacity(LONG_MAX), "MemoryStream::SetCapacity: Out of memory", "",
                      -1, -1);
    EXPECT_THROW_FULL(MemoryStream(LONG_MAX), "MemoryStream::SetCapacity: Out of memory", "", -1,
                      -1);
    EXPECT_EQ(empty.Capacity(), 0);
}

TEST(MemoryStream, TheFirstOfSeveralMistakesCounts) {
    MemoryStream readOnly(Bytes("abc"), 3);
    readOnly.SetPosition(2);
    EXPECT_THROW_FULL(readOnly.SetLength(-1), "MemoryStream::SetLength: Bad argument", "", -1, -1);
    EXPECT_THROW_FULL(readOnly.SetLength(1),
                      "MemoryStream::SetLength: New length smaller than current position", "", -1,
                      -1);
    EXPECT_THROW_FULL(readOnly.SetLength(9), "MemoryStream::SetLength: Stream not open for writing",
                      "", -1, -1);
    EXPECT_THROW_FULL(readOnly.SetCapacity(-1), "MemoryStream::SetCapacity: Stream is read-only",
                      "", -1, -1);
    unsigned char buffer[4] = {};
    MemoryStream fixed(buffer, 4);
    EXPECT_THROW_FULL(fixed.SetCapacity(-1), "MemoryStream::SetCapacity: Stream has fixed capacity",
                      "", -1, -1);
}

TEST(MemoryStream, WriteAsksADerivedClassWhetherItMay) {
    class Sealed : public MemoryStream {
    public:
        using MemoryStream::MemoryStream;
        bool CanWrite() const override { return false; }
    };
    Sealed stream;
    EXPECT_THROW_FULL(stream.Write(Bytes("x"), 0, 1), "Write not supported", "", -1, -1);
    EXPECT_EQ(stream.Position(), 0);
}

}  // namespace
