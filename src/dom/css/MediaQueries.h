// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>
#include <espalier/dom/css/MediaContext.h>

#include <string_view>
#include <vector>

namespace Dom::CSS::detail {

/// What a query may ask for.
enum class MediaFeature : unsigned char {
    Width,
    Height,
    DeviceWidth,
    DeviceHeight,
    Orientation,
    AspectRatio,
    DeviceAspectRatio,
    Color,
    ColorIndex,
    Monochrome,
    Resolution,
    Scan,
    Grid,
    Unknown
};

/// A feature with what it is compared with.
struct MediaCondition {
    enum class Range : unsigned char { Any, Exact, Min, Max };  // Any: the feature alone

    MediaFeature feature = MediaFeature::Unknown;
    Range range = Range::Any;
    bool isInEms = false;  // the value
    double value = 0;      // in pixels, dots for a pixel, a number, or that of a keyword
    double divisor = 1;    // of a ratio
};

/// A query: a type with conditions, all of which must hold.
struct MediaQuery {
    bool isUnderstood = false;  // else it is "not all"
    bool isNegated = false;
    astring type;  // in small letters; empty for all
    std::vector<MediaCondition> conditions;
};

/// A list of queries.
class MediaQueries {
public:
    explicit MediaQueries(std::string_view text);

    bool Match(const MediaContext& context) const;
    const std::vector<MediaQuery>& All() const { return queries_; }

private:
    std::vector<MediaQuery> queries_;
};

}  // namespace Dom::CSS::detail
