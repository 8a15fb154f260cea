// SPDX-License-Identifier: MIT
#include "sax/TextParts.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace {

using Parts = std::vector<std::string>;

Parts PartsOf(std::string_view text, std::size_t most) {
    Parts parts;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t length = sax::detail::PartLength(text, start, most);
        if (length == 0 || length > most) {
            ADD_FAILURE() << "a part of " << length << " bytes";
            break;
        }
        parts.emplace_back(text.substr(start, length));
        start += length;
    }
    return parts;
}

TEST(TextParts, AreAsLongAsCanBeAndMadeOfWholeCharacters) {
    const struct {
        const char* text;
        std::size_t most;
        Parts parts;
    } kCases[] = {
        {"", 4, {}},
        {"abc", 4, {"abc"}},
        {"abcd", 4, {"abcd"}},
        {"abcde", 4, {"abcd", "e"}},
        {"abcdefghi", 4, {"abcd", "efgh", "i"}},
        {"abc\xC3\xA9"
         "d",
         4,
         {"abc",
          "\xC3\xA9"
          "d"}},
        {"ab\xE2\x82\xAC"
         "d",
         4,
         {"ab",
          "\xE2\x82\xAC"
          "d"}},
        {"abc\xE2\x82\xAC", 4, {"abc", "\xE2\x82\xAC"}},
        {"a\xF0\x9F\x98\x80", 4, {"a", "\xF0\x9F\x98\x80"}},
        {"\xF0\x9F\x98\x80\xF0\x9F\x98\x80", 5, {"\xF0\x9F\x98\x80", "\xF0\x9F\x98\x80"}},
        {"ab\xC3\xA9", 4, {"ab\xC3\xA9"}},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(PartsOf(c.text, c.most), c.parts);
    }
}

// What is no UTF-8 is cut anywhere.
TEST(TextParts, EndAlsoInBytesThatAreNoCharacters) {
    EXPECT_EQ(PartsOf(std::string(10, '\x80'), 4),
              (Parts{std::string(4, '\x80'), std::string(4, '\x80'), std::string(2, '\x80')}));
}

}  // namespace
