// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CssHelpers.h>
#include <espalier/dom/css/MediaList.h>

#include "dom/InterfaceName.h"

namespace Dom::StyleSheets {

void* MediaList::QueryInterface(const char* name) {
    return detail::IsInterface(name, "Dom::StyleSheets::MediaList") ? this : nullptr;
}

std::size_t MediaList::Length() const {
    const char* rest = mediaText_.c_str();
    astring medium;
    std::size_t count = 0;
    while (CssHelpers::ParseMedium(rest, medium))
        ++count;
    return count;
}

astring MediaList::Item(std::size_t index) const {
    const char* rest = mediaText_.c_str();
    astring medium;
    for (std::size_t i = 0; CssHelpers::ParseMedium(rest, medium); ++i) {
        if (i == index) return medium;
    }
    return {};
}

bool MediaList::Contains(std::string_view name) const {
    const char* rest = mediaText_.c_str();
    astring medium;
    while (CssHelpers::ParseMedium(rest, medium)) {
        if (medium == name) return true;
    }
    return false;
}

void MediaList::AppendMedium(std::string_view name) {
    if (mediaText_.empty()) {
        mediaText_ = name;
    } else {
        astring addition = ", ";  // `name` may be a part of the text
        addition += name;
        mediaText_ += addition;
    }
}

// The names around the one that goes keep their distance: it takes the separator behind it along,
// the last one that before it.
void MediaList::DeleteMedium(std::string_view name) {
    const char* const text = mediaText_.c_str();
    const char* rest = text;
    astring medium;
    const char* endBefore = text;  // where the name before ends
    for (; CssHelpers::ParseMedium(rest, medium); endBefore = rest) {
        if (medium != name) continue;
        const char* begin = rest - medium.length();
        const char* end = text + mediaText_.length();
        if (CssHelpers::ParseMedium(rest, medium)) {
            end = rest - medium.length();
        } else {
            begin = endBefore;
        }
        mediaText_.erase(static_cast<std::size_t>(begin - text),
                         static_cast<std::size_t>(end - begin));
        return;
    }
}

}  // namespace Dom::StyleSheets
