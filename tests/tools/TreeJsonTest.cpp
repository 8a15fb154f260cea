// SPDX-License-Identifier: MIT
#include "tools/JsonLines.h"
#include "tools/ManyRecords.h"
#include "tools/RunProgram.h"
#include "tools/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

const std::string kSamples = ESPALIER_SAMPLES;

std::string Objects(const std::string& input, std::vector<std::string> options = {}) {
    options.insert(options.begin(), {"tree", "--json"});
    const ProgramResult result = RunProgram(options, input);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.errors, "");
    return result.out;
}

}  // namespace

TEST(TreeJson, EachKindOfNodeHasItsMembers) {
    const struct {
        const char* input;
        const char* expected;
    } kCases[] = {
        {"<a/>", R"({"depth":1,"type":"Element","name":"a"})"},
        {"<a>x</a>", R"({"depth":1,"type":"Element","name":"a","value":"x"})"},
        {"<a b='1' c='\"'/>",
         R"({"depth":1,"type":"Element","name":"a","attributes":{"b":"1","c":"\""}})"},
        {"<p:a xmlns:p='u'> x\n</p:a>",
         R"({"depth":1,"type":"Element","name":"p:a","namespace":"u",)"
         R"("attributes":{"xmlns:p":"u"},"value":" x\n"})"},
        {"<a>x<b/>y</a>", R"({"depth":1,"type":"Element","name":"a"})"
                          "\n"
                          R"({"depth":2,"type":"Text","value":"x"})"
                          "\n"
                          R"({"depth":2,"type":"Element","name":"b"})"
                          "\n"
                          R"({"depth":2,"type":"Text","value":"y"})"},
        {"<a xml:space='preserve'> <b/></a>",
         R"({"depth":1,"type":"Element","name":"a","attributes":{"xml:space":"preserve"}})"
         "\n"
         R"({"depth":2,"type":"Text","value":" "})"
         "\n"
         R"({"depth":2,"type":"Element","name":"b"})"},
        {"<!--x--><?y z?><a><![CDATA[<]]></a>",
         R"({"depth":1,"type":"Comment","value":"x"})"
         "\n"
         R"({"depth":1,"type":"ProcessingInstruction","name":"y","value":"z"})"
         "\n"
         R"({"depth":1,"type":"Element","name":"a"})"
         "\n"
         R"({"depth":2,"type":"CDATA","value":"<"})"},
        {"<!DOCTYPE a SYSTEM 'a.dtd'><a>&e;</a>",
         R"({"depth":1,"type":"Element","name":"a"})"
         "\n"
         R"({"depth":2,"type":"EntityReference","name":"e"})"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.input);
        EXPECT_EQ(Objects(c.input), c.expected + std::string("\n"));
    }
}

TEST(TreeJson, ValuesAreWhole) {
    const std::string text(100'000, 'x');
    EXPECT_EQ(Objects("<a b='" + text + "'>" + text + "</a>"),
              R"({"depth":1,"type":"Element","name":"a","attributes":{"b":")" + text +
                  R"("},"value":")" + text + "\"}\n");
}

TEST(TreeJson, WhatIsBelowTheLastLevelIsLeftOut) {
    EXPECT_EQ(Objects("<a><b><c/></b><b>x</b></a>", {"--depth", "2"}),
              R"({"depth":1,"type":"Element","name":"a"})"
              "\n"
              R"({"depth":2,"type":"Element","name":"b","cut":true})"
              "\n"
              R"({"depth":2,"type":"Element","name":"b","value":"x"})"
              "\n");
}

TEST(TreeJson, WhatComesBeforeAnErrorIsWritten) {
    const ProgramResult result = RunProgram({"tree", "--json"}, "<a><b>x</a>");
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.out, R"({"depth":1,"type":"Element","name":"a"})"
                          "\n"
                          R"({"depth":2,"type":"Element","name":"b","value":"x"})"
                          "\n");
}

TEST(TreeJson, OfSeveralDocumentsEachObjectNamesItsOwn) {
    const TemporaryDirectory directory;
    const std::string one = directory.Write("1.xml", "<a/>");
    EXPECT_EQ(Objects("<b/>", {one, "-"}),
              "{\"file\":\"" + one +
                  "\",\"depth\":1,\"type\":\"Element\",\"name\":\"a\"}\n"
                  "{\"file\":\"<stdin>\",\"depth\":1,\"type\":"
                  "\"Element\",\"name\":\"b\"}\n");
}

TEST(TreeJson, EveryLineIsAnObject) {
    std::size_t count = 0;
    for (const char* const sample : {"/catalogue.xml", "/feed.xml", "/drawing.svg", "/page.xhtml",
                                     "/settings.xml", "/utf16.xml", "/latin1.xml", "/letter.xml"}) {
        SCOPED_TRACE(sample);
        for (const std::string& line : Lines(Objects("", {kSamples + sample}))) {
            EXPECT_TRUE(JsonCheck(line).IsValue()) << line;
            ++count;
        }
    }
    EXPECT_GE(count, 100U);
}

TEST(TreeJson, AnyDepthIsWritten) {
    constexpr std::size_t kLevels = 100'000;
    std::string input;
    for (std::size_t i = 0; i < kLevels; ++i)
        input += "<a>";
    for (std::size_t i = 0; i < kLevels; ++i)
        input += "</a>";
    EXPECT_EQ(Lines(Objects(input)).size(), kLevels);
}

TEST(TreeJson, TakesConstantMemoryFromAPipe) {
    if (!kMeasuresMemory) GTEST_SKIP() << "a sanitizer is at work";
    const TemporaryDirectory directory;
    ProgramSetup setup;
    setup.arguments = {"tree", "--json", "-o", (directory.Path() / "objects").string()};
    setup.nextInput = ManyRecords(20 << 20, "</r:all>");
    const ProgramResult result = RunProgram(setup);
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_LT(result.peakKilobytes, kPeakKilobytes);
}
