// SPDX-License-Identifier: MIT
#include <espalier/io/Stream.h>

#include <gtest/gtest.h>

namespace {

TEST(Stream, NullIsOneSharedStreamThatIsAlwaysAtItsEnd) {
    IO::Stream* stream = IO::Stream::Null();
    EXPECT_EQ(stream, IO::Stream::Null());
    EXPECT_TRUE(stream->CanRead());
    EXPECT_FALSE(stream->CanSeek());
    EXPECT_TRUE(stream->CanWrite());
    stream->WriteByte('x');
    EXPECT_EQ(stream->ReadByte(), -1);
    EXPECT_EQ(stream->Length(), 0);
}

}  // namespace
