// SPDX-License-Identifier: MIT
#include "CommandLine.h"
#include "tools/RunProgram.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

// Expects that a text is no more than a screen of 24 lines, the last of them for the prompt, and
// 80 columns.
void ExpectOneScreen(const std::string& text) {
    std::istringstream stream(text);
    std::size_t count = 0;
    for (std::string line; std::getline(stream, line); ++count)
        EXPECT_LE(line.size(), 80U) << line;
    EXPECT_LE(count, 23U);
    EXPECT_GE(count, 5U);
}

std::size_t CountExamples(const std::string& help) {
    const std::size_t start = help.find("Examples:\n");
    std::istringstream stream(start == std::string::npos ? "" : help.substr(start + 10));
    std::size_t count = 0;
    for (std::string line; std::getline(stream, line);) {
        count += line.find("espalier ") != std::string::npos;
    }
    return count;
}

}  // namespace

TEST(CommandLine, HelpFitsOneScreenAndNamesAllVerbs) {
    const ProgramResult result = RunProgram({"--help"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.errors, "");
    ExpectOneScreen(result.out);
    EXPECT_NE(result.out.find("\n  check "), std::string::npos);
    EXPECT_NE(result.out.find("\n  css "), std::string::npos);
    EXPECT_NE(result.out.find("\n  events "), std::string::npos);
    EXPECT_NE(result.out.find("\n  style "), std::string::npos);
    EXPECT_NE(result.out.find("\n  tree "), std::string::npos);
    EXPECT_EQ(RunProgram({"help"}).out, result.out);
    EXPECT_EQ(RunProgram({"-h"}).out, result.out);
}

TEST(CommandLine, HelpOfAVerbEndsInTwoExamples) {
    for (const char* const verb : {"check", "css", "events", "format", "select", "style", "tree"}) {
        SCOPED_TRACE(verb);
        const ProgramResult result = RunProgram({verb, "--help"});
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_EQ(CountExamples(result.out), 2U) << result.out;
        ExpectOneScreen(result.out);
        EXPECT_EQ(RunProgram({"help", verb}).out, result.out);
    }
}

TEST(CommandLine, HelpTeachesWhatAllVerbsRead) {
    const std::string help = RunProgram({"--help"}).out;
    for (const char* const word : {"gzip", "ARCHIVE!MEMBER", "--color", "--progress"})
        EXPECT_NE(help.find(word), std::string::npos) << word;
    for (const char* const verb : {"check", "css", "events", "tree", "format"}) {
        const std::string verbHelp = RunProgram({verb, "--help"}).out;
        for (const char* const option :
             {"\n  --encoding NAME", "\n  --max-bytes N", "\n  --max-ratio N"})
            EXPECT_NE(verbHelp.find(option), std::string::npos) << verb << option;
        EXPECT_EQ(verbHelp.find("\n\n\n"), std::string::npos);
    }
}

TEST(CommandLine, TellsTheVersion) {
    EXPECT_EQ(RunProgram({"--version"}).out, "espalier " ESPALIER_VERSION "\n");
    EXPECT_EQ(RunProgram({"--version"}).exitCode, 0);
}

TEST(CommandLine, WithoutArgumentsShowsTheHelpAsAnError) {
    const ProgramResult result = RunProgram(ProgramSetup());
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.errors, RunProgram({"--help"}).out);
}

TEST(CommandLine, BadUseIsAnErrorOfUsage) {
    const struct {
        std::vector<std::string> arguments;
        const char* expected;
    } kCases[] = {
        {{"chekc"}, "espalier: there is no verb \"chekc\". Did you mean \"check\"?\n"},
        {{"event", "a.xml"}, "espalier: there is no verb \"event\". Did you mean \"events\"?\n"},
        {{"--hlep"}, "espalier: there is no verb \"--hlep\". Did you mean \"--help\"?\n"},
        {{"a.xml"}, "espalier: there is no verb \"a.xml\".\n"},
        {{"check", "--frob"}, "espalier: check: The following argument was not expected: --frob\n"},
        {{"events", "a", "b"}, "espalier: events: The following argument was not expected: b\n"},
        {{"events", "--whitespace", "some"},
         "espalier: events: --whitespace: \"some\" is none of all, significant, none\n"},
        {{"events", "--whitespace"}, "espalier: events: "},
        {{"events", "--entities", "some"},
         "espalier: events: --entities: \"some\" is none of nothing, char, all\n"},
        {{"events", "--entities"}, "espalier: events: --entities: "},
        {{"events", "--attributes=some"}, "espalier: events: "},
        {{"tree", "--depth", "0"}, "espalier: tree: --depth: "},
        {{"tree", "--depth", "two"}, "espalier: tree: --depth: "},
        {{"tree", "-o"}, "espalier: tree: "},
        {{"tree", "--counts", "--frob"}, "espalier: tree: "},
        {{"tre", "a.xml"}, "espalier: there is no verb \"tre\". Did you mean \"tree\"?\n"},
        {{"check", "--color", "blue"},
         "espalier: check: --color: \"blue\" is none of auto, always, never\n"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.expected);
        const ProgramResult result = RunProgram(c.arguments);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_TRUE(result.errors.starts_with(c.expected)) << result.errors;
        EXPECT_TRUE(result.errors.ends_with(" --help\".\n")) << result.errors;
    }
}

TEST(CommandLine, TheNearestWordIsWhatWasMeant) {
    const std::vector<std::string_view> words{"check", "events", "style", "select"};
    const struct {
        const char* word;
        const char* expected;
    } kCases[] = {
        {"check", "check"}, {"chekc", "check"},    {"chk", "check"},      {"evnts", "events"},
        {"stile", "style"}, {"slect", "select"},   {"xyzzy", ""},         {"a", ""},
        {"", ""},           {"selects", "select"}, {"documents.xml", ""},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.word);
        EXPECT_EQ(Tool::NearestWord(c.word, words), c.expected);
    }
}
