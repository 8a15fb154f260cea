// SPDX-License-Identifier: MIT
#include "BesideSheets.h"

#include <espalier/dom/css/CollectStyleSheets.h>
#include <espalier/io/Exception.h>

#include "Input.h"
#include "InputFile.h"

#include <algorithm>
#include <charconv>
#include <vector>

namespace Tool {

namespace {

constexpr std::size_t kBlock = 65536;

// RFC 3986 section 2.1. A "%" that no two digits follow stays.
std::string Decode(std::string_view address) {
    std::string text;
    for (std::size_t i = 0; i < address.size(); ++i) {
        const std::string_view digits = address.substr(i + 1, 2);
        unsigned byte = 0;
        const auto [end, error] =
            std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
        const bool isByte = address[i] == '%' && digits.size() == 2 && error == std::errc() &&
                            end == digits.data() + digits.size();
        text += isByte ? static_cast<char>(byte) : address[i];
        if (isByte) i += 2;
    }
    return text;
}

// Tells whether a path stays in the folder that it is relative to. A colon may end the scheme of an
// address (RFC 3986 section 3.1), so no path here has one.
bool StaysBelow(std::string_view path) {
    if (path.empty() || path.front() == '/') return false;
    const bool isPlain = std::ranges::none_of(
        path, [](char byte) { return byte == ':' || byte == '\\' || (byte >= 0 && byte < ' '); });
    if (!isPlain) return false;
    while (!path.empty()) {
        const std::string_view segment = path.substr(0, path.find('/'));
        if (segment == "..") return false;
        path.remove_prefix(std::min(segment.size() + 1, path.size()));
    }
    return true;
}

}  // namespace

astring ReadSheet(const std::string& name, const InputOptions& options, Progress& progress) {
    // One byte too many is enough to see that there are too many.
    const std::size_t most = Dom::CSS::SheetLimits().bytes + 1;
    InputOptions plain = options;
    plain.encoding = nullptr;  // that is for documents
    Input input(name, plain, progress);
    std::string text;
    std::vector<unsigned char> block(kBlock);
    while (text.size() < most) {
        const int count = input.Read(block.data(), 0, static_cast<int>(kBlock));
        if (count <= 0) break;
        text.append(reinterpret_cast<const char*>(block.data()), static_cast<std::size_t>(count));
    }
    return astring(text);
}

BesideSheets::BesideSheets(const std::string& document, const InputOptions& options,
                           Progress& progress)
    : hasPlace_(document != "-"), options_(options), progress_(progress) {
    const InputName name = ParseInputName(document);
    if (name.member.empty()) {
        folder_ = document.substr(0, document.rfind('/') + 1);
    } else {
        folder_ = name.file + "!" + name.member.substr(0, name.member.find_last_of("/\\") + 1);
    }
}

std::string BesideSheets::NameOf(std::string_view address) const {
    const std::string path = Decode(address.substr(0, address.find('?')));
    return StaysBelow(path) ? folder_ + path : std::string(address);
}

std::optional<astring> BesideSheets::Read(std::string_view address) const {
    const std::string path = Decode(address.substr(0, address.find('?')));
    if (!hasPlace_ || !StaysBelow(path)) return std::nullopt;
    std::string name = folder_ + path;
    if (name == "-") name = "./-";  // standard input is meant otherwise
    if (!CanOpenAgain(ParseInputName(name))) return std::nullopt;
    try {
        return ReadSheet(name, options_, progress_);
    } catch (const Xml::Exception&) {
        return std::nullopt;
    }
}

}  // namespace Tool
