// SPDX-License-Identifier: MIT
#include "InputFile.h"
#include "tools/TemporaryDirectory.h"

#include <gtest/gtest.h>

TEST(InputName, IsSplitBehindAFileThatIsThere) {
    const TemporaryDirectory directory;
    directory.Write("a.zip", "");
    directory.Write("b!c.zip", "");
    directory.Write("d!e", "");
    const struct {
        const char* name;
        const char* file;
        const char* member;
    } kCases[] = {
        {"a.zip", "a.zip", ""},
        {"a.zip!m", "a.zip", "m"},
        {"a.zip!m/n!o", "a.zip", "m/n!o"},
        {"b!c.zip!m!n", "b!c.zip", "m!n"},
        {"d!e", "d!e", ""},
        {"none.zip!m!n", "none.zip", "m!n"},  // for the message
        {"none.xml", "none.xml", ""},
        {"a.zip!", "a.zip!", ""},
    };
    const std::string path = directory.Path().string() + "/";
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        const Tool::InputName name = Tool::ParseInputName(path + c.name);
        EXPECT_EQ(name.file, path + c.file);
        EXPECT_EQ(name.member, c.member);
    }
    EXPECT_EQ(Tool::ParseInputName("-").file, "-");
    EXPECT_EQ(Tool::ParseInputName("!m").file, "!m");
}
