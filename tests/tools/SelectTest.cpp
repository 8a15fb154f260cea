// SPDX-License-Identifier: MIT
//
// What `select` finds and how it shows it.
#include "tools/RunProgram.h"
#include "tools/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

const std::string kSamples = ESPALIER_SAMPLES;

constexpr char kList[] =
    "<ul><li k='1'>one\n  <b>two</b></li><li/><li xmlns:p='urn:p' p:k='2'><p:x/> </li></ul>";

std::vector<std::string> Arguments(const std::vector<std::string>& arguments) {
    std::vector<std::string> all{"select"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return all;
}

}  // namespace

TEST(Select, ShowsWhatIsSelected) {
    const struct {
        std::vector<std::string> arguments;
        const char* out;
        int exitCode;
    } kCases[] = {
        {{"b"}, "<b>two</b>\n", 0},
        {{"li"},
         "<li k=\"1\">one\n  <b>two</b></li>\n<li/>\n"
         "<li xmlns:p=\"urn:p\" p:k=\"2\"><p:x/> </li>\n",
         0},
        {{"x"}, "<p:x xmlns:p=\"urn:p\"/>\n", 0},
        {{"li:empty"}, "<li/>\n", 0},
        {{"none"}, "", 1},
        {{"--text", "ul > li"}, "one two\n\n\n", 0},
        {{"--text", "-1", "ul > li"}, "one two\n", 0},
        {{"-1", "li + li"}, "<li/>\n", 0},
        {{"--first", "none"}, "", 1},
        {{"--attr", "k", "li"}, "1\n", 0},
        {{"--attr", "p:k", "li"}, "2\n", 0},
        {{"--attr", "p:k", "-1", "li"}, "2\n", 0},
        {{"--attr", "none", "li"}, "", 1},
        {{"--count", "li, b"}, "4\n", 0},
        {{"--count", "none"}, "0\n", 1},
        {{"--count", "--first", "li"}, "1\n", 0},
        {{"--ns", "q=urn:p", "q|x"}, "<p:x xmlns:p=\"urn:p\"/>\n", 0},
        {{"--ns", "q=urn:p", "--ns", "r=urn:r", "--count", "r|x, q|x"}, "1\n", 0},
        {{"--ns", "=urn:p", "--count", "*"}, "1\n", 0},
    };
    for (const auto& c : kCases) {
        const ProgramResult result = RunProgram(Arguments(c.arguments), kList);
        EXPECT_EQ(result.out, c.out) << c.arguments.back();
        EXPECT_EQ(result.errors, "") << c.arguments.back();
        EXPECT_EQ(result.exitCode, c.exitCode) << c.arguments.back();
    }
}

TEST(Select, NamesTheFileWhereThereAreSeveral) {
    const std::string page = kSamples + "/page.xhtml";
    const std::string feed = kSamples + "/feed.xml";
    const ProgramResult result = RunProgram({"select", "--count", "entry", page, feed});
    EXPECT_EQ(result.out, page + ": 0\n" + feed + ": 3\n");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(RunProgram({"select", "--attr", "href", "a", page, feed}).out,
              page + ": mailto:gate@nursery.example\n");
}

TEST(Select, RefusesWhatIsNoSelector) {
    const struct {
        const char* selector;
        const char* errors;
    } kCases[] = {
        {"a > > b", "espalier: select: syntax error in selector\n  a > > b\n      ^\n"},
        {"", "espalier: select: syntax error in selector\n  \n  ^\n"},
        {"p|a", "espalier: select: syntax error in selector\n  p|a\n  ^\n"},
        {"\xC3\xA4\xC3\xB6 >",
         "espalier: select: syntax error in selector\n  \xC3\xA4\xC3\xB6 >\n"
         "      ^\n"},
        {"a\n!", "espalier: select: syntax error in selector\n  a !\n    ^\n"},
    };
    for (const auto& c : kCases) {
        const ProgramResult result = RunProgram({"select", c.selector}, kList);
        EXPECT_EQ(result.errors, c.errors);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.exitCode, 2);
    }
}

TEST(Select, RefusesOptionsThatMakeNoSense) {
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{},
                                               {"--text", "--count", "a"},
                                               {"--text", "--attr", "k", "a"},
                                               {"--attr", "k", "--count", "a"},
                                               {"--ns", "x", "a"}}) {
        const ProgramResult result = RunProgram(Arguments(arguments), kList);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_TRUE(result.errors.starts_with("espalier: select: ")) << result.errors;
        EXPECT_TRUE(result.errors.ends_with("Try \"espalier select --help\".\n")) << result.errors;
    }
}

TEST(Select, DamagedDocumentsAreExplained) {
    ProgramResult result = RunProgram({"select", "a"}, "<a>\n<b></a>");
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_TRUE(result.errors.starts_with(
        "<stdin>:2:7: error: End tag 'a' doesn't match start tag 'b'\n    2 | <b></a>\n"))
        << result.errors;
    result = RunProgram({"select", "a"}, "<a/><b/>");
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.errors, "<stdin>: error: Document not well-formed\n");
    result = RunProgram({"select", "a", "/none/such"});
    EXPECT_EQ(result.exitCode, 4);
}

TEST(Select, TextsCannotCommandTheTerminal) {
    EXPECT_EQ(RunProgram({"select", "--text", "a"}, "<a>x&#x9B;31m&#9;y\n\n z\xC3\xA4 </a>").out,
              "x?31m y z\xC3\xA4\n");
}
