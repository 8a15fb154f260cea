// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <vector>

/// \file
/// The documents that all parsers read: the samples, and those of Debian packages.
namespace differential {

/// Where documents come from: a package, or a folder, as one that several packages fill.
struct Source {
    const char* name;
    const char* folder;  ///< "" for a package
};

std::span<const Source> Sources();

/// Returns the name as a part of the name of a test.
std::string NameOf(const Source& source);

/// Returns the documents in order of their names, of many every support::kStride-th; none when the
/// package is not installed.
std::vector<std::filesystem::path> DocumentsOf(const Source& source);

/// Returns the bytes of a file.
std::string ContentOf(const std::filesystem::path& path);

}  // namespace differential
