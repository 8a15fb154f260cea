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
        // There is room for the name of UTF-8.
        {"<?xml version='1.0' encoding='EUC-KR'?><a/>",
         "<?xml version='1.0' encoding= 'UTF-8'?><a/>", "EUC-KR"},
        {"<?xml version='1.0' encoding='UTF-7'?><a/>", "<?xml version='1.0' encoding='UTF-8'?><a/>",
         "UTF-7"},
        {"<?xml version = \"1.0\"\n encoding = \"ISO-8859-1\" ?>",
         "<?xml version = \"1.0\"\n encoding =      \"UTF-8\" ?>", "ISO-8859-1"},
        // There is none.
        {"<?xml version='1.0' encoding='l1'?><a/>", "<?xml version='1.0'              ?><a/>",
         "l1"},
        {"<?xml version='1.0' encoding='l1' standalone='yes'?><a/>",
         "<?xml version='1.0'               standalone='yes'?><a/>", "l1"},
        {"\xEF\xBB\xBF<?xml version='1.0' encoding = \"l1\"?>",
         "\xEF\xBB\xBF<?xml version='1.0'                ?>", "l1"},
        {"<?xml version='1.0'\n  encoding\n=\n'l1'?><a/>",
         "<?xml version='1.0'\n          \n \n    ?><a/>", "l1"},
        // What is wrong stays wrong.
        {"<?xml version='1.0'encoding='EUC-KR'?>", "<?xml version='1.0'encoding= 'UTF-8'?>",
         "EUC-KR"},
        {"<?xml version='1.0' encoding='EUC-KR'standalone='no'?>",
         "<?xml version='1.0' encoding= 'UTF-8'standalone='no'?>", "EUC-KR"},
        {"<?xml version='1.0'encoding='l1'?>", "<?xml version='1.0'encoding='xx'?>", "l1"},
        {"<?xml version='1.0' encoding='l1'standalone='no'?>",
         "<?xml version='1.0' encoding='xx'standalone='no'?>", "l1"},
        {"<?xml encoding='l1' version='1.0'?>", "<?xml encoding='xx' version='1.0'?>", "l1"},
        {"<?xml version='1.0' encoding='8 bits'?>", "<?xml version='1.0' encoding='8 bits'?>",
         "8 bits"},
        // Nothing has to be hidden.
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
            const Tool::EncodingMask mask = Tool::MaskDeclaredName(stream);
            EXPECT_EQ(mask.name, c.name);
            const std::string masked = ReadAll(stream);
            EXPECT_EQ(masked, c.expected);
            EXPECT_EQ(masked.size(), c.document.size());
            EXPECT_EQ(Tool::WithoutMask(masked, mask), c.document);
        }
    }
}

TEST(EncodingMask, IsTakenOffForPeople) {
    const Tool::EncodingMask mask = {"l1", "'l1'", "'xx'"};
    EXPECT_EQ(Tool::WithoutMask("version='1.0' encoding='xx'", mask),
              "version='1.0' encoding='l1'");
    EXPECT_EQ(Tool::WithoutMask("version='1.0'", mask), "version='1.0'");
    EXPECT_EQ(Tool::WithoutMask("version='1.0'", {}), "version='1.0'");
}

TEST(EncodingMask, DoesNotReadFarForADeclaration) {
    Tool::PeekedStream none(std::make_unique<Pieces>("<root>" + std::string(5000, 'x'), 8));
    EXPECT_EQ(Tool::PeekDeclaration(none), "<root>xx");
    Tool::PeekedStream endless(std::make_unique<Pieces>("<?xml " + std::string(5000, 'x'), 8));
    EXPECT_EQ(Tool::PeekDeclaration(endless).size(), 1024U);
}
