// SPDX-License-Identifier: MIT
//
// What the parser of the internal subset records, and what it asks of its host.
#include "support/ExpectThrow.h"
#include "support/PrintAstring.h"
#include "support/ScannerInput.h"
#include "xml/SubsetParser.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using Xml::detail::AttributeDeclaration;
using Xml::detail::AttributeList;
using Xml::detail::AttributeLists;
using Xml::detail::AttributeType;
using Xml::detail::DoctypeFacts;
using Xml::detail::EntityKind;
using Xml::detail::EntityRecord;
using Xml::detail::EntityTable;
using Xml::detail::SubsetHost;
using Xml::detail::SubsetParser;
using Xml::detail::XmlToken;

/// Writes down what it is asked, and lets every general entity stand for its name in brackets.
class FakeHost : public SubsetHost {
public:
    void AppendEntity(astring& value, std::string_view name) override {
        ((value += '[') += name) += ']';
    }
    void CountParameter(const EntityRecord& record) override {
        counted.emplace_back(record.name.view());
    }

    std::vector<std::string> counted;
};

/// A subset that has been parsed.
struct Parsed {
    explicit Parsed(const std::string& subset, bool isStandalone = false, int bytesPerRead = 0) {
        facts.isStandalone = isStandalone;
        support::ScannerInput scanner(subset + "]>", bytesPerRead);
        SubsetParser(*scanner, host, entities, lists, facts, true, 10).Parse();
        EXPECT_EQ(scanner->ScanDtdToken(), XmlToken::TAGEND);
        EXPECT_EQ(scanner->PushedCount(), 0);
    }

    const EntityRecord* Find(EntityKind kind, std::string_view name) const {
        return entities ? entities->Find(kind, name) : nullptr;
    }
    const EntityRecord* Entity(std::string_view name) const {
        return Find(EntityKind::General, name);
    }
    const AttributeDeclaration* Attribute(std::string_view element, std::string_view name) const {
        const AttributeList* const list = lists ? lists->Find(element) : nullptr;
        return list != nullptr ? list->Find(name) : nullptr;
    }

    FakeHost host;
    std::unique_ptr<EntityTable> entities;
    std::unique_ptr<AttributeLists> lists;
    DoctypeFacts facts;
};

TEST(SubsetParser, NothingIsMadeForNothing) {
    const Parsed subset("<!ELEMENT a ANY><!ATTLIST a><!-- x -->");
    EXPECT_EQ(subset.entities, nullptr);
    EXPECT_EQ(subset.lists, nullptr);
    EXPECT_FALSE(subset.facts.refersToParameters);
    EXPECT_FALSE(subset.facts.misses);
    EXPECT_TRUE(subset.facts.KnowsAllEntities());
}

TEST(SubsetParser, Entities) {
    for (const int bytesPerRead : support::kBytesPerRead) {
        const Parsed subset(
            "\n<!ENTITY e '&#60;&f;&#38;#60;\n'><!ENTITY e 'later'>"
            "<!ENTITY % e 'parameter'><!ENTITY x PUBLIC ' p \n q ' 's' NDATA n>"
            "<!NOTATION n PUBLIC 'p'><!NOTATION n SYSTEM 'later'><!NOTATION m SYSTEM 's'>",
            false, bytesPerRead);
        const EntityRecord* const general = subset.Entity("e");
        ASSERT_NE(general, nullptr);
        EXPECT_EQ(general->text, "<&f;&#60;\n");
        EXPECT_FALSE(general->isExternal);
        EXPECT_FALSE(general->isInParameter);
        EXPECT_EQ(general->place.line, 2);
        EXPECT_EQ(general->place.column, 1);
        const EntityRecord* const parameter = subset.Find(EntityKind::Parameter, "e");
        ASSERT_NE(parameter, nullptr);
        EXPECT_EQ(parameter->text, "parameter");
        const EntityRecord* const external = subset.Entity("x");
        ASSERT_NE(external, nullptr);
        EXPECT_TRUE(external->isExternal);
        ASSERT_NE(external->ids, nullptr);
        EXPECT_EQ(external->ids->publicId, "p q");
        EXPECT_EQ(external->ids->systemId, "s");
        EXPECT_EQ(external->ids->notation, "n");
        EXPECT_TRUE(external->IsUnparsed());
        EXPECT_FALSE(general->IsUnparsed());
        const EntityRecord* const notation = subset.Find(EntityKind::Notation, "n");
        ASSERT_NE(notation, nullptr);
        ASSERT_NE(notation->ids, nullptr);
        EXPECT_EQ(notation->ids->publicId, "p");
        EXPECT_EQ(notation->ids->systemId, "");
        EXPECT_FALSE(notation->isExternal);
        ASSERT_NE(subset.Find(EntityKind::Notation, "m"), nullptr);
        EXPECT_TRUE(subset.Find(EntityKind::Notation, "m")->isExternal);
    }
}

TEST(SubsetParser, AttributeTypes) {
    const struct {
        const char* declared;
        AttributeType type;
    } kRows[] = {
        {"CDATA", AttributeType::CData},           {"ID", AttributeType::Id},
        {"IDREF", AttributeType::IdRef},           {"IDREFS", AttributeType::IdRefs},
        {"ENTITY", AttributeType::Entity},         {"ENTITIES", AttributeType::Entities},
        {"NMTOKEN", AttributeType::NmToken},       {"NMTOKENS", AttributeType::NmTokens},
        {"NOTATION (n)", AttributeType::Notation}, {"(x|:y)", AttributeType::Enumeration},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.declared);
        const Parsed subset(std::string("<!ATTLIST p:e a ") + row.declared + " #IMPLIED>");
        const AttributeDeclaration* const attribute = subset.Attribute("p:e", "a");
        ASSERT_NE(attribute, nullptr);
        EXPECT_EQ(attribute->type, row.type);
        EXPECT_FALSE(attribute->hasDefault);
    }
}

TEST(SubsetParser, DefaultValues) {
    const struct {
        const char* declared;
        const char* value;
    } kRows[] = {
        {"CDATA ''", ""},
        {"CDATA #FIXED 'x'", "x"},
        {"CDATA '\t a\n\nb '", "  a  b "},
        {"CDATA '&#9;&#10;&#13; &#x20;'", "\t\n\r  "},
        {"NMTOKENS '\t a\n\nb '", "a b"},
        {"NMTOKENS '&#32;a&#32;&#32;b&#9;'", "a b\t"},
        {"(a|b) ' a '", "a"},
        {"CDATA '&lt;&amp;&gt;&quot;&apos;&e;'", "<&>\"'[e]"},
        {"ID '&e; '", "[e]"},
    };
    for (const auto& row : kRows) {
        for (const int bytesPerRead : support::kBytesPerRead) {
            SCOPED_TRACE(row.declared);
            const Parsed subset(std::string("<!ATTLIST e a ") + row.declared + ">", false,
                                bytesPerRead);
            const AttributeDeclaration* const attribute = subset.Attribute("e", "a");
            ASSERT_NE(attribute, nullptr);
            EXPECT_TRUE(attribute->hasDefault);
            EXPECT_EQ(attribute->value, row.value);
        }
    }
}

TEST(SubsetParser, ListsOfOneElementAreOne) {
    const Parsed subset(
        "<!ATTLIST e a CDATA '1' b CDATA #REQUIRED><!ATTLIST f a CDATA '2'>"
        "<!ATTLIST e a CDATA '3'\n c ID #IMPLIED a CDATA '4'>");
    ASSERT_NE(subset.Attribute("e", "a"), nullptr);
    EXPECT_EQ(subset.Attribute("e", "a")->value, "1");
    ASSERT_NE(subset.Attribute("f", "a"), nullptr);
    EXPECT_EQ(subset.Attribute("f", "a")->value, "2");
    EXPECT_NE(subset.Attribute("e", "b"), nullptr);
    ASSERT_NE(subset.Attribute("e", "c"), nullptr);
    EXPECT_EQ(subset.Attribute("e", "c")->place.line, 2);
    EXPECT_EQ(subset.Attribute("e", "c")->place.column, 2);
    EXPECT_EQ(subset.Attribute("f", "c"), nullptr);
}

// XML 1.0 section 5.1: what stands behind a reference that is not read counts no more.
TEST(SubsetParser, DeclarationsBehindWhatIsNotRead) {
    const char* const kMissed[] = {"%p;", "<!ENTITY % p SYSTEM 'x'>%p;",
                                   "<!ENTITY % q '&#37;p;'>%q;"};
    for (const char* const missed : kMissed) {
        SCOPED_TRACE(missed);
        const Parsed subset(std::string("<!ENTITY before 'x'>") + missed +
                            "<!ENTITY behind 'x'><!ENTITY % r 'x'><!NOTATION n SYSTEM 'x'>"
                            "<!ATTLIST e a CDATA 'x'>");
        EXPECT_TRUE(subset.facts.refersToParameters);
        EXPECT_TRUE(subset.facts.misses);
        EXPECT_FALSE(subset.facts.KnowsAllEntities());
        EXPECT_NE(subset.Entity("before"), nullptr);
        EXPECT_EQ(subset.Entity("behind"), nullptr);
        EXPECT_EQ(subset.Find(EntityKind::Parameter, "r"), nullptr);
        EXPECT_NE(subset.Find(EntityKind::Notation, "n"), nullptr);
        EXPECT_EQ(subset.lists, nullptr);
    }
}

TEST(SubsetParser, StandaloneDeclaresInAnyCase) {
    const Parsed subset("<!ENTITY % p SYSTEM 'x'>%p;<!ENTITY behind 'x'><!ATTLIST e a CDATA 'x'>",
                        true);
    EXPECT_TRUE(subset.facts.misses);
    EXPECT_TRUE(subset.facts.KnowsAllEntities());
    EXPECT_NE(subset.Entity("behind"), nullptr);
    EXPECT_NE(subset.Attribute("e", "a"), nullptr);
}

// XML 1.0 section 4.1, Entity Declared: it does not hold in the texts of parameter entities, and
// declarations in them do not count.
// Only references to general entities have to name one (XML 1.0 [68], [69]).
TEST(SubsetParser, StandaloneRefersToAnyParameterEntity) {
    EXPECT_TRUE(Parsed("%p;", true).facts.misses);
    EXPECT_FALSE(Parsed("<!ENTITY % q '<!ENTITY &#37; p \"\">'>%q;%p;", true).facts.misses);
    EXPECT_TRUE(Parsed("<!ENTITY % q '&#37;p;'>%q;", true).facts.misses);
}

TEST(SubsetParser, ParameterEntities) {
    const Parsed subset(
        "<!ENTITY % p '<!ENTITY e \"&#38;#60;\"><!ATTLIST a b CDATA \"c\">'>"
        "<!ENTITY % q '&#37;p;<!ENTITY f \"\">'>%q;<!ENTITY g ''>");
    EXPECT_EQ(subset.host.counted, (std::vector<std::string>{"q", "p"}));
    EXPECT_TRUE(subset.facts.refersToParameters);
    EXPECT_FALSE(subset.facts.misses);
    ASSERT_NE(subset.Entity("e"), nullptr);
    EXPECT_EQ(subset.Entity("e")->text, "<");
    EXPECT_TRUE(subset.Entity("e")->isInParameter);
    ASSERT_NE(subset.Entity("f"), nullptr);
    EXPECT_TRUE(subset.Entity("f")->isInParameter);
    ASSERT_NE(subset.Entity("g"), nullptr);
    EXPECT_FALSE(subset.Entity("g")->isInParameter);
    ASSERT_NE(subset.Attribute("a", "b"), nullptr);
    EXPECT_EQ(subset.Attribute("a", "b")->value, "c");
    EXPECT_FALSE(subset.Find(EntityKind::Parameter, "p")->inUse);
}

// The example of XML 1.0 appendix D.
TEST(SubsetParser, ReferencesThatReferencesMake) {
    const Parsed subset(
        "<!ELEMENT test (#PCDATA) >\n"
        "<!ENTITY % xx '&#37;zz;'>\n"
        "<!ENTITY % zz '&#60;!ENTITY tricky \"error-prone\" >' >\n"
        "%xx;\n");
    ASSERT_NE(subset.Entity("tricky"), nullptr);
    EXPECT_EQ(subset.Entity("tricky")->text, "error-prone");
}

TEST(SubsetParser, Nesting) {
    std::string declarations = "<!ENTITY % p1 ''>";
    for (int i = 2; i <= 11; ++i) {
        declarations +=
            "<!ENTITY % p" + std::to_string(i) + " '&#37;p" + std::to_string(i - 1) + ";'>";
    }
    EXPECT_NO_THROW(Parsed(declarations + "%p10;"));
    EXPECT_THROW(Parsed(declarations + "%p11;"), Xml::Exception);
}

// Names, tokens and values that the window cuts.
TEST(SubsetParser, LongParts) {
    const std::string name(1000, 'n');
    const std::string value(5000, 'v');
    for (const int bytesPerRead : support::kBytesPerRead) {
        const Parsed subset("<!ELEMENT " + name + " (" + name + "|" + name + ")*><!ENTITY " + name +
                                " '" + value + "'><!ATTLIST " + name + " " + name + " (:" + name +
                                "|:" + name + ") '" + value + "'><!--" + value + "--><?" + name +
                                " " + value + "?>",
                            false, bytesPerRead);
        ASSERT_NE(subset.Entity(name), nullptr);
        EXPECT_EQ(subset.Entity(name)->text, std::string_view(value));
        ASSERT_NE(subset.Attribute(name, name), nullptr);
        EXPECT_EQ(subset.Attribute(name, name)->value, std::string_view(value));
    }
    const std::string tooLong(1025, 'n');
    EXPECT_THROW(Parsed("<!ELEMENT " + tooLong + " ANY>"), Xml::Exception);
    EXPECT_THROW(Parsed("<!ATTLIST a b (:" + tooLong + ") 'x'>"), Xml::Exception);
}

}  // namespace
