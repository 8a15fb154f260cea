// SPDX-License-Identifier: MIT
#include "EncodingMask.h"

#include <algorithm>

namespace Tool {

namespace {

constexpr std::string_view kStart = "<?xml";
constexpr std::string_view kEnd = "?>";
constexpr std::string_view kMark = "\xEF\xBB\xBF";
constexpr std::string_view kWhite = " \t\r\n";
constexpr char kMask = 'x';

void SkipWhite(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(kWhite), text.size()));
}

// Returns what stands between "<?xml" and "?>" at the start of a document, or empty.
std::string_view AttributesOf(std::string_view head) {
    if (head.starts_with(kMark)) head.remove_prefix(kMark.size());
    const std::size_t end = head.find(kEnd);
    if (!head.starts_with(kStart) || end == std::string_view::npos) return {};
    return head.substr(kStart.size(), end - kStart.size());
}

// Tells whether a document that begins with `head` may have a declaration that goes on.
bool MayGoOn(std::string_view head) {
    constexpr std::size_t kShortest = kStart.size() + kMark.size();
    if (head.starts_with(kMark)) head.remove_prefix(kMark.size());
    if (head.size() >= kShortest && !head.starts_with(kStart)) return false;
    return head.find(kEnd) == std::string_view::npos;
}

}  // namespace

std::string_view PeekDeclaration(PeekedStream& document) {
    constexpr std::size_t kLongest = 1024;  // more than the reader takes
    while (MayGoOn(document.Peeked()) && document.PeekMore(kLongest))
        continue;
    return document.Peeked();
}

// [80] EncodingDecl ::= S 'encoding' Eq ('"' EncName '"' | "'" EncName "'" )
std::string_view DeclaredName(std::string_view attributes) {
    for (SkipWhite(attributes); !attributes.empty(); SkipWhite(attributes)) {
        const std::size_t nameEnd = attributes.find_first_of(" \t\r\n=");
        if (nameEnd == std::string_view::npos) return {};
        const std::string_view name = attributes.substr(0, nameEnd);
        attributes.remove_prefix(nameEnd);
        SkipWhite(attributes);
        if (!attributes.starts_with('=')) return {};
        attributes.remove_prefix(1);
        SkipWhite(attributes);
        if (!attributes.starts_with('"') && !attributes.starts_with('\'')) return {};
        const std::size_t valueEnd = attributes.find(attributes.front(), 1);
        if (valueEnd == std::string_view::npos) return {};
        if (name == "encoding") return attributes.substr(1, valueEnd - 1);
        attributes.remove_prefix(valueEnd + 1);
    }
    return {};
}

std::string MaskDeclaredName(PeekedStream& document) {
    PeekDeclaration(document);
    std::string& head = document.Peeked();
    const std::string_view found = DeclaredName(AttributesOf(head));
    if (found.empty() || found == "UTF-8" || found == "utf-8") return {};
    std::string name(found);
    const auto position = static_cast<std::size_t>(found.data() - head.data());
    head.replace(position, name.size(), name.size(), kMask);
    return name;
}

std::string WithoutMask(std::string_view attributes, std::string_view name) {
    std::string text(attributes);
    const std::string_view found = DeclaredName(text);
    if (found.size() != name.size()) return text;
    return text.replace(static_cast<std::size_t>(found.data() - text.data()), name.size(), name);
}

}  // namespace Tool
