// SPDX-License-Identifier: MIT
//
// What `css` leaves out, with `--check` and without it.
#include "support/Archives.h"
#include "tools/JsonLines.h"
#include "tools/RunProgram.h"
#include "tools/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

struct LeftOutCase {
    std::string input;
    std::string errors;  // each without "<stdin>:" in front, the lines below them included
    std::string out;     // what is shown all the same
};

// Expects that the same is left out by all that may be asked for.
void ExpectLeftOut(const std::vector<LeftOutCase>& cases) {
    for (const LeftOutCase& c : cases) {
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
    for (const char* const input :
         {"", "p{x:b}", "p{x:b;}\n", "@page{}", "p{x:b", "/* x", "p{x:b;;y:d}", "a[b]~c::before{}",
          "p{-x:y;--z:}", "@import 'a';", "p{/*x*/}"}) {
        const ProgramResult result = RunProgram({"css", "--check"}, input);
        EXPECT_EQ(result.exitCode, 0) << input;
        EXPECT_EQ(result.out, "") << input;
        EXPECT_EQ(result.errors, "") << input;
    }
}

TEST(CssCheck, ShowsWhyRulesAreLeftOut) {
    ExpectLeftOut({
        {"p& {x:b}\nq {y:d}\n",
         "1:2: warning: Syntax error in selector; the rule is left out\n"
         "    1 | p& {x:b}\n"
         "      |  ^\n",
         "0,0,1 q\n    y: d\n"},
        {"\n\n\tp ~ {x:b}",
         "3:5: warning: Syntax error in selector; the rule is left out\n"
         "    3 | \tp ~ {x:b}\n"
         "      | \t   ^\n",
         ""},
        {"p{x:b}\nmore",
         "2:1: warning: Expected a block; the rule is left out\n"
         "    2 | more\n"
         "      | ^\n",
         "0,0,1 p\n    x: b\n"},
        {"{a} q{y:d}",
         "1:1: warning: Syntax error in selector; the rule is left out\n"
         "    1 | {a} q{y:d}\n"
         "      | ^\n",
         "0,0,1 q\n    y: d\n"},
        {"p{}@import 'a.css';q{}",
         "1:4: warning: Import rule behind other rules; the rule is left out\n"
         "    1 | p{}@import 'a.css';q{}\n"
         "      |    ^\n",
         "0,0,1 p\n0,0,1 q\n"},
    });
}

TEST(CssCheck, ShowsWhyDeclarationsAreLeftOut) {
    ExpectLeftOut({
        {"p{color red;x:b}",
         "1:3: warning: Expected ':'; the declaration is left out\n"
         "    1 | p{color red;x:b}\n"
         "      |   ^\n",
         "0,0,1 p\n    x: b\n"},
        {"p{margin:;}",
         "1:3: warning: Property value missing; the declaration is left out\n"
         "    1 | p{margin:;}\n"
         "      |   ^\n",
         "0,0,1 p\n"},
        {"p{x:b;\n  y:d !}q{}",
         "2:3: warning: Invalid importance identifier; the declaration is left out\n"
         "    2 |   y:d !}q{}\n"
         "      |   ^\n",
         "0,0,1 p\n    x: b\n0,0,1 q\n"},
        {"p{q{x:b}}r{y:d}",
         "1:3: warning: Expected ':'; the declaration is left out\n"
         "    1 | p{q{x:b}}r{y:d}\n"
         "      |   ^\n",
         "0,0,1 p\n0,0,1 r\n    y: d\n"},
        {"@media print { p { x:b; 1:c } }",
         "1:25: warning: Invalid property name; the declaration is left out\n"
         "    1 | @media print { p { x:b; 1:c } }\n"
         "      |                         ^\n",
         "- @media print\n    0,0,1 p\n        x: b\n"},
    });
}

TEST(CssCheck, ShowsAllThatIsLeftOut) {
    ExpectLeftOut({{"a&{} c{} d{f} &g{h:i;j:k}",
                    "1:2: warning: Syntax error in selector; the rule is left out\n"
                    "    1 | a&{} c{} d{f} &g{h:i;j:k}\n"
                    "      |  ^\n"
                    "<stdin>:1:12: warning: Expected ':'; the declaration is left out\n"
                    "    1 | a&{} c{} d{f} &g{h:i;j:k}\n"
                    "      |            ^\n"
                    "<stdin>:1:15: warning: Syntax error in selector; the rule is left out\n"
                    "    1 | a&{} c{} d{f} &g{h:i;j:k}\n"
                    "      |               ^\n",
                    "0,0,1 c\n0,0,1 d\n"}});
}

TEST(CssCheck, CountsLinesAndCharactersAsStyleSheetsDo) {
    const struct {
        std::string input;
        const char* errors;
    } kCases[] = {
        {"p{}\r\nq&r{}",
         "2:2: warning: Syntax error in selector; the rule is left out\n    2 | q&r{}\n      |  "
         "^\n"},
        {"p{}\rq&r{}\r",
         "2:2: warning: Syntax error in selector; the rule is left out\n    2 | q&r{}\n      |  "
         "^\n"},
        {"p{}\fq&r{}",
         "2:2: warning: Syntax error in selector; the rule is left out\n    2 | q&r{}\n      |  "
         "^\n"},
        {"p{}\n\n q&r{}",
         "3:3: warning: Syntax error in selector; the rule is left out\n    3 |  q&r{}\n      |   "
         "^\n"},
        {"/*\xC3\xA9*/q&r{}",
         "1:7: warning: Syntax error in selector; the rule is left out\n    1 | "
         "/*\xC3\xA9*/q&r{}\n      |       ^\n"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.input);
        EXPECT_EQ(RunProgram({"css", "--check"}, c.input).errors,
                  std::string("<stdin>:") + c.errors);
    }
}

TEST(CssCheck, ShowsTheLineInAllEncodings) {
    EXPECT_EQ(RunProgram({"css", "--encoding", "LATIN1"}, "/*\xE9*/q&r{}").errors,
              "<stdin>:1:7: warning: Syntax error in selector; the rule is left out\n"
              "    1 | /*\xC3\xA9*/q&r{}\n"
              "      |       ^\n");
    using std::string_literals::operator""s;
    EXPECT_EQ(RunProgram({"css", "--encoding", "UTF-16"}, "\xFE\xFF\0q\0&\0r\0{\0}"s).errors,
              "<stdin>:1:2: warning: Syntax error in selector; the rule is left out\n    1 | "
              "q&r{}\n      |  ^\n");
    EXPECT_EQ(RunProgram({"css", "--encoding", "UTF-16"}, "\xFF\xFEq\0&\0r\0{\0}\0"s).errors,
              "<stdin>:1:2: warning: Syntax error in selector; the rule is left out\n    1 | "
              "q&r{}\n      |  ^\n");
}

// A line that is longer than anything that is kept.
TEST(CssCheck, CutsLongLines) {
    std::string input;
    for (int i = 0; i < 50'000; ++i)
        input += "a{x:c}";
    const ProgramResult result = RunProgram({"css", "--check"}, input + "p{q}" + input);
    EXPECT_EQ(result.exitCode, 3);
    const std::vector<std::string> lines = Lines(result.errors);
    ASSERT_EQ(lines.size(), 3U) << result.errors.substr(0, 1000);
    EXPECT_EQ(lines[0], "<stdin>:1:300003: warning: Expected ':'; the declaration is left out");
    EXPECT_TRUE(lines[1].starts_with("    1 | ..."));
    EXPECT_TRUE(lines[1].ends_with("..."));
    EXPECT_LE(lines[1].size(), 90U);
    EXPECT_EQ(lines[1].find("q}"), lines[2].find('^'));
}

TEST(CssCheck, TellsPropertiesThatAreNotKnown) {
    const std::string input =
        "p { colour: red; x: 1; -x-y: z; --z: 1; *zoom: 1 }\n"
        "@media all { q { Magin: 0; MARGIN: 0 } }\n"
        "@font-face { src: url(a) } @page { size: a4 }";
    const ProgramResult result = RunProgram({"css", "--check"}, input);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.errors,
              "<stdin>:1:5: warning: Unknown property\n"
              "    1 | p { colour: red; x: 1; -x-y: z; --z: 1; *zoom: 1 }\n"
              "      |     ^\n"
              "<stdin>:1:41: warning: Unknown property\n"
              "    1 | p { colour: red; x: 1; -x-y: z; --z: 1; *zoom: 1 }\n"
              "      |                                         ^\n"
              "<stdin>:2:18: warning: Unknown property\n"
              "    2 | @media all { q { Magin: 0; MARGIN: 0 } }\n"
              "      |                  ^\n");
    EXPECT_EQ(RunProgram({"css"}, input).errors, "") << "nobody asks for a check";
    const ProgramResult json = RunProgram({"css", "--check", "--json"}, "p { colour: red; color }");
    EXPECT_EQ(json.exitCode, 3);
    EXPECT_EQ(json.out, R"({"line":1,"column":5,"error":"Unknown property","property":"colour"})"
                        "\n"
                        R"({"line":1,"column":18,"error":"Expected ':'","dropped":"declaration"})"
                        "\n");
}

TEST(CssCheck, WritesJson) {
    const ProgramResult result =
        RunProgram({"css", "--check", "--json"}, "a&b{} c{}\n d{r:f;+g:\"h\"}");
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.out,
              R"({"line":1,"column":2,"error":"Syntax error in selector","dropped":"rule"})"
              "\n"
              R"({"line":2,"column":8,"error":"Invalid property name","dropped":"declaration"})"
              "\n");
    for (const std::string& line : Lines(result.out))
        EXPECT_TRUE(JsonCheck(line).IsValue()) << line;
    const ProgramResult shown = RunProgram({"css", "--json"}, "a&b{}");
    EXPECT_EQ(shown.exitCode, 3);
    EXPECT_EQ(shown.out, "");
    EXPECT_EQ(shown.errors,
              "<stdin>:1:2: warning: Syntax error in selector; the rule is left out\n    1 | "
              "a&b{}\n      |  ^\n");
}

TEST(CssCheck, TheWorstSheetDecides) {
    const TemporaryDirectory directory;
    const std::string good = directory.Write("good.css", "p{}");
    const std::string bad = directory.Write("bad.css", "\np&q{}");
    const ProgramResult result = RunProgram({"css", "--check", bad, good, "/nonexistent/a.css"});
    EXPECT_EQ(result.exitCode, 4);
    EXPECT_EQ(result.out, "");
    EXPECT_TRUE(result.errors.starts_with(bad +
                                          ":2:2: warning: Syntax error in selector; the rule is "
                                          "left out\n    2 | p&q{}\n      |  ^\n" +
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
    EXPECT_EQ(cut.out, "");  // what is cut would look whole: all is closed at the end of a sheet
    const ProgramResult large =
        RunProgram({"css", "--max-bytes", "20"}, "p{x:b}q{y:d}r{}s{}t{}u{}");
    EXPECT_EQ(large.exitCode, 5);
    EXPECT_TRUE(large.errors.starts_with("<stdin>: error: ")) << large.errors;
}
