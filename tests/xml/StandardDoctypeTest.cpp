// SPDX-License-Identifier: MIT
//
// The document type declaration in standard mode, and the declarations of its internal subset: what
// the grammar of XML 1.0 allows stands beside what it does not. "^" marks where an error is.
#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentReader.h"
#include "support/MarkedRefusal.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using support::Cause;
using support::DocumentReader;
using support::ExpectDocuments;
using support::ExpectEnds;
using support::ExpectSubsets;
using support::Marked;
using support::StandardSettings;
using Xml::XmlNodeType;

constexpr char kSecondColon[] = "Illegal second colon in qualified name";
constexpr char kInPercent[] = "Parameter entity reference inside of a declaration";

// The places that are told behind a document type are those of the other mode, which does not look
// into the declarations of elements and attributes.
TEST(StandardDoctype, PlacesBehindItCountItsColons) {
    const std::string document =
        "<!DOCTYPE a [<!ELEMENT p:b (c:d,e:f)><!ATTLIST p:b x:y CDATA #IMPLIED>]><a/>";
    for (const Xml::XmlConformance conformance :
         {Xml::XmlConformance::Compatible, Xml::XmlConformance::Standard}) {
        SCOPED_TRACE(conformance.ToString());
        IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(document.data()),
                                static_cast<long>(document.size()));
        Xml::XmlTextReader reader;
        reader.SetConformance(conformance);
        reader.SetStream(&stream, false);
        ASSERT_TRUE(reader.Read());
        ASSERT_TRUE(reader.Read());
        EXPECT_EQ(reader.LinePosition(), static_cast<int>(document.find("<a/>")) + 1);
    }
}

// [28] doctypedecl

TEST(StandardDoctype, Keyword) {
    const Marked kRows[] = {
        {"<!DOCTYPE a><a/>"},
        {"<!DOCTYPE\n\ta\n><a/>"},
        {"<!DOCTYPE^a><a/>", "Whitespace expected behind DOCTYPE"},
        {"<!^doctype a><a/>", "Expected DOCTYPE or '--' behind '<!'"},
        {"<!^ELEMENT a ANY><a/>", "Expected DOCTYPE or '--' behind '<!'"},
        {"<!^ DOCTYPE a><a/>", "Expected DOCTYPE or '--' behind '<!'"},
        {"<a><!^ELEMENT b ANY></a>", "Expected '--' or '[CDATA[' behind '<!'"},
        {"<a><!DOCTYPE^ a></a>", "Document type declaration behind the root element's start"},
        {"<a/><!DOCTYPE^ a>", "Document type declaration behind the root element's start"},
        {"<!DOCTYPE a><!DOCTYPE^ a><a/>", "DOCTYPE already defined"},
    };
    ExpectDocuments(kRows);
}

TEST(StandardDoctype, RootName) {
    const Marked kRows[] = {
        {"<!DOCTYPE _a-1.b><_a-1.b/>"},
        {"<!DOCTYPE p:a><a/>"},
        {"<!DOCTYPE ^><a/>", "Expected the name of the root element"},
        {"<!DOCTYPE ^'a'><a/>", "Expected the name of the root element"},
        {"<!DOCTYPE ^1><a/>", "Expected the name of the root element"},
        {"<!DOCTYPE ^:a><a/>", "Expected the name of the root element"},
        {"<!DOCTYPE ^%a;><a/>", kInPercent},
    };
    ExpectDocuments(kRows);
    const Marked kWithoutNamespaces[] = {{"<!DOCTYPE :a:b:><a/>"}};
    ExpectAllMarked(kWithoutNamespaces, "", "", StandardSettings(false));
}

TEST(StandardDoctype, PartsAndTheirOrder) {
    constexpr char kParts[] =
        "Expected SYSTEM, PUBLIC, '[' or '>' in the document type declaration";
    constexpr char kSubset[] =
        "Expected '[' or '>' behind the external identifier of the document type";
    constexpr char kEnd[] = "Expected '>' at the end of the document type declaration";
    const Marked kRows[] = {
        {"<!DOCTYPE a[]><a/>"},
        {"<!DOCTYPE a [ ] ><a/>"},
        {"<!DOCTYPE a SYSTEM 'x'><a/>"},
        {"<!DOCTYPE a SYSTEM \"x\"[]><a/>"},
        {"<!DOCTYPE a PUBLIC 'x' 'y' [ ] ><a/>"},
        {"<!DOCTYPE a SYSTEM ''><a/>"},
        {"<!DOCTYPE a ^b><a/>", kParts},
        {"<!DOCTYPE a ^'b'><a/>", kParts},
        {"<!DOCTYPE a ^system 'b'><a/>", kParts},
        {"<!DOCTYPE a ^/><a/>", kParts},
        {"<!DOCTYPE a SYSTEM 'x' ^'y'><a/>", kSubset},
        {"<!DOCTYPE a SYSTEM 'x' ^SYSTEM 'y'><a/>", kSubset},
        {"<!DOCTYPE a [] ^[]><a/>", kEnd},
        {"<!DOCTYPE a [] ^SYSTEM 'x'><a/>", kEnd},
        {"<!DOCTYPE a []^]><a/>", kEnd},
    };
    ExpectDocuments(kRows);
}

TEST(StandardDoctype, ExternalIdentifier) {
    const Marked kRows[] = {
        {"<!DOCTYPE a PUBLIC '-//x+,./:=?;!*#@$_%()' 'y'><a/>"},
        {"<!DOCTYPE a PUBLIC \"it's\" 'y'><a/>"},
        {"<!DOCTYPE a SYSTEM 'a\"b&c;%d;<>'><a/>"},
        {"<!DOCTYPE a SYSTEM^'x'><a/>", "Whitespace expected behind SYSTEM"},
        {"<!DOCTYPE a PUBLIC^'x' 'y'><a/>", "Whitespace expected behind PUBLIC"},
        {"<!DOCTYPE a SYSTEM ^x><a/>", "Expected a system identifier in quotation marks"},
        {"<!DOCTYPE a PUBLIC ^x><a/>", "Expected a public identifier in quotation marks"},
        {"<!DOCTYPE a PUBLIC 'x'^><a/>", "Public ID requires two literals"},
        {"<!DOCTYPE a PUBLIC 'x' ^><a/>", "Public ID requires two literals"},
        {"<!DOCTYPE a PUBLIC 'x' ^[]><a/>", "Public ID requires two literals"},
        {"<!DOCTYPE a PUBLIC 'x'^'y'><a/>", "Whitespace required between public ID and system ID"},
        {"<!DOCTYPE a PUBLIC 'x^\ty' 'z'><a/>", "Invalid Public ID character"},
        {"<!DOCTYPE a PUBLIC 'x^{' 'z'><a/>", "Invalid Public ID character"},
        {"<!DOCTYPE a PUBLIC \"x^<\" 'z'><a/>", "Invalid Public ID character"},
    };
    ExpectDocuments(kRows);
}

TEST(StandardDoctype, Node) {
    DocumentReader reader("<!DOCTYPE a PUBLIC ' b \n c ' 'd' [<!ELEMENT a ANY>%p;] ><a/>",
                          StandardSettings());
    reader.ReadNodes(1);
    EXPECT_EQ(reader->NodeType(), XmlNodeType::DocumentType);
    EXPECT_EQ(reader->Name(), "a");
    EXPECT_EQ(reader->Value(), "<!ELEMENT a ANY>%p;");
    EXPECT_EQ(reader->AttributeCount(), 2);
    EXPECT_EQ(reader->GetAttribute("PUBLIC"), "b c");
    EXPECT_EQ(reader->GetAttribute("SYSTEM"), "d");
    EXPECT_EQ(reader->LineNumber(), 1);
    EXPECT_EQ(reader->LinePosition(), 3);
}

// [28b] intSubset

TEST(StandardDoctype, Subset) {
    constexpr char kExpected[] = "Expected a declaration, '%' or ']' in the internal subset";
    const Marked kRows[] = {
        {" \t\n "},
        {"<!ELEMENT a ANY><!ELEMENT b ANY>"},
        {"^x", kExpected},
        {"<!ELEMENT a ANY>^>", kExpected},
        {"^&lt;", kExpected},
        {"^[", kExpected},
        {"<^a/>", kExpected},
        {"<^/a>", kExpected},
        {"<^ !ELEMENT a ANY>", kExpected},
        {"^\"x\"", kExpected},
        {"<!^[INCLUDE[]]>", "Conditional section in the internal subset"},
        {"<!^[ IGNORE []]>", "Conditional section in the internal subset"},
        {"<!^[CDATA[x]]>", "Conditional section in the internal subset"},
        {"<!element^ a ANY>", "Expected ELEMENT, ATTLIST, ENTITY, NOTATION or '--' behind '<!'",
         "element"},
        {"<!DOCTYPE^ a>", "Expected ELEMENT, ATTLIST, ENTITY, NOTATION or '--' behind '<!'",
         "DOCTYPE"},
        {"<!^>", "Expected ELEMENT, ATTLIST, ENTITY, NOTATION or '--' behind '<!'"},
        {"<!^ ELEMENT a ANY>", "Expected ELEMENT, ATTLIST, ENTITY, NOTATION or '--' behind '<!'"},
    };
    ExpectSubsets(kRows);
}

TEST(StandardDoctype, CommentsAndInstructions) {
    const Marked kRows[] = {
        {"<!-- %p; &e; ]> <!ELEMENT - -->"},
        {"<!---->"},
        {"<!--a--^b-->", "XML comments may not contain '--'"},
        {"<!--a--^->", "XML comments may not contain '--'"},
        {"<?x?>"},
        {"<?x %p; ]> ?\?>"},
        {"<?xml-stylesheet?>"},
        {"<?^?>", "Expected the target of the processing instruction"},
        {"<?^ x?>", "Expected the target of the processing instruction"},
        {"<?xml^ version='1.0'?>", "Invalid PI Name", "xml"},
        {"<?XmL^?>", "Invalid PI Name", "XmL"},
        {"<?x^+?>", "Unexpected token in processing instruction"},
        {"<?x?^x>", "Unexpected token in processing instruction"},
    };
    ExpectSubsets(kRows);
    const Marked kWithoutNamespaces[] = {{"<?a:b?>"}};
    ExpectSubsets(kWithoutNamespaces, false);
    EXPECT_THROW(DocumentReader("<!DOCTYPE a [<?a:b?>]><a/>", StandardSettings()).ReadAll(),
                 Xml::Exception);
}

TEST(StandardDoctype, QualifiedNames) {
    constexpr char kLocalName[] = "Expected a name behind the colon";
    const Marked kRows[] = {
        {"<!ELEMENT a:b (c:d,e:f)><!ATTLIST a:b c:d CDATA 'x'>"},
        {"<!ELEMENT ^:b ANY>", "Expected the name of an element type"},
    };
    ExpectSubsets(kRows);
    for (const char* const subset : {"<!ELEMENT a: ANY>", "<!ELEMENT a (b:1)>", "<!ATTLIST a:->",
                                     "<!ATTLIST a b: CDATA 'x'>"}) {
        SCOPED_TRACE(subset);
        const std::string document = std::string("<!DOCTYPE a [") + subset + "]><a/>";
        try {
            DocumentReader(document, StandardSettings()).ReadAll();
            ADD_FAILURE() << "is accepted";
        } catch (const Xml::Exception& error) {
            EXPECT_STREQ(error.What(), kLocalName);
        }
        EXPECT_NO_THROW(DocumentReader(document, StandardSettings(false)).ReadAll());
    }
}

// Namespaces in XML 1.0, sections 4 and 7.
TEST(StandardDoctype, Colons) {
    const struct {
        const char* subset;
        const char* message;
    } kRows[] = {
        {"%a:b;", "Colon not allowed in the name of an entity"},
        {"<!ENTITY e '&a:b;'>", "Colon not allowed in the name of an entity"},
        {"<!ENTITY a:b 'x'>", "Colon not allowed in the name of an entity"},
        {"<!ENTITY % a:b 'x'>", "Colon not allowed in the name of an entity"},
        {"<!NOTATION a:b SYSTEM 'x'>", "Colon not allowed in NOTATION name"},
        {"<!ENTITY e SYSTEM 'x' NDATA a:b>", "Colon not allowed in NOTATION name"},
        {"<!ATTLIST a b NOTATION (a:b) #IMPLIED>", "Colon not allowed in NOTATION name"},
        {"<?a:b?>", "Invalid PI Name"},
        {"<!ELEMENT a:b:c ANY>", kSecondColon},
        {"<!ELEMENT a (a:b:c)>", kSecondColon},
        {"<!ATTLIST a:b:c>", kSecondColon},
        {"<!ATTLIST a b:c:d CDATA 'x'>", kSecondColon},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.subset);
        const std::string document = std::string("<!DOCTYPE a [") + row.subset + "]><a/>";
        try {
            DocumentReader(document, StandardSettings()).ReadAll();
            ADD_FAILURE() << "is accepted";
        } catch (const Xml::Exception& error) {
            EXPECT_STREQ(error.What(), row.message);
        }
        EXPECT_NO_THROW(DocumentReader(document, StandardSettings(false)).ReadAll());
    }
}

// Ends.

TEST(StandardDoctype, EndsOfTheInput) {
    constexpr char kElement[] =
        "Unexpected end of file in the element declaration that begins at line 1, position 14";
    constexpr char kEntity[] =
        "Unexpected end of file in the entity declaration that begins at line 1, position 14";
    const Marked kRows[] = {
        {"^", "Unexpected end of file in the internal subset that begins at line 1, position 13"},
        {"\n <!ELEMENT a ANY>\n^",
         "Unexpected end of file in the internal subset that begins at line 1, position 13"},
        {"]^",
         "Unexpected end of file in the document type declaration that begins at line 1, "
         "position 1"},
        {"<^", "Unexpected end of file in the declaration that begins at line 1, position 14"},
        {"<!^", "Unexpected end of file in the declaration that begins at line 1, position 14"},
        {"<!-^", "Unexpected end of file in the declaration that begins at line 1, position 14"},
        {"<!ELEM^", "Unexpected end of file in the declaration that begins at line 1, position 14"},
        {"\n  <!-- a -^",
         "Unexpected end of file in the comment that begins at line 2, position 3"},
        {"<!-- a --^", "Unexpected end of file in the comment that begins at line 1, position 14"},
        {"<?x ?^",
         "Unexpected end of file in the processing instruction that begins at line 1, "
         "position 14"},
        {"<?x^",
         "Unexpected end of file in the processing instruction that begins at line 1, "
         "position 14"},
        {"<!ELEMENT^", kElement},
        {"<!ELEMENT ^", kElement},
        {"<!ELEMENT a^", kElement},
        {"<!ELEMENT a ((b,c)^", kElement},
        {"<!ELEMENT a (#PCDATA^", kElement},
        {"<!ELEMENT a ANY ^", kElement},
        {"\n\n <!ATTLIST a b CDATA ^",
         "Unexpected end of file in the attribute-list declaration that begins at line 3, "
         "position 2"},
        {"<!ATTLIST a b (c:d^",
         "Unexpected end of file in the attribute-list declaration that begins at line 1, "
         "position 14"},
        {"<!ATTLIST a b CDATA 'x^",
         "Unexpected end of file in the literal that begins at line 1, position 34"},
        {"<!ENTITY e 'x^",
         "Unexpected end of file in the literal that begins at line 1, position 25"},
        {"<!ENTITY e 'x&^",
         "Unexpected end of file in the literal that begins at line 1, position 25"},
        {"<!ENTITY e 'x&amp^",
         "Unexpected end of file in the literal that begins at line 1, position 25"},
        {"<!ENTITY e 'x&#6^",
         "Unexpected end of file in the literal that begins at line 1, position 25"},
        {"<!ENTITY e SYSTEM 'x^",
         "Unexpected end of file in the literal that begins at line 1, position 32"},
        {"<!ENTITY e PUBLIC \"x^",
         "Unexpected end of file in the literal that begins at line 1, position 32"},
        {"<!ENTITY e 'x'^", kEntity},
        {"<!ENTITY % ^", kEntity},
        {"<!NOTATION n^",
         "Unexpected end of file in the notation declaration that begins at line 1, position 14"},
        {"%^",
         "Unexpected end of file in the reference to a parameter entity that begins at line 1, "
         "position 14"},
        {"%p^",
         "Unexpected end of file in the reference to a parameter entity that begins at line 1, "
         "position 14"},
    };
    ExpectEnds(kRows);
}

TEST(StandardDoctype, EndsOutsideOfTheSubset) {
    constexpr char kEnd[] =
        "Unexpected end of file in the document type declaration that begins at line 2, "
        "position 1";
    const Marked kRows[] = {
        {"\n<!DOCTYPE^", kEnd},
        {"\n<!DOCTYPE ^", kEnd},
        {"\n<!DOCTYPE a^", kEnd},
        {"\n<!DOCTYPE a SYSTEM ^", kEnd},
        {"\n<!DOCTYPE a PUBLIC 'x' ^", kEnd},
        {"\n<!DOCTYPE a []^", kEnd},
        {"\n<!DOCTYPE a SYSTEM 'x^",
         "Unexpected end of file in the literal that begins at line 2, position 20"},
    };
    ExpectDocuments(kRows, Cause::End);
}

}  // namespace
