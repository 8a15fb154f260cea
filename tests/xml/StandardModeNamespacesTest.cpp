// SPDX-License-Identifier: MIT
//
// The constraints of Namespaces in XML 1.0 (third edition), sections 2 to 7.
#include "support/StandardReading.h"

#include <gtest/gtest.h>

namespace {

using support::ExpectAccepted;
using support::ExpectRefused;
using support::RefusedDocument;
using support::StandardOptions;

constexpr int kAny = RefusedDocument::kAny;

// Section 4: QNames, [7] to [11] and [4]
TEST(StandardModeNamespaces, HaveQualifiedNames) {
    ExpectAccepted({
        {"<p:a xmlns:p='urn:p'></p:a>", "<{urn:p}a xmlns:p=\"urn:p\"></{urn:p}a>"},
        {"<p:a xmlns:p='urn:p' p:x='1' x='2'/>",
         "<{urn:p}a xmlns:p=\"urn:p\" {urn:p}x=\"1\" x=\"2\"/>"},
        {"<\\u{E9}:\\u{4E2D} xmlns:\\u{E9}='u'/>", "<{u}\\u{4E2D} xmlns:\\u{E9}=\"u\"/>"},
        {"<p-.1:_ xmlns:p-.1='u'/>", "<{u}_ xmlns:p-.1=\"u\"/>"},
        {"<!DOCTYPE p:a><p:a xmlns:p='u'/>", "<{u}a xmlns:p=\"u\"/>"},
    });
    ExpectRefused({
        {"<:a/>", 1, kAny, "no prefix"},
        {"<:/>", 1, kAny, "a colon alone"},
        {"<p: xmlns:p='u'/>", 1, kAny, "no local name"},
        {"<p:a:b xmlns:p='u'/>", 1, kAny, "two colons"},
        {"<p::a xmlns:p='u'/>", 1, kAny, "two colons in a row"},
        {"<p:1 xmlns:p='u'/>", 1, kAny, "a local name that begins with a digit"},
        {"<p:-a xmlns:p='u'/>", 1, kAny, "a local name that begins with a hyphen"},
        {"<p:\\u{300} xmlns:p='u'/>", 1, kAny,
         "a local name that begins with a combining character"},
        {"<a :x=''/>", 1, kAny, "no prefix of an attribute"},
        {"<a x:=''/>", 1, kAny, "no local name of an attribute"},
        {"<a xmlns:p='u' p:x:y=''/>", 1, kAny, "two colons in an attribute"},
        {"<a xmlns:p='u' p:1=''/>", 1, kAny, "a digit in an attribute"},
        {"<a xmlns:=''/>", 1, kAny, "no prefix to declare"},
        {"<a xmlns:='u'/>", 1, kAny, "no prefix to bind"},
        {"<a xmlns:p:q='u'/>", 1, kAny, "two colons in a declaration"},
        {"<a xmlns:1='u'/>", 1, kAny, "a prefix that is no name"},
        {"<p :a xmlns:p='u'/>", 1, kAny, "white space before the colon"},
        {"<p: a xmlns:p='u'/>", 1, kAny, "white space behind the colon"},
    });
}

// Section 5, NSC: Prefix Declared
TEST(StandardModeNamespaces, HaveDeclaredPrefixes) {
    ExpectAccepted({
        {"<a xmlns:p='u'><p:b/></a>", "<a xmlns:p=\"u\"><{u}b/></a>"},
        {"<p:a p:x='' xmlns:p='u'/>", "<{u}a {u}x=\"\" xmlns:p=\"u\"/>"},
        {"<a xmlns:p='u'><p:b xmlns:p='v'/><p:c/></a>",
         "<a xmlns:p=\"u\"><{v}b xmlns:p=\"v\"/><{u}c/></a>"},
        {"<!DOCTYPE a [<!ENTITY e '<p:b/>'>]><a xmlns:p='u'>&e;</a>",
         "<a xmlns:p=\"u\"><{u}b/></a>"},
    });
    ExpectRefused({
        {"<p:a/>", 1, kAny, "an element"},
        {"<a p:x=''/>", 1, kAny, "an attribute"},
        {"<a>\n<b xmlns:p='u'/>\n<p:c/></a>", 3, kAny, "declared by a sibling"},
        {"<a><p:b xmlns:q='u'/></a>", 1, kAny, "another prefix declared"},
        {"<P:a xmlns:p='u'/>", 1, kAny, "a capital letter"},
        {"<a><b xmlns:p='u'></b><c p:x=''/></a>", 1, kAny, "out of scope"},
        {"<!DOCTYPE a [<!ENTITY e '<p:b/>'>]><a>&e;</a>", 1, kAny, "in an entity"},
        {"<xmlns:a xmlns:b='u'/>", 1, kAny, "an element with the prefix xmlns"},
    });
}

// Section 5, NSC: No Prefix Undeclaring
TEST(StandardModeNamespaces, AreNotEmptyWithAPrefix) {
    ExpectAccepted({
        {"<a xmlns=''/>", "<a xmlns=\"\"/>"},
        {"<a xmlns='u'><b xmlns=''><c/></b><d/></a>",
         "<{u}a xmlns=\"u\"><b xmlns=\"\"><c/></b><{u}d/></{u}a>"},
        {"<a xmlns:p=' '/>", "<a xmlns:p=\" \"/>"},
    });
    ExpectRefused({
        {"<a xmlns:p=''/>", 1, kAny, "a prefix that was not declared"},
        {"<a xmlns:p='u'><b xmlns:p=''/></a>", 1, kAny, "a prefix that was declared"},
        {"<!DOCTYPE a [<!ENTITY e ''>]><a xmlns:p='&e;'/>", 1, kAny, "by an entity of nothing"},
    });
}

// Section 3: reserved prefixes and namespace names
TEST(StandardModeNamespaces, ThatAreReservedKeepTheirPrefixes) {
    ExpectAccepted({
        {"<a xml:x=''/>", "<a {http://www.w3.org/XML/1998/namespace}x=\"\"/>"},
        {"<xml:a/>", "<{http://www.w3.org/XML/1998/namespace}a/>"},
        {"<a xmlns:xml='http://www.w3.org/XML/1998/namespace'/>",
         "<a xmlns:xml=\"http://www.w3.org/XML/1998/namespace\"/>"},
        {"<a xmlns:xml='http://www.w3.org/XML/1998/namespace' xml:x=''/>",
         "<a xmlns:xml=\"http://www.w3.org/XML/1998/namespace\" "
         "{http://www.w3.org/XML/1998/namespace}x=\"\"/>"},
        {"<!DOCTYPE a [<!ENTITY e 'http://www.w3.org/XML/1998'>]><a xmlns:xml='&e;/namespace'/>",
         "<a xmlns:xml=\"http://www.w3.org/XML/1998/namespace\"/>"},
        {"<a xmlns:xmlx='u' xmlx:x=''/>", "<a xmlns:xmlx=\"u\" {u}x=\"\"/>"},
        {"<a xmlns:XML='u' XML:x=''/>", "<a xmlns:XML=\"u\" {u}x=\"\"/>"},
        {"<a xmlns:p='http://www.w3.org/XML/1998/namespace/'/>",
         "<a xmlns:p=\"http://www.w3.org/XML/1998/namespace/\"/>"},
        {"<a xmlns:p='http://www.w3.org/2000/xmlns'/>",
         "<a xmlns:p=\"http://www.w3.org/2000/xmlns\"/>"},
        {"<xmlx xmlnsx='1'/>", "<xmlx xmlnsx=\"1\"/>"},
    });
    ExpectRefused({
        {"<a xmlns:xml='u'/>", 1, kAny, "xml bound to another name"},
        {"<a xmlns:xml=''/>", 1, kAny, "xml bound to nothing"},
        {"<a xmlns:p='http://www.w3.org/XML/1998/namespace'/>", 1, kAny,
         "another prefix bound to the name of xml"},
        {"<a xmlns='http://www.w3.org/XML/1998/namespace'/>", 1, kAny,
         "the name of xml as the default"},
        {"<a xmlns:xmlns='u'/>", 1, kAny, "a declaration of xmlns"},
        {"<a xmlns:xmlns='http://www.w3.org/2000/xmlns/'/>", 1, kAny,
         "a declaration of xmlns with its own name"},
        {"<a xmlns:xmlns=''/>", 1, kAny, "a declaration of xmlns with nothing"},
        {"<a xmlns:p='http://www.w3.org/2000/xmlns/'/>", 1, kAny,
         "a prefix bound to the name of xmlns"},
        {"<a xmlns='http://www.w3.org/2000/xmlns/'/>", 1, kAny, "the name of xmlns as the default"},
        {"<xmlns:a/>", 1, kAny, "an element with the prefix xmlns"},
        {"<a xmlns:p='http://www.w3.org/XML/1998/&#110;amespace'/>", 1, kAny,
         "the name of xml with a character reference"},
    });
}

// Section 6.3, NSC: Attributes Unique
TEST(StandardModeNamespaces, MakeAttributesUnique) {
    ExpectAccepted({
        {"<a xmlns:p='u' xmlns:q='v' p:x='' q:x='' x=''/>",
         "<a xmlns:p=\"u\" xmlns:q=\"v\" {u}x=\"\" {v}x=\"\" x=\"\"/>"},
        {"<a xmlns='u' xmlns:p='u' x='' p:x=''/>",
         "<{u}a xmlns=\"u\" xmlns:p=\"u\" x=\"\" {u}x=\"\"/>"},
        {"<a xmlns:p='u' xmlns:q='U' p:x='' q:x=''/>",
         "<a xmlns:p=\"u\" xmlns:q=\"U\" {u}x=\"\" {U}x=\"\"/>"},
        {"<a xmlns:p='u'><b xmlns:p='v' xmlns:q='u' p:x='' q:x=''/></a>",
         "<a xmlns:p=\"u\"><b xmlns:p=\"v\" xmlns:q=\"u\" {v}x=\"\" {u}x=\"\"/></a>"},
    });
    ExpectRefused({
        {"<a xmlns:p='u' xmlns:q='u' p:x='' q:x=''/>", 1, kAny, "by two prefixes of one name"},
        {"<a p:x='' q:x='' xmlns:p='u' xmlns:q='u'/>", 1, kAny, "declared behind them"},
        {"<a xmlns:p='u'><b xmlns:q='u' p:x='' y='' q:x=''/></a>", 1, kAny,
         "with one declared outside"},
        {"<a xmlns:p='u' p:x='' p:x=''/>", 1, kAny, "by one prefix"},
        {"<a xmlns:p='u' xmlns:p='v'/>", 1, kAny, "a prefix declared twice"},
        {"<a xmlns='u' xmlns='u'/>", 1, kAny, "the default declared twice"},
        {"<a xmlns:p='u' xmlns:q='&#117;' p:x='' q:x=''/>", 1, kAny,
         "names that are the same behind references"},
    });
}

// Section 7: no colon in the names of entities, notations and targets
TEST(StandardModeNamespaces, LeaveNoColonToOtherNames) {
    ExpectRefused({
        {"<?p:q?><a/>", 1, kAny, "a target"},
        {"<a><?:p x?></a>", 1, kAny, "a target that begins with it"},
        {"<a><?p: x?></a>", 1, kAny, "a target that ends in it"},
        {"<?xml:x?><a/>", 1, kAny, "a target with xml as its prefix"},
        {"<!DOCTYPE a [<?p:q?>]><a/>", 1, kAny, "a target in the subset"},
        {"<!DOCTYPE a [<!ENTITY p:e 'x'>]><a/>", 1, kAny, "a general entity"},
        {"<!DOCTYPE a [<!ENTITY % p:e 'x'>]><a/>", 1, kAny, "a parameter entity"},
        {"<!DOCTYPE a [<!ENTITY e 'x'>]><a>&p:e;</a>", 1, kAny, "a reference"},
        {"<!DOCTYPE a [<!NOTATION p:n SYSTEM 'x'>]><a/>", 1, kAny, "a notation"},
        {"<a>&p:e;</a>", 1, kAny, "a reference"},
        {"<!DOCTYPE a:b:c><a/>", 1, kAny, "two in the document type"},
        {"<!DOCTYPE a [<!ELEMENT a:b:c ANY>]><a/>", 1, kAny, "two in a declared element"},
        {"<!DOCTYPE a [<!ATTLIST a b:c:d CDATA #IMPLIED>]><a/>", 1, kAny,
         "two in a declared attribute"},
        {"<!DOCTYPE a [<!ELEMENT a (b:c:d)>]><a/>", 1, kAny, "two in a content model"},
    });
}

// The end tag has the name of the start tag, not another one for the same (XML 1.0 [39]).
TEST(StandardModeNamespaces, DoNotMakeTagsMatch) {
    ExpectRefused({
        {"<p:a xmlns:p='u' xmlns:q='u'></q:a>", 1, kAny, "another prefix"},
        {"<p:a xmlns:p='u' xmlns='u'></a>", 1, kAny, "no prefix"},
    });
}

// What is bound to a prefix is the value after all that is done to values.
TEST(StandardModeNamespaces, AreTheNormalizedValues) {
    ExpectAccepted({
        {"<a xmlns='u\n v'/>", "<{u  v}a xmlns=\"u  v\"/>"},
        {"<!DOCTYPE a [<!ENTITY e 'u'>]><a xmlns='&e;'/>", "<{u}a xmlns=\"u\"/>"},
        {"<a xmlns='&#117;'/>", "<{u}a xmlns=\"u\"/>"},
        {"<a xmlns='&#9;u'/>", "<{\\tu}a xmlns=\"\\tu\"/>"},
    });
}

TEST(StandardModeNamespaces, AskForNothingWhenTheyAreOff) {
    ExpectAccepted(
        {
            {"<p:a q:x=''/>", "<p:a q:x=\"\"/>"},
            {"<a xmlns:p=''/>", "<a xmlns:p=\"\"/>"},
            {"<a xmlns:p='u' xmlns:q='u' p:x='' q:x=''/>",
             "<a xmlns:p=\"u\" xmlns:q=\"u\" p:x=\"\" q:x=\"\"/>"},
            {"<a xmlns='http://www.w3.org/2000/xmlns/'/>",
             "<a xmlns=\"http://www.w3.org/2000/xmlns/\"/>"},
            {"<?p:q x?><a/>", "<?p:q x?><a/>"},
        },
        StandardOptions{false});
}

}  // namespace
