// SPDX-License-Identifier: MIT
#include "dom/UriReference.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Dom::detail::ResolveReference;

}  // namespace

// RFC 3986, section 5.4, without fragments.
TEST(UriReference, ResolvesTheExamplesOfTheStandard) {
    const struct {
        const char* reference;
        const char* expected;
    } kCases[] = {
        {"gh:h", "gh:h"},  // "g:" alone would be a drive
        {"g", "http://a/b/c/g"},
        {"./g", "http://a/b/c/g"},
        {"g/", "http://a/b/c/g/"},
        {"/g", "http://a/g"},
        {"//g", "http://g"},
        {"?y", "http://a/b/c/d;p?y"},
        {"g?y", "http://a/b/c/g?y"},
        {"#s", "http://a/b/c/d;p?q"},
        {"g#s", "http://a/b/c/g"},
        {"g?y#s", "http://a/b/c/g?y"},
        {";x", "http://a/b/c/;x"},
        {"g;x", "http://a/b/c/g;x"},
        {"g;x?y#s", "http://a/b/c/g;x?y"},
        {"", "http://a/b/c/d;p?q"},
        {".", "http://a/b/c/"},
        {"./", "http://a/b/c/"},
        {"..", "http://a/b/"},
        {"../", "http://a/b/"},
        {"../g", "http://a/b/g"},
        {"../..", "http://a/"},
        {"../../", "http://a/"},
        {"../../g", "http://a/g"},
        {"../../../g", "http://a/g"},
        {"../../../../g", "http://a/g"},
        {"/./g", "http://a/g"},
        {"/../g", "http://a/g"},
        {"g.", "http://a/b/c/g."},
        {".g", "http://a/b/c/.g"},
        {"g..", "http://a/b/c/g.."},
        {"..g", "http://a/b/c/..g"},
        {"./../g", "http://a/b/g"},
        {"./g/.", "http://a/b/c/g/"},
        {"g/./h", "http://a/b/c/g/h"},
        {"g/../h", "http://a/b/c/h"},
        {"g;x=1/./y", "http://a/b/c/g;x=1/y"},
        {"g;x=1/../y", "http://a/b/c/y"},
        {"g?y/./x", "http://a/b/c/g?y/./x"},
        {"g?y/../x", "http://a/b/c/g?y/../x"},
        {"http:g", "http:g"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.reference);
        EXPECT_EQ(ResolveReference("http://a/b/c/d;p?q", c.reference), c.expected);
    }
}

TEST(UriReference, ResolvesPaths) {
    const struct {
        const char* base;
        const char* reference;
        const char* expected;
    } kCases[] = {
        {"", "a.css", "a.css"},
        {"page.xhtml", "a.css", "a.css"},
        {"page.xhtml", "./a.css", "a.css"},
        {"page.xhtml", "../a.css", "../a.css"},
        {"page.xhtml", "../../a.css", "../../a.css"},
        {"dir/page.xhtml", "a.css", "dir/a.css"},
        {"dir/page.xhtml", "../a.css", "a.css"},
        {"dir/page.xhtml", "../../a.css", "../a.css"},
        {"../dir/page.xhtml", "../a.css", "../a.css"},
        {"/dir/page.xhtml", "../../a.css", "/a.css"},
        {"dir/page.xhtml", "/a.css", "/a.css"},
        {"dir/page.xhtml", "http://h/a.css", "http://h/a.css"},
        {"/dir/page.xhtml", "//h/a.css", "//h/a.css"},
        {"dir/page.xhtml", "a.css?v=1", "dir/a.css?v=1"},
        // What would be a query or a fragment of a URI is a part of a path.
        {"what?/no #1/page.xhtml", "a.css", "what?/no #1/a.css"},
        {"C:\\dir\\page.xhtml", "a.css", "C:\\dir\\a.css"},
        {"C:/dir/page.xhtml", "../a.css", "C:/a.css"},
        {"http://h", "a.css", "http://h/a.css"},
        {"http://h?q", "a.css", "http://h/a.css"},
        {"file:///dir/page.xhtml", "a.css", "file:///dir/a.css"},
        {"dir/page.xhtml", "C:/a.css", "dir/C:/a.css"},
        {"zip:a!/b/c", "../d", "zip:a!/d"},
        {"dir//sub/page.xhtml", "a.css", "dir//sub/a.css"},
        {"http://h/a/", "..", "http://h/"},
        {"a/b", "..", ""},
        {"a", "..", "../"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(std::string(c.base) + " " + c.reference);
        EXPECT_EQ(ResolveReference(c.base, c.reference), c.expected);
    }
}

TEST(UriReference, TellsTheHost) {
    const struct {
        const char* uri;
        const char* host;
    } kCases[] = {
        {"", ""},
        {"a/b", ""},
        {"//h", "h"},
        {"http://h/", "h"},
        {"http://h:80/", "h"},
        {"http://u@h:80/", "h"},
        {"http://u:p@h/", "h"},
        {"http://u@v@h/", "h"},
        {"http://[1::2]/", "[1::2]"},
        {"http://[1::2]:80/", "[1::2]"},
        {"http:///", ""},
        {"http://", ""},
        {"http:h", ""},
        {"ht_tp://h/", ""},
        {"://h/", ""},
        {"http://h/a@b:1", "h"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.uri);
        EXPECT_EQ(Dom::detail::HostOf(c.uri), c.host);
    }
}
