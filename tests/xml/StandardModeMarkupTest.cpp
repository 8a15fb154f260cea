// SPDX-License-Identifier: MIT
//
// Documents, tags, comments, instructions and sections by XML 1.0 [1], [3], [14] to [22], [27] and
// [39] to [44].
#include "support/StandardReading.h"

#include <gtest/gtest.h>

namespace {

using support::ExpectAccepted;
using support::ExpectRefused;
using support::RefusedDocument;

constexpr int kAny = RefusedDocument::kAny;

// [40] STag ::= '<' Name (S Attribute)* S? '>' and [44] EmptyElemTag
TEST(StandardModeTags, HaveWhiteSpaceWhereTheGrammarHasIt) {
    ExpectAccepted({
        {"<a></a>", "<a></a>"},
        {"<a />", "<a/>"},
        {"<a ></a >", "<a></a>"},
        {"<a\t\r\n ></a\t\r\n >", "<a></a>"},
        {"<a x='1' y='2'/>", "<a x=\"1\" y=\"2\"/>"},
        {"<a\tx='1'\ny=\"2\"\r/>", "<a x=\"1\" y=\"2\"/>"},
        {"<a x = '1'\ty\n=\n\"2\" />", "<a x=\"1\" y=\"2\"/>"},
        {"<a x='\"' y=\"'\"/>", "<a x=\"\"\" y=\"'\"/>"},
        {"<a x=''/>", "<a x=\"\"/>"},
        {"<a x='>' y='/>' z=']]>'/>", "<a x=\">\" y=\"/>\" z=\"]]>\"/>"},
    });
    ExpectRefused({
        {"<a x='1'y='2'/>", 1, 9, "none between attributes"},
        {"<a x=\"1\"y=\"2\"/>", 1, 9, "none between attributes in double quotation marks"},
        {"<a x='1''/>", 1, 9, "a quotation mark too many"},
        {"<a x='1'&/>", 1, 9, "an ampersand behind a value"},
        {"< a/>", 1, 2, "before the name"},
        {"<\na/>", 1, 2, "a line end before the name"},
        {"<a / >", 1, 5, "between slash and bracket"},
        {"<a></ a>", 1, 6, "before the name of an end tag"},
        {"<a>< /a>", 1, 5, "before the slash of an end tag"},
        {"<a></a b>", 1, 8, "a word behind the name of an end tag"},
        {"<a></a x='1'>", 1, 8, "an attribute in an end tag"},
        {"<a></a/>", 1, kAny, "a slash at the end of an end tag"},
        {"<a'1'/>", 1, 3, "a value behind the name"},
        {"<a\\u{85}x='1'/>", 1, 3, "NEL, which is no white space"},
        {"<a\\u{A0}x='1'/>", 1, 3, "a no-break space"},
        {"<a \\u{2028}x='1'/>", 1, 4, "a line separator"},
        {"<a\\u{3000}/>", 1, 3, "an ideographic space"},
        {"<a x='1'\\u{A0}y='2'/>", 1, 9, "a no-break space between attributes"},
    });
}

TEST(StandardModeTags, HaveAttributesWithValues) {
    ExpectRefused({
        {"<a x/>", 1, 5, "no value"},
        {"<a x></a>", 1, 5, "no value in a start tag"},
        {"<a x=/>", 1, 6, "no literal"},
        {"<a x=1/>", 1, 6, "no quotation marks"},
        {"<a x y='1'/>", 1, 6, "no equals sign"},
        {"<a x=='1'/>", 1, 6, "two equals signs"},
        {"<a ='1'/>", 1, 4, "no name"},
        {"<a '1'/>", 1, 4, "a literal alone"},
        {"<a x='1\"/>", 1, kAny, "two kinds of quotation marks"},
        {"<a x='<'/>", 1, 7, "a less-than sign"},
        {"<a x='1<b/>'/>", 1, 8, "a tag in a value"},
        {"<a x='&'/>", 1, 8, "an ampersand"},
        {"<a x='& '/>", 1, 8, "an ampersand and a blank"},
        {"<a x='&amp'/>", 1, 11, "no semicolon"},
        {"<a x='1' x='1'/>", 1, kAny, "an attribute twice"},
        {"<a x='1' y='' x='2'/>", 1, kAny, "an attribute twice, with another between"},
        {"<a 1='x'/>", 1, 4, "a digit"},
        {"<a -x='x'/>", 1, 4, "a hyphen"},
        {"<a x$='x'/>", 1, 5, "a dollar sign"},
        {"<a$/>", 1, 3, "a dollar sign in the name"},
        {"<a x='", 1, 7, "the end of the input in a value"},
        {"<a x", 1, 5, "the end of the input behind a name"},
        {"<a ", 1, 4, "the end of the input in a tag"},
        {"<a/", 1, 4, "the end of the input behind the slash"},
        {"<a><b x='1'", 1, 12, "the end of the input behind a value"},
    });
}

// [39] element, WFC: Element Type Match
TEST(StandardModeTags, MatchEachOther) {
    ExpectAccepted({
        {"<a><b><c/></b><b/></a>", "<a><b><c/></b><b/></a>"},
        {"<a><a><a></a></a></a>", "<a><a><a></a></a></a>"},
    });
    ExpectRefused({
        {"<a></b>", 1, kAny, "another name"},
        {"<a></A>", 1, kAny, "a capital letter"},
        {"<ab></a>", 1, kAny, "the beginning of the name"},
        {"<a></ab>", 1, kAny, "a longer name"},
        {"<a><b></a></b>", 1, kAny, "elements that overlap"},
        {"<a>", 1, 4, "no end tag"},
        {"<a><b></b>", 1, 11, "no end tag of the root element"},
        {"<a>\n<b>\n</a>", 3, kAny, "no end tag of an element in it"},
        {"</a>", 1, kAny, "an end tag alone"},
        {"<a/></a>", 1, kAny, "an end tag of an empty element"},
        {"<a></a></a>", 1, kAny, "an end tag too many"},
        {"<a></a", 1, 7, "the end of the input in an end tag"},
        {"<a></", 1, 6, "the end of the input behind the slash"},
    });
}

// [1] document ::= prolog element Misc*
TEST(StandardModeDocument, HasOneRootElement) {
    ExpectAccepted({
        {"<a/>", "<a/>"},
        {" \t\r\n<a/> \t\r\n", "<a/>"},
        {"<!--1--><?p 2?> <a/><?q 3?> <!--4-->", "<!--1--><?p 2?><a/><?q 3?><!--4-->"},
        {"<!DOCTYPE b><a/>", "<a/>"},
        {"<!--1--><!DOCTYPE a><!--2--><a/>", "<!--1--><!--2--><a/>"},
    });
    ExpectRefused({
        {"<a/><b/>", 1, kAny, "two of them"},
        {"<a></a><b></b>", 1, kAny, "two with end tags"},
        {"<a/>\n<a/>", 2, kAny, "two on two lines"},
        {"<a/><!--c--><b/>", 1, kAny, "two with a comment between"},
        {"x<a/>", 1, 1, "text before it"},
        {" x<a/>", 1, 2, "text before it, behind white space"},
        {"<a/>x", 1, 5, "text behind it"},
        {"<a/>\n x", 2, 2, "text behind it, behind white space"},
        {"&#32;<a/>", 1, kAny, "a character reference before it"},
        {"<a/>&#32;", 1, kAny, "a character reference behind it"},
        {"<a/>&lt;", 1, kAny, "a reference behind it"},
        {"<![CDATA[ ]]><a/>", 1, kAny, "a section before it"},
        {"<a/><![CDATA[]]>", 1, kAny, "a section behind it"},
        {"<a/>]]>", 1, kAny, "the end of a section behind it"},
        {"<a/><!DOCTYPE a>", 1, kAny, "a document type behind it"},
        {"<a><!DOCTYPE a></a>", 1, kAny, "a document type in it"},
        {"<!DOCTYPE a><!DOCTYPE a><a/>", 1, kAny, "two document types"},
        {"<a/><", 1, 6, "half a tag behind it"},
        {"\\u{FEFF}\\u{FEFF}<a/>", 1, 1, "a second mark"},
        {"<a/>\\u{FEFF}", 1, 5, "a mark behind it"},
    });
}

// [14] CharData ::= [^<&]* - ([^<&]* ']]>' [^<&]*)
TEST(StandardModeText, HasNoEndOfASection) {
    ExpectAccepted({
        {"<a>]]</a>", "<a>]]</a>"},
        {"<a>]] ></a>", "<a>]] ></a>"},
        {"<a>]></a>", "<a>]></a>"},
        {"<a>></a>", "<a>></a>"},
        {"<a>]]&gt;</a>", "<a>]]></a>"},
        {"<a>]&#93;></a>", "<a>]]></a>"},
        {"<a>]]<b/>></a>", "<a>]]<b/>></a>"},
        {"<a>]]<!---->></a>", "<a>]]<!---->></a>"},
        {"<a>]]<![CDATA[>]]></a>", "<a>]]></a>"},
    });
    ExpectRefused({
        {"<a>]]></a>", 1, kAny, "alone"},
        {"<a>]]]></a>", 1, kAny, "behind another bracket"},
        {"<a>x ]]> y</a>", 1, kAny, "in text"},
        {"<a>\n]]></a>", 2, kAny, "behind a line end"},
        {"<a>&amp;]]></a>", 1, kAny, "behind a reference"},
        {"<a><b/>]]></a>", 1, kAny, "behind an element"},
        {"<a><![CDATA[]]>]]></a>", 1, kAny, "behind a section"},
    });
}

// [15] Comment ::= '<!--' ((Char - '-') | ('-' (Char - '-')))* '-->'
TEST(StandardModeComments, HaveNoTwoHyphens) {
    ExpectAccepted({
        {"<!----><a/>", "<!----><a/>"},
        {"<!-- - - --><a/>", "<!-- - - --><a/>"},
        {"<!--<&]]>?>--><a/>", "<!--<&]]>?>--><a/>"},
        {"<!---x--><a/>", "<!---x--><a/>"},
        {"<!-->--><a/>", "<!-->--><a/>"},
        {"<a><!--&amp;<b>--></a>", "<a><!--&amp;<b>--></a>"},
    });
    ExpectRefused({
        {"<!-- -- --><a/>", 1, kAny, "two in the middle"},
        {"<!--x---><a/>", 1, kAny, "three at the end"},
        {"<!---><a/>", 1, kAny, "two that begin and end it"},
        {"<!- x --><a/>", 1, kAny, "one at the beginning"},
        {"<!--x-><a/>", 1, kAny, "one at the end"},
        {"<! --x--><a/>", 1, kAny, "white space at the beginning"},
        {"<a><!--x-- ></a>", 1, kAny, "white space at the end"},
        {"<a><!-- x", 1, kAny, "the end of the input"},
    });
}

// [16] PI ::= '<?' PITarget (S (Char* - (Char* '?>' Char*)))? '?>'
TEST(StandardModeInstructions, HaveATargetAndWhiteSpaceBehindIt) {
    ExpectAccepted({
        {"<?p?><a/>", "<?p ?><a/>"},
        {"<?p ?><a/>", "<?p ?><a/>"},
        {"<?p \t\r\n x ?><a/>", "<?p x ?><a/>"},
        {"<?p ?\?><a/>", "<?p ?\?><a/>"},
        {"<?p ? >?><a/>", "<?p ? >?><a/>"},
        {"<a><?p <b>&x;--?></a>", "<a><?p <b>&x;--?></a>"},
        {"<?p xml version='1.0'?><a/>", "<?p xml version='1.0'?><a/>"},
    });
    ExpectRefused({
        {"<?p?x?><a/>", 1, kAny, "a question mark behind the target"},
        {"<?\?><a/>", 1, 3, "no target"},
        {"<? ?><a/>", 1, 3, "white space instead of the target"},
        {"<? p?><a/>", 1, 3, "white space before the target"},
        {"<?1?><a/>", 1, 3, "a digit"},
        {"<?p+x?><a/>", 1, 4, "no white space behind the target"},
        {"<?p'x'?><a/>", 1, 4, "a literal right behind the target"},
        {"<?p\\u{A0}x?><a/>", 1, 4, "what is no white space"},
        {"<?p x><a/>", 1, kAny, "no question mark"},
        {"<a><?p x", 1, 9, "the end of the input"},
        {"<?p", 1, 4, "the end of the input behind the target"},
    });
}

// [18] CDSect
TEST(StandardModeSections, EndAtTheFirstEnd) {
    ExpectAccepted({
        {"<a><![CDATA[]]></a>", "<a></a>"},
        {"<a><![CDATA[x]]></a>", "<a>x</a>"},
        {"<a><![CDATA[<b>&amp;<!--]]></a>", "<a><b>&amp;<!--</a>"},
        {"<a><![CDATA[x]]]]></a>", "<a>x]]</a>"},
        {"<a><![CDATA[] ]>]]></a>", "<a>] ]></a>"},
        {"<a><![CDATA[<![CDATA[]]></a>", "<a><![CDATA[</a>"},
        {"<a>x<![CDATA[y]]>z</a>", "<a>xyz</a>"},
    });
    ExpectRefused({
        {"<a><![CDATA[<![CDATA[]]>]]></a>", 1, kAny, "one in another"},
        {"<a><![cdata[x]]></a>", 1, kAny, "small letters"},
        {"<a><! [CDATA[x]]></a>", 1, kAny, "white space"},
        {"<a><![ CDATA[x]]></a>", 1, kAny, "white space before the word"},
        {"<a><![CDATA [x]]></a>", 1, kAny, "white space behind the word"},
        {"<a><![CDATA[x]] ></a>", 1, kAny, "white space at the end"},
        {"<a><![CDATA[x", 1, kAny, "the end of the input"},
        {"<a><![INCLUDE[x]]></a>", 1, kAny, "another word"},
        {"<a><!ELEMENT a ANY></a>", 1, kAny, "a declaration"},
    });
}

// [66] CharRef and [68] EntityRef
TEST(StandardModeReferences, HaveTheirGrammar) {
    ExpectAccepted({
        {"<a>&#65;&#x41;&#x0041;&#000065;</a>", "<a>AAAA</a>"},
        {"<a>&lt;&gt;&amp;&apos;&quot;</a>", "<a><>&'\"</a>"},
        {"<a x='&lt;&gt;&amp;&apos;&quot;'/>", "<a x=\"<>&'\"\"/>"},
        {"<a>&#60;b>&#38;lt;</a>", "<a><b>&lt;</a>"},
        {"<a x='&#60;&#38;'/>", "<a x=\"<&\"/>"},
        {"<a>&#x10FFFF;&#x10ffff;</a>", "<a>\\u{10FFFF}\\u{10FFFF}</a>"},
    });
    ExpectRefused({
        {"<a>&</a>", 1, 5, "an ampersand alone"},
        {"<a>& </a>", 1, 5, "an ampersand and a blank"},
        {"<a>&&amp;</a>", 1, 5, "two ampersands"},
        {"<a>&amp</a>", 1, 8, "no semicolon"},
        {"<a>&amp ;</a>", 1, 8, "a blank before the semicolon"},
        {"<a>&;</a>", 1, 5, "no name"},
        {"<a>&#;</a>", 1, kAny, "no digits"},
        {"<a>&#x;</a>", 1, kAny, "no hexadecimal digits"},
        {"<a>&#X41;</a>", 1, 6, "a capital X"},
        {"<a>&#4A;</a>", 1, 7, "a hexadecimal digit in a decimal reference"},
        {"<a>&#x4G;</a>", 1, 8, "a letter that is no digit"},
        {"<a>&#65</a>", 1, 8, "no semicolon of a character reference"},
        {"<a>&# 65;</a>", 1, 6, "a blank before the digits"},
        {"<a>&#-65;</a>", 1, 6, "a sign"},
        {"<a>&#x110000;</a>", 1, kAny, "above the last character"},
        {"<a>&#99999999999999999999;</a>", 1, kAny, "far above the last character"},
        {"<a>&", 1, 5, "the end of the input"},
        {"<a>&am", 1, 7, "the end of the input in a name"},
        {"<a>&#6", 1, 7, "the end of the input in digits"},
        {"<a>&#\\u{661};</a>", 1, 6, "a digit that is not ASCII"},
        {"<&amp;/>", 1, 2, "as a name"},
        {"<a &amp;=''/>", 1, 4, "as the name of an attribute"},
    });
}

}  // namespace
