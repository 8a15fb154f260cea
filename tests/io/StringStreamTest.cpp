// SPDX-License-Identifier: MIT
#include <espalier/io/StringStream.h>

#include "support/ExpectThrow.h"
#include "support/SeekCases.h"

#include <climits>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using IO::StringStream;
using std::string_view;

const unsigned char* Bytes(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}

TEST(StringStream, BeginsEmptyAndWritable) {
    StringStream stream;
    EXPECT_EQ(stream.GetString(), "");
    EXPECT_EQ(stream.Length(), 0);
    EXPECT_EQ(stream.Position(), 0);
    EXPECT_TRUE(stream.CanRead());
    EXPECT_TRUE(stream.CanSeek());
    EXPECT_TRUE(stream.CanWrite());
    EXPECT_EQ(stream.ReadByte(), -1);
}

TEST(StringStream, HoldsACopyOfTheText) {
    astring text("a\0b", 3);
    StringStream stream(text, false);
    text = "changed";
    EXPECT_EQ(stream.GetString(), string_view("a\0b", 3));
    EXPECT_EQ(stream.Length(), 3);
    EXPECT_EQ(stream.Position(), 0);
    EXPECT_TRUE(stream.CanRead());
    EXPECT_TRUE(stream.CanSeek());
    EXPECT_FALSE(stream.CanWrite());
}

TEST(StringStream, ReadsFoldNegativeOffsets) {
    StringStream stream("abcdefghij", false);
    support::ExpectReadsFold(stream);
}

TEST(StringStream, SeeksStayWithinTheText) {
    StringStream stream("abcdefghij", false);
    support::ExpectSeeksClamp(stream);
}

TEST(StringStream, OverwritesInTheMiddleAndNeverInserts) {
    const struct {
        long position;
        int offset;
        int count;
        const char* expected;
        long after;
    } kCases[] = {
        {1, 0, 3, "aXYZef", 4},  {0, 0, 3, "XYZdef", 3},
        {4, 0, 3, "abcdXYZ", 7}, {6, 0, 3, "abcdefXYZ", 9},
        {1, 1, 2, "aYZdef", 3},  {1, -1, 3, "aXYdef", 3},  // a negative offset shortens the count
        {1, -3, 3, "abcdef", 1}, {1, INT_MIN, INT_MAX, "abcdef", 1},
        {1, 0, 0, "abcdef", 1},  {1, 0, -5, "abcdef", 1},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(testing::Message() << c.offset << ", " << c.count << " at " << c.position);
        StringStream stream("abcdef", true);
        stream.SetPosition(c.position);
        stream.Write(Bytes("XYZ"), c.offset, c.count);
        EXPECT_EQ(stream.GetString(), c.expected);
        EXPECT_EQ(stream.Position(), c.after);
    }
}

TEST(StringStream, RefusesToWriteWhenNotWritable) {
    StringStream stream("abc", false);
    for (const int count : {1, 0, -1}) {  // before it looks at the count
        EXPECT_THROW_FULL(stream.Write(Bytes("x"), 0, count),
                          "StringStream::Write: Write not supported", "", -1, -1);
    }
    EXPECT_EQ(stream.GetString(), "abc");
}

TEST(StringStream, WritingLeavesOtherCopiesOfTheTextAlone) {
    const astring text("abc");
    StringStream stream(text, true);
    const astring before = stream.GetString();
    stream.Write(Bytes("XYZ"), 0, 3);
    EXPECT_EQ(text, "abc");
    EXPECT_EQ(before, "abc");
    EXPECT_EQ(stream.GetString(), "XYZ");
}

TEST(StringStream, SetLengthCutsAndPadsWithNul) {
    StringStream stream("abcdef", true);
    stream.SetPosition(5);
    stream.SetLength(3);
    EXPECT_EQ(stream.GetString(), "abc");
    EXPECT_EQ(stream.Position(), 5);  // is not adjusted
    stream.SetLength(5);
    EXPECT_EQ(stream.GetString(), string_view("abc\0\0", 5));
    stream.SetLength(-1);
    EXPECT_EQ(stream.Length(), 5);
    stream.SetLength(LONG_MIN);
    EXPECT_EQ(stream.Length(), 5);
    stream.SetLength(0);
    EXPECT_EQ(stream.GetString(), "");
}

TEST(StringStream, SetLengthWorksOnAReadOnlyStreamToo) {
    StringStream stream("abc", false);
    stream.SetLength(2);
    EXPECT_EQ(stream.GetString(), "ab");
}

TEST(StringStream, APositionPastTheEndReadsNothingAndIsFilledWithNul) {
    StringStream stream("abcdef", true);
    stream.SetPosition(5);
    stream.SetLength(2);
    EXPECT_EQ(stream.ReadByte(), -1);
    unsigned char buffer[4] = {};
    EXPECT_EQ(stream.Read(buffer, 0, INT_MAX), 0);
    EXPECT_EQ(stream.Position(), 5);
    stream.Write(buffer, 0, 0);
    stream.Write(buffer, -1, 1);
    EXPECT_EQ(stream.GetString(), "ab");  // nothing to write, nothing to fill
    stream.WriteByte('x');
    EXPECT_EQ(stream.GetString(), string_view("ab\0\0\0x", 6));
    EXPECT_EQ(stream.Position(), 6);

    stream.SetLength(2);
    EXPECT_EQ(stream.Seek(0, IO::SeekOrigin::Current), 2);
}

TEST(StringStream, CopiesAreIndependent) {
    StringStream first("abc", true);
    first.SetPosition(1);
    StringStream second(first);
    EXPECT_EQ(second.ReadByte(), 'b');
    EXPECT_EQ(first.Position(), 1);
    first.WriteByte('X');
    EXPECT_EQ(second.GetString(), "abc");

    StringStream third("other", false);
    third = first;
    EXPECT_EQ(third.GetString(), "aXc");
    EXPECT_EQ(third.Position(), 2);
    EXPECT_TRUE(third.CanWrite());
    const StringStream& same = third;
    third = same;
    EXPECT_EQ(third.GetString(), "aXc");
    EXPECT_EQ(third.Position(), 2);
}

TEST(StringStream, CloseAndFlushDoNothing) {
    StringStream stream("abc", true);
    stream.Close();
    stream.Flush();
    EXPECT_EQ(stream.ReadByte(), 'a');
    stream.WriteByte('X');
    EXPECT_EQ(stream.GetString(), "aXc");
}

// What a derived class says of the stream holds for the operations of the base, too.
TEST(StringStream, SeekAsksTheLengthOfADerivedClass) {
    class Longer : public StringStream {
    public:
        using StringStream::StringStream;
        long Length() const override { return 100; }
    };
    Longer stream("abc", true);
    EXPECT_EQ(stream.Seek(0, IO::SeekOrigin::End), 100);
    EXPECT_EQ(stream.Seek(50, IO::SeekOrigin::Begin), 50);
    EXPECT_EQ(stream.ReadByte(), -1);
}

TEST(StringStream, WriteAsksADerivedClassWhetherItMay) {
    class Sealed : public StringStream {
    public:
        using StringStream::StringStream;
        bool CanWrite() const override { return false; }
    };
    Sealed stream("abc", true);
    EXPECT_THROW_FULL(stream.Write(Bytes("x"), 0, 1), "StringStream::Write: Write not supported",
                      "", -1, -1);
    EXPECT_EQ(stream.Position(), 0);
}

}  // namespace
