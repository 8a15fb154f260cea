// SPDX-License-Identifier: MIT
#include "dom/css/computed/PlainNames.h"

#include <gtest/gtest.h>

namespace {

using Dom::CSS::detail::PlainNames;

}  // namespace

TEST(PlainNames, HaveNoEscapesThatTheyDoNotNeed) {
    const struct {
        const char* value;
        const char* plain;
    } cases[] = {
        {"", ""},
        {"green", "green"},
        {"gr\\65 en", "green"},
        {"gr\\000065en", "green"},
        {"\\67 reen", "green"},
        {"a\\:b", "a\\:b"},
        {"a\\20 b", "a\\20 b"},
        {"\\e4", "\xC3\xA4"},
        {"'\\65' \\65", "'\\65' e"},
        {"\"a\\\"\\65\" \\65", "\"a\\\"\\65\" e"},
        {"url(a\\)\\65) \\65", "url(a\\)\\65) e"},
        {"URL(\\65", "URL(\\65"},
        {"'\\", "'\\"},
        {"a\\", "a\\"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(PlainNames(c.value), c.plain) << c.value;
}
