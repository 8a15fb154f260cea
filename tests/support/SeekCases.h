// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/Stream.h>

#include <climits>
#include <gtest/gtest.h>

#include <string>

namespace support {

/// Expects of a stream in memory, 10 bytes long, that seeking keeps within its bytes.
inline void ExpectSeeksClamp(IO::Stream& stream) {
    ASSERT_EQ(stream.Length(), 10);
    const struct {
        long start;
        long offset;
        IO::SeekOrigin origin;
        long expected;
    } kCases[] = {
        {0, 0, IO::SeekOrigin::Begin, 0},
        {0, 7, IO::SeekOrigin::Begin, 7},
        {0, 10, IO::SeekOrigin::Begin, 10},
        {0, 11, IO::SeekOrigin::Begin, 10},
        {0, 100, IO::SeekOrigin::Begin, 10},
        {5, -5, IO::SeekOrigin::Begin, 0},
        {5, 2, IO::SeekOrigin::Current, 7},
        {5, -2, IO::SeekOrigin::Current, 3},
        {5, -6, IO::SeekOrigin::Current, 0},
        {5, 6, IO::SeekOrigin::Current, 10},
        {5, 0, IO::SeekOrigin::End, 10},
        {5, -4, IO::SeekOrigin::End, 6},
        {5, 4, IO::SeekOrigin::End, 10},
        {5, -11, IO::SeekOrigin::End, 0},
        // An origin without a name leaves the position.
        {5, 3, static_cast<IO::SeekOrigin::SEEK_ORIGIN>(3), 5},
        {5, 3, static_cast<IO::SeekOrigin::SEEK_ORIGIN>(-1), 5},
        // Sums that pass the range of long.
        {5, LONG_MAX, IO::SeekOrigin::Begin, 10},
        {5, LONG_MIN, IO::SeekOrigin::Begin, 0},
        {5, LONG_MAX, IO::SeekOrigin::Current, 10},
        {5, LONG_MIN, IO::SeekOrigin::Current, 0},
        {5, LONG_MAX, IO::SeekOrigin::End, 10},
        {5, LONG_MIN, IO::SeekOrigin::End, 0},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(testing::Message()
                     << c.offset << " from " << c.origin.ToString() << " at " << c.start);
        stream.SetPosition(c.start);
        ASSERT_EQ(stream.Position(), c.start);
        EXPECT_EQ(stream.Seek(c.offset, c.origin), c.expected);
        EXPECT_EQ(stream.Position(), c.expected);
    }
}

/// Expects of a stream over "abcdefghij" that each read delivers what is promised for it.
inline void ExpectReadsFold(IO::Stream& stream) {
    ASSERT_EQ(stream.Length(), 10);
    const struct {
        long start;
        int offset;
        int count;
        int expected;
        const char* buffer;  // 12 bytes, '.' where nothing was written
    } kCases[] = {
        {0, 0, 3, 3, "abc........."},
        {4, 2, 3, 3, "..efg......."},
        {0, 0, 12, 10, "abcdefghij.."},
        {8, 0, 12, 2, "ij.........."},
        {10, 0, 12, 0, "............"},
        {0, 5, 0, 0, "............"},
        {0, 5, -1, 0, "............"},
        {0, 5, INT_MIN, 0, "............"},
        {0, -3, 10, 7, "abcdefg....."},  // a negative offset shortens the count
        {2, -3, 4, 1, "c..........."},
        {2, -3, 3, 0, "............"},
        {2, -3, 2, 0, "............"},
        {2, INT_MIN, INT_MAX, 0, "............"},
        {2, INT_MIN, INT_MIN, 0, "............"},
        {0, 2, INT_MAX, 10, "..abcdefghij"},  // the count may be larger than any buffer
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(testing::Message() << c.offset << ", " << c.count << " at " << c.start);
        unsigned char buffer[12];
        for (unsigned char& byte : buffer)
            byte = '.';
        stream.SetPosition(c.start);
        EXPECT_EQ(stream.Read(buffer, c.offset, c.count), c.expected);
        EXPECT_EQ(std::string(reinterpret_cast<char*>(buffer), 12), c.buffer);
        EXPECT_EQ(stream.Position(), c.start + c.expected);
    }
}

}  // namespace support
