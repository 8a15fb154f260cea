// SPDX-License-Identifier: MIT
#include <espalier/io/MemoryStream.h>

#include "support/ExpectThrow.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

const unsigned char* Bytes(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}

std::string Content(const IO::MemoryStream& stream) {
    std::string content(static_cast<std::size_t>(stream.Length()), '\0');
    const long copied = stream.ToArray(reinterpret_cast<unsigned char*>(content.data()),
                                       static_cast<long>(content.size()));
    EXPECT_EQ(copied, stream.Length());
    return content;
}

TEST(MemoryStream, GrowsByTheLargerOfTheWriteAnd1024) {
    const std::string bytes(3000, 'x');
    IO::MemoryStream stream;
    EXPECT_EQ(stream.Capacity(), 0);
    EXPECT_EQ(stream.GetBuffer(), nullptr);
    stream.Write(Bytes(bytes.data()), 0, 10);
    EXPECT_EQ(stream.Capacity(), 1024);
    EXPECT_EQ(stream.Length(), 10);
    stream.Write(Bytes(bytes.data()), 0, 3000);
    EXPECT_EQ(stream.Capacity(), 4024);
    EXPECT_EQ(stream.Length(), 3010);
    EXPECT_EQ(Content(stream), std::string(3010, 'x'));
}

TEST(MemoryStream, ReadsBackWhatWasWritten) {
    IO::MemoryStream stream;
    stream.Write(Bytes("abcdef"), 1, 4);
    stream.SetPosition(1);
    unsigned char buffer[8] = {};
    EXPECT_EQ(stream.Read(buffer, 2, 6), 3);
    EXPECT_EQ(std::string_view(reinterpret_cast<char*>(buffer), 8),
              std::string_view("\0\0cde\0\0\0", 8));
    EXPECT_EQ(stream.Read(buffer, 0, 8), 0);
    EXPECT_EQ(stream.ReadByte(), -1);
}

TEST(MemoryStream, RefusesWorkAfterClose) {
    IO::MemoryStream stream;
    stream.Write(Bytes("abc"), 0, 3);
    stream.Close();
    unsigned char buffer[4] = {};
    EXPECT_THROW_FULL(stream.Read(buffer, 0, 1), "MemoryStream::Read: Stream is closed", "", -1,
                      -1);
    EXPECT_THROW_FULL(stream.Write(buffer, 0, 1), "MemoryStream::Write: Stream is closed", "", -1,
                      -1);
    EXPECT_THROW_FULL(stream.SetCapacity(4), "MemoryStream::SetCapacity: Stream is closed", "", -1,
                      -1);
    EXPECT_EQ(Content(stream), "abc");
}

}  // namespace
