// SPDX-License-Identifier: MIT
#include "tools/JsonLines.h"
#include "tools/RunProgram.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace {

const std::string kSamples = ESPALIER_SAMPLES;

}  // namespace

TEST(Events, WritesOneLineANode) {
    const ProgramResult result =
        RunProgram({"events"},
                   "<?xml version=\"1.0\"?>\n"
                   "<!DOCTYPE p:a SYSTEM 'a.dtd'>\n"
                   "<p:a xmlns:p='urn:p' p:x=\"1\" y='a\tb'><p:b/>t\xC3\xA9xt &lt;\n&e;<!-- c:d "
                   "--><![CDATA[<e>]]>"
                   "<?do it?></p:a>\n");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.out,
              "XmlDeclaration xml 1 1:3 \"version=\\\"1.0\\\"\"\n"
              "Whitespace - 1 1:22 \"\\n\"\n"
              "DocumentType p:a 1 2:3 SYSTEM=\"a.dtd\" \"\"\n"
              "Whitespace - 1 2:30 \"\\n\"\n"
              "Element p:a 1 3:1 {urn:p} xmlns:p=\"urn:p\" p:x=\"1\" y=\"a\\tb\"\n"
              "Element p:b 2 3:38 {urn:p} /\n"
              "Text - 2 3:44 \"t\xC3\xA9xt <\\n\"\n"
              "EntityReference e 2 4:1\n"
              "Comment - 2 4:4 \" c:d \"\n"
              "CDATA - 2 4:16 \"<e>\"\n"
              "ProcessingInstruction do 2 4:33 \"it\"\n"
              "EndElement p:a 1 4:40 {urn:p}\n"
              "Whitespace - 1 4:46 \"\\n\"\n");
}

TEST(Events, WritesJson) {
    const ProgramResult result = RunProgram(
        {"events", "--json"},
        "<a xmlns='urn:a' x=\"&quot;\"><b/>\\ \"q\"<p:c xmlns:p='urn:p' p:d='1'/>\n</a>");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(
        result.out,
        R"({"type":"Element","depth":1,"line":1,"column":1,"name":"a","namespace":"urn:a","empty":false,"attributes":[{"name":"xmlns","value":"urn:a"},{"name":"x","value":"\""}]})"
        "\n"
        R"({"type":"Element","depth":2,"line":1,"column":29,"name":"b","namespace":"urn:a","empty":true})"
        "\n"
        R"({"type":"Text","depth":2,"line":1,"column":33,"value":"\\ \"q\""})"
        "\n"
        R"({"type":"Element","depth":2,"line":1,"column":38,"name":"p:c","namespace":"urn:p","empty":true,"attributes":[{"name":"xmlns:p","value":"urn:p"},{"name":"p:d","namespace":"urn:p","value":"1"}]})"
        "\n"
        R"({"type":"Whitespace","depth":2,"line":1,"column":68,"value":"\n"})"
        "\n"
        R"({"type":"EndElement","depth":1,"line":2,"column":1,"name":"a","namespace":"urn:a"})"
        "\n");
}

TEST(Events, EverySampleIsJsonWithAsManyNodesAsText) {
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(kSamples)) {
        const std::string extension = entry.path().extension();
        if (extension != ".xml" && extension != ".svg" && extension != ".xhtml") continue;
        SCOPED_TRACE(entry.path().string());
        const std::vector<std::string> json =
            Lines(RunProgram({"events", "--json", entry.path().string()}).out);
        const std::vector<std::string> text =
            Lines(RunProgram({"events", entry.path().string()}).out);
        EXPECT_EQ(json.size(), text.size());
        EXPECT_GT(json.size(), 10U);
        for (const std::string& line : json)
            EXPECT_TRUE(JsonCheck(line).IsValue()) << line;
        ++count;
    }
    EXPECT_EQ(count, 8U);
}

TEST(Events, EntitiesAreLeftReportedOrExpanded) {
    const std::string input =
        "<!DOCTYPE a [<!ENTITY t 'x&#38;amp;y'><!ENTITY m '<b c=\"1\"/>z'>]>\n"
        "<a d='&t;&#65;'>1&t;2&#66;&m;3</a>";
    const std::string documentType =
        "DocumentType a 1 1:3 \"<!ENTITY t 'x&#38;amp;y'><!ENTITY m '<b c=\\\"1\\\"/>z'>\"\n"
        "Whitespace - 1 1:66 \"\\n\"\n";
    const struct {
        std::vector<std::string> options;
        const char* expected;
    } kCases[] = {
        {{"--entities", "nothing"},
         "Element a 1 2:1 d=\"&t;&#65;\"\n"
         "Text - 2 2:17 \"1&t;2&#66;&m;3\"\n"
         "EndElement a 1 2:31\n"},
        {{"--entities", "char"},
         "Element a 1 2:1 d=\"&t;A\"\n"
         "Text - 2 2:17 \"1\"\n"
         "EntityReference t 2 2:18\n"
         "Text - 2 2:21 \"2B\"\n"
         "EntityReference m 2 2:27\n"
         "Text - 2 2:30 \"3\"\n"
         "EndElement a 1 2:31\n"},
        // The text of `m` is markup, so it is read where its reference ends: 2:30.
        {{"--entities", "all"},
         "Element a 1 2:1 d=\"x&yA\"\n"
         "Text - 2 2:17 \"1x&y2B\"\n"
         "Element b 2 2:30 c=\"1\" /\n"
         "Text - 2 2:40 \"z\"\n"
         "EndEntity m 2 2:41\n"
         "Text - 2 2:30 \"3\"\n"
         "EndElement a 1 2:31\n"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.options[1]);
        std::vector<std::string> arguments{"events"};
        arguments.insert(arguments.end(), c.options.begin(), c.options.end());
        const ProgramResult result = RunProgram(arguments, input);
        EXPECT_EQ(result.errors, "");
        EXPECT_EQ(result.out, documentType + c.expected);
        EXPECT_EQ(result.exitCode, 0);
    }
    EXPECT_EQ(RunProgram({"events"}, input).out,
              RunProgram({"events", "--entities", "char"}, input).out);
}

TEST(Events, EntitiesAreNodesInJson) {
    const std::string input = "<!DOCTYPE a[<!ENTITY b '<c/>'>]><a>&b;</a>";
    const std::string documentType =
        R"({"type":"DocumentType","depth":1,"line":1,"column":3,"name":"a","value":"<!ENTITY b '<c/>'>"})"
        "\n"
        R"({"type":"Element","depth":1,"line":1,"column":33,"name":"a","empty":false})"
        "\n";
    EXPECT_EQ(RunProgram({"events", "--json", "--entities", "char"}, input).out,
              documentType +
                  R"({"type":"EntityReference","depth":2,"line":1,"column":36,"name":"b"})"
                  "\n"
                  R"({"type":"EndElement","depth":1,"line":1,"column":39,"name":"a"})"
                  "\n");
    EXPECT_EQ(RunProgram({"events", "--json", "--entities", "all"}, input).out,
              documentType +
                  R"({"type":"Element","depth":2,"line":1,"column":39,"name":"c","empty":true})"
                  "\n"
                  R"({"type":"EndEntity","depth":2,"line":1,"column":43,"name":"b"})"
                  "\n"
                  R"({"type":"EndElement","depth":1,"line":1,"column":39,"name":"a"})"
                  "\n");
}

TEST(Events, AttributesCanStandBeneathTheirElement) {
    const std::string input = "<p:a xmlns:p='urn:p'\n p:x=\"1\" y='a\tb'><b/><c z=''/></p:a>";
    EXPECT_EQ(RunProgram({"events", "--attributes"}, input).out,
              "Element p:a 1 1:1 {urn:p}\n"
              "Attribute xmlns:p 2 1:6 \"urn:p\"\n"
              "Attribute p:x 2 2:2 {urn:p} \"1\"\n"
              "Attribute y 2 2:10 \"a\\tb\"\n"
              "Element b 2 2:18 /\n"
              "Element c 2 2:22 /\n"
              "Attribute z 3 2:25 \"\"\n"
              "EndElement p:a 1 2:31 {urn:p}\n");
    EXPECT_EQ(
        RunProgram({"events", "--attributes", "--json"}, "<p:a xmlns:p='urn:p' p:x='1'/>").out,
        R"({"type":"Element","depth":1,"line":1,"column":1,"name":"p:a","namespace":"urn:p","empty":true})"
        "\n"
        R"({"type":"Attribute","depth":2,"line":1,"column":6,"name":"xmlns:p","value":"urn:p"})"
        "\n"
        R"({"type":"Attribute","depth":2,"line":1,"column":22,"name":"p:x","namespace":"urn:p","value":"1"})"
        "\n");
}

TEST(Events, EveryAttributeOfTheSamplesHasALine) {
    for (const char* const sample : {"/catalogue.xml", "/feed.xml", "/drawing.svg"}) {
        SCOPED_TRACE(sample);
        const auto count = [&](const char* option, std::string_view what) {
            std::size_t found = 0;
            const std::string out = RunProgram({"events", "--json", option, kSamples + sample}).out;
            for (const std::string& line : Lines(out)) {
                EXPECT_TRUE(JsonCheck(line).IsValue()) << line;
                for (std::size_t at = 0; (at = line.find(what, at)) != std::string::npos; ++at)
                    ++found;
            }
            return found;
        };
        const std::size_t within = count("--json", "{\"name\":");
        EXPECT_EQ(count("--attributes", "\"type\":\"Attribute\""), within);
        EXPECT_GT(within, 10U);
    }
}

TEST(Events, ADocumentTypeHasItsIdentifiers) {
    const std::string input = "<!DOCTYPE a PUBLIC 'p:q' 's'[]><a/>";
    EXPECT_EQ(Lines(RunProgram({"events"}, input).out)[0],
              "DocumentType a 1 1:3 PUBLIC=\"p:q\" SYSTEM=\"s\" \"\"");
    EXPECT_EQ(Lines(RunProgram({"events", "--attributes"}, input).out)[0],
              "DocumentType a 1 1:3 PUBLIC=\"p:q\" SYSTEM=\"s\" \"\"");
    EXPECT_EQ(
        Lines(RunProgram({"events", "--json"}, input).out)[0],
        R"({"type":"DocumentType","depth":1,"line":1,"column":3,"name":"a","attributes":[{"name":"PUBLIC","value":"p:q"},{"name":"SYSTEM","value":"s"}],"value":""})");
}

// The reader leaves colons out of its columns that stand in no name that it shows.
TEST(Events, ColumnsCountTheColonsThatNobodySees) {
    const struct {
        const char* before;
        const char* entities;
    } kCases[] = {
        {"<!DOCTYPE p:a [<!ENTITY p:b 'x&p:c;'><!ENTITY % p:d 'e'>]>", "char"},
        {"<!DOCTYPE a [<!ENTITY p:b '1'>]><c d='&p:b;' e='&p:b;&p:b;'>&p:b;</c>", "all"},
        {"<!DOCTYPE a [<!ENTITY p:b '<p:f/><p:g/>'>]><c>&p:b;<p:h/></c>", "all"},
        {"<!DOCTYPE a [<!ENTITY p:b '1'>]><c d='&p:b;' e='&p:b;&p:b;'>&p:b;</c>", "nothing"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.before);
        const std::string before = c.before;
        const std::vector<std::string> lines =
            Lines(RunProgram({"events", "--entities", c.entities}, before + "<z/>").out);
        EXPECT_EQ(lines.back(), "Element z 1 1:" + std::to_string(before.size() + 1) + " /");
    }
}

TEST(Events, NamespacesCanBeLeftOut) {
    EXPECT_EQ(RunProgram({"events", "--no-namespaces"}, "<p:a xmlns:p='u'><b:c:d/></p:a>").out,
              "Element p:a 1 1:1 xmlns:p=\"u\"\n"
              "Element b:c:d 2 1:18 /\n"
              "EndElement p:a 1 1:26\n");
}

TEST(Events, LineEndsCanBeNormalized) {
    const std::string input = "<a b='x\r\ny\tz'>x\r\ny\rz</a>";
    EXPECT_EQ(RunProgram({"events"}, input).out,
              "Element a 1 1:1 b=\"x\\r\\ny\\tz\"\n"
              "Text - 2 2:6 \"x\\r\\ny\\rz\"\n"
              "EndElement a 1 4:2\n");
    EXPECT_EQ(RunProgram({"events", "--normalize"}, input).out,
              "Element a 1 1:1 b=\"x y z\"\n"
              "Text - 2 2:6 \"x\\ny\\nz\"\n"
              "EndElement a 1 4:2\n");
}

TEST(Events, WhiteSpaceCanBeLeftOut) {
    const std::string input = "<a> <b xml:space='preserve'> </b></a>\n";
    const struct {
        const char* which;
        std::size_t spaces;
    } kCases[] = {{"all", 3}, {"significant", 1}, {"none", 0}};
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.which);
        const std::string out = RunProgram({"events", "--whitespace", c.which}, input).out;
        std::size_t spaces = 0;
        for (const std::string& line : Lines(out)) {
            spaces += line.starts_with("Whitespace ") || line.starts_with("SignificantWhitespace ");
        }
        EXPECT_EQ(spaces, c.spaces) << out;
    }
}

TEST(Events, NodesBeforeAnErrorAreWritten) {
    const ProgramResult result = RunProgram({"events"}, "<a>\n<b></c></a>");
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.out,
              "Element a 1 1:1\n"
              "Whitespace - 2 1:4 \"\\n\"\n"
              "Element b 2 2:1\n");
    EXPECT_EQ(result.errors.substr(0, 64),
              "<stdin>:2:7: error: End tag 'c' doesn't match start tag 'b'\n    ");
}

TEST(Events, AnyNumberOfRootElementsIsFine) {
    const ProgramResult result = RunProgram({"events"}, "<a/><b/>");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "Element a 1 1:1 /\nElement b 1 1:5 /\n");
}

TEST(Events, StopsQuietlyWhenNobodyReads) {
    ProgramSetup setup;
    setup.arguments = {"events"};
    setup.outputLimit = 1;
    std::size_t sent = 0;
    setup.nextInput = [&sent] {
        sent += 1 << 16;
        if (sent == 1 << 16) return std::string("<a>");
        return sent < (64 << 20) ? std::string(1 << 14, ' ') + "<b/>" : std::string();
    };
    const ProgramResult result = RunProgram(setup);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.errors, "");
    EXPECT_LT(sent, 64U << 20) << "the program has read on";
}

TEST(Events, OutputThatCannotBeWrittenIsAnError) {
    ProgramSetup setup;
    setup.arguments = {"events"};
    setup.input = "<a/>";
    setup.outputFile = "/dev/full";
    const ProgramResult result = RunProgram(setup);
    EXPECT_EQ(result.exitCode, 4);
    EXPECT_EQ(result.errors, "espalier: standard output: No space left on device\n");
}
