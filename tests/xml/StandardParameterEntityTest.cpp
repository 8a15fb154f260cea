// SPDX-License-Identifier: MIT
//
// References to parameter entities in the internal subset, in standard mode: between declarations
// only, with whole declarations in the text. "^" marks where an error is.
#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentReader.h"
#include "support/ExpectThrow.h"
#include "support/MarkedRefusal.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using support::DocumentReader;
using support::ExpectSubsets;
using support::Marked;
using support::StandardSettings;

void ReadAll(const std::string& document) {
    DocumentReader(document, StandardSettings()).ReadAll();
}

TEST(StandardParameterEntity, References) {
    const Marked kRows[] = {
        {"%p;"},
        {"<!ENTITY % p SYSTEM 'x'> %p; %p;"},
        {"<!ENTITY % p ''>%p;%p;"},
        {"<!ENTITY % p ' <!ELEMENT a ANY> '>%p;<!ELEMENT b ANY>%p;"},
        {"<!ENTITY % p '<!ELEMENT a ANY><!--x--><?x?>'>%p;"},
        {"<!ENTITY % p '<!ENTITY &#37; q \"<!ELEMENT a ANY>\">'>%p;%q;"},
        {"<!ENTITY % p '<!ELEMENT a ANY>'><!ENTITY % q '&#37;p; &#37;p;'>%q;%p;"},
        {"%^ p;", "Expected the name of a parameter entity behind '%'"},
        {"%^1;", "Expected the name of a parameter entity behind '%'"},
        {"%p^ ;", "Expected ';' behind the name of a parameter entity", "p"},
        {"%p^<!ELEMENT a ANY>", "Expected ';' behind the name of a parameter entity", "p"},
    };
    ExpectSubsets(kRows);
}

// Production [28b] and what may stand in for its parts: whole declarations.
TEST(StandardParameterEntity, TextsAreWholeDeclarations) {
    const struct {
        const char* text;
        const char* message;
        const char* argument;
    } kRows[] = {
        {"<!ELEMENT a",
         "A parameter entity ends in the element declaration that begins at line 2, "
         "position 4",
         "p"},
        {"<!ELEMENT a ANY",
         "A parameter entity ends in the element declaration that begins at "
         "line 2, position 4",
         "p"},
        {" <!ELEMENT a (b",
         "A parameter entity ends in the element declaration that begins at "
         "line 2, position 5",
         "p"},
        {"<!-- x -", "A parameter entity ends in the comment that begins at line 2, position 4",
         "p"},
        {"<?x x",
         "A parameter entity ends in the processing instruction that begins at line 2, "
         "position 4",
         "p"},
        {"<!ENTITY e \"x",
         "A parameter entity ends in the literal that begins at line 2, "
         "position 15",
         "p"},
        {"<!ENTITY e \"&#38;",
         "A parameter entity ends in the literal that begins at line 2, "
         "position 15",
         "p"},
        {"<!ENTITY e SYSTEM \"x",
         "A parameter entity ends in the literal that begins at line 2, "
         "position 22",
         "p"},
        {"<", "A parameter entity ends in the declaration that begins at line 2, position 4", "p"},
        {"<!", "A parameter entity ends in the declaration that begins at line 2, position 4", "p"},
        {"&#37;q",
         "A parameter entity ends in the reference to a parameter entity that begins at "
         "line 2, position 4",
         "p"},
        {"]", "']' of the internal subset in a parameter entity", "p"},
        {"x", "Expected a declaration, '%' or ']' in the internal subset", ""},
        {"a ANY>", "Expected a declaration, '%' or ']' in the internal subset", ""},
        {"<![INCLUDE[]]>", "Conditional section in the internal subset", ""},
        {"<!ELEMENT a &#37;q;>", "Parameter entity reference inside of a declaration", ""},
        {"<!ENTITY e \"&#37;q;\">", "PE reference not allowed in parsed entity value", ""},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.text);
        const std::string document =
            std::string("<!DOCTYPE a [<!ENTITY % p '") + row.text + "'>\n%p;<!ELEMENT b ANY>]><a/>";
        try {
            ReadAll(document);
            ADD_FAILURE() << "is accepted";
        } catch (const Xml::Exception& error) {
            EXPECT_STREQ(error.What(), row.message);
            EXPECT_STREQ(error.Argument(), row.argument);
            EXPECT_EQ(error.LineNumber(), 2);
        }
    }
}

// A text that is never referred to is never judged.
TEST(StandardParameterEntity, UnusedTextsAreNotParsed) {
    EXPECT_NO_THROW(ReadAll("<!DOCTYPE a [<!ENTITY % p '<!ELEMENT'>]><a/>"));
}

TEST(StandardParameterEntity, Recursion) {
    EXPECT_THROW_FULL(ReadAll("<!DOCTYPE a [<!ENTITY % p '&#37;p;'>%p;]><a/>"),
                      "Cyclic entity reference", "p", 1, 14);
    EXPECT_THROW_FULL(
        ReadAll("<!DOCTYPE a [<!ENTITY % p '&#37;q;'>\n<!ENTITY % q '&#37;p;'>%p;]><a/>"),
        "Cyclic entity reference", "p", 2, 1);
}

// XML 1.0 section 4.1, Entity Declared: a document that is not standalone may refer to parameter
// entities that are not declared.
// Section 4.1: that it is declared is a matter of validity ([69]).
TEST(StandardParameterEntity, Undeclared) {
    EXPECT_NO_THROW(ReadAll("<!DOCTYPE a [%p;]><a/>"));
    EXPECT_NO_THROW(ReadAll("<?xml version='1.0' standalone='no'?><!DOCTYPE a [%p;]><a/>"));
    EXPECT_NO_THROW(ReadAll("<?xml version='1.0' standalone='yes'?><!DOCTYPE a [%p;]><a/>"));
}

// Section 4.1, Entity Declared, is about references that stand in no parameter entity.
TEST(StandardParameterEntity, MayReferToItsOwnEntitiesInAStandaloneDocument) {
    const std::string begin =
        "<?xml version='1.0' standalone='yes'?><!DOCTYPE a [<!ENTITY % p \"<!ENTITY e 'x'>";
    EXPECT_NO_THROW(ReadAll(begin + "<!ATTLIST a b CDATA '&e;'>\">%p;]><a/>"));
    EXPECT_THROW(ReadAll(begin + "\">%p;<!ATTLIST a b CDATA '&e;'>]><a/>"), Xml::Exception);
    EXPECT_THROW(ReadAll(begin + "\">%p;]><a b='&e;'/>"), Xml::Exception);
}

// XML 1.0 section 4.2: the first declaration of an entity is binding.
TEST(StandardParameterEntity, FirstDeclarationCounts) {
    EXPECT_NO_THROW(ReadAll("<!DOCTYPE a [<!ENTITY % p ''><!ENTITY % p '<!ELEMENT'>%p;]><a/>"));
    EXPECT_THROW(ReadAll("<!DOCTYPE a [<!ENTITY % p '<!ELEMENT'><!ENTITY % p ''>%p;]><a/>"),
                 Xml::Exception);
}

// Each of `count` entities refers to the one before.
std::string Chain(int count) {
    std::string document = "<!DOCTYPE a [<!ENTITY % p1 ''>";
    for (int i = 2; i <= count; ++i) {
        document += "<!ENTITY % p" + std::to_string(i) + " '&#37;p" + std::to_string(i - 1) + ";'>";
    }
    return document + "%p" + std::to_string(count) + ";]><a/>";
}

TEST(StandardParameterEntity, NestingLimit) {
    EXPECT_NO_THROW(ReadAll(Chain(1024)));
    try {
        ReadAll(Chain(1025));
        ADD_FAILURE() << "is accepted";
    } catch (const Xml::Exception& error) {
        EXPECT_STREQ(error.What(), "Entity nesting limit exceeded");
        EXPECT_STREQ(error.Argument(), "p1");
    }
}

TEST(StandardParameterEntity, ExpansionLimit) {
    std::string document = "<!DOCTYPE a [<!ENTITY % p0 '<!--" + std::string(1000, 'x') + "-->'>";
    for (int i = 1; i <= 30; ++i) {
        const std::string inner = "&#37;p" + std::to_string(i - 1) + ";";
        document += "<!ENTITY % p" + std::to_string(i) + " '" + inner + inner + "'>";
    }
    document += "%p30;]><a/>";
    EXPECT_THROW(ReadAll(document), Xml::Exception);
    try {
        ReadAll(document);
    } catch (const Xml::Exception& error) {
        EXPECT_STREQ(error.What(), "Entity expansion limit exceeded");
    }
}

// What a default value refers to before it is declared in full is limited all the same.
TEST(StandardParameterEntity, ExpansionLimitOfLateDeclarations) {
    std::string document = "<!DOCTYPE a SYSTEM 'x' [<!ENTITY e '&f0;'><!ATTLIST a b CDATA '&e;'>";
    for (int i = 0; i < 9; ++i) {
        document += "<!ENTITY f" + std::to_string(i) + " '";
        for (int j = 0; j < 10; ++j)
            document += "&f" + std::to_string(i + 1) + ";";
        document += "'>";
    }
    document += "<!ENTITY f9 'xxxxxxxxxx'>";
    for (const char* const end : {"]><a>&e;</a>", "<!ATTLIST a c CDATA '&e;'>]><a/>"}) {
        try {
            ReadAll(document + end);
            ADD_FAILURE() << "is accepted";
        } catch (const Xml::Exception& error) {
            EXPECT_STREQ(error.What(), "Entity expansion limit exceeded");
            EXPECT_STREQ(error.Argument(), "e");
        }
    }
}

// The stack of the thread has no part in it.
TEST(StandardParameterEntity, DeepGroups) {
    constexpr std::size_t kDepth = 1000000;
    const std::string open(kDepth, '(');
    EXPECT_NO_THROW(
        ReadAll("<!DOCTYPE a [<!ELEMENT a " + open + "b" + std::string(kDepth, ')') + ">]><a/>"));
    EXPECT_THROW(ReadAll("<!DOCTYPE a [<!ELEMENT a " + open), Xml::Exception);
    EXPECT_THROW(ReadAll("<!DOCTYPE a [<!ELEMENT a " + open + "b" + std::string(kDepth + 1, ')') +
                         ">]><a/>"),
                 Xml::Exception);
}

// A failed reader forgets the texts that it was in.
TEST(StandardParameterEntity, ReaderIsReusable) {
    const std::string document = "<!DOCTYPE a [<!ENTITY % p '<!ELEMENT'>%p;]><a/>";
    DocumentReader reader(document, StandardSettings());
    EXPECT_THROW(reader.ReadAll(), Xml::Exception);
    EXPECT_EQ(reader->ReadState(), Xml::XmlTextReader::Error);
    EXPECT_FALSE(reader->Read());
    support::DocumentStream stream("<b/>", 0);
    reader->SetStream(stream.get(), false);
    EXPECT_TRUE(reader->Read());
    EXPECT_EQ(reader->Name(), "b");
}

}  // namespace
