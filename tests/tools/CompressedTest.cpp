// SPDX-License-Identifier: MIT

// Documents in gzip data and in zip archives.

#include <espalier/io/GZipStream.h>

#include "support/Archives.h"
#include "tools/ManyRecords.h"
#include "tools/RunProgram.h"
#include "tools/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

using support::MakeGzip;
using support::MakeZip;

namespace {

constexpr char kDocument[] = "<?xml version='1.0'?>\n<a><b x='1'>text</b><!-- c --></a>\n";
constexpr char kBroken[] = "<a>\n <b>text</c>\n</a>\n";
constexpr char kBrokenErrors[] =
    ":2:12: error: End tag 'c' doesn't match start tag 'b'\n"
    "    2 |  <b>text</c>\n"
    "      |            ^\n";
constexpr char kBrokenNote[] =
    ":2:2: note: <b> was opened here\n"
    "    2 |  <b>text</c>\n"
    "      |  ^\n";

// What the verbs do that show all of a document.
const std::vector<std::string> kVerbs[] = {
    {"check", "-v"}, {"events", "--attributes"}, {"tree", "--counts"}, {"format"}};

std::string With(const std::string& name) { return name + kBrokenErrors + name + kBrokenNote; }

std::vector<std::string> And(std::vector<std::string> arguments, const std::string& last) {
    arguments.push_back(last);
    return arguments;
}

// What `check -v` says has the name in front.
std::string WithoutName(const std::string& text, const std::string& name) {
    return text.starts_with(name) ? text.substr(name.size()) : text;
}

std::string Content(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Hands compressed data out while they are made.
class Compressor final : public IO::Stream {
public:
    explicit Compressor(std::function<std::string()> next) : next_(std::move(next)) {}

    bool CanWrite() const override { return true; }
    void Close() override {}
    void Write(const unsigned char* buffer, int offset, int count) override {
        packed_.append(reinterpret_cast<const char*>(buffer) + offset,
                       static_cast<std::size_t>(count));
    }

    // Returns the next piece; empty at the end.
    std::string Next() {
        packed_.clear();
        while (packed_.empty() && !ended_) {
            const std::string piece = next_();
            ended_ = piece.empty();
            if (ended_) {
                stream_.Close();
            } else {
                stream_.Write(reinterpret_cast<const unsigned char*>(piece.data()), 0,
                              static_cast<int>(piece.size()));
            }
        }
        return packed_;
    }

private:
    std::function<std::string()> next_;
    std::string packed_;
    bool ended_ = false;
    IO::GZipStream stream_{this, IO::CompressionMode::Compress};
};

}  // namespace

TEST(Compressed, EveryVerbReadsGzipDataFromFileAndPipeAndArchive) {
    const TemporaryDirectory directory;
    const std::string plain = directory.Write("plain.xml", kDocument);
    const std::string misnamed = directory.Write("packed.xml", MakeGzip(kDocument));
    const std::string zip = directory.Write(
        "b.epub", MakeZip({{.name = "in/a.xml", .content = kDocument, .method = 8},
                           {.name = "in/b.xml", .content = kDocument, .method = 0},
                           {.name = "in/c.xmlz", .content = MakeGzip(kDocument), .method = 0}}));
    const std::string document = kDocument;
    const std::string twoMembers = MakeGzip(document.substr(0, 30)) + MakeGzip(document.substr(30));
    for (const auto& verb : kVerbs) {
        SCOPED_TRACE(verb.front());
        const std::string expected = WithoutName(RunProgram(And(verb, plain)).out, plain);
        EXPECT_FALSE(expected.empty());
        for (const std::string& name : {misnamed, zip + "!in/a.xml", zip + "!in/b.xml",
                                        zip + "!in/c.xmlz", zip + "!IN\\A.xml"}) {
            const ProgramResult result = RunProgram(And(verb, name));
            EXPECT_EQ(result.errors, "");
            EXPECT_EQ(result.exitCode, 0);
            EXPECT_EQ(WithoutName(result.out, name), expected) << name;
        }
        for (const std::string& input : {MakeGzip(kDocument), twoMembers, twoMembers + "garbage"}) {
            const ProgramResult result = RunProgram(verb, input);
            EXPECT_EQ(result.errors, "");
            EXPECT_EQ(result.exitCode, 0);
            EXPECT_EQ(WithoutName(result.out, "<stdin>"), expected);
        }
    }
}

TEST(Compressed, ErrorsHaveTheirPlacesAndLines) {
    const TemporaryDirectory directory;
    const std::string gzip = directory.Write("a.xml.gz", MakeGzip(kBroken));
    const std::string zip =
        directory.Write("b.zip", MakeZip({{.name = "a.xml", .content = kBroken}})) + "!a.xml";
    for (const std::string& name : {gzip, zip}) {
        const ProgramResult result = RunProgram({"check", name});
        EXPECT_EQ(result.exitCode, 3);
        EXPECT_EQ(result.errors, With(name));
    }
    const ProgramResult result = RunProgram({"check"}, MakeGzip(kBroken));
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.errors, With("<stdin>"));
}

TEST(Compressed, ErrorsFarInAreShownToo) {
    const TemporaryDirectory directory;
    std::string document = "<a>\n";
    for (int line = 0; line < 20000; ++line)
        document += "<b>" + std::to_string(line * 7919) + "</b>\n";
    document += "<c></d>\n</a>";
    const std::string name = directory.Write("a.gz", MakeGzip(document));
    EXPECT_TRUE(RunProgram({"check", name}).errors.starts_with(name + ":20002:7: error: "))
        << RunProgram({"check", name}).errors;
    const std::string fromPipe = RunProgram({"check"}, MakeGzip(document)).errors;
    EXPECT_TRUE(fromPipe.starts_with("<stdin>:20002:7: error: ")) << fromPipe;
    EXPECT_NE(fromPipe.find("20002 | <c></d>\n      |       ^\n"), std::string::npos) << fromPipe;
    EXPECT_NE(fromPipe.find("<stdin>:20002:1: note: <c> was opened here\n"), std::string::npos);
}

TEST(Compressed, WhatCannotBeOpenedIsAnErrorOfInput) {
    const TemporaryDirectory directory;
    const std::string path = directory.Path().string() + "/";
    const std::string zip =
        directory.Write("b.zip", MakeZip({{.name = "a.xml", .content = "<a/>"}}));
    directory.Write("plain.xml", "<a/>");
    directory.Write("cut.zip", Content(zip).substr(0, 30));
    const struct {
        std::string name;
        const char* expected;
    } kCases[] = {
        {path + "none.zip!a.xml", "Archive not found"},
        {zip + "!none.xml", "File not found in archive"},
        {path + "plain.xml!a.xml", "Not a zip archive"},
        {path + "cut.zip!a.xml", "Not a zip archive"},
        {path.substr(0, path.size() - 1) + "!a.xml", "Is a directory"},
        {path + "none.xml", "File not found"},
        {path + "none.xml!", "File not found"},
    };
    for (const auto& c : kCases) {
        const ProgramResult result = RunProgram({"check", c.name});
        EXPECT_EQ(result.exitCode, 4);
        EXPECT_EQ(result.errors, c.name + ": error: " + c.expected + "\n");
    }
}

TEST(Compressed, AFileWithTheWholeNameComesFirst) {
    const TemporaryDirectory directory;
    const std::string zip =
        directory.Write("b!c.zip", MakeZip({{.name = "a!.xml", .content = "<zip/>"}}));
    EXPECT_EQ(RunProgram({"events", zip + "!a!.xml"}).out, "Element zip 1 1:1 /\n");
    const std::string file = directory.Write("b!c.zip!a!.xml", "<file/>");
    EXPECT_EQ(RunProgram({"events", file}).out, "Element file 1 1:1 /\n");
}

TEST(Compressed, DamagedDataAreAnErrorOfInputBehindWhatCameBefore) {
    std::string checksum = MakeGzip("<a/>");
    checksum[checksum.size() - 8] ^= 1;
    std::string length = MakeGzip("<a/>");
    length[length.size() - 1] ^= 1;
    const std::string whole = MakeGzip("<a/>");
    const struct {
        std::string input;
        const char* out;
        const char* expected;
    } kCases[] = {
        {checksum, "Element a 1 1:1 /\n", "incorrect data check"},
        {length, "Element a 1 1:1 /\n", "incorrect length check"},
        {whole.substr(0, whole.size() - 1), "Element a 1 1:1 /\n", "unexpected end of file"},
        {whole.substr(0, 10), "", "unexpected end of file"},
    };
    for (const auto& c : kCases) {
        const ProgramResult result = RunProgram({"events"}, c.input);
        EXPECT_EQ(result.exitCode, 4);
        EXPECT_EQ(result.out, c.out);
        EXPECT_EQ(result.errors,
                  std::string("<stdin>: error: Damaged gzip data: ") + c.expected + "\n");
    }
}

TEST(Compressed, EveryTruncationOfGzipDataIsAnError) {
    const std::string whole = MakeGzip(kDocument);
    for (std::size_t size = 2; size < whole.size(); ++size) {
        const ProgramResult result = RunProgram({"check"}, whole.substr(0, size));
        EXPECT_EQ(result.exitCode, 4) << size;
        EXPECT_TRUE(result.errors.starts_with("<stdin>: error: Damaged gzip data: ")) << size;
    }
}

TEST(Compressed, DamagedMembersAreAnErrorOfInput) {
    const TemporaryDirectory directory;
    const struct {
        support::ZipEntry entry;
        const char* expected;
    } kCases[] = {
        {{.name = "a", .content = "<a/>", .checksum = 1}, "Damaged zip data"},
        {{.name = "a", .content = "<a/>", .size = 400}, "Damaged zip data"},
    };
    for (const auto& c : kCases) {
        const std::string name = directory.Write("a.zip", MakeZip({c.entry})) + "!a";
        const ProgramResult result = RunProgram({"check", name});
        EXPECT_EQ(result.exitCode, 4);
        EXPECT_EQ(result.errors, name + ": error: " + c.expected + "\n");
    }
}

TEST(Compressed, FilesAreNotReplacedThen) {
    const TemporaryDirectory directory;
    const std::string plain = directory.Write("plain.xml", "<a><b/></a>");
    const std::string gzip = directory.Write("a.xml", MakeGzip("<a><b/></a>"));
    const std::string zip =
        directory.Write("b.zip", MakeZip({{.name = "a", .content = "<a><b/></a>"}}));
    const std::string before = Content(gzip);
    const std::string zipBefore = Content(zip);
    for (const std::string& name : {gzip, zip + "!a"}) {
        const ProgramResult result = RunProgram({"format", "--in-place", plain, name});
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.errors, "espalier: format: --in-place: " + name +
                                     " is compressed, and only plain files can be replaced\n"
                                     "Try \"espalier format --help\".\n");
        EXPECT_EQ(Content(plain), "<a><b/></a>");  // none is, not even those that could be
        EXPECT_EQ(RunProgram({"format", "--check", name}).out, name + ": would change\n");
        EXPECT_EQ(RunProgram({"format", name}).out, "<a>\n  <b/>\n</a>\n");
    }
    const std::string none = directory.Path().string() + "/none.zip!a";
    EXPECT_EQ(RunProgram({"format", "--in-place", none}).errors,
              none + ": error: Archive not found\n");
    EXPECT_EQ(Content(gzip), before);
    EXPECT_EQ(Content(zip), zipBefore);
}

TEST(Compressed, TakesConstantMemoryFromAPipe) {
    if (!kMeasuresMemory) GTEST_SKIP() << "a sanitizer is at work";
    Compressor compressor(ManyRecords(100 << 20, "</r:oops>"));
    ProgramSetup setup;
    setup.arguments = {"check", "--max-ratio", "10000"};
    setup.nextInput = [&] { return compressor.Next(); };
    const ProgramResult result = RunProgram(setup);
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_NE(result.errors.find("End tag 'r:oops' doesn't match start tag 'r:all'"),
              std::string::npos)
        << result.errors;
    EXPECT_LT(result.peakKilobytes, kPeakKilobytes);
}
