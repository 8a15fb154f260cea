// SPDX-License-Identifier: MIT
// A picture is a column, from top to bottom: the title, the unit, then for each group its title and
// its bars, and the numbers of the scale:
//
//     Title
//     MB/s, more is better
//     group
//            espalier |==============|-    792
//       libxml2 reader |===|-              139
//                      0    200   400   600   800
//
// The thin line at the end of a bar reaches from the least to the most of all rounds.
#include "plot/Plot.h"

#include <espalier/encoding/UnicodeEncodings.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextWriter.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace bench {

namespace {

constexpr double kWidth = 720;
constexpr double kLeft = 240;       // of the scale; the titles of bars end before it
constexpr double kRight = 640;      // of the scale, so that a number has room behind it
constexpr double kGap = 8;          // between a bar and the text beside it
constexpr double kMargin = 16;      // between the edge and a title
constexpr double kTitleLine = 28;   // where the title stands, its base line
constexpr double kUnitLine = 48;    // the same of the unit
constexpr double kHeadHeight = 62;  // above the first group
constexpr double kGroupHeight = 26;
constexpr double kRowHeight = 22;
constexpr double kBarHeight = 14;
constexpr double kFootHeight = 34;  // below the last bar: the numbers of the scale
constexpr double kBaseLine = 12;    // of a text beside a bar, from the top of the bar
constexpr std::size_t kMostTicks = 6;

// Light first. The colours of bars stand out from both grounds; ours is the strong one.
constexpr char kStyle[] =
    "text { font: 13px system-ui, sans-serif; fill: #1f2328; } "
    ".head { font-size: 16px; font-weight: 600; } "
    ".group { font-weight: 600; } "
    ".small { font-size: 12px; fill: #59636e; } "
    ".end { text-anchor: end; } "
    ".middle { text-anchor: middle; } "
    ".ground { fill: #ffffff; } "
    ".line { stroke: #d1d9e0; } "
    ".ours { fill: #1a7f37; } "
    ".peer { fill: #8c959f; } "
    ".range { stroke: #1f2328; fill: none; } "
    "@media (prefers-color-scheme: dark) { "
    "text { fill: #f0f6fc; } "
    ".small { fill: #9198a1; } "
    ".ground { fill: #0d1117; } "
    ".line { stroke: #3d444d; } "
    ".ours { fill: #3fb950; } "
    ".peer { fill: #656c76; } "
    ".range { stroke: #f0f6fc; } "
    "}";

std::string FormatFixed(double value, int decimals) {
    char text[64];
    const auto end =
        std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, decimals);
    return {text, end.ptr};
}

// Returns a place in the picture: tenths are as fine as anybody sees.
std::string At(double place) {
    std::string text = FormatFixed(place, 1);
    if (text.ends_with(".0")) text.resize(text.size() - 2);
    return text;
}

double MostOf(const Chart& chart) {
    double most = 0;
    for (const ChartGroup& group : chart.groups) {
        for (const ChartBar& bar : group.bars) {
            if (!std::isnan(bar.most)) most = std::max(most, bar.most);
        }
    }
    return most;
}

double HeightOf(const Chart& chart) {
    double height = kHeadHeight + kFootHeight;
    for (const ChartGroup& group : chart.groups) {
        height += group.title.empty() ? 0 : kGroupHeight;
        height += kRowHeight * static_cast<double>(group.bars.size());
    }
    return height;
}

std::string Direction(const Chart& chart) {
    return chart.unit + (chart.isLessBetter ? ", less is better" : ", more is better");
}

std::string DescribeBar(const Chart& chart, const ChartBar& bar) {
    if (std::isnan(bar.median)) return bar.title + ": not measured";
    return bar.title + ": " + FormatAmount(bar.median) + " " + chart.unit + " (" +
           FormatAmount(bar.least) + " to " + FormatAmount(bar.most) + ")";
}

std::string Describe(const Chart& chart) {
    std::string text = Direction(chart) + ". Median, and from least to most of all rounds.";
    for (const ChartGroup& group : chart.groups) {
        text += (group.title.empty() ? " " : " " + group.title + ". ");
        for (std::size_t i = 0; i < group.bars.size(); ++i) {
            text += (i == 0 ? "" : "; ") + DescribeBar(chart, group.bars[i]);
        }
        text += ".";
    }
    return text;
}

using Attributes = std::vector<std::pair<const char*, std::string>>;

class Drawing {
public:
    explicit Drawing(const Chart& chart)
        : chart_(chart), ticks_(TicksFor(MostOf(chart))), height_(HeightOf(chart)) {
        writer_.SetFormatting(Xml::Formatting::Indented);
        writer_.SetNewLineChars("\n");
    }

    std::string Draw() {
        writer_.WriteStartElement("", "svg", "http://www.w3.org/2000/svg");
        Write({{"viewBox", "0 0 " + At(kWidth) + " " + At(height_)},
               {"width", At(kWidth)},
               {"height", At(height_)},
               {"role", "img"},
               {"aria-labelledby", "title desc"}});
        DrawWords("title", chart_.title);
        DrawWords("desc", Describe(chart_));
        writer_.WriteElementString("style", kStyle);
        DrawShape("rect", {{"class", "ground"}, {"width", At(kWidth)}, {"height", At(height_)}});
        DrawText("head", kMargin, kTitleLine, chart_.title);
        DrawText("small", kMargin, kUnitLine, Direction(chart_));
        DrawScale();
        DrawGroups();
        writer_.WriteEndElement();
        writer_.Flush();
        return std::string(reinterpret_cast<const char*>(stream_.GetBuffer()),
                           static_cast<std::size_t>(stream_.Length())) +
               "\n";
    }

private:
    double PlaceOf(double value) const { return kLeft + (kRight - kLeft) * value / ticks_.back(); }

    void Write(const Attributes& attributes) {
        for (const auto& [name, value] : attributes)
            writer_.WriteAttributeString(name, value);
    }

    void DrawShape(const char* name, const Attributes& attributes) {
        writer_.WriteStartElement(name);
        Write(attributes);
        writer_.WriteEndElement();
    }

    void DrawText(const char* styles, double x, double y, const std::string& text) {
        writer_.WriteStartElement("text");
        Write({{"class", styles}, {"x", At(x)}, {"y", At(y)}});
        writer_.WriteString(text);
        writer_.WriteEndElement();
    }

    void DrawWords(const char* name, const std::string& text) {
        writer_.WriteStartElement(name);
        writer_.WriteAttributeString("id", name);
        writer_.WriteString(text);
        writer_.WriteEndElement();
    }

    void DrawScale() {
        const double bottom = height_ - kFootHeight;
        std::string lines;
        for (const double tick : ticks_) {
            lines += (lines.empty() ? "M" : " M") + At(PlaceOf(tick)) + " " +
                     At(kHeadHeight - kGap) + "V" + At(bottom);
        }
        DrawShape("path", {{"class", "line"}, {"d", lines}});
        for (const double tick : ticks_) {
            DrawText("small middle", PlaceOf(tick), bottom + kRowHeight - kGap / 2,
                     FormatAmount(tick));
        }
    }

    void DrawGroups() {
        double top = kHeadHeight;
        for (const ChartGroup& group : chart_.groups) {
            if (!group.title.empty()) {
                DrawText("group", kMargin, top + kGroupHeight - kGap, group.title);
                top += kGroupHeight;
            }
            for (const ChartBar& bar : group.bars) {
                DrawBar(bar, top);
                top += kRowHeight;
            }
        }
    }

    void DrawBar(const ChartBar& bar, double top) {
        DrawText("end", kLeft - kGap, top + kBaseLine, bar.title);
        if (std::isnan(bar.median)) {
            DrawText("small", kLeft + kGap, top + kBaseLine, "not measured");
            return;
        }
        DrawShape("rect", {{"class", bar.isOurs ? "ours" : "peer"},
                           {"x", At(kLeft)},
                           {"y", At(top)},
                           {"width", At(PlaceOf(bar.median) - kLeft)},
                           {"height", At(kBarHeight)}});
        const double middle = top + kBarHeight / 2;
        DrawShape("path", {{"class", "range"},
                           {"d", "M" + At(PlaceOf(bar.least)) + " " + At(middle) + "H" +
                                     At(PlaceOf(bar.most))}});
        DrawText("value", PlaceOf(bar.most) + kGap, top + kBaseLine, FormatAmount(bar.median));
    }

    const Chart& chart_;
    const std::vector<double> ticks_;
    const double height_;
    IO::MemoryStream stream_;
    Xml::UTF8Encoding encoding_;
    Xml::XmlTextWriter writer_{&stream_, &encoding_};
};

}  // namespace

std::vector<double> TicksFor(double most) {
    const double power = std::pow(10, std::floor(std::log10(most)) - 1);
    double step = 0;
    for (const double factor : {1, 2, 5, 10, 20, 50}) {
        step = factor * power;
        if (std::ceil(most / step) < static_cast<double>(kMostTicks)) break;
    }
    std::vector<double> ticks = {0};
    while (ticks.back() < most)
        ticks.push_back(static_cast<double>(ticks.size()) * step);
    return ticks;
}

std::string FormatAmount(double value) {
    const double size = std::abs(value);
    if (size == std::floor(size) || size >= 100) return FormatFixed(value, 0);
    if (size >= 10) return FormatFixed(value, 1);
    return FormatFixed(value, size >= 1 ? 2 : 3);
}

std::string DrawChart(const Chart& chart) { return Drawing(chart).Draw(); }

}  // namespace bench
