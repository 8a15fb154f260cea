// SPDX-License-Identifier: MIT
#include "InputFile.h"

#include <espalier/io/Exception.h>
#include <espalier/io/FileStream.h>

#include <array>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <unistd.h>

namespace Tool {

namespace {

namespace fs = std::filesystem;

constexpr unsigned kReadOnly = 1;
constexpr unsigned kShareAll = 3;

bool Exists(const std::string& name) {
    std::error_code error;
    return fs::exists(name, error);
}

}  // namespace

// FileStream reads the files it opens by name ahead; a descriptor it takes as it is.
std::unique_ptr<IO::Stream> OpenFile(const std::string& name) {
    if (name == "-") return std::make_unique<IO::FileStream>(STDIN_FILENO, kReadOnly, false);
    std::error_code error;
    if (fs::is_directory(name, error)) Xml::Exception::ThrowException("Is a directory");
    return std::make_unique<IO::FileStream>(name.c_str(), IO::FileMode::Open, kReadOnly, kShareAll);
}

InputName ParseInputName(const std::string& name) {
    InputName first{name, {}};
    if (Exists(name)) return first;
    for (std::size_t at = name.find('!', 1); at != std::string::npos; at = name.find('!', at + 1)) {
        InputName split{name.substr(0, at), name.substr(at + 1)};
        if (split.member.empty()) break;
        if (Exists(split.file)) return split;
        if (first.member.empty()) first = split;
    }
    return first;
}

bool CanOpenAgain(const InputName& name) {
    std::error_code error;
    return name.file != "-" && fs::is_regular_file(name.file, error);
}

bool IsCompressed(const std::string& name) {
    const InputName parsed = ParseInputName(name);
    if (!parsed.member.empty()) return Exists(parsed.file);
    if (!CanOpenAgain(parsed)) return false;
    try {
        std::array<unsigned char, 2> head{};
        const int count = OpenFile(name)->Read(head.data(), 0, static_cast<int>(head.size()));
        return BeginsLikeGzip(
            {reinterpret_cast<const char*>(head.data()), static_cast<std::size_t>(count)});
    } catch (const Xml::Exception&) {
        return false;  // told when the document is opened
    }
}

bool BeginsLikeGzip(std::string_view head) { return head.starts_with("\x1F\x8B"); }

}  // namespace Tool
