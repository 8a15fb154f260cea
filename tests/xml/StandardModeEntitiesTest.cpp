// SPDX-License-Identifier: MIT
//
// References to entities by XML 1.0 sections 4.1, 4.3.2, 4.4 and 5.1: what they stand for, and the
// constraints that they have to keep.
#include "support/StandardReading.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using support::ExpectAccepted;
using support::ExpectRefused;
using support::ReadByStandard;
using support::RefusedDocument;
using support::StandardOptions;
using support::StandardReading;
using Xml::XmlEntityHandling;

constexpr int kAny = RefusedDocument::kAny;

TEST(StandardModeEntities, AreReplacedByTheirTexts) {
    ExpectAccepted({
        {"<!DOCTYPE a [<!ENTITY e 'x'>]><a>&e;</a>", "<a>x</a>"},
        {"<!DOCTYPE a [<!ENTITY e ''>]><a>&e;</a>", "<a></a>"},
        {"<!DOCTYPE a [<!ENTITY e 'x'>]><a x='&e;&e;'>1&e;2</a>", "<a x=\"xx\">1x2</a>"},
        {"<!DOCTYPE a [<!ENTITY e '<b>x</b>'>]><a>1&e;2</a>", "<a>1<b>x</b>2</a>"},
        {"<!DOCTYPE a [<!ENTITY e '<!--c--><?p d?><![CDATA[<]]>'>]><a>&e;</a>",
         "<a><!--c--><?p d?><</a>"},
        {"<!DOCTYPE a [<!ENTITY e '&f;&f;'><!ENTITY f '[&g;]'><!ENTITY g 'x'>]><a y='&e;'>&e;</a>",
         "<a y=\"[x][x]\">[x][x]</a>"},
        {"<!DOCTYPE a [<!ENTITY e 'first'><!ENTITY e 'second'>]><a>&e;</a>", "<a>first</a>"},
        {"<!DOCTYPE a [<!ENTITY e '[&\\u{E9}\\u{300}1;]'><!ENTITY \\u{E9}\\u{300}1 "
         "'x'>]><a>&e;</a>",
         "<a>[x]</a>"},
        {"<!DOCTYPE a [<!ENTITY e '<b x=\"&f;\"/>'><!ENTITY f 'y'>]><a>&e;</a>",
         "<a><b x=\"y\"/></a>"},
        {"<!DOCTYPE a [<!ENTITY e '\"x\"'>]><a y=\"&e;\"/>", "<a y=\"\"x\"\"/>"},
        {"<!DOCTYPE a [<!ENTITY e ']]'>]><a>&e;></a>", "<a>]]></a>"},
        {"<!DOCTYPE a [<!ENTITY e '>'>]><a>]]&e;</a>", "<a>]]></a>"},
    });
}

// Appendix D: what is expanded when.
TEST(StandardModeEntities, AreExpandedInTheOrderOfAppendixD) {
    ExpectAccepted({
        {"<!DOCTYPE a [<!ENTITY example \"<p>An ampersand (&#38;#38;) may be escaped\n"
         "numerically (&#38;#38;#38;) or with a general entity\n(&amp;amp;).</p>\" >]>"
         "<a>&example;</a>",
         "<a><p>An ampersand (&) may be escaped\\nnumerically (&#38;) or with a general "
         "entity\\n(&amp;).</p></a>"},
        {"<!DOCTYPE test [\n<!ELEMENT test (#PCDATA) >\n<!ENTITY % xx '&#37;zz;'>\n"
         "<!ENTITY % zz '&#60;!ENTITY tricky \"error-prone\" >' >\n%xx;\n]>\n"
         "<test>This sample shows a &tricky; method.</test>",
         "<test>This sample shows a error-prone method.</test>"},
        {"<!DOCTYPE a [<!ENTITY lf '&#10;'><!ENTITY e '&#38;lf;'>]><a>&e;</a>", "<a>\\n</a>"},
    });
}

// WFC: Entity Declared
TEST(StandardModeEntities, AreDeclared) {
    ExpectRefused({
        {"<a>&e;</a>", 1, kAny, "no document type"},
        {"<a x='&e;'/>", 1, kAny, "in a value"},
        {"<a>\n&nbsp;</a>", 2, kAny, "an entity of HTML"},
        {"<a>&LT;</a>", 1, kAny, "a predefined one in capitals"},
        {"<!DOCTYPE a><a>&e;</a>", 1, kAny, "a document type without a subset"},
        {"<!DOCTYPE a [<!ENTITY f ''>]><a>&e;</a>", 1, kAny, "another declared"},
        {"<!DOCTYPE a [<!ENTITY % e ''>]><a>&e;</a>", 1, kAny, "a parameter entity declared"},
        {"<!DOCTYPE a [<!ENTITY f '&e;'>]><a>&f;</a>", 1, kAny, "in the text of another"},
        {"<!DOCTYPE a [<!ENTITY f '&e;'>]><a x='&f;'/>", 1, kAny,
         "in the text of another, in a value"},
        {"<?xml version='1.0' standalone='yes'?><!DOCTYPE a SYSTEM 'a'><a>&e;</a>", 1, kAny,
         "an external subset, but standalone"},
        {"<?xml version='1.0' standalone='yes'?><!DOCTYPE a [<!ENTITY % p SYSTEM 'p'>%p;]>"
         "<a>&e;</a>",
         1, kAny, "a reference to an external parameter entity, but standalone"},
        {"<?xml version='1.0' standalone='yes'?><!DOCTYPE a [<!ENTITY % p \"<!ENTITY e 'x'>\">%p;]>"
         "<a>&e;</a>",
         1, kAny, "declared in a parameter entity, but standalone"},
        {"<!DOCTYPE a [<!ENTITY % p SYSTEM 'p'>]><a>&e;</a>", 1, kAny,
         "a parameter entity that nothing refers to"},
        {"<!DOCTYPE a [<!ATTLIST a x CDATA '&e;'>]><a/>", 1, kAny, "in a default value"},
        {"<!DOCTYPE a [<!ATTLIST a x CDATA '&e;'><!ENTITY e 'x'>]><a/>", 1, kAny,
         "in a default value, before the declaration"},
    });
    // The text of an entity that nothing refers to is no content.
    ExpectAccepted({
        {"<!DOCTYPE a [<!ENTITY f '&e;'>]><a/>", "<a/>"},
        {"<!DOCTYPE a [<!ENTITY f '<b>&#38;'>]><a/>", "<a/>"},
        {"<!DOCTYPE a [<!ENTITY f '&g;'><!ENTITY g 'x'>]><a>&f;</a>", "<a>x</a>"},
    });
}

TEST(StandardModeEntities, MayBeDeclaredWhereNothingIsRead) {
    ExpectAccepted({
        {"<!DOCTYPE a SYSTEM 'a'><a>x&e;y</a>", "<a>x&e;y</a>"},
        {"<!DOCTYPE a PUBLIC 'p' 'a'><a>&e;</a>", "<a>&e;</a>"},
        {"<!DOCTYPE a SYSTEM 'a'><a x='1&e;2'/>", "<a x=\"12\"/>"},
        {"<?xml version='1.0' standalone='no'?><!DOCTYPE a SYSTEM 'a'><a>&e;</a>", "<a>&e;</a>"},
        {"<!DOCTYPE a [<!ENTITY % p SYSTEM 'p'>%p;]><a x='&e;'>&e;</a>", "<a x=\"\">&e;</a>"},
        {"<!DOCTYPE a [<!ENTITY % p ''>%p;]><a x='&e;'>&e;</a>", "<a x=\"\">&e;</a>"},
        {"<!DOCTYPE a [%p;]><a>&e;</a>", "<a>&e;</a>"},
        {"<!DOCTYPE a SYSTEM 'a' [<!ENTITY f '1&e;2'>]><a x='&f;'>&f;</a>",
         "<a x=\"12\">1&e;2</a>"},
        {"<!DOCTYPE a SYSTEM 'a' [<!ENTITY e 'x'>]><a>&e;</a>", "<a>x</a>"},
        {"<!DOCTYPE a [<!ENTITY % p \"<!ENTITY e 'x'>\">%p;]><a y='&e;'>&e;</a>",
         "<a y=\"x\">x</a>"},
    });
}

// 5.1: what stands behind a reference to a parameter entity that was not read does not count.
TEST(StandardModeEntities, AreNotDeclaredBehindWhatWasNotRead) {
    ExpectAccepted({
        {"<!DOCTYPE a [<!ENTITY % p SYSTEM 'p'>%p;<!ENTITY e 'x'>]><a y='&e;'>&e;</a>",
         "<a y=\"\">&e;</a>"},
        {"<!DOCTYPE a [<!ENTITY e 'x'><!ENTITY % p SYSTEM 'p'>%p;]><a>&e;</a>", "<a>x</a>"},
        {"<!DOCTYPE a [<!ENTITY % p SYSTEM 'p'>%p;<!ATTLIST a x CDATA 'd'>]><a/>", "<a/>"},
        {"<!DOCTYPE a [<!ATTLIST a x CDATA 'd'><!ENTITY % p SYSTEM 'p'>%p;]><a/>", "<a x=\"d\"/>"},
        {"<!DOCTYPE a [<!ENTITY % p '<!--c-->'>%p;<!ENTITY e 'x'>]><a>&e;</a>", "<a>x</a>"},
        {"<?xml version='1.0' standalone='yes'?><!DOCTYPE a [<!ENTITY % p SYSTEM 'p'>%p;"
         "<!ENTITY e 'x'><!ATTLIST a y CDATA 'd'>]><a>&e;</a>",
         "<a y=\"d\">x</a>"},
    });
}

// External parsed entities are not read (4.4.3), and may not stand in values (WFC: No External
// Entity References); unparsed ones may stand nowhere (WFC: Parsed Entity).
TEST(StandardModeEntities, ThatAreExternalAreReportedInText) {
    ExpectAccepted({
        {"<!DOCTYPE a [<!ENTITY e SYSTEM 'e'>]><a>x&e;y</a>", "<a>x&e;y</a>"},
        {"<!DOCTYPE a [<!ENTITY e PUBLIC 'p' 'e'>]><a>&e;&e;</a>", "<a>&e;&e;</a>"},
        {"<!DOCTYPE a [<!ENTITY f '[&e;]'><!ENTITY e SYSTEM 'e'>]><a>&f;</a>", "<a>[&e;]</a>"},
        {"<!DOCTYPE a [<!ENTITY f '<b>&e;</b>'><!ENTITY e SYSTEM 'e'>]><a>&f;</a>",
         "<a><b>&e;</b></a>"},
    });
    ExpectRefused({
        {"<!DOCTYPE a [<!ENTITY e SYSTEM 'e'>]><a x='&e;'/>", 1, kAny, "in a value"},
        {"<!DOCTYPE a [<!ENTITY f '&e;'><!ENTITY e SYSTEM 'e'>]><a x='&f;'/>", 1, kAny,
         "in a value, through another"},
        {"<!DOCTYPE a [<!ENTITY e SYSTEM 'e'><!ATTLIST a x CDATA '&e;'>]><a/>", 1, kAny,
         "in a default value"},
        {"<!DOCTYPE a [<!ENTITY f '<b x=\"&e;\"/>'><!ENTITY e SYSTEM 'e'>]><a>&f;</a>", 1, kAny,
         "in a value in a text"},
        {"<!DOCTYPE a [<!NOTATION n SYSTEM ''><!ENTITY e SYSTEM 'e' NDATA n>]><a>&e;</a>", 1, kAny,
         "unparsed, in a text"},
        {"<!DOCTYPE a [<!NOTATION n SYSTEM ''><!ENTITY e SYSTEM 'e' NDATA n>]><a x='&e;'/>", 1,
         kAny, "unparsed, in a value"},
        {"<!DOCTYPE a [<!ENTITY e SYSTEM 'e' NDATA n>]><a>&e;</a>", 1, kAny,
         "unparsed, of a notation that is not declared"},
        {"<!DOCTYPE a [<!NOTATION n SYSTEM ''><!ENTITY e SYSTEM 'e' NDATA n><!ENTITY f '&e;'>]>"
         "<a>&f;</a>",
         1, kAny, "unparsed, through another"},
    });
}

// WFC: No Recursion
TEST(StandardModeEntities, DoNotContainThemselves) {
    ExpectRefused({
        {"<!DOCTYPE a [<!ENTITY e '&e;'>]><a>&e;</a>", 1, kAny, "in text"},
        {"<!DOCTYPE a [<!ENTITY e '&e;'>]><a x='&e;'/>", 1, kAny, "in a value"},
        {"<!DOCTYPE a [<!ENTITY e '<b>&e;</b>'>]><a>&e;</a>", 1, kAny, "in markup"},
        {"<!DOCTYPE a [<!ENTITY e '&f;'><!ENTITY f 'x&e;'>]><a>&e;</a>", 1, kAny,
         "through another"},
        {"<!DOCTYPE a [<!ENTITY e '&f;'><!ENTITY f 'x&e;'>]><a x='&e;'/>", 1, kAny,
         "through another, in a value"},
        {"<!DOCTYPE a [<!ENTITY e '&f;'><!ENTITY f '&g;'><!ENTITY g '&f;'>]><a>&e;</a>", 1, kAny,
         "two of three"},
        {"<!DOCTYPE a [<!ENTITY e '<b x=\"&e;\"/>'>]><a>&e;</a>", 1, kAny, "through a value"},
        {"<!DOCTYPE a [<!ENTITY e '&#38;e;'>]><a>&e;</a>", 1, kAny, "by an escaped reference"},
        {"<!DOCTYPE a [<!ENTITY % p '&#37;p;'>%p;]><a/>", 1, kAny, "a parameter entity"},
    });
    ExpectAccepted({
        {"<!DOCTYPE a [<!ENTITY e '&e;'>]><a/>", "<a/>"},
        {"<!DOCTYPE a [<!ENTITY e '&f;'><!ENTITY f '&e;'>]><a/>", "<a/>"},
        {"<!DOCTYPE a [<!ENTITY e 'x'>]><a>&e;&e;<b>&e;</b></a>", "<a>xx<b>x</b></a>"},
    });
}

// 4.3.2: what a reference in text stands for matches content by itself.
TEST(StandardModeEntities, AreWellFormedByThemselves) {
    ExpectRefused({
        {"<!DOCTYPE a [<!ENTITY e '<b>'>]><a>&e;</a>", 1, kAny, "a start tag"},
        {"<!DOCTYPE a [<!ENTITY e '<b>'>]><a>&e;</b></a>", 1, kAny, "an element that begins in it"},
        {"<!DOCTYPE a [<!ENTITY e '</b>'>]><a><b>&e;</a>", 1, kAny, "an element that ends in it"},
        {"<!DOCTYPE a [<!ENTITY e '</a>'>]><a>&e;", 1, kAny, "the element around ends in it"},
        {"<!DOCTYPE a [<!ENTITY e '</a><a>'>]><a>&e;</a>", 1, kAny, "tags that overlap"},
        {"<!DOCTYPE a [<!ENTITY e '<b>'><!ENTITY f '</b>'>]><a>&e;&f;</a>", 1, kAny,
         "an element in two of them"},
        {"<!DOCTYPE a [<!ENTITY e '<b>&f;'><!ENTITY f '</b>'>]><a>&e;</a>", 1, kAny,
         "an element that ends in an inner one"},
        {"<!DOCTYPE a [<!ENTITY e '<b'>]><a>&e;/></a>", 1, kAny, "half a tag"},
        {"<!DOCTYPE a [<!ENTITY e '<b x=\"'>]><a>&e;\"/></a>", 1, kAny, "half a value"},
        {"<!DOCTYPE a [<!ENTITY e '</b'>]><a><b>&e;></a>", 1, kAny, "half an end tag"},
        {"<!DOCTYPE a [<!ENTITY e '<!-- '>]><a>&e;--></a>", 1, kAny, "half a comment"},
        {"<!DOCTYPE a [<!ENTITY e '<![CDATA['>]><a>&e;]]></a>", 1, kAny, "half a section"},
        {"<!DOCTYPE a [<!ENTITY e '<?p '>]><a>&e;?></a>", 1, kAny, "half an instruction"},
        {"<!DOCTYPE a [<!ENTITY e '&#60;'>]><a>&e;</a>", 1, kAny, "a less-than sign"},
        {"<!DOCTYPE a [<!ENTITY e '&#38;'>]><a>&e;</a>", 1, kAny, "an ampersand"},
        {"<!DOCTYPE a [<!ENTITY e '&#38;'>]><a>&e;amp;</a>", 1, kAny, "half a reference"},
        {"<!DOCTYPE a [<!ENTITY e '&#38;#'>]><a>&e;65;</a>", 1, kAny, "half a character reference"},
        {"<!DOCTYPE a [<!ENTITY e '&#38;amp'>]><a>&e;;</a>", 1, kAny, "no semicolon"},
        {"<!DOCTYPE a [<!ENTITY e '&#38;#0;'>]><a>&e;</a>", 1, kAny, "a reference to NUL"},
        {"<!DOCTYPE a [<!ENTITY e '&#38;#x;'>]><a>&e;</a>", 1, kAny, "a reference without digits"},
        {"<!DOCTYPE a [<!ENTITY e '&#38;#xD800;'>]><a>&e;</a>", 1, kAny,
         "a reference to a surrogate"},
        {"<!DOCTYPE a [<!ENTITY e ']]>'>]><a>&e;</a>", 1, kAny, "the end of a section"},
        {"<!DOCTYPE a [<!ENTITY e 'x]]&#62;'>]><a>&e;</a>", 1, kAny,
         "the end of a section by a character reference"},
        {"<!DOCTYPE a [<!ENTITY e '<b/>]]>'>]><a>&e;</a>", 1, kAny,
         "the end of a section behind markup"},
        {"<!DOCTYPE a [<!ENTITY e '<?xml version=\"1.0\"?>'>]><a>&e;</a>", 1, kAny,
         "a declaration, which internal entities have not"},
        {"<!DOCTYPE a [<!ENTITY e '<!DOCTYPE b>'>]><a>&e;</a>", 1, kAny, "a document type"},
        {"<!DOCTYPE a [<!ENTITY e '<b/>'>]>&e;", 1, kAny, "a root element"},
        {"<!DOCTYPE a [<!ENTITY e ' '>]><a/>&e;", 1, kAny, "white space behind the root element"},
        {"<!DOCTYPE a [<!ENTITY e '<b x=\"1\" x=\"2\"/>'>]><a>&e;</a>", 1, kAny,
         "an attribute twice"},
        {"<!DOCTYPE a [<!ENTITY e '<!---->--'>]><a>&e;</b></a>", 1, kAny,
         "good itself, and what follows it is not"},
    });
    ExpectAccepted({
        {"<!DOCTYPE a [<!ENTITY e '&#38;#60;'>]><a>&e;</a>", "<a><</a>"},
        {"<!DOCTYPE a [<!ENTITY e '&#38;#38;'>]><a>&e;amp;</a>", "<a>&amp;</a>"},
        {"<!DOCTYPE a [<!ENTITY e ']]&#38;gt;'>]><a>&e;</a>", "<a>]]></a>"},
        {"<!DOCTYPE a [<!ENTITY e ']'><!ENTITY f '&e;]>'>]><a>&f;</a>", "<a>]]></a>"},
    });
}

// WFC: No < in Attribute Values, and what else a value is made of.
TEST(StandardModeEntities, InValuesHaveNoLessThanSign) {
    ExpectRefused({
        {"<!DOCTYPE a [<!ENTITY e '<'>]><a x='&e;'/>", 1, kAny, "alone"},
        {"<!DOCTYPE a [<!ENTITY e '&#60;'>]><a x='&e;'/>", 1, kAny, "by a character reference"},
        {"<!DOCTYPE a [<!ENTITY e '<b/>'>]><a x='&e;'/>", 1, kAny, "a tag"},
        {"<!DOCTYPE a [<!ENTITY e '&f;'><!ENTITY f 'x<'>]><a x='&e;'/>", 1, kAny,
         "in an inner entity"},
        {"<!DOCTYPE a [<!ENTITY e '<'><!ATTLIST a x CDATA '&e;'>]><a/>", 1, kAny,
         "in a default value"},
        {"<!DOCTYPE a [<!ENTITY e '&#38;'>]><a x='&e;'/>", 1, kAny, "an ampersand"},
        {"<!DOCTYPE a [<!ENTITY e '&#38;'>]><a x='&e;amp;'/>", 1, kAny, "half a reference"},
        {"<!DOCTYPE a [<!ENTITY e '&#38;#1;'>]><a x='&e;'/>", 1, kAny,
         "a reference to a control character"},
    });
    ExpectAccepted({
        {"<!DOCTYPE a [<!ENTITY e '&#38;#60;'>]><a x='&e;'/>", "<a x=\"<\"/>"},
        {"<!DOCTYPE a [<!ENTITY e '&lt;'>]><a x='&e;'/>", "<a x=\"<\"/>"},
        {"<!DOCTYPE a [<!ENTITY e ']]>&#34;&#39;>'>]><a x='&e;'/>", "<a x=\"]]>\"'>\"/>"},
        {"<!DOCTYPE a [<!ENTITY e '&#38;#38;lt;'>]><a x='&e;'/>", "<a x=\"&lt;\"/>"},
    });
}

// The constraints hold however references are told.
TEST(StandardModeEntities, KeepTheirConstraintsWhenTheyAreNotReplaced) {
    for (const XmlEntityHandling handling :
         {XmlEntityHandling::ExpandNothing, XmlEntityHandling::ExpandCharEntities}) {
        SCOPED_TRACE(handling.ToString());
        ExpectRefused(
            {
                {"<a>&e;</a>", 1, kAny, "undeclared"},
                {"<a x='&e;'/>", 1, kAny, "undeclared, in a value"},
                {"<!DOCTYPE a [<!ENTITY f '&e;'>]><a>&f;</a>", 1, kAny, "undeclared in another"},
                {"<!DOCTYPE a [<!ENTITY f '&e;'>]><a x='&f;'/>", 1, kAny,
                 "undeclared in another, in a value"},
                {"<!DOCTYPE a [<!NOTATION n SYSTEM ''><!ENTITY e SYSTEM 'e' NDATA n>]><a>&e;</a>",
                 1, kAny, "unparsed"},
                {"<!DOCTYPE a [<!ENTITY e SYSTEM 'e'>]><a x='&e;'/>", 1, kAny,
                 "external, in a value"},
                {"<!DOCTYPE a [<!ENTITY e '&f;'><!ENTITY f SYSTEM 'f'>]><a x='&e;'/>", 1, kAny,
                 "external through another, in a value"},
                {"<!DOCTYPE a [<!ENTITY e '<'>]><a x='&e;'/>", 1, kAny, "a less-than sign"},
                {"<!DOCTYPE a [<!ENTITY e '&f;'><!ENTITY f '<'>]><a x='&e;'/>", 1, kAny,
                 "a less-than sign in another"},
                {"<!DOCTYPE a [<!ENTITY e '&e;'>]><a>&e;</a>", 1, kAny, "recursion"},
                {"<!DOCTYPE a [<!ENTITY e '&e;'>]><a x='&e;'/>", 1, kAny, "recursion in a value"},
                {"<!DOCTYPE a [<!ENTITY e '<b>&e;</b>'>]><a>&e;</a>", 1, kAny,
                 "recursion in markup"},
                {"<!DOCTYPE a [<!ENTITY e '<b>'>]><a>&e;</a>", 1, kAny, "a start tag"},
                {"<!DOCTYPE a [<!ENTITY e '</b>'>]><a><b>&e;</a>", 1, kAny, "an end tag"},
                {"<!DOCTYPE a [<!ENTITY e '&#38;'>]><a>&e;</a>", 1, kAny, "an ampersand"},
                {"<!DOCTYPE a [<!ENTITY e ']]>'>]><a>&e;</a>", 1, kAny, "the end of a section"},
                {"<a>&#1;</a>", 1, kAny, "a reference to a control character"},
                {"<a x='&#0;'/>", 1, kAny, "a reference to NUL"},
                {"<a>&amp</a>", 1, kAny, "no semicolon"},
            },
            StandardOptions{true, handling});
    }
}

TEST(StandardModeEntities, AreToldAsTheHandlingSays) {
    const char* const kDocument =
        "<!DOCTYPE a [<!ENTITY e 'x'><!ENTITY m '<b>y</b>'>]><a z='&e;'>1&e;2&m;&lt;</a>";
    ExpectAccepted({{kDocument, "<a z=\"x\">1x2<b>y</b><</a>"}});
    const StandardReading characters =
        ReadByStandard(kDocument, {true, XmlEntityHandling::ExpandCharEntities});
    EXPECT_EQ(characters.message, "");
    EXPECT_EQ(characters.nodes.substr(characters.nodes.find('>')), ">1&e;2&m;<</a>");
    const StandardReading nothing =
        ReadByStandard(kDocument, {true, XmlEntityHandling::ExpandNothing});
    EXPECT_EQ(nothing.message, "");
    EXPECT_EQ(nothing.nodes, "<a z=\"&e;\">1&e;2&m;<</a>");
}

// Nothing is made of many references but what they stand for.
TEST(StandardModeEntities, ExpandNoFurtherThanTheLimits) {
    std::string document = "<!DOCTYPE a [<!ENTITY e0 'xxxxxxxxxx'>";
    for (int i = 1; i <= 12; ++i) {
        const std::string inner = "&e" + std::to_string(i - 1) + ";";
        document += "<!ENTITY e" + std::to_string(i) + " '";
        for (int k = 0; k < 10; ++k)
            document += inner;
        document += "'>";
    }
    document += "]>";
    EXPECT_EQ(ReadByStandard(document + "<a>&e12;</a>").message, "Entity expansion limit exceeded");
    EXPECT_EQ(ReadByStandard(document + "<a x='&e12;'/>").message,
              "Entity expansion limit exceeded");
    EXPECT_EQ(ReadByStandard(document + "<a>&e2;</a>").nodes,
              "<a>" + std::string(1000, 'x') + "</a>");
}

}  // namespace
