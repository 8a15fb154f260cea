// SPDX-License-Identifier: MIT
#include "TreeDrawing.h"
#include "tools/ManyRecords.h"
#include "tools/RunProgram.h"
#include "tools/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace {

const std::string kSamples = ESPALIER_SAMPLES;

std::string Draw(const std::string& input, std::vector<std::string> options = {}) {
    options.insert(options.begin(), "tree");
    const ProgramResult result = RunProgram(options, input);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.errors, "");
    return result.out;
}

std::string Short(std::string_view text) {
    bool isCut = false;
    const std::string shown = Tool::ShortText(text, isCut);
    return isCut ? shown + "|" : shown;
}

std::string Repeat(std::string_view text, std::size_t times) {
    std::string all;
    for (std::size_t i = 0; i < times; ++i)
        all += text;
    return all;
}

}  // namespace

TEST(TreeDrawing, TextsAreShownOnOneLine) {
    const std::string sixty(60, 'x');
    const std::string sixtyLong = Repeat("\xE2\x82\xAC", 60);
    const struct {
        std::string text;
        std::string expected;
    } kCases[] = {
        {"one", "one"},
        {"one two", "one two"},
        {" \t\r\n one \n\n two\t", "one two"},
        {" ", " "},
        {"\n\t  \n", " "},
        {sixty, sixty},
        {"  " + sixty + "  ", sixty},
        {sixty + "y", sixty + "|"},
        {sixty + " y", sixty + "|"},
        {sixtyLong, sixtyLong},
        {sixtyLong + "\xE2\x82\xAC", sixtyLong + "|"},
        {Repeat("a ", 31), Repeat("a ", 30) + "|"},
        {std::string(1'000'000, 'x'), sixty + "|"},
        {Repeat("\xF0\x9F\x8C\xB1", 1000), Repeat("\xF0\x9F\x8C\xB1", 60) + "|"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text.substr(0, 100));
        EXPECT_EQ(Short(c.text), c.expected);
    }
}

TEST(TreeDrawing, LinesLeadFromANodeToWhatItHolds) {
    EXPECT_EQ(Draw("<a><b><c/><d><e/></d></b><f><g/></f></a>"),
              "a\n"
              "├─ b\n"
              "│  ├─ c\n"
              "│  └─ d\n"
              "│     └─ e\n"
              "└─ f\n"
              "   └─ g\n");
}

TEST(TreeDrawing, EachKindOfNodeHasItsForm) {
    const struct {
        const char* input;
        const char* expected;
    } kCases[] = {
        {"<a/>", "a\n"},
        {"<a></a>", "a\n"},
        {"<p:a xmlns:p='u' b='1'/>", "p:a xmlns:p=\"u\" b=\"1\"\n"},
        {"<a b=''/>", "a b=\"\"\n"},
        {"<a b='  x\n y '/>", "a b=\"x y\"\n"},
        {"<a>text</a>", "a \"text\"\n"},
        {"<a b='1'>text</a>", "a b=\"1\" \"text\"\n"},
        {"<a>\n</a>", "a\n"},
        {"<a xml:space='preserve'>\n</a>", "a xml:space=\"preserve\" \" \"\n"},
        {"<a>text<b/></a>", "a\n├─ \"text\"\n└─ b\n"},
        {"<a><b/>text</a>", "a\n├─ b\n└─ \"text\"\n"},
        {"<a>x<!--y-->z</a>", "a\n├─ \"x\"\n├─ #comment \"y\"\n└─ \"z\"\n"},
        {"<a><![CDATA[x]]></a>", "a\n└─ #cdata-section \"x\"\n"},
        {"<a><!----></a>", "a\n└─ #comment\n"},
        {"<a><?t?><?t d?></a>", "a\n├─ ?t\n└─ ?t \"d\"\n"},
        {"<a>&lt;&amp;&#65;</a>", "a \"<&A\"\n"},
        {"<a>\"\\</a>", "a \"\\\"\\\\\"\n"},
        {"<a>\xC2\x9B</a>", "a \"\\u009B\"\n"},  // would command a terminal
        {"<!DOCTYPE a SYSTEM 'a.dtd'><a>x&e;</a>", "a\n├─ \"x\"\n└─ &e;\n"},
        {"<!DOCTYPE a [<!ENTITY e 'four'>]><a>&e;</a>", "a \"four\"\n"},
        {"<!DOCTYPE a [<!ENTITY e '<b>x</b>'>]><a>&e;&e;</a>", "a\n├─ b \"x\"\n└─ b \"x\"\n"},
        {"<?xml version='1.0'?><!--x--><!DOCTYPE a><?y?><a/><!--z-->",
         "#comment \"x\"\n?y\na\n#comment \"z\"\n"},
        {"<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE9</a>", "a \"é\"\n"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.input);
        EXPECT_EQ(Draw(c.input), c.expected);
    }
}

TEST(TreeDrawing, WhatIsCutEndsInAnEllipsis) {
    const std::string sixty(60, 'x');
    EXPECT_EQ(Draw("<a b='" + sixty + "x'>" + sixty + "x</a>"),
              "a b=\"" + sixty + "\"… \"" + sixty + "\"…\n");
}

TEST(TreeDrawing, WhatIsBelowTheLastLevelIsLeftOut) {
    const struct {
        const char* input;
        const char* depth;
        const char* expected;
    } kCases[] = {
        {"<a><b/></a>", "1", "a …\n"},
        {"<a>text</a>", "1", "a \"text\"\n"},  // is on the line of the element
        {"<a></a>", "1", "a\n"},
        {"<a>text<b/></a>", "1", "a …\n"},
        {"<a>text<!--x-->text</a>", "1", "a …\n"},
        {"<a><!--x--></a>", "1", "a …\n"},
        {"<a>text<![CDATA[x]]></a>", "1", "a …\n"},
        {"<a><b><c><d/></c></b><b><c/></b><b>x</b></a>", "2", "a\n├─ b …\n├─ b …\n└─ b \"x\"\n"},
        {"<a>x<b><c/></b>y</a>", "2", "a\n├─ \"x\"\n├─ b …\n└─ \"y\"\n"},
        {"<!--x--><a><b/></a><!--y-->", "1", "#comment \"x\"\na …\n#comment \"y\"\n"},
        {"<a><b/></a>", "2147483647", "a\n└─ b\n"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(std::string(c.depth) + " " + c.input);
        EXPECT_EQ(Draw(c.input, {"--depth", c.depth}), c.expected);
    }
}

TEST(TreeDrawing, WhatComesBeforeAnErrorIsDrawn) {
    const struct {
        const char* input;
        const char* expected;
    } kCases[] = {
        {"<a><b/><c>x</a>", "a\n├─ b\n└─ c \"x\"\n"},
        {"<a><b/><c>x<d/></a>", "a\n├─ b\n└─ c\n   ├─ \"x\"\n   └─ d\n"},
        {"<a x='1'>", "a x=\"1\"\n"},
        {"", ""},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.input);
        const ProgramResult result = RunProgram({"tree"}, c.input);
        EXPECT_EQ(result.exitCode, 3);
        EXPECT_EQ(result.out, c.expected);
        EXPECT_NE(result.errors.find(": error: "), std::string::npos);
    }
    EXPECT_EQ(RunProgram({"tree", "--depth", "1"}, "<a>x</b>").out, "a \"x\"\n");
}

TEST(TreeDrawing, ErrorsAreToldAsByCheck) {
    for (const char* const input : {"<a><b></a>", "<a><!-- x", "<a>&e;</a>", "text", ""}) {
        SCOPED_TRACE(input);
        const ProgramResult result = RunProgram({"tree"}, input);
        const ProgramResult check = RunProgram({"check", "--compatible"}, input);
        EXPECT_EQ(result.errors, check.errors);
        EXPECT_EQ(RunProgram({"tree", "--standard"}, input).errors,
                  RunProgram({"check"}, input).errors);
        EXPECT_EQ(result.exitCode, check.exitCode);
    }
    EXPECT_EQ(RunProgram({"tree", "/nonexistent/a.xml"}).exitCode, 4);
    EXPECT_EQ(RunProgram({"tree"}, "<" + std::string(2000, 'a') + "/>").exitCode, 5);
}

TEST(TreeDrawing, SeveralDocumentsHaveTheirNamesAbove) {
    const TemporaryDirectory directory;
    const std::string one = directory.Write("1.xml", "<a><b/></a>");
    const std::string bad = directory.Write("2.xml", "<c><d></c>");
    ProgramSetup setup;
    setup.arguments = {"tree", one, bad, "-"};
    setup.input = "<e/>";
    const ProgramResult result = RunProgram(setup);
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.out, one + ":\na\n└─ b\n" + bad + ":\nc\n└─ d\n<stdin>:\ne\n");
}

TEST(TreeDrawing, ReadsCompressedDocumentsAndMembers) {
    EXPECT_EQ(Draw("", {kSamples + "/feed.xml.gz"}), Draw("", {kSamples + "/feed.xml"}));
    EXPECT_TRUE(Draw("", {kSamples + "/herbal.epub!OEBPS/content.opf", "--depth", "1"})
                    .starts_with("package "));
}

TEST(TreeDrawing, NamesMayHoldColonsWithoutNamespaces) {
    EXPECT_EQ(RunProgram({"tree"}, "<a:b:c/>").exitCode, 3);
    EXPECT_EQ(Draw("<a:b:c/>", {"--no-namespaces"}), "a:b:c\n");
}

TEST(TreeDrawing, IsColoredOnATerminalOnly) {
    ProgramSetup setup;
    setup.arguments = {"tree"};
    setup.input = "<a b='1'><?c?>x</a>";
    const std::string plain = "a b=\"1\"\n├─ ?c\n└─ \"x\"\n";
    EXPECT_EQ(RunProgram(setup).out, plain);
    setup.outputToTerminal = true;
    EXPECT_EQ(RunProgram(setup).out,
              "\x1B[1ma\x1B[0m b=\x1B[32m\"1\"\x1B[0m\r\n"
              "├─ \x1B[36m?c\x1B[0m\r\n"
              "└─ \x1B[32m\"x\"\x1B[0m\r\n");
    setup.environment = {"NO_COLOR=1"};
    EXPECT_EQ(RunProgram(setup).out.find('\x1B'), std::string::npos);
    EXPECT_EQ(Draw(setup.input, {"--color", "never"}), plain);
    EXPECT_NE(Draw(setup.input, {"--color", "always"}), plain);
}

TEST(TreeDrawing, ThePageShowsWhatIsDrawn) {
    std::ifstream file(ESPALIER_PROGRAM_PAGE);
    const std::string page{std::istreambuf_iterator<char>(file), {}};
    const std::string command = "    $ espalier tree --depth 3 feed.xml\n";
    const std::size_t begin = page.find(command);
    ASSERT_NE(begin, std::string::npos);
    std::istringstream lines(page.substr(begin + command.size()));
    std::string shown;
    for (std::string line; std::getline(lines, line) && line != "    ...";)
        shown.append(line.substr(4)).append("\n");
    EXPECT_GT(shown.size(), 500U);
    EXPECT_EQ(Draw("", {kSamples + "/feed.xml", "--depth", "3"}).substr(0, shown.size()), shown);
}

TEST(TreeDrawing, HasALineForEachNode) {
    std::size_t samples = 0;
    for (const char* const sample :
         {"/catalogue.xml", "/drawing.svg", "/page.xhtml", "/utf16.xml"}) {
        SCOPED_TRACE(sample);
        const std::string drawing = Draw("", {kSamples + sample});
        const std::string objects = Draw("", {kSamples + sample, "--json"});
        const auto lines = std::count(drawing.begin(), drawing.end(), '\n');
        EXPECT_EQ(lines, std::count(objects.begin(), objects.end(), '\n'));
        EXPECT_GE(lines, 4);
        ++samples;
    }
    EXPECT_EQ(samples, 4U);
}

TEST(TreeDrawing, LevelsBeyondTheDefaultAreLeftOut) {
    constexpr int kLevels = 100'000;
    const std::string deep = Repeat("<a>", kLevels) + Repeat("</a>", kLevels);
    const std::string drawing = Draw(deep);
    EXPECT_EQ(std::count(drawing.begin(), drawing.end(), '\n'), 256);
    EXPECT_TRUE(drawing.ends_with("└─ a …\n"));
    EXPECT_EQ(Draw(Repeat("<a>", 256) + Repeat("</a>", 256)).find("…"), std::string::npos);
    EXPECT_TRUE(Draw(deep, {"--depth", "1000"}).ends_with(std::string(998 * 3, ' ') + "└─ a …\n"));
}

TEST(TreeDrawing, MemoryGrowsWithWhatIsDrawn) {
    if (!kMeasuresMemory) GTEST_SKIP() << "a sanitizer is at work";
    ProgramSetup setup;
    setup.arguments = {"tree", "--depth", "1"};
    setup.nextInput = ManyRecords(50 << 20, "</r:all>");
    const ProgramResult result = RunProgram(setup);
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(std::count(result.out.begin(), result.out.end(), '\n'), 1);
    EXPECT_LT(result.peakKilobytes, kPeakKilobytes);
}
