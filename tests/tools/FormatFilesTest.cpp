// SPDX-License-Identifier: MIT

// What `format` does to files: --in-place and --check.

#include "tools/ManyRecords.h"
#include "tools/RunProgram.h"
#include "tools/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;

std::string Content(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

ino_t Inode(const std::string& name) {
    struct stat status {};
    EXPECT_EQ(::stat(name.c_str(), &status), 0);
    return status.st_ino;
}

std::size_t CountFiles(const fs::path& folder) {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

// Returns what docs/program.md shows below a command, up to the next one.
std::string Documented(const std::string& command) {
    const std::string page = Content(ESPALIER_PROGRAM_PAGE);
    const std::string prompt = "    $ " + command + "\n";
    const std::size_t at = page.find(prompt);
    if (at == std::string::npos) return "not there";
    std::istringstream lines(page.substr(at + prompt.size()));
    std::string shown;
    for (std::string line; std::getline(lines, line) && !line.starts_with("    $ ");) {
        if (!line.empty() && !line.starts_with("    ")) break;
        shown += (line.empty() ? line : line.substr(4)) + "\n";
    }
    return shown.substr(0, shown.size() - 1);  // without the blank line at its end
}

constexpr char kBefore[] = "<a><b/></a>";
constexpr char kAfter[] = "<a>\n  <b/>\n</a>\n";

}  // namespace

TEST(FormatDocumentation, ShowsWhatHappens) {
    const TemporaryDirectory directory;
    const std::string order = directory.Write("order.xml", Documented("cat order.xml"));
    EXPECT_EQ(RunProgram({"format", order}).out, Documented("espalier format order.xml"));
    EXPECT_EQ(RunProgram({"format", "--check", order}).exitCode, 1);
    const std::string line = Documented("espalier format --to us-ascii order.xml | grep '<to>'");
    EXPECT_NE(line, "not there");
    EXPECT_NE(RunProgram({"format", "--to", "us-ascii", order}).out.find(line), std::string::npos);
}

TEST(FormatInPlace, ReplacesFilesAndKeepsTheirPermissions) {
    const TemporaryDirectory directory;
    const std::string one = directory.Write("one.xml", kBefore);
    const std::string two = directory.Write("two.xml", "<c> <d/></c>");
    fs::permissions(one, fs::perms{0640});
    const ProgramResult result = RunProgram({"format", "--in-place", one, two});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(Content(one), kAfter);
    EXPECT_EQ(Content(two), "<c>\n  <d/>\n</c>\n");
    EXPECT_EQ(fs::status(one).permissions(), fs::perms{0640});
    EXPECT_EQ(CountFiles(directory.Path()), 2U);
}

TEST(FormatInPlace, LeavesAFileAloneThatWouldNotChange) {
    const TemporaryDirectory directory;
    const std::string name = directory.Write("a.xml", kAfter);
    const ino_t before = Inode(name);
    EXPECT_EQ(RunProgram({"format", "--in-place", name}).exitCode, 0);
    EXPECT_EQ(Inode(name), before);
    EXPECT_EQ(Content(name), kAfter);
    EXPECT_EQ(CountFiles(directory.Path()), 1U);
}

TEST(FormatInPlace, ReplacesWhatALinkLeadsTo) {
    const TemporaryDirectory directory;
    fs::create_directory(directory.Path() / "inner");
    const std::string target = directory.Write("inner/a.xml", kBefore);
    const std::string link = (directory.Path() / "link.xml").string();
    fs::create_symlink("inner/a.xml", link);
    EXPECT_EQ(RunProgram({"format", "--in-place", link}).exitCode, 0);
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(Content(target), kAfter);
    EXPECT_EQ(CountFiles(directory.Path() / "inner"), 1U);
}

TEST(FormatInPlace, LeavesNothingBehindAfterAnError) {
    const struct {
        const char* content;
        std::vector<std::string> options;
        int exitCode;
    } kCases[] = {
        {"<a><b></a>", {}, 3},
        {"<a> <b/>", {}, 3},
        {"<a><!-- \xE2\x82\xAC --></a>", {"--to", "us-ascii"}, 4},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.content);
        const TemporaryDirectory directory;
        const std::string name = directory.Write("a.xml", c.content);
        std::vector<std::string> arguments{"format", "--in-place", name};
        arguments.insert(arguments.end(), c.options.begin(), c.options.end());
        const ino_t before = Inode(name);
        EXPECT_EQ(RunProgram(arguments).exitCode, c.exitCode);
        EXPECT_EQ(Inode(name), before);
        EXPECT_EQ(Content(name), c.content);
        EXPECT_EQ(CountFiles(directory.Path()), 1U);
    }
}

TEST(FormatInPlace, SaysWhyAFileCannotBeReplaced) {
    const TemporaryDirectory directory;
    const std::string name = directory.Write("a.xml", kBefore);
    fs::permissions(name, fs::perms{0444});
    ProgramSetup setup;
    setup.arguments = {"format", "--in-place", name};
    setup.asNobody = true;
    ProgramResult result = RunProgram(setup);
    EXPECT_EQ(result.exitCode, 4);
    EXPECT_EQ(result.errors, name + ": error: Permission denied\n");

    fs::permissions(name, fs::perms{0666});
    fs::permissions(directory.Path(), fs::perms{0555});
    result = RunProgram(setup);
    EXPECT_EQ(result.exitCode, 4);
    EXPECT_EQ(result.errors, name + ": error: Permission denied\n");
    EXPECT_EQ(Content(name), kBefore);

    EXPECT_EQ(RunProgram({"format", "--in-place", "/dev/null"}).errors,
              "/dev/null: error: Not a regular file\n");
}

TEST(FormatCheck, NamesWhatWouldChange) {
    const TemporaryDirectory directory;
    const std::string changes = directory.Write("changes.xml", kBefore);
    const std::string stays = directory.Write("stays.xml", kAfter);
    const std::string broken = directory.Write("broken.xml", "<a>");
    ProgramResult result = RunProgram({"format", "--check", stays});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "");
    result = RunProgram({"format", "--check", changes, stays});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, changes + ": would change\n");
    EXPECT_EQ(result.errors, "");
    result = RunProgram({"format", "--check", changes, broken});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.out, changes + ": would change\n");
    EXPECT_EQ(Content(changes), kBefore);
}

TEST(FormatCheck, FindsEachDifference) {
    for (const char* const document :
         {"<a/>", "<a/>\n\n", "<a/>\r\n", " <a/>\n", "<a />\n", "<a></a >\n", "<a b='c'/>\n"}) {
        SCOPED_TRACE(document);
        const ProgramResult result = RunProgram({"format", "--check"}, document);
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_EQ(result.out, "<stdin>: would change\n");
    }
    EXPECT_EQ(RunProgram({"format", "--check"}, "<a/>\n").exitCode, 0);
    EXPECT_EQ(RunProgram({"format", "--check", "--to", "utf-16"}, "<a/>\n").exitCode, 1);
}

TEST(FormatInPlace, TakesConstantMemory) {
    if (!kMeasuresMemory) GTEST_SKIP() << "a sanitizer is at work";
    const TemporaryDirectory directory;
    const std::string name = (directory.Path() / "large.xml").string();
    {
        std::ofstream file(name, std::ios::binary);
        auto next = ManyRecords(16 << 20, "</r:all>");
        for (std::string piece = next(); !piece.empty(); piece = next())
            file << piece;
    }
    const ProgramResult result = RunProgram({"format", "--in-place", name});
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_LT(result.peakKilobytes, kPeakKilobytes);
    const ProgramResult check = RunProgram({"format", "--check", name});
    EXPECT_EQ(check.exitCode, 0) << check.out;
    EXPECT_LT(check.peakKilobytes, kPeakKilobytes);
}
