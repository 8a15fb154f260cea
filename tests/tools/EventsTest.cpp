// SPDX-License-Identifier: MIT
#include "tools/RunProgram.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <sstream>
#include <string_view>

namespace {

const std::string kSamples = ESPALIER_SAMPLES;

// Tells whether a text is one JSON value (RFC 8259), and nothing else.
class JsonCheck {
public:
    explicit JsonCheck(std::string_view text) : rest_(text) {}

    bool IsValue() { return Value() && rest_.empty(); }

private:
    bool Take(std::string_view token) {
        if (!rest_.starts_with(token)) return false;
        rest_.remove_prefix(token.size());
        return true;
    }

    bool Value() {
        if (rest_.starts_with('{')) return List('{', '}', true);
        if (rest_.starts_with('[')) return List('[', ']', false);
        if (rest_.starts_with('"')) return String();
        return Take("true") || Take("false") || Take("null") || Number();
    }

    bool List(char open, char close, bool hasNames) {
        const std::string_view end(&close, 1);
        if (!Take({&open, 1})) return false;
        if (Take(end)) return true;
        do {
            if (hasNames && !(String() && Take(":"))) return false;
            if (!Value()) return false;
        } while (Take(","));
        return Take(end);
    }

    bool Number() {
        std::size_t length = 0;
        while (length < rest_.size() && std::isdigit(static_cast<unsigned char>(rest_[length])))
            ++length;
        rest_.remove_prefix(length);
        return length > 0;
    }

    bool String() {
        if (!Take("\"")) return false;
        while (!rest_.empty() && rest_.front() != '"') {
            const char byte = rest_.front();
            rest_.remove_prefix(1);
            if (byte >= 0 && byte < ' ') return false;
            if (byte == '\\' && !Escape()) return false;
        }
        return Take("\"");
    }

    bool Escape() {
        if (!Take("u")) {
            const bool known =
                !rest_.empty() &&
                std::string_view("\"\\/bfnrt").find(rest_.front()) != std::string_view::npos;
            rest_.remove_prefix(known ? 1 : 0);
            return known;
        }
        for (int i = 0; i < 4; ++i) {
            if (rest_.empty() || !std::isxdigit(static_cast<unsigned char>(rest_.front())))
                return false;
            rest_.remove_prefix(1);
        }
        return true;
    }

    std::string_view rest_;
};

std::vector<std::string> Lines(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

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
              "DocumentType p:a 1 2:3 \"\"\n"
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
