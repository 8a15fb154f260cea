// SPDX-License-Identifier: MIT
#include <espalier/base/astring.h>

#include <gtest/gtest.h>

namespace {

TEST(Astring, KeepsEmbeddedNuls) {
    const astring text("a\0b", 3);
    EXPECT_EQ(text.length(), 3u);
    EXPECT_EQ(text, std::string_view("a\0b", 3));
}

}  // namespace
