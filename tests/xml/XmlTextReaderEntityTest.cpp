// SPDX-License-Identifier: MIT
//
// References to entities in content: how they are handled, resolved and guarded against cycles.
// Documents with their nodes are in tests/cases/reader/entities-*.case.
#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentForms.h"
#include "support/DocumentReader.h"
#include "support/DocumentStream.h"
#include "support/ExpectThrow.h"
#include "support/NodeDump.h"
#include "support/PrintAstring.h"
#include "support/Refusal.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

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

ReaderSettings Expanding() { return WithEntities(XmlEntityHandling::ExpandEntities); }

ReaderSettings Resolving() {
    ReaderSettings settings;
    settings.resolve = true;
    return settings;
}

// A document whose entities are declared on its second line and whose content stands on its third,
// behind "]><a>".
std::string Document(const std::string& declarations, const std::string& content) {
    return "<!DOCTYPE a [\n" + declarations + "\n]><a>" + content + "</a>";
}

TEST(XmlTextReaderEntity, UndeclaredEntities) {
    const Refusal kRefusals[] = {
        {"<a>&u;</a>", kUndeclared, "u", 1, 7, "no document type"},
        {"<!DOCTYPE a><a>&u;</a>", kUndeclared, "u", 1, 19, "no subset"},
        {"<!DOCTYPE a []><a>&u;</a>", kUndeclared, "u", 1, 22, "nothing declared"},
        {"<!DOCTYPE a [<!ENTITY e ''>]>\n<a>&u;</a>", kUndeclared, "u", 2, 7, "another"},
        {"<!DOCTYPE a [<!ENTITY e ''>]>\n<a>&E;</a>", kUndeclared, "E", 2, 7, "case"},
        {"<!DOCTYPE a [<!ENTITY % e ''>]>\n<a>&e;</a>", kUndeclared, "e", 2, 7, "parameter"},
        {"<!DOCTYPE a [<!NOTATION e SYSTEM 's'>]>\n<a>&e;</a>", kUndeclared, "e", 2, 7, "notation"},
        {"<!DOCTYPE a [<!entity e ''>]>\n<a>&e;</a>", kUndeclared, "e", 2, 7, "no declaration"},
        {"<!DOCTYPE a SYSTEM 'x'>\n<a>&e;</a>", kUndeclared, "e", 2, 7, "external subset"},
        {"<!DOCTYPE a [<!ENTITY e 'x&u;y'>]>\n<a>&e;</a>", kUndeclared, "u", 2, kAny, "inner"},
        {"<!DOCTYPE a [<!ENTITY e '&f;'><!ENTITY f '&u;'>]>\n<a>&e;</a>", kUndeclared, "u", 2, kAny,
         "innermost"},
        {"<!DOCTYPE a [<!ENTITY e '&f;<b/>'>]>\n<a>&e;</a>", kUndeclared, "f", 2, kAny, "markup"},
    };
    ExpectRefusals(kRefusals, Expanding());
    ExpectRefusals(kRefusals, Resolving());
}

TEST(XmlTextReaderEntity, CyclesArePlacedAtTheInnermostEntity) {
    const Refusal kRefusals[] = {
        {"<!DOCTYPE a [\n<!ENTITY e '&e;'>]><a>&e;</a>", kCyclic, "e", 2, 1, "itself"},
        {"<!DOCTYPE a [\n <!ENTITY e 'x&e;'>]><a>&e;</a>", kCyclic, "e", 2, 2, "behind text"},
        {"<!DOCTYPE a [\n<!ENTITY e '&f;'>\n<!ENTITY f '&e;'>]><a>&e;</a>", kCyclic, "e", 3, 1,
         "2"},
        {"<!DOCTYPE a [\n<!ENTITY e '&f;'>\n<!ENTITY f '&e;'>]><a>&f;</a>", kCyclic, "f", 2, 1,
         "2"},
        {"<!DOCTYPE a [\n<!ENTITY e '&f;'>\n<!ENTITY f '&f;'>]><a>&e;</a>", kCyclic, "f", 3, 1,
         "an inner one, itself"},
        {"<!DOCTYPE a [\n<!ENTITY e '&f;'><!ENTITY f '&g;'>\n <!ENTITY g '&e;'>]><a>&e;</a>",
         kCyclic, "e", 3, 2, "three"},
        {"<!DOCTYPE a [\n<!ENTITY e '&f;'><!ENTITY f '&g;'>\n<!ENTITY g '&f;'>]><a>&e;</a>",
         kCyclic, "f", 3, 1, "a cycle that the first is no part of"},
        {"<!DOCTYPE a [\n<!ENTITY e '<b/>&e;'>]><a>&e;</a>", kCyclic, "e", 2, 1, "markup"},
        {"<!DOCTYPE a [\n<!ENTITY e '<b>&f;</b>'>\n<!ENTITY f '&e;'>]><a>&e;</a>", kCyclic, "e", 3,
         1, "text in markup"},
        {"<!DOCTYPE a [\n<!ENTITY e '&f;'>\n<!ENTITY f '<b>&e;</b>'>]><a>&e;</a>", kCyclic, "e", 3,
         1, "markup in text"},
        {"<!DOCTYPE a [\n<!ENTITY e '&g;&f;'><!ENTITY g 'x'>\n<!ENTITY f '&g;&g;&e;'>]><a>&e;</a>",
         kCyclic, "e", 3, 1, "behind entities that have ended"},
        {"<!DOCTYPE a [\n<!ENTITY e '&#38;e;'>]><a>&e;</a>", kCyclic, "e", 2, 1,
         "an ampersand written as a character"},
    };
    ExpectRefusals(kRefusals, Expanding());
    ExpectRefusals(kRefusals, Resolving());
}

TEST(XmlTextReaderEntity, TheSameEntityMoreThanOnceIsNoCycle) {
    const struct {
        const char* declarations;
        const char* content;
        const char* text;  // all of it together
    } kCases[] = {
        {"<!ENTITY e 'x'>", "&e;&e;&e;", "xxx"},
        {"<!ENTITY e '&f;&f;'><!ENTITY f 'x'>", "&e;&f;&e;", "xxxxx"},
        {"<!ENTITY e '&f;&g;'><!ENTITY f '&g;'><!ENTITY g 'x'>", "&e;&e;", "xxxx"},
        {"<!ENTITY e '&f;<b>&f;</b>'><!ENTITY f 'x<c/>'>", "&e;&f;&e;", "xxxxx"},
        {"<!ENTITY e '<b>&f;</b>'><!ENTITY f 'x'>", "&f;&e;&f;&e;&f;", "xxxxx"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.declarations);
        for (const ReaderSettings& settings : {Expanding(), Resolving()}) {
            DocumentReader reader(Document(c.declarations, c.content), settings);
            std::string text;
            while (reader->Read()) {
                if (reader->NodeType() == XmlNodeType::Text) text += reader->Value().str();
                if (reader->NodeType() == XmlNodeType::EntityReference) reader->ResolveEntity();
            }
            EXPECT_EQ(text, c.text);
        }
    }
}

// What an entity's text may hold that its declaration cannot see.
TEST(XmlTextReaderEntity, ReferencesThatComeAboutByExpansionAreChecked) {
    const Refusal kRefusals[] = {
        {"<!DOCTYPE a [<!ENTITY e '&#38;#0;'>]>\n<a>&e;</a>", "Invalid character reference", "", 2,
         kAny, "code 0"},
        {"<!DOCTYPE a [<!ENTITY e '&#38;#xFFFF;'>]>\n<a>&e;</a>", "Invalid character reference", "",
         2, kAny, "no character"},
        {"<!DOCTYPE a [<!ENTITY e '&#38;f'>]>\n<a>&e;</a>", "Invalid named entity", "", 2, kAny,
         "no semicolon"},
        {"<!DOCTYPE a [<!ENTITY e '&#38; x'>]>\n<a>&e;</a>", "Bad name", "", 2, kAny, "blank"},
    };
    ExpectRefusals(kRefusals, Expanding());
}

TEST(XmlTextReaderEntity, TheRulesOfContentHoldInTheTextOfMarkup) {
    const Refusal kRefusals[] = {
        {"<!DOCTYPE a [<!ENTITY e '<b/>x]]>'>]>\n<a>&e;</a>", "Unexpected token", "]]>", 2, 15,
         "end of a section"},
        {"<!DOCTYPE a [<!ENTITY e '<b/><?xml version=\"1.0\"?>'>]>\n<a>&e;</a>",
         "Unexpected xml declaration", "", 2, 16, "declaration"},
        {"<!DOCTYPE a [<!ENTITY e '<b x=\"1\" x=\"2\"/>'>]>\n<a>&e;</a>", "Duplicate attribute", "",
         2, 16, "attribute"},
        {"<!DOCTYPE a [<!ENTITY e '<b><1/></b>'>]>\n<a>&e;</a>",
         "Syntax error: Expected element name", "", 2, kAny, "digit"},
        {"<!DOCTYPE a [<!ENTITY e '<b><!--x--y--></b>'>]>\n<a>&e;</a>",
         "XML comments may not contain '--'", "", 2, 17, "hyphens"},
        {"<!DOCTYPE a [<!ENTITY e '<b>\n<?XML x?></b>'>]>\n<a>&e;</a>", "Invalid PI Name", "", 4, 6,
         "reserved target on the entity's second line"},
        {"<!DOCTYPE a [<!ENTITY e '<'>]>\n<a>&e;b></a>", "Unexpected end of file", "", 2, 8,
         "tag that begins in an entity"},
        {"<!DOCTYPE a [<!ENTITY e '<![CDATA[x]]'>]>\n<a>&e;></a>",
         "Unexpected end of file while scanning for ']]>'", "", 2, 19, "section without its end"},
        {"<!DOCTYPE a [<!ENTITY e '<?p x'>]>\n<a>&e;?></a>",
         "Unexpected end of file while looking for '?>'", "", 2, 12, "instruction without its end"},
    };
    ExpectRefusals(kRefusals, Expanding());
    ExpectRefusals(kRefusals, Resolving());
}

TEST(XmlTextReaderEntity, BracketsOfTwoTextsAreNoEndOfASection) {
    DocumentReader reader(
        Document("<!ENTITY e ']]'><!ENTITY f ']]>'><!ENTITY g '>'>", "&e;> ]&e;> &f; ]]&g;"),
        Expanding());
    reader.ReadNodes(3);
    EXPECT_EQ(reader->Value(), "]]> ]]]> ]]> ]]>");
}

TEST(XmlTextReaderEntity, ResolveEntityStandsOnAReference) {
    DocumentReader reader(Document("<!ENTITY e 'x'>", "t<b y='z'/>&e;"));
    const auto expectMisuse = [&] {
        const XmlTextReader::XmlReadStateEnum state = reader->ReadState();
        const XmlNodeType type = reader->NodeType();
        EXPECT_THROW_FULL(reader->ResolveEntity(), "Invalid operation", "ResolveEntity", -1, -1);
        EXPECT_EQ(reader->ReadState(), state);
        EXPECT_EQ(reader->NodeType(), type);
        EXPECT_TRUE(reader->CanResolveEntity());
    };
    expectMisuse();
    for (const XmlNodeType::XML_NODE_TYPE type : {XmlNodeType::DocumentType, XmlNodeType::Element,
                                                  XmlNodeType::Text, XmlNodeType::Element}) {
        reader.ReadNodes(1);
        EXPECT_EQ(reader->NodeType(), type);
        expectMisuse();
    }
    ASSERT_TRUE(reader->MoveToFirstAttribute());
    expectMisuse();
    ASSERT_TRUE(reader->ReadAttributeValue());
    expectMisuse();
    reader.ReadNodes(1);
    ASSERT_EQ(reader->NodeType(), XmlNodeType::EntityReference);
    EXPECT_TRUE(reader->CanResolveEntity());
    reader->ResolveEntity();
    for (const XmlNodeType::XML_NODE_TYPE type :
         {XmlNodeType::Text, XmlNodeType::EndEntity, XmlNodeType::EndElement}) {
        reader.ReadNodes(1);
        EXPECT_EQ(reader->NodeType(), type);
        expectMisuse();
    }
    EXPECT_FALSE(reader->Read());
    expectMisuse();

    XmlTextReader closed;
    EXPECT_TRUE(closed.CanResolveEntity());
    EXPECT_THROW_FULL(closed.ResolveEntity(), "Invalid operation", "ResolveEntity", -1, -1);
    EXPECT_EQ(closed.ReadState(), XmlTextReader::Closed);
}

// Reads to the first reference.
void ReadToReference(DocumentReader& reader) {
    do {
        reader.ReadNodes(1);
    } while (reader->NodeType() != XmlNodeType::EntityReference);
}

TEST(XmlTextReaderEntity, ResolveEntityTwiceIsACycle) {
    DocumentReader reader(Document("<!ENTITY e 'x'>", "&e;"));
    ReadToReference(reader);
    reader->ResolveEntity();
    EXPECT_THROW_FULL(reader->ResolveEntity(), kCyclic, "e", 2, 1);
    EXPECT_EQ(reader->ReadState(), XmlTextReader::Error);
    EXPECT_FALSE(reader->Read());
}

TEST(XmlTextReaderEntity, AnErrorOfResolveEntityEndsTheReading) {
    DocumentReader reader(Document("", "&u;"));
    ReadToReference(reader);
    EXPECT_THROW_FULL(reader->ResolveEntity(), kUndeclared, "u", 3, 9);
    EXPECT_EQ(reader->ReadState(), XmlTextReader::Error);
    EXPECT_FALSE(reader->Read());
    EXPECT_EQ(reader->ReadState(), XmlTextReader::Error);
}

TEST(XmlTextReaderEntity, AReferenceMayBeLeftUnresolved) {
    DocumentReader reader(Document("<!ENTITY e '&f;<b/>'><!ENTITY f 'x'>", "&e;&f;"));
    ReadToReference(reader);
    reader->ResolveEntity();
    reader.ReadNodes(1);
    EXPECT_EQ(reader->NodeType(), XmlNodeType::EntityReference);
    EXPECT_EQ(reader->Name(), "f");
    reader.ReadNodes(1);
    EXPECT_EQ(reader->NodeType(), XmlNodeType::Element);
    reader.ReadNodes(1);
    EXPECT_EQ(reader->NodeType(), XmlNodeType::EndEntity);
    EXPECT_EQ(reader->Name(), "e");
    reader.ReadNodes(1);
    EXPECT_EQ(reader->NodeType(), XmlNodeType::EntityReference);
    EXPECT_EQ(reader->Name(), "f");
    EXPECT_EQ(reader->LocalName(), "f");
    EXPECT_EQ(reader->Value(), "");
    EXPECT_EQ(reader->Depth(), 2);
}

TEST(XmlTextReaderEntity, TheHandlingMayChangeAtAnyNode) {
    DocumentReader reader(Document("<!ENTITY e 'x'>", "&e;<b/>&e;<b/>&e;<b/>&e;"));
    reader.ReadNodes(3);
    EXPECT_EQ(reader->NodeType(), XmlNodeType::EntityReference);
    reader.ReadNodes(1);
    reader->SetEntityHandling(XmlEntityHandling::ExpandEntities);
    reader.ReadNodes(1);
    EXPECT_EQ(reader->NodeType(), XmlNodeType::Text);
    EXPECT_EQ(reader->Value(), "x");
    reader.ReadNodes(1);
    reader->SetEntityHandling(XmlEntityHandling::ExpandNothing);
    reader.ReadNodes(1);
    EXPECT_EQ(reader->NodeType(), XmlNodeType::Text);
    EXPECT_EQ(reader->Value(), "&e;");
    reader.ReadNodes(1);
    reader->SetEntityHandling(XmlEntityHandling::ExpandCharEntities);
    reader.ReadNodes(1);
    EXPECT_EQ(reader->NodeType(), XmlNodeType::EntityReference);
}

TEST(XmlTextReaderEntity, TheHandlingMayChangeInAnEntity) {
    DocumentReader reader(Document("<!ENTITY e '&f;<b/>&f;'><!ENTITY f 'x'>", "&e;&e;"));
    ReadToReference(reader);
    reader->ResolveEntity();
    reader.ReadNodes(2);
    EXPECT_EQ(reader->NodeType(), XmlNodeType::Element);
    reader->SetEntityHandling(XmlEntityHandling::ExpandEntities);
    reader.ReadNodes(1);
    EXPECT_EQ(reader->NodeType(), XmlNodeType::Text);
    EXPECT_EQ(reader->Value(), "x");
    reader.ReadNodes(1);
    EXPECT_EQ(reader->NodeType(), XmlNodeType::EndEntity);
    reader.ReadNodes(1);
    EXPECT_EQ(reader->NodeType(), XmlNodeType::Text);
    reader.ReadNodes(1);
    EXPECT_EQ(reader->NodeType(), XmlNodeType::Element);
    reader.ReadNodes(2);
    EXPECT_EQ(reader->NodeType(), XmlNodeType::EndEntity);
}

TEST(XmlTextReaderEntity, TheEncodingIsTheDocuments) {
    const std::string document =
        "<?xml version='1.0' encoding='ISO-8859-1'?>"
        "<!DOCTYPE a [<!ENTITY e '\xE9<b x=\"\xE8&#x20AC;\"/>'><!ENTITY f '\xFC&#x20AC;'>]>"
        "<a x='&f;\xE4'>\xE0&f;&e;\xE1</a>";
    const std::string expected =
        "Text \"\\u{E0}\\u{FC}\\u{20AC}\" Text \"\\u{E9}\" Element b Text \"\\u{E1}\" ";
    for (const int bytesPerRead : {0, 1, 2, 3, 7}) {
        DocumentReader reader(document, Expanding(), bytesPerRead);
        reader.ReadToElement();
        EXPECT_EQ(reader->GetAttribute("x"), "\xC3\xBC\xE2\x82\xAC\xC3\xA4");
        const std::string encoding = reader->Encoding().str();
        EXPECT_EQ(encoding, "ISO-8859-1");
        std::string nodes;
        while (reader->Read()) {
            EXPECT_EQ(reader->Encoding(), encoding);
            if (reader->NodeType() == XmlNodeType::Text) {
                const std::string dump = support::DumpNode(*reader);
                nodes += dump.substr(0, dump.find(" depth")) + " ";
            } else if (reader->NodeType() == XmlNodeType::Element) {
                nodes += "Element " + reader->Name().str() + " ";
                EXPECT_EQ(reader->GetAttribute("x"), "\xC3\xA8\xE2\x82\xAC");
            }
        }
        EXPECT_EQ(nodes, expected);
    }
}

TEST(XmlTextReaderEntity, LongTextsInEveryForm) {
    std::string text;
    while (text.size() < 150000)
        text += "x] ]]y\n-- \xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80 ";
    const std::string document =
        Document("<!ENTITY e '" + text + "'><!ENTITY f '&e;<b x=\"&e;\"/>&e;'>", "&e;&f;&e;");
    for (const support::DocumentForm& form : support::AllDocumentForms()) {
        for (const int bytesPerRead : {0, 7}) {
            SCOPED_TRACE(std::string(form.name) + ", " + std::to_string(bytesPerRead));
            DocumentReader reader(support::WriteInForm(document, form).value(), Expanding(),
                                  bytesPerRead);
            reader.ReadNodes(3);
            EXPECT_TRUE(reader->Value() == text);
            reader.ReadNodes(1);
            EXPECT_TRUE(reader->Value() == text);
            reader.ReadNodes(1);
            EXPECT_EQ(reader->Name(), "b");
            EXPECT_TRUE(reader->GetAttribute("x") == text);
            reader.ReadNodes(1);
            EXPECT_TRUE(reader->Value() == text);
            reader.ReadNodes(1);
            EXPECT_EQ(reader->NodeType(), XmlNodeType::EndEntity);
            reader.ReadNodes(1);
            EXPECT_TRUE(reader->Value() == text);
        }
    }
}

// In an entity that is resolved, text comes in pieces as it does in the document.
TEST(XmlTextReaderEntity, MarkupOfAnyLength) {
    std::string markup;
    for (int i = 0; i < 5000; ++i) {
        markup += "<b" + std::to_string(i) + " x=\"&f;\">&f;</b" + std::to_string(i) + ">";
    }
    const std::string document = Document("<!ENTITY e '" + markup + "'><!ENTITY f '-'>", "&e;");
    for (const int bytesPerRead : {0, 1}) {
        DocumentReader reader(document, Expanding(), bytesPerRead);
        reader.ReadNodes(2);
        for (int i = 0; i < 5000; ++i) {
            reader.ReadNodes(1);
            ASSERT_EQ(reader->Name(), "b" + std::to_string(i));
            ASSERT_EQ(reader->GetAttribute("x"), "-");
            reader.ReadNodes(1);
            ASSERT_EQ(reader->Value(), "-");
            reader.ReadNodes(1);
            ASSERT_EQ(reader->NodeType(), XmlNodeType::EndElement);
        }
        reader.ReadNodes(1);
        EXPECT_EQ(reader->NodeType(), XmlNodeType::EndEntity);
    }
}

TEST(XmlTextReaderEntity, AReaderIsAsNewAfterAnyPlaceInAnEntity) {
    const std::string broken = Document(
        "<!ENTITY e '<b>&f;'><!ENTITY f '1<c x=\"&g;\"/>&e;'>"
        "<!ENTITY g '&h;'><!ENTITY h 'x'>",
        "&e;");
    const std::string whole = Document("<!ENTITY e '<d>&f;</d>'><!ENTITY f 'y'>", "&e;&f;");
    for (const ReaderSettings& settings : {Expanding(), Resolving()}) {
        const std::string expected = support::DumpDocument(whole, settings);
        EXPECT_EQ(expected.find("error"), std::string::npos);
        for (int nodes = 0; nodes < 12; ++nodes) {
            XmlTextReader reader;
            support::DocumentStream first(broken);
            reader.SetStream(first.get(), false);
            settings.ApplyTo(reader);
            try {
                for (int i = 0; i < nodes && reader.Read(); ++i) {
                    if (settings.resolve && reader.NodeType() == XmlNodeType::EntityReference) {
                        reader.ResolveEntity();
                    }
                }
            } catch (const Xml::Exception& error) {
                EXPECT_STREQ(error.What(), kCyclic);
            }
            if (nodes % 2 == 0) reader.Close();
            support::DocumentStream second(whole);
            reader.SetStream(second.get(), false);
            EXPECT_EQ(support::DumpNodes(reader, settings), expected) << nodes;
        }
    }
}

// Whatever becomes of the root element that an entity closes, the reader gets to an end.
TEST(XmlTextReaderEntity, AnEntityThatClosesTheRootElement) {
    for (const char* text : {"</a>", "x</a>", "</a><b>", "</a><b/>", "</a> ", "</a>x", "</a>&e;"}) {
        for (const ReaderSettings& settings : {Expanding(), Resolving()}) {
            const std::string document =
                "<!DOCTYPE a [<!ENTITY e '" + std::string(text) + "'>]><a>&e;";
            const std::string whole = support::DumpDocument(document, settings);
            EXPECT_NE(whole.find("EndElement a"), std::string::npos) << text;
            EXPECT_LT(whole.size(), 1000U);
            support::ExpectNodesInAllForms(document, settings, whole);
        }
    }
}

}  // namespace
