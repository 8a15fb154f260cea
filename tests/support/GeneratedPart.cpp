// SPDX-License-Identifier: MIT
#include "support/GeneratedPart.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace support {

std::string ContentOf(const std::string& fileName) {
    std::ifstream file(fileName, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

void ExpectGeneratedPart(const std::string& fileName, const std::string& name,
                         const std::string& expected) {
    const std::string first = "<!-- " + name + " -->\n";
    const std::string page = ContentOf(fileName);
    const std::size_t line = page.find(first);
    ASSERT_NE(line, std::string::npos) << fileName << " has no line " << first;
    const std::size_t begin = line + first.size();
    const std::size_t end = page.find("<!-- end -->\n", begin);
    ASSERT_NE(end, std::string::npos) << fileName;
    const char* const update = std::getenv("ESPALIER_UPDATE_CASES");
    if (update != nullptr && *update == '1') {
        std::ofstream(fileName, std::ios::binary)
            << page.substr(0, begin) << expected << page.substr(end);
        return;
    }
    EXPECT_EQ(page.substr(begin, end - begin), expected);
}

}  // namespace support
