// SPDX-License-Identifier: MIT
//
// Runs a fuzz target without libFuzzer: once for each file named on the command line, and for
// each file below each folder named there. Exit status 0 when all inputs have been run, 1 when one
// cannot be read or there was none, 2 when called without arguments. A fault in the target ends
// the program there; the last line printed names the input.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

// Returns the files that `path` stands for, in order of their names.
std::vector<fs::path> FilesOf(const fs::path& path) {
    if (!fs::is_directory(path)) return {path};
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(path)) {
        if (entry.is_regular_file()) files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

// The input stands in a block of exactly its size, so that a sanitizer sees any read past its end.
void Replay(const fs::path& file) {
    std::printf("%s\n", file.c_str());
    std::fflush(stdout);
    const std::size_t size = fs::file_size(file);
    const auto data = std::make_unique<std::uint8_t[]>(size);
    std::ifstream in(file, std::ios::binary);
    in.read(reinterpret_cast<char*>(data.get()), static_cast<std::streamsize>(size));
    if (!in) throw std::runtime_error("cannot be read");
    LLVMFuzzerTestOneInput(data.get(), size);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s FILE-OR-FOLDER...\n", argv[0]);
        return 2;
    }
    std::size_t count = 0;
    for (int i = 1; i < argc; ++i) {
        try {
            for (const fs::path& file : FilesOf(argv[i])) {
                Replay(file);
                ++count;
            }
        } catch (const std::exception& error) {
            std::fprintf(stderr, "%s: %s\n", argv[i], error.what());
            return 1;
        }
    }
    std::printf("%zu inputs replayed\n", count);
    return count == 0 ? 1 : 0;
}
