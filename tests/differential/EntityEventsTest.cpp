// SPDX-License-Identifier: MIT
//
// Documents with internal subsets: with all entities expanded the reader tells the same events as
// expat and libxml2.
#include "EntityDocument.h"
#include "Events.h"
#include "SameEvents.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using differential::Detail;
using differential::ExpectSameEvents;
using differential::Reading;

// Each row is a document that XML 1.0 calls well-formed.
constexpr struct {
    const char* what;
    const char* document;
} kDocuments[] = {
    // Texts.
    {"one entity", R"(<!DOCTYPE a [<!ENTITY e "one">]><a>&e;</a>)"},
    {"text around it", R"(<!DOCTYPE a [<!ENTITY e "one">]><a>before &e; behind</a>)"},
    {"several in a row", R"(<!DOCTYPE a [<!ENTITY e "1"><!ENTITY f "2">]><a>&e;&f;&e;&e;</a>)"},
    {"an empty one", R"(<!DOCTYPE a [<!ENTITY e "">]><a>&e;</a>)"},
    {"an empty one in a text", R"(<!DOCTYPE a [<!ENTITY e "">]><a>x&e;y</a>)"},
    {"an empty one between tags", R"(<!DOCTYPE a [<!ENTITY e ''>]><a><b/>&e;<b/></a>)"},
    {"only blanks", R"(<!DOCTYPE a [<!ENTITY e "  ">]><a><b/>&e;<b/></a>)"},
    {"blanks and a line end", "<!DOCTYPE a [<!ENTITY e ' \n ' >]><a> &e; </a>"},
    {"beyond ASCII", "<!DOCTYPE a [<!ENTITY e '\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80'>]><a>&e;</a>"},
    {"single quotation marks", R"(<!DOCTYPE a [<!ENTITY e 'say "hi"'>]><a>&e;</a>)"},
    {"double quotation marks", R"(<!DOCTYPE a [<!ENTITY e "it's">]><a x="&e;">&e;</a>)"},
    {"a name with punctuation", R"(<!DOCTYPE a [<!ENTITY e.-_1 "one">]><a>&e.-_1;</a>)"},
    {"the text is as long as a buffer",
     R"(<!DOCTYPE a [<!ENTITY e "0123456789abcdef0123456789abcdef"><!ENTITY f "&e;&e;&e;&e;&e;&e;&e;&e;">
        <!ENTITY g "&f;&f;&f;&f;">]><a x="&g;">&g;&g;</a>)"},
    // Nesting.
    {"nested", R"(<!DOCTYPE a [<!ENTITY e "1&f;3"><!ENTITY f "2">]><a>&e;</a>)"},
    {"nested five deep",
     R"(<!DOCTYPE a [<!ENTITY e "[&f;]"><!ENTITY f "[&g;]"><!ENTITY g "[&h;]"><!ENTITY h "[&i;]">
        <!ENTITY i "!">]><a>&e;</a>)"},
    {"twice in another", R"(<!DOCTYPE a [<!ENTITY e "&f;&f;"><!ENTITY f "x">]><a>&e;&e;</a>)"},
    {"declared behind its use in another",
     R"(<!DOCTYPE a [<!ENTITY e "&f;"><!ENTITY f "late">]><a>&e;</a>)"},
    {"a cycle that nobody enters",
     R"(<!DOCTYPE a [<!ENTITY e "&f;"><!ENTITY f "&e;"><!ENTITY g "ok">]><a>&g;</a>)"},
    {"an undeclared one in a text that nobody uses",
     R"(<!DOCTYPE a [<!ENTITY e "&nobody;"><!ENTITY g "ok">]><a>&g;</a>)"},
    // Markup.
    {"an element", R"(<!DOCTYPE a [<!ENTITY e "<b>x</b>">]><a>&e;</a>)"},
    {"an empty element", R"(<!DOCTYPE a [<!ENTITY e "<b/>">]><a>&e;</a>)"},
    {"text and elements", R"(<!DOCTYPE a [<!ENTITY e "1<b>2</b>3<c/>4">]><a>0&e;5</a>)"},
    {"markup in an inner one",
     R"(<!DOCTYPE a [<!ENTITY e "1&f;3"><!ENTITY f "<b>2</b>">]><a>0&e;4</a>)"},
    {"markup around an inner one",
     R"(<!DOCTYPE a [<!ENTITY e "<b>&f;</b>"><!ENTITY f "2">]><a>&e;&f;</a>)"},
    {"markup twice", R"(<!DOCTYPE a [<!ENTITY e "<b y='1'/>">]><a>&e;&e;<c>&e;</c></a>)"},
    {"attributes in it",
     R"(<!DOCTYPE a [<!ENTITY e "<b x='1' y='&f;'/>"><!ENTITY f "2">]><a>&e;</a>)"},
    {"a comment", R"(<!DOCTYPE a [<!ENTITY e "x<!-- c -->y">]><a>&e;</a>)"},
    {"an instruction", R"(<!DOCTYPE a [<!ENTITY e "x<?pi some data?>y">]><a>&e;</a>)"},
    {"a section", R"(<!DOCTYPE a [<!ENTITY e "x<![CDATA[<&amp;]]>y">]><a>&e;</a>)"},
    {"a reference that is none, in a section",
     R"(<!DOCTYPE a [<!ENTITY e "<![CDATA[&#38;]]>">]><a>&e;</a>)"},
    {"a declaration of a namespace",
     R"(<!DOCTYPE a [<!ENTITY e "<b xmlns='urn:b'><c/></b><c/>">]><a xmlns="urn:a">&e;</a>)"},
    {"the namespaces of where it is used",
     R"(<!DOCTYPE a [<!ENTITY e "<p:b p:x='1'/>">]><a><b xmlns:p="urn:1">&e;</b><c xmlns:p="urn:2">&e;</c></a>)"},
    {"a long comment in a document of many lines",
     "<!DOCTYPE a [\n<!ENTITY e '\n<b>\n</b>\n'>\n]>\n<a>\n&e;\n<!--\n\n--></a>\n"},
    // Character references.
    {"a character reference", R"(<!DOCTYPE a [<!ENTITY e "&#65;&#x42;">]><a>&e;</a>)"},
    {"a line end by reference", R"(<!DOCTYPE a [<!ENTITY e "1&#10;2">]><a>&e;</a>)"},
    {"a quotation mark by reference",
     R"(<!DOCTYPE a [<!ENTITY e "&#34;'&#39;">]><a x="&e;">&e;</a>)"},
    {"a percent sign by reference", R"(<!DOCTYPE a [<!ENTITY e "100&#37;">]><a>&e;</a>)"},
    {"a reference by reference", R"(<!DOCTYPE a [<!ENTITY e "&#38;#65;">]><a>&e;</a>)"},
    {"an ampersand by reference twice",
     R"(<!DOCTYPE a [<!ENTITY e "&#38;#38;">]><a x="&e;">&e;</a>)"},
    {"an ampersand by name", R"(<!DOCTYPE a [<!ENTITY e "&#38;amp;">]><a x="&e;">&e;</a>)"},
    {"a tag by reference", R"(<!DOCTYPE a [<!ENTITY e "&#60;b/>">]><a>&e;</a>)"},
    {"no tag by reference twice", R"(<!DOCTYPE a [<!ENTITY e "&#38;#60;b/>">]><a>&e;</a>)"},
    {"a reference to another by reference",
     R"(<!DOCTYPE a [<!ENTITY e "&#38;f;"><!ENTITY f "x">]><a>&e;</a>)"},
    {"a character beyond the BMP", R"(<!DOCTYPE a [<!ENTITY e "&#x1F600;">]><a>&e;</a>)"},
    {"the example of the standard's appendix on expansion",
     "<!DOCTYPE test [\n<!ELEMENT test (#PCDATA) >\n<!ENTITY % xx '&#37;zz;'>\n"
     "<!ENTITY example \"<p>An ampersand (&#38;#38;) may be escaped\nnumerically (&#38;#38;#38;) "
     "or with a "
     "general entity\n(&amp;amp;).</p>\" >\n]>\n<test>&example;</test>"},
    // Predefined entities.
    {"the predefined ones in a text",
     R"(<!DOCTYPE a [<!ENTITY e "&lt;&gt;&amp;&quot;&apos;">]><a x="&e;">&e;</a>)"},
    {"the predefined ones without declarations",
     R"(<a x="&lt;&gt;&amp;&quot;&apos;">&lt;&gt;&amp;&quot;&apos;</a>)"},
    {"the predefined ones declared again",
     R"(<!DOCTYPE a [<!ENTITY lt "&#38;#60;"><!ENTITY gt "&#62;"><!ENTITY amp "&#38;#38;">
        <!ENTITY apos "&#39;"><!ENTITY quot "&#34;">]><a x="&lt;&gt;&amp;&apos;&quot;">&lt;&gt;&amp;&apos;&quot;</a>)"},
    // In attributes.
    {"in an attribute", R"(<!DOCTYPE a [<!ENTITY e "one">]><a x="&e;" y='-&e;-'/>)"},
    {"nested in an attribute", R"(<!DOCTYPE a [<!ENTITY e "1&f;3"><!ENTITY f "2">]><a x="&e;"/>)"},
    {"the quotation mark of the attribute", R"(<!DOCTYPE a [<!ENTITY e '"'>]><a x="&e;"/>)"},
    {"line ends and tabs", "<!DOCTYPE a [<!ENTITY e '1\n2\t3'>]><a x='&e;'>&e;</a>"},
    {"the name of a namespace",
     R"(<!DOCTYPE a [<!ENTITY e "urn:a">]><a xmlns="&e;" xmlns:p="&e;:b"><p:b p:x=""/></a>)"},
    {"an empty one in an attribute", R"(<!DOCTYPE a [<!ENTITY e "">]><a x="&e;" y="1&e;2"/>)"},
    // What else stands in the subset.
    {"the first declaration counts",
     R"(<!DOCTYPE a [<!ENTITY e "first"><!ENTITY e "second">]><a x="&e;">&e;</a>)"},
    {"comments and instructions",
     R"(<!DOCTYPE a [<!-- ]> <!ENTITY e "no"> " ' --><?pi ]> <!ENTITY e "no"> " '?><!ENTITY e "yes">]><a>&e;</a>)"},
    {"an apostrophe in a comment", R"(<!DOCTYPE a [<!-- don't --><!ENTITY e "yes">]><a>&e;</a>)"},
    {"brackets in literals",
     R"(<!DOCTYPE a [<!ENTITY e "]]&#62;"><!ENTITY f "]>">]><a x="&e;">&f;</a>)"},
    {"element declarations",
     R"(<!DOCTYPE a [<!ELEMENT a (#PCDATA|b)*><!ELEMENT b EMPTY><!ELEMENT c ANY><!ENTITY e "x">
        <!ELEMENT d (a,(b|c)?,d*)>]><a>&e;</a>)"},
    {"attribute lists without defaults",
     R"(<!DOCTYPE a [<!ATTLIST a x CDATA #IMPLIED y CDATA #REQUIRED><!ENTITY e "v">]><a y="&e;"/>)"},
    {"attribute lists with defaults",
     R"(<!DOCTYPE a [<!ATTLIST a x CDATA "one ' > ]" y CDATA #FIXED 'two " > ]'>]><a/>)"},
    {"a default that refers to an entity",
     R"(<!DOCTYPE a [<!ENTITY e "v"><!ATTLIST a x CDATA "&e;">]><a x="&e;&e;"/>)"},
    {"parameter entities that nobody refers to",
     R"(<!DOCTYPE a [<!ENTITY % e "parameter"><!ENTITY e "general">]><a>&e;</a>)"},
    {"an external parameter entity that nobody refers to",
     R"(<!DOCTYPE a [<!ENTITY % e SYSTEM "no.dtd"><!ENTITY e "general">]><a>&e;</a>)"},
    {"notations",
     R"(<!DOCTYPE a [<!NOTATION n SYSTEM "viewer"><!NOTATION m PUBLIC "-//x//y"><!NOTATION o PUBLIC "p" 's'>
        <!ENTITY e "x">]><a>&e;</a>)"},
    {"a notation named as an entity",
     R"(<!DOCTYPE a [<!NOTATION e SYSTEM "viewer"><!ENTITY e "x">]><a>&e;</a>)"},
    {"unparsed entities",
     R"(<!DOCTYPE a [<!NOTATION n SYSTEM "viewer"><!ENTITY p SYSTEM "p.png" NDATA n>
        <!ENTITY q PUBLIC "-//x" "q.png" NDATA n >]><a><b p="p"/></a>)"},
    {"external entities stand for nothing",
     R"(<!DOCTYPE a [<!ENTITY e SYSTEM "e.xml"><!ENTITY f PUBLIC "-//x" 'f.xml'>]><a>1&e;2&f;<b>&e;</b></a>)"},
    {"an external entity in another",
     R"(<!DOCTYPE a [<!ENTITY e SYSTEM "e.xml"><!ENTITY f "<b>&e;</b>">]><a>&f;</a>)"},
    {"an external subset that nobody reads",
     R"(<!DOCTYPE a SYSTEM "a.dtd" [<!ENTITY e "x">]><a>&e;</a>)"},
    {"a public external subset",
     R"(<!DOCTYPE a PUBLIC "-//a//EN" "a.dtd" [<!ENTITY e "x">]><a>&e;</a>)"},
    {"a subset without anything", R"(<!DOCTYPE a []><a/>)"},
    {"no subset", R"(<!DOCTYPE a><a/>)"},
    {"white space wherever it may be",
     "<!DOCTYPE\n\ta\n[\n<!ENTITY\n\te\n'x'\n>\n<!ENTITY % \tp\n'y' "
     ">\n<!NOTATION\nn\nSYSTEM\n'z'\n>\n]\n>\n<a>&e;</a>"},
    {"no white space where none need be",
     R"(<!DOCTYPE a[<!ENTITY e "x"><!ENTITY f '&e;'>]><a>&f;</a>)"},
    {"line ends of all kinds", "<!DOCTYPE a [<!ENTITY e '1\r\n2\r3\n4'>]>\r\n<a>\r&e;\r\n</a>"},
};

void ExpectAgreement(const std::string& document) {
    const Reading ours = differential::ReadWithReader(document, Detail::Whole);
    EXPECT_EQ(ours.error, "") << "is refused";
    EXPECT_FALSE(ours.lines.empty());
    ExpectSameEvents(ours, differential::ReadByResolving(document), "the reader, resolving");
    const Reading expat = differential::ReadWithExpat(document, Detail::Whole);
    ExpectSameEvents(ours, expat, "expat");
    ExpectSameEvents(differential::ReadWithEvents(document), differential::WithoutComments(expat),
                     "expat, compared with XMLReader");
    ExpectSameEvents(ours, differential::ReadWithLibxml(document, Detail::Whole), "libxml2");
}

TEST(EntityEvents, AreThoseThatExpatAndLibxml2Tell) {
    for (const auto& row : kDocuments) {
        SCOPED_TRACE(row.what);
        ExpectAgreement(row.document);
    }
}

// Deliberate: what xml:space and xml:lang say is judged as their values are, references and all.
TEST(EntityEvents, AreToldOfSpaceAndLanguageOnlyWhereEntitiesAreExpanded) {
    const std::string document = R"(<!DOCTYPE a [<!ENTITY e "preserve"><!ENTITY f "en">]>
        <a xml:space="&e;"><b xml:lang="&f;-GB"/></a>)";
    const Reading ours = differential::ReadWithReader(document, Detail::Whole);
    EXPECT_EQ(ours.error, "");
    ExpectSameEvents(ours, differential::ReadWithExpat(document, Detail::Whole), "expat");
    ExpectSameEvents(ours, differential::ReadWithLibxml(document, Detail::Whole), "libxml2");
    EXPECT_EQ(differential::ReadByResolving(document).error,
              "2:26: Invalid xml:space attribute value");
}

TEST(EntityEvents, AreThoseThatExpatAndLibxml2TellOfRandomDocuments) {
    constexpr unsigned kSeed = 3;
    constexpr int kCount = 3000;
    differential::EntityDocument documents(kSeed);
    for (int i = 0; i < kCount && !HasFailure(); ++i) {
        const std::string document = documents.Write();
        SCOPED_TRACE(document);
        ExpectAgreement(document);
    }
}

}  // namespace
