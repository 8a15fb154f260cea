// SPDX-License-Identifier: MIT
#include "MarkupTracker.h"

#include <gtest/gtest.h>

#include <string>

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
        {"<!DOCTYPE p:a [<!ELEMENT p:b ANY><?p:c?>]>", 1, 43, 42},  // but of its name
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
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(After(c.text).Inside(), c.inside);
        EXPECT_EQ(After(c.text).InsideSince(), c.since);
    }
}

// The bulk moves are the fast path; stepping is what they are measured by, at every split.
TEST(MarkupTracker, AdvancingInPiecesIsTheSameAsStepping) {
    const std::string text =
        "<?xml version='1.0'?>\r\n<!DOCTYPE p:r [ <!-- a:b\n --> <?x y?> ]>\n<p:r "
        "xmlns:p='u\r\n'>\r"
        "text \xC3\xA9\xE2\x82\xAC &p:e; &amp; a:b\n\n<!-- c\r\n:d -\xF0\x9F\x8D\x90--><![CDATA[ "
        "a\r]b:"
        "]]>\r\n<p:e p:a=\"\n1\"/><?t a\rb:c ?></p:r>\r\n";
    for (std::size_t split = 0; split <= text.size(); ++split) {
        SCOPED_TRACE(split);
        MarkupTracker advanced;
        advanced.Advance(std::string_view(text).substr(0, split));
        const MarkupTracker stepped = After(std::string_view(text).substr(0, split));
        EXPECT_EQ(advanced.Line(), stepped.Line());
        EXPECT_EQ(advanced.Column(), stepped.Column());
        EXPECT_EQ(advanced.ReaderColumn(), stepped.ReaderColumn());
        EXPECT_EQ(advanced.Inside(), stepped.Inside());

        advanced.Advance(std::string_view(text).substr(split));
        const MarkupTracker whole = After(text);
        EXPECT_EQ(advanced.Line(), whole.Line());
        EXPECT_EQ(advanced.Column(), whole.Column());
        EXPECT_EQ(advanced.Inside(), whole.Inside());
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
