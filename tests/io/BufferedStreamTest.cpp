// SPDX-License-Identifier: MIT
#include <espalier/io/BufferedStream.h>

#include "support/ExpectThrow.h"
#include "support/FileTest.h"
#include "support/RecordingStream.h"
#include "support/TrickleStream.h"

#include <climits>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
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

TEST(BufferedStream, ReadsAhead512Bytes) {
    const std::string content = Pattern(2000);
    RecordingStream inner(content);
    BufferedStream stream(&inner, false);
    EXPECT_EQ(Read(stream, 10), content.substr(0, 10));
    EXPECT_EQ(inner.TakeCalls(), Calls({"Read 512"}));
    EXPECT_EQ(stream.Position(), 10);
    EXPECT_EQ(inner.Position(), 512);
    EXPECT_EQ(Read(stream, 10), content.substr(10, 10));
    EXPECT_EQ(stream.ReadByte(), static_cast<unsigned char>(content[20]));
    EXPECT_EQ(inner.TakeCalls(), Calls());
    EXPECT_EQ(stream.Position(), 21);
}

// What a single read asks of the inner stream after `before` bytes were read through the buffer.
TEST(BufferedStream, ReadsOfMoreThan256BytesGoPastTheBuffer) {
    const std::string content = Pattern(2000);
    const struct {
        int before;
        int count;
        Calls calls;
        long innerPosition;
    } kCases[] = {
        {0, 256, {"Read 512"}, 512},
        {0, 257, {"Read 257"}, 257},
        {10, 256, {}, 512},
        {10, 257, {}, 512},          // all of it lies in the read-ahead
        {10, 502, {}, 512},          // exactly the rest of it
        {10, 503, {"Read 1"}, 513},  // the whole count decides, not what is left to read
        {10, 700, {"Read 198"}, 710},
        {256, 256, {}, 512},
        {400, 200, {"Read 512"}, 1024},
        {400, 257, {"Read 145"}, 657},
        {512, 100, {"Read 512"}, 1024},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(testing::Message() << c.before << " then " << c.count);
        RecordingStream inner(content);
        BufferedStream stream(&inner, false);
        for (int i = 0; i < c.before; ++i)
            stream.ReadByte();
        inner.TakeCalls();
        EXPECT_TRUE(Read(stream, c.count) == content.substr(static_cast<std::size_t>(c.before),
                                                            static_cast<std::size_t>(c.count)));
        EXPECT_EQ(inner.TakeCalls(), c.calls);
        EXPECT_EQ(inner.Position(), c.innerPosition);
        EXPECT_EQ(stream.Position(), c.before + c.count);
        // Nothing was lost on the way.
        EXPECT_TRUE(ReadAll(stream) ==
                    content.substr(static_cast<std::size_t>(c.before + c.count)));
    }
}

TEST(BufferedStream, AReadAtTheEndGivesWhatThereIs) {
    RecordingStream inner("abc");
    BufferedStream stream(&inner, false);
    EXPECT_EQ(Read(stream, 10), "abc");
    EXPECT_EQ(Read(stream, 10), "");
    EXPECT_EQ(stream.ReadByte(), -1);
    EXPECT_EQ(Read(stream, 300), "");
    EXPECT_EQ(stream.Position(), 3);
}

TEST(BufferedStream, ANegativeOffsetIsFoldedIntoTheCount) {
    RecordingStream inner("abcdef");
    BufferedStream stream(&inner, false);
    unsigned char buffer[8] = {};
    EXPECT_EQ(stream.Read(buffer, -2, 5), 3);
    EXPECT_EQ(std::string_view(reinterpret_cast<char*>(buffer), 4), std::string_view("abc\0", 4));
    EXPECT_EQ(stream.Read(buffer, -5, 5), 0);
    EXPECT_EQ(stream.Read(buffer, INT_MIN, INT_MAX), 0);
    EXPECT_EQ(stream.Read(buffer, 0, 0), 0);
    EXPECT_EQ(stream.Read(buffer, 0, -1), 0);
    EXPECT_EQ(stream.Read(buffer, 4, 2), 2);
    EXPECT_EQ(buffer[4], 'd');

    RecordingStream target;
    BufferedStream writer(&target, false);
    const unsigned char* text = reinterpret_cast<const unsigned char*>("abcdef");
    writer.Write(text, -2, 5);
    writer.Write(text, -2, 2);
    writer.Write(text, 4, 2);
    writer.Flush();
    EXPECT_EQ(target.Content(), "abcef");
}

TEST(BufferedStream, SmallWritesWaitAndLargeOnesDoNot) {
    const std::string content = Pattern(600);
    RecordingStream inner;
    BufferedStream stream(&inner, false);
    Write(stream, content.substr(0, 100));
    EXPECT_EQ(inner.TakeCalls(), Calls());
    EXPECT_EQ(stream.Position(), 100);
    // The length is the inner stream's: what is pending does not count yet.
    EXPECT_EQ(stream.Length(), 0);
    stream.Flush();
    EXPECT_EQ(inner.TakeCalls(), Calls({"Write 100", "Flush"}));
    EXPECT_EQ(stream.Length(), 100);
    stream.Flush();
    EXPECT_EQ(inner.TakeCalls(), Calls({"Flush"}));
    Write(stream, content.substr(100, 300));
    EXPECT_EQ(inner.TakeCalls(), Calls({"Write 300"}));
    EXPECT_EQ(stream.Position(), 400);
    Write(stream, content.substr(400, 50));
    Write(stream, content.substr(450));
    EXPECT_EQ(stream.Position(), 600);
    stream.Flush();
    EXPECT_TRUE(inner.Content() == content);
}

TEST(BufferedStream, WhenTheBufferOverflowsThePendingBytesGoFirst) {
    const struct {
        std::vector<int> writes;
        Calls calls;
        long pending;
    } kCases[] = {
        {{256}, {}, 256},
        {{257}, {"Write 257"}, 0},
        {{256, 256}, {}, 512},  // exactly full
        {{256, 256, 1}, {"Write 512"}, 1},
        {{200, 200, 200}, {"Write 400"}, 200},
        {{10, 257}, {"Write 10", "Write 257"}, 0},
        {{10, 257, 10}, {"Write 10", "Write 257"}, 10},
    };
    for (const auto& c : kCases) {
        const std::string content = Pattern(2000);
        RecordingStream inner;
        BufferedStream stream(&inner, false);
        std::size_t written = 0;
        for (const int count : c.writes) {
            Write(stream, content.substr(written, static_cast<std::size_t>(count)));
            written += static_cast<std::size_t>(count);
        }
        SCOPED_TRACE(testing::PrintToString(c.writes));
        EXPECT_EQ(inner.TakeCalls(), c.calls);
        EXPECT_EQ(stream.Position() - inner.Position(), c.pending);
        stream.Flush();
        EXPECT_TRUE(inner.Content() == content.substr(0, written));
    }
}

TEST(BufferedStream, AWriteAfterAReadLandsAtTheLogicalPosition) {
    const std::string content = Pattern(2000);
    const struct {
        int read;
        int write;
        Calls calls;
    } kCases[] = {
        {10, 3, {"Seek -502 Current", "Write 3"}},
        {10, 300, {"Seek -502 Current", "Write 300"}},
        {512, 3, {"Write 3"}},  // the read-ahead is used up: nothing to move back
        {512, 300, {"Write 300"}},
        {300, 3, {"Write 3"}},  // read past the buffer
    };
    for (const auto& c : kCases) {
        for (const bool inOne : {true, false}) {
            SCOPED_TRACE(testing::Message() << c.read << ", then " << c.write);
            RecordingStream inner(content);
            BufferedStream stream(&inner, false);
            if (inOne && c.read != 512) {
                Read(stream, c.read);
            } else if (c.read != 300) {
                for (int i = 0; i < c.read; ++i)
                    stream.ReadByte();
            } else {
                continue;
            }
            inner.TakeCalls();
            Write(stream, std::string(static_cast<std::size_t>(c.write), '!'));
            EXPECT_EQ(stream.Position(), c.read + c.write);
            stream.Close();  // does not close what it does not own
            EXPECT_EQ(inner.TakeCalls(), c.calls);
            std::string expected = content;
            expected.replace(static_cast<std::size_t>(c.read), static_cast<std::size_t>(c.write),
                             static_cast<std::size_t>(c.write), '!');
            EXPECT_TRUE(inner.Content() == expected);
        }
    }
}

TEST(BufferedStream, AReadAfterAWriteWritesFirst) {
    RecordingStream inner("abcdef");
    BufferedStream stream(&inner, false);
    Write(stream, "XY");
    EXPECT_EQ(Read(stream, 2), "cd");
    EXPECT_EQ(inner.TakeCalls(), Calls({"Write 2", "Read 512"}));
    Write(stream, "Z");
    // Even a read of nothing writes what is pending.
    EXPECT_EQ(Read(stream, 0), "");
    EXPECT_EQ(inner.TakeCalls(), Calls({"Seek -2 Current", "Write 1"}));
    EXPECT_EQ(Read(stream, 9), "f");
    EXPECT_EQ(inner.Content(), "XYcdZf");
}

TEST(BufferedStream, SeeksInTheReadAheadStayInTheBuffer) {
    const std::string content = Pattern(2000);
    const struct {
        long offset;
        SeekOrigin origin;
        Calls calls;
        long expected;
    } kCases[] = {
        // 100 bytes were read, 512 lie in the buffer, and the inner stream stands at 512.
        {0, SeekOrigin::Current, {}, 100},
        {20, SeekOrigin::Current, {}, 120},
        {411, SeekOrigin::Current, {}, 511},
        {-100, SeekOrigin::Current, {}, 0},
        {412, SeekOrigin::Current, {"Seek 0 Current"}, 512},
        {500, SeekOrigin::Current, {"Seek 88 Current"}, 600},
        {-101, SeekOrigin::Current, {"Seek -513 Current"}, 0},
        {LONG_MIN, SeekOrigin::Current, {"Seek " + std::to_string(LONG_MIN) + " Current"}, 0},
        {LONG_MAX,
         SeekOrigin::Current,
         {"Seek " + std::to_string(LONG_MAX - 412) + " Current"},
         2000},
        {120, SeekOrigin::Begin, {"Seek 120 Begin"}, 120},
        {-1, SeekOrigin::End, {"Seek -1 End"}, 1999},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(testing::Message() << c.offset << " from " << c.origin.ToString());
        RecordingStream inner(content);
        BufferedStream stream(&inner, false);
        Read(stream, 100);
        inner.TakeCalls();
        EXPECT_EQ(stream.Seek(c.offset, c.origin), c.expected);
        EXPECT_EQ(inner.TakeCalls(), c.calls);
        EXPECT_EQ(stream.Position(), c.expected);
        EXPECT_TRUE(ReadAll(stream) == content.substr(static_cast<std::size_t>(c.expected)));
    }
}

TEST(BufferedStream, ASeekWritesWhatIsPending) {
    RecordingStream inner("abcdef");
    BufferedStream stream(&inner, false);
    Write(stream, "XY");
    EXPECT_EQ(stream.Seek(1, SeekOrigin::Current), 3);
    EXPECT_EQ(inner.TakeCalls(), Calls({"Write 2", "Seek 1 Current"}));
    EXPECT_EQ(stream.ReadByte(), 'd');
}

TEST(BufferedStream, SetLengthWritesForgetsAndForwards) {
    RecordingStream inner("abcdef");
    BufferedStream stream(&inner, false);
    Write(stream, "XY");
    stream.SetLength(4);
    EXPECT_EQ(inner.TakeCalls(), Calls({"Write 2", "SetLength 4"}));
    EXPECT_EQ(inner.Content(), "XYcd");
    EXPECT_EQ(stream.ReadByte(), 'c');
    inner.TakeCalls();
    EXPECT_THROW_FULL(stream.SetLength(3),
                      "MemoryStream::SetLength: New length smaller than current position", "", -1,
                      -1);  // the inner stream stands at its end
    EXPECT_EQ(inner.TakeCalls(), Calls({"SetLength 3"}));
}

// A seek from the current place to it stays in the buffer; one from the beginning does not.
TEST(BufferedStream, SetPositionBringsTheInnerStreamToThePlaceOfTheNextByte) {
    RecordingStream inner("abcdef");
    BufferedStream stream(&inner, false);
    EXPECT_EQ(stream.ReadByte(), 'a');
    stream.Seek(0, SeekOrigin::Current);
    EXPECT_EQ(inner.Position(), 6);
    stream.SetPosition(stream.Position());
    EXPECT_EQ(inner.Position(), 1);
    stream.SetLength(3);
    EXPECT_EQ(stream.ReadByte(), 'b');
    EXPECT_EQ(inner.Content(), "abc");
}

TEST(BufferedStream, TheInnerStreamSaysWhatIsPossible) {
    class Choice : public RecordingStream {
    public:
        bool CanRead() const override { return which == 0; }
        bool CanSeek() const override { return which == 1; }
        bool CanWrite() const override { return which == 2; }
        int which = 0;
    };
    Choice inner;
    const BufferedStream stream(&inner, false);
    for (inner.which = 0; inner.which < 3; ++inner.which) {
        EXPECT_EQ(stream.CanRead(), inner.which == 0);
        EXPECT_EQ(stream.CanSeek(), inner.which == 1);
        EXPECT_EQ(stream.CanWrite(), inner.which == 2);
    }
}

TEST(BufferedStream, AnInnerStreamThatLiesAboutItsCountsDoesNoHarm) {
    class Liar : public RecordingStream {
    public:
        int Read(unsigned char*, int, int count) override { return count + answer; }
        int answer = 0;
    };
    Liar inner;
    for (const int answer : {-1000, 1000}) {
        for (const int count : {10, 300}) {
            SCOPED_TRACE(testing::Message() << answer << ", " << count);
            inner.answer = answer;
            BufferedStream stream(&inner, false);
            unsigned char buffer[300] = {};
            EXPECT_EQ(stream.Read(buffer, 0, count), answer < 0 ? 0 : count);
        }
    }
}

TEST(BufferedStream, WorksOverAStreamThatGivesFewBytesAtATime) {
    const std::string content = Pattern(3000);
    for (const int most : {1, 2, 3, 7, 255, 256, 257}) {
        for (const int piece : {1, 10, 256, 257, 600}) {
            SCOPED_TRACE(testing::Message() << most << ", " << piece);
            RecordingStream inner(content);
            support::TrickleStream trickle(inner, most);
            BufferedStream stream(&trickle, false);
            EXPECT_TRUE(ReadAll(stream, piece) == content);
        }
    }
}

// Whatever is done, a buffered stream behaves as the stream below it would alone.
TEST(BufferedStream, BehavesLikeItsInnerStream) {
    const std::string content = Pattern(5000);
    RecordingStream inner(content);
    RecordingStream plain(content);
    BufferedStream stream(&inner, false);
    unsigned state = 7;
    for (int step = 0; step < 20'000; ++step) {
        state = state * 1103515245u + 12345u;
        const int amount =
            static_cast<int>((state >> 8 & 0xFFFF) % ((state & 0x40000000) != 0 ? 700 : 40));
        SCOPED_TRACE(step);
        switch (state >> 26 & 3) {
        case 0: {
            // A buffered read may fall short where the read-ahead does not reach; reads at this
            // stream never do, since the inner stream fills each request.
            ASSERT_TRUE(Read(stream, amount) == Read(plain, amount));
            break;
        }
        case 1: {
            const std::string bytes(static_cast<std::size_t>(amount), static_cast<char>(step));
            Write(stream, bytes);
            Write(plain, bytes);
            break;
        }
        case 2: {
            const long offset = amount - 350;
            ASSERT_EQ(stream.Seek(offset, SeekOrigin::Current),
                      plain.Seek(offset, SeekOrigin::Current));
            break;
        }
        default:
            if (plain.Position() > 5000) {
                ASSERT_EQ(stream.Seek(amount, SeekOrigin::Begin),
                          plain.Seek(amount, SeekOrigin::Begin));
            }
        }
        ASSERT_EQ(stream.Position(), plain.Position());
    }
    stream.Flush();
    EXPECT_TRUE(inner.Content() == plain.Content());
    EXPECT_GT(plain.Length(), 5000);
}

}  // namespace
