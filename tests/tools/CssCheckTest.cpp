// SPDX-License-Identifier: MIT
//
// What `css` refuses, with `--check` and without it.
#include "support/Archives.h"
#include "tools/JsonLines.h"
#include "tools/ManyRecords.h"
#include "tools/RunProgram.h"
#include "tools/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

struct RefusedCase {
    std::string input;
    std::string errors;  // each without "<stdin>:" in front, the lines below them included
    std::string out;     // what is shown all the same
};

// Expects that the cases are refused in the same way by all that may be asked for.
void ExpectRefused(const std::vector<RefusedCase>& cases) {
    for (const RefusedCase& c : cases) {
        SCOPED_TRACE(c.input);
        const ProgramResult shown = RunProgram({"css"}, c.input);
        EXPECT_EQ(shown.errors, "<stdin>:" + c.errors);
        EXPECT_EQ(shown.out, c.out);
        EXPECT_EQ(shown.exitCode, 3);
        const ProgramResult checked = RunProgram({"css", "--check"}, c.input);
        EXPECT_EQ(checked.errors, "<stdin>:" + c.errors);
        EXPECT_EQ(checked.out, "");
        EXPECT_EQ(checked.exitCode, 3);
    }
}

}  // namespace

TEST(CssCheck, IsQuietWhenAllIsWell) {
    for (const char* const input : {"", "p{a:b}", "p{a:b;}\n", "@page{}", "p{a:b", "/* x"}) {
        const ProgramResult result = RunProgram({"css", "--check"}, input);
        EXPECT_EQ(result.exitCode, 0) << input;
        EXPECT_EQ(result.out, "") << input;
        EXPECT_EQ(result.errors, "") << input;
    }
}

TEST(CssCheck, ShowsWhyRulesAreRefused) {
    ExpectRefused({
        {"p::before {a:b}\nq {c:d}\n",
         "1:1: error: Syntax error in selector\n"
         "    1 | p::before {a:b}\n"
         "      | ^\n",
         "0,0,1 q\n    c: d\n"},
        {"\n\n\tp ~ q{a:b}",
         "3:2: error: Syntax error in selector\n"
         "    3 | \tp ~ q{a:b}\n"
         "      | \t^\n",
         ""},
        {"p{a:b} a:not({c:d}",  // "{" within "(" begins no block
         "1:8: error: Expected style declaration after selector\n"
         "    1 | p{a:b} a:not({c:d}\n"
         "      |        ^\n",
         "0,0,1 p\n    a: b\n"},
        {"p{content:\"a;b\"}",  // a value ends at ";", also in quotes
         "1:1: error: Expected ':'\n"
         "    1 | p{content:\"a;b\"}\n"
         "      | ^\n",
         ""},
        {"p{margin:;}",
         "1:1: error: Property value missing\n"
         "    1 | p{margin:;}\n"
         "      | ^\n",
         ""},
        {"p{a:b !}",
         "1:1: error: Invalid importance identifier\n"
         "    1 | p{a:b !}\n"
         "      | ^\n",
         ""},
        {"p{a:b !important x}",
         "1:1: error: Unexpected token after property\n"
         "    1 | p{a:b !important x}\n"
         "      | ^\n",
         ""},
    });
}

TEST(CssCheck, ShowsWhereTheRestIsNotRead) {
    ExpectRefused({
        {"p{a:b;\n  -x:1}\nq{c:d}",
         "2:3: error: Syntax error: the rest is not read\n"
         "    2 |   -x:1}\n"
         "      |   ^\n",
         "0,0,1 p\n    a: b\n"},
        {"p{q{a:b}}r{c:d}",
         "1:3: error: Syntax error: the rest is not read\n"
         "    1 | p{q{a:b}}r{c:d}\n"
         "      |   ^\n",
         "0,0,1 p\n"},
        {"p{a:b}\nmore",
         "2:1: error: Syntax error: the rest is not read\n"
         "    2 | more\n"
         "      | ^\n",
         "0,0,1 p\n    a: b\n"},
        {"p{a:b}more",
         "1:7: error: Syntax error: the rest is not read\n"
         "    1 | p{a:b}more\n"
         "      |       ^\n",
         "0,0,1 p\n    a: b\n"},
        {"p{/*x*/}more",
         "1:9: error: Syntax error: the rest is not read\n"
         "    1 | p{/*x*/}more\n"
         "      |         ^\n",
         "0,0,1 p\n"},
        {"@import 'a.css';",
         "1:1: error: Syntax error: the rest is not read\n"
         "    1 | @import 'a.css';\n"
         "      | ^\n",
         ""},
    });
}

TEST(CssCheck, ShowsWhereTheRestOfABlockIsNotRead) {
    ExpectRefused({
        {"p{a:b;;c:d}q{e:f}",
         "1:7: error: Syntax error: the rest of the block is not read\n"
         "    1 | p{a:b;;c:d}q{e:f}\n"
         "      |       ^\n",
         "0,0,1 p\n    a: b\n0,0,1 q\n    e: f\n"},
        {"p{a}q{c:d}",
         "1:3: error: Syntax error: the rest of the block is not read\n"
         "    1 | p{a}q{c:d}\n"
         "      |   ^\n",
         "0,0,1 p\n0,0,1 q\n    c: d\n"},
        {"/*x*/ {a} q{c:d}",
         "1:8: error: Syntax error: the rest of the block is not read\n"
         "    1 | /*x*/ {a} q{c:d}\n"
         "      |        ^\n",
         "0,0,1 q\n    c: d\n"},
    });
}

TEST(CssCheck, ShowsAllThatIsRefused) {
    ExpectRefused({{"a~b{} c{} d~e{f} g{h:i;-j:k}",
                    "1:1: error: Syntax error in selector\n"
                    "    1 | a~b{} c{} d~e{f} g{h:i;-j:k}\n"
                    "      | ^\n"
                    "<stdin>:1:11: error: Syntax error in selector\n"
                    "    1 | a~b{} c{} d~e{f} g{h:i;-j:k}\n"
                    "      |           ^\n"
                    "<stdin>:1:15: error: Syntax error: the rest of the block is not read\n"
                    "    1 | a~b{} c{} d~e{f} g{h:i;-j:k}\n"
                    "      |               ^\n"
                    "<stdin>:1:24: error: Syntax error: the rest is not read\n"
                    "    1 | a~b{} c{} d~e{f} g{h:i;-j:k}\n"
                    "      |                        ^\n",
                    "0,0,1 c\n0,0,1 g\n    h: i\n"}});
}

TEST(CssCheck, CountsLinesAndCharactersAsStyleSheetsDo) {
    const struct {
        std::string input;
        const char* errors;
    } kCases[] = {
        {"p{}\r\nq~r{}", "2:1: error: Syntax error in selector\n    2 | q~r{}\n      | ^\n"},
        {"p{}\rq~r{}\r", "2:1: error: Syntax error in selector\n    2 | q~r{}\n      | ^\n"},
        {"p{}\fq~r{}", "2:1: error: Syntax error in selector\n    2 | q~r{}\n      | ^\n"},
        {"p{}\n\n q~r{}", "3:2: error: Syntax error in selector\n    3 |  q~r{}\n      |  ^\n"},
        {"/*\xC3\xA9*/q~r{}",
         "1:6: error: Syntax error in selector\n    1 | /*\xC3\xA9*/q~r{}\n      |      ^\n"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.input);
        EXPECT_EQ(RunProgram({"css", "--check"}, c.input).errors,
                  std::string("<stdin>:") + c.errors);
    }
}

TEST(CssCheck, ShowsTheLineInAllEncodings) {
    EXPECT_EQ(RunProgram({"css", "--encoding", "LATIN1"}, "/*\xE9*/q~r{}").errors,
              "<stdin>:1:6: error: Syntax error in selector\n"
              "    1 | /*\xC3\xA9*/q~r{}\n"
              "      |      ^\n");
    using std::string_literals::operator""s;
    EXPECT_EQ(RunProgram({"css", "--encoding", "UTF-16"}, "\xFE\xFF\0q\0~\0r\0{\0}"s).errors,
              "<stdin>:1:1: error: Syntax error in selector\n    1 | q~r{}\n      | ^\n");
    EXPECT_EQ(RunProgram({"css", "--encoding", "UTF-16"}, "\xFF\xFEq\0~\0r\0{\0}\0"s).errors,
              "<stdin>:1:1: error: Syntax error in selector\n    1 | q~r{}\n      | ^\n");
}

// A line that is longer than anything that is kept.
TEST(CssCheck, CutsLongLines) {
    std::string input;
    for (int i = 0; i < 50'000; ++i)
        input += "a{b:c}";
    const ProgramResult result = RunProgram({"css", "--check"}, input + "p~q{}" + input);
    EXPECT_EQ(result.exitCode, 3);
    const std::vector<std::string> lines = Lines(result.errors);
    ASSERT_EQ(lines.size(), 3U) << result.errors.substr(0, 1000);
    EXPECT_EQ(lines[0], "<stdin>:1:300001: error: Syntax error in selector");
    EXPECT_TRUE(lines[1].starts_with("    1 | ..."));
    EXPECT_TRUE(lines[1].ends_with("..."));
    EXPECT_LE(lines[1].size(), 90U);
    EXPECT_EQ(lines[1].find("p~q{}"), lines[2].find('^'));
}

TEST(CssCheck, WritesJson) {
    const ProgramResult result =
        RunProgram({"css", "--check", "--json"}, "a~b{} c{}\n d{e:f;-g:\"h\"}");
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.out,
              "{\"line\":1,\"column\":1,\"error\":\"Syntax error in selector\"}\n"
              "{\"line\":2,\"column\":8,\"error\":\"Syntax error: the rest is not read\"}\n");
    for (const std::string& line : Lines(result.out))
        EXPECT_TRUE(JsonCheck(line).IsValue()) << line;
    const ProgramResult shown = RunProgram({"css", "--json"}, "a~b{}");
    EXPECT_EQ(shown.exitCode, 3);
    EXPECT_EQ(shown.out, "");
    EXPECT_EQ(shown.errors,
              "<stdin>:1:1: error: Syntax error in selector\n    1 | a~b{}\n      | ^\n");
}

TEST(CssCheck, TheWorstSheetDecides) {
    const TemporaryDirectory directory;
    const std::string good = directory.Write("good.css", "p{}");
    const std::string bad = directory.Write("bad.css", "\np~q{}");
    const ProgramResult result = RunProgram({"css", "--check", bad, good, "/nonexistent/a.css"});
    EXPECT_EQ(result.exitCode, 4);
    EXPECT_EQ(result.out, "");
    EXPECT_TRUE(result.errors.starts_with(
        bad + ":2:1: error: Syntax error in selector\n    2 | p~q{}\n      | ^\n" +
        "/nonexistent/a.css: error: "))
        << result.errors;
    EXPECT_EQ(RunProgram({"css", "--check", good, bad, good}).exitCode, 3);
}

TEST(CssCheck, InputThatFailsIsNoSyntaxError) {
    std::string sheet;
    for (int i = 0; i < 2000; ++i)
        sheet += "p" + std::to_string(i * 7919 % 10'007) + " { color: red }\n";
    std::string gzip = support::MakeGzip(sheet);
    gzip.resize(gzip.size() / 2);
    const ProgramResult cut = RunProgram({"css"}, gzip);
    EXPECT_EQ(cut.exitCode, 4);
    EXPECT_EQ(cut.errors, "<stdin>: error: Damaged gzip data: unexpected end of file\n");
    EXPECT_TRUE(cut.out.starts_with("0,0,1 p0\n    color: red\n"));
    EXPECT_TRUE(cut.out.ends_with("    color: red\n"));  // no rule that is cut
    const ProgramResult large =
        RunProgram({"css", "--max-bytes", "20"}, "p{a:b}q{c:d}r{}s{}t{}u{}");
    EXPECT_EQ(large.exitCode, 5);
    EXPECT_TRUE(large.errors.starts_with("<stdin>: error: ")) << large.errors;
}

TEST(CssCheck, TakesConstantMemory) {
    if (!kMeasuresMemory) GTEST_SKIP() << "a sanitizer is at work";
    ProgramSetup setup;
    setup.arguments = {"css", "--check"};
    int pieces = 0;
    std::string piece;
    for (int i = 0; i < 10'000; ++i)
        piece += "p.a > q { margin: 0 1px; color: red }\n";
    setup.nextInput = [&] { return pieces++ < 12 ? piece : std::string(); };
    const ProgramResult result = RunProgram(setup);
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(pieces, 13);
    EXPECT_LT(result.peakKilobytes, kPeakKilobytes);
}
