// SPDX-License-Identifier: MIT
//
// Every refusal of the reader in one table. The places are the scanner's when it finds the error:
// after a token that it consumed, at a character that cannot be one, at the end of the input. Rows
// say kAny where more than one place would be as good.
#include <espalier/xml/XmlEntityHandling.h>

#include "support/EscapedText.h"
#include "support/NodeDump.h"
#include "support/Refusal.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using support::Cause;
using support::ExpectRefusal;
using support::ExpectRefusals;
using support::ReaderSettings;
using support::Refusal;
using support::WithEntities;
using Xml::XmlEntityHandling;

constexpr int kAny = Refusal::kAny;

constexpr char kInvalidCharacter[] = "Invalid character";
constexpr char kUnexpectedToken[] = "Unexpected token";
constexpr char kUnexpectedEnd[] = "Unexpected end of file";
constexpr char kNoElementName[] = "Syntax error: Expected element name";
constexpr char kInvalidDeclaration[] = "Invalid xml declaration";
constexpr char kMissingQuote[] = "Unexpected token or missing close quote";

const Refusal kCharacters[] = {
    {"<a>\\x00</a>", kInvalidCharacter, "", 1, 4, "NUL"},
    {"<a>\\x0B</a>", kInvalidCharacter, "", 1, 4, "control code as the first character"},
    {"<a> \\x1F</a>", kInvalidCharacter, "", 1, 5, "control code after white space"},
    {"<a>\nxy\\x01</a>", kInvalidCharacter, "", 2, 3, "control code on the second line"},
    {"\\x01<a/>", kInvalidCharacter, "", 1, 1, "control code at the very beginning"},
    {"<a/>\\x01", kInvalidCharacter, "", 1, 5, "control code after the root element"},
    {"<a\\x01/>", kInvalidCharacter, "", 1, 3, "control code after a name"},
    {"<a x\\x01=\"1\"/>", kInvalidCharacter, "", 1, 5, "control code after an attribute's name"},
    {"<a x=\"\\x01\"/>", kInvalidCharacter, "", 1, 7, "control code in a value"},
    {"<!--\\x01--><a/>", kInvalidCharacter, "", 1, 5, "control code in a comment"},
    {"<a><![CDATA[\\x01]]></a>", kInvalidCharacter, "", 1, 13, "control code in a section"},
    {"<?pi \\x01?><a/>", kInvalidCharacter, "", 1, 6, "control code in an instruction"},
    {"<a><\\x01/></a>", kInvalidCharacter, "", 1, kAny, "control code after a less-than sign"},
    {"<a>&\\x01;</a>", kInvalidCharacter, "", 1, kAny, "control code after an ampersand"},
};

const Refusal kCharacterReferences[] = {
    {"<a>&#0;</a>", kInvalidCharacter, "", 1, kAny, "code 0"},
    {"<a>&#8;</a>", kInvalidCharacter, "", 1, kAny, "control code"},
    {"<a>&#x1F;</a>", kInvalidCharacter, "", 1, kAny, "control code"},
    {"<a>&#xD800;</a>", kInvalidCharacter, "", 1, kAny, "first surrogate"},
    {"<a>&#xDFFF;</a>", kInvalidCharacter, "", 1, kAny, "last surrogate"},
    {"<a>&#xFFFE;</a>", kInvalidCharacter, "", 1, kAny, "no character"},
    {"<a>&#65535;</a>", kInvalidCharacter, "", 1, kAny, "no character"},
    {"<a>&#;</a>", kInvalidCharacter, "", 1, kAny, "no digits"},
    {"<a>&#x;</a>", kInvalidCharacter, "", 1, kAny, "no hexadecimal digits"},
    {"<a>&#1a;</a>", kInvalidCharacter, "", 1, 7, "hexadecimal digit in a decimal number"},
    {"<a>&#xg;</a>", kInvalidCharacter, "", 1, 7, "no hexadecimal digit"},
    {"<a>&#X41;</a>", kInvalidCharacter, "", 1, 6, "capital X"},
    {"<a>&#0x41;</a>", kInvalidCharacter, "", 1, 7, "x that is not the first character"},
    {"<a>&# 65;</a>", kInvalidCharacter, "", 1, 6, "blank before the digits"},
    {"<a>&#65 ;</a>", kInvalidCharacter, "", 1, 8, "blank after the digits"},
    {"<a>&#-1;</a>", kInvalidCharacter, "", 1, 6, "sign"},
    {"<a>&#65</a>", kInvalidCharacter, "", 1, 8, "no semicolon"},
    {"<a x=\"&#0;\"/>", kInvalidCharacter, "", 1, kAny, "code 0 in a value"},
    {"<a x=\"&#1a;\"/>", kInvalidCharacter, "", 1, 10, "hexadecimal digit in a value"},
    {"<a x=\"&#65\"/>", kInvalidCharacter, "", 1, 11, "no semicolon in a value"},
    {"<a>&#x110000;</a>", "Character entity overflow", "", 1, kAny, "above the last code"},
    {"<a>&#1114112;</a>", "Character entity overflow", "", 1, kAny, "above the last code"},
    {"<a>&#99999999999999999999999;</a>", "Character entity overflow", "", 1, kAny, "long"},
    {"<a>&#xFFFFFFFF00000041;</a>", "Character entity overflow", "", 1, kAny, "wraps to A"},
    {"<a x=\"&#x110000;\"/>", "Character entity overflow", "", 1, kAny, "in a value"},
};

const Refusal kNamedReferences[] = {
    {"<a>&;</a>", "Bad name", "", 1, 5, "no name"},
    {"<a>& x</a>", "Bad name", "", 1, 5, "blank"},
    {"<a>&1;</a>", "Bad name", "", 1, 5, "digit"},
    {"<a>&<b/></a>", "Bad name", "", 1, 5, "tag"},
    {"<a>&&amp;</a>", "Bad name", "", 1, 5, "two ampersands"},
    {"<a x=\"&\"/>", "Bad name", "", 1, 8, "no name in a value"},
    {"<a x=\"1 & 2\"/>", "Bad name", "", 1, 10, "blank in a value"},
    {"<a>&b</a>", "Invalid named entity", "", 1, kAny, "no semicolon"},
    {"<a>&amp</a>", "Invalid named entity", "", 1, kAny, "no semicolon"},
    {"<a>&amp x;</a>", "Invalid named entity", "", 1, kAny, "blank"},
    {"<a>&am!p;</a>", "Invalid named entity", "", 1, kAny, "no name character"},
    {"<a x=\"&b\"/>", "Invalid named entity", "", 1, kAny, "no semicolon in a value"},
};

const Refusal kEnds[] = {
    {"<", kUnexpectedEnd, "", 1, 2, "less-than sign"},
    {"<a><", kUnexpectedEnd, "", 1, 5, "less-than sign in content"},
    {"<a ", kUnexpectedEnd, "", 1, 4, "blank in a tag"},
    {"<a\n\n", kUnexpectedEnd, "", 3, 1, "line breaks in a tag"},
    {"<a x", kUnexpectedEnd, "", 1, 5, "an attribute's name, cut"},
    {"<a x=\"1\"", kUnexpectedEnd, "", 1, 9, "closing quotation mark"},
    {"<a x=\"1\" ", kUnexpectedEnd, "", 1, 10, "blank after an attribute"},
    {"<a>&", kUnexpectedEnd, "", 1, 5, "ampersand"},
    {"<a>x&", kUnexpectedEnd, "", 1, 6, "ampersand after text"},
    {"<a>&#", kUnexpectedEnd, "", 1, 6, "number sign"},
    {"<a>&#x", kUnexpectedEnd, "", 1, 7, "x of a character reference"},
    {"<a>&#65", kUnexpectedEnd, "", 1, 8, "digits of a character reference"},
    {"<a", kUnexpectedToken, "", 1, 3, "an element's name, cut"},
    {"<a x ", kUnexpectedToken, "", 1, 6, "no equals sign"},
    {"<a x=", kUnexpectedToken, "", 1, 6, "no quotation mark"},
    {"<a/", kUnexpectedToken, "", 1, 4, "slash"},
    {"<a></", kUnexpectedToken, "", 1, 6, "no name in an end tag"},
    {"<a></a", kUnexpectedToken, "", 1, 7, "a name in an end tag, cut"},
    {"<a x=\"", kMissingQuote, "", 1, 7, "opening quotation mark"},
    {"<a x=\"1", kMissingQuote, "", 1, 8, "no closing quotation mark"},
    {"<a x=\"1'/>\n", kMissingQuote, "", 2, 1, "the other quotation mark"},
    {"<!--", "Unexpected end of file while scanning for '-->'", "", 1, 5, "comment"},
    {"<!--a-", "Unexpected end of file while scanning for '-->'", "", 1, 7, "one hyphen"},
    {"<!--\n--", "Unexpected end of file while scanning for '-->'", "", 2, 3, "two hyphens"},
    {"<a><![CDATA[", "Unexpected end of file while scanning for ']]>'", "", 1, 13, "section"},
    {"<a><![CDATA[]", "Unexpected end of file while scanning for ']]>'", "", 1, 14, "bracket"},
    {"<a><![CDATA[]]", "Unexpected end of file while scanning for ']]>'", "", 1, 15, "two"},
    {"<?pi ", "Unexpected end of file while looking for '?>'", "", 1, 6, "blank after a target"},
    {"<?pi x", "Unexpected end of file while looking for '?>'", "", 1, 7, "instruction"},
    {"<?pi x?", "Unexpected end of file while looking for '?>'", "", 1, 8, "question mark"},
    {"<!DOCTYPE a [", "Unexpected end of file while parsing DTD", "", 1, kAny, "subset"},
    {"<!DOCTYPE a ", "Unexpected end of file while parsing DTD", "", 1, kAny, "no end"},
    {"<!DOCTYPE a []", "Unexpected end of file while parsing DTD", "", 1, kAny, "bracket"},
    {"<?xml version=\"1.0\"", kUnexpectedToken, "", 1, 20, "end of the input"},
    {"<?xml version=\"1.0\"?", kUnexpectedToken, "", 1, 21, "question mark, then end"},
    {"", "Missing root element", "", 1, 1, "nothing at all"},
    {" \n ", "Missing root element", "", 2, 2, "white space alone"},
    {"<!--c-->", "Missing root element", "", 1, 9, "comment alone"},
    {"<?xml version=\"1.0\"?>", "Missing root element", "", 1, 22, "declaration alone"},
    {"<!DOCTYPE a>", "Missing root element", "", 1, 13, "document type alone"},
    {"<a>", "Missing end element", "a", 1, 4, "start tag alone"},
    {"<a>x", "Missing end element", "a", 1, 5, "text is lost"},
    {"<a>\n ", "Missing end element", "a", 2, 2, "white space"},
    {"<a><b></b>", "Missing end element", "a", 1, 11, "inner element closed"},
    {"<a><b><c/>", "Missing end element", "b", 1, 11, "innermost open element"},
    {"<p:a>", "Missing end element", "p:a", 1, 5, "prefix"},
};

const Refusal kTags[] = {
    {"<a><1/></a>", kNoElementName, "", 1, kAny, "digit"},
    {"<a>< b/></a>", kNoElementName, "", 1, kAny, "blank"},
    {"<a><></a>", kNoElementName, "", 1, kAny, "no name"},
    {"<a><<b/></a>", kNoElementName, "", 1, kAny, "two less-than signs"},
    {"<-a/>", kNoElementName, "", 1, kAny, "hyphen"},
    {"<.a/>", kNoElementName, "", 1, kAny, "full stop"},
    {"<:a/>", kNoElementName, "", 1, kAny, "colon"},
    {"<\\u{4E00}/>", kNoElementName, "", 1, kAny, "ideograph"},
    {"<\\u{301}a/>", kNoElementName, "", 1, kAny, "combining character"},
    {"<a 1=\"x\"/>", "Syntax error in element", "", 1, 4, "digit for an attribute's name"},
    {"<a %/>", "Syntax error in element", "", 1, 4, "percent sign"},
    {"<a x=\"1\"&amp;/>", "Syntax error in element", "", 1, 9, "reference between attributes"},
    {"<a :x=\"1\"/>", "Syntax error in element", "", 1, 4, "colon as the first character"},
    {"<a x/>", kUnexpectedToken, "", 1, 7, "no value"},
    {"<a x>", kUnexpectedToken, "", 1, 6, "no value"},
    {"<a x y=\"1\"/>", kUnexpectedToken, "", 1, 7, "name instead of an equals sign"},
    {"<a x\"1\"/>", kUnexpectedToken, "", 1, 6, "no equals sign"},
    {"<a x==\"1\"/>", kUnexpectedToken, "", 1, 7, "two equals signs"},
    {"<a x=y/>", kUnexpectedToken, "", 1, 7, "no quotation mark"},
    {"<a x=1/>", kUnexpectedToken, "", 1, 6, "number"},
    {"<a x=>", kUnexpectedToken, "", 1, 7, "tag ends after the equals sign"},
    {"<a =\"1\"/>", kUnexpectedToken, "", 1, 5, "equals sign first"},
    {"<a \"1\"/>", kUnexpectedToken, "", 1, 5, "value first"},
    {"<a ?>", kUnexpectedToken, "", 1, 6, "end of an instruction"},
    {"<a ?x/>", kUnexpectedToken, "", 1, kAny, "question mark"},
    {"<a / >", kUnexpectedToken, "", 1, kAny, "slash and blank"},
    {"<a /x/>", kUnexpectedToken, "", 1, kAny, "slash and name"},
    {"<a <b/>", kUnexpectedToken, "", 1, kAny, "tag in a tag"},
    {"<a x=\"<\"/>", kMissingQuote, "", 1, kAny, "less-than sign in a value"},
    {"<a x=\"1<b/>\"/>", kMissingQuote, "", 1, kAny, "tag in a value"},
    {"<a></ a>", kUnexpectedToken, "", 1, 6, "blank before the name of an end tag"},
    {"<a></>", kUnexpectedToken, "", 1, 6, "no name in an end tag"},
    {"<a></1>", kUnexpectedToken, "", 1, 6, "digit in an end tag"},
    {"<a></a b>", kUnexpectedToken, "", 1, 9, "name after the name of an end tag"},
    {"<a></a x=\"1\">", kUnexpectedToken, "", 1, 9, "attribute in an end tag"},
    {"<a></a/>", kUnexpectedToken, "", 1, 9, "slash in an end tag"},
    {"</a>", "Unexpected end tag", "</a>", 1, 4, "nothing is open"},
    {"<a/></a>", "Unexpected end tag", "</a>", 1, 8, "one too many"},
    {"<a></a></b>", "Unexpected end tag", "</b>", 1, 11, "one too many"},
    {"<a></b>", "End tag 'b' doesn't match start tag 'a'", "</b>", 1, 7, "other name"},
    {"<a><b></a></b>", "End tag 'a' doesn't match start tag 'b'", "</a>", 1, 10, "crossed"},
    {"<a></A>", "End tag 'A' doesn't match start tag 'a'", "</A>", 1, 7, "case"},
    {"<a></ab>", "End tag 'ab' doesn't match start tag 'a'", "</ab>", 1, 8, "longer"},
    {"<ab></a>", "End tag 'a' doesn't match start tag 'ab'", "</a>", 1, 8, "shorter"},
    {"<p:a></a>", "End tag 'a' doesn't match start tag 'p:a'", "</a>", 1, 8, "prefix"},
    {"<a:b:c/>", "Illegal second colon in qualified name", "", 1, 4, "element"},
    {"<a::b/>", "Illegal second colon in qualified name", "", 1, 3, "two together"},
    {"<a x:y:z=\"1\"/>", "Illegal second colon in qualified name", "", 1, 6, "attribute"},
    {"<a></b:c:d>", "Illegal second colon in qualified name", "", 1, 8, "end tag"},
    {"<?a:b:c?><a/>", "Illegal second colon in qualified name", "", 1, 5, "target"},
    {"<a>&b:c:d;</a>", "Illegal second colon in qualified name", "", 1, 7, "reference"},
};

const Refusal kAttributes[] = {
    {"<a x=\"1\" x=\"2\"/>", "Duplicate attribute", "", 1, 10, "same name"},
    {"<a x=\"1\" y=\"2\"\nx=\"1\">", "Duplicate attribute", "", 2, 1, "same name and value"},
    {"<a p:x=\"1\" p:x=\"2\"/>", "Duplicate attribute", "", 1, 11, "prefix without namespace"},
    {"<a xmlns=\"1\" xmlns=\"2\"/>", "Duplicate attribute", "", 1, 14, "default namespace"},
    {"<a xmlns:p=\"1\" xmlns:p=\"1\"/>", "Duplicate attribute", "", 1, 15, "prefix declared"},
    {"<a xmlns:p=\"u\" xmlns:q=\"u\" p:x=\"1\" q:x=\"2\"/>", "Duplicate attribute", "", 1, 33,
     "same namespace under two prefixes"},
    {"<a p:x=\"1\" q:x=\"2\" xmlns:p=\"u\" xmlns:q=\"u\"/>", "Duplicate attribute", "", 1, 11,
     "declared after use"},
    {"<p:a xmlns:p=\"u\"><b xmlns:q=\"u\" p:x=\"\" q:x=\"\"/></p:a>", "Duplicate attribute", "", 1,
     36, "declared on different elements"},
    {"<a p:x=\"1\" q:x=\"2\"/>", "Duplicate attribute", "", 1, 11,
     "two prefixes without namespace"},
    {"<a xmlns:p=\"\" p:x=\"1\" q:x=\"2\"/>", "Duplicate attribute", "", 1, 21,
     "a prefix without namespace, another with an empty one"},
    {"<a xmlns:p=\"u\" xmlns:q=\"u\" p:x=\"1\" q:x=\"2\" y=\"\" y=\"\"/>", "Duplicate attribute",
     "", 1, 33, "the first of two duplicates, by namespace"},
    {"<a xmlns:p=\"u\" xmlns:q=\"u\" y=\"\" y=\"\" p:x=\"1\" q:x=\"2\"/>", "Duplicate attribute",
     "", 1, 31, "the first of two duplicates, by name"},
    {"<a xml:space=\"\"/>", "Invalid xml:space attribute value", "", 1, kAny, "empty"},
    {"<a xml:space=\"Default\"/>", "Invalid xml:space attribute value", "", 1, kAny, "case"},
    {"<a xml:space=\" preserve\"/>", "Invalid xml:space attribute value", "", 1, kAny, "blank"},
    {"<a xml:lang=\"1\"/>", "Bad language ID", "", 1, kAny, "digit in the first part"},
    {"<a xml:lang=\"en_US\"/>", "Bad language ID", "", 1, kAny, "underscore"},
    {"<a xml:lang=\"ninechars\"/>", "Bad language ID", "", 1, kAny, "nine letters"},
    {"<a xml:lang=\"en-ninechars\"/>", "Bad language ID", "", 1, kAny, "second part"},
    {"<a xml:lang=\"en-\"/>", "Bad language ID", "", 1, kAny, "hyphen at the end"},
    {"<a xml:lang=\"-en\"/>", "Bad language ID", "", 1, kAny, "hyphen first"},
    {"<a xml:lang=\"en--us\"/>", "Bad language ID", "", 1, kAny, "two hyphens"},
    {"<a xml:lang=\"e n\"/>", "Bad language ID", "", 1, kAny, "blank"},
    {"<a xml:lang=\"\\u{E9}\"/>", "Bad language ID", "", 1, kAny, "letter of no ASCII"},
};

const Refusal kMarkup[] = {
    {"<!--a--b--><a/>", "XML comments may not contain '--'", "", 1, 8, "two hyphens"},
    {"<!-----><a/>", "XML comments may not contain '--'", "", 1, 7, "three hyphens"},
    {"<!-- --- --><a/>", "XML comments may not contain '--'", "", 1, 8, "three inside"},
    {"<!--\n--\n--><a/>", "XML comments may not contain '--'", "", 2, 3, "line break after"},
    {"<a><![CDATA x]]></a>", "Syntax error", "", 1, kAny, "blank in the start of a section"},
    {"<a><![CDATAx[]]></a>", "Syntax error", "", 1, kAny, "no bracket"},
    {"<a>]]></a>", kUnexpectedToken, "]]>", 1, 7, "end of a section in text"},
    {"<a>x\n]]]]></a>", kUnexpectedToken, "]]>", 2, 6, "more brackets"},
    {"<a>&amp;]]></a>", kUnexpectedToken, "]]>", 1, 12, "after a reference"},
    {"x", kUnexpectedToken, "x", 1, 2, "nothing but text"},
    {"x<a/>", kUnexpectedToken, "x", 1, 2, "text before the root element"},
    {"<!--c-->\n x y <a/>", kUnexpectedToken, "\n x y ", 2, 6, "text after a comment"},
    {"<a/>text", kUnexpectedToken, "text", 1, 9, "text after the root element"},
    {"&amp;<a/>", kUnexpectedToken, "&", 1, kAny, "reference before the root element"},
    {"<a/>&#65;", kUnexpectedToken, "&#", 1, kAny, "reference after the root element"},
    {"<![CDATA[x]]><a/>", kUnexpectedToken, "<![CDATA[", 1, kAny, "section outside"},
    {"<a/><![CDATA[]]>", kUnexpectedToken, "<![CDATA[", 1, kAny, "section after the root"},
    {"<a><!DOCTYPE a></a>", kUnexpectedToken, "DOCTYPE", 1, kAny, "document type inside"},
    {"<a/><!DOCTYPE a>", kUnexpectedToken, "DOCTYPE", 1, kAny, "document type after the root"},
    {"<!FOO><a/>", "Expected DOCTYPE", "FOO", 1, 6, "other declaration"},
    {"<!doctype a><a/>", "Expected DOCTYPE", "doctype", 1, 10, "case"},
    {"<!ELEMENT a ANY><a/>", "Expected DOCTYPE", "ELEMENT", 1, 10, "element declaration"},
    {"<!DOCTYPE a><!DOCTYPE a><a/>", "DOCTYPE already defined", "", 1, kAny, "second"},
    {"<!DOCTYPE a><a/><!DOCTYPE a>", "DOCTYPE already defined", "", 1, 26,
     "second behind the root"},
    {"<a><!ELEMENT b ANY></a>", "Expected DOCTYPE", "ELEMENT", 1, 13, "declaration inside"},
    {"<a/><!FOO>", "Expected DOCTYPE", "FOO", 1, 10, "declaration behind the root"},
    {"<a><!DOCTYPE a></a>", "Unexpected token", "DOCTYPE", 1, 13, "document type inside"},
    {"<?XML?><a/>", "Invalid PI Name", "", 1, 6, "reserved target"},
    {"<a><?xMl x?></a>", "Invalid PI Name", "", 1, 9, "reserved target in an element"},
    {"<?p:i?><a/>", "Invalid PI Name", "", 1, 5, "colon"},
    {"<? pi?><a/>", kUnexpectedToken, "", 1, 3, "blank before the target"},
    {"<?\\x3F><a/>", kUnexpectedToken, "", 1, 3, "no target"},
    {"<?1?><a/>", kUnexpectedToken, "", 1, 3, "digit"},
    {"<?pi!?><a/>", "Unexpected token in processing instruction", "", 1, kAny, "mark"},
    {"<?pi<x?><a/>", "Unexpected token in processing instruction", "", 1, kAny, "tag"},
    {"<?pi?x?><a/>", "Unexpected token in processing instruction", "", 1, kAny, "question mark"},
};

const Refusal kDeclarations[] = {
    {" <?xml version=\"1.0\"?><a/>", "Unexpected xml declaration", "", 1, 7, "after a blank"},
    {"<!--c--><?xml version=\"1.0\"?><a/>", "Unexpected xml declaration", "", 1, 14, "comment"},
    {"<?pi?><?xml version=\"1.0\"?><a/>", "Unexpected xml declaration", "", 1, 12, "instruction"},
    {"<!DOCTYPE a><?xml version=\"1.0\"?><a/>", "Unexpected xml declaration", "", 1, 18, "type"},
    {"<a><?xml version=\"1.0\"?></a>", "Unexpected xml declaration", "", 1, 9, "in an element"},
    {"<a/><?xml version=\"1.0\"?>", "Unexpected xml declaration", "", 1, 10, "at the end"},
    {"<?xml version=\"1.0\"?><?xml version=\"1.0\"?><a/>", "Unexpected xml declaration", "", 1, 27,
     "second"},
    {"<?xml?><a/>", kInvalidDeclaration, "", 1, 8, "nothing in it"},
    {"<?xml ?><a/>", kInvalidDeclaration, "", 1, 9, "blank in it"},
    {"<?xml standalone=\"yes\" version=\"1.0\"?><a/>", kInvalidDeclaration, "", 1, kAny,
     "standalone first"},
    {"<?xml standalone=\"yes\"?><a/>", kInvalidDeclaration, "", 1, kAny, "no version"},
    {"<?xml encoding=\"x\"?><a/>", kInvalidDeclaration, "", 1, kAny, "no version"},
    {"<?xml encoding=\"x\" version=\"1.0\"?><a/>", kInvalidDeclaration, "", 1, kAny,
     "encoding first"},
    {"<?xml version=\"1.0\" standalone=\"no\" encoding=\"x\"?><a/>", kInvalidDeclaration, "", 1,
     kAny, "encoding after standalone"},
    {"<?xml version=\"1.0\" version=\"1.0\"?><a/>", kInvalidDeclaration, "", 1, kAny,
     "two versions"},
    {"<?xml version=\"1.0\" encoding=\"x\" encoding=\"x\"?><a/>", kInvalidDeclaration, "", 1, kAny,
     "two encodings"},
    {"<?xml version=\"1.0\" standalone=\"no\" standalone=\"no\"?><a/>", kInvalidDeclaration, "", 1,
     kAny, "standalone twice"},
    {"<?xml version=\"1.1\"?><a/>", "Unsupported XML version", "", 1, kAny, "1.1"},
    {"<?xml version=\"1.0 \"?><a/>", "Unsupported XML version", "", 1, kAny, "blank"},
    {"<?xml version=\"1\"?><a/>", "Unsupported XML version", "", 1, kAny, "1"},
    {"<?xml version=\"\"?><a/>", kUnexpectedToken, "", 1, kAny, "empty version"},
    {"<?xml version=\"1.0\" encoding=\"\"?><a/>", kUnexpectedToken, "", 1, kAny, "empty encoding"},
    {"<?xml version=\"1.0\" standalone=\"maybe\"?><a/>", kUnexpectedToken, "", 1, kAny,
     "neither yes nor no"},
    {"<?xml version=\"1.0\" standalone=\"Yes\"?><a/>", kUnexpectedToken, "", 1, kAny, "case"},
    {"<?xml Version=\"1.0\"?><a/>", kUnexpectedToken, "", 1, kAny, "case of a name"},
    {"<?xml version=\"1.0\" foo=\"1\"?><a/>", kUnexpectedToken, "", 1, kAny, "name"},
    {"<?xml version=\"1.0\" \"x\"?><a/>", kUnexpectedToken, "\"", 1, 22, "quotation mark"},
    {"<?xml version=\"1.0\"><a/>", kUnexpectedToken, ">", 1, 21, "no question mark"},
    {"<?xml version=\"1.0\"/><a/>", kUnexpectedToken, "/>", 1, 22, "slash"},
    {"<?xml version=\"1.0\" = ?><a/>", kUnexpectedToken, "=", 1, 22, "equals sign"},
    {"<?xml version=\"1.0\" <a/>", kUnexpectedToken, "<", 1, kAny, "tag"},
    {"<?xml version \"1.0\"?><a/>", kUnexpectedToken, "", 1, 16, "no equals sign"},
    {"<?xml version=1.0?><a/>", kUnexpectedToken, "", 1, 15, "no quotation mark"},
};

TEST(XmlTextReaderError, Characters) { ExpectRefusals(kCharacters); }
TEST(XmlTextReaderError, CharacterReferences) { ExpectRefusals(kCharacterReferences); }
TEST(XmlTextReaderError, NamedReferences) { ExpectRefusals(kNamedReferences); }
TEST(XmlTextReaderError, EndsOfTheInput) { ExpectRefusals(kEnds, {}, Cause::End); }
TEST(XmlTextReaderError, Tags) { ExpectRefusals(kTags); }
TEST(XmlTextReaderError, Attributes) { ExpectRefusals(kAttributes); }
TEST(XmlTextReaderError, Markup) { ExpectRefusals(kMarkup); }
TEST(XmlTextReaderError, Declarations) { ExpectRefusals(kDeclarations); }

TEST(XmlTextReaderError, ReferencesAreCheckedHoweverTheyAreHandled) {
    for (const auto handling :
         {XmlEntityHandling::ExpandNothing, XmlEntityHandling::ExpandEntities}) {
        for (const Refusal& refusal : kCharacterReferences) {
            ExpectRefusal(refusal, WithEntities(handling));
        }
        for (const Refusal& refusal : kNamedReferences) {
            ExpectRefusal(refusal, WithEntities(handling));
        }
    }
}

TEST(XmlTextReaderError, AnUndeclaredEntityCannotBeExpanded) {
    const Refusal kRefusals[] = {
        {"<a>&b;</a>", "Undeclared entity", "b", 1, kAny, "in text"},
        {"<a>x&long-name.1;</a>", "Undeclared entity", "long-name.1", 1, kAny, "after text"},
        {"<a x=\"&b;\"/>", "Undeclared entity", "b", 1, kAny, "in a value"},
        {"<!DOCTYPE a><a>&b;</a>", "Undeclared entity", "b", 1, kAny, "with a document type"},
    };
    for (const Refusal& refusal : kRefusals) {
        ExpectRefusal(refusal, WithEntities(XmlEntityHandling::ExpandEntities));
    }
}

TEST(XmlTextReaderError, WithoutNamespaces) {
    const Refusal kRefusals[] = {
        {"<:a/>", kNoElementName, "", 1, kAny, "a tag never begins with a colon"},
        {"<p:a></p:b>", "End tag 'p:b' doesn't match start tag 'p:a'", "</p:b>", 1, 11, "names"},
        {"<a p:x=\"1\" p:x=\"2\"/>", "Duplicate attribute", "", 1, 12, "same name"},
        {"<a xml:space=\"x\"/>", "Invalid xml:space attribute value", "", 1, kAny, ""},
        {"<a xml:lang=\"1\"/>", "Bad language ID", "", 1, kAny, ""},
    };
    ReaderSettings settings;
    settings.namespaces = false;
    for (const Refusal& refusal : kRefusals)
        ExpectRefusal(refusal, settings);
}

TEST(XmlTextReaderError, EveryControlCodeIsInvalid) {
    for (int code = 0; code < 0x20; ++code) {
        if (code == '\t' || code == '\n' || code == '\r') continue;
        const std::string character(1, static_cast<char>(code));
        EXPECT_EQ(support::DumpDocument("<a>x" + character + "</a>"),
                  "Element a depth=1 @1:1\nerror 1:5 Invalid character\n")
            << code;
    }
}

TEST(XmlTextReaderError, BytesThatAreNotUtf8) {
    const char* kBytes[] = {
        "\x80",
        "\xBF",
        "\xC0\xAF",
        "\xC1\x81",
        "\xC3(",
        "\xE0\x80\x80",
        "\xE0\x9F\xBF",
        "\xE2(\xA1",
        "\xE2\x82(",
        "\xED\xA0\x80",
        "\xED\xBF\xBF",
        "\xF0\x8F\xBF\xBF",
        "\xF0\x90\x80(",
        "\xF4\x90\x80\x80",
        "\xF5\x80\x80\x80",
        "\xF8\x88\x80\x80\x80",
        "\xFC\x84\x80\x80\x80\x80",
        "\xFE",
        "\xFF",
    };
    for (const std::string bytes : kBytes) {
        const struct {
            std::string document;
            std::string expected;
        } kPlaces[] = {
            {"<a>x" + bytes + "</a>", "Element a depth=1 @1:1\nerror 1:5 Invalid character\n"},
            {"<a x=\"" + bytes + "\"/>", "error 1:7 Invalid character\n"},
            {"<!--" + bytes + "--><a/>", "error 1:5 Invalid character\n"},
            {"<a" + bytes + "/>", "error 1:3 Invalid character\n"},
        };
        for (const auto& place : kPlaces) {
            SCOPED_TRACE(support::Escape(place.document));
            for (const int bytesPerRead : {0, 1, 2, 3, 7}) {
                EXPECT_EQ(support::DumpDocument(place.document, {}, bytesPerRead), place.expected);
            }
        }
    }
}

TEST(XmlTextReaderError, PairsOfSurrogatesThatAreBroken) {
    using std::string_view_literals::operator""sv;
    const std::string_view kDocuments[] = {
        "<\0a\0>\0\x00\xDC<\0/\0a\0>\0"sv,          // a low one alone
        "<\0a\0>\0\x00\xD8<\0/\0a\0>\0"sv,          // a high one alone
        "<\0a\0>\0\x00\xD8\x00\xD8<\0/\0a\0>\0"sv,  // two high ones
    };
    for (const std::string_view document : kDocuments) {
        for (const int bytesPerRead : {0, 1, 2, 3, 7}) {
            EXPECT_EQ(support::DumpDocument(document, {}, bytesPerRead),
                      "Element a depth=1 @1:1\nerror 1:4 Invalid character\n");
        }
    }
}

TEST(XmlTextReaderError, OfSeveralMistakesInATagTheFirstCheckCounts) {
    const Refusal kRefusals[] = {
        {"<a x=\"\" x=\"\" xml:lang=\"!\"/>", "Bad language ID", "", 1, 25,
         "values are checked while the tag is read"},
        {"<a x=\"\" x=\"\" xml:space=\"\"/>", "Invalid xml:space attribute value", "", 1, 25,
         "values are checked while the tag is read"},
        {"<a x=\"\" x=\"\" y/>", "Unexpected token", "", 1, 17, "the tag is read to its end"},
        {"<a x=\"\" x=\"\" xmlns:p=\"&e;\"/>", "Undeclared entity", "e", 1, 28,
         "declarations come before the attributes are compared"},
    };
    ExpectRefusals(kRefusals);
}

TEST(XmlTextReaderError, AnEbcdicStartIsRefused) {
    for (const char* document : {"L\x6F\xA7\x94", "LLLL", "L<a/>"}) {
        EXPECT_EQ(support::DumpDocument(document), "error 1:1 EBCDIC encoding not supported\n");
    }
}

}  // namespace
