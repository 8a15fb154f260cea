// SPDX-License-Identifier: MIT
#include "Progress.h"

#include <gtest/gtest.h>

#include <cstdint>

using Tool::ProgressLine;

TEST(Progress, TellsPercentRateAndTimeLeft) {
    EXPECT_EQ(ProgressLine({524288000, 2097152000, 2.0}, 79),
              "[######..................]  25 % of 2.0 GiB, 250 MiB/s, 0:06 left");
}

TEST(Progress, TellsBytesAndRateOfAPipe) {
    EXPECT_EQ(ProgressLine({3 * 1048576, 0, 2.0}, 79), "3.0 MiB, 1.5 MiB/s");
}

TEST(Progress, LongTimesHaveHours) {
    EXPECT_EQ(ProgressLine({1048576, std::int64_t{4096} * 1048576, 1.0}, 79),
              "[........................]   0 % of 4.0 GiB, 1.0 MiB/s, 1:08:15 left");
}

TEST(Progress, AFileThatGrowsStaysAtOneHundredPercent) {
    EXPECT_EQ(ProgressLine({2000, 1000, 2.0}, 79),
              "[########################] 100 % of 1000 B, 1000 B/s, 0:01 left");
}

TEST(Progress, NeverIsWiderThanTheTerminal) {
    EXPECT_EQ(ProgressLine({524288000, 2097152000, 2.0}, 10), "[######...");
    EXPECT_EQ(ProgressLine({524288000, 2097152000, 2.0}, -1), "");
}
