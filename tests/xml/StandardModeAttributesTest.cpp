// SPDX-License-Identifier: MIT
//
// Attribute values by XML 1.0 section 3.3.3 and defaults by section 3.3.2.
#include "support/StandardReading.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

using support::ExpectAccepted;
using support::ExpectRefused;
using support::ReadInForms;
using support::RefusedDocument;
using support::StandardReading;

constexpr int kAny = RefusedDocument::kAny;

constexpr const char* kTokenTypes[] = {"ID",       "IDREF",          "IDREFS",
                                       "ENTITY",   "ENTITIES",       "NMTOKEN",
                                       "NMTOKENS", "NOTATION (x|y)", "(x | y)"};

std::string TypedAs(const std::string& type, const std::string& rest) {
    return "<!DOCTYPE e [<!ATTLIST e a " + type + " #IMPLIED>" + rest;
}

// The table of section 3.3.3.
TEST(StandardModeNormalization, IsThatOfTheTable) {
    const std::string entities =
        "<!ENTITY d \"&#xD;\"><!ENTITY a \"&#xA;\"><!ENTITY da \"&#xD;&#xA;\">]>";
    const struct {
        const char* attribute;
        const char* tokens;
        const char* text;
    } kCases[] = {
        {"a=\"\n\nxyz\"", "xyz", "  xyz"},
        {"a=\"&d;&d;A&a;&#x20;&a;B&da;\"", "A B", "  A   B  "},
        {"a=\"&#xd;&#xd;A&#xa;&#xa;B&#xd;&#xa;\"", "\\r\\rA\\n\\nB\\r\\n", "\\r\\rA\\n\\nB\\r\\n"},
    };
    for (const auto& c : kCases) {
        const std::string element = std::string("<e ") + c.attribute + "/>";
        SCOPED_TRACE(element);
        for (const auto& [type, value] :
             {std::pair("NMTOKENS", c.tokens), std::pair("CDATA", c.text)}) {
            const StandardReading reading = ReadInForms(TypedAs(type, entities) + element);
            EXPECT_EQ(reading.nodes + reading.message, "<e a=\"" + std::string(value) + "\"/>");
        }
        const StandardReading plain = ReadInForms("<!DOCTYPE e [" + entities + element);
        EXPECT_EQ(plain.nodes + plain.message, "<e a=\"" + std::string(c.text) + "\"/>");
    }
}

TEST(StandardModeNormalization, IsThatOfTheDeclaredType) {
    const struct {
        const char* value;
        const char* tokens;
        const char* text;
    } kCases[] = {
        {" x  y ", "x y", " x  y "},
        {"\t\n\r\nx", "x", "   x"},
        {"   ", "", "   "},
        {"", "", ""},
        {"x", "x", "x"},
        {"x&#32;&#32;y&#32;", "x y", "x  y "},
        {"&#9;x &#10;", "\\tx \\n", "\\tx \\n"},
        {"x&#13;", "x\\r", "x\\r"},
        {" \\u{A0} x", "\\u{A0} x", " \\u{A0} x"},
        {"&b; x", "x", "  x"},
    };
    for (const auto& c : kCases) {
        const std::string element = std::string("<e a='") + c.value + "'/>";
        SCOPED_TRACE(element);
        const std::string rest = "<!ENTITY b ' '>]>" + element;
        for (const char* const type : kTokenTypes) {
            SCOPED_TRACE(type);
            const std::string document = TypedAs(type, rest);
            ExpectAccepted(
                {{document.c_str(), ("<e a=\"" + std::string(c.tokens) + "\"/>").c_str()}});
        }
        const std::string document = TypedAs("CDATA", rest);
        ExpectAccepted({{document.c_str(), ("<e a=\"" + std::string(c.text) + "\"/>").c_str()}});
    }
}

TEST(StandardModeNormalization, TakesTheFirstDeclarationOfTheAttribute) {
    ExpectAccepted({
        {"<!DOCTYPE e [<!ATTLIST e a CDATA #IMPLIED><!ATTLIST e a NMTOKEN #IMPLIED>]><e a=' x '/>",
         "<e a=\" x \"/>"},
        {"<!DOCTYPE e [<!ATTLIST e a NMTOKEN #IMPLIED a CDATA #IMPLIED>]><e a=' x '/>",
         "<e a=\"x\"/>"},
        {"<!DOCTYPE e [<!ATTLIST e b CDATA 'd'><!ATTLIST e a NMTOKEN #IMPLIED>]><e a=' x '/>",
         "<e a=\"x\" b=\"d\"/>"},
        {"<!DOCTYPE e [<!ATTLIST f a NMTOKEN #IMPLIED>]><e a=' x '><f a=' y '/></e>",
         "<e a=\" x \"><f a=\"y\"/></e>"},
        {"<!DOCTYPE e [<!ATTLIST e a NMTOKEN #REQUIRED>]><e a=' x '/>", "<e a=\"x\"/>"},
        {"<!DOCTYPE e [<!ATTLIST e a NMTOKEN #REQUIRED>]><e/>", "<e/>"},
    });
}

// 3.3.2: an attribute with a default is there when the tag does not have it.
TEST(StandardModeDefaults, AreSuppliedBehindTheAttributesOfTheTag) {
    ExpectAccepted({
        {"<!DOCTYPE e [<!ATTLIST e a CDATA 'd'>]><e/>", "<e a=\"d\"/>"},
        {"<!DOCTYPE e [<!ATTLIST e a CDATA 'd'>]><e></e>", "<e a=\"d\"></e>"},
        {"<!DOCTYPE e [<!ATTLIST e a CDATA #FIXED 'd'>]><e/>", "<e a=\"d\"/>"},
        {"<!DOCTYPE e [<!ATTLIST e a CDATA 'd'>]><e a='x'/>", "<e a=\"x\"/>"},
        {"<!DOCTYPE e [<!ATTLIST e a CDATA #FIXED 'd'>]><e a='x'/>", "<e a=\"x\"/>"},
        {"<!DOCTYPE e [<!ATTLIST e a CDATA ''>]><e/>", "<e a=\"\"/>"},
        {"<!DOCTYPE e [<!ATTLIST e c CDATA '1' a CDATA '2' b CDATA '3'>]><e b='x'/>",
         "<e b=\"x\" c=\"1\" a=\"2\"/>"},
        {"<!DOCTYPE e [<!ATTLIST e a CDATA '1'><!ATTLIST e b CDATA '2'>]><e/>",
         "<e a=\"1\" b=\"2\"/>"},
        {"<!DOCTYPE e [<!ATTLIST e a CDATA '1'><!ATTLIST e a CDATA '2'>]><e/>", "<e a=\"1\"/>"},
        {"<!DOCTYPE e [<!ATTLIST e a CDATA #IMPLIED><!ATTLIST e a CDATA '2'>]><e/>", "<e/>"},
        {"<!DOCTYPE e [<!ATTLIST f a CDATA 'd'>]><e><f/><g/></e>", "<e><f a=\"d\"/><g/></e>"},
        {"<!DOCTYPE e [<!ATTLIST e a (x|y) 'y'>]><e/>", "<e a=\"y\"/>"},
        {"<!DOCTYPE e [<!NOTATION n SYSTEM ''><!ATTLIST e a NOTATION (n) 'n'>]><e/>",
         "<e a=\"n\"/>"},
        {"<!DOCTYPE e [<!ENTITY x '<f/>'><!ATTLIST f a CDATA 'd'>]><e>&x;</e>",
         "<e><f a=\"d\"/></e>"},
        {"<!DOCTYPE e [<!ENTITY % p '<!ATTLIST e a CDATA \"d\">'>%p;]><e/>", "<e a=\"d\"/>"},
        {"<!DOCTYPE e SYSTEM 's' [<!ATTLIST e a CDATA 'd'>]><e/>", "<e a=\"d\"/>"},
    });
}

TEST(StandardModeDefaults, AreNormalizedByTheirTypes) {
    ExpectAccepted({
        {"<!DOCTYPE e [<!ATTLIST e a CDATA ' x  y\n'>]><e/>", "<e a=\" x  y \"/>"},
        {"<!DOCTYPE e [<!ATTLIST e a NMTOKENS ' x  y\n'>]><e/>", "<e a=\"x y\"/>"},
        {"<!DOCTYPE e [<!ATTLIST e a NMTOKENS ' x&#32; y&#10;'>]><e/>", "<e a=\"x y\\n\"/>"},
        {"<!DOCTYPE e [<!ATTLIST e a CDATA '&#13;&#10;&#9;'>]><e/>", "<e a=\"\\r\\n\\t\"/>"},
        {"<!DOCTYPE e [<!ENTITY x '\ty'><!ATTLIST e a CDATA '&x;'>]><e/>", "<e a=\" y\"/>"},
        {"<!DOCTYPE e [<!ENTITY x '\ty'><!ATTLIST e a NMTOKEN '&x;'>]><e/>", "<e a=\"y\"/>"},
        {"<!DOCTYPE e [<!ATTLIST e a CDATA '&lt;&amp;&#60;&quot;'>]><e/>", "<e a=\"<&<\"\"/>"},
        {"<!DOCTYPE e [<!ENTITY x '&y;'><!ENTITY y 'z'><!ATTLIST e a CDATA '&x;&x;'>]><e/>",
         "<e a=\"zz\"/>"},
    });
    ExpectRefused({
        {"<!DOCTYPE e [<!ATTLIST e a CDATA '<'>]><e/>", 1, kAny, "a less-than sign"},
        {"<!DOCTYPE e [<!ATTLIST e a CDATA '&'>]><e/>", 1, kAny, "an ampersand"},
        {"<!DOCTYPE e [<!ATTLIST e a CDATA '&#0;'>]><e/>", 1, kAny, "a reference to NUL"},
        {"<!DOCTYPE e [<!ATTLIST e a CDATA '\x01'>]><e/>", 1, kAny, "a control character"},
        {"<!DOCTYPE e [<!ENTITY x '&x;'><!ATTLIST e a CDATA '&x;'>]><e/>", 1, kAny,
         "an entity in itself"},
    });
}

// An element has its defaults whatever its tag is like, and each of many elements has.
TEST(StandardModeDefaults, AreThereForEveryElement) {
    std::string document = "<!DOCTYPE e [<!ATTLIST e a CDATA 'd' b NMTOKEN #IMPLIED>]><e>";
    std::string nodes = "<e a=\"d\">";
    for (int i = 0; i < 500; ++i) {
        const std::string number = std::to_string(i);
        document += i % 2 == 0 ? "<e b=' " + number + " '/>" : "<e a='" + number + "'></e>";
        nodes += i % 2 == 0 ? "<e b=\"" + number + "\" a=\"d\"/>" : "<e a=\"" + number + "\"></e>";
    }
    const StandardReading reading = ReadInForms(document + "</e>");
    EXPECT_EQ(reading.nodes + reading.message, nodes + "</e>");
}

// 2.12 and 2.10
TEST(StandardModeDefaults, OfLanguageAndSpaceAreOnlyAttributes) {
    ExpectAccepted({
        {"<!DOCTYPE e [<!ATTLIST e xml:lang CDATA 'fr' xml:space (default|preserve) 'preserve'>]>"
         "<e> <f/></e>",
         "<e {http://www.w3.org/XML/1998/namespace}lang=\"fr\" "
         "{http://www.w3.org/XML/1998/namespace}space=\"preserve\"> <f/></e>"},
        {"<e xml:lang='not a tag' xml:space='x'/>",
         "<e {http://www.w3.org/XML/1998/namespace}lang=\"not a tag\" "
         "{http://www.w3.org/XML/1998/namespace}space=\"x\"/>"},
        {"<e xml:lang=''/>", "<e {http://www.w3.org/XML/1998/namespace}lang=\"\"/>"},
    });
}

// The names of the subset are those of the tags, prefixes included (Namespaces 2).
TEST(StandardModeDefaults, MayDeclareNamespacesAndHavePrefixes) {
    ExpectAccepted({
        {"<!DOCTYPE e [<!ATTLIST e xmlns CDATA 'urn:e'>]><e><f/></e>",
         "<{urn:e}e xmlns=\"urn:e\"><{urn:e}f/></{urn:e}e>"},
        {"<!DOCTYPE p:e [<!ATTLIST p:e xmlns:p CDATA 'urn:p' p:a CDATA 'd'>]><p:e/>",
         "<{urn:p}e xmlns:p=\"urn:p\" {urn:p}a=\"d\"/>"},
        {"<!DOCTYPE e [<!ATTLIST e p:a CDATA 'd' xmlns:p CDATA #FIXED 'urn:p'>]><e/>",
         "<e {urn:p}a=\"d\" xmlns:p=\"urn:p\"/>"},
        {"<!DOCTYPE e [<!ATTLIST e xmlns:p NMTOKEN ' urn:p '>]><e p:a=''/>",
         "<e {urn:p}a=\"\" xmlns:p=\"urn:p\"/>"},
        {"<!DOCTYPE e [<!ATTLIST e xmlns:p CDATA 'urn:p'>]><e xmlns:p='urn:q' p:a=''/>",
         "<e xmlns:p=\"urn:q\" {urn:q}a=\"\"/>"},
        {"<!DOCTYPE e [<!ATTLIST e xmlns CDATA 'urn:e'>]><e xmlns=''/>", "<e xmlns=\"\"/>"},
        {"<!DOCTYPE e [<!ATTLIST p:e a CDATA 'd'>]><q:e xmlns:q='urn:p' xmlns:p='urn:p'/>",
         "<{urn:p}e xmlns:q=\"urn:p\" xmlns:p=\"urn:p\"/>"},
        {"<!DOCTYPE e [<!ATTLIST e xmlns NMTOKEN #IMPLIED>]><e xmlns='  urn:e '/>",
         "<{urn:e}e xmlns=\"urn:e\"/>"},
    });
    ExpectRefused({
        {"<!DOCTYPE e [<!ATTLIST e p:a CDATA 'd'>]><e/>", 1, kAny, "an undeclared prefix"},
        {"<!DOCTYPE e [<!ATTLIST e xmlns:p CDATA ''>]><e/>", 1, kAny, "a prefix bound to nothing"},
        {"<!DOCTYPE e [<!ATTLIST e xmlns:xmlns CDATA 'urn:x'>]><e/>", 1, kAny,
         "a declaration of the prefix xmlns"},
        {"<!DOCTYPE e [<!ATTLIST e xmlns:p CDATA 'urn:p' xmlns:q CDATA 'urn:p'>]>"
         "<e p:a='' q:a=''/>",
         1, kAny, "one name twice by two prefixes"},
        {"<!DOCTYPE e [<!ATTLIST e q:a CDATA 'd'>]><e xmlns:p='urn:p' xmlns:q='urn:p' p:a=''/>", 1,
         kAny, "a default with the name of another attribute"},
    });
}

}  // namespace
