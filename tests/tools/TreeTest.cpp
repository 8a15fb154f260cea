// SPDX-License-Identifier: MIT
//
// What `tree --counts` shows; TreeDrawingTest.cpp and TreeJsonTest.cpp have the trees themselves.
#include "tools/JsonLines.h"
#include "tools/ManyRecords.h"
#include "tools/RunProgram.h"
#include "tools/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

const std::string kSamples = ESPALIER_SAMPLES;

std::string Counts(const std::string& input) {
    const ProgramResult result = RunProgram({"tree", "--counts"}, input);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.errors, "");
    return result.out;
}

std::string JsonCounts(const std::string& input) {
    const ProgramResult result = RunProgram({"tree", "--counts", "--json"}, input);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.errors, "");
    return result.out;
}

}  // namespace

TEST(Tree, CountsElementsByPathInOrderOfTheirAppearance) {
    EXPECT_EQ(Counts("<shop>\n"
                     "  <item id='1'><name>Pear</name></item>\n"
                     "  <item id='2' sold=''><price>10</price><name>Plum</name></item>\n"
                     "  <o:item xmlns:o='u'/>\n"
                     "</shop>"),
              "count  text  element\n"
              "    1        shop\n"
              "    2          item\n"
              "    2            @id\n"
              "    1            @sold\n"
              "    2     8      name\n"
              "    1     2      price\n"
              "    1          o:item\n"
              "    1            @xmlns:o\n");
}

TEST(Tree, WritesJson) {
    EXPECT_EQ(JsonCounts("<a><b x='1' p:y='2'>text</b><b x='1'/><c>1<d/>2</c></a>"),
              R"({"path":"/a","count":1,"text":0})"
              "\n"
              R"({"path":"/a/b","count":2,"attributes":{"x":2,"p:y":1},"text":4})"
              "\n"
              R"({"path":"/a/c","count":1,"text":2})"
              "\n"
              R"({"path":"/a/c/d","count":1,"text":0})"
              "\n");
}

TEST(Tree, TextIsCountedInBytesWithoutTheSpaceBetweenMarkup) {
    const struct {
        const char* input;
        int bytes;
    } kCases[] = {
        {"<a></a>", 0},
        {"<a> \n </a>", 0},
        {"<a>\n  <b/>\n</a>", 0},
        {"<a> x </a>", 3},
        {"<a>x<b>yy</b>z</a>", 2},  // what is in <b> is counted there
        {"<a>\xC3\xA9\xE2\x82\xAC</a>", 5},
        {"<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE9</a>", 2},  // in UTF-8
        {"<a>&lt;&#8364;</a>", 4},
        {"<a><![CDATA[ <x> ]]>y</a>", 6},
        {"<a><!-- no --><?no no?></a>", 0},
        {"<a xml:space='preserve'> \n </a>", 3},
        {"<!DOCTYPE a [<!ENTITY e 'four'>]><a x='&e;'>&e;&e;</a>", 8},
        {"<!DOCTYPE a SYSTEM 'a.dtd'><a>x&e;y</a>", 2},  // nobody knows what it stands for
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.input);
        const std::string first = Lines(JsonCounts(c.input)).at(0);
        EXPECT_TRUE(first.ends_with(",\"text\":" + std::to_string(c.bytes) + "}")) << first;
    }
}

TEST(Tree, ElementsInTheTextOfEntitiesAreCounted) {
    EXPECT_EQ(Counts("<!DOCTYPE a [<!ENTITY e '<b c=\"1\">xy</b>'>]><a>&e;&e;</a>"),
              "count  text  element\n"
              "    1        a\n"
              "    2     4    b\n"
              "    2            @c\n");
}

TEST(Tree, NumbersOfAnyLengthAreAligned) {
    std::string input = "<a>";
    for (int i = 0; i < 123456; ++i)
        input += "<b>1234567890</b>";
    EXPECT_EQ(Counts(input + "</a>"),
              " count     text  element\n"
              "     1           a\n"
              "123456  1234560    b\n");
}

TEST(Tree, SeveralDocumentsAreCountedTogether) {
    const TemporaryDirectory directory;
    ProgramSetup setup;
    setup.arguments = {"tree", "--counts", directory.Write("1.xml", "<a><b/></a>"), "-",
                       directory.Write("2.xml", "<a><c/><b/></a>")};
    setup.input = "<d/>";
    const ProgramResult result = RunProgram(setup);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out,
              "count  text  element\n"
              "    2        a\n"
              "    2          b\n"
              "    1          c\n"
              "    1        d\n");
}

TEST(Tree, WhatComesBeforeAnErrorIsCounted) {
    const TemporaryDirectory directory;
    const std::string bad = directory.Write("bad.xml", "<a><b/><b/><c></a>");
    const std::string good = directory.Write("good.xml", "<a><b/></a>");
    const ProgramResult result = RunProgram({"tree", "--counts", bad, "/nonexistent/a.xml", good});
    EXPECT_EQ(result.exitCode, 4);  // that of the worst
    EXPECT_EQ(result.out,
              "count  text  element\n"
              "    2        a\n"
              "    3          b\n"
              "    1          c\n");
    EXPECT_NE(result.errors.find(bad + ":1:18: error: End tag 'a' doesn't match start tag 'c'\n"),
              std::string::npos)
        << result.errors;
    EXPECT_NE(result.errors.find("/nonexistent/a.xml: error: "), std::string::npos);
    EXPECT_EQ(RunProgram({"tree", "--counts", bad}).exitCode, 3);
    EXPECT_EQ(RunProgram({"tree", "--counts"}, "").exitCode, 3);
    EXPECT_EQ(RunProgram({"tree", "--counts"}, "").out, "");
    EXPECT_EQ(RunProgram({"tree", "--counts"}, "<" + std::string(2000, 'a') + "/>").exitCode, 5);
}

TEST(Tree, NamesMayHoldColonsWithoutNamespaces) {
    EXPECT_EQ(RunProgram({"tree", "--counts"}, "<a:b:c/>").exitCode, 3);
    EXPECT_EQ(RunProgram({"tree", "--counts", "--no-namespaces", "--json"}, "<a:b:c/>").out,
              R"({"path":"/a:b:c","count":1,"text":0})"
              "\n");
}

TEST(Tree, CountsAreShownUpToADepth) {
    const std::string input = "<a x='1'><b><c y='1'>1234567890</c></b></a>";
    EXPECT_EQ(RunProgram({"tree", "--counts", "--depth", "2"}, input).out,
              "count  text  element\n"
              "    1        a\n"
              "    1          @x\n"
              "    1          b\n");
    EXPECT_EQ(RunProgram({"tree", "--counts", "--json", "--depth", "1"}, input).out,
              "{\"path\":\"/a\",\"count\":1,\"attributes\":{\"x\":1},\"text\":0}\n");
    EXPECT_EQ(RunProgram({"tree", "--counts", "--depth", "3"}, input).out,
              RunProgram({"tree", "--counts"}, input).out);
}

TEST(Tree, CountsAsManyNodesAsThereAreEvents) {
    std::size_t samples = 0;
    for (const char* const sample : {"/catalogue.xml", "/feed.xml", "/drawing.svg", "/page.xhtml",
                                     "/settings.xml", "/utf16.xml", "/latin1.xml", "/letter.xml"}) {
        SCOPED_TRACE(sample);
        const std::vector<std::string> events = Lines(
            RunProgram({"events", "--attributes", "--entities", "all", kSamples + sample}).out);
        const auto count = [&](std::string_view type) {
            return std::count_if(events.begin(), events.end(),
                                 [&](const std::string& line) { return line.starts_with(type); });
        };
        long elements = 0;
        long attributes = 0;
        const std::vector<std::string> lines =
            Lines(RunProgram({"tree", "--counts", kSamples + sample}).out);
        for (std::size_t i = 1; i < lines.size(); ++i) {
            long& sum = lines[i].find('@') == std::string::npos ? elements : attributes;
            sum += std::stol(lines[i]);
        }
        EXPECT_EQ(elements, count("Element "));
        EXPECT_EQ(attributes, count("Attribute "));
        EXPECT_GE(elements, 4);
        for (const std::string& line :
             Lines(RunProgram({"tree", "--counts", "--json", kSamples + sample}).out)) {
            EXPECT_TRUE(JsonCheck(line).IsValue()) << line;
        }
        ++samples;
    }
    EXPECT_EQ(samples, 8U);
}

TEST(Tree, TakesConstantMemoryFromAPipe) {
    if (!kMeasuresMemory) GTEST_SKIP() << "a sanitizer is at work";
    ProgramSetup setup;
    setup.arguments = {"tree", "--counts"};
    setup.nextInput = ManyRecords(50 << 20, "</r:all>");
    const ProgramResult result = RunProgram(setup);
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(Lines(result.out).size(), 6U) << result.out;
    EXPECT_LT(result.peakKilobytes, kPeakKilobytes);
}

// A document of nothing but new names is the worst there is.
TEST(Tree, TakesBoundedMemoryForAnyNumberOfPaths) {
    if (!kMeasuresMemory) GTEST_SKIP() << "a sanitizer is at work";
    ProgramSetup setup;
    setup.arguments = {"tree", "--counts", "--json"};
    constexpr long kElements = 300'000;
    long count = 0;
    setup.nextInput = [&count] {
        if (count == kElements) return std::string();
        std::string piece = count == 0 ? "<a>" : "";
        for (int i = 0; i < 1000; ++i) {
            const std::string number = std::to_string(count++);
            piece += "<e" + number + " a" + number + "='1'><b/></e" + number + ">";
        }
        return count == kElements ? piece + "</a>" : piece;
    };
    const ProgramResult result = RunProgram(setup);
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    const std::vector<std::string> lines = Lines(result.out);
    // <a>, 49,999 elements and their children, and one whose child has no room; two for the rest.
    EXPECT_EQ(lines.size(), 100'002U);
    EXPECT_TRUE(lines.back().starts_with("{\"path\":\"/a/...\",\"count\":500000,")) << lines.back();
    EXPECT_LT(result.peakKilobytes, 80 * 1024);
}

TEST(Tree, DepthIsNoMatter) {
    const int kLevels = 100000;
    std::string input;
    for (int i = 0; i < kLevels; ++i)
        input += "<a>";
    for (int i = 0; i < kLevels; ++i)
        input += "</a>";
    const std::vector<std::string> lines = Lines(Counts(input));
    ASSERT_EQ(lines.size(), 1U + 256U + 1U);
    EXPECT_EQ(lines.back(),
              std::to_string(kLevels - 256) + "        " + std::string(512, ' ') + "...");
}
