// SPDX-License-Identifier: MIT
#include "dom/css/MediaQueries.h"

#include "dom/css/AsciiCase.h"
#include "dom/css/MediaQueryParser.h"

#include <algorithm>

namespace Dom::CSS::detail {

namespace {

using Range = MediaCondition::Range;

double DeviceWidth(const MediaContext& context) {
    return context.deviceWidth.value_or(context.width);
}

double DeviceHeight(const MediaContext& context) {
    return context.deviceHeight.value_or(context.height);
}

// Returns the value of a feature; for a ratio the width with the height in `divisor`.
double ValueOf(MediaFeature feature, const MediaContext& context, double& divisor) {
    switch (feature) {
    case MediaFeature::Width: return context.width;
    case MediaFeature::Height: return context.height;
    case MediaFeature::DeviceWidth: return DeviceWidth(context);
    case MediaFeature::DeviceHeight: return DeviceHeight(context);
    case MediaFeature::Orientation: return context.width > context.height ? 1 : 0;
    case MediaFeature::AspectRatio: divisor = context.height; return context.width;
    case MediaFeature::DeviceAspectRatio:
        divisor = DeviceHeight(context);
        return DeviceWidth(context);
    case MediaFeature::Color: return context.color;
    case MediaFeature::ColorIndex: return context.colorIndex;
    case MediaFeature::Monochrome: return context.monochrome;
    case MediaFeature::Resolution: return context.resolution;
    case MediaFeature::Scan: return context.scan == MediaContext::Scan::Interlace ? 1 : 0;
    case MediaFeature::Grid: return context.grid ? 1 : 0;
    case MediaFeature::Unknown: break;
    }
    return 0;
}

// Section 2: a feature alone holds when it would for a value other than zero.
bool Holds(MediaFeature feature, double value, const MediaContext& context) {
    if (feature == MediaFeature::Orientation) return true;
    if (feature == MediaFeature::Scan) return context.scan != MediaContext::Scan::None;
    return value != 0;
}

// Ratios are compared without a division.
bool MatchesCondition(const MediaCondition& condition, const MediaContext& context) {
    double divisor = 1;
    const double own = ValueOf(condition.feature, context, divisor) * condition.divisor;
    if (condition.range == Range::Any) return Holds(condition.feature, own, context);
    if (condition.feature == MediaFeature::Scan && context.scan == MediaContext::Scan::None) {
        return false;
    }
    const double given = condition.value * divisor * (condition.isInEms ? context.fontSize : 1);
    switch (condition.range) {
    case Range::Min: return own >= given;
    case Range::Max: return own <= given;
    default: return own == given;
    }
}

bool MatchesQuery(const MediaQuery& query, const MediaContext& context) {
    if (!query.isUnderstood) return false;
    const bool isType = query.type.empty() || EqualIgnoringCase(query.type, context.type);
    const bool holds = isType && std::ranges::all_of(query.conditions, [&](const auto& condition) {
                           return MatchesCondition(condition, context);
                       });
    return holds != query.isNegated;
}

}  // namespace

MediaQueries::MediaQueries(std::string_view text) : queries_(ParseMediaQueries(text)) {}

bool MediaQueries::Match(const MediaContext& context) const {
    return queries_.empty() || std::ranges::any_of(queries_, [&](const MediaQuery& query) {
               return MatchesQuery(query, context);
           });
}

}  // namespace Dom::CSS::detail
