// SPDX-License-Identifier: MIT
#include <espalier/dom/css/MediaQueryList.h>

#include "dom/css/MediaQueries.h"

namespace Dom::CSS {

MediaQueryList::MediaQueryList(std::string_view text)
    : text_(text), queries_(std::make_unique<detail::MediaQueries>(text)) {}

MediaQueryList::MediaQueryList(MediaQueryList&&) noexcept = default;
MediaQueryList& MediaQueryList::operator=(MediaQueryList&&) noexcept = default;
MediaQueryList::~MediaQueryList() = default;

bool MediaQueryList::Matches(const MediaContext& context) const { return queries_->Match(context); }

std::size_t MediaQueryList::Length() const { return queries_->All().size(); }

bool MediaQueryList::IsNotUnderstood(std::size_t index) const {
    return index < Length() && !queries_->All()[index].isUnderstood;
}

bool MatchesMedia(std::string_view queries, const MediaContext& context) {
    return detail::MediaQueries(queries).Match(context);
}

bool MatchesMedia(const StyleSheets::MediaList& media, const MediaContext& context) {
    return MatchesMedia(media.MediaText().view(), context);
}

}  // namespace Dom::CSS
