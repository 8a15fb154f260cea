// SPDX-License-Identifier: MIT
//
// What `css` shows of style sheets; CssCheckTest.cpp has what it leaves out.
#include "support/Archives.h"
#include "tools/JsonLines.h"
#include "tools/RunProgram.h"
#include "tools/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

const std::string kSamples = ESPALIER_SAMPLES;

std::string Content(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

struct ShownCase {
    std::string input;
    std::string expected;
};

void ExpectShown(const std::vector<ShownCase>& cases,
                 const std::vector<std::string>& options = {}) {
    for (const ShownCase& c : cases) {
        SCOPED_TRACE(c.input);
        std::vector<std::string> arguments{"css"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const ProgramResult result = RunProgram(arguments, c.input);
        EXPECT_EQ(result.out, c.expected);
        EXPECT_EQ(result.errors, "");
        EXPECT_EQ(result.exitCode, 0);
    }
}

// Every character is two bytes.
std::string Utf16(std::string_view ascii, bool isBigEndian) {
    std::string text;
    for (const char byte : ascii)
        text.append(isBigEndian ? std::string{'\0', byte} : std::string{byte, '\0'});
    return text;
}

// Returns the text that is indented below a command in a page, up to the next line that is not.
std::string ShownBelow(const std::string& page, const std::string& command) {
    const std::size_t begin = page.find("    $ " + command + "\n");
    EXPECT_NE(begin, std::string::npos) << command;
    if (begin == std::string::npos) return {};
    std::string shown;
    const std::vector<std::string> lines = Lines(page.substr(begin));
    for (std::size_t i = 1; i < lines.size() && lines[i].starts_with("    "); ++i)
        shown.append(lines[i].substr(4)).append("\n");
    return shown;
}

}  // namespace

TEST(Css, ShowsSpecificitiesSelectorsAndDeclarations) {
    ExpectShown({
        {"", ""},
        {" \n", ""},
        {"/* only */", ""},
        {"p{}", "0,0,1 p\n"},
        {"p { color : red ; width:12.50px }", "0,0,1 p\n    color: red\n    width: 12.5px\n"},
        {"p{a:b}q{a:b;c:d}\n", "0,0,1 p\n    a: b\n0,0,1 q\n    a: b\n    c: d\n"},
        {"p{a:b;a:c}", "0,0,1 p\n    a: b\n    a: c\n"},
        {"p{a: b ! IMPORTANT}", "0,0,1 p\n    a: b !important\n"},
        {"/*1*/ p {/*2*/ a: b /*3*/; /*4*/}/*5*/", "0,0,1 p\n    a: b\n"},
        {"p{a:b", "0,0,1 p\n    a: b\n"},  // CSS Syntax Level 3 closes what is open at the end
        {"p{a:b;;c:d}", "0,0,1 p\n    a: b\n    c: d\n"},
        {"p{-x:1;--y:{z}}", "0,0,1 p\n    -x: 1\n    --y: {z}\n"},
        {"p{content:\"a;b\"}", "0,0,1 p\n    content: \"a;b\"\n"},
        {"\xEF\xBB\xBFp{}", "0,0,1 p\n"},
    });
}

TEST(Css, UnpacksSpecificities) {
    ExpectShown({
        {"*{}", "0,0,0 *\n"},
        {"ul li{}", "0,0,2 ul li\n"},
        {"p.a.b{}", "0,2,1 p.a.b\n"},
        {"a[href=x]{}", "0,1,1 a[href=x]\n"},
        {"#a .b > c + d{}", "1,1,2 #a .b > c + d\n"},
        {"h1, h2, .x, #y{}", "1,1,2 h1, h2, .x, #y\n"},
        {"#a #b #c{}", "3,0,0 #a #b #c\n"},
    });
}

TEST(Css, TakesShorthandsApart) {
    ExpectShown({
        {"p{margin:0 1px}",
         "0,0,1 p\n"
         "    margin-top: 0\n    margin-right: 1px\n    margin-bottom: 0\n    margin-left: 1px\n"},
        {"p{padding:1em !important}",
         "0,0,1 p\n"
         "    padding-top: 1em !important\n    padding-right: 1em !important\n"
         "    padding-bottom: 1em !important\n    padding-left: 1em !important\n"},
        {"p{border-left:1px solid}",
         "0,0,1 p\n    border-left-width: 1px\n    border-left-style: solid\n"
         "    border-left-color: currentcolor\n"},  // CSS 2.1 section 8.5.4: its initial value
        // CSS Cascading Level 3 section 3.1: for all longhands.
        {"p{margin:inherit}",
         "0,0,1 p\n    margin-top: inherit\n    margin-right: inherit\n"
         "    margin-bottom: inherit\n    margin-left: inherit\n"},
        {"p{margin:var(--a)}", "0,0,1 p\n    margin: var(--a)\n"},
    });
}

TEST(Css, RulesThatBeginWithAnAtSignHaveNoSpecificity) {
    ExpectShown({
        {"@font-face {font-family:'x';src:url(x.ttf)}",
         "- @font-face\n    font-family: \"x\"\n    src: url(\"x.ttf\")\n"},
        {"@page\n:first\n{}", "- @page :first\n"},
        {"@page{margin:0 1px}",
         "- @page\n    margin-top: 0\n    margin-right: 1px\n    margin-bottom: 0\n"
         "    margin-left: 1px\n"},
        {"@charset \"utf-8\";p{}", "- @charset \"utf-8\";\n0,0,1 p\n"},
        {"@import 'a.css'  print; p {a:b}", "- @import \"a.css\" print;\n0,0,1 p\n    a: b\n"},
        {"@x y {\n  z }p{}", "- @x y { z }\n0,0,1 p\n"},
    });
}

TEST(Css, IndentsRulesInRules) {
    ExpectShown({
        {"@media print { p { color: red } q{} } h2 {a:b}",
         "- @media print\n    0,0,1 p\n        color: red\n    0,0,1 q\n0,0,1 h2\n    a: b\n"},
        {"@supports (a:b) { @media\nscreen,\nprint { p{c:d} @page{e:f} } q{} } r{}",
         "- @supports (a:b)\n    - @media screen, print\n        0,0,1 p\n            c: d\n"
         "        - @page\n            e: f\n    0,0,1 q\n0,0,1 r\n"},
        {"@media print{}", "- @media print\n"},
    });
}

TEST(Css, ShowsEachTextOnOneLine) {
    ExpectShown({
        {"h1,\r\n  h2\t{}", "0,0,2 h1, h2\n"},
        {"ul  li{}", "0,0,2 ul  li\n"},
        {"ul\tli{}", "0,0,2 ul li\n"},
        {"p[a='\x1B[2J']{}", "0,1,1 p[a='\\1B [2J']\n"},
        {"p[a='\xC2\x9B']{}", "0,1,1 p[a='\\9B ']\n"},
        {"p[a='\x7F\xC3\xA9']{}", "0,1,1 p[a='\\7F \xC3\xA9']\n"},
        {"p{content:'\\1b [2J'}", "0,0,1 p\n    content: '\\1b [2J'\n"},
        {"p{content:'\x1B[2J'}", "0,0,1 p\n    content: \"\\1B [2J\"\n"},
    });
}

TEST(Css, WritesJson) {
    const std::vector<ShownCase> cases = {
        {"\n h1 {margin:1px;color:red !important}",
         R"({"line":2,"column":2,"selector":"h1","specificity":[0,0,1],"declarations":[)"
         R"({"name":"margin-top","value":"1px","shorthand":true},)"
         R"({"name":"margin-right","value":"1px","shorthand":true},)"
         R"({"name":"margin-bottom","value":"1px","shorthand":true},)"
         R"({"name":"margin-left","value":"1px","shorthand":true},)"
         R"({"name":"color","value":"red","important":true}]})"
         "\n"},
        {"p,\nq{}",
         R"({"line":1,"column":1,"selector":"p,\nq","specificity":[0,0,2],"declarations":[]})"
         "\n"},
        {"@page{a:'b'}",
         R"({"line":1,"column":1,"text":"@page","declarations":[{"name":"a","value":"\"b\""}]})"
         "\n"},
        {"@import 'a';", R"({"line":1,"column":1,"text":"@import \"a\";"})"
                         "\n"},
        {"@media print {\n@supports xy { p{} } }",
         R"({"line":1,"column":1,"text":"@media print"})"
         "\n"
         R"({"line":2,"column":1,"in":["@media print"],"text":"@supports xy"})"
         "\n"
         R"({"line":2,"column":16,"in":["@media print","@supports xy"],"selector":"p",)"
         R"("specificity":[0,0,1],"declarations":[]})"
         "\n"},
    };
    ExpectShown(cases, {"--json"});
    for (const ShownCase& c : cases) {
        for (const std::string& line : Lines(c.expected))
            EXPECT_TRUE(JsonCheck(line).IsValue()) << line;
    }
}

TEST(Css, TellsWhereTheRulesOfSeveralSheetsAreFrom) {
    const TemporaryDirectory directory;
    const std::string a = directory.Write("a.css", "p{a:b}@page{}");
    const std::string b = directory.Write("b.css", "#q{c:d}");
    ProgramSetup setup;
    setup.arguments = {"css", a, "-", b};
    setup.input = "r{}";
    const ProgramResult result = RunProgram(setup);
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(result.out, a + ": 0,0,1 p\n    a: b\n" + a + ": - @page\n<stdin>: 0,0,1 r\n" + b +
                              ": 1,0,0 #q\n    c: d\n");
    EXPECT_EQ(RunProgram({"css", "--json", b, b}).out,
              Lines(RunProgram({"css", "--json", b, b}).out).at(0) + "\n" + "{\"file\":\"" + b +
                  R"(","line":1,"column":1,"selector":"#q","specificity":[1,0,0],"declarations":[)"
                  R"({"name":"c","value":"d"}]})"
                  "\n");
}

// CSS Syntax Level 3 section 3.2: what the sheet says itself comes first.
TEST(Css, ReadsTheEncodingThatIsNamedUnlessTheSheetNamesOne) {
    const std::string latin = "p.\xE9{}";
    const std::string expected = "0,1,1 p.\xC3\xA9\n";
    const struct {
        const char* encoding;
        std::string input;
        std::string expected;
    } kCases[] = {
        {"UTF-8", "p.\xC3\xA9{}", expected},
        {"iso-8859-1", latin, expected},
        {"LATIN1", latin, expected},
        {"ASCII", latin, expected},
        {"windows-1252", "p{a:'\x80'}", "0,0,1 p\n    a: \"\xE2\x82\xAC\"\n"},
        {"windows-1251", "p.\xE9{}", "0,1,1 p.\xD0\xB9\n"},
        {"UTF-16", "\xFF\xFE" + Utf16("p{}", false), "0,0,1 p\n"},
        {"UTF-8", "\xFE\xFF" + Utf16("p{}", true), "0,0,1 p\n"},
        {"utf-16le", Utf16("p{}", false), "0,0,1 p\n"},
        {"UTF-16BE", Utf16("p{}", true), "0,0,1 p\n"},
        {"UTF-16LE", "\xEF\xBB\xBFp.\xC3\xA9{}", expected},
        {"windows-1251", "@charset \"windows-1252\";" + latin,
         "- @charset \"windows-1252\";\n" + expected},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.encoding);
        const ProgramResult result = RunProgram({"css", "--encoding", c.encoding}, c.input);
        EXPECT_EQ(result.out, c.expected);
        EXPECT_EQ(result.errors, "");
        EXPECT_EQ(result.exitCode, 0);
    }
    EXPECT_EQ(RunProgram({"css"}, "p.\xC3\xA9{}").out, expected);
    EXPECT_EQ(RunProgram({"css"}, latin).out, "0,1,1 p.\xEF\xBF\xBD\n");
}

TEST(Css, RefusesOtherNamesOfEncodings) {
    for (const char* const name : {"UTF-7", "UCS-4", ""}) {
        const ProgramResult result = RunProgram({"css", std::string("--encoding=") + name}, "p{}");
        EXPECT_EQ(result.exitCode, 2) << name;
        EXPECT_EQ(result.out, "");
    }
    EXPECT_TRUE(RunProgram({"css", "--encoding", "UTF-7"}, "")
                    .errors.starts_with("espalier: css: --encoding: \"UTF-7\" is none of UTF-8, "
                                        "UTF-16, UTF-16LE, UTF-16BE, windows-1250, "));
}

TEST(Css, ReadsCompressedSheets) {
    const TemporaryDirectory directory;
    const std::string gzip = support::MakeGzip("p{a:b}");
    const std::string zip =
        directory.Write("a.zip", support::MakeZip({{.name = "css/a.css", .content = "q{}"}}));
    EXPECT_EQ(RunProgram({"css"}, gzip).out, "0,0,1 p\n    a: b\n");
    EXPECT_EQ(RunProgram({"css", directory.Write("a.css.gz", gzip)}).out, "0,0,1 p\n    a: b\n");
    EXPECT_EQ(RunProgram({"css", zip + "!css/a.css"}).out, "0,0,1 q\n");
}

TEST(Css, WritesToAFileIfAllGoesWell) {
    const TemporaryDirectory directory;
    const std::string name = directory.Write("out.txt", "old");
    const ProgramResult refused = RunProgram({"css", "-o", name}, "p{}q{x}");
    EXPECT_EQ(refused.exitCode, 3);
    EXPECT_EQ(refused.out, "");
    EXPECT_EQ(Content(name), "old");
    const ProgramResult result = RunProgram({"css", "--output", name}, "p{}");
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(Content(name), "0,0,1 p\n");
    EXPECT_EQ(RunProgram({"css", "--check", "-o", name}, "p{}").exitCode, 2);
}

TEST(Css, ShowsTheSample) {
    const ProgramResult result = RunProgram({"css", kSamples + "/page.css"});
    const std::vector<std::string> lines = Lines(result.out);
    ASSERT_GE(lines.size(), 4U);
    EXPECT_EQ(lines[0], "- @charset \"UTF-8\";");
    EXPECT_EQ(lines[1], "0,0,1 body");
    EXPECT_EQ(lines[lines.size() - 3], "- @media print");
    EXPECT_EQ(lines[lines.size() - 2], "    0,1,1 p.warning");
    EXPECT_EQ(lines.back(), "        display: none");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.exitCode, 0);
}

TEST(Css, ReadsLargeSheets) {
    std::string sheet;
    constexpr int kRules = 60'000;
    for (int i = 0; i < kRules; ++i)
        sheet += "p.a" + std::to_string(i) + " > q { margin: 0 1px; color: red }\n";
    const ProgramResult result = RunProgram({"css"}, sheet);
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(Lines(result.out).size(), kRules * 6U);
}

TEST(Css, ThePageShowsWhatIsShown) {
    const std::string page = Content(ESPALIER_PROGRAM_PAGE);
    const TemporaryDirectory directory;
    const std::string sheet = ShownBelow(page, "cat order.css");
    EXPECT_GT(sheet.size(), 50U);
    const ProgramResult result = RunProgram({"css"}, sheet);
    std::string errors = result.errors;
    for (std::size_t at = 0; (at = errors.find("<stdin>", at)) != std::string::npos;)
        errors.replace(at, 7, "order.css");
    EXPECT_EQ(result.out, ShownBelow(page, "espalier css order.css 2>/dev/null"));
    EXPECT_EQ(errors, ShownBelow(page, "espalier css --check order.css"));
}
