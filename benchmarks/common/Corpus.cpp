// SPDX-License-Identifier: MIT
#include "common/Corpus.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace bench {

namespace {

namespace fs = std::filesystem;

constexpr CorpusGroup kUtf8 = CorpusGroup::Utf8;
constexpr CorpusGroup kOther = CorpusGroup::OtherForm;
constexpr CorpusGroup kPage = CorpusGroup::CodePage;
constexpr CorpusGroup kEntities = CorpusGroup::Entities;

// clang-format off
constexpr CorpusEntry kEntries[] = {
    {"text",       "text.xml",       "text-heavy",        kUtf8,     nullptr,          true},
    {"attributes", "attributes.xml", "attribute-heavy",   kUtf8,     nullptr,          true},
    {"map",        "map.xml",        "map data",          kUtf8,     nullptr,          true},
    {"namespaces", "namespaces.xml", "namespace-heavy",   kUtf8,     nullptr,          true},
    {"records",    "records.xml",    "records",           kUtf8,     nullptr,          true},
    {"markup",     "markup.xml",     "mixed markup",      kUtf8,     nullptr,          true},
    {"unicode",    "unicode.xml",    "non-ASCII UTF-8",   kUtf8,     nullptr,          true},
    {"references", "references.xml", "references",        kUtf8,     nullptr,          true},
    {"deep",       "deep.xml",       "100,000 levels",    kUtf8,     nullptr,          false},
    {"small",      "small",          "1,000 small files", kUtf8,     nullptr,          false},
    {"vulkan",     "vulkan.xml",     "vk.xml",            kUtf8,     "libvulkan-dev",  false},
    {"gtk",        "gtk.gir",        "Gtk-3.0.gir",       kUtf8,     "libgtk-3-dev",   false},
    {"utf16le",    "utf16le.xml",    "UTF-16LE",          kOther,    nullptr,          true},
    {"latin1",     "latin1.xml",     "ISO-8859-1",        kOther,    nullptr,          true},
    {"windows1251","windows1251.xml","windows-1251",      kPage,     nullptr,          true},
    {"entities",   "entities.xml",   "entities",          kEntities, nullptr,          true},
};
// clang-format on

fs::path PathOf(const CorpusEntry& entry) { return fs::path(CorpusDirectory()) / entry.path; }

std::string ReadWhole(const fs::path& path) {
    std::ifstream input(path, std::ios::binary);
    std::string content(std::istreambuf_iterator<char>(input), {});
    if (content.empty()) {
        throw std::runtime_error(path.string() +
                                 " is missing or empty; scripts/make-corpus.py makes it");
    }
    return content;
}

}  // namespace

std::span<const CorpusEntry> CorpusEntries() { return kEntries; }

std::string CorpusDirectory() {
    const char* directory = std::getenv("ESPALIER_CORPUS");
    return directory != nullptr ? directory : ESPALIER_CORPUS;
}

const CorpusEntry& FindCorpusEntry(std::string_view name) {
    std::string names;
    for (const CorpusEntry& entry : kEntries) {
        if (entry.name == name) return entry;
        names += std::string(" ") + entry.name;
    }
    throw std::invalid_argument("no file is named " + std::string(name) + "; there are" + names);
}

std::vector<const CorpusEntry*> PresentCorpusEntries() {
    std::vector<const CorpusEntry*> entries;
    for (const CorpusEntry& entry : kEntries) {
        if (entry.origin != nullptr && !fs::exists(PathOf(entry))) {
            std::fprintf(stderr, "%s is left out: it comes from %s\n", entry.title, entry.origin);
            continue;
        }
        entries.push_back(&entry);
    }
    return entries;
}

CorpusFile LoadCorpusFile(const CorpusEntry& entry) {
    CorpusFile file;
    file.entry = &entry;
    const fs::path path = PathOf(entry);
    if (fs::is_directory(path)) {
        std::vector<fs::path> paths;
        for (const fs::directory_entry& member : fs::directory_iterator(path)) {
            paths.push_back(member.path());
        }
        std::sort(paths.begin(), paths.end());
        for (const fs::path& member : paths) {
            file.documents.push_back(ReadWhole(member));
        }
        if (paths.empty()) throw std::runtime_error(path.string() + " is empty");
    } else {
        file.documents.push_back(ReadWhole(path));
    }
    for (const std::string& document : file.documents) {
        file.bytes += document.size();
    }
    return file;
}

}  // namespace bench
