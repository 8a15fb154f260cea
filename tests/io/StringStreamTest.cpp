// SPDX-License-Identifier: MIT
#include <espalier/io/StringStream.h>

#include "support/ExpectThrow.h"

#include <gtest/gtest.h>

namespace {

const unsigned char* Bytes(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}

TEST(StringStream, OverwritesInTheMiddleAndNeverInserts) {
    IO::StringStream stream("abcdef", true);
    stream.SetPosition(1);
    stream.Write(Bytes("XYZ"), 0, 3);
    EXPECT_EQ(stream.GetString(), "aXYZef");
    EXPECT_EQ(stream.Position(), 4);
}

TEST(StringStream, RefusesToWriteWhenNotWritable) {
    IO::StringStream stream("abc", false);
    EXPECT_THROW_FULL(stream.Write(Bytes("x"), 0, 1), "StringStream::Write: Write not supported",
                      "", -1, -1);
    EXPECT_EQ(stream.GetString(), "abc");
}

}  // namespace
