// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>  // mkdtemp
#include <filesystem>
#include <fstream>
#include <string>

/// A directory of its own for a test, gone afterwards.
class TemporaryDirectory {
public:
    TemporaryDirectory() {
        std::string pattern = (std::filesystem::temp_directory_path() / "espalier-XXXXXX").string();
        path_ = ::mkdtemp(pattern.data());
        std::filesystem::permissions(path_, std::filesystem::perms::all);
    }
    ~TemporaryDirectory() { std::filesystem::remove_all(path_); }

    std::string Write(const char* name, const std::string& content) const {
        std::ofstream(path_ / name, std::ios::binary) << content;
        return (path_ / name).string();
    }

    const std::filesystem::path& Path() const { return path_; }

private:
    std::filesystem::path path_;
};
