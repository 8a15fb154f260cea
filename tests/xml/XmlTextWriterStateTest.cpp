// SPDX-License-Identifier: MIT
#include <espalier/xml/XmlTextWriter.h>

#include "support/DocumentReader.h"
#include "support/DocumentWriter.h"
#include "support/ExpectThrow.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

// Every operation in every state: what it writes, or its message, and the state after it.

namespace {

using support::DocumentWriter;
using support::NameOf;
using support::ThrowsXmlException;
using support::WriterCalls;
using Xml::WriteState;
using Xml::XmlTextWriter;

using namespace std::string_view_literals;

constexpr WriteState kProlog = WriteState::Prolog;
constexpr WriteState kElement = WriteState::Element;
constexpr WriteState kAttribute = WriteState::Attribute;
constexpr WriteState kContent = WriteState::Content;
constexpr WriteState kStart = WriteState::Start;
constexpr WriteState kClosed = WriteState::Closed;

// Where a writer can stand. After the root element it shows the state that the last end tag left.
struct Place {
    const char* name;
    WriterCalls reach;
    WriteState state;
};

const std::array<Place, 8> kPlaces = {{
    {"Start", [](XmlTextWriter&) {}, kStart},
    {"Prolog", [](XmlTextWriter& w) { w.WriteStartDocument(); }, kProlog},
    {"Element", [](XmlTextWriter& w) { w.WriteStartElement("r"); }, kElement},
    {"Attribute",
     [](XmlTextWriter& w) {
         w.WriteStartElement("r");
         w.WriteStartAttribute("x");
     },
     kAttribute},
    {"Content",
     [](XmlTextWriter& w) {
         w.WriteStartElement("r");
         w.WriteString("t");
     },
     kContent},
    {"after an empty root",
     [](XmlTextWriter& w) {
         w.WriteStartElement("r");
         w.WriteEndElement();
     },
     kElement},
    {"after a root",
     [](XmlTextWriter& w) {
         w.WriteStartElement("r");
         w.WriteString("t");
         w.WriteEndElement();
     },
     kContent},
    {"Start of a second document",
     [](XmlTextWriter& w) {
         w.WriteStartElement("r");
         w.WriteEndDocument();
     },
     kStart},
}};

// What an operation does at a place.
struct Effect {
    std::string_view output;
    WriteState state;
    const char* message;
};

constexpr Effect Writes(std::string_view output, WriteState state) {
    return {output, state, nullptr};
}
constexpr Effect Throws(const char* message) { return {"", kStart, message}; }

// An operation with its effects, in the order of kPlaces. The second document is as the first.
struct Operation {
    const char* name;
    WriterCalls call;
    std::array<Effect, 7> effects;
};

constexpr Effect kNotHere = Throws("Invalid state");
constexpr Effect kNoText = Throws("Invalid Operation: Text not allowed in this state");
constexpr Effect kNoElement = Throws("Invalid Operation: Writer not in an element");
constexpr Effect kWrongState = Throws("Invalid Operation: Wrong state");
constexpr Effect kNoDoctype = Throws("Invalid Operation: Doctype not allowed in this state");
constexpr Effect kNoAttribute = Throws("Invalid Operation: Not in attribute");
constexpr Effect kNoReference = Throws("Invalid Operation: Invalid state");
constexpr Effect kNoNamespaces =
    Throws("Invalid Operation: Namespace support cannot be changed while writing the XML file");

// The effects of an operation that is allowed nowhere but at the start of a document.
constexpr std::array<Effect, 7> OnlyAtStart(Effect atStart, Effect elsewhere) {
    return {atStart, elsewhere, elsewhere, elsewhere, elsewhere, elsewhere, elsewhere};
}

// The effects of an operation that writes `inElement`, `inAttribute` and `inContent` inside an
// element.
constexpr std::array<Effect, 7> InElement(std::string_view inElement, std::string_view inAttribute,
                                          std::string_view inContent, Effect outside) {
    return {outside,
            outside,
            Writes(inElement, kContent),
            Writes(inAttribute, kAttribute),
            Writes(inContent, kContent),
            outside,
            outside};
}

// The effects of an operation that writes `text` behind the root element, too.
constexpr std::array<Effect, 7> InElementAndBehind(std::string_view inElement,
                                                   std::string_view text) {
    std::array<Effect, 7> effects = InElement(inElement, text, text, kNoText);
    effects[5] = Writes(text, kElement);
    effects[6] = Writes(text, kContent);
    return effects;
}

constexpr std::array<Effect, 7> InStartTag(Effect inElement, Effect inAttribute) {
    return {kNotHere, kNotHere, inElement, inAttribute, kNotHere, kNotHere, kNotHere};
}

const Operation kOperations[] = {
    {"WriteStartDocument()", [](XmlTextWriter& w) { w.WriteStartDocument(); },
     OnlyAtStart(Writes("<?xml version=\"1.0\" encoding=\"UTF-8\"?>", kProlog), kNotHere)},
    {"WriteStartDocument(true)", [](XmlTextWriter& w) { w.WriteStartDocument(true); },
     OnlyAtStart(Writes("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>", kProlog),
                 kNotHere)},
    {"WriteStartDocument(false)", [](XmlTextWriter& w) { w.WriteStartDocument(false); },
     OnlyAtStart(Writes("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?>", kProlog),
                 kNotHere)},
    {"WriteDocType",
     [](XmlTextWriter& w) { w.WriteDocType("d", "", "", ""); },
     {Writes("<!DOCTYPE d>", kProlog), Writes("<!DOCTYPE d>", kProlog), kNoDoctype, kNoDoctype,
      kNoDoctype, kNoDoctype, kNoDoctype}},
    {"WriteStartElement",
     [](XmlTextWriter& w) { w.WriteStartElement("e"); },
     {Writes("<e", kElement), Writes("<e", kElement), Writes("><e", kElement),
      Writes("\"><e", kElement), Writes("<e", kElement), Writes("<e", kElement),
      Writes("<e", kElement)}},
    {"WriteElementString",
     [](XmlTextWriter& w) { w.WriteElementString("e", "t"); },
     {Writes("<e>t</e>", kContent), Writes("<e>t</e>", kContent), Writes("><e>t</e>", kContent),
      Writes("\"><e>t</e>", kContent), Writes("<e>t</e>", kContent), Writes("<e>t</e>", kContent),
      Writes("<e>t</e>", kContent)}},
    {"WriteEndElement",
     [](XmlTextWriter& w) { w.WriteEndElement(); },
     {kNoElement, kNoElement, Writes("/>", kElement), Writes("\"/>", kElement),
      Writes("</r>", kContent), kNoElement, kNoElement}},
    {"WriteFullEndElement",
     [](XmlTextWriter& w) { w.WriteFullEndElement(); },
     {kWrongState, kWrongState, Writes("><r>\0"sv, kContent), Writes("\"><r>\0"sv, kContent),
      Writes("<r>\0"sv, kContent), kWrongState, kWrongState}},
    {"WriteStartAttribute", [](XmlTextWriter& w) { w.WriteStartAttribute("a"); },
     InStartTag(Writes(" a=\"", kAttribute), Writes("\" a=\"", kAttribute))},
    {"WriteAttributeString", [](XmlTextWriter& w) { w.WriteAttributeString("a", "v"); },
     InStartTag(Writes(" a=\"v\"", kElement), Writes("\" a=\"v\"", kElement))},
    {"WriteEndAttribute",
     [](XmlTextWriter& w) { w.WriteEndAttribute(); },
     {kNoAttribute, kNoAttribute, kNoAttribute, Writes("\"", kElement), kNoAttribute, kNoAttribute,
      kNoAttribute}},
    {"WriteString", [](XmlTextWriter& w) { w.WriteString("t<"); },
     InElement(">t&lt;", "t&lt;", "t&lt;", kNoText)},
    {"WriteWhitespace", [](XmlTextWriter& w) { w.WriteWhitespace(" "); },
     InElementAndBehind("> ", " ")},
    {"WriteName", [](XmlTextWriter& w) { w.WriteName("n"); }, InElement(">n", "n", "n", kNoText)},
    {"WriteNmToken", [](XmlTextWriter& w) { w.WriteNmToken("1n"); },
     InElement(">1n", "1n", "1n", kNoText)},
    {"WriteRaw(text)", [](XmlTextWriter& w) { w.WriteRaw("<&"); }, InElementAndBehind("><&", "<&")},
    {"WriteRaw(text, length)", [](XmlTextWriter& w) { w.WriteRaw("<&>", 2); },
     InElementAndBehind("><&", "<&")},
    {"WriteEntityRef", [](XmlTextWriter& w) { w.WriteEntityRef("n"); },
     InElement(">&n;", "&n;", "&n;", kNoReference)},
    {"WriteCData",
     [](XmlTextWriter& w) { w.WriteCData("<c"); },
     {kNoText, kNoText, Writes("><![CDATA[<c]]>", kContent),
      Throws("Invalid Operation: Not in content state"), Writes("<![CDATA[<c]]>", kContent),
      kNoText, kNoText}},
    {"WriteComment",
     [](XmlTextWriter& w) { w.WriteComment("c"); },
     {Writes("<!--c-->", kProlog), Writes("<!--c-->", kProlog), Writes("><!--c-->", kContent),
      Writes("\"><!--c-->", kContent), Writes("<!--c-->", kContent), Writes("<!--c-->", kElement),
      Writes("<!--c-->", kContent)}},
    {"WriteProcessingInstruction",
     [](XmlTextWriter& w) { w.WriteProcessingInstruction("p", "d"); },
     {Writes("<?p d?>", kProlog), Writes("<?p d?>", kProlog), Writes("><?p d?>", kContent),
      kWrongState, Writes("<?p d?>", kContent), Writes("<?p d?>", kElement),
      Writes("<?p d?>", kContent)}},
    {"WriteEndDocument",
     [](XmlTextWriter& w) { w.WriteEndDocument(); },
     {Writes("", kStart), Writes("", kStart), Writes("/>", kStart), Writes("\"/>", kStart),
      Writes("</r>", kStart), Writes("", kStart), Writes("", kStart)}},
    {"Flush",
     [](XmlTextWriter& w) { w.Flush(); },
     {Writes("", kStart), Writes("", kProlog), Writes("", kElement), Writes("", kAttribute),
      Writes("", kContent), Writes("", kElement), Writes("", kContent)}},
    {"Close",
     [](XmlTextWriter& w) { w.Close(); },
     {Writes("", kClosed), Writes("", kClosed), Writes("/>", kClosed), Writes("\"/>", kClosed),
      Writes("</r>", kClosed), Writes("", kClosed), Writes("", kClosed)}},
    {"SetNamespaces", [](XmlTextWriter& w) { w.SetNamespaces(false); },
     OnlyAtStart(Writes("", kStart), kNoNamespaces)},
    {"SetNewLineChars",
     [](XmlTextWriter& w) { w.SetNewLineChars("\n"); },
     {Writes("", kStart), Writes("", kProlog), Writes("", kElement), Writes("", kAttribute),
      Writes("", kContent), Writes("", kElement), Writes("", kContent)}},
};

void ExpectEffect(const Place& place, const Operation& operation, const Effect& effect) {
    SCOPED_TRACE(std::string(operation.name) + " in " + place.name);
    DocumentWriter writer;
    place.reach(*writer);
    writer.Take();
    ASSERT_STREQ(NameOf(writer->GetWriteState()), NameOf(place.state));
    if (effect.message != nullptr) {
        EXPECT_THROW_FULL(operation.call(*writer), effect.message, "", -1, -1);
        EXPECT_STREQ(NameOf(writer->GetWriteState()), NameOf(place.state));
    } else {
        operation.call(*writer);
        EXPECT_STREQ(NameOf(writer->GetWriteState()), NameOf(effect.state));
    }
    EXPECT_EQ(writer.Take(), effect.output);
}

TEST(XmlTextWriterState, EveryOperationInEveryState) {
    for (const Operation& operation : kOperations) {
        for (std::size_t i = 0; i < operation.effects.size(); ++i)
            ExpectEffect(kPlaces[i], operation, operation.effects[i]);
    }
}

TEST(XmlTextWriterState, ASecondDocumentBeginsAsTheFirst) {
    for (const Operation& operation : kOperations)
        ExpectEffect(kPlaces.back(), operation, operation.effects.front());
}

// Throws "Writer closed", but for the two operations that say that it was closed before.
const char* MessageWhenClosed(std::string_view name) {
    if (name == "Flush" || name == "Close") return "Invalid Operation: Writer already closed";
    if (name == "SetNamespaces") return kNoNamespaces.message;
    return "Invalid Operation: Writer closed";
}

void ExpectClosed(XmlTextWriter& writer) {
    for (const Operation& operation : kOperations) {
        if (operation.name == "SetNewLineChars"sv) continue;
        SCOPED_TRACE(operation.name);
        EXPECT_THROW_FULL(operation.call(writer), MessageWhenClosed(operation.name), "", -1, -1);
        EXPECT_STREQ(NameOf(writer.GetWriteState()), "Closed");
    }
}

TEST(XmlTextWriterState, AClosedWriterRefusesEveryOperation) {
    for (const Place& place : kPlaces) {
        SCOPED_TRACE(place.name);
        DocumentWriter writer;
        place.reach(*writer);
        writer->Close();
        const std::string before = writer.Text();
        ExpectClosed(*writer);
        EXPECT_EQ(writer.Text(), before);
    }
}

TEST(XmlTextWriterState, AWriterWithoutAStreamIsClosed) {
    XmlTextWriter writer;
    ExpectClosed(writer);
}

// An operation that an argument makes throw where the state allows it.
struct BadArgument {
    const char* name;
    WriterCalls call;
    const char* message;
    std::string_view places;  // E: Element, A: Attribute, C: Content, P: Start and Prolog
};

const BadArgument kBadArguments[] = {
    {"WriteWhitespace", [](XmlTextWriter& w) { w.WriteWhitespace(" x"); },
     "Invalid whitespace character", "EAC"},
    {"WriteString", [](XmlTextWriter& w) { w.WriteString("good \x01"); }, "Invalid XML character",
     "EAC"},
    {"WriteName", [](XmlTextWriter& w) { w.WriteName("1"); },
     "Invalid Argument: Not a valid XML name", "EAC"},
    {"WriteName of nothing", [](XmlTextWriter& w) { w.WriteName(""); },
     "Invalid Argument: Not a valid XML name", "EAC"},
    {"WriteNmToken", [](XmlTextWriter& w) { w.WriteNmToken("a b"); },
     "Invalid Argument: Not a valid Nmtoken", "EAC"},
    {"WriteEntityRef", [](XmlTextWriter& w) { w.WriteEntityRef("1"); },
     "Invalid Argument: Not a valid XML name", "EAC"},
    {"WriteEntityRef of nothing", [](XmlTextWriter& w) { w.WriteEntityRef(""); },
     "Invalid Argument: Empty name", "EAC"},
    {"WriteProcessingInstruction", [](XmlTextWriter& w) { w.WriteProcessingInstruction("1", "d"); },
     "Invalid Argument: Not a valid XML name", "PEC"},
    {"WriteDocType", [](XmlTextWriter& w) { w.WriteDocType("1", "", "", ""); },
     "Invalid Argument: Not a valid XML name", "P"},
    {"WriteStartElement, prefix", [](XmlTextWriter& w) { w.WriteStartElement("q", "e", nullptr); },
     "Invalid Argument: Prefix not declared", "PEAC"},
    {"WriteStartElement, xml", [](XmlTextWriter& w) { w.WriteStartElement("xmlq", "e", "urn:q"); },
     "Invalid Argument: Invalid Prefix", "PEAC"},
    {"WriteElementString, text", [](XmlTextWriter& w) { w.WriteElementString("e", "\x01"); },
     "Invalid XML character", "PEAC"},
    {"WriteElementString, prefix",
     [](XmlTextWriter& w) { w.WriteElementString("q", "e", nullptr, "t"); },
     "Invalid Argument: Prefix not declared", "PEAC"},
    {"WriteElementString, prefix and text",
     [](XmlTextWriter& w) { w.WriteElementString("q", "e", nullptr, "\x01"); },
     "Invalid Argument: Prefix not declared", "PEAC"},
    {"WriteStartAttribute, empty namespace",
     [](XmlTextWriter& w) { w.WriteStartAttribute("q", "a", ""); },
     "Invalid Argument: Prefix defined for empty namespace", "EA"},
    {"WriteStartAttribute, no namespace",
     [](XmlTextWriter& w) { w.WriteStartAttribute("q", "a", nullptr); },
     "Bad attribute: Missing namespace URI", "EA"},
    {"WriteAttributeString, value",
     [](XmlTextWriter& w) { w.WriteAttributeString("a", "good \x01"); }, "Invalid XML character",
     "EA"},
    {"WriteAttributeString, prefix and value",
     [](XmlTextWriter& w) { w.WriteAttributeString("q", "a", nullptr, "\x01"); },
     "Bad attribute: Missing namespace URI", "EA"},
    {"WriteAttributeString, space and value",
     [](XmlTextWriter& w) { w.WriteAttributeString("xml", "space", nullptr, "\x01"); },
     "Invalid XML character", "EA"},
    {"WriteAttributeString, space",
     [](XmlTextWriter& w) { w.WriteAttributeString("xml", "space", nullptr, "bad"); },
     "Bad attribute: Invalid xml:space value", "EA"},
};

char LetterOf(const Place& place) {
    switch (place.state) {
    case WriteState::Element: return 'E';
    case WriteState::Attribute: return 'A';
    case WriteState::Content: return 'C';
    default: return 'P';
    }
}

// Whatever throws changes nothing: neither the state nor what comes out, now and later.
TEST(XmlTextWriterState, ACallThatThrowsChangesNothing) {
    for (const Place& place : kPlaces) {
        for (const BadArgument& bad : kBadArguments) {
            if (bad.places.find(LetterOf(place)) == std::string_view::npos) continue;
            const bool ended = std::string_view(place.name).starts_with("after");
            if (ended && bad.places != "PEAC") continue;
            SCOPED_TRACE(std::string(bad.name) + " in " + place.name);
            DocumentWriter expected;
            place.reach(*expected);
            DocumentWriter writer;
            place.reach(*writer);
            EXPECT_THROW_FULL(bad.call(*writer), bad.message, "", -1, -1);
            EXPECT_STREQ(NameOf(writer->GetWriteState()), NameOf(place.state));
            EXPECT_EQ(writer.Text(), expected.Text());
            if (place.state == kAttribute) {
                expected->WriteEndAttribute();
                writer->WriteEndAttribute();
            }
            expected->WriteElementString("next", "urn:next", "t");
            writer->WriteElementString("next", "urn:next", "t");
            expected->Close();
            writer->Close();
            EXPECT_EQ(writer.Text(), expected.Text());
        }
    }
}

// An attribute that a refused call would have ended goes on as if there had been no call.
TEST(XmlTextWriterState, ACallThatThrowsDoesNotTakeUpTheOpenAttribute) {
    for (const BadArgument& bad : kBadArguments) {
        if (bad.places.find('A') == std::string_view::npos) continue;
        SCOPED_TRACE(bad.name);
        DocumentWriter writer;
        writer->WriteStartElement("e");
        writer->WriteStartAttribute("xml", "lang", nullptr);
        writer->WriteString("e");
        EXPECT_THROW_FULL(bad.call(*writer), bad.message, "", -1, -1);
        EXPECT_EQ(writer->GetXmlLang(), "");
        writer->WriteString("n");
        writer->WriteStartAttribute("xml", "space", nullptr);
        EXPECT_EQ(writer->GetXmlLang(), "en");
        writer->WriteString("preserve");
        EXPECT_THROW_FULL(bad.call(*writer), bad.message, "", -1, -1);
        EXPECT_EQ(writer->GetXmlSpace(), Xml::XmlSpace::SpaceNone);
        writer->WriteStartAttribute("xmlns", "p", nullptr);
        EXPECT_EQ(writer->GetXmlSpace(), Xml::XmlSpace::SpacePreserve);
        writer->WriteString("urn:");
        EXPECT_THROW_FULL(bad.call(*writer), bad.message, "", -1, -1);
        EXPECT_EQ(writer->LookupPrefix("urn:"), "");
        writer->WriteString("p");
        writer->WriteStartElement("p", "f", nullptr);
        EXPECT_EQ(writer->LookupPrefix("urn:p"), "p");
        writer->Close();
        EXPECT_EQ(writer.Text(),
                  "<e xml:lang=\"en\" xml:space=\"preserve\" xmlns:p=\"urn:p\"><p:f/></e>");
    }
}

// The declaration that a call ends counts for its own name.
TEST(XmlTextWriterState, TheOpenAttributeDeclaresThePrefixOfTheNextName) {
    const struct {
        WriterCalls call;
        const char* expected;
    } kCases[] = {
        {[](XmlTextWriter& w) { w.WriteStartAttribute("p", "a", nullptr); }, " p:a=\"\"/>"},
        {[](XmlTextWriter& w) { w.WriteAttributeString("p", "a", nullptr, "1"); }, " p:a=\"1\"/>"},
        {[](XmlTextWriter& w) { w.WriteAttributeString("a", "urn:p", "1"); }, " p:a=\"1\"/>"},
        {[](XmlTextWriter& w) { w.WriteStartElement("p", "f", nullptr); }, "><p:f/></e>"},
        {[](XmlTextWriter& w) { w.WriteStartElement("f", "urn:p"); }, "><p:f/></e>"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.expected);
        DocumentWriter writer;
        writer->WriteStartElement("e");
        writer->WriteStartAttribute("xmlns", "p", nullptr);
        writer->WriteString("urn:p");
        c.call(*writer);
        writer->WriteEndDocument();
        EXPECT_EQ(writer.Text(), std::string("<e xmlns:p=\"urn:p\"") + c.expected);
    }
}

// The state is looked at before the arguments.
TEST(XmlTextWriterState, TheMessageOfTheStateComesFirst) {
    const struct {
        WriterCalls call;
        std::size_t place;
        const char* message;
    } kCases[] = {
        {[](XmlTextWriter& w) { w.WriteWhitespace("x"); }, 0, kNoText.message},
        {[](XmlTextWriter& w) { w.WriteString("\x01"); }, 0, kNoText.message},
        {[](XmlTextWriter& w) { w.WriteName("1"); }, 1, kNoText.message},
        {[](XmlTextWriter& w) { w.WriteNmToken("<"); }, 1, kNoText.message},
        {[](XmlTextWriter& w) { w.WriteEntityRef(""); }, 0, kNoReference.message},
        {[](XmlTextWriter& w) { w.WriteEntityRef("1"); }, 1, kNoReference.message},
        {[](XmlTextWriter& w) { w.WriteProcessingInstruction("1", ""); }, 3, kWrongState.message},
        {[](XmlTextWriter& w) { w.WriteDocType("1", "", "", ""); }, 4, kNoDoctype.message},
        {[](XmlTextWriter& w) { w.WriteStartAttribute("q", "a", ""); }, 4, kNotHere.message},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.message);
        DocumentWriter writer;
        kPlaces[c.place].reach(*writer);
        EXPECT_THROW_TEXT(c.call(*writer), c.message, -1, -1);

        writer->Close();
        EXPECT_THROW_TEXT(c.call(*writer), "Invalid Operation: Writer closed", -1, -1);
    }
}

// What is wrong with a name is told before what is wrong with its text.
TEST(XmlTextWriterState, TheRootElementIsComparedBeforeItsTextIsLookedAt) {
    DocumentWriter writer;
    writer->WriteDocType("d", "", "", "");
    EXPECT_THROW_FULL(writer->WriteElementString("e", "\x01"),
                      "Invalid Argument: Root element name does not match document type", "", -1,
                      -1);
    EXPECT_THROW_FULL(writer->WriteElementString("d", "\x01"), "Invalid XML character", "", -1, -1);
    writer->WriteElementString("d", "t");
    EXPECT_EQ(writer.Text(), "<!DOCTYPE d><d>t</d>");
}

TEST(XmlTextWriterState, BehindTheRootElementThereMayBeWhiteSpaceAndRawMarkup) {
    DocumentWriter writer;
    writer->WriteElementString("r", "t");
    writer->WriteWhitespace("\r\n");
    EXPECT_THROW_FULL(writer->WriteWhitespace("x"), "Invalid whitespace character", "", -1, -1);
    writer->WriteRaw("<!--raw-->");
    writer->WriteComment("c");
    writer->WriteWhitespace("");
    writer->WriteStartElement("s");
    writer->WriteEndElement();
    writer->WriteWhitespace("\t\n");
    writer->Close();
    EXPECT_EQ(writer.Text(), "<r>t</r>\r\n<!--raw--><!--c--><s/>\t\r\n");
}

TEST(XmlTextWriterState, ADocumentThatEndsWithALineBreakIsCopied) {
    for (const char* const document : {"<r/>\n", "<!--c--><r a=\"b\"/>\n<!--d-->\n\n"}) {
        SCOPED_TRACE(document);
        support::DocumentReader reader(document);
        DocumentWriter writer;
        writer->SetNewLineHandling(Xml::NewLineHandling::NoHandling);
        writer->WriteNode(&*reader, false);
        EXPECT_EQ(writer.Text(), document);
    }
}

TEST(XmlTextWriterState, WhileElementsRemainOpenAnEndTagLeavesContent) {
    const WriterCalls kEnds[] = {
        [](XmlTextWriter& w) { w.WriteEndElement(); },
        [](XmlTextWriter& w) { w.WriteFullEndElement(); },
    };
    for (const WriterCalls end : kEnds) {
        for (std::size_t place = 2; place < 5; ++place) {
            SCOPED_TRACE(kPlaces[place].name);
            DocumentWriter writer;
            writer->WriteStartElement("outer");
            kPlaces[place].reach(*writer);
            end(*writer);
            EXPECT_STREQ(NameOf(writer->GetWriteState()), "Content");
        }
    }
}

TEST(XmlTextWriterState, CloseTwiceThrows) {
    DocumentWriter writer;
    writer->Close();
    EXPECT_THROW_FULL(writer->Close(), "Invalid Operation: Writer already closed", "", -1, -1);
}

TEST(XmlTextWriterState, TheNamesOfTheStates) {
    EXPECT_STREQ(WriteState(WriteState::Start).ToString(), "Start");
    EXPECT_STREQ(WriteState(WriteState::Prolog).ToString(), "Prolog");
    EXPECT_STREQ(WriteState(WriteState::Element).ToString(), "Element");
    EXPECT_STREQ(WriteState(WriteState::Attribute).ToString(), "Attribute");
    EXPECT_STREQ(WriteState(WriteState::Content).ToString(), "Content");
    EXPECT_STREQ(WriteState(WriteState::Closed).ToString(), "Closed");
    EXPECT_STREQ(WriteState(static_cast<WriteState::WRITE_STATE>(6)).ToString(), "?");
}

TEST(XmlTextWriterState, TheNumbersOfTheStates) {
    EXPECT_EQ(static_cast<int>(WriteState::Start), 0);
    EXPECT_EQ(static_cast<int>(WriteState::Prolog), 1);
    EXPECT_EQ(static_cast<int>(WriteState::Element), 2);
    EXPECT_EQ(static_cast<int>(WriteState::Attribute), 3);
    EXPECT_EQ(static_cast<int>(WriteState::Content), 4);
    EXPECT_EQ(static_cast<int>(WriteState::Closed), 5);
}

TEST(XmlTextWriterState, AStateIsComparedAndAssigned) {
    WriteState state;
    EXPECT_TRUE(state == WriteState::Start);
    state = WriteState::Content;
    EXPECT_TRUE(state == WriteState(WriteState::Content));
    EXPECT_FALSE(state == WriteState::Start);
    const WriteState::WRITE_STATE value = state;
    EXPECT_EQ(value, WriteState::Content);
}

}  // namespace
