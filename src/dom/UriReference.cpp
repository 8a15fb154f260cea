// SPDX-License-Identifier: MIT
#include "dom/UriReference.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace Dom::detail {

namespace {

constexpr std::size_t kNone = std::string_view::npos;

bool IsLetter(char character) {
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

bool IsInScheme(char character) {
    return IsLetter(character) || (character >= '0' && character <= '9') || character == '+' ||
           character == '-' || character == '.';
}

// scheme = ALPHA *( ALPHA / DIGIT / "+" / "-" / "." )
// Returns how long the scheme in front is, with its ":"; 0 without one. A single letter is a drive.
std::size_t SchemeLength(std::string_view text) {
    const std::size_t colon = text.find(':');
    const bool isScheme = colon != kNone && colon > 1 && IsLetter(text.front()) &&
                          std::all_of(text.begin(), text.begin() + colon, IsInScheme);
    return isScheme ? colon + 1 : 0;
}

// Takes the first characters out of a text.
std::string_view Take(std::string_view& text, std::size_t count) {
    const std::string_view taken = text.substr(0, count);
    text.remove_prefix(taken.size());
    return taken;
}

// RFC 3986, section 5.2.4, for all of a path at once. A relative path keeps the ".." that lead out
// of it.
astring WithoutDots(std::string_view path) {
    const bool isAbsolute = path.starts_with('/');
    if (isAbsolute) path.remove_prefix(1);
    std::vector<std::string_view> kept;
    bool endsInFolder = false;
    for (bool isLast = false; !isLast;) {
        const std::size_t slash = path.find('/');
        isLast = slash == kNone;
        const std::string_view segment = Take(path, slash);
        if (!isLast) path.remove_prefix(1);
        const bool isUp = segment == "..";
        const bool leadsOut = kept.empty() || kept.back() == "..";
        endsInFolder = isUp || segment == ".";
        if (!endsInFolder || (isUp && leadsOut && !isAbsolute)) {
            kept.push_back(segment);
        } else if (isUp && !leadsOut) {
            kept.pop_back();
        }
    }
    astring result(isAbsolute ? "/" : "");
    for (std::size_t i = 0; i < kept.size(); ++i) {
        if (i > 0) result += '/';
        result += kept[i];
    }
    if (endsInFolder && !kept.empty()) result += '/';
    return result;
}

// RFC 3986, section 5.2.3.
astring Merged(const UriReference& base, std::string_view path) {
    if (!base.authority.empty() && base.path.empty()) return astring("/") + path;
    const std::size_t slash = base.path.find_last_of("/\\");
    return astring(base.path.substr(0, slash == kNone ? 0 : slash + 1)) + path;
}

}  // namespace

UriReference::UriReference(std::string_view text) {
    text = text.substr(0, text.find('#'));
    scheme = Take(text, SchemeLength(text));
    if (text.starts_with("//"))
        authority = Take(text, std::min(text.find_first_of("/?", 2), text.size()));
    path = Take(text, std::min(text.find('?'), text.size()));
    query = text;
}

std::string_view HostOf(std::string_view uri) {
    std::string_view host = UriReference(uri).authority;
    if (host.empty()) return host;
    host.remove_prefix(2);
    host.remove_prefix(host.rfind('@') + 1);  // behind the user, if there is one
    // The numbers of an address in brackets have ":" between them, too.
    const std::size_t end = host.starts_with('[') ? host.find(']') : kNone;
    const std::size_t port = host.find(':', end == kNone ? 0 : end);
    return host.substr(0, port);
}

astring ResolveReference(std::string_view base, std::string_view reference) {
    UriReference from("");
    if (SchemeLength(base) > 0) {
        from = UriReference(base);
    } else {
        from.path = base;
    }
    const UriReference to(reference);
    if (!to.scheme.empty()) {
        return astring(to.scheme) + to.authority + WithoutDots(to.path) + to.query;
    }
    if (!to.authority.empty()) {
        return astring(from.scheme) + to.authority + WithoutDots(to.path) + to.query;
    }
    const astring start = astring(from.scheme) + from.authority;
    if (to.path.empty()) return start + from.path + (to.query.empty() ? from.query : to.query);
    if (to.path.starts_with('/')) return start + WithoutDots(to.path) + to.query;
    return start + WithoutDots(Merged(from, to.path)) + to.query;
}

}  // namespace Dom::detail
