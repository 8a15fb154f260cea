// SPDX-License-Identifier: MIT
//
// The value of an attribute, part by part.
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentReader.h"
#include "support/ExpectThrow.h"
#include "support/ReaderPosition.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using support::DocumentReader;
using support::MessageOf;
using support::NodeAndPlace;
using support::NodeText;
using support::ReaderSettings;
using Xml::XmlEntityHandling;
using Xml::XmlNodeType;
using Xml::XmlTextReader;

enum class Entities { Leave, Resolve };

// Returns NodeText() of the parts of the current attribute's value, joined by "; ".
std::string Parts(XmlTextReader& reader, Entities entities = Entities::Leave) {
    std::string out;
    while (reader.ReadAttributeValue()) {
        out += (out.empty() ? "" : "; ") + NodeText(reader);
        const bool isReference = reader.NodeType() == XmlNodeType::EntityReference;
        if (isReference && entities == Entities::Resolve) reader.ResolveEntity();
    }
    return out;
}

constexpr char kSubset[] =
    "<!DOCTYPE a [<!ENTITY e 'E'><!ENTITY n '1&e;2'><!ENTITY nothing ''>"
    "<!ENTITY chars '&#38;#65;&#38;lt;'><!ENTITY loop '[&loop;]'><!ENTITY many '&n;&n;'>"
    "<!ENTITY blanks '\r\n\t&#13;'>]>";

// Returns a document whose root has the attribute x='`value`' and reads to that attribute.
DocumentReader OnValue(const std::string& value, const ReaderSettings& settings = {}) {
    return DocumentReader(kSubset + ("<a x='" + value + "' y='Y'>t</a>"), settings);
}

void ReadToAttribute(DocumentReader& reader) {
    reader.ReadToElement();
    ASSERT_TRUE(reader->MoveToFirstAttribute());
}

ReaderSettings With(XmlEntityHandling entities) {
    ReaderSettings settings;
    settings.entities = entities;
    return settings;
}

constexpr auto kNothing = XmlEntityHandling::ExpandNothing;
constexpr auto kChars = XmlEntityHandling::ExpandCharEntities;
constexpr auto kAll = XmlEntityHandling::ExpandEntities;

TEST(XmlTextReaderParts, OfValuesInEveryEntityMode) {
    const struct {
        XmlEntityHandling::XML_ENTITY_HANDLING entities;
        const char* raw;
        const char* value;
        const char* parts;
    } kCases[] = {
        // Without references the value is one text, also when it is empty.
        {kNothing, "abc", "abc", "Text \"abc\""},
        {kChars, "abc", "abc", "Text \"abc\""},
        {kAll, "abc", "abc", "Text \"abc\""},
        {kNothing, "", "", "Text \"\""},
        {kChars, "", "", "Text \"\""},
        {kAll, "", "", "Text \"\""},
        // Predefined entities are always replaced.
        {kNothing, "a&lt;&apos;b", "a<'b", "Text \"a<'b\""},
        {kChars, "a&lt;&apos;b", "a<'b", "Text \"a<'b\""},
        {kAll, "a&lt;&apos;b", "a<'b", "Text \"a<'b\""},
        {kChars, "&amp;e;", "&e;", "Text \"&e;\""},
        {kAll, "&amp;e;", "&e;", "Text \"&e;\""},
        {kNothing, "&amp;e;", "&e;", "Text \"&e;\""},
        // Character references stay as written where nothing is expanded.
        {kNothing, "a&#65;&#x42;b", "a&#65;&#x42;b", "Text \"a&#65;&#x42;b\""},
        {kChars, "a&#65;&#x42;b", "aABb", "Text \"aABb\""},
        {kAll, "a&#65;&#x42;b", "aABb", "Text \"aABb\""},
        {kNothing, "&#38;e;", "&#38;e;", "Text \"&#38;e;\""},
        {kChars, "&#38;e;", "&e;", "Text \"&e;\""},
        {kNothing, "&#65;&amp;", "&#65;&", "Text \"&#65;&\""},
        // A reference to an entity ends the text before it.
        {kNothing, "a&e;b", "a&e;b", "Text \"a\"; EntityReference e; Text \"b\""},
        {kChars, "a&e;b", "a&e;b", "Text \"a\"; EntityReference e; Text \"b\""},
        {kAll, "a&e;b", "aEb", "Text \"aEb\""},
        {kChars, "&e;", "&e;", "EntityReference e"},
        {kChars, "&e;&n;&e;", "&e;&n;&e;",
         "EntityReference e; EntityReference n; EntityReference e"},
        {kAll, "&e;&n;&e;", "E1E2E", "Text \"E1E2E\""},
        {kAll, "&nothing;", "", "Text \"\""},
        {kChars, "&e; &e;", "&e; &e;", "EntityReference e; Text \" \"; EntityReference e"},
        {kNothing, "&e;&#65;&lt;", "&e;&#65;<", "EntityReference e; Text \"&#65;<\""},
        {kChars, "&#65;&e;&#65;&lt;", "A&e;A<", "Text \"A\"; EntityReference e; Text \"A<\""},
        // The entity need not be declared as long as nobody asks for it.
        {kChars, "&who;", "&who;", "EntityReference who"},
        {kNothing, "&who;", "&who;", "EntityReference who"},
        // What looks like other markup is text.
        {kChars, "&e; ]]> --> \" &lt;b>", "&e; ]]> --> \" <b>",
         "EntityReference e; Text \" ]]> --> \" <b>\""},
        // White space stays where it is.
        {kChars, "  &e;\n\t", "  &e;\n\t", "Text \"  \"; EntityReference e; Text \"\\n\\t\""},
        // Other characters than ASCII.
        {kChars, "\xC3\xA9&e;\xF0\x9F\x98\x80", "\xC3\xA9&e;\xF0\x9F\x98\x80",
         "Text \"\\u{E9}\"; EntityReference e; Text \"\\u{1F600}\""},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(std::string(c.raw) + " with " + XmlEntityHandling(c.entities).ToString());
        DocumentReader reader = OnValue(c.raw, With(c.entities));
        ReadToAttribute(reader);
        EXPECT_EQ(reader->Value(), c.value);
        EXPECT_EQ(Parts(*reader), c.parts);
        EXPECT_EQ(NodeText(*reader), "Attribute x \"" + support::Escape(c.value) + "\"");
        EXPECT_EQ(support::NodesFromHere(*reader), "Text \"t\"; EndElement a");
    }
}

TEST(XmlTextReaderParts, AreNodesInsideOfTheElement) {
    DocumentReader reader("<r>\n <a x='1' y='v&e;w'/></r>");
    reader.ReadNodes(3);
    ASSERT_TRUE(reader->MoveToAttribute("y"));
    EXPECT_EQ(NodeAndPlace(*reader), "Attribute y \"v&e;w\" depth=3 @2:11");
    const char* const kParts[] = {"Text \"v\" depth=3 @2:2", "EntityReference e depth=3 @2:2",
                                  "Text \"w\" depth=3 @2:2"};
    for (const char* part : kParts) {
        ASSERT_TRUE(reader->ReadAttributeValue());
        EXPECT_EQ(NodeAndPlace(*reader), part);
        EXPECT_EQ(reader->LocalName(), reader->Name());
        EXPECT_EQ(reader->Prefix(), "");
        EXPECT_EQ(reader->NamespaceURI(), "");
        EXPECT_EQ(reader->HasValue(), reader->NodeType() == XmlNodeType::Text);
        EXPECT_FALSE(reader->IsEmptyElement());
        EXPECT_EQ(reader->QuoteChar(), '"');
        EXPECT_EQ(reader->ReadState(), XmlTextReader::Interactive);
    }
    EXPECT_FALSE(reader->ReadAttributeValue());
    EXPECT_EQ(NodeAndPlace(*reader), "Attribute y \"v&e;w\" depth=3 @2:11");
    EXPECT_EQ(reader->QuoteChar(), '\'');
    EXPECT_EQ(reader->GetCurrentAttributeIndex(), 1);
}

TEST(XmlTextReaderParts, TheOnlyPartIsANodeInsideOfTheElement) {
    DocumentReader reader("<r>\n <a x='1'/></r>");
    reader.ReadNodes(3);
    ASSERT_TRUE(reader->MoveToFirstAttribute());
    ASSERT_TRUE(reader->ReadAttributeValue());
    EXPECT_EQ(NodeAndPlace(*reader), "Text \"1\" depth=3 @2:2");
    EXPECT_EQ(reader->Name(), "");
    EXPECT_FALSE(reader->ReadAttributeValue());
    EXPECT_EQ(NodeAndPlace(*reader), "Attribute x \"1\" depth=3 @2:5");
}

TEST(XmlTextReaderParts, StartOverAfterTheLast) {
    for (const char* raw : {"abc", "", "a&e;b", "&e;"}) {
        SCOPED_TRACE(raw);
        DocumentReader reader = OnValue(raw);
        ReadToAttribute(reader);
        const std::string first = Parts(*reader);
        EXPECT_NE(first, "");
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(Parts(*reader), first);
            EXPECT_EQ(reader->NodeType(), XmlNodeType::Attribute);
        }
    }
}

TEST(XmlTextReaderParts, OfOneAttributeAfterTheOther) {
    DocumentReader reader("<a x='1' y='&e;2' z='3&e;'/>");
    reader.ReadNodes(1);
    std::string all;
    for (bool more = reader->MoveToFirstAttribute(); more; more = reader->MoveToNextAttribute())
        all += reader->Name().str() + ": " + Parts(*reader) + "\n";
    EXPECT_EQ(all,
              "x: Text \"1\"\n"
              "y: EntityReference e; Text \"2\"\n"
              "z: Text \"3\"; EntityReference e\n");
}

TEST(XmlTextReaderParts, LeaveTheQuestionsForAttributesAsTheyAre) {
    DocumentReader reader = OnValue("1&e;2");
    ReadToAttribute(reader);
    for (const char* part : {"Text \"1\"", "EntityReference e", "Text \"2\""}) {
        ASSERT_TRUE(reader->ReadAttributeValue());
        EXPECT_EQ(reader->AttributeCount(), 0);
        EXPECT_FALSE(reader->HasAttributes());
        EXPECT_EQ(reader->GetAttribute(0), "");
        EXPECT_EQ(reader->Item(0), "");
        EXPECT_EQ(reader->GetAttribute("x"), "1&e;2");
        EXPECT_EQ(reader->GetAttribute("y"), "Y");
        EXPECT_EQ(reader->GetAttribute("y", ""), "Y");
        EXPECT_EQ(reader->GetAttribute("none"), "");
        EXPECT_EQ(reader->Attributes().size(), 0);
        EXPECT_EQ(NodeText(*reader), part);
    }
    EXPECT_FALSE(reader->ReadAttributeValue());
    EXPECT_EQ(reader->AttributeCount(), 2);
}

TEST(XmlTextReaderParts, OfAResolvedEntityFollow) {
    const struct {
        const char* raw;
        const char* parts;
    } kCases[] = {
        {"a&e;b", "Text \"a\"; EntityReference e; Text \"E\"; EndEntity e; Text \"b\""},
        {"&e;", "EntityReference e; Text \"E\"; EndEntity e"},
        {"&e;&e;",
         "EntityReference e; Text \"E\"; EndEntity e; "
         "EntityReference e; Text \"E\"; EndEntity e"},
        {"&n;",
         "EntityReference n; Text \"1\"; EntityReference e; Text \"E\"; EndEntity e; "
         "Text \"2\"; EndEntity n"},
        {"&nothing;x", "EntityReference nothing; EndEntity nothing; Text \"x\""},
        {"&nothing;", "EntityReference nothing; EndEntity nothing"},
        {"&chars;", "EntityReference chars; Text \"A<\"; EndEntity chars"},
        {"-&many;-",
         "Text \"-\"; EntityReference many; "
         "EntityReference n; Text \"1\"; EntityReference e; Text \"E\"; EndEntity e; Text \"2\"; "
         "EndEntity n; "
         "EntityReference n; Text \"1\"; EntityReference e; Text \"E\"; EndEntity e; Text \"2\"; "
         "EndEntity n; EndEntity many; Text \"-\""},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.raw);
        DocumentReader reader = OnValue(c.raw);
        ReadToAttribute(reader);
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(Parts(*reader, Entities::Resolve), c.parts);
            EXPECT_EQ(NodeText(*reader), "Attribute x \"" + std::string(c.raw) + "\"");
        }
        EXPECT_EQ(support::NodesFromHere(*reader), "Text \"t\"; EndElement a");
    }
}

TEST(XmlTextReaderParts, OfAResolvedEntityWhereNothingIsExpanded) {
    DocumentReader reader = OnValue("&#65;&n;&chars;", With(kNothing));
    ReadToAttribute(reader);
    EXPECT_EQ(Parts(*reader, Entities::Resolve),
              "Text \"&#65;\"; EntityReference n; Text \"1\"; EntityReference e; Text \"E\"; "
              "EndEntity e; Text \"2\"; EndEntity n; "
              "EntityReference chars; Text \"&#65;<\"; EndEntity chars");
}

TEST(XmlTextReaderParts, AnEndEntityHasTheEntitysNameAndNoValue) {
    DocumentReader reader = OnValue("&e;");
    ReadToAttribute(reader);
    const int depth = reader->Depth();
    ASSERT_TRUE(reader->ReadAttributeValue());
    reader->ResolveEntity();
    ASSERT_TRUE(reader->ReadAttributeValue());
    EXPECT_EQ(NodeText(*reader), "Text \"E\"");
    EXPECT_EQ(reader->Depth(), depth);
    ASSERT_TRUE(reader->ReadAttributeValue());
    EXPECT_EQ(reader->NodeType(), XmlNodeType::EndEntity);
    EXPECT_EQ(reader->Name(), "e");
    EXPECT_EQ(reader->LocalName(), "e");
    EXPECT_EQ(reader->Value(), "");
    EXPECT_FALSE(reader->HasValue());
    EXPECT_EQ(reader->Depth(), depth);
    EXPECT_FALSE(reader->ReadAttributeValue());
}

TEST(XmlTextReaderParts, AreNormalizedEachByItself) {
    ReaderSettings settings;
    settings.normalization = true;
    DocumentReader reader = OnValue("\ta\r\n&e;\r&#10;b\n&blanks;", settings);
    ReadToAttribute(reader);
    EXPECT_EQ(reader->Value(), " a &e; b &blanks;");
    EXPECT_EQ(Parts(*reader, Entities::Resolve),
              "Text \" a \"; EntityReference e; Text \"E\"; EndEntity e; Text \" b \"; "
              "EntityReference blanks; Text \"   \"; EndEntity blanks");
}

TEST(XmlTextReaderParts, KeepLineEndsWhereTheyAreNotNormalized) {
    DocumentReader reader = OnValue("\ta\r\n&e;\r&#10;b\n&blanks;");
    ReadToAttribute(reader);
    EXPECT_EQ(Parts(*reader, Entities::Resolve),
              "Text \"\\ta\\r\\n\"; EntityReference e; Text \"E\"; EndEntity e; "
              "Text \"\\r\\nb\\n\"; EntityReference blanks; Text \"\\r\\n\\t\\r\"; "
              "EndEntity blanks");
}

TEST(XmlTextReaderParts, OfLongValuesAreWhole) {
    for (const int length : {1000, 1023, 1024, 1025, 5000, 100000}) {
        const std::string text(static_cast<std::size_t>(length), 'v');
        DocumentReader reader(kSubset + ("<a x='" + text + "&e;" + text + "' y='" + text + "'/>"));
        ReadToAttribute(reader);
        EXPECT_EQ(Parts(*reader, Entities::Resolve),
                  "Text \"" + text + "\"; EntityReference e; Text \"E\"; EndEntity e; Text \"" +
                      text + "\"");
        ASSERT_TRUE(reader->MoveToNextAttribute());
        EXPECT_EQ(Parts(*reader), "Text \"" + text + "\"");
    }
}

// The handling may change at any time: the parts then are those of one or the other, and end.
TEST(XmlTextReaderParts, EndAlsoWhereTheHandlingChangesInBetween) {
    for (const auto before : {kNothing, kChars, kAll}) {
        for (const auto after : {kNothing, kChars, kAll}) {
            SCOPED_TRACE(std::string(XmlEntityHandling(before).ToString()) + ", then " +
                         XmlEntityHandling(after).ToString());
            DocumentReader reader = OnValue("a&n;&#65;&lt;&chars;b", With(before));
            ReadToAttribute(reader);
            const std::string node = NodeText(*reader);
            reader->SetEntityHandling(after);
            for (const Entities entities : {Entities::Leave, Entities::Resolve}) {
                const std::string parts = Parts(*reader, entities);
                EXPECT_EQ(parts.substr(0, 7), "Text \"a") << parts;
                EXPECT_EQ(parts.substr(parts.size() - 2), "b\"") << parts;
                EXPECT_EQ(NodeText(*reader), node);
            }
            reader->SetEntityHandling(before);
            EXPECT_EQ(support::NodesFromHere(*reader), "Text \"t\"; EndElement a");
        }
    }
}

// What an entity's text may hold, though no document does.
TEST(XmlTextReaderParts, RefuseWrongReferencesInAnEntitysText) {
    const struct {
        const char* literal;
        const char* message;
    } kCases[] = {
        {"&#38;#0;", "Invalid character reference"},
        {"&#38;#xD800;", "Invalid character reference"},
        {"&#38;name", "Invalid named entity"},
        {"&#38;name ;", "Invalid named entity"},
        {"&#38; ", "Bad name"},
        {"&#38;;", "Bad name"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.literal);
        DocumentReader reader("<!DOCTYPE a [<!ENTITY w '" + std::string(c.literal) +
                              "'>]><a x='&w;'>t</a>");
        ReadToAttribute(reader);
        ASSERT_TRUE(reader->ReadAttributeValue());
        EXPECT_EQ(NodeText(*reader), "EntityReference w");
        EXPECT_EQ(MessageOf([&] { reader->ResolveEntity(); }), "");
        EXPECT_EQ(MessageOf([&] { reader->ReadAttributeValue(); }), c.message);
        EXPECT_EQ(reader->ReadState(), XmlTextReader::Error);
        EXPECT_FALSE(reader->Read());
    }
}

TEST(XmlTextReaderParts, AnUndeclaredEntityIsRefusedWhenItIsResolved) {
    DocumentReader reader = OnValue("1&who;2");
    ReadToAttribute(reader);
    ASSERT_TRUE(reader->ReadAttributeValue());
    ASSERT_TRUE(reader->ReadAttributeValue());
    EXPECT_EQ(MessageOf([&] { reader->ResolveEntity(); }), "Undeclared entity [who]");
    EXPECT_EQ(reader->ReadState(), XmlTextReader::Error);
    EXPECT_FALSE(reader->Read());
}

TEST(XmlTextReaderParts, AnEntityWithinItselfIsRefusedWhenItIsResolved) {
    DocumentReader reader = OnValue("&loop;");
    ReadToAttribute(reader);
    ASSERT_TRUE(reader->ReadAttributeValue());
    reader->ResolveEntity();
    ASSERT_TRUE(reader->ReadAttributeValue());
    EXPECT_EQ(NodeText(*reader), "Text \"[\"");
    ASSERT_TRUE(reader->ReadAttributeValue());
    EXPECT_EQ(NodeText(*reader), "EntityReference loop");
    EXPECT_EQ(MessageOf([&] { reader->ResolveEntity(); }), "Cyclic entity reference [loop]");
    EXPECT_EQ(reader->ReadState(), XmlTextReader::Error);
    EXPECT_FALSE(reader->Read());
}

TEST(XmlTextReaderParts, OnlyAReferenceIsResolved) {
    DocumentReader reader = OnValue("1&e;2");
    ReadToAttribute(reader);
    EXPECT_THROW_FULL(reader->ResolveEntity(), "Invalid operation", "ResolveEntity", -1, -1);
    ASSERT_TRUE(reader->ReadAttributeValue());
    EXPECT_THROW_FULL(reader->ResolveEntity(), "Invalid operation", "ResolveEntity", -1, -1);
    EXPECT_EQ(NodeText(*reader), "Text \"1\"");
    EXPECT_EQ(Parts(*reader, Entities::Resolve),
              "EntityReference e; Text \"E\"; EndEntity e; Text \"2\"");
    EXPECT_EQ(reader->ReadState(), XmlTextReader::Interactive);
}

TEST(XmlTextReaderParts, OfAnElementThatComesFromAnEntity) {
    DocumentReader reader(
        "<!DOCTYPE a [<!ENTITY e 'E'><!ENTITY m '<b x=\"1&e;2\">t</b>u'>]><a>&m;v</a>");
    reader.ReadNodes(3);
    reader->ResolveEntity();
    reader.ReadNodes(1);
    EXPECT_EQ(NodeText(*reader), "Element b");
    for (int i = 0; i < 2; ++i) {
        ASSERT_TRUE(reader->MoveToFirstAttribute());
        EXPECT_EQ(Parts(*reader, Entities::Resolve),
                  "Text \"1\"; EntityReference e; Text \"E\"; EndEntity e; Text \"2\"");
    }
    // Left in the middle, inside of two entities of which one goes on.
    ASSERT_TRUE(reader->ReadAttributeValue());
    ASSERT_TRUE(reader->ReadAttributeValue());
    reader->ResolveEntity();
    ASSERT_TRUE(reader->ReadAttributeValue());
    EXPECT_EQ(support::NodesFromHere(*reader),
              "Text \"t\"; EndElement b; Text \"u\"; EndEntity m; Text \"v\"; EndElement a");
}

}  // namespace
