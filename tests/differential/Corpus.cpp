// SPDX-License-Identifier: MIT
#include "Corpus.h"

#include "support/Sanitizers.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <sstream>
#include <string_view>
#include <system_error>

namespace differential {

namespace {

namespace fs = std::filesystem;

constexpr Source kSources[] = {
    {"shared-mime-info", ""},
    {"docbook-xsl", ""},
    {"xcb-proto", ""},
    {"libvulkan-dev", ""},
    {"libgtk-3-dev", ""},
    {"libglib2.0-dev", ""},
    {"adwaita-icon-theme", ""},
    {"introspection", "/usr/share/gir-1.0"},
    {"samples", ESPALIER_SAMPLES},
    {"encodings", ESPALIER_SAMPLES "/encodings"},
};

bool IsDocument(const fs::path& path) {
    constexpr std::array<std::string_view, 16> kExtensions = {
        ".xml",   ".xsl", ".xslt", ".svg", ".gir",  ".rng", ".xsd", ".xconf",
        ".xhtml", ".ui",  ".its",  ".loc", ".page", ".opf", ".ncx", ".rdf"};
    std::error_code ignored;
    return std::find(kExtensions.begin(), kExtensions.end(), path.extension().string()) !=
               kExtensions.end() &&
           fs::is_regular_file(path, ignored);
}

// Returns the lines of the package manager's list of the package's files, whatever architecture
// its name carries; nothing when the package is not installed.
std::vector<fs::path> FilesOfPackage(const std::string& package) {
    std::vector<fs::path> files;
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator("/var/lib/dpkg/info", ignored)) {
        if (entry.path().extension() != ".list") continue;
        const std::string stem = entry.path().stem().string();
        if (stem != package && !stem.starts_with(package + ":")) continue;
        std::ifstream list(entry.path());
        for (std::string line; std::getline(list, line);)
            files.emplace_back(line);
    }
    return files;
}

}  // namespace

std::span<const Source> Sources() { return kSources; }

std::string NameOf(const Source& source) {
    std::string name = source.name;
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c == '-' || c == '.'; }, '_');
    return name;
}

std::vector<fs::path> DocumentsOf(const Source& source) {
    std::vector<fs::path> files;
    std::error_code ignored;
    if (*source.folder == '\0') {
        files = FilesOfPackage(source.name);
    } else {
        for (const auto& entry : fs::directory_iterator(source.folder, ignored)) {
            files.push_back(entry.path());
        }
    }
    std::erase_if(files, [](const fs::path& path) { return !IsDocument(path); });
    std::sort(files.begin(), files.end());
    constexpr std::size_t kMany = 50;
    const std::size_t stride = files.size() > kMany ? support::kStride : 1;
    std::vector<fs::path> chosen;
    for (std::size_t i = 0; i < files.size(); i += stride)
        chosen.push_back(files[i]);
    return chosen;
}

std::string ContentOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

}  // namespace differential
