// SPDX-License-Identifier: MIT
//
// Files that are longer than a `long` of 32 bits can tell.
#include <espalier/io/FileStream.h>

#include "support/FileTest.h"

#include <climits>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>

namespace {

using IO::FileMode;
using IO::FileStream;
using IO::SeekOrigin;

constexpr std::int64_t kSize = std::int64_t{5} << 30;

// Returns a position as a stream tells it: -1 when `long` cannot hold it.
long Told(std::int64_t position) {
    long told = 0;
    return __builtin_add_overflow(position, 0, &told) ? -1 : told;
}

class LargeFileTest : public support::FileTest {
protected:
    LargeFileTest() : path_(Make("large", "abc")) {
        std::filesystem::resize_file(path_, static_cast<std::uintmax_t>(kSize));
    }

    std::string path_;
};

void ReadAndSeek(FileStream& stream) {
    EXPECT_EQ(stream.Length(), Told(kSize));
    EXPECT_EQ(stream.ReadByte(), 'a');
    EXPECT_EQ(stream.Seek(INT_MAX, SeekOrigin::Begin), INT_MAX);
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(stream.ReadByte(), 0);
    const long position = stream.Position();
    EXPECT_EQ(position, Told(std::int64_t{INT_MAX} + 10));
    EXPECT_EQ(stream.Seek(0, SeekOrigin::Current), position);
    EXPECT_EQ(stream.ReadByte(), 0);

    EXPECT_EQ(stream.Seek(1, SeekOrigin::Begin), 1);
    EXPECT_EQ(stream.ReadByte(), 'b');
    const long end = stream.Seek(0, SeekOrigin::End);
    EXPECT_EQ(end, Told(kSize));
    EXPECT_EQ(stream.Position(), end < 0 ? 2 : end);  // a seek that fails leaves it
    EXPECT_EQ(stream.ReadByte(), end < 0 ? 'c' : -1);
}

TEST_F(LargeFileTest, IsReadFromAnyPositionThatCanBeTold) {
    for (const unsigned access : {support::kRead, support::kReadWrite}) {
        FileStream stream(path_, FileMode::Open, access, support::kDenyNothing);
        ReadAndSeek(stream);
    }
}

TEST_F(LargeFileTest, IsReadByAHandle) {
    std::FILE* const handle = std::fopen(path_.c_str(), "rb");
    // The handle is the program's, which has to ask for long files itself.
    if (handle == nullptr) GTEST_SKIP() << "no handles for such files";
    FileStream stream(handle, support::kRead, true);
    ReadAndSeek(stream);
}

TEST_F(LargeFileTest, IsWrittenBehindWhatCanBeTold) {
    FileStream stream(path_, FileMode::Append, support::kWrite, support::kDenyNothing);
    support::Write(stream, "xyz");
    stream.Close();
    EXPECT_EQ(std::filesystem::file_size(path_), static_cast<std::uintmax_t>(kSize) + 3);
}

}  // namespace
