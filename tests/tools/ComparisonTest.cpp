// SPDX-License-Identifier: MIT
#include "Comparison.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace {

void Write(Tool::Comparison& comparison, std::string_view bytes) {
    comparison.Write(reinterpret_cast<const unsigned char*>(bytes.data()), 0,
                     static_cast<int>(bytes.size()));
}

}  // namespace

TEST(Comparison, DoesNotMindPieces) {
    const struct {
        std::string_view original;
        std::string_view written;
        bool differs;
    } kCases[] = {
        {"", "", false},
        {"abcdefg", "abcdefg", false},
        {"abcdefg", "abcdef", true},
        {"abc", "abcd", true},
        {"abcdefg", "abcdeFg", true},
        {"", "a", true},
        {"abcde", "Abc", true},
        {"a", "", true},
    };
    for (const auto& c : kCases) {
        for (std::size_t ahead = 1; ahead < 5; ++ahead) {
            for (std::size_t piece = 1; piece < 5; ++piece) {
                SCOPED_TRACE(std::string(c.original) + " " + std::string(c.written));
                Tool::Comparison comparison(nullptr);
                std::string_view original = c.original;
                std::string_view written = c.written;
                while (!original.empty() || !written.empty()) {
                    comparison.TakeOriginal(original.substr(0, ahead));
                    original.remove_prefix(std::min(ahead, original.size()));
                    Write(comparison, written.substr(0, piece));
                    written.remove_prefix(std::min(piece, written.size()));
                }
                EXPECT_EQ(comparison.Differs(), c.differs);
            }
        }
    }
}

TEST(Comparison, HandsOnAllThatIsWritten) {
    class Counter final : public IO::Stream {
    public:
        bool CanWrite() const override { return true; }
        void Close() override {}
        void Write(const unsigned char*, int, int count) override { total += count; }
        int total = 0;
    } counter;
    Tool::Comparison comparison(&counter);
    Write(comparison, "abc");
    comparison.TakeOriginal("abX");
    Write(comparison, "defg");
    EXPECT_TRUE(comparison.Differs());
    EXPECT_EQ(counter.total, 7);
}
