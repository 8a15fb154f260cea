// SPDX-License-Identifier: MIT
//
// Takes arbitrary texts, each ended by a NUL, as lists of media queries. A list is true when one
// of its queries is, and "not" in front of a type turns what is understood round.

#include <espalier/css.h>

#include "CssInput.h"
#include "ReaderStory.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace {

using Dom::CSS::MatchesMedia;
using Dom::CSS::MediaContext;
using Dom::CSS::MediaQueryList;
using fuzz::Require;

MediaContext Chosen(unsigned choice) {
    MediaContext context;
    if ((choice & 1) != 0) context.type = "print";
    if ((choice & 2) != 0) context.width = 320;
    if ((choice & 4) != 0) context.deviceHeight = 0;
    if ((choice & 8) != 0) context.color = 0;
    if ((choice & 16) != 0) context.scan = MediaContext::Scan::Progressive;
    if ((choice & 32) != 0) context.resolution = 2.5;
    return context;
}

void Check(const std::string& text, const MediaContext& context) {
    const MediaQueryList queries(text);
    const bool matches = queries.Matches(context);
    Require(queries.Text() == text && MatchesMedia(text, context) == matches);
    if (queries.Length() == 0) Require(matches);
    bool isUnderstood = false;
    for (std::size_t i = 0; i < queries.Length(); ++i)
        isUnderstood = isUnderstood || !queries.IsNotUnderstood(i);
    if (queries.Length() > 0 && !isUnderstood) Require(!matches);
    // What is not understood changes nothing for the others.
    Require(MatchesMedia("(?)," + text, context) == (matches && queries.Length() > 0));
    if (queries.Length() != 1 || !isUnderstood) return;
    const MediaQueryList contrary("not " + text);
    if (!contrary.IsNotUnderstood(0)) Require(contrary.Matches(context) != matches);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::CssInput input(data, size);
    const MediaContext context = Chosen(input.Byte());
    while (!input.IsAtEnd())
        Check(input.Text(), context);
    return 0;
}
