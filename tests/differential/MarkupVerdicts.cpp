// SPDX-License-Identifier: MIT
#include "Verdicts.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace differential {

namespace {

using enum Peers;
using enum Standard;

// Makes a document of `front`, `count` times the letter a, and `back`.
template <std::size_t Count, std::size_t Front, std::size_t Back>
constexpr std::array<char, Count + Front + Back - 2> WithLetters(const char (&front)[Front],
                                                                 const char (&back)[Back]) {
    std::array<char, Count + Front + Back - 2> document{};
    document.fill('a');
    std::copy(front, front + Front - 1, document.begin());
    std::copy(back, back + Back - 1, document.end() - Back + 1);
    return document;
}

constexpr auto kLongestName = WithLetters<1024>("<", "/>");
constexpr auto kLongName = WithLetters<1025>("<", "/>");
constexpr auto kLongestId = WithLetters<1024>("<!DOCTYPE a SYSTEM '", "'><a/>");
constexpr auto kLongId = WithLetters<1025>("<!DOCTYPE a SYSTEM '", "'><a/>");
constexpr auto kLongPublicId = WithLetters<1025>("<!DOCTYPE a PUBLIC '", "' ''><a/>");

template <std::size_t Size>
constexpr std::string_view Text(const std::array<char, Size>& document) {
    return {document.data(), Size};
}

constexpr Verdict kVerdicts[] = {
    // [1] document ::= prolog element Misc*
    {WellFormed, "an empty element", "<a/>"},
    {WellFormed, "an element", "<a></a>"},
    {WellFormed, "white space, comments and instructions around",
     " \n<!--c--><?p?>\t<a/>\r\n<?p?><!--c--> "},
    {Malformed, "nothing", ""},
    {Malformed, "white space alone", " \n"},
    {Malformed, "a comment alone", "<!--c-->"},
    {Malformed, "text alone", "text"},
    {Malformed, "text before the root element", "x<a/>"},
    {Malformed, "text behind the root element", "<a/>x"},
    {Malformed, "a character reference behind the root element", "<a/>&#32;"},
    {Malformed, "a character reference before the root element", "&#32;<a/>"},
    {Malformed, "an entity behind the root element", "<a/>&amp;"},
    {Malformed, "a section before the root element", "<![CDATA[]]><a/>"},
    {Malformed, "a section behind the root element", "<a/><![CDATA[ ]]>"},
    {Malformed, "two root elements", "<a/><b/>", "two-roots"},
    {Malformed, "two root elements with white space between", "<a></a>\n<a></a>", "two-roots"},
    {Malformed, "an end tag behind the root element", "<a/></a>"},
    // [3] S
    {WellFormed, "all white space in tags", "<a\tx='1'\ny='2'\r\nz='3'\r></a\n>"},
    {Malformed, "a form feed as white space", "<a\fx='1'/>"},
    {Malformed, "NEL as white space", "<a\xC2\x85x='1'/>"},
    // [14] CharData
    {WellFormed, "brackets in a text", "<a>]] ]> ] ></a>"},
    {Malformed, "the end of a section in a text", "<a>]]></a>"},
    {Malformed, "the end of a section behind brackets", "<a>]]]]]></a>"},
    {WellFormed, "the end of a section with a reference", "<a>]]&gt;</a>"},
    {WellFormed, "the end of a section in a value", "<a x=']]>'/>"},
    {Malformed, "a bare ampersand", "<a>a & b</a>"},
    {Malformed, "an ampersand at the end", "<a>&</a>"},
    {Malformed, "a bare less-than sign", "<a>1 < 2</a>"},
    {WellFormed, "a bare greater-than sign", "<a>1 > 2</a>"},
    // [15] Comment
    {WellFormed, "an empty comment", "<a><!----></a>"},
    {WellFormed, "one hyphen in a comment", "<a><!-- - -a- --></a>"},
    {WellFormed, "markup in a comment", "<a><!-- <b> &e; ]]> <?x --></a>"},
    {Malformed, "two hyphens in a comment", "<a><!-- -- --></a>"},
    {Malformed, "three hyphens at the end", "<a><!-- ---></a>"},
    {Malformed, "a comment of a hyphen", "<a><!---></a>"},
    {Malformed, "an open comment", "<a><!-- </a>"},
    {Malformed, "a comment that is hardly open", "<a><!- - --></a>"},
    {Malformed, "a comment in a tag", "<a <!-- c -->></a>"},
    // [16] PI
    {WellFormed, "an instruction without data", "<a><?p?></a>"},
    {WellFormed, "an instruction with data", "<a><?p a?b > ?\?></a>"},
    {WellFormed, "an instruction with white space only", "<a><?p  ?></a>"},
    {Malformed, "an instruction without a target", "<a><? p?></a>"},
    {Malformed, "an instruction of nothing", "<a><?\?></a>"},
    {Malformed, "no white space behind the target", "<a><?p+x?></a>"},
    {Malformed, "an open instruction", "<a><?p ></a>"},
    {Malformed, "the target XML", "<a><?XML x?></a>"},
    {Malformed, "the target Xml", "<a><?Xml?></a>"},
    {WellFormed, "a target that begins like xml", "<?xml-stylesheet href='x'?><a/>"},
    {WellFormed, "a target that begins with xml1", "<?xml1?><a/>"},
    {Malformed, "a target that begins with a digit", "<a><?1p?></a>"},
    // Lengths
    {WellFormed, "a name of 1024 bytes", Text(kLongestName)},
    {WellFormed, "a name of 1025 bytes", Text(kLongName), "limits"},
    {WellFormed, "a system identifier of 1024 bytes", Text(kLongestId)},
    {WellFormed, "a system identifier of 1025 bytes", Text(kLongId), "limits"},
    {WellFormed, "a public identifier of 1025 bytes", Text(kLongPublicId), "limits"},
    // [18] CDSect
    {WellFormed, "a section", "<a><![CDATA[<b>&e;]] ]> --]]></a>"},
    {WellFormed, "an empty section", "<a><![CDATA[]]></a>"},
    {WellFormed, "a section that ends in brackets", "<a><![CDATA[]]]]></a>"},
    {Malformed, "an open section", "<a><![CDATA[ ]] ></a>"},
    {Malformed, "a section in small letters", "<a><![cdata[]]></a>"},
    {Malformed, "white space in the start of a section", "<a><![CDATA []]></a>"},
    {Malformed, "a section in a section", "<a><![CDATA[<![CDATA[]]>]]></a>"},
    // [23] XMLDecl
    {WellFormed, "a declaration", "<?xml version='1.0'?><a/>"},
    {WellFormed, "all of a declaration",
     "<?xml version=\"1.0\" encoding='UTF-8' standalone='yes' ?><a/>"},
    {WellFormed, "white space around the equals signs",
     "<?xml\nversion = '1.0'\tstandalone= 'no'?><a/>"},
    {Malformed, "a declaration behind white space", " <?xml version='1.0'?><a/>"},
    {Malformed, "a declaration behind a comment", "<!--c--><?xml version='1.0'?><a/>"},
    {Malformed, "a declaration in the content", "<a><?xml version='1.0'?></a>"},
    {Malformed, "two declarations", "<?xml version='1.0'?><?xml version='1.0'?><a/>"},
    {Malformed, "a declaration of nothing", "<?xml?><a/>"},
    {Malformed, "no version", "<?xml encoding='UTF-8'?><a/>"},
    {Malformed, "standalone before the encoding",
     "<?xml version='1.0' standalone='yes' encoding='UTF-8'?><a/>"},
    {Malformed, "encoding before the version", "<?xml encoding='UTF-8' version='1.0'?><a/>"},
    {Malformed, "the version twice", "<?xml version='1.0' version='1.0'?><a/>"},
    {Malformed, "an unknown part", "<?xml version='1.0' valid='no'?><a/>"},
    {Malformed, "standalone in capitals", "<?xml version='1.0' standalone='YES'?><a/>"},
    {Malformed, "no quotation marks", "<?xml version=1.0?><a/>"},
    {Malformed, "different quotation marks", "<?xml version='1.0\"?><a/>"},
    {Malformed, "an empty version", "<?xml version=''?><a/>", "", ExpatDiffers},
    {Malformed, "another version", "<?xml version='2.0'?><a/>", "", ExpatDiffers},
    {WellFormed, "version 1.1", "<?xml version='1.1'?><a/>", "versions"},
    {WellFormed, "version 1.9", "<?xml version='1.9'?><a/>", "versions"},
    {Malformed, "no white space before the encoding", "<?xml version='1.0'encoding='UTF-8'?><a/>",
     "spaces"},
    {Malformed, "an encoding that begins with a digit", "<?xml version='1.0' encoding='8bit'?><a/>",
     "encodings"},
    {Malformed, "an encoding that is none", "<?xml version='1.0' encoding='a b'?><a/>",
     "encodings"},
    {Malformed, "an encoding that nobody knows", "<?xml version='1.0' encoding='nobody'?><a/>",
     "encodings"},
    {Malformed, "a declaration in capitals", "<?XML version='1.0'?><a/>"},
    {Malformed, "no end of the declaration", "<?xml version='1.0'><a/>"},
    // [39] element to [42] ETag
    {WellFormed, "nested elements", "<a><b><c/></b><b/></a>"},
    {WellFormed, "white space at the end of tags", "<a ><b /></a >"},
    {Malformed, "an end tag with another name", "<a></b>"},
    {Malformed, "an end tag in other letters", "<a></A>"},
    {Malformed, "elements that overlap", "<a><b></a></b>"},
    {Malformed, "no end tag", "<a><b></b>"},
    {Malformed, "a text without an end tag", "<a>text"},
    {Malformed, "an end tag without a start tag", "</a>"},
    {Malformed, "white space before the name", "< a/>"},
    {Malformed, "white space before the name of an end tag", "<a></ a>"},
    {Malformed, "white space in the end of an empty element", "<a/ >"},
    {Malformed, "an attribute in an end tag", "<a></a x='1'>"},
    {Malformed, "a slash in an end tag", "<a></a/>"},
    {Malformed, "an open tag", "<a"},
    {Malformed, "an open tag with an attribute", "<a x='1'"},
    {Malformed, "a tag without a name", "<></>"},
    {Malformed, "a tag in a tag", "<a <b/>></a>"},
    {Malformed, "a declaration in the content", "<a><!ELEMENT a ANY></a>"},
    // [41] Attribute
    {WellFormed, "both quotation marks", "<a x='\"' y=\"'\"/>"},
    {WellFormed, "white space around the equals sign", "<a x = '1' y\n=\n'2'/>"},
    {WellFormed, "an empty value", "<a x=''/>"},
    {WellFormed, "a greater-than sign and a slash in a value", "<a x='/>' y='>'/>"},
    {Malformed, "the same attribute twice", "<a x='1' x='1'/>"},
    {WellFormed, "the same attribute in other letters", "<a x='1' X='1'/>"},
    {Malformed, "no value", "<a x/>"},
    {Malformed, "no value behind the equals sign", "<a x=/>"},
    {Malformed, "no quotation marks in a tag", "<a x=1/>"},
    {Malformed, "no name of an attribute", "<a ='1'/>"},
    {Malformed, "a value that does not end", "<a x='1/>"},
    {Malformed, "different quotation marks in a tag", "<a x='1\"/>"},
    {Malformed, "a less-than sign in a value", "<a x='<'/>"},
    {Malformed, "an ampersand in a value", "<a x='a & b'/>"},
    {Malformed, "no white space between attributes", "<a x='1'y='2'/>", "spaces"},
    {Malformed, "no white space behind the name", "<a\"x\"/>"},
    {Malformed, "a comma between attributes", "<a x='1', y='2'/>"},
    {Malformed, "a name that begins with a digit", "<a 1x='1'/>"},
    // xml:space and xml:lang
    {WellFormed, "xml:space", "<a xml:space='preserve'><b xml:space='default'/></a>"},
    {WellFormed, "another value of xml:space", "<a xml:space='keep'/>", "space"},
    {WellFormed, "no value of xml:space", "<a xml:space=''/>", "space"},
    {WellFormed, "xml:lang", "<a xml:lang='en'><b xml:lang='zh-Hans-CN'/><b xml:lang=''/></a>"},
    {WellFormed, "a language with an underscore", "<a xml:lang='pt_BR'/>", "languages"},
    {WellFormed, "a language that is too long", "<a xml:lang='portuguese'/>", "languages"},
    {WellFormed, "a language with a blank", "<a xml:lang=' en'/>", "languages"},
};

}  // namespace

std::span<const Verdict> MarkupVerdicts() { return kVerdicts; }

}  // namespace differential
