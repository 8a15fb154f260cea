// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>

// The class of a character decides what the scanner does with it. The classes of ASCII stand in one
// table; for UTF-8 the same table goes on with the classes of lead and continuation bytes. The
// characters above ASCII are classified by bitmaps of XML 1.0 (fourth edition), Appendix B.

namespace Xml::detail {

/// What a character, or a byte of UTF-8, is to the scanner.
enum class CharClass : unsigned char {
    End = 0,             ///< no byte is left
    Invalid = 1,         ///< bytes that are no character, and control characters
    Partial = 2,         ///< the bytes stop inside the character
    Letter = 3,          ///< G to Z and g to z
    Digit = 4,           ///< 0 to 9, and the digits of Appendix B
    HexLetter = 5,       ///< A to F and a to f
    Blank = 6,           ///< tab and space
    CarriageReturn = 7,  ///< CR
    LineFeed = 8,        ///< LF
    Less = 9,            ///< <
    Greater = 10,        ///< >
    Quote = 11,          ///< "
    Hash = 12,           ///< #
    Ampersand = 13,      ///< &
    Apostrophe = 14,     ///< '
    Equals = 15,         ///< =
    Plus = 16,           ///< +
    Minus = 17,          ///< -
    Exclamation = 18,    ///< !
    Percent = 19,        ///< %
    OpenParen = 20,      ///< (
    CloseParen = 21,     ///< )
    Asterisk = 22,       ///< *
    Comma = 23,          ///< ,
    Slash = 24,          ///< /
    Colon = 25,          ///< :
    Semicolon = 26,      ///< ;
    Question = 27,       ///< ?
    OpenBracket = 28,    ///< [
    CloseBracket = 29,   ///< ]
    Bar = 30,            ///< |
    Period = 31,         ///< . and the combining characters of Appendix B
    Underscore = 32,     ///< _ and the base characters of Appendix B
    Other = 33,          ///< any other character
    Continuation = 35,   ///< UTF-8: 80 to BF
    Lead2 = 36,          ///< UTF-8: C0 to DF; the class minus 34 is the length of the sequence
    Lead3 = 37,          ///< UTF-8: E0 to EF
    Lead4 = 38,          ///< UTF-8: F0 to F7
    Lead5 = 39,          ///< UTF-8: F8 to FB
    Lead6 = 40           ///< UTF-8: FC and FD
};

/// Returns the number of a class, as the operations of CharCodec give it.
constexpr int ToInt(CharClass charClass) { return static_cast<int>(charClass); }

/// Gives `charClass` to the codes from `first` to `last`.
struct ClassRange {
    int first;
    int last;
    CharClass charClass;
};

// clang-format off
inline constexpr ClassRange kAsciiRanges[] = {  // a later range overrides an earlier one
    {0x00, 0x1F, CharClass::Invalid},    {'\t', '\t', CharClass::Blank},
    {'\n', '\n', CharClass::LineFeed},   {'\r', '\r', CharClass::CarriageReturn},
    {' ',  ' ',  CharClass::Blank},      {'!',  '!',  CharClass::Exclamation},
    {'"',  '"',  CharClass::Quote},      {'#',  '#',  CharClass::Hash},
    {'$',  '$',  CharClass::Other},      {'%',  '%',  CharClass::Percent},
    {'&',  '&',  CharClass::Ampersand},  {'\'', '\'', CharClass::Apostrophe},
    {'(',  '(',  CharClass::OpenParen},  {')',  ')',  CharClass::CloseParen},
    {'*',  '*',  CharClass::Asterisk},   {'+',  '+',  CharClass::Plus},
    {',',  ',',  CharClass::Comma},      {'-',  '-',  CharClass::Minus},
    {'.',  '.',  CharClass::Period},     {'/',  '/',  CharClass::Slash},
    {'0',  '9',  CharClass::Digit},      {':',  ':',  CharClass::Colon},
    {';',  ';',  CharClass::Semicolon},  {'<',  '<',  CharClass::Less},
    {'=',  '=',  CharClass::Equals},     {'>',  '>',  CharClass::Greater},
    {'?',  '?',  CharClass::Question},   {'@',  '@',  CharClass::Other},
    {'A',  'F',  CharClass::HexLetter},  {'G',  'Z',  CharClass::Letter},
    {'[',  '[',  CharClass::OpenBracket}, {'\\', '\\', CharClass::Other},
    {']',  ']',  CharClass::CloseBracket}, {'^', '^',  CharClass::Other},
    {'_',  '_',  CharClass::Underscore}, {'`',  '`',  CharClass::Other},
    {'a',  'f',  CharClass::HexLetter},  {'g',  'z',  CharClass::Letter},
    {'{',  '{',  CharClass::Other},      {'|',  '|',  CharClass::Bar},
    {'}',  '}',  CharClass::Other},      {'~',  0x7F, CharClass::Other},
};

inline constexpr ClassRange kUtf8ByteRanges[] = {
    {0x80, 0xBF, CharClass::Continuation},
    {0xC0, 0xDF, CharClass::Lead2},
    {0xE0, 0xEF, CharClass::Lead3},
    {0xF0, 0xF7, CharClass::Lead4},
    {0xF8, 0xFB, CharClass::Lead5},
    {0xFC, 0xFD, CharClass::Lead6},
    {0xFE, 0xFF, CharClass::Invalid},
};

// The table of the single-byte codecs is fixed by itself: it takes the feminine and masculine
// ordinals and the micro sign as name characters, and no accented letter.
inline constexpr ClassRange kLatin1UpperRanges[] = {
    {0x80, 0xFF, CharClass::Other},
    {0xAA, 0xAA, CharClass::Underscore},
    {0xB5, 0xB5, CharClass::Underscore},
    {0xB7, 0xB7, CharClass::Period},
    {0xBA, 0xBA, CharClass::Underscore},
};
// clang-format on

/// Spreads ranges over a table, the first list first.
template <std::size_t Size, std::size_t Count, std::size_t UpperCount>
consteval std::array<CharClass, Size> MakeClassTable(const ClassRange (&ranges)[Count],
                                                     const ClassRange (&upper)[UpperCount]) {
    std::array<CharClass, Size> table{};
    auto spread = [&table](const ClassRange& range) {
        for (int code = range.first; code <= range.last && code < static_cast<int>(Size); ++code) {
            table[static_cast<std::size_t>(code)] = range.charClass;
        }
    };
    for (const ClassRange& range : ranges)
        spread(range);
    for (const ClassRange& range : upper)
        spread(range);
    return table;
}

/// The class of each ASCII code.
inline constexpr auto kAsciiClass = MakeClassTable<128>(kAsciiRanges, kUtf8ByteRanges);
/// The class of each byte of UTF-8.
inline constexpr auto kUtf8ByteClass = MakeClassTable<256>(kAsciiRanges, kUtf8ByteRanges);
/// The class of each byte of ISO-8859-1 and ASCII.
inline constexpr auto kLatin1Class = MakeClassTable<256>(kAsciiRanges, kLatin1UpperRanges);

static_assert(kAsciiClass[0] == CharClass::Invalid);
static_assert(kAsciiClass['\t'] == CharClass::Blank);
static_assert(kAsciiClass['F'] == CharClass::HexLetter);
static_assert(kAsciiClass['G'] == CharClass::Letter);
static_assert(kAsciiClass[0x7F] == CharClass::Other);
static_assert(kUtf8ByteClass[0xC2] == CharClass::Lead2);
static_assert(kUtf8ByteClass[0xFD] == CharClass::Lead6);
static_assert(kUtf8ByteClass[0xFE] == CharClass::Invalid);
static_assert(kLatin1Class[0xB7] == CharClass::Period);
static_assert(kLatin1Class[0xFF] == CharClass::Other);

/// Returns the class of an ASCII code (0 to 127).
constexpr CharClass ClassOfAscii(unsigned code) { return kAsciiClass[code]; }

/// Returns the class that the bitmaps of Appendix B give to a character: Underscore for a base
/// character, Period for a combining character, Digit, or Other. Any number may be asked.
int ClassOfScalarValue(int code);

}  // namespace Xml::detail
