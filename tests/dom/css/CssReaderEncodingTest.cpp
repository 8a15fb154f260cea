// SPDX-License-Identifier: MIT
// How Dom::CSS::CssReader picks an encoding, and converts text that comes in pieces.
#include <espalier/dom/css/CssReader.h>
#include <espalier/encoding/Encoding.h>

#include "dom/css/CssText.h"
#include "support/PrintAstring.h"
#include "support/TrickleStream.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using Xml::Encoding;
using namespace std::string_literals;

constexpr char kEAcute[] = "\xC3\xA9";

// Writes UTF-16: `high` first or last.
std::string Utf16(std::u16string_view text, bool bigEndian) {
    std::string bytes;
    for (const char16_t unit : text) {
        const char high = static_cast<char>(unit >> 8);
        const char low = static_cast<char>(unit & 0xFF);
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    }
    return bytes;
}

const std::string kLittle = Utf16(u"\u00E9{a:b}", false);
const std::string kBig = Utf16(u"\u00E9{a:b}", true);

std::string FirstSelector(std::string_view bytes, const char* encodingName) {
    support::CssText reader(bytes, encodingName);
    return reader->ReadSelector().str();
}

std::string FirstSelector(std::string_view bytes, Encoding* encoding) {
    support::CssText reader(bytes, encoding);
    return reader->ReadSelector().str();
}

// Reads the rules of a text in reads of at most `most` bytes.
std::string TrickledRules(std::string_view bytes, const char* encodingName, int most) {
    IO::MemoryStream memory(reinterpret_cast<const unsigned char*>(bytes.data()),
                            static_cast<long>(bytes.size()));
    support::TrickleStream stream(memory, most);
    Dom::CSS::CssReader reader(&stream, astring(encodingName));
    return support::RulesOf(reader, bytes.size());
}

}  // namespace

TEST(CssReaderEncoding, IsPickedByNameInAnyCase) {
    constexpr char kTwoLatin1[] =
        "\xC3\x83\xC2\xA9";  // the bytes of U+00E9 in UTF-8, as ISO-8859-1
    const std::string utf8 = kEAcute + "{}"s;
    const struct {
        const char* name;
        const std::string& bytes;
        const char* selector;
    } kCases[] = {
        {"", utf8, kTwoLatin1},           {"ISO-8859-1", utf8, kTwoLatin1},
        {"iso-8859-1", utf8, kTwoLatin1}, {"LATIN1", utf8, kTwoLatin1},
        {"Latin1", utf8, kTwoLatin1},     {"LATIN-1", utf8, kTwoLatin1},
        {"latin-1", utf8, kTwoLatin1},    {"ISO-10646", kLittle, kEAcute},
        {"iso-10646", kLittle, kEAcute},  {"UNICODE", kLittle, kEAcute},
        {"Unicode", kLittle, kEAcute},    {"UTF-16", kLittle, kEAcute},
        {"utf-16", kLittle, kEAcute},     {"UTF-16LE", kLittle, kEAcute},
        {"utf-16le", kLittle, kEAcute},   {"UTF-8", utf8, kEAcute},
        {"utf-8", utf8, kEAcute},         {"anything", utf8, kEAcute},
        {" UTF-16", utf8, kEAcute},       {"UTF16", utf8, kEAcute},
        {"LATIN2", utf8, kEAcute},        {"ISO-8859-15", utf8, kEAcute},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(FirstSelector(c.bytes, c.name), c.selector);
    }
}

TEST(CssReaderEncoding, DeliberateAsciiIsLatin1AndBigEndianIsLittleEndian) {
    EXPECT_EQ(FirstSelector("\xE9{}", "ASCII"), kEAcute);
    EXPECT_EQ(FirstSelector("\xE9{}", "ascii"), kEAcute);
    EXPECT_EQ(FirstSelector(kLittle, "UTF-16BE"), kEAcute);
    EXPECT_EQ(FirstSelector(kLittle, "utf-16be"), kEAcute);
}

TEST(CssReaderEncoding, DeliberateCodePagesAreUtf8) {
    for (const char* const name : {"windows-1252", "GB2312", "EUC-KR", "US-ASCII"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(FirstSelector(kEAcute + "{}"s, name), kEAcute);
    }
}

TEST(CssReaderEncoding, AByteOrderMarkTellsTheOrderOfUtf16) {
    for (const char* const name :
         {"UTF-16", "UTF-16LE", "UTF-16BE", "UNICODE", "ISO-10646", "utf-16"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(FirstSelector("\xFE\xFF" + kBig, name), kEAcute);
        EXPECT_EQ(FirstSelector("\xFF\xFE" + kLittle, name), kEAcute);
    }
}

TEST(CssReaderEncoding, AByteOrderMarkHasTwoBytes) {
    EXPECT_EQ(FirstSelector("\xFF\0p\0{\0}\0"s, "UTF-16"), "\xC3\xBFp");
    EXPECT_EQ(FirstSelector("\xFE\0p\0{\0}\0"s, "UTF-16"), "\xC3\xBEp");
}

TEST(CssReaderEncoding, AByteOrderMarkIsInTheFirstReadOfMoreThanTwoBytes) {
    const std::string text = "\xFF\xFEp\0{\0}\0"s;
    const std::string rules = TrickledRules(text, "UTF-16", 3);
    EXPECT_EQ(rules.substr(0, 1), "p");
    EXPECT_EQ(TrickledRules(text, "UTF-16", 2), "\xEF\xBB\xBF" + rules);
}

TEST(CssReaderEncoding, AByteOrderMarkNeedsAThirdByte) {
    // Two bytes are a text: it is too short to have a mark, and has no brace either.
    support::CssText two("\xFE\xFF", "UTF-16");
    EXPECT_FALSE(two->Read());
    support::CssText marked("\xFE\xFF\0{\0}"s, "UTF-16");
    ASSERT_TRUE(marked->Read());
    EXPECT_EQ(marked->NodeType(), Dom::CSS::CssNodeType::StartDecl);
}

TEST(CssReaderEncoding, DeliberateOtherEncodingsHaveNoByteOrderMark) {
    EXPECT_EQ(FirstSelector("\xEF\xBB\xBFp{}", "UTF-8"), "\xEF\xBB\xBFp");
    EXPECT_EQ(FirstSelector("\xFE\xFFp{}", "ISO-8859-1"), "\xC3\xBE\xC3\xBFp");
}

TEST(CssReaderEncoding, IsGivenByPointer) {
    const std::string utf8 = kEAcute + "{}"s;
    const struct {
        const char* name;
        Encoding* encoding;
        std::string bytes;
        const char* selector;
    } kCases[] = {
        {"UTF8", Encoding::UTF8(), utf8, kEAcute},
        {"Latin1", Encoding::Latin1(), "\xE9{}", kEAcute},
        {"ASCII", Encoding::ASCII(), "\xE9{}", kEAcute},
        {"null", nullptr, "\xE9{}", kEAcute},
        {"Unicode", Encoding::Unicode(), kLittle, kEAcute},
        {"NativeWide", Encoding::NativeWide(), kLittle, kEAcute},
        {"BigEndianUnicode", Encoding::BigEndianUnicode(), kBig, kEAcute},
        {"Windows_1250", Encoding::Windows_1250(), "\xE8{}", "\xC4\x8D"},
        {"Windows_1251", Encoding::Windows_1251(), "\xE6{}", "\xD0\xB6"},
        {"Windows_1252", Encoding::Windows_1252(), "\x80{}", "\xE2\x82\xAC"},
        {"Windows_1254", Encoding::Windows_1254(), "\xFE{}", "\xC5\x9F"},
        {"Windows_1257", Encoding::Windows_1257(), "\xE8{}", "\xC4\x8D"},
        {"GB2312", Encoding::GB2312(), "\xD6\xD0{}", "\xE4\xB8\xAD"},
        {"EUC_KR", Encoding::EUC_KR(), "\xC7\xD1{}", "\xED\x95\x9C"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(FirstSelector(c.bytes, c.encoding), c.selector);
    }
}

TEST(CssReaderEncoding, DeliberateGivenByPointerNoByteOrderMarkIsLookedFor) {
    EXPECT_EQ(FirstSelector("\xFF\xFE" + kLittle, Encoding::Unicode()),
              "\xEF\xBB\xBF" + std::string(kEAcute));
    EXPECT_EQ(FirstSelector("\xFE\xFF" + kBig, Encoding::BigEndianUnicode()),
              "\xEF\xBB\xBF" + std::string(kEAcute));
}

TEST(CssReaderEncoding, EveryByteOfACodePageIsConverted) {
    for (Encoding* const encoding :
         {Encoding::ASCII(), Encoding::Latin1(), Encoding::Windows_1250(), Encoding::Windows_1251(),
          Encoding::Windows_1252(), Encoding::Windows_1254(), Encoding::Windows_1257()}) {
        for (int byte = 0x80; byte <= 0xFF; ++byte) {
            SCOPED_TRACE(testing::Message() << encoding->WebName() << " " << byte);
            const auto source = static_cast<unsigned char>(byte);
            unsigned char converted[8];
            unsigned consumed = 0;
            const unsigned length = Encoding::Convert(encoding, Encoding::UTF8(), &source, 1,
                                                      converted, sizeof converted, consumed);
            const std::string text = static_cast<char>(byte) + "{}"s;
            EXPECT_EQ(FirstSelector(text, encoding),
                      std::string(reinterpret_cast<const char*>(converted), length));
        }
    }
}

TEST(CssReaderEncoding, BytesThatAreNoCharacterAreQuestionMarks) {
    EXPECT_EQ(FirstSelector("a\xFF z{}", "UTF-8"), "a? z");
    EXPECT_EQ(FirstSelector("a\x80 z{}", "UTF-8"), "a? z");
}

TEST(CssReaderEncoding, TheInternalEncodingIsUtf8) {
    EXPECT_EQ(Dom::CSS::CssReader::s_Encoding, Encoding::UTF8());
    Dom::CSS::CssReader::s_Encoding = nullptr;
    EXPECT_EQ(FirstSelector("\xE9{}", "ISO-8859-1"), kEAcute);
    Dom::CSS::CssReader::s_Encoding = Encoding::UTF8();
}

TEST(CssReaderEncoding, AnApplicationMayChooseTheInternalEncoding) {
    struct Choice {
        explicit Choice(Encoding* encoding) { Dom::CSS::CssReader::s_Encoding = encoding; }
        Choice(const Choice&) = delete;
        Choice& operator=(const Choice&) = delete;
        ~Choice() { Dom::CSS::CssReader::s_Encoding = Encoding::UTF8(); }
    };
    const Choice latin1(Encoding::Latin1());
    EXPECT_EQ(FirstSelector("a\xC3\xA9 z{}", "UTF-8"), "a\xE9 z");
    EXPECT_EQ(FirstSelector("a\xE9 z{}", "ISO-8859-1"), "a\xE9 z");
    EXPECT_EQ(FirstSelector(kBig, Encoding::BigEndianUnicode()), "\xE9");
    EXPECT_EQ(FirstSelector("a\xE2\x82\xAC z{}", "UTF-8"), "a? z");  // no euro sign there
    std::string text, rules;
    for (int i = 0; i < 500; ++i) {
        text += "h\xC3\xA9{a:\xC3\xBF}";
        rules += "h\xE9{ a: \xFF }\n";
    }
    for (const int most : {1, 3, 511, 4096})
        EXPECT_TRUE(TrickledRules(text, "UTF-8", most) == rules) << most;
}

TEST(CssReaderEncoding, CharactersSurviveReadsOfAnySize) {
    const std::u16string wide = u"\u00E9 \u20AC > \U0001F600 {a: '\u00E9\u20AC\U0001F600'}";
    const std::string expected =
        "\xC3\xA9 \xE2\x82\xAC > \xF0\x9F\x98\x80 { a: '\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80' }\n";
    const std::string utf8 =
        "\xC3\xA9 \xE2\x82\xAC > \xF0\x9F\x98\x80 {a: '\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80'}";
    for (int most = 1; most <= 9; ++most) {
        SCOPED_TRACE(most);
        EXPECT_EQ(TrickledRules(utf8, "UTF-8", most), expected);
        EXPECT_EQ(TrickledRules(Utf16(wide, false), "UTF-16LE", most), expected);
        // A mark is seen when the first read gives three bytes.
        if (most < 3) continue;
        EXPECT_EQ(TrickledRules("\xFF\xFE" + Utf16(wide, false), "UTF-16", most), expected);
        EXPECT_EQ(TrickledRules("\xFE\xFF" + Utf16(wide, true), "UTF-16", most), expected);
    }
}

TEST(CssReaderEncoding, CharactersSurviveTheBoundariesOfTheBuffer) {
    // 1024 bytes are read at once: each character stands at each place around that, and twice that.
    const char* const characters[] = {"\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"};
    for (const char* const character : characters) {
        for (const std::size_t boundary : {1024U, 2048U}) {
            for (std::size_t before = boundary - 6; before <= boundary + 1; ++before) {
                SCOPED_TRACE(std::string(character) + " at " + std::to_string(before));
                const std::string selector = std::string(before, 'x') + character + "y";
                EXPECT_EQ(FirstSelector(selector + "{}", "UTF-8"), selector);
            }
        }
    }
}

TEST(CssReaderEncoding, ShortCharactersSurviveTheBoundariesOfTheBuffer) {
    // Nothing but characters of one length, so that each piece of output ends within one, too.
    for (const char* const character : {"\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"}) {
        for (std::size_t before = 0; before < 4; ++before) {
            SCOPED_TRACE(std::string(character) + " behind " + std::to_string(before));
            std::string selector(before, 'x');
            for (int i = 0; i < 1500; ++i)
                selector += character;
            EXPECT_EQ(FirstSelector(selector + "{}", "UTF-8"), selector);
        }
    }
}

TEST(CssReaderEncoding, SurrogatePairsSurviveTheBoundariesOfTheBuffer) {
    for (const bool bigEndian : {false, true}) {
        Encoding* const encoding = bigEndian ? Encoding::BigEndianUnicode() : Encoding::Unicode();
        for (std::size_t before = 508; before <= 513; ++before) {
            SCOPED_TRACE(before);
            const std::u16string wide = std::u16string(before, u'x') + u"\U0001F600y{}";
            const std::string expected = std::string(before, 'x') + "\xF0\x9F\x98\x80y";
            EXPECT_EQ(FirstSelector(Utf16(wide, bigEndian), encoding), expected);
            // and with the units themselves cut
            const std::string odd = Utf16(wide, bigEndian);
            IO::MemoryStream memory(reinterpret_cast<const unsigned char*>(odd.data()),
                                    static_cast<long>(odd.size()));
            support::TrickleStream stream(memory, 1023);
            Dom::CSS::CssReader reader(&stream, encoding);
            EXPECT_EQ(reader.ReadSelector(), expected);
        }
    }
}

TEST(CssReaderEncoding, ACharacterThatTheEndCutsIsOneQuestionMark) {
    const struct {
        const char* name;
        std::string tail;
    } kCases[] = {
        {"UTF-8", "\xC3"}, {"UTF-8", "\xE2"},     {"UTF-8", "\xE2\x82"},
        {"UTF-8", "\xF0"}, {"UTF-8", "\xF0\x9F"}, {"UTF-8", "\xF0\x9F\x98"},
    };
    for (const auto& c : kCases) {
        for (const char* const before : {"p{a:", "p{a:b", "p{a:bbbbbbbbbb"}) {
            SCOPED_TRACE(before + c.tail);
            const std::string text = before + c.tail;
            const std::string expected = std::string(before).substr(4) + "?";
            support::CssText reader(text, c.name);
            ASSERT_TRUE(reader.Skip(3));
            EXPECT_EQ(reader->Value(), expected);
            EXPECT_FALSE(reader->Read());
            EXPECT_EQ(TrickledRules(text, c.name, 1), "p{ a: " + expected + " }\n");
        }
    }
    const std::string half = Utf16(u"p{a:b", false);
    for (const std::string& tail : {"\x3D"s, "\x3D\xD8"s, "\x3D\xD8\x00"s}) {
        const std::string text = half + tail;
        support::CssText reader(text, "UTF-16");
        ASSERT_TRUE(reader.Skip(3));
        EXPECT_EQ(reader->Value(), "b?");
        EXPECT_FALSE(reader->Read());
    }
}
