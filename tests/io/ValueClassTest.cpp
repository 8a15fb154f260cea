// SPDX-License-Identifier: MIT
//
// The enumerations wrapped in value classes.
#include <espalier/io/CompressionMode.h>
#include <espalier/io/FileMode.h>
#include <espalier/io/SeekOrigin.h>

#include <gtest/gtest.h>

#include <string_view>
#include <type_traits>

namespace {

using IO::CompressionMode;
using IO::FileMode;
using IO::SeekOrigin;

// Equality with the class and with the enumeration is never ambiguous, whichever comes first.
static_assert(SeekOrigin(SeekOrigin::End) == SeekOrigin::End);
static_assert(SeekOrigin::End == SeekOrigin(SeekOrigin::End));
static_assert(SeekOrigin(SeekOrigin::End) == SeekOrigin(SeekOrigin::End));
static_assert(SeekOrigin(SeekOrigin::End) != SeekOrigin::Begin);
static_assert(SeekOrigin::Begin != SeekOrigin(SeekOrigin::End));
static_assert(FileMode(FileMode::Open) == FileMode::Open);
static_assert(FileMode::Open == FileMode(FileMode::Open));
static_assert(FileMode(FileMode::Open) == FileMode(FileMode::Open));
static_assert(FileMode(FileMode::Open) != FileMode::Create);
static_assert(FileMode::Create != FileMode(FileMode::Open));
static_assert(CompressionMode(CompressionMode::Compress) == CompressionMode::Compress);
static_assert(CompressionMode::Compress == CompressionMode(CompressionMode::Compress));
static_assert(CompressionMode(CompressionMode::Compress) ==
              CompressionMode(CompressionMode::Compress));
static_assert(CompressionMode(CompressionMode::Compress) != CompressionMode::Decompress);
static_assert(CompressionMode::Decompress != CompressionMode(CompressionMode::Compress));
static_assert(CompressionMode() == CompressionMode::Decompress);

// They convert from and to their enumeration, and to a number no sooner than that.
static_assert(std::is_convertible_v<SeekOrigin::SEEK_ORIGIN, SeekOrigin>);
static_assert(std::is_convertible_v<SeekOrigin, SeekOrigin::SEEK_ORIGIN>);
static_assert(std::is_convertible_v<FileMode::FILE_MODE, FileMode>);
static_assert(std::is_convertible_v<FileMode, FileMode::FILE_MODE>);
static_assert(std::is_convertible_v<CompressionMode::CMODE, CompressionMode>);
static_assert(std::is_convertible_v<CompressionMode, CompressionMode::CMODE>);
static_assert(!std::is_convertible_v<int, SeekOrigin>);
static_assert(!std::is_convertible_v<int, FileMode>);
static_assert(!std::is_convertible_v<int, CompressionMode>);
static_assert(std::is_trivially_copyable_v<SeekOrigin> && std::is_trivially_copyable_v<FileMode> &&
              std::is_trivially_copyable_v<CompressionMode>);

TEST(SeekOrigin, HasTheNumbersAndNamesOfItsValues) {
    const struct {
        SeekOrigin::SEEK_ORIGIN value;
        int number;
        std::string_view name;
    } kCases[] = {
        {SeekOrigin::Begin, 0, "Begin"},
        {SeekOrigin::Current, 1, "Current"},
        {SeekOrigin::End, 2, "End"},
        {static_cast<SeekOrigin::SEEK_ORIGIN>(3), 3, "?"},
        {static_cast<SeekOrigin::SEEK_ORIGIN>(-1), -1, "?"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.number);
        const SeekOrigin origin = c.value;
        EXPECT_EQ(static_cast<int>(origin), c.number);
        EXPECT_EQ(origin.ToString(), c.name);
        SeekOrigin assigned = SeekOrigin::Begin;
        assigned = c.value;
        EXPECT_TRUE(assigned == origin);
        assigned = SeekOrigin::Begin;
        assigned = origin;
        EXPECT_TRUE(assigned == c.value);
        for (const auto& other : kCases) {
            EXPECT_EQ(origin == other.value, c.number == other.number);
            EXPECT_EQ(origin == SeekOrigin(other.value), c.number == other.number);
        }
    }
}

TEST(FileMode, HasTheNumbersAndNamesOfItsValues) {
    const struct {
        FileMode::FILE_MODE value;
        int number;
        std::string_view name;
    } kCases[] = {
        {FileMode::Append, 0, "Append"},
        {FileMode::Create, 1, "Create"},
        {FileMode::CreateNew, 2, "CreateNew"},
        {FileMode::Open, 3, "Open"},
        {FileMode::OpenOrCreate, 4, "OpenOrCreate"},
        {FileMode::Truncate, 5, "Truncate"},
        {static_cast<FileMode::FILE_MODE>(6), 6, "?"},
        {static_cast<FileMode::FILE_MODE>(-1), -1, "?"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.number);
        const FileMode mode = c.value;
        EXPECT_EQ(static_cast<int>(mode), c.number);
        EXPECT_EQ(mode.ToString(), c.name);
        FileMode assigned = FileMode::Append;
        assigned = c.value;
        EXPECT_TRUE(assigned == mode);
        assigned = FileMode::Append;
        assigned = mode;
        EXPECT_TRUE(assigned == c.value);
        for (const auto& other : kCases) {
            EXPECT_EQ(mode == other.value, c.number == other.number);
            EXPECT_EQ(mode == FileMode(other.value), c.number == other.number);
        }
    }
}

TEST(CompressionMode, HasTheNumbersAndNamesOfItsValues) {
    const struct {
        CompressionMode::CMODE value;
        int number;
        std::string_view name;
    } kCases[] = {
        {CompressionMode::Compress, 0, "Compress"},
        {CompressionMode::Decompress, 1, "Decompress"},
        {static_cast<CompressionMode::CMODE>(2), 2, "?"},
        {static_cast<CompressionMode::CMODE>(-1), -1, "?"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.number);
        const CompressionMode mode = c.value;
        EXPECT_EQ(static_cast<int>(mode), c.number);
        EXPECT_EQ(mode.ToString(), c.name);
        CompressionMode assigned;
        assigned = c.value;
        EXPECT_TRUE(assigned == mode);
        assigned = CompressionMode();
        assigned = mode;
        EXPECT_TRUE(assigned == c.value);
        for (const auto& other : kCases) {
            EXPECT_EQ(mode == other.value, c.number == other.number);
            EXPECT_EQ(mode == CompressionMode(other.value), c.number == other.number);
        }
    }
}

}  // namespace
