// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <system_error>

namespace support {

/// A directory of its own for each test, removed with all that is in it.
class TemporaryDirectory {
public:
    TemporaryDirectory() {
        std::random_device random;
        std::error_code error;
        do  // a name that nobody has yet
            path_ = testing::TempDir() + "espalier-" + std::to_string(random());
        while (!std::filesystem::create_directory(path_, error) && !error);
        if (error) ADD_FAILURE() << "cannot make " << path_;
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
    ~TemporaryDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    /// Returns the path of a file in the directory, there or not.
    std::string Path(std::string_view name) const { return path_ + "/" + std::string(name); }

    /// Makes a file and returns its path.
    std::string Make(std::string_view name, std::string_view content) const {
        std::string path = Path(name);
        std::ofstream file(path, std::ios::binary | std::ios::trunc);
        file.write(content.data(), static_cast<std::streamsize>(content.size()));
        EXPECT_TRUE(file.flush().good()) << path;
        return path;
    }

    /// Returns what a file holds.
    static std::string Content(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        EXPECT_TRUE(file.good()) << path;
        std::ostringstream content;
        content << file.rdbuf();
        return content.str();
    }

private:
    std::string path_;
};

}  // namespace support
