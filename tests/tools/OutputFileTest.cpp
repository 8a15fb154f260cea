// SPDX-License-Identifier: MIT
//
// What `-o FILE` does.
#include "tools/RunProgram.h"
#include "tools/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <sys/stat.h>

namespace {

std::string Content(const std::filesystem::path& name) {
    std::ifstream stream(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::size_t CountFiles(const TemporaryDirectory& directory) {
    return static_cast<std::size_t>(
        std::distance(std::filesystem::directory_iterator(directory.Path()), {}));
}

unsigned Permissions(const std::filesystem::path& name) {
    return static_cast<unsigned>(std::filesystem::status(name).permissions()) & 0777U;
}

}  // namespace

TEST(OutputFile, TakesTheAnswers) {
    const TemporaryDirectory directory;
    const std::filesystem::path name = directory.Path() / "new.txt";
    for (const char* const option : {"-o", "--output"}) {
        const ProgramResult result = RunProgram({"tree", option, name.string()}, "<a><b/></a>");
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.errors, "");
        EXPECT_EQ(Content(name), "a\n└─ b\n");
        EXPECT_EQ(CountFiles(directory), 1U);
        std::filesystem::remove(name);
    }
    RunProgram({"tree", "--json", "-o", name.string()}, "<a/>");
    EXPECT_EQ(Content(name), "{\"depth\":1,\"type\":\"Element\",\"name\":\"a\"}\n");
    RunProgram({"tree", "--counts", "-o", name.string()}, "<a/>");
    EXPECT_EQ(Content(name), "count  text  element\n    1        a\n");
}

TEST(OutputFile, AnswersOfAnyLengthArriveWhole) {
    const TemporaryDirectory directory;
    const std::string name = (directory.Path() / "long.txt").string();
    std::string input = "<a>";
    std::string expected = "{\"depth\":1,\"type\":\"Element\",\"name\":\"a\"}\n";
    for (const std::size_t length : {1U, 65536U, 10U, 300'000U, 65535U}) {
        const std::string text(length, 'x');
        input += "<b>" + text + "</b>";
        expected +=
            "{\"depth\":2,\"type\":\"Element\",\"name\":\"b\",\"value\":\"" + text + "\"}\n";
    }
    EXPECT_EQ(RunProgram({"tree", "--json", "-o", name}, input + "</a>").exitCode, 0);
    EXPECT_TRUE(Content(name) == expected);
}

TEST(OutputFile, IsNotColored) {
    const TemporaryDirectory directory;
    ProgramSetup setup;
    setup.arguments = {"tree", "-o", (directory.Path() / "a.txt").string()};
    setup.input = "<a/>";
    setup.outputToTerminal = true;
    EXPECT_EQ(RunProgram(setup).exitCode, 0);
    EXPECT_EQ(Content(directory.Path() / "a.txt"), "a\n");
}

TEST(OutputFile, ReplacesAFileAndKeepsItsPermissions) {
    const TemporaryDirectory directory;
    const std::string name = directory.Write("a.txt", "old");
    ASSERT_EQ(::chmod(name.c_str(), 0640), 0);
    EXPECT_EQ(RunProgram({"tree", "-o", name}, "<a/>").exitCode, 0);
    EXPECT_EQ(Content(name), "a\n");
    EXPECT_EQ(Permissions(name), 0640U);
}

TEST(OutputFile, ANewFileHasTheUsualPermissions) {
    const TemporaryDirectory directory;
    const std::filesystem::path usual = directory.Write("usual.txt", "");
    const std::filesystem::path made = directory.Path() / "made.txt";
    EXPECT_EQ(RunProgram({"tree", "-o", made.string()}, "<a/>").exitCode, 0);
    EXPECT_EQ(Permissions(made), Permissions(usual));
}

TEST(OutputFile, ASymbolicLinkStays) {
    const TemporaryDirectory directory;
    directory.Write("a.txt", "old");
    const std::filesystem::path link = directory.Path() / "link.txt";
    std::filesystem::create_symlink("a.txt", link);
    EXPECT_EQ(RunProgram({"tree", "-o", link.string()}, "<a/>").exitCode, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_EQ(Content(directory.Path() / "a.txt"), "a\n");
}

TEST(OutputFile, MayBeTheDocumentItself) {
    const TemporaryDirectory directory;
    const std::string name = directory.Write("a.xml", "<a><b/></a>");
    EXPECT_EQ(RunProgram({"tree", name, "-o", name}).exitCode, 0);
    EXPECT_EQ(Content(name), "a\n└─ b\n");
}

TEST(OutputFile, AfterAnErrorItStaysAsItWas) {
    const TemporaryDirectory directory;
    const std::string name = directory.Write("a.txt", "old");
    const std::string missing = (directory.Path() / "new.txt").string();
    EXPECT_EQ(RunProgram({"tree", "-o", name}, "<a><b></a>").exitCode, 3);
    EXPECT_EQ(RunProgram({"tree", "-o", missing}, "<a><b></a>").exitCode, 3);
    EXPECT_EQ(RunProgram({"tree", "/nonexistent/a.xml", "-o", name}).exitCode, 4);
    EXPECT_EQ(RunProgram({"tree", "-o", missing}, "").out, "");
    EXPECT_EQ(Content(name), "old");
    EXPECT_EQ(CountFiles(directory), 1U);
}

TEST(OutputFile, SaysWhyItCannotBeWritten) {
    const TemporaryDirectory directory;
    const std::string folder = directory.Path().string();
    const std::string link = (directory.Path() / "nowhere").string();
    std::filesystem::create_symlink("nothing", link);
    const struct {
        std::string name;
        const char* expected;
    } kCases[] = {
        {folder, ": error: Not a regular file\n"},
        {"/dev/null", ": error: Not a regular file\n"},
        {folder + "/none/a.txt", ": error: No such file or directory\n"},
        {link, ": error: No such file or directory\n"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        const ProgramResult result = RunProgram({"tree", "-o", c.name}, "<a/>");
        EXPECT_EQ(result.exitCode, 4);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.errors, c.name + c.expected);
    }
    const std::string locked = directory.Write("locked.txt", "old");
    ASSERT_EQ(::chmod(locked.c_str(), 0444), 0);
    ProgramSetup setup;
    setup.arguments = {"tree", "-o", locked};
    setup.input = "<a/>";
    setup.asNobody = true;
    EXPECT_EQ(RunProgram(setup).errors, locked + ": error: Permission denied\n");
    EXPECT_EQ(Content(locked), "old");
}
