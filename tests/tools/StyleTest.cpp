// SPDX-License-Identifier: MIT
//
// What `style` says of elements. The documents are such that the cascade of CSS 2.1 chapter 6 can
// be done by hand.
#include "support/Archives.h"
#include "tools/JsonLines.h"
#include "tools/RunProgram.h"
#include "tools/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace {

const std::string kSamples = ESPALIER_SAMPLES;

// Elements of no particular kind, with a sheet of their own.
constexpr char kDocument[] =
    "<doc><style xmlns='http://www.w3.org/1999/xhtml'>\n"
    "a, b { color: red }\n"
    ".x { color: blue; text-indent: 2em }\n"
    "doc { font-size: 10px; letter-spacing: 1px }\n"
    "a:before { content: \"-\"; color: lime }\n"
    "@media print { a { color: black } }\n"
    "@media (max-width: 600px) { a { opacity: 0.5 } }\n"
    "@media (min-height: 1000px) { a { opacity: 0.25 } }\n"
    "</style><a class='x' id='i'/><a/><c><b/></c></doc>";

ProgramResult Style(std::vector<std::string> arguments, const std::string& input = kDocument) {
    arguments.insert(arguments.begin(), "style");
    return RunProgram(std::move(arguments), input);
}

std::string Content(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// The lines that a page shows below a command; without the indentation.
std::string ShownBelow(const std::string& page, const std::string& command) {
    const std::string prompt = "    $ " + command + "\n";
    const std::size_t at = page.find(prompt);
    if (at == std::string::npos) return "not there";
    std::istringstream lines(page.substr(at + prompt.size()));
    std::string shown;
    for (std::string line; std::getline(lines, line) && line.starts_with("    ");)
        shown += line.substr(4) + "\n";
    return shown;
}

}  // namespace

TEST(Style, ShowsWhatWinsAndWhatHasLost) {
    const ProgramResult result = Style({"-", ".x"});
    EXPECT_EQ(result.out,
              "doc/a[1] class=\"x\" id=\"i\"\n"
              "  color           rgb(0, 0, 255)  <style>:3  .x  (0,1,0)\n"
              "                x red             <style>:2  a  (0,0,1)\n"
              "  font-size       10px            inherited from doc, <style>:4  doc  (0,0,1)\n"
              "  letter-spacing  1px             inherited from doc, <style>:4  doc  (0,0,1)\n"
              "  text-indent     20px            <style>:3  .x  (0,1,0)\n");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.exitCode, 0);
}

TEST(Style, ShowsWhatTheOptionsAskFor) {
    const struct {
        std::vector<std::string> arguments;
        const char* out;
    } kCases[] = {
        {{"--winners", "--property", "color", "-", "#i"},
         "doc/a[1] class=\"x\" id=\"i\"\n  color  rgb(0, 0, 255)  <style>:3  .x  (0,1,0)\n"},
        {{"--property", "COLOR", "--property", "float", "-", "c"},
         "doc/c\n  color  rgb(0, 0, 0)  initial\n  float  none          initial\n"},
        {{"--property", "list-style", "-", "c"},
         "doc/c\n"
         "  list-style-image     none     initial\n"
         "  list-style-position  outside  initial\n"
         "  list-style-type      disc     initial\n"},
        {{"--property", "--none", "-", "c"}, "doc/c\n"},
        {{"--property", "color", "-", "b"},
         "doc/c/b\n  color  rgb(255, 0, 0)  <style>:2  b  (0,0,1)\n"},
        {{"--pseudo", "before", "--property", "content", "--property", "text-indent", "-", "#i"},
         "doc/a[1]::before class=\"x\" id=\"i\"\n"
         "  content      \"-\"   <style>:5  a:before  (0,0,2)\n"
         "  text-indent  20px  inherited from a[1], <style>:3  .x  (0,1,0)\n"},
        {{"--media", "print", "--property", "color", "-", "a + a"},
         "doc/a[2]\n"
         "  color  rgb(0, 0, 0)  <style>:6  a  (0,0,1)\n"
         "       x red           <style>:2  a  (0,0,1)\n"},
        {{"--width", "600", "--property", "opacity", "-", "#i"},
         "doc/a[1] class=\"x\" id=\"i\"\n  opacity  0.5  <style>:7  a  (0,0,1)\n"},
        {{"--width", "601", "--height", "1000", "--property", "opacity", "-", "#i"},
         "doc/a[1] class=\"x\" id=\"i\"\n  opacity  0.25  <style>:8  a  (0,0,1)\n"},
        {{"--winners", "--property", "color", "-", "a, b"},
         "doc/a[1] class=\"x\" id=\"i\"\n  color  rgb(0, 0, 255)  <style>:3  .x  (0,1,0)\n"
         "\n"
         "doc/a[2]\n  color  rgb(255, 0, 0)  <style>:2  a  (0,0,1)\n"
         "\n"
         "doc/c/b\n  color  rgb(255, 0, 0)  <style>:2  b  (0,0,1)\n"},
    };
    for (const auto& c : kCases) {
        const ProgramResult result = Style(c.arguments);
        EXPECT_EQ(result.out, c.out);
        EXPECT_EQ(result.errors, "");
        EXPECT_EQ(result.exitCode, 0);
    }
}

TEST(Style, AllAreTheKnownProperties) {
    const std::vector<std::string> lines = Lines(Style({"--all", "-", "c"}).out);
    EXPECT_GT(lines.size(), 100U);
    const auto has = [&lines](std::string_view begin, std::string_view end) {
        return std::ranges::any_of(lines, [&](const std::string& line) {
            return line.starts_with(begin) && line.ends_with(end);
        });
    };
    EXPECT_TRUE(has("  letter-spacing  ", "inherited from doc, <style>:4  doc  (0,0,1)"));
    EXPECT_TRUE(has("  z-index  ", "initial"));
    EXPECT_FALSE(has("  margin  ", "initial"));
}

TEST(Style, LeavesOutWhatAShorthandDoesNotMention) {
    constexpr char kText[] =
        "<d><style xmlns='http://www.w3.org/1999/xhtml'>"
        "e { border-top-style: dotted; border-top: 2px none } e { float: none }"
        "</style><e/></d>";
    EXPECT_EQ(Style({"-", "e"}, kText).out,
              "d/e\n"
              "  border-top-style  none    <style>:1  e  (0,0,1)\n"
              "                  x dotted  <style>:1  e  (0,0,1)\n"
              "  float             none    <style>:1  e  (0,0,1)\n");
}

TEST(Style, NamesEachSheet) {
    const TemporaryDirectory directory;
    std::filesystem::create_directories(directory.Path() / "in");
    const std::string page = directory.Write(
        "page.xhtml",
        "<?xml-stylesheet href='in/a%20b.css?v=1' type='text/css'?>"
        "<html xmlns='http://www.w3.org/1999/xhtml'><head>"
        "<style>\n#i { color: red }</style><style>#i { color: lime }</style></head>"
        "<body><p id='i' style='color: blue; float: left !important'/></body></html>");
    directory.Write("in/a b.css", "@import 'c.css';\n\np { color: teal }");
    directory.Write("in/c.css", "p { color: navy }");
    const std::string further = directory.Write("further.css", "p { color: gray }");
    const std::string folder = directory.Path().string();
    const ProgramResult result = Style({"--property", "color", "--property", "float", "--property",
                                        "display", "--sheet", further, page, "p"});
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.out,
              "html/body/p id=\"i\"\n"
              "  color    rgb(0, 0, 255)  style attribute\n"
              "         x lime            <style 2>:1  #i  (1,0,0)\n"
              "         x red             <style 1>:2  #i  (1,0,0)\n"
              "         x gray            " +
                  further +
                  ":1  p  (0,0,1)\n"
                  "         x teal            " +
                  folder +
                  "/in/a b.css:3  p  (0,0,1)\n"
                  "         x navy            " +
                  folder +
                  "/in/c.css:1  p  (0,0,1)\n"
                  "  float    left            style attribute  !important\n"
                  "  display  block           user agent  p  (0,0,1)\n");
    EXPECT_EQ(Style({"--no-ua", "--property", "display", page, "body, p"}).out,
              "html/body\n  display  inline  initial\n"
              "\n"
              "html/body/p id=\"i\"\n  display  block  initial, adjusted\n");
}

TEST(Style, ReadsSheetsFromBesideTheDocumentOnly) {
    const TemporaryDirectory directory;
    std::filesystem::create_directories(directory.Path() / "in");
    directory.Write("secret.css", "p { color: red }");
    directory.Write("in/here.css", "p { opacity: 0.5 }");
    std::filesystem::create_directories(directory.Path() / "in/folder.css");
    const std::string secret = directory.Path().string() + "/secret.css";
    const struct {
        std::string address;
        std::string reason;
    } kCases[] = {
        {"here.css", ""},
        {"./here.css", ""},
        {"x/../here.css", ""},
        {"none.css", "none.css"},
        {"../secret.css", "../secret.css"},
        {"%2e%2e/secret.css", "%2e%2e/secret.css"},
        {"x/%2e%2e/%2e%2e/secret.css", "x/%2e%2e/%2e%2e/secret.css"},
        {"..%2fsecret.css", "..%2fsecret.css"},
        {secret, secret},
        {"file://" + secret, "file://" + secret},
        {"http://host.example/a.css", "http://host.example/a.css"},
        {"//host.example/a.css", "//host.example/a.css"},
        {"folder.css", "folder.css"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.address);
        const std::string page =
            directory.Write("in/page.xml", "<?xml-stylesheet href='" + c.address +
                                               "' type='text/css'?><d><p/></d>");
        const ProgramResult result =
            Style({"--winners", "--property", "color", "--property", "opacity", page, "p"});
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_NE(result.out.find("color    rgb(0, 0, 0)  initial"), std::string::npos);
        const bool isRead = result.out.find("opacity  0.5") != std::string::npos;
        EXPECT_EQ(isRead, c.reason.empty()) << result.out;
        EXPECT_EQ(result.errors, c.reason.empty() ? ""
                                                  : page + ": warning: Style sheet \"" + c.reason +
                                                        "\": Not found\n");
    }
}

TEST(Style, StandardInputHasNothingBesideIt) {
    const ProgramResult result =
        Style({"-", "d"}, "<?xml-stylesheet href='page.css' type='text/css'?><d/>");
    EXPECT_EQ(result.errors, "<stdin>: warning: Style sheet \"page.css\": Not found\n");
    EXPECT_EQ(result.out, "d\n  display  block  initial, adjusted\n");
    EXPECT_EQ(result.exitCode, 0);
}

TEST(Style, JsonHasAnObjectForEachProperty) {
    const ProgramResult result =
        Style({"--json", "--property", "color", "--property", "font-size", "-", "#i"});
    EXPECT_EQ(
        result.out,
        "{\"path\":\"doc/a[1]\",\"property\":\"color\",\"value\":\"rgb(0, 0, 255)\","
        "\"kind\":\"declared\",\"declarations\":["
        "{\"source\":\"rule\",\"property\":\"color\",\"value\":\"blue\",\"sheet\":\"<style>\","
        "\"line\":3,\"column\":6,\"selector\":\".x\",\"specificity\":[0,1,0],"
        "\"origin\":\"author\"},"
        "{\"source\":\"rule\",\"property\":\"color\",\"value\":\"red\",\"sheet\":\"<style>\","
        "\"line\":2,\"column\":8,\"selector\":\"a, b\",\"specificity\":[0,0,1],"
        "\"origin\":\"author\"}]}\n"
        "{\"path\":\"doc/a[1]\",\"property\":\"font-size\",\"value\":\"10px\","
        "\"kind\":\"inherited\",\"from\":\"doc\",\"declarations\":["
        "{\"source\":\"rule\",\"property\":\"font-size\",\"value\":\"10px\",\"sheet\":\"<style>\","
        "\"line\":4,\"column\":7,\"selector\":\"doc\",\"specificity\":[0,0,1],"
        "\"origin\":\"author\"}]}\n");
    for (const std::string& line : Lines(Style({"--json", "--all", "-", "*"}).out))
        EXPECT_TRUE(JsonCheck(line).IsValue()) << line;
    const std::string winners =
        Style({"--json", "--winners", "--property", "color", "-", "#i"}).out;
    EXPECT_EQ(winners.find("\"red\""), std::string::npos);
    EXPECT_NE(winners.find("blue"), std::string::npos);
}

TEST(Style, ExitCodesTellWhatHasHappened) {
    const struct {
        std::vector<std::string> arguments;
        int exitCode;
        const char* errors;
    } kCases[] = {
        {{"-", "none"}, 1, ""},
        {{"-", "a > > b"}, 2, "espalier: style: syntax error in selector\n  a > > b\n      ^\n"},
        {{"-"}, 2, "espalier: style: SELECTOR is required"},
        {{"--width", "-1", "-", "a"}, 2, "espalier: style: --width: "},
        {{"/none/such", "a"}, 4, "/none/such: error: File not found\n"},
        {{"--sheet", "/none/such.css", "-", "a"}, 4, "/none/such.css: error: File not found\n"},
    };
    for (const auto& c : kCases) {
        const ProgramResult result = Style(c.arguments);
        EXPECT_EQ(result.exitCode, c.exitCode);
        EXPECT_TRUE(result.errors.starts_with(c.errors)) << result.errors;
        EXPECT_EQ(result.errors.empty(), std::string(c.errors).empty()) << result.errors;
        EXPECT_EQ(result.out, "");
    }
    const ProgramResult damaged = Style({"-", "a"}, "<a>\n<b></a>");
    EXPECT_EQ(damaged.exitCode, 3);
    EXPECT_TRUE(damaged.errors.starts_with("<stdin>:2:7: error: ")) << damaged.errors;
}

TEST(Style, WritesToAFile) {
    const TemporaryDirectory directory;
    const std::string file = (directory.Path() / "out.txt").string();
    const ProgramResult result =
        Style({"--color", "always", "--property", "color", "-o", file, "-", "b"});
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(Content(file), "doc/c/b\n  color  rgb(255, 0, 0)  <style>:2  b  (0,0,1)\n");
}

TEST(Style, ColorsAreForTerminals) {
    const std::string colored = Style({"--color", "always", "--property", "color", "-", "#i"}).out;
    EXPECT_NE(colored.find("\x1B[32mrgb(0, 0, 255)\x1B[0m"), std::string::npos) << colored;
    EXPECT_NE(colored.find("\x1B[2mx red             <style>:2  a  (0,0,1)\x1B[0m"),
              std::string::npos)
        << colored;
    EXPECT_EQ(Style({"-", "#i"}).out.find('\x1B'), std::string::npos);
}

TEST(Style, TextsCannotCommandTheTerminal) {
    const std::string out = Style({"-", "e"},
                                  "<e id='&#x9B;31m'><style xmlns='http://www.w3.org/1999/xhtml'>"
                                  "e { --a: x&#x9B;31m; font-family: '\x7F' }</style></e>")
                                .out;
    EXPECT_NE(out.find("--a"), std::string::npos);
    EXPECT_EQ(out.find("\xC2\x9B"), std::string::npos) << out;
    EXPECT_EQ(out.find('\x7F'), std::string::npos) << out;
}

TEST(Style, AMemberOfAnArchiveHasItsSheetsThere) {
    const TemporaryDirectory directory;
    const std::string archive = directory.Write(
        "book.epub", support::MakeZip({{"text/page.xml",
                                        "<?xml-stylesheet href='style.css' type='text/css'?><d/>"},
                                       {"text/style.css", "d { color: teal }"}}));
    const ProgramResult result = Style({"--property", "color", archive + "!text/page.xml", "d"});
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.out,
              "d\n  color  rgb(0, 128, 128)  " + archive + "!text/style.css:1  d  (0,0,1)\n");
}

TEST(Style, ManyElementsTakeTimeInProportion) {
    std::string text = "<d><style xmlns='http://www.w3.org/1999/xhtml'>e { color: red }</style>";
    for (int i = 0; i < 3000; ++i)
        text += "<e/>";
    const ProgramResult result = Style({"--json", "--property", "color", "-", "e"}, text + "</d>");
    EXPECT_EQ(Lines(result.out).size(), 3000U);
    EXPECT_TRUE(Lines(result.out).back().starts_with("{\"path\":\"d/e[3000]\",")) << result.out;
}

TEST(Style, ThePagesShowWhatItPrints) {
    const std::string readme = Content(ESPALIER_README);
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(kSamples + "/..");
    EXPECT_EQ(Style({"samples/page.xhtml", "p.warning"}).out,
              ShownBelow(readme, "espalier style samples/page.xhtml 'p.warning'"));
    std::filesystem::current_path(kSamples);
    const std::string page = Content(ESPALIER_PROGRAM_PAGE);
    EXPECT_EQ(Style({"page.xhtml", "h1"}).out, ShownBelow(page, "espalier style page.xhtml h1"));
    EXPECT_EQ(
        Style({"--json", "--property", "padding-left", "page.xhtml", "p.warning"}).out,
        ShownBelow(page, "espalier style --json --property padding-left page.xhtml p.warning"));
    std::filesystem::current_path(before);
    EXPECT_EQ(Style({"--property", "color", "-", "d"},
                    "<?xml-stylesheet href='../a.css' type='text/css'?><d/>")
                  .errors,
              "<stdin>: warning: Style sheet \"../a.css\": Not found\n");
}
