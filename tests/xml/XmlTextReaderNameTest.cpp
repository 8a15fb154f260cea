// SPDX-License-Identifier: MIT
#include <espalier/xml/XmlTextReader.h>

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using Xml::XmlTextReader;

constexpr bool kColonAllowed = true;
constexpr bool kColonRefused = false;

bool IsAsciiLetter(int c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
bool IsNameStart(int c) { return IsAsciiLetter(c) || c == '_'; }
bool IsNameChar(int c) { return IsNameStart(c) || (c >= '0' && c <= '9') || c == '-' || c == '.'; }

TEST(XmlTextReaderName, EveryAsciiCharacterAsTheFirst) {
    for (int c = 0; c < 0x80; ++c) {
        SCOPED_TRACE(c);
        const std::string name(1, static_cast<char>(c));
        EXPECT_EQ(XmlTextReader::IsName(name, kColonRefused), IsNameStart(c));
        EXPECT_EQ(XmlTextReader::IsName(name, kColonAllowed), IsNameStart(c) || c == ':');
        if (c != ':') {
            EXPECT_EQ(XmlTextReader::IsNameToken(name), IsNameChar(c));
        }
    }
}

TEST(XmlTextReaderName, EveryAsciiCharacterAfterTheFirst) {
    for (int c = 0; c < 0x80; ++c) {
        SCOPED_TRACE(c);
        const std::string name = std::string("a") + static_cast<char>(c) + "b";
        EXPECT_EQ(XmlTextReader::IsName(name, kColonRefused), IsNameChar(c));
        EXPECT_EQ(XmlTextReader::IsName(name, kColonAllowed), IsNameChar(c) || c == ':');
        if (c != ':') {
            EXPECT_EQ(XmlTextReader::IsNameToken(name), IsNameChar(c));
        }
    }
}

TEST(XmlTextReaderName, CharactersBeyondAscii) {
    const struct {
        const char* text;
        bool isName;
        bool isToken;
        const char* what;
    } kCases[] = {
        {"\xC3\xA9", true, true, "LATIN SMALL LETTER E WITH ACUTE"},
        {"\xC3\x97", false, false, "MULTIPLICATION SIGN"},
        {"\xC3\xB7", false, false, "DIVISION SIGN"},
        {"\xCE\xB1", true, true, "GREEK SMALL LETTER ALPHA"},
        {"\xD0\xB4", true, true, "CYRILLIC SMALL LETTER DE"},
        {"\xD7\x90", true, true, "HEBREW LETTER ALEF"},
        {"\xEA\xB0\x80", true, true, "HANGUL SYLLABLE GA"},
        {"\xED\x9E\xA3", true, true, "HANGUL SYLLABLE HIH, the last letter of all"},
        {"\xE3\x81\x82", true, true, "HIRAGANA LETTER A"},
        {"\xCC\x81", false, true, "COMBINING ACUTE ACCENT"},
        {"\xD9\xA0", false, true, "ARABIC-INDIC DIGIT ZERO"},
        // Deliberate: ideographs and extenders are not name characters.
        {"\xE4\xB8\x80", false, false, "ideograph"},
        {"\xE3\x80\x87", false, false, "IDEOGRAPHIC NUMBER ZERO"},
        {"\xC2\xB7", false, false, "MIDDLE DOT, an extender"},
        {"\xC2\xA0", false, false, "NO-BREAK SPACE"},
        {"\xE2\x82\xAC", false, false, "EURO SIGN"},
        {"\xF0\x90\x80\x80", false, false, "LINEAR B SYLLABLE B008 A"},
        {"\xF0\x9F\x98\x80", false, false, "GRINNING FACE"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(XmlTextReader::IsName(c.text, kColonRefused), c.isName);
        EXPECT_EQ(XmlTextReader::IsNameToken(c.text), c.isToken);
        const std::string inside = std::string("a") + c.text + "b";
        EXPECT_EQ(XmlTextReader::IsName(inside, kColonRefused), c.isToken);
        EXPECT_EQ(XmlTextReader::IsNameToken(inside), c.isToken);
    }
}

TEST(XmlTextReaderName, WholeNames) {
    const struct {
        const char* text;
        bool isName;
        bool isNameWithColon;
    } kCases[] = {
        {"", false, false},     {"a", true, true},      {"xml-stylesheet", true, true},
        {"p:a", false, true},   {":a", false, true},    {"a:", false, true},
        {"a:b:c", false, true}, {"a b", false, false},  {" a", false, false},
        {"a ", false, false},   {"1a", false, false},   {"-a", false, false},
        {"a\n", false, false},  {"_1.2-3", true, true}, {"\xCE\xB1\xCE\xB2", true, true},
        {"a<", false, false},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(XmlTextReader::IsName(c.text, kColonRefused), c.isName);
        EXPECT_EQ(XmlTextReader::IsName(c.text, kColonAllowed), c.isNameWithColon);
    }
}

TEST(XmlTextReaderName, WholeNameTokens) {
    for (const char* token : {"1", "-", ".", "1-2", "a", "-a.b_c", "\xCC\x81"}) {
        EXPECT_TRUE(XmlTextReader::IsNameToken(token)) << token;
    }
    for (const char* token : {"", " ", "a b", "a,b", "1 ", "a\t"}) {
        EXPECT_FALSE(XmlTextReader::IsNameToken(token)) << token;
    }
}

TEST(XmlTextReaderName, AColonMayStandAnywhereInANameToken) {
    for (const char* token : {":", "a:b", ":a", "a:", "1:-", "::"}) {
        EXPECT_TRUE(XmlTextReader::IsNameToken(token)) << token;
    }
}

TEST(XmlTextReaderName, InvalidBytesAreNoName) {
    const std::string_view kTexts[] = {
        {"a\0", 2},  {"\0", 1},        {"a\xFF", 2},         {"a\xC3", 2},
        {"\xC3", 1}, {"a\xC0\xAF", 3}, {"a\xED\xA0\x80", 4}, {"\xE4\xB8", 2},
    };
    for (const std::string_view text : kTexts) {
        EXPECT_FALSE(XmlTextReader::IsName(text, kColonAllowed));
        EXPECT_FALSE(XmlTextReader::IsNameToken(text));
    }
}

TEST(XmlTextReaderName, NamesOfAnyLength) {
    EXPECT_TRUE(XmlTextReader::IsName(std::string(100000, 'a'), kColonRefused));
    EXPECT_FALSE(XmlTextReader::IsName(std::string(100000, 'a') + " ", kColonRefused));
    EXPECT_TRUE(XmlTextReader::IsNameToken(std::string(100000, '1')));
}

}  // namespace
