// SPDX-License-Identifier: MIT
#include "encoding/CodecCases.h"
#include "encoding/Detection.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

using namespace Xml::detail;
using encoding_test::Bytes;
using encoding_test::CodecCase;

namespace {

Detection Detect(const Bytes& bytes, const CharCodec& installed = Utf8Codec()) {
    return DetectEncoding(bytes.data(), bytes.size(), installed);
}

TEST(Detection, FollowsTheTable) {
    const struct {
        Bytes bytes;
        const CharCodec& codec;
        int skip;
    } kRows[] = {
        {{0xFE, 0xFF, 0x00, 0x3C}, Utf16BeCodec(), 2},
        {{0xFF, 0xFE, 0x3C, 0x00}, Utf16LeCodec(), 2},
        {{0xFF, 0xFE, 0x00, 0x00}, Ucs4LeCodec(), 4},
        {{0xFF, 0xFD, 0x00, 0x00}, Utf8Codec(), 0},
        {{0xFF, 0xFF, 0x00, 0x00}, Utf8Codec(), 0},
        {{0xEF, 0xBB, 0xBF, 0x3C}, Utf8Codec(), 3},
        {{0xEF, 0xBB, 0xBE, 0x3C}, Utf8Codec(), 0},
        {{0xEF, 0xBA, 0xBF, 0x3C}, Utf8Codec(), 0},
        {{0x00, 0x00, 0xFE, 0xFF}, Ucs4BeCodec(), 4},
        {{0x00, 0x00, 0xFE, 0xFE}, Ucs4BeCodec(), 0},
        {{0x00, 0x00, 0x00, 0x3C}, Ucs4BeCodec(), 0},
        {{0x00, 0x00, 0xFF, 0xFE}, Ucs4BeCodec(), 0},
        {{0x00, 0x3C, 0x00, 0x3F}, Utf16BeCodec(), 0},
        {{0x00, 0x3C, 0xFF, 0xFF}, Utf16BeCodec(), 0},
        {{0x3C, 0x00, 0x00, 0x00}, Ucs4LeCodec(), 0},
        {{0x3C, 0x00, 0x00, 0x3F}, Ucs4LeCodec(), 0},
        {{0x3C, 0x00, 0x3F, 0x00}, Utf16LeCodec(), 0},
        {{0x3C, 0x3F, 0x78, 0x6D}, Utf8Codec(), 0},
        {{0x3C, 0x01, 0x00, 0x00}, Utf8Codec(), 0},
        {{' ', '<', 'a', '>'}, Utf8Codec(), 0},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(testing::PrintToString(row.bytes));
        const Detection found = Detect(row.bytes);
        EXPECT_EQ(found.codec, &row.codec);
        EXPECT_EQ(found.skip, row.skip);
        EXPECT_FALSE(found.ebcdic);
    }
}

// The rules, in another order and form than the code has them.
Detection Expected(const unsigned char (&b)[4], const CharCodec& installed) {
    const bool mark = b[0] == 0xFF && b[1] == 0xFE;
    if (mark && b[2] == 0) return {&Ucs4LeCodec(), 4, false};
    if (mark) return {&Utf16LeCodec(), 2, false};
    if (b[0] == 0xFE) return {&Utf16BeCodec(), 2, false};
    if (b[0] == 0xEF && b[1] == 0xBB && b[2] == 0xBF) return {&Utf8Codec(), 3, false};
    if (b[0] == 0 && b[1] == 0 && b[2] == 0xFE && b[3] == 0xFF) return {&Ucs4BeCodec(), 4, false};
    if (b[0] == 0 && b[1] == 0) return {&Ucs4BeCodec(), 0, false};
    if (b[0] == 0 && b[1] == 0x3C) return {&Utf16BeCodec(), 0, false};
    if (b[0] == 0) return {&installed, 0, false};
    if (b[0] == 0x3C && b[1] == 0 && b[2] == 0) return {&Ucs4LeCodec(), 0, false};
    if (b[0] == 0x3C && b[1] == 0) return {&Utf16LeCodec(), 0, false};
    return {&Utf8Codec(), 0, b[0] == 0x4C};
}

TEST(Detection, FollowsTheRulesForEveryFirstAndSecondByte) {
    const unsigned char kLater[] = {0x00, 0x3C, 0xBF, 0xFE, 0xFF, 'x'};
    for (int first = 0; first <= 0xFF; ++first) {
        for (int second = 0; second <= 0xFF; ++second) {
            for (const unsigned char third : kLater) {
                for (const unsigned char fourth : kLater) {
                    const unsigned char bytes[4] = {static_cast<unsigned char>(first),
                                                    static_cast<unsigned char>(second), third,
                                                    fourth};
                    const Detection found = DetectEncoding(bytes, 4, Latin1Codec());
                    const Detection expected = Expected(bytes, Latin1Codec());
                    ASSERT_EQ(found.codec, expected.codec) << first << ' ' << second;
                    ASSERT_EQ(found.skip, expected.skip) << first << ' ' << second;
                    ASSERT_EQ(found.ebcdic, expected.ebcdic) << first << ' ' << second;
                }
            }
        }
    }
}

TEST(Detection, FewerThanFourBytesAreUtf8WhateverTheyAre) {
    const Bytes kShort[] = {
        {},           {0xFE},        {0xFF, 0xFE},      {0xFE, 0xFF, 0x00}, {0xEF, 0xBB, 0xBF},
        {0, 0, 0xFE}, {'L', 'x', 1}, {0x3C, 0x00, 0x00}};
    for (const Bytes& bytes : kShort) {
        const Detection found = Detect(bytes, Ucs4BeCodec());
        EXPECT_EQ(found.codec, &Utf8Codec());
        EXPECT_EQ(found.skip, 0);
        EXPECT_FALSE(found.ebcdic);
    }
}

TEST(Detection, ANulBeforeAnotherByteKeepsTheInstalledCodec) {
    for (const CodecCase& codecCase : encoding_test::AllCodecs()) {
        EXPECT_EQ(Detect({0x00, 'a', 0x00, 'b'}, codecCase.codec).codec, &codecCase.codec);
    }
}

// Deliberate: the byte after FE is not looked at.
TEST(Detection, TheByteAfterFeIsNotLookedAt) {
    for (int second = 0; second <= 0xFF; ++second) {
        const Detection found = Detect({0xFE, static_cast<unsigned char>(second), 0x00, 0x3C});
        EXPECT_EQ(found.codec, &Utf16BeCodec()) << second;
        EXPECT_EQ(found.skip, 2);
    }
}

// Deliberate: the fourth byte of the mark of UCS-4 is not looked at.
TEST(Detection, TheFourthByteOfTheLittleEndianMarkIsNotLookedAt) {
    for (int fourth = 0; fourth <= 0xFF; ++fourth) {
        const Detection found = Detect({0xFF, 0xFE, 0x00, static_cast<unsigned char>(fourth)});
        EXPECT_EQ(found.codec, &Ucs4LeCodec()) << fourth;
        EXPECT_EQ(found.skip, 4);
    }
}

// Deliberate: the letter L is the less-than sign of EBCDIC.
TEST(Detection, AnInputThatBeginsWithTheLetterLIsEbcdic) {
    EXPECT_TRUE(Detect({'L', 'o', 'r', 'e', 'm'}).ebcdic);
    EXPECT_TRUE(Detect({0x4C, 0x6F, 0xA7, 0x94}).ebcdic);
    EXPECT_FALSE(Detect({'l', 'o', 'r', 'e'}).ebcdic);
}

// What an encoding name does. Each group has its names, whether it is accepted with each detected
// codec, and what is used then.

enum Detected { Ascii, Latin1, Utf8, Utf16Be, Utf16Le, Ucs2Be, Ucs2Le, Ucs4Be, Ucs4Le, kDetected };
// What only a name installs.
enum Page {
    Gb2312 = kDetected,
    EucKr,
    Windows1250,
    Windows1251,
    Windows1252,
    Windows1254,
    Windows1257
};

const CharCodec& CodecOf(int detected) {
    const CharCodec* const codecs[] = {
        &AsciiCodec(),       &Latin1Codec(),      &Utf8Codec(),        &Utf16BeCodec(),
        &Utf16LeCodec(),     &Ucs2BeCodec(),      &Ucs2LeCodec(),      &Ucs4BeCodec(),
        &Ucs4LeCodec(),      &Gb2312Codec(),      &EucKrCodec(),       &Windows1250Codec(),
        &Windows1251Codec(), &Windows1252Codec(), &Windows1254Codec(), &Windows1257Codec()};
    return *codecs[detected];
}

struct Group {
    std::vector<std::string_view> names;
    int result[kDetected];  // the codec from then on, or kRefused
};

constexpr int kRefused = -1;
constexpr int no = kRefused;

// clang-format off
const Group kGroups[] = {
    //                                     detected: Ascii    Latin1   Utf8   Utf16Be  Utf16Le  Ucs2Be  Ucs2Le  Ucs4Be  Ucs4Le
    {{"ASCII", "US-ASCII", "ISO646-US", "iso646-us", "us", "ANSI_X3.4-1968", "ANSI_X3.4_1968",
      "iso-ir-6", "ISO_646.irv:1991", "IBM367", "cp367", "csASCII"},
                                                    {Ascii,   Ascii,   Ascii,  no,      no,      no,     no,     no,     no}},
    {{"UTF-8", "utf-8"},                            {Utf8,    Utf8,    Utf8,   no,      no,      no,     no,     no,     no}},
    {{"ISO-8859-1", "ISO-8859", "iso-8859", "iso-8859-1", "iso-ir-101", "ISO_8859-1", "latin1",
      "latin-1", "l1", "IBM819", "CP819", "csISOLatin1", "ISO_8859-1:1987",
      "ISO-10646-Unicode-Latin1", "csUnicodeLatin1", "ISO-10646"},
                                                    {Latin1,  Latin1,  Latin1, Latin1,  Latin1,  Latin1, Latin1, Latin1, Latin1}},
    {{"UTF-16", "utf-16", "iso-8859-13", "ISO-8859-13", "latin7", "latin-7"},
                                                    {no,      no,      no,     Utf16Be, Utf16Le, no,     no,     no,     no}},
    {{"UTF-16LE", "utf-16le"},                      {no,      no,      no,     no,      Utf16Le, no,     no,     no,     no}},
    {{"UTF-16BE", "utf-16be"},                      {no,      no,      no,     Utf16Be, no,      no,     no,     no,     no}},
    {{"ISO-10646-UCS-2", "iso-10646-ucs-2", "csUnicode"},
                                                    {no,      no,      no,     Ucs2Be,  Ucs2Le,  no,     no,     no,     no}},
    {{"ISO-10646-UCS-4", "iso-10646-ucs-4", "UCS-4", "ucs-4", "UTF-32", "utf-32"},
                                                    {no,      no,      no,     no,      no,      no,     no,     Ucs4Be, Ucs4Le}},
    {{"UTF-32LE", "utf-32le"},                      {no,      no,      no,     no,      no,      no,     no,     no,     Ucs4Le}},
    {{"UTF-32BE", "utf-32be"},                      {no,      no,      no,     no,      no,      no,     no,     Ucs4Be, no}},
    // A code page fits everything.
    {{"gb2312", "GB2312", "csGB2312", "ibm-1383_P110-1999", "ibm-1383_VPUA", "ibm-1383",
      "cp1383", "1383", "EUC-CN", "ibm-eucCN", "hp15CN"},
                                                    {Gb2312, Gb2312, Gb2312, Gb2312, Gb2312, Gb2312, Gb2312, Gb2312, Gb2312}},
    {{"EUC-KR", "euc-kr", "KS_C_5601-1987", "windows-51949", "csEUCKR", "ibm-eucKR", "KSC_5601",
      "5601", "ibm-970_P110_P110-2006_U2", "ibm-970", "ibm-970_VPUA", "cp970", "970"},
                                                    {EucKr, EucKr, EucKr, EucKr, EucKr, EucKr, EucKr, EucKr, EucKr}},
    {{"windows-1250", "Windows-1250", "cp1250", "ANSI1250"},
                                                    {Windows1250, Windows1250, Windows1250, Windows1250, Windows1250, Windows1250, Windows1250, Windows1250, Windows1250}},
    {{"windows-1251", "Windows-1251", "cp1251", "ANSI1251", "ibm-5347_P100-1998", "ibm-5347"},
                                                    {Windows1251, Windows1251, Windows1251, Windows1251, Windows1251, Windows1251, Windows1251, Windows1251, Windows1251}},
    {{"windows-1252", "Windows-1252", "cp1252", "ANSI1252"},
                                                    {Windows1252, Windows1252, Windows1252, Windows1252, Windows1252, Windows1252, Windows1252, Windows1252, Windows1252}},
    {{"windows-1254", "Windows-1254", "cp1254", "ANSI1254", "iso-8859-9", "ISO-8859-9", "latin5",
      "latin-5"},
                                                    {Windows1254, Windows1254, Windows1254, Windows1254, Windows1254, Windows1254, Windows1254, Windows1254, Windows1254}},
    {{"windows-1257", "Windows-1257", "cp1257", "ANSI1257"},
                                                    {Windows1257, Windows1257, Windows1257, Windows1257, Windows1257, Windows1257, Windows1257, Windows1257, Windows1257}},
};
// clang-format on

TEST(EncodingNames, EveryNameIsAcceptedOrRefusedByWhatWasDetected) {
    int names = 0;
    for (const Group& group : kGroups) {
        for (const std::string_view name : group.names) {
            ++names;
            for (int detected = 0; detected < kDetected; ++detected) {
                const int result = group.result[detected];
                const CharCodec* const expected = result == kRefused ? nullptr : &CodecOf(result);
                EXPECT_EQ(ResolveEncodingName(name, CodecOf(detected)), expected)
                    << name << " when detected as " << CodecOf(detected).Name();
            }
        }
    }
    EXPECT_EQ(names, 12 + 2 + 16 + 11 + 13 + 4 + 6 + 4 + 8 + 4 + 6 + 2 + 2 + 3 + 6 + 2 + 2);
}

TEST(EncodingNames, AnyOtherNameKeepsTheDetectedCodec) {
    const char* const kNames[] = {"Utf-8",     "utf8",   "Ascii",     "",        "UTF-16 ",
                                  "iso8859-1", "KOI8-R", "Shift_JIS", "UTF-8\n", "Windows-1253"};
    for (const char* name : kNames) {
        for (int detected = 0; detected < kDetected; ++detected) {
            EXPECT_EQ(ResolveEncodingName(name, CodecOf(detected)), &CodecOf(detected)) << name;
        }
    }
    EXPECT_EQ(ResolveEncodingName(std::string_view("UTF-8\0x", 7), Utf16LeCodec()),
              &Utf16LeCodec());
}

// Deliberate: the Baltic names are in the group of UTF-16.
TEST(EncodingNames, TheBalticNamesWantUtf16) {
    EXPECT_EQ(ResolveEncodingName("iso-8859-13", Utf16LeCodec()), &Utf16LeCodec());
    EXPECT_EQ(ResolveEncodingName("latin7", Utf8Codec()), nullptr);
}

TEST(EncodingNames, Utf8InAUtf16DocumentIsRefused) {
    EXPECT_EQ(ResolveEncodingName("utf-8", Utf16BeCodec()), nullptr);
    EXPECT_EQ(ResolveEncodingName("Utf-8", Utf16BeCodec()), &Utf16BeCodec());
}

}  // namespace
