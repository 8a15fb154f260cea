// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include <string_view>

namespace Dom::detail {

/// The parts of a reference to a resource (RFC 3986, appendix B), with the characters that tell
/// that they are there: "http:", "//host", "/path", "?query". A fragment is left out.
struct UriReference {
    explicit UriReference(std::string_view text);

    std::string_view scheme;
    std::string_view authority;
    std::string_view path;
    std::string_view query;
};

/// Returns the host in a URI, or empty.
std::string_view HostOf(std::string_view uri);

/// Returns what `reference` leads to from `base`, without a fragment (RFC 3986, section 5.2).
///
/// A base without a scheme is a path, whatever characters are in it, also one with "\" between its
/// parts. What leads out of a relative path by ".." keeps that.
astring ResolveReference(std::string_view base, std::string_view reference);

}  // namespace Dom::detail
