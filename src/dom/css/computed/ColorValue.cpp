// SPDX-License-Identifier: MIT
#include "dom/css/computed/ColorValue.h"

#include "dom/css/AsciiCase.h"
#include "dom/css/CssCharacters.h"
#include "dom/css/ListPieces.h"
#include "dom/css/TextCursor.h"
#include "dom/css/computed/ColorNames.h"
#include "dom/css/computed/ComponentText.h"
#include "dom/css/computed/Measure.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace Dom::CSS::detail {

namespace {

constexpr double kMostOfChannel = 255;

// A colour of sRGB with 8 bits for each channel, which is what browsers keep of those that are
// written in the ways of CSS Color Level 3.
struct Color {
    std::array<unsigned, 3> channels;
    unsigned alpha = 255;
};

unsigned ToChannel(double value) {
    return static_cast<unsigned>(std::lround(std::clamp(value, 0.0, kMostOfChannel)));
}

constexpr unsigned kRedShift = 16;
constexpr unsigned kGreenShift = 8;

Color OpaqueColor(unsigned color) {
    return {{color >> kRedShift, (color >> kGreenShift) & 0xFF, color & 0xFF}};
}

// CSS Color Level 4 section 15.1: two digits when they say all that the 8 bits do, else three.
void AppendAlpha(astring& text, unsigned alpha) {
    constexpr double kTwoDigits = 100;
    constexpr double kThreeDigits = 1000;
    const double exact = alpha / kMostOfChannel;
    const double rounded = std::round(exact * kTwoDigits) / kTwoDigits;
    const bool isEnough = ToChannel(rounded * kMostOfChannel) == alpha;
    AppendShort(text, isEnough ? rounded : std::round(exact * kThreeDigits) / kThreeDigits);
}

astring TextOf(const Color& color) {
    const bool isOpaque = color.alpha == 255;
    astring text = isOpaque ? "rgb(" : "rgba(";
    for (const unsigned channel : color.channels) {
        if (text.back() != '(') text += ", ";
        AppendShort(text, channel);
    }
    if (!isOpaque) {
        text += ", ";
        AppendAlpha(text, color.alpha);
    }
    text += ')';
    return text;
}

// Section 5.2: three, four, six or eight digits.
std::optional<Color> HexColor(std::string_view digits) {
    const std::size_t count = digits.size();
    if (count != 3 && count != 4 && count != 6 && count != 8) return {};
    const std::size_t width = count < 6 ? 1 : 2;
    constexpr unsigned kTwice = 0x11;
    std::array<unsigned, 4> channels{0, 0, 0, 255};
    for (std::size_t i = 0; i < count / width; ++i) {
        unsigned channel = 0;
        for (const char digit : digits.substr(i * width, width)) {
            const int value = HexDigit(digit);
            if (value < 0) return {};
            channel = channel * 16 + static_cast<unsigned>(value);
        }
        channels[i] = width == 1 ? channel * kTwice : channel;
    }
    return Color{{channels[0], channels[1], channels[2]}, channels[3]};
}

// What stands in the parentheses of a function: three channels and alpha, which may be missing.
struct Channels {
    std::array<std::string_view, 4> texts;
    std::size_t count = 0;
    bool hasCommas = false;

    // Sections 4.1 and 5.1: "1, 2, 3, 0.5" or "1 2 3 / 0.5".
    bool Split(std::string_view text) {
        hasCommas = text.find(',') != text.npos;
        if (hasCommas) return Add(text, ',') && count >= 3;
        ListPieces halves(text, '/');
        std::string_view half;
        if (!halves.Next(half) || !Add(half, ' ') || count != 3) return false;
        if (!halves.Next(half)) return true;
        texts[count++] = half;
        return !halves.Next(half);
    }

private:
    bool Add(std::string_view text, char separator) {
        ListPieces pieces(text, separator);
        for (std::string_view piece; pieces.Next(piece);) {
            if (count == texts.size()) return false;
            texts[count++] = piece;
        }
        return true;
    }
};

// Reads channels one by one; "none" is 0.
class ChannelReader {
public:
    ChannelReader(const Channels& channels, const ComputingContext& context)
        : channels_(channels), basis_(context) {}

    // Returns a number, or a percentage of `whole`.
    std::optional<double> NumberOrPercentage(std::size_t index, double whole) const {
        const std::optional<Measure> measure = At(index);
        if (!measure) return {};
        if (measure->IsPercentage()) return measure->percent * whole / 100;
        if (measure->type != Measure::Type::Number) return {};
        return measure->value;
    }
    // Returns an angle in degrees.
    std::optional<double> Hue(std::size_t index) const {
        const std::optional<Measure> measure = At(index);
        if (!measure) return {};
        const bool isHue =
            measure->type == Measure::Type::Number || measure->type == Measure::Type::Angle;
        return isHue ? std::optional(measure->value) : std::nullopt;
    }
    bool IsPercentage(std::size_t index) const {
        const std::optional<Measure> measure = At(index);
        return measure && measure->IsPercentage();
    }
    // Returns 255 when there is none.
    std::optional<unsigned> Alpha() const {
        if (channels_.count <= 3) return 255;
        const std::optional<double> alpha = NumberOrPercentage(3, 1);
        if (!alpha) return {};
        return ToChannel(*alpha * kMostOfChannel);
    }

private:
    std::optional<Measure> At(std::size_t index) const {
        const std::string_view text = channels_.texts[index];
        if (!channels_.hasCommas && EqualIgnoringCase(text, "none")) return Measure();
        return ReadMeasure(text, basis_);
    }

    const Channels& channels_;
    MeasureBasis basis_;
};

std::optional<Color> RgbColor(const Channels& channels, const ChannelReader& reader) {
    // The commas are of a time when all were numbers, or all percentages.
    const bool arePercentages = reader.IsPercentage(0);
    Color color{};
    for (std::size_t i = 0; i < color.channels.size(); ++i) {
        const std::optional<double> channel = reader.NumberOrPercentage(i, kMostOfChannel);
        if (!channel) return {};
        if (channels.hasCommas && reader.IsPercentage(i) != arePercentages) return {};
        color.channels[i] = ToChannel(*channel);
    }
    return color;
}

// Section 7.1, "Converting HSL Colors to sRGB". All but the hue are from 0 to 1.
std::array<double, 3> RgbOfHsl(double hue, double saturation, double lightness) {
    constexpr double kSector = 30;
    constexpr double kSectors = 12;
    std::array<double, 3> rgb{0, 8, 4};  // the sector of each channel, at first
    for (double& channel : rgb) {
        double sector = std::fmod(channel + hue / kSector, kSectors);
        if (sector < 0) sector += kSectors;
        const double chroma = saturation * std::min(lightness, 1 - lightness);
        channel = lightness - chroma * std::max(-1.0, std::min({sector - 3, 9 - sector, 1.0}));
    }
    return rgb;
}

enum class HueModel { Hsl, Hwb };

std::optional<Color> HueColor(const Channels& channels, const ChannelReader& reader,
                              HueModel model) {
    const std::optional<double> hue = reader.Hue(0);
    std::optional<double> second = reader.NumberOrPercentage(1, 100);
    std::optional<double> third = reader.NumberOrPercentage(2, 100);
    if (!hue || !second || !third) return {};
    const bool arePercentages = reader.IsPercentage(1) && reader.IsPercentage(2);
    if (channels.hasCommas && (!arePercentages || model == HueModel::Hwb)) return {};
    *second = std::clamp(*second / 100, 0.0, 1.0);
    *third = std::clamp(*third / 100, 0.0, 1.0);
    std::array<double, 3> rgb{};
    if (model == HueModel::Hsl) {
        rgb = RgbOfHsl(*hue, *second, *third);
    } else if (const double sum = *second + *third; sum >= 1) {
        rgb.fill(*second / sum);  // section 8.1: a grey
    } else {
        rgb = RgbOfHsl(*hue, 1, 0.5);
        for (double& channel : rgb)
            channel = channel * (1 - sum) + *second;
    }
    Color color{};
    std::ranges::transform(rgb, color.channels.begin(),
                           [](double channel) { return ToChannel(channel * kMostOfChannel); });
    return color;
}

bool IsOneOf(std::string_view name, std::initializer_list<std::string_view> names) {
    return std::ranges::any_of(
        names, [name](std::string_view known) { return EqualIgnoringCase(name, known); });
}

std::optional<astring> FunctionColor(std::string_view name, std::string_view arguments,
                                     const ComputingContext& context) {
    Channels channels;
    if (!channels.Split(arguments)) return {};
    const ChannelReader reader(channels, context);
    std::optional<Color> color;
    if (IsOneOf(name, {"rgb", "rgba"})) {
        color = RgbColor(channels, reader);
    } else {
        color = HueColor(channels, reader,
                         EqualIgnoringCase(name, "hwb") ? HueModel::Hwb : HueModel::Hsl);
    }
    const std::optional<unsigned> alpha = reader.Alpha();
    if (!color || !alpha) return {};
    color->alpha = *alpha;
    return TextOf(*color);
}

}  // namespace

bool IsColorFunction(std::string_view name) {
    return IsOneOf(name, {"rgb", "rgba", "hsl", "hsla", "hwb", "lab", "lch", "oklab", "oklch",
                          "color", "color-mix", "light-dark"});
}

std::optional<astring> ComputedColor(std::string_view text, const ComputingContext& context) {
    if (text.empty()) return {};
    if (text.front() == '#') {
        const std::optional<Color> color = HexColor(text.substr(1));
        return color ? std::optional(TextOf(*color)) : std::nullopt;
    }
    const std::size_t parenthesis = text.find('(');
    if (parenthesis == text.npos) {
        if (EqualIgnoringCase(text, "currentcolor")) return astring(context.color);
        if (EqualIgnoringCase(text, "transparent")) return astring("rgba(0, 0, 0, 0)");
        const std::optional<unsigned> color = NamedColor(text);
        return color ? std::optional(TextOf(OpaqueColor(*color))) : std::nullopt;
    }
    const std::string_view name = text.substr(0, parenthesis);
    if (!IsColorFunction(name) || text.back() != ')') return {};
    if (IsOneOf(name, {"rgb", "rgba", "hsl", "hsla", "hwb"})) {
        const std::string_view arguments =
            text.substr(parenthesis + 1, text.size() - parenthesis - 2);
        return FunctionColor(name, Trimmed(arguments), context);
    }
    return PlainComponents(text);
}

}  // namespace Dom::CSS::detail
