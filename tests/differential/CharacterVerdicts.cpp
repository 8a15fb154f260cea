// SPDX-License-Identifier: MIT
#include "Verdicts.h"

namespace differential {

namespace {

using enum Peers;
using enum Standard;
using namespace std::string_view_literals;

constexpr Verdict kVerdicts[] = {
    // [2] Char
    {WellFormed, "tab, line feed and carriage return", "<a>\t\n\r</a>"},
    {Malformed, "a NUL", "<a>\0</a>"sv},
    {Malformed, "a control character", "<a>\x01</a>"},
    {Malformed, "a form feed", "<a>\f</a>"},
    {Malformed, "an escape character in a comment", "<a><!--\x1B--></a>"},
    {Malformed, "a control character in a value", "<a x='\x1F'/>"},
    {Malformed, "a control character in an instruction", "<a><?p \x02?></a>"},
    {Malformed, "a control character in a section", "<a><![CDATA[\x03]]></a>"},
    {WellFormed, "DEL", "<a>\x7F</a>"},
    {WellFormed, "a C1 control character", "<a>\xC2\x80\xC2\x85\xC2\x9F</a>"},
    {WellFormed, "the last characters below the surrogates and above",
     "<a>\xED\x9F\xBF\xEE\x80\x80</a>"},
    {WellFormed, "U+FFFD", "<a>\xEF\xBF\xBD</a>"},
    {Malformed, "U+FFFE", "<a>\xEF\xBF\xBE</a>", "noncharacters"},
    {Malformed, "U+FFFF", "<a>\xEF\xBF\xBF</a>", "noncharacters"},
    {WellFormed, "U+FDD0, which is no character of Unicode", "<a>\xEF\xB7\x90</a>"},
    {WellFormed, "U+1FFFE, which is no character of Unicode", "<a>\xF0\x9F\xBF\xBE</a>"},
    {WellFormed, "U+10FFFF", "<a>\xF4\x8F\xBF\xBF</a>"},
    // UTF-8
    {WellFormed, "two, three and four bytes", "<a>\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80</a>"},
    {Malformed, "a surrogate", "<a>\xED\xA0\x80</a>"},
    {Malformed, "a pair of surrogates", "<a>\xED\xA0\xBD\xED\xB8\x80</a>"},
    {Malformed, "above U+10FFFF", "<a>\xF4\x90\x80\x80</a>"},
    {Malformed, "two bytes that one can say", "<a>\xC1\xA1</a>"},
    {Malformed, "three bytes that two can say", "<a>\xE0\x83\xA9</a>"},
    {Malformed, "a continuation byte alone", "<a>\x80</a>"},
    {Malformed, "a lead byte alone", "<a>\xC3</a>"},
    {Malformed, "five bytes", "<a>\xF8\x88\x80\x80\x80</a>"},
    {Malformed, "the byte FF", "<a>\xFF</a>"},
    // Marks and encodings
    {WellFormed, "a byte order mark", "\xEF\xBB\xBF<a/>"},
    {WellFormed, "a byte order mark before a declaration", "\xEF\xBB\xBF<?xml version='1.0'?><a/>"},
    {Malformed, "two byte order marks", "\xEF\xBB\xBF\xEF\xBB\xBF<a/>"},
    {WellFormed, "UTF-16 with a mark, little-endian", "\xFF\xFE<\0a\0/\0>\0"sv},
    {WellFormed, "UTF-16 with a mark, big-endian", "\xFE\xFF\0<\0a\0/\0>"sv},
    {Malformed, "half a character of UTF-16", "\xFF\xFE<\0a\0/\0>\0x"sv, "cut", LibxmlDiffers},
    {Malformed, "half a character of UTF-8 at the end", "<a/>\xC3", "cut"},
    {Malformed, "a lone surrogate in UTF-16", "\xFF\xFE<\0a\0>\0\x00\xD8<\0/\0a\0>\0"sv},
    {Malformed, "UTF-16 declared in UTF-8", "<?xml version='1.0' encoding='UTF-16'?><a/>"},
    {Malformed, "half a pair before another character in UTF-16",
     "\xFF\xFE<\0p\0>\0\x00\xD8x\0<\0/\0p\0>\0"sv, "", ExpatDiffers},
    {WellFormed, "ISO-8859-1", "<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE9</a>"},
    {Malformed, "ASCII beyond ASCII", "<?xml version='1.0' encoding='US-ASCII'?><a>\xE9</a>",
     "ascii"},
    {WellFormed, "the name of the encoding in small letters",
     "<?xml version='1.0' encoding='utf-8'?><a/>"},
    {WellFormed, "the name of the encoding in mixed letters",
     "<?xml version='1.0' encoding='Iso-8859-1'?><a>\xE9</a>", "spellings"},
    // [5] Name
    {WellFormed, "all ASCII in names", "<_a-Z.0 b-1='' _=''/>"},
    {Malformed, "a name that begins with a hyphen", "<-a/>"},
    {Malformed, "a name that begins with a full stop", "<.a/>"},
    {Malformed, "a name that begins with a digit", "<1/>"},
    {Malformed, "a dollar sign in a name", "<a$/>"},
    {Malformed, "an at sign in an attribute's name", "<a x@y=''/>"},
    {WellFormed, "letters of Latin, Greek and Cyrillic",
     "<\xC3\xA9t\xC3\xA9 \xCE\xB1=''><\xD0\xB6/></\xC3\xA9t\xC3\xA9>"},
    {WellFormed, "letters of Hebrew, Arabic and Thai",
     "<\xD7\x90><\xD8\xA7/><\xE0\xB8\x81/></\xD7\x90>"},
    {WellFormed, "Hangul", "<\xED\x95\x9C/>"},
    {WellFormed, "Hiragana", "<\xE3\x81\x82/>"},
    {WellFormed, "a combining character in a name", "<e\xCC\x81/>"},
    {Malformed, "a combining character at the start of a name", "<\xCC\x81 e/>"},
    {WellFormed, "a digit that is not ASCII in a name", "<a\xD9\xA1/>"},
    {WellFormed, "a digit that is not ASCII at the start of a name", "<\xD9\xA1/>", "names",
     ExpatDiffers},
    {Malformed, "the multiplication sign in a name", "<a\xC3\x97/>"},
    {WellFormed, "an ideograph", "<\xE4\xB8\xAD/>", "names"},
    {WellFormed, "an ideograph in an attribute's name", "<a \xE4\xB8\xAD=''/>", "names"},
    {WellFormed, "an ideograph in an instruction", "<a><?\xE4\xB8\xAD?></a>", "names"},
    {WellFormed, "the middle dot in a name", "<a\xC2\xB7/>", "names"},
    {WellFormed, "an iteration mark in a name", "<\xE3\x81\x82\xE3\x82\x9D/>", "names"},
    {WellFormed, "Amharic, which is in no table of the fourth edition", "<\xE1\x88\x80/>", "names",
     ExpatDiffers},
    {WellFormed, "beyond the BMP", "<\xF0\x90\x90\x80/>", "names", ExpatDiffers},
    {WellFormed, "an accented letter in ISO-8859-1",
     "<?xml version='1.0' encoding='ISO-8859-1'?><\xE9/>", "names"},
    // [66] CharRef
    {WellFormed, "decimal and hexadecimal", "<a>&#65;&#x41;&#x0000041;&#x1f600;&#x1F600;</a>"},
    {WellFormed, "the first and the last ones",
     "<a>&#9;&#10;&#13;&#32;&#xD7FF;&#xE000;&#xFFFD;&#x10000;&#x10FFFF;</a>"},
    {Malformed, "a reference to NUL", "<a>&#0;</a>"},
    {Malformed, "a reference to a control character", "<a>&#31;</a>"},
    {Malformed, "a reference to a surrogate", "<a>&#xD800;</a>"},
    {Malformed, "a reference to U+FFFE", "<a>&#xFFFE;</a>"},
    {Malformed, "a reference above U+10FFFF", "<a>&#x110000;</a>"},
    {Malformed, "a reference far above", "<a>&#99999999999999999999;</a>"},
    {Malformed, "no digits", "<a>&#;</a>"},
    {Malformed, "no hexadecimal digits", "<a>&#x;</a>"},
    {Malformed, "a capital X", "<a>&#X41;</a>"},
    {Malformed, "a hexadecimal digit in a decimal reference", "<a>&#4A;</a>"},
    {Malformed, "no semicolon", "<a>&#65 </a>"},
    {Malformed, "white space in a reference", "<a>&# 65;</a>"},
    {Malformed, "a minus sign", "<a>&#-65;</a>"},
    {Malformed, "a reference to a control character in a value", "<a x='&#1;'/>"},
};

}  // namespace

std::span<const Verdict> CharacterVerdicts() { return kVerdicts; }

}  // namespace differential
