// SPDX-License-Identifier: MIT
#include <espalier/io/MemoryStream.h>

#include "EncodingMask.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

// Delivers a text a few bytes at a time.
class Pieces final : public Tool::InputStream {
public:
    Pieces(std::string text, int piece) : text_(std::move(text)), piece_(piece) {}

    int Read(unsigned char* buffer, int offset, int count) override {
        const auto given =
            std::min(text_.size(), static_cast<std::size_t>(std::min(count, piece_)));
        std::copy_n(text_.data(), given, buffer + offset);
        text_.erase(0, given);
        return static_cast<int>(given);
    }

private:
    std::string text_;
    int piece_;
};

std::string ReadAll(IO::Stream& stream) {
    std::string all;
    unsigned char buffer[100];
    while (const int count = stream.Read(buffer, 0, sizeof buffer))
        all.append(reinterpret_cast<const char*>(buffer), static_cast<std::size_t>(count));
    return all;
}

}  // namespace

TEST(EncodingMask, HidesTheNameOfAnotherEncoding) {
    const struct {
        std::string document;
        std::string expected;
        const char* name;
    } kCases[] = {
        {"<?xml version='1.0' encoding='l1'?><a/>", "<?xml version='1.0' encoding='xx'?><a/>",
         "l1"},
        {"<?xml version = \"1.0\"\n encoding = \"EUC-KR\" ?>",
         "<?xml version = \"1.0\"\n encoding = \"xxxxxx\" ?>", "EUC-KR"},
        {"\xEF\xBB\xBF<?xml version='1.0' encoding='l1'?>",
         "\xEF\xBB\xBF<?xml version='1.0' encoding='xx'?>", "l1"},
        {"<?xml version='1.0' encoding='UTF-8'?><a/>", "<?xml version='1.0' encoding='UTF-8'?><a/>",
         ""},
        {"<?xml version='1.0' encoding='utf-8'?><a/>", "<?xml version='1.0' encoding='utf-8'?><a/>",
         ""},
        {"<?xml version=' encoding=\"l1\"'?><a/>", "<?xml version=' encoding=\"l1\"'?><a/>", ""},
        {"<?xml version='1.0'?><a encoding='l1'/>", "<?xml version='1.0'?><a encoding='l1'/>", ""},
        {"<a encoding='l1'>?></a>", "<a encoding='l1'>?></a>", ""},
        {"<?xml version='1.0' encoding='l1'", "<?xml version='1.0' encoding='l1'", ""},
        {"", "", ""},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.document);
        for (const int piece : {1, 2, 7, 1000}) {
            Tool::PeekedStream stream(std::make_unique<Pieces>(c.document, piece));
            EXPECT_EQ(Tool::MaskDeclaredName(stream), c.name);
            EXPECT_EQ(ReadAll(stream), c.expected);
        }
    }
}

TEST(EncodingMask, IsTakenOffForPeople) {
    EXPECT_EQ(Tool::WithoutMask("version='1.0' encoding='xx'", "l1"),
              "version='1.0' encoding='l1'");
    EXPECT_EQ(Tool::WithoutMask("version='1.0'", "l1"), "version='1.0'");
}

TEST(EncodingMask, DoesNotReadFarForADeclaration) {
    Tool::PeekedStream none(std::make_unique<Pieces>("<root>" + std::string(5000, 'x'), 8));
    EXPECT_EQ(Tool::PeekDeclaration(none), "<root>xx");
    Tool::PeekedStream endless(std::make_unique<Pieces>("<?xml " + std::string(5000, 'x'), 8));
    EXPECT_EQ(Tool::PeekDeclaration(endless).size(), 1024U);
}
