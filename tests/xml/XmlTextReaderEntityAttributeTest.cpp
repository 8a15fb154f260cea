// SPDX-License-Identifier: MIT
//
// References to entities in the values of attributes: what the value is, which parts it has, and
// what the declaration of a namespace makes of them.
#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentForms.h"
#include "support/DocumentReader.h"
#include "support/ExpectThrow.h"
#include "support/PrintAstring.h"
#include "support/Refusal.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using support::DocumentReader;
using support::ExpectRefusals;
using support::ReaderSettings;
using support::Refusal;
using support::WithEntities;
using Xml::XmlEntityHandling;
using Xml::XmlNodeType;
using Xml::XmlTextReader;

constexpr int kAny = Refusal::kAny;

constexpr char kUndeclared[] = "Undeclared entity";
constexpr char kCyclic[] = "Cyclic entity reference";

constexpr XmlEntityHandling::XML_ENTITY_HANDLING kHandlings[] = {
    XmlEntityHandling::ExpandNothing, XmlEntityHandling::ExpandCharEntities,
    XmlEntityHandling::ExpandEntities};

constexpr char kDeclarations[] =
    "<!ENTITY e 'x'><!ENTITY f '&e;&e;'><!ENTITY g ''><!ENTITY lt 'y'>"
    "<!ENTITY c '&#38;#65;&amp;'><!ENTITY m '<b/>'><!ENTITY q '\"'>"
    "<!ENTITY s SYSTEM 's'><!ENTITY w '\t1\r\n2\n'>";

std::string Document(const std::string& declarations, const std::string& attributes) {
    return "<!DOCTYPE a [\n" + declarations + "\n]><a " + attributes + "/>";
}

TEST(XmlTextReaderEntityAttribute, Values) {
    const struct {
        const char* written;
        const char* nothing;
        const char* characters;
        const char* all;
    } kCases[] = {
        {"", "", "", ""},
        {"v", "v", "v", "v"},
        {"&e;", "&e;", "&e;", "x"},
        {"1&e;2&e;3", "1&e;2&e;3", "1&e;2&e;3", "1x2x3"},
        {"&e;&f;", "&e;&f;", "&e;&f;", "xxx"},
        {"&g;", "&g;", "&g;", ""},
        {"1&g;2", "1&g;2", "1&g;2", "12"},
        {"&s;", "&s;", "&s;", ""},
        {"&lt;&gt;&amp;&quot;&apos;", "<>&\"'", "<>&\"'", "<>&\"'"},
        {"&#65;&#x42;", "&#65;&#x42;", "AB", "AB"},
        {"&#65;&e;&amp;", "&#65;&e;&", "A&e;&", "Ax&"},
        {"&amp;e;", "&e;", "&e;", "&e;"},
        {"&#38;e;", "&#38;e;", "&e;", "&e;"},
        {"&c;", "&c;", "&c;", "A&"},
        {"&m;", "&m;", "&m;", "<b/>"},
        {"&q;", "&q;", "&q;", "\""},
        {"\t&w;\r\n", "\t&w;\r\n", "\t&w;\r\n", "\t\t1\r\n2\n\r\n"},
        {"&#9;&#10;&#13;", "&#9;&#10;&#13;", "\t\n\r", "\t\n\r"},
    };
    for (const auto& c : kCases) {
        const std::string document =
            Document(kDeclarations, "p=\"" + std::string(c.written) + "\" q='1'");
        const char* expected[] = {c.nothing, c.characters, c.all};
        for (const auto handling : kHandlings) {
            for (const int bytesPerRead : {0, 1, 2, 3, 7}) {
                SCOPED_TRACE(std::string(c.written) + ", " + std::to_string(handling) + ", " +
                             std::to_string(bytesPerRead));
                DocumentReader reader(document, WithEntities(handling), bytesPerRead);
                reader.ReadToElement();
                EXPECT_EQ(reader->GetAttribute("p"), expected[handling]);
                EXPECT_EQ(reader->GetAttribute("q"), "1");
                EXPECT_EQ(reader->AttributeCount(), 2);
            }
        }
    }
}

TEST(XmlTextReaderEntityAttribute, NormalizationAppliesToTheWholeValue) {
    ReaderSettings settings = WithEntities(XmlEntityHandling::ExpandEntities);
    settings.normalization = true;
    DocumentReader reader(Document(kDeclarations, "p='\t&w;\r\n' q='&w;&#10;&#13;'"), settings);
    reader.ReadToElement();
    EXPECT_EQ(reader->GetAttribute("p"), "  1 2  ");
    EXPECT_EQ(reader->GetAttribute("q"), " 1 2   ");
}

TEST(XmlTextReaderEntityAttribute, UndeclaredEntities) {
    const Refusal kRefusals[] = {
        {"<a x=\"&u;\"/>", kUndeclared, "u", 1, 10, "no document type"},
        {"<a x=\"1&u;2\" y=''/>", kUndeclared, "u", 1, 11, "in text"},
        {"<!DOCTYPE a [<!ENTITY e '&u;'>]>\n<a x='&e;'/>", kUndeclared, "u", 2, kAny, "inner"},
        {"<!DOCTYPE a [<!ENTITY % e 'x'>]>\n<a x='&e;'/>", kUndeclared, "e", 2, 10, "parameter"},
        {"<!DOCTYPE a [<!ENTITY e \"<b x='&u;'/>\">]>\n<a>&e;</a>", kUndeclared, "u", 2, kAny,
         "in an entity of markup"},
    };
    ExpectRefusals(kRefusals, WithEntities(XmlEntityHandling::ExpandEntities));
    ReaderSettings resolving;
    resolving.resolve = true;
    resolving.parts = true;
    for (Refusal refusal : kRefusals) {
        refusal.column = kAny;
        support::ExpectRefusal(refusal, resolving);
    }
}

TEST(XmlTextReaderEntityAttribute, Cycles) {
    const Refusal kRefusals[] = {
        {"<!DOCTYPE a [\n<!ENTITY e '&e;'>]><a x='&e;'/>", kCyclic, "e", 2, 1, "itself"},
        {"<!DOCTYPE a [\n<!ENTITY e '1&f;'>\n<!ENTITY f '2&e;'>]><a x='&e;'/>", kCyclic, "e", 3, 1,
         "two"},
        {"<!DOCTYPE a [\n<!ENTITY e \"<b x='&e;'/>\">]><a>&e;</a>", kCyclic, "e", 2, 1,
         "content and a value"},
        {"<!DOCTYPE a [\n<!ENTITY e \"<b x='&f;'/>\">\n <!ENTITY f '&e;'>]><a>&e;</a>", kCyclic,
         "e", 3, 2, "content, a value and text"},
        {"<!DOCTYPE a [\n<!ENTITY e '&f;'>\n<!ENTITY f \"<b x='&e;'/>\">]><a>&e;</a>", kCyclic, "e",
         3, 1, "an inner entity's value"},
    };
    ExpectRefusals(kRefusals, WithEntities(XmlEntityHandling::ExpandEntities));
    ReaderSettings resolving;
    resolving.resolve = true;
    resolving.parts = true;
    ExpectRefusals(kRefusals, resolving);
}

TEST(XmlTextReaderEntityAttribute, ReferencesThatComeAboutByExpansionAreChecked) {
    const Refusal kRefusals[] = {
        {"<!DOCTYPE a [<!ENTITY e '&#38;#0;'>]>\n<a x='&e;'/>", "Invalid character reference", "",
         2, kAny, "code 0"},
        {"<!DOCTYPE a [<!ENTITY e '&#38;f'>]>\n<a x='&e;'/>", "Invalid named entity", "", 2, kAny,
         "no semicolon"},
    };
    ExpectRefusals(kRefusals, WithEntities(XmlEntityHandling::ExpandEntities));
    ReaderSettings resolving;
    resolving.resolve = true;
    resolving.parts = true;
    ExpectRefusals(kRefusals, resolving);
}

// Namespaces.

TEST(XmlTextReaderEntityAttribute, TheNameOfANamespaceIsExpandedWhateverTheHandling) {
    const struct {
        const char* written;
        const char* name;
    } kCases[] = {
        {"urn:1", "urn:1"},         {"&e;", "x"},       {"urn:&f;&g;2", "urn:xx2"},
        {"&amp;e;", "&e;"},         {"&#38;e;", "&e;"}, {"&#117;rn", "urn"},
        {"&c;&amp;&#x42;", "A&&B"}, {"&lt;", "<"},      {"&g;", ""},
    };
    for (const auto& c : kCases) {
        const std::string value = c.written;
        const std::string document = "<!DOCTYPE a [" + std::string(kDeclarations) +
                                     "]><a xmlns=\"" + value + "\" xmlns:p='" + value +
                                     "' p:y='1'><p:b/></a>";
        for (const auto handling : kHandlings) {
            for (const int bytesPerRead : {0, 1, 7}) {
                SCOPED_TRACE(value + ", " + std::to_string(handling) + ", " +
                             std::to_string(bytesPerRead));
                DocumentReader reader(document, WithEntities(handling), bytesPerRead);
                reader.ReadToElement();
                EXPECT_EQ(reader->NamespaceURI(), c.name);
                EXPECT_EQ(reader->GetAttribute("y", c.name), "1");
                EXPECT_EQ(reader->LookupNamespace("p"), c.name);
                reader.ReadNodes(1);
                EXPECT_EQ(reader->NamespaceURI(), c.name);
            }
        }
    }
}

TEST(XmlTextReaderEntityAttribute, DeclarationsOfNamespacesAreCheckedWhateverTheHandling) {
    const Refusal kRefusals[] = {
        {"<a xmlns='&u;'/>", kUndeclared, "u", 1, kAny, "undeclared"},
        {"<!DOCTYPE a [<!ENTITY e '&u;'>]>\n<a xmlns:p='&e;'/>", kUndeclared, "u", 2, kAny,
         "inner"},
        {"<!DOCTYPE a [\n<!ENTITY e '&e;'>]><a xmlns='&e;'/>", kCyclic, "e", 2, 1, "cycle"},
        {"<!DOCTYPE a [<!ENTITY e 'u'>]>\n<a xmlns:p='u' xmlns:q='&e;' p:x='1' q:x='2'/>",
         "Duplicate attribute", "", 2, kAny, "one namespace in two ways"},
    };
    for (const auto handling : kHandlings)
        ExpectRefusals(kRefusals, WithEntities(handling));
}

// Without namespaces the attribute is one like any other.
TEST(XmlTextReaderEntityAttribute, WithoutNamespacesNothingIsDeclared) {
    ReaderSettings settings;
    settings.namespaces = false;
    DocumentReader reader("<a xmlns='&u;'/>", settings);
    reader.ReadToElement();
    EXPECT_EQ(reader->GetAttribute("xmlns"), "&u;");
    EXPECT_EQ(reader->NamespaceURI(), "");
}

TEST(XmlTextReaderEntityAttribute, LanguageAndSpaceSeeTheValue) {
    const std::string document =
        Document("<!ENTITY l 'en'><!ENTITY s 'preserve'>", "xml:lang='&l;-GB' xml:space='&s;'");
    DocumentReader reader(document, WithEntities(XmlEntityHandling::ExpandEntities));
    reader.ReadToElement();
    EXPECT_EQ(reader->XmlLang(), "en-GB");
    EXPECT_EQ(reader->GetXmlSpace(), Xml::XmlSpace::SpacePreserve);
    const Refusal kRefusals[] = {
        {"<!DOCTYPE a [<!ENTITY l 'en'>]>\n<a xml:lang='&l;'/>", "Bad language ID", "", 2, kAny,
         "the value holds the reference"},
        {"<!DOCTYPE a [<!ENTITY s 'preserve'>]>\n<a xml:space='&s;'/>",
         "Invalid xml:space attribute value", "", 2, kAny, "so does this"},
    };
    ExpectRefusals(kRefusals);
}

// Parts and ResolveEntity().

// A reader at the first reference among the parts of its first attribute.
void ReadToReferenceInValue(DocumentReader& reader) {
    reader.ReadToElement();
    ASSERT_TRUE(reader->MoveToFirstAttribute());
    do {
        ASSERT_TRUE(reader->ReadAttributeValue());
    } while (reader->NodeType() != XmlNodeType::EntityReference);
}

TEST(XmlTextReaderEntityAttribute, ResolveEntityTwiceIsACycle) {
    DocumentReader reader(Document("<!ENTITY e 'x'>", "y='&e;'"));
    ReadToReferenceInValue(reader);
    EXPECT_EQ(reader->Name(), "e");
    reader->ResolveEntity();
    EXPECT_THROW_FULL(reader->ResolveEntity(), kCyclic, "e", 2, 1);
    EXPECT_EQ(reader->ReadState(), XmlTextReader::Error);
    EXPECT_FALSE(reader->Read());
}

TEST(XmlTextReaderEntityAttribute, WhoeverLeavesThePartsLeavesTheEntitiesToo) {
    const std::string document =
        Document("<!ENTITY e '1&f;2'><!ENTITY f '3'>", "x='0&e;4' y='&f;'") + "<!--c-->";
    enum class Way { Element, FirstAttribute, NextAttribute, Index, Name, LocalName, Read };
    for (const Way way : {Way::Element, Way::FirstAttribute, Way::NextAttribute, Way::Index,
                          Way::Name, Way::LocalName, Way::Read}) {
        for (int steps = 0; steps < 6; ++steps) {
            SCOPED_TRACE(std::to_string(static_cast<int>(way)) + ", " + std::to_string(steps));
            DocumentReader reader(document);
            ReadToReferenceInValue(reader);
            reader->ResolveEntity();
            for (int i = 0; i < steps; ++i) {
                ASSERT_TRUE(reader->ReadAttributeValue());
                if (reader->NodeType() == XmlNodeType::EntityReference) reader->ResolveEntity();
            }
            switch (way) {
            case Way::Element: EXPECT_TRUE(reader->MoveToElement()); break;
            case Way::FirstAttribute: EXPECT_TRUE(reader->MoveToFirstAttribute()); break;
            case Way::NextAttribute: EXPECT_TRUE(reader->MoveToNextAttribute()); break;
            case Way::Index: reader->MoveToAttribute(1); break;
            case Way::Name: EXPECT_TRUE(reader->MoveToAttribute("x")); break;
            case Way::LocalName: EXPECT_TRUE(reader->MoveToAttribute("y", "")); break;
            case Way::Read: EXPECT_TRUE(reader->Read()); break;
            }
            if (way == Way::Read) {
                EXPECT_EQ(reader->NodeType(), XmlNodeType::Comment);
                EXPECT_FALSE(reader->Read());
                continue;
            }
            // No entity is in use any more: all of them can be resolved again.
            EXPECT_TRUE(reader->MoveToAttribute("x"));
            std::string text;
            while (reader->ReadAttributeValue()) {
                text += reader->Value().str();
                if (reader->NodeType() == XmlNodeType::EntityReference) reader->ResolveEntity();
            }
            EXPECT_EQ(text, "01324");
            EXPECT_EQ(reader->NodeType(), XmlNodeType::Attribute);
            EXPECT_EQ(reader->Name(), "x");
            EXPECT_TRUE(reader->Read());
            EXPECT_EQ(reader->NodeType(), XmlNodeType::Comment);
        }
    }
}

// The attribute stands in an entity itself: leaving its parts does not leave that entity.
TEST(XmlTextReaderEntityAttribute, PartsInAnEntityOfMarkup) {
    DocumentReader reader(
        "<!DOCTYPE a [<!ENTITY e \"<b x='&f;'/>t<c/>\"><!ENTITY f '1'>]>"
        "<a>&e;&f;&e;</a>");
    reader.ReadNodes(3);
    reader->ResolveEntity();
    ReadToReferenceInValue(reader);
    reader->ResolveEntity();
    ASSERT_TRUE(reader->ReadAttributeValue());
    EXPECT_EQ(reader->Value(), "1");
    std::vector<std::string> nodes;
    while (reader->Read()) {
        nodes.push_back(reader->NodeType().ToString());
        if (nodes.size() == 4) reader->ResolveEntity();
    }
    const std::vector<std::string> expected = {
        "Text", "Element",   "EndEntity",       "EntityReference",  // &f;
        "Text", "EndEntity", "EntityReference", "EndElement"};
    EXPECT_EQ(nodes, expected);
}

TEST(XmlTextReaderEntityAttribute, LongValuesInEveryForm) {
    std::string text;
    while (text.size() < 120000)
        text += "x] y\n-- \xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80 ";
    const std::string document =
        Document("<!ENTITY e \"" + text + "\"><!ENTITY f '-'>", "x='&f;&e;" + text + "&f;'");
    for (const support::DocumentForm& form : support::AllDocumentForms()) {
        for (const int bytesPerRead : {0, 7}) {
            SCOPED_TRACE(std::string(form.name) + ", " + std::to_string(bytesPerRead));
            const std::string bytes = support::WriteInForm(document, form).value();
            DocumentReader expanding(bytes, WithEntities(XmlEntityHandling::ExpandEntities),
                                     bytesPerRead);
            expanding.ReadToElement();
            EXPECT_TRUE(expanding->GetAttribute(0) == "-" + text + text + "-");

            DocumentReader stepping(bytes, {}, bytesPerRead);
            stepping.ReadToElement();
            EXPECT_TRUE(stepping->GetAttribute(0) == "&f;&e;" + text + "&f;");
            ASSERT_TRUE(stepping->MoveToFirstAttribute());
            std::string whole;
            while (stepping->ReadAttributeValue()) {
                whole += stepping->Value().str();
                if (stepping->NodeType() == XmlNodeType::EntityReference) {
                    stepping->ResolveEntity();
                }
            }
            EXPECT_TRUE(whole == "-" + text + text + "-");
        }
    }
}

TEST(XmlTextReaderEntityAttribute, ManyReferences) {
    std::string value;
    std::string expected;
    for (int i = 0; i < 20000; ++i) {
        value += "&e;-";
        expected += "xy-";
    }
    const std::string document = Document("<!ENTITY e 'x&f;'><!ENTITY f 'y'>", "v='" + value + "'");
    for (const int bytesPerRead : {0, 1}) {
        DocumentReader reader(document, WithEntities(XmlEntityHandling::ExpandEntities),
                              bytesPerRead);
        reader.ReadToElement();
        EXPECT_TRUE(reader->GetAttribute(0) == expected);
    }
}

}  // namespace
