// SPDX-License-Identifier: MIT
#include "encoding/CodecCases.h"

#include <gtest/gtest.h>

#include <iconv.h>
#include <map>
#include <optional>
#include <string>
#include <vector>

// The tables of the code pages against the system's iconv: every byte and every pair in one
// direction, every code point in the other. What differs on purpose is listed with the reason.

using encoding_test::AllPages;
using encoding_test::AppendUnit;
using encoding_test::Bytes;
using encoding_test::DoubleBytePages;
using encoding_test::EndOf;
using encoding_test::IsSurrogate;
using encoding_test::PageCase;
using encoding_test::WindowsPages;
using Xml::detail::CharCodec;

namespace {

constexpr int kLastCode = 0x10FFFF;

class Converter {
public:
    Converter(const char* from, const char* to) : converter_(iconv_open(to, from)) {
        EXPECT_NE(converter_, Invalid()) << from << " to " << to;
    }
    ~Converter() { iconv_close(converter_); }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    /// Converts a character.
    /// \return nothing where it does not exist
    std::optional<Bytes> operator()(Bytes source) {
        iconv(converter_, nullptr, nullptr, nullptr, nullptr);
        Bytes output(16);
        char* inputAt = reinterpret_cast<char*>(source.data());
        char* outputAt = reinterpret_cast<char*>(output.data());
        std::size_t inputLeft = source.size();
        std::size_t outputLeft = output.size();
        const std::size_t result = iconv(converter_, &inputAt, &inputLeft, &outputAt, &outputLeft);
        if (result != 0 || inputLeft != 0) return std::nullopt;
        output.resize(output.size() - outputLeft);
        return output;
    }

private:
    // iconv_open() returns minus one, as a pointer.
    static iconv_t Invalid() { return reinterpret_cast<iconv_t>(static_cast<std::intptr_t>(-1)); }

    iconv_t converter_;
};

int CodeOf(const std::optional<Bytes>& ucs4) {
    if (!ucs4 || ucs4->size() != 4) return -1;
    return (*ucs4)[1] << 16 | (*ucs4)[2] << 8 | (*ucs4)[3];
}

struct Difference {
    const char* page;
    Bytes bytes;
    int code;  // ours; -1 for none
    const char* reason;
};

const std::vector<Difference>& Differences() {
    static const std::vector<Difference> kDifferences = [] {
        std::vector<Difference> differences = {
            {"EUC-CN", {0xA1, 0xA4}, 0xB7, "a middle dot to all who write Chinese, not katakana's"},
            {"EUC-CN", {0xA1, 0xAA}, 0x2014, "an em dash to all who write Chinese, not a bar"},
            {"EUC-KR",
             {0xA2, 0xE8},
             -1,
             "the postal code sign came later; browsers do not read it"},
        };
        for (unsigned char byte = 0x80; byte <= 0x9F; ++byte)
            differences.push_back({"EUC-KR", {byte}, -1, "control characters of no use in XML"});
        return differences;
    }();
    return kDifferences;
}

const Difference* DifferenceAt(const PageCase& page, const Bytes& bytes) {
    for (const Difference& difference : Differences()) {
        if (difference.page == std::string(page.iconvName) && difference.bytes == bytes)
            return &difference;
    }
    return nullptr;
}

// What the bytes should decode to.
int ExpectedCode(Converter& toUcs4, const PageCase& page, const Bytes& bytes) {
    const int code = CodeOf(toUcs4(bytes));
    if (const Difference* difference = DifferenceAt(page, bytes)) {
        EXPECT_NE(code, difference->code) << "no difference: " << difference->reason;
        return difference->code;
    }
    // A byte that a Windows page leaves undefined is a character of its own number.
    if (code < 0 && bytes.size() == 1 && page.codec.Kind() == Xml::detail::CodecKind::SingleByte)
        return bytes[0];
    return code;
}

TEST(CodePageTables, EveryByteIsWhatIconvSays) {
    for (const PageCase& page : AllPages()) {
        SCOPED_TRACE(page.iconvName);
        Converter toUcs4(page.iconvName, "UTF-32BE");
        for (int byte = 0; byte <= 0xFF; ++byte) {
            const Bytes bytes = {static_cast<unsigned char>(byte)};
            EXPECT_EQ(page.codec.Decode(bytes.data(), EndOf(bytes)),
                      ExpectedCode(toUcs4, page, bytes))
                << std::hex << byte;
        }
    }
}

TEST(CodePageTables, EveryPairIsWhatIconvSays) {
    for (const PageCase& page : DoubleBytePages()) {
        SCOPED_TRACE(page.iconvName);
        Converter toUcs4(page.iconvName, "UTF-32BE");
        for (int lead = 0x80; lead <= 0xFF; ++lead) {
            for (int trail = 0; trail <= 0xFF; ++trail) {
                const Bytes bytes = {static_cast<unsigned char>(lead),
                                     static_cast<unsigned char>(trail)};
                ASSERT_EQ(page.codec.Decode(bytes.data(), EndOf(bytes)),
                          ExpectedCode(toUcs4, page, bytes))
                    << std::hex << lead << ' ' << trail;
            }
        }
    }
}

// Every character that comes out of the tables has the class that it has in UTF-8, but for the
// letters of the Windows pages, which are like those of ASCII.
TEST(CodePageTables, EveryCharacterHasTheClassThatItHasInUtf8) {
    constexpr int kLetter = 3, kUnderscore = 32;
    for (const PageCase& page : AllPages()) {
        const bool isWindows = page.codec.Kind() == Xml::detail::CodecKind::SingleByte;
        for (int lead = 0x80; lead <= 0xFF; ++lead) {
            for (int trail = isWindows ? 0xFF : 0; trail <= 0xFF; ++trail) {
                Bytes bytes = {static_cast<unsigned char>(lead)};
                if (!isWindows) bytes.push_back(static_cast<unsigned char>(trail));
                const int code = page.codec.Decode(bytes.data(), EndOf(bytes));
                if (code < 0) continue;
                Bytes utf8;
                encoding_test::AppendUtf8(utf8, code);
                int expected = Xml::detail::Utf8Codec().ClassAt(utf8.data(), EndOf(utf8));
                if (isWindows && expected == kUnderscore) expected = kLetter;
                ASSERT_EQ(page.codec.ClassAt(bytes.data(), EndOf(bytes)), expected)
                    << page.iconvName << std::hex << ' ' << code;
            }
        }
    }
}

// The bytes of all characters, as iconv has them and the differences change them.
std::map<int, Bytes> ExpectedBytes(const PageCase& page) {
    std::map<int, Bytes> expected;
    Converter fromUcs4("UTF-32BE", page.iconvName);
    Converter toUcs4(page.iconvName, "UTF-32BE");
    for (int code = 0; code <= kLastCode; ++code) {
        if (IsSurrogate(code)) continue;
        Bytes ucs4;
        AppendUnit(ucs4, static_cast<unsigned>(code), 4, true);
        const std::optional<Bytes> bytes = fromUcs4(ucs4);
        // Only what comes back: some characters are written as others that look the same.
        if (bytes && CodeOf(toUcs4(*bytes)) == code) expected[code] = *bytes;
    }
    if (page.codec.Kind() == Xml::detail::CodecKind::SingleByte) {
        for (int byte = 0x80; byte <= 0xFF; ++byte) {
            const Bytes bytes = {static_cast<unsigned char>(byte)};
            if (!toUcs4(bytes)) expected[byte] = bytes;
        }
        expected.erase(expected.upper_bound(2123), expected.end());
    }
    for (const Difference& difference : Differences()) {
        if (difference.page != std::string(page.iconvName)) continue;
        const int code = CodeOf(toUcs4(difference.bytes));
        expected.erase(code);
        if (difference.code >= 0) expected[difference.code] = difference.bytes;
    }
    return expected;
}

TEST(CodePageTables, EveryCodePointIsWrittenAsIconvSays) {
    for (const PageCase& page : AllPages()) {
        SCOPED_TRACE(page.iconvName);
        const std::map<int, Bytes> expected = ExpectedBytes(page);
        ASSERT_GT(expected.size(), 200u);
        for (int code = 0; code <= kLastCode; ++code) {
            unsigned char out[2] = {};
            const int length = page.codec.Encode(code, out, out + 2);
            const auto found = expected.find(code);
            if (found == expected.end()) {
                ASSERT_EQ(length, -1) << std::hex << code;
            } else {
                ASSERT_EQ(length, static_cast<int>(found->second.size())) << std::hex << code;
                ASSERT_EQ(Bytes(out, out + length), found->second) << std::hex << code;
            }
        }
    }
}

}  // namespace
