// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/dom/css/Forward.h>
#include <espalier/dom/css/MediaContext.h>
#include <espalier/dom/css/MediaList.h>

#include <cstddef>
#include <memory>
#include <string_view>

namespace Dom::CSS {

/// Media queries (Media Queries Level 3), ready to be compared with media.
///
/// \code
///     const Dom::CSS::MediaQueryList queries("screen and (min-width: 40em), print");
///     Dom::CSS::MediaContext phone;
///     phone.width = 360;
///     queries.Matches(phone);  // false
/// \endcode
///
/// Known are the types, "not", "only", "and", and the features width, height, device-width,
/// device-height, orientation, aspect-ratio, device-aspect-ratio, color, color-index, monochrome,
/// resolution, scan and grid, with "min-" and "max-". A query that is malformed, or that asks for
/// something else, is "not all" and matches nothing; the others of the list still count. An empty
/// text matches everything.
///
/// \note A const MediaQueryList may be used from different threads at once.
class ESPALIER_EXPORT MediaQueryList {
public:
    explicit MediaQueryList(std::string_view text);
    MediaQueryList(MediaQueryList&&) noexcept;
    MediaQueryList& operator=(MediaQueryList&&) noexcept;
    ~MediaQueryList();

    /// Tells whether one of the queries is true for some medium.
    bool Matches(const MediaContext& context) const;

    /// Returns the text.
    const astring& Text() const { return text_; }
    /// Returns the number of queries; none when the text is empty.
    std::size_t Length() const;
    /// Tells whether query `index`, from 0 on, is "not all" because it is not understood.
    bool IsNotUnderstood(std::size_t index) const;

private:
    astring text_;
    std::unique_ptr<const detail::MediaQueries> queries_;
};

/// \name Asking once
/// Tell whether a list of media queries is true for some medium.
/// @{
ESPALIER_EXPORT bool MatchesMedia(std::string_view queries, const MediaContext& context);
ESPALIER_EXPORT bool MatchesMedia(const StyleSheets::MediaList& media, const MediaContext& context);
/// @}

}  // namespace Dom::CSS
