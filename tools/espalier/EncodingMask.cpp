// SPDX-License-Identifier: MIT
#include "EncodingMask.h"

#include <algorithm>

namespace Tool {

namespace {

constexpr std::string_view kStart = "<?xml";
constexpr std::string_view kEnd = "?>";
constexpr std::string_view kMark = "\xEF\xBB\xBF";
constexpr std::string_view kWhite = " \t\r\n";
constexpr std::string_view kUtf8 = "UTF-8";
constexpr std::string_view kEncoding = "encoding";
constexpr char kUnknown = 'x';

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

bool IsWhite(char byte) { return kWhite.find(byte) != std::string_view::npos; }

bool IsUtf8(std::string_view name) { return name == kUtf8 || name == "utf-8"; }

// [81] EncName ::= [A-Za-z] ([A-Za-z0-9._] | '-')*
bool IsEncodingName(std::string_view name) {
    const auto isLetter = [](char byte) {
        return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
    };
    return isLetter(name.front()) && std::ranges::all_of(name, [&](char byte) {
               return isLetter(byte) || (byte >= '0' && byte <= '9') || byte == '.' ||
                      byte == '_' || byte == '-';
           });
}

// Returns the encoding declaration around a name, with the white space before it, when the rest of
// the declaration is in order without it, otherwise nothing.
std::string_view WholePart(std::string_view attributes, std::string_view name) {
    const auto nameStart = static_cast<std::size_t>(name.data() - attributes.data());
    const std::string_view before = attributes.substr(0, attributes.rfind(kEncoding, nameStart));
    const std::size_t start = before.find_last_not_of(kWhite) + 1;
    const std::size_t end = nameStart + name.size() + 1;
    const bool isBehindVersion = before.find("version") != std::string_view::npos;
    const bool isApart =
        start < before.size() && (end == attributes.size() || IsWhite(attributes[end]));
    if (!isBehindVersion || !isApart) return {};
    return attributes.substr(start, end - start);
}

// Returns what of a declaration is to be masked: the name with its quotation marks where "UTF-8"
// fits in, otherwise all that belongs to it, or else the name alone.
std::string_view PartToMask(std::string_view attributes, std::string_view name) {
    const auto nameStart = static_cast<std::size_t>(name.data() - attributes.data());
    if (!IsEncodingName(name)) return name;
    if (name.size() >= kUtf8.size()) return attributes.substr(nameStart - 1, name.size() + 2);
    const std::string_view whole = WholePart(attributes, name);
    return whole.empty() ? name : whole;
}

// Blanks come before the quotation mark, as they would part what follows from what is before it.
std::string MaskFor(std::string_view part, std::string_view name) {
    if (!IsEncodingName(name)) return std::string(name);  // which no reader knows
    if (part.size() == name.size()) return std::string(name.size(), kUnknown);
    if (name.size() < kUtf8.size()) {
        std::string blanks(part);
        std::ranges::replace_if(
            blanks, [](char byte) { return !IsWhite(byte); }, ' ');
        return blanks;  // on the same lines
    }
    std::string mask(name.size() - kUtf8.size(), ' ');
    return mask.append(1, part.front()).append(kUtf8).append(1, part.back());
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

EncodingMask MaskDeclaredName(PeekedStream& document) {
    PeekDeclaration(document);
    std::string& head = document.Peeked();
    const std::string_view attributes = AttributesOf(head);
    const std::string_view found = DeclaredName(attributes);
    if (found.empty() || IsUtf8(found)) return {};
    const std::string_view part = PartToMask(attributes, found);
    EncodingMask mask{std::string(found), std::string(part), MaskFor(part, found)};
    head.replace(static_cast<std::size_t>(part.data() - head.data()), part.size(), mask.masked);
    return mask;
}

std::string WithoutMask(std::string_view attributes, const EncodingMask& mask) {
    std::string text(attributes);
    const std::size_t position = text.find(mask.masked);
    if (position == std::string::npos) return text;
    return text.replace(position, mask.masked.size(), mask.original);
}

}  // namespace Tool
