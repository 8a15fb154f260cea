// SPDX-License-Identifier: MIT
//
// Files as Windows has them: its locks, its names, its line ends, positions of 32 bits.
#include <espalier/io/FileStream.h>

#include "support/Descriptor.h"
#include "support/ExpectThrow.h"
#include "support/FileTest.h"

#include <climits>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

using IO::FileMode;
using IO::FileStream;
using IO::SeekOrigin;
using support::kDenyAll;
using support::kDenyNothing;
using support::kRead;
using support::kReadWrite;
using support::kWrite;
using support::ReadAll;
using support::Write;

class FileStreamWindowsTest : public support::FileTest {};

struct Opener {
    unsigned access;  // bit 0: read, bit 1: write
    unsigned share;   // what others may do, the same bits
};

// The system asks both: what the second does has to suit the first, and the other way round.
bool Conflict(Opener a, Opener b) {
    return (b.access & ~a.share) != 0 || (a.access & ~b.share) != 0;
}

TEST_F(FileStreamWindowsTest, ShareModesKeepOthersOut) {
    const std::string path = Make("file", "abc");
    int refused = 0;
    for (unsigned first = 0; first < 12; ++first) {
        for (unsigned second = 0; second < 12; ++second) {
            const Opener a = {first / 4 + 1, first % 4};
            const Opener b = {second / 4 + 1, second % 4};
            SCOPED_TRACE(testing::Message()
                         << "access " << a.access << " share " << a.share << ", then access "
                         << b.access << " share " << b.share);
            const FileStream holder(path, FileMode::Open, a.access, a.share);
            if (Conflict(a, b)) {
                ++refused;
                EXPECT_THROW_FULL(FileStream(path, FileMode::Open, b.access, b.share),
                                  "Access denied/sharing violation", "", -1, -1);
            } else {
                EXPECT_NO_THROW(FileStream(path, FileMode::Open, b.access, b.share));
            }
        }
    }
    EXPECT_EQ(refused, 119);  // of 144
}

TEST_F(FileStreamWindowsTest, NamesAreUtf8) {
    const std::string path = Path(
        "Pr\xC3\xBC"
        "fung \xE2\x82\xAC.xml");
    FileStream(path, FileMode::CreateNew, kWrite, kDenyAll).WriteByte('x');
    EXPECT_TRUE(
        std::filesystem::exists(std::filesystem::path(Path("")) / L"Pr\u00FCfung \u20AC.xml"));
    EXPECT_EQ(FileStream(path, FileMode::Open, kRead, kDenyNothing).ReadByte(), 'x');
    EXPECT_THROW_FULL(FileStream(Path("\xFC"), FileMode::Create, kWrite, kDenyAll),
                      "Invalid parameter(s)", "", -1, -1);
}

TEST_F(FileStreamWindowsTest, BytesAreNotTranslated) {
    const std::string bytes(
        "a\r\nb\nc\x1A"
        "d\0e\r",
        10);
    const std::string path = Path("file");
    {
        FileStream stream(path, FileMode::Create, kWrite, kDenyAll);
        Write(stream, bytes);
    }
    EXPECT_EQ(Content(path), bytes);
    FileStream stream(path, FileMode::Open, kRead, kDenyNothing);
    EXPECT_EQ(stream.Length(), 10);
    EXPECT_EQ(ReadAll(stream), bytes);
}

TEST_F(FileStreamWindowsTest, APositionBeyondTwoGibibytesIsNone) {
    const std::string path = Make("file", "abc");
    FileStream stream(path, FileMode::Open, kReadWrite, kDenyNothing);
    EXPECT_EQ(stream.Seek(LONG_MAX, SeekOrigin::Begin), LONG_MAX);
    EXPECT_EQ(stream.Seek(1, SeekOrigin::Current), -1);
    EXPECT_EQ(stream.Position(), LONG_MAX);
    EXPECT_EQ(stream.Seek(LONG_MAX, SeekOrigin::End), -1);
    EXPECT_EQ(stream.Position(), LONG_MAX);
    EXPECT_EQ(stream.Length(), 3);
}

TEST_F(FileStreamWindowsTest, WhatIsReadAheadStaysWhenThereIsNoSuchPosition) {
    const std::string path = Make("file", "abc");
    FileStream stream(path, FileMode::Open, kRead, kDenyNothing);
    EXPECT_EQ(stream.ReadByte(), 'a');
    EXPECT_EQ(stream.Seek(LONG_MAX, SeekOrigin::Current), -1);
    EXPECT_EQ(stream.ReadByte(), 'b');
}

TEST_F(FileStreamWindowsTest, APipeHasNoPosition) {
    int ends[2];
    ASSERT_TRUE(support::MakePipe(ends));
    FileStream input(ends[0], kRead, true);
    FileStream output(ends[1], kWrite, true);
    Write(output, "abc");
    EXPECT_NO_THROW(output.Flush());
    EXPECT_EQ(output.Position(), -1);
    output.Close();
    EXPECT_EQ(input.Length(), -1);
    EXPECT_EQ(input.Seek(0, SeekOrigin::Begin), -1);
    EXPECT_EQ(ReadAll(input), "abc");
}

TEST_F(FileStreamWindowsTest, ADeviceIsNotEmptied) {
    FileStream stream("NUL", FileMode::Create, kReadWrite, kDenyNothing);
    Write(stream, "abc");
    EXPECT_EQ(stream.ReadByte(), -1);
    EXPECT_NO_THROW(stream.Flush());
}

}  // namespace
