// SPDX-License-Identifier: MIT
//
// What is there at once may be read in another way than what comes byte by byte: both give the
// same.
#include <espalier/dom/css/CssReader.h>
#include <espalier/io/MemoryStream.h>

#include "dom/css/CssText.h"
#include "support/TrickleStream.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>

namespace {

using Dom::CSS::CssReader;

// Returns what a reader gives for a text that comes in pieces, with the node after each rule.
std::string StoryOf(std::string_view text, int bytesPerRead) {
    IO::MemoryStream memory(reinterpret_cast<const unsigned char*>(text.data()),
                            static_cast<long>(text.size()));
    support::TrickleStream stream(memory, bytesPerRead);
    CssReader reader(&stream, "UTF-8");
    std::string story;
    for (std::size_t i = 0; i <= text.size(); ++i) {
        if (!reader.Read()) break;
        story += support::NodeOf(reader) + '\n' + reader.ReadRule().str() + '\n';
        story += support::NodeOf(reader) + " [" + reader.Value().str() + "] " +
                 std::to_string(reader.LineNumber()) + ':' + std::to_string(reader.LinePos()) +
                 (reader.IsAtEnd() ? " end\n" : "\n");
    }
    return story;
}

TEST(CssReaderPieces, RulesAreTheSameHoweverTheyCome) {
    constexpr const char* kPieces[] = {
        "a",           "b-c", "x_1", ":",      ": ",  " : ",     ";",    "; ",   ";\n  ",
        "}",           " }",  ";}",  ";\n}",   "p{",  "p {\n",   " ",    "\r\n", "'x;y",
        "'",           "\"",  "/",   "/*c;*/", "!",   "1px",     "-2em", "*",    "@",
        "@media x { ", "\f",  "\\",  "#123",   "(,)", "\xC3\xA9"};
    unsigned state = 1;
    const auto next = [&state] {
        state = state * 1664525U + 1013904223U;
        return state >> 16;
    };
    for (int i = 0; i < 20'000; ++i) {
        std::string text = "p{";
        for (unsigned count = next() % 24; count > 0; --count)
            text += kPieces[next() % std::size(kPieces)];
        const std::string whole = StoryOf(text, 1024);
        ASSERT_EQ(StoryOf(text, 1), whole) << testing::PrintToString(text);
        ASSERT_EQ(StoryOf(text, 7), whole) << testing::PrintToString(text);
    }
}

TEST(CssReaderPieces, RulesAreTheSameWhereverTheTextIsCut) {
    std::string sheet;
    for (int i = 0; i < 30; ++i) {
        sheet += ".k" + std::to_string(i) + " > q:hover {\n  color : #12345" + std::to_string(i) +
                 " ;\n  margin: 0 1px 2em  ;padding:0;\n  background: url('a;b.png') /*c*/ "
                 "\xC3\xA9;\n}\n";
    }
    const std::string whole = StoryOf(sheet, 1024);
    EXPECT_NE(
        whole.find("{ color: #123450; margin: 0 1px 2em; padding: 0; background: url('a;b.png')  "
                   "\xC3\xA9 }"),
        std::string::npos);
    for (const int bytesPerRead : {1, 2, 3, 5, 17, 64, 100, 511, 512, 513, 1000}) {
        EXPECT_EQ(StoryOf(sheet, bytesPerRead), whole) << bytesPerRead;
    }
}

}  // namespace
