// SPDX-License-Identifier: MIT
#include <espalier/io/Exception.h>
#include <espalier/io/StringStream.h>
#include <espalier/xml/XmlTextReader.h>

#include "MarkupTracker.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using Tool::Construct;
using Tool::MarkupTracker;
using Tool::Place;

namespace {

MarkupTracker After(std::string_view text,
                    MarkupTracker::Names names = MarkupTracker::Names::Prefixed) {
    MarkupTracker tracker(names);
    for (const char byte : text)
        tracker.Step(byte);
    return tracker;
}

}  // namespace

TEST(MarkupTracker, LinesAndColumnsStartAtOne) {
    EXPECT_EQ(After("").Line(), 1);
    EXPECT_EQ(After("").Column(), 1);
    EXPECT_EQ(After("").ReaderColumn(), 1);
}

TEST(MarkupTracker, CountsAsPeopleAndAsTheReader) {
    const struct {
        const char* text;
        long line;
        long column;
        long readerColumn;
    } kCases[] = {
        {"<a>", 1, 4, 4},
        {"<p:a>", 1, 6, 5},                  // the colon of a start tag
        {"<p:a></p:a>", 1, 12, 10},          // and of an end tag
        {"<a p:b='1' p:c='2'>", 1, 20, 18},  // and of attributes
        {"<a b='x:y:z'>", 1, 14, 14},        // not those of a value
        {"<a>x:y</a>", 1, 11, 11},           // nor of text
        {"<!-- a:b -->", 1, 13, 13},         // nor of a comment
        {"<![CDATA[a:b]]>", 1, 16, 16},      // nor of a CDATA section
        {"<?t a:b?>", 1, 10, 10},            // nor of an instruction
        {"<?p:t a:b?>", 1, 12, 11},          // but of its target
        {"<a>&p:e;x:y", 1, 12, 11},          // and of a reference
        {"<!DOCTYPE a [<!ENTITY e 'a:b'>]>", 1, 33, 33},
        {"<!DOCTYPE p:a [<!ELEMENT p:b ANY><?p:c?>]>", 1, 43, 42},              // but of its name
        {"<!DOCTYPE a[<!ENTITY p:b 'x:y'><!ENTITY % p:c \"z\">]>", 1, 53, 51},  // and of entities
        {"<!DOCTYPE a[<!ENTITY b '&p:c;x:y&#58;'>]>", 1, 42, 41},  // and of references in them
        {"<!DOCTYPE a[<!ENTITY b SYSTEM '&p:c;' NDATA p:d>]>", 1, 51, 50},  // but not in others
        {"<!DOCTYPE a[<!NOTATION p:b PUBLIC 'x:y'>]>", 1, 43, 42},
        {"<!DOCTYPE a SYSTEM 'x:y' [<!p:q x:y>]>", 1, 39, 38},  // and of unknown declarations
        {"<a b='&p:c;x:y' d=\"&p:e;\">", 1, 27, 25},            // and in references of values
        {"<a:b:c>", 1, 8, 7},                // the second colon is an error, and counts
        {"<:a>", 1, 5, 5},                   // so is one at the start
        {"<p:a\nb='1' p:c='2'", 2, 14, 13},  // a new line forgets the colons before
        {"a\nb", 2, 2, 2},
        {"a\rb", 2, 2, 2},
        {"a\r\nb", 2, 2, 2},
        {"a\n\rb", 3, 2, 2},
        {"a\r\r\nb", 3, 2, 2},
        {"<a>\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8D\x90", 1, 7, 7},  // characters, not bytes
        {"\x80\x80", 1, 3, 3},                                 // bytes that continue no character
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        const MarkupTracker tracker = After(c.text);
        EXPECT_EQ(tracker.Line(), c.line);
        EXPECT_EQ(tracker.Column(), c.column);
        EXPECT_EQ(tracker.ReaderColumn(), c.readerColumn);
    }
}

TEST(MarkupTracker, WholeNamesHaveNoSilentColons) {
    const MarkupTracker tracker = After("<p:a q:b='1'>", MarkupTracker::Names::Whole);
    EXPECT_EQ(tracker.Column(), 14);
    EXPECT_EQ(tracker.ReaderColumn(), 14);
}

TEST(MarkupTracker, KnowsWhatItIsInsideOfAndSinceWhere) {
    const struct {
        const char* text;
        Construct inside;
        Place since;
    } kCases[] = {
        {"<a>\n", Construct::None, {1, 1}},
        {"<a>\n<b c='1'", Construct::Tag, {2, 1}},
        {"<a>\n<p:b p:c='1", Construct::Value, {2, 10}},
        {"<a>\n<b c=\"it's", Construct::Value, {2, 6}},
        {"<a>\n  <!-- - --", Construct::Comment, {2, 3}},
        {"<a>\n  <!-- -- -->", Construct::None, {2, 3}},
        {"<a>\n<![CDATA[ ]] >", Construct::CData, {2, 1}},
        {"<a><![CDATA[ ]]]>", Construct::None, {1, 4}},
        {"<?target ? >", Construct::ProcessingInstruction, {1, 1}},
        {"<?target ?"
         "?>",
         Construct::None,
         {1, 1}},
        {"<!DOCTYPE a [ <!ENTITY b '>'> ", Construct::DocumentType, {1, 1}},
        {"<!DOCTYPE a [ <!-- > ", Construct::Comment, {1, 15}},
        {"<!DOCTYPE a [ <?p > ", Construct::ProcessingInstruction, {1, 15}},
        {"<!DOCTYPE a [ <!-- > --> <!ELEMENT a ANY>", Construct::DocumentType, {1, 1}},
        {"<!DOCTYPE a [ <!-- > --> <!ELEMENT a ANY> ]><a", Construct::Tag, {1, 45}},
        {"<!DOCTYPE a [ <!ELEMENT a (b|c)* ", Construct::DocumentType, {1, 1}},
        {"<!DOCTYPE a [\n <!ENTITY b ", Construct::Declaration, {2, 2}},
        {"<!DOCTYPE a [\n <!ENTITY b '\n>]>&c;", Construct::Literal, {2, 13}},
        {"<!DOCTYPE a [ <!ENTITY b SYSTEM \"it's", Construct::Literal, {1, 33}},
        {"<!DOCTYPE a [ <!ATTLIST a b CDATA '>", Construct::Literal, {1, 35}},
        {"<!DOCTYPE a [ <!ENTITY b '>'", Construct::Declaration, {1, 15}},
        {"<!DOCTYPE a PUBLIC '", Construct::Literal, {1, 20}},
        {"<!DOCTYPE a [ <![x[ <b> ]]> ]", Construct::DocumentType, {1, 1}},
        {"<!DOCTYPE a [ <![x[ <b> ]]> ]>", Construct::None, {1, 1}},
        {"<a b='&c", Construct::Value, {1, 6}},
        {"<a b='&c'>", Construct::None, {1, 1}},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(After(c.text).Inside(), c.inside);
        EXPECT_EQ(After(c.text).InsideSince(), c.since);
    }
}

TEST(MarkupTracker, AdvancesToTheFirstByteOfALine) {
    const std::string text = "<a>one\ntwo\r\n<!-- three\nfour --></a>";
    const struct {
        long line;
        std::size_t passed;
    } kCases[] = {{1, 0}, {2, 7}, {3, 11}, {4, 23}, {5, text.size()}};
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.line);
        MarkupTracker tracker;
        EXPECT_EQ(tracker.AdvanceToLine(text, c.line), c.passed);
        EXPECT_EQ(tracker.Line(), c.line < 5 ? c.line : 4);
    }
}

namespace {

// Documents that hold colons wherever one may stand.
std::vector<std::string> ColonDocuments() {
    std::vector<std::string> documents = {
        "<a>x:y<![CDATA[x:y]]>&#58;:<!-- x:y --><?t x:y?></a>",
        "<?xml version='1.0' encoding='utf-8'?>\r\n<p:a p:b='x:y' xmlns:p = 'u:v'\n p:c=\"x:y\">"
        "<p:d/></p:a >",
        "<!DOCTYPE a SYSTEM 'x'><a b='&p:e;x:y' c=\"it's &p:e; &amp; &p:f;\">&p:e;:&p:f;<p:b/></a>",
        "<p:\xC3\xA9 p:\xC3\xA9='&p:\xC3\xA9;'>\xE2\x82\xAC:<p:a\r\np:b='\r\n' "
        "p:c=''/></p:\xC3\xA9>",
    };
    const char* const kTypes[] = {
        "p:a",
        "a SYSTEM 'x:y'",
        "a PUBLIC \"x:y\" 'x:y' [ <!-- x:y --> ]",
        "p:a[]",
        "p:a[\n]",
        "a [<!ENTITY p:b 'x:y'>]",
        "a [<!ENTITY b 'x:y&p:c;&#58;\n&p:d;&amp;' >]",
        "a [<!ENTITY b \"it's &p:c;:\">]",
        "a [<!ENTITY b\"&p:c;\"><!ENTITY % b\"&p:c;\">]",
        "a [<!ENTITY % p:b '<p:c d:e=\"f\">'><!ENTITY %\np:c SYSTEM '&x:y;'>]",
        "a [<!ENTITY p:b SYSTEM '&p:c;' ><!ENTITY b PUBLIC 'x:y' \"&p:c;\" >]",
        "a [<!NOTATION m PUBLIC '-//x:y' '&p:c;'><!NOTATION o PUBLIC 'x:y'>]",
        "a [<!NOTATION n SYSTEM 'x:y'><!ENTITY p:b SYSTEM 'x:y' NDATA n>]",
        "a [<!ELEMENT p:b (p:c|p:d)*><!ATTLIST p:b x:y CDATA '&p:c;' e:f NOTATION (g:h) ':'>]",
        "a [<!p:q x:y '>' [<p:r s:t='u'>]>]",
        "a [<!x$p:q r:s><!9:b c:d><!-p:q r:s><!ELEMENT(p:a)>]",
        "a [<?p:i x:y?><?x y:z>?><!-- p:q 'r' --><!ENTITY b:c 'd'>]",
        "a [<![INCLUDE[<!ENTITY p:b 'x&y:z;'>]]> %p:q; <b:c/> </d:e> <f:g h=':'> ]",
        "a [<!ENTITYX p:b 'x&y:z;'><!ENTIT p:b 'x&y:z;'><!NOTATIONAL p:b>]",
        "a\r\n[\r\n<!ENTITY\r\np:b\r\n'\r\n&p:c;'>\r]",
    };
    for (const char* const type : kTypes) {
        documents.push_back("<!DOCTYPE " + std::string(type) + " ><p:a b='x'>x:y<p:c/></p:a>\n");
    }
    return documents;
}

// Where the reader stands in a document that it cannot read to its end.
struct Stop {
    Place place{0, 0};
    std::string message;
};

Stop StopOf(const std::string& document, bool namespaces) {
    IO::StringStream stream(document, false);
    Xml::XmlTextReader reader;
    reader.SetNamespaces(namespaces);
    reader.SetStream(&stream, false);
    try {
        while (reader.Read()) {
        }
    } catch (const Xml::Exception& error) {
        return {{error.LineNumber(), error.LinePos()}, error.What()};
    }
    return {};
}

// Tells whether a document is cut inside of a character or of a token that the reader takes as a
// whole, in front of which it then stops.
bool IsCutInsideOfOne(std::string_view document, std::size_t length) {
    if ((static_cast<unsigned char>(document[length]) & 0xC0) == 0x80) return true;
    const std::string_view cut = document.substr(0, length);
    for (const std::string_view token : {"<![CDATA[", "<!--"}) {
        for (std::size_t part = 3; part < token.size(); ++part) {
            if (cut.ends_with(token.substr(0, part))) return true;
        }
    }
    return false;
}

// Returns what stands at a place that the reader names.
std::string_view TextAt(std::string_view document, Place place) {
    MarkupTracker tracker;
    for (std::size_t i = 0; i < document.size(); ++i) {
        const bool isHere = tracker.Line() == place.line && tracker.ReaderColumn() == place.column;
        if (isHere && !tracker.IsSilent(document[i])) return document.substr(i);
        tracker.Step(document[i]);
    }
    return {};
}

// Returns how a node is written at its place.
std::string Beginning(const Xml::XmlTextReader& reader) {
    const std::string name(reader.Name().view());
    switch (reader.NodeType()) {
    case Xml::XmlNodeType::Element: return "<" + name;
    case Xml::XmlNodeType::EndElement: return "</" + name;
    case Xml::XmlNodeType::EntityReference: return "&" + name + ";";
    case Xml::XmlNodeType::DocumentType: return "DOCTYPE " + name;
    case Xml::XmlNodeType::XmlDeclaration: return "xml";
    case Xml::XmlNodeType::CDATA: return "<![CDATA[";
    case Xml::XmlNodeType::Comment: return "<!--";
    case Xml::XmlNodeType::Attribute: return name;
    case Xml::XmlNodeType::ProcessingInstruction: return name;
    default: return {};
    }
}

}  // namespace

// A document that is cut anywhere ends where the tracker says that it does.
TEST(MarkupTracker, CutDocumentsEndWhereTheReaderSays) {
    std::size_t count = 0;
    for (const std::string& document : ColonDocuments()) {
        ASSERT_EQ(StopOf(document, true).message, "") << document;
        for (std::size_t length = 1; length < document.size(); ++length) {
            if (IsCutInsideOfOne(document, length)) continue;
            const std::string cut = document.substr(0, length);
            for (const bool namespaces : {true, false}) {
                SCOPED_TRACE(cut + (namespaces ? "" : " (names are whole)"));
                const Stop stop = StopOf(cut, namespaces);
                if (stop.message.empty()) continue;  // what is missing is white space
                const MarkupTracker tracker = After(
                    cut, namespaces ? MarkupTracker::Names::Prefixed : MarkupTracker::Names::Whole);
                EXPECT_EQ((Place{tracker.Line(), tracker.ReaderColumn()}), stop.place)
                    << stop.message << " at " << stop.place.line << ":" << stop.place.column
                    << ", not " << tracker.Line() << ":" << tracker.ReaderColumn();
                ++count;
            }
        }
    }
    EXPECT_GT(count, 3000U);
}

TEST(MarkupTracker, NodesStandWhereTheReaderSays) {
    std::size_t count = 0;
    for (const std::string& document : ColonDocuments()) {
        SCOPED_TRACE(document);
        IO::StringStream stream(document, false);
        Xml::XmlTextReader reader;
        reader.SetStream(&stream, false);
        while (reader.Read()) {
            do {
                const std::string beginning = Beginning(reader);
                if (beginning.empty()) continue;
                const Place place{reader.LineNumber(), reader.LinePosition()};
                EXPECT_TRUE(TextAt(document, place).starts_with(beginning))
                    << beginning << " at " << place.line << ":" << place.column;
                ++count;
            } while (reader.NodeType() == Xml::XmlNodeType::Element ? reader.MoveToFirstAttribute()
                                                                    : reader.MoveToNextAttribute());
        }
    }
    EXPECT_GT(count, 100U);
}

// The bulk moves are the fast path; stepping is what they are measured by, at every split.
TEST(MarkupTracker, AdvancingInPiecesIsTheSameAsStepping) {
    std::vector<std::string> documents = ColonDocuments();
    documents.emplace_back(
        "<?xml version='1.0'?>\r\n<!DOCTYPE p:r [ <!-- a:b\n --> <?x y?> ]>\n<p:r "
        "xmlns:p='u\r\n'>\r"
        "text \xC3\xA9\xE2\x82\xAC &p:e; &amp; a:b\n\n<!-- c\r\n:d -\xF0\x9F\x8D\x90--><![CDATA[ "
        "a\r]b:"
        "]]>\r\n<p:e p:a=\"\n1\"/><?t a\rb:c ?></p:r>\r\n");
    for (const std::string& text : documents) {
        const MarkupTracker whole = After(text);
        for (std::size_t split = 0; split <= text.size(); ++split) {
            SCOPED_TRACE(text + " at " + std::to_string(split));
            MarkupTracker advanced;
            advanced.Advance(std::string_view(text).substr(0, split));
            const MarkupTracker stepped = After(std::string_view(text).substr(0, split));
            EXPECT_EQ(advanced.Line(), stepped.Line());
            EXPECT_EQ(advanced.Column(), stepped.Column());
            EXPECT_EQ(advanced.ReaderColumn(), stepped.ReaderColumn());
            EXPECT_EQ(advanced.Inside(), stepped.Inside());

            advanced.Advance(std::string_view(text).substr(split));
            EXPECT_EQ(advanced.Line(), whole.Line());
            EXPECT_EQ(advanced.Column(), whole.Column());
            EXPECT_EQ(advanced.ReaderColumn(), whole.ReaderColumn());
            EXPECT_EQ(advanced.Inside(), whole.Inside());
        }
    }
}
