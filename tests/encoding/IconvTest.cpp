// SPDX-License-Identifier: MIT
#include <espalier/encoding.h>

#include <gtest/gtest.h>

#include <iconv.h>
#include <string>
#include <vector>

// The conversions against those of the system's iconv, for every scalar value.

namespace {

using Bytes = std::vector<unsigned char>;

Bytes ByIconv(const char* from, const char* to, const Bytes& source) {
    const iconv_t converter = iconv_open(to, from);
    std::string input(source.begin(), source.end());
    std::string output(4 * input.size() + 16, '\0');
    char* inputAt = input.data();
    char* outputAt = output.data();
    std::size_t inputLeft = input.size();
    std::size_t outputLeft = output.size();
    const std::size_t result = iconv(converter, &inputAt, &inputLeft, &outputAt, &outputLeft);
    iconv_close(converter);
    EXPECT_NE(result, static_cast<std::size_t>(-1)) << from << " to " << to;
    output.resize(output.size() - outputLeft);
    return Bytes(output.begin(), output.end());
}

Bytes ByConvert(Xml::Encoding& from, Xml::Encoding& to, const Bytes& source, unsigned& consumed) {
    Bytes output(4 * source.size() + 16);
    output.resize(Xml::Encoding::Convert(&from, &to, source.data(),
                                         static_cast<unsigned>(source.size()), output.data(),
                                         static_cast<unsigned>(output.size()), consumed));
    return output;
}

// The scalar values from `first` to `last`, as UCS-4 in big-endian order.
Bytes ScalarValues(unsigned first, unsigned last) {
    Bytes bytes;
    for (unsigned code = first; code <= last; ++code) {
        if (code >= 0xD800 && code <= 0xDFFF) continue;
        for (int shift = 24; shift >= 0; shift -= 8) {
            bytes.push_back(static_cast<unsigned char>(code >> shift & 0xFF));
        }
    }
    return bytes;
}

struct Row {
    const char* iconvName;
    Xml::Encoding* encoding;
    unsigned last;  // the last character that it can write
};

class IconvTest : public testing::Test {
protected:
    Xml::UTF8Encoding utf8_;
    Xml::UnicodeEncoding utf16Le_{false, false, false};
    Xml::UnicodeEncoding utf16Be_{true, false, false};
    Xml::Ucs4UnicodeEncoding ucs4Le_{false, false, false};
    Xml::Ucs4UnicodeEncoding ucs4Be_{true, false, false};
    Xml::Latin1Encoding latin1_{false};

    // U+0000 cannot be written in UTF-8, nor the last plane.
    const Row kTargets[5] = {{"UTF-8", &utf8_, 0xFFFFF},
                             {"UTF-16LE", &utf16Le_, 0x10FFFF},
                             {"UTF-32LE", &ucs4Le_, 0x10FFFF},
                             {"UTF-32BE", &ucs4Be_, 0x10FFFF},
                             {"ISO-8859-1", &latin1_, 0xFF}};
    const Row kSources[6] = {{"UTF-8", &utf8_, 0x10FFFF},       {"UTF-16LE", &utf16Le_, 0x10FFFF},
                             {"UTF-16BE", &utf16Be_, 0x10FFFF}, {"UTF-32LE", &ucs4Le_, 0x10FFFF},
                             {"UTF-32BE", &ucs4Be_, 0x10FFFF},  {"ISO-8859-1", &latin1_, 0xFF}};
};

TEST_F(IconvTest, EveryScalarValueConvertsBetweenAllPairs) {
    for (const Row& from : kSources) {
        for (const Row& to : kTargets) {
            SCOPED_TRACE(std::string(from.iconvName) + " to " + to.iconvName);
            const Bytes values = ScalarValues(1, std::min(from.last, to.last));
            const Bytes source = ByIconv("UTF-32BE", from.iconvName, values);
            const Bytes expected = ByIconv("UTF-32BE", to.iconvName, values);
            unsigned consumed = 0;
            const Bytes converted = ByConvert(*from.encoding, *to.encoding, source, consumed);
            EXPECT_TRUE(converted == expected);
            EXPECT_EQ(consumed, source.size());
        }
    }
}

TEST_F(IconvTest, EveryScalarValueIsWrittenByGetBytes) {
    const Bytes values = ScalarValues(0, 0x10FFFF);
    const Bytes utf8 = ByIconv("UTF-32BE", "UTF-8", values);
    const std::string text(utf8.begin(), utf8.end());
    const struct {
        const char* iconvName;
        const Xml::Encoding& encoding;
        unsigned unit;
    } kRows[] = {{"UTF-16LE", utf16Le_, 2},
                 {"UTF-16BE", utf16Be_, 2},
                 {"UTF-32LE", ucs4Le_, 4},
                 {"UTF-32BE", ucs4Be_, 4}};
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.iconvName);
        const Bytes expected = ByIconv("UTF-32BE", row.iconvName, values);
        Bytes bytes(expected.size());
        const unsigned length = static_cast<unsigned>(text.size());
        const unsigned capacity = static_cast<unsigned>(bytes.size()) / row.unit;
        EXPECT_EQ(row.encoding.GetBytes(text.data(), length, bytes.data(), capacity), bytes.size());
        EXPECT_TRUE(bytes == expected);
        if (row.unit == 2) {
            EXPECT_EQ(row.encoding.GetByteCount(text.data(), length), bytes.size());
        }
        EXPECT_EQ(row.encoding.GetCharCount(bytes.data(), static_cast<unsigned>(bytes.size())),
                  values.size() / 4);
    }
    EXPECT_EQ(utf8_.GetCharCount(utf8.data(), static_cast<unsigned>(utf8.size())),
              values.size() / 4);
}

}  // namespace
