// SPDX-License-Identifier: MIT
//
// What attributes mean in standard mode whose references stay as they are.
#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>

#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Xml::XmlConformance;
using Xml::XmlEntityHandling;
using Xml::XmlNodeType;
using Xml::XmlSpace;
using Xml::XmlTextReader;

constexpr XmlEntityHandling::XML_ENTITY_HANDLING kHandlings[] = {
    XmlEntityHandling::ExpandNothing, XmlEntityHandling::ExpandCharEntities,
    XmlEntityHandling::ExpandEntities};

// Calls `look` on the first element of the document, in each handling of entities.
template <typename Look>
void AtFirstElement(const std::string& document, Look look) {
    for (const auto handling : kHandlings) {
        SCOPED_TRACE(XmlEntityHandling(handling).ToString());
        IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(document.data()),
                                static_cast<long>(document.size()));
        XmlTextReader reader;
        reader.SetConformance(XmlConformance::Standard);
        reader.SetStream(&stream, false);
        reader.SetEntityHandling(handling);
        while (reader.Read() && reader.NodeType() != XmlNodeType::Element)
            continue;
        ASSERT_EQ(reader.NodeType(), XmlNodeType::Element);
        look(reader);
    }
}

TEST(StandardModeSpecial, LanguageAndSpaceDoNotDependOnTheHandling) {
    AtFirstElement(
        "<!DOCTYPE a [<!ENTITY e 'de'><!ENTITY s 'preserve'>]>"
        "<a xml:lang='&e;' xml:space='&s;'> <b/></a>",
        [](XmlTextReader& reader) {
            EXPECT_EQ(reader.XmlLang(), "de");
            EXPECT_TRUE(reader.GetXmlSpace() == XmlSpace::SpacePreserve);
            ASSERT_TRUE(reader.Read());
            EXPECT_EQ(reader.NodeType(), XmlNodeType::SignificantWhitespace);
        });
}

TEST(StandardModeSpecial, OtherValuesOfSpaceInherit) {
    AtFirstElement("<a xml:space='preserve'><b xml:space='other'> </b></a>",
                   [](XmlTextReader& reader) {
                       ASSERT_TRUE(reader.Read());
                       EXPECT_EQ(reader.Name(), "b");
                       EXPECT_TRUE(reader.GetXmlSpace() == XmlSpace::SpacePreserve);
                   });
}

TEST(StandardModeSpecial, NamespacesAreNormalizedByTheirTypes) {
    AtFirstElement(
        "<!DOCTYPE q:b [<!ENTITY u 'urn:u'><!ATTLIST q:b xmlns:q NMTOKEN #IMPLIED>]>"
        "<q:b xmlns:q='  &u; '/>",
        [](XmlTextReader& reader) { EXPECT_EQ(reader.NamespaceURI(), "urn:u"); });
}

TEST(StandardModeSpecial, SuppliedAttributesSayThatTheyAre) {
    AtFirstElement("<!DOCTYPE a [<!ATTLIST a x CDATA '1' y CDATA '2'>]><a y='3'/>",
                   [](XmlTextReader& reader) {
                       ASSERT_EQ(reader.AttributeCount(), 2);
                       EXPECT_FALSE(reader.IsDefault());
                       std::string told;
                       for (const Xml::XmlAttributeRef attribute : reader.Attributes()) {
                           told += attribute.Name().str() + "=" + attribute.Value().str();
                           told += attribute.IsDefault() ? "? " : " ";
                       }
                       EXPECT_EQ(told, "y=3 x=1? ");
                       ASSERT_TRUE(reader.MoveToAttribute("x"));
                       EXPECT_TRUE(reader.IsDefault());
                       EXPECT_EQ(reader.LinePosition(), 52);  // of the element
                       ASSERT_TRUE(reader.MoveToAttribute("y"));
                       EXPECT_FALSE(reader.IsDefault());
                   });
}

// Inside of elements most tags are scanned in another way than the first one.
TEST(StandardModeSpecial, TagsInsideOfElementsAreJudgedTheSame) {
    const struct {
        const char* tag;
        bool isAccepted;
    } kCases[] = {
        {"<b/>", true},
        {"<b />", true},
        {"<b x = '1'\ty='2'/>", true},
        {"<p:b p:x='1'></p:b >", true},
        {"<b\xC2\xB7/>", true},
        {"<\xE4\xB8\xAD/>", true},
        {"<b x='&#10;&#9;'/>", true},
        {"<b x='1'y='2'/>", false},
        {"<b x='1'  y='2'z='3'/>", false},
        {"<p:/>", false},
        {"<p:1/>", false},
        {"<p:-b/>", false},
        {"<:b/>", false},
        {"<p:b:c/>", false},
        {"<b p:=''/>", false},
        {"<b p:1=''/>", false},
        {"<b :x=''/>", false},
        {"<b p:x:y=''/>", false},
        {"<q:b/>", false},
        {"<b q:x=''/>", false},
        {"<b xmlns:q=''/>", false},
        {"<b xmlns:xmlns='u'/>", false},
        {"<b x='<'/>", false},
        {"<b x='1' x='2'/>", false},
        {"<b xmlns:q='urn:p' p:x='' q:x=''/>", false},
        {"<b\xC2\xD7/>", false},
        {"<b x='\xEF\xBF\xBF'/>", false},
        {"]]>", false},
        {"<b/ >", false},
        {"</ b>", false},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.tag);
        const std::string before = "<w xmlns:p='urn:p'><v/>";
        AtFirstElement(before + c.tag + "</w>", [&c](XmlTextReader& reader) {
            bool isAccepted = true;
            try {
                while (reader.Read())
                    continue;
            } catch (const Xml::Exception&) {
                isAccepted = false;
            }
            EXPECT_EQ(isAccepted, c.isAccepted);
        });
    }
}

// What is white space in front of a text does not depend on the size of a buffer.
TEST(StandardModeSpecial, TextsKeepTheirBlanks) {
    for (const std::size_t blanks : {1U, 511U, 512U, 1023U, 1024U, 5000U}) {
        SCOPED_TRACE(blanks);
        AtFirstElement("<a>" + std::string(blanks, ' ') + "x</a>", [blanks](XmlTextReader& reader) {
            reader.SetWhitespaceHandling(XmlTextReader::WsNone);
            ASSERT_TRUE(reader.Read());
            EXPECT_EQ(reader.NodeType(), XmlNodeType::Text);
            EXPECT_EQ(reader.Value().length(), blanks + 1);
        });
    }
}

// The text of an entity is judged where its reference stands, also when that is not replaced.
TEST(StandardModeSpecial, PrefixesOfEntitiesAreThoseOfTheirReferences) {
    const std::string begin = "<!DOCTYPE a [<!ENTITY e '<p:b/>'>]><a>";
    const auto readAll = [](XmlTextReader& reader) {
        while (reader.Read())
            continue;
    };
    AtFirstElement(begin + "<c xmlns:p='u'>&e;&e;</c></a>",
                   [&](XmlTextReader& reader) { EXPECT_NO_THROW(readAll(reader)); });
    AtFirstElement(begin + "<c xmlns:p='u'>&e;</c>&e;</a>",
                   [&](XmlTextReader& reader) { EXPECT_THROW(readAll(reader), Xml::Exception); });
}

TEST(StandardModeSpecial, AnEntityThatIsNotDeclaredMayBeResolved) {
    AtFirstElement("<!DOCTYPE a SYSTEM 'a.dtd'><a>x&e;y</a>", [](XmlTextReader& reader) {
        if (reader.EntityHandling() == XmlEntityHandling::ExpandNothing) return;
        ASSERT_TRUE(reader.Read());
        ASSERT_TRUE(reader.Read());
        ASSERT_EQ(reader.NodeType(), XmlNodeType::EntityReference);
        reader.ResolveEntity();
        ASSERT_TRUE(reader.Read());
        EXPECT_EQ(reader.NodeType(), XmlNodeType::EndEntity);
        EXPECT_EQ(reader.Name(), "e");
        ASSERT_TRUE(reader.Read());
        EXPECT_EQ(reader.Value(), "y");
    });
}

// Each reference in a value that stays is looked up, and nothing more.
TEST(StandardModeHostile, ManyReferencesToALongEntityThatStay) {
    std::string document = "<!DOCTYPE a [<!ENTITY e '" + std::string(1'000'000, 'y') + "'>]><a>";
    for (int i = 0; i < 100'000; ++i)
        document += "<b x='&e;'/>";
    document += "</a>";
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(document.data()),
                            static_cast<long>(document.size()));
    XmlTextReader reader;
    reader.SetConformance(XmlConformance::Standard);
    reader.SetStream(&stream, false);
    long elements = 0;
    while (reader.Read())
        elements += reader.NodeType() == XmlNodeType::Element ? 1 : 0;
    EXPECT_EQ(elements, 100'001);
}

// An entity whose text names others that are declared later is measured again, but not for ever.
TEST(StandardModeHostile, EntitiesThatAreMeasuredAgain) {
    std::string document =
        "<!DOCTYPE a SYSTEM 'u' [<!ENTITY e '&none;&x0;" + std::string(10'000, 'y') + "'>";
    for (int i = 0; i < 20'000; ++i) {
        document += "<!ATTLIST a a" + std::to_string(i) + " CDATA '&e;'><!ENTITY x" +
                    std::to_string(i) + " ''>";
    }
    document += "]><a/>";
    EXPECT_THROW(AtFirstElement(document, [](XmlTextReader&) {}), Xml::Exception);
}

// A blank takes no longer the more there are.
TEST(StandardModeHostile, ManyBlanksInAValue) {
    constexpr std::size_t kBlanks = 4'000'000;
    const std::string document = "<a x='" + std::string(kBlanks, '\t') + "&#10;'/>";
    AtFirstElement(document, [](XmlTextReader& reader) {
        EXPECT_GE(reader.GetAttribute("x").length(), kBlanks + 1);
        EXPECT_EQ(reader.GetAttribute("x").view().find('\t'), std::string_view::npos);
    });
}

}  // namespace
