// SPDX-License-Identifier: MIT
#include "common/Figures.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <sstream>
#include <stdexcept>

namespace bench {

namespace {

constexpr int kDigits = 6;  // that count; more than any measurement has

std::string FormatValue(double value) {
    if (std::isnan(value)) return "-";
    char text[64];
    const auto end =
        std::to_chars(text, text + sizeof text, value, std::chars_format::general, kDigits);
    return {text, end.ptr};
}

double ParseValue(const std::string& text) {
    if (text == "-") return std::numeric_limits<double>::quiet_NaN();
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    if (text.empty() || end != text.c_str() + text.size() || !std::isfinite(value)) {
        throw std::runtime_error("no number: " + text);
    }
    return value;
}

std::string FormatChart(const Chart& chart) {
    std::string text = "chart\t" + chart.name + "\t" + chart.title + "\t" + chart.unit + "\t" +
                       (chart.isLessBetter ? "less" : "more") + "\n";
    for (const ChartGroup& group : chart.groups) {
        text += "group\t" + group.title + "\n";
        for (const ChartBar& bar : group.bars) {
            text += "bar\t" + bar.title + "\t" + (bar.isOurs ? "ours" : "peer") + "\t" +
                    FormatValue(bar.least) + "\t" + FormatValue(bar.median) + "\t" +
                    FormatValue(bar.most) + "\n";
        }
    }
    return text;
}

std::vector<std::string> SplitLine(const std::string& line) {
    std::vector<std::string> fields;
    std::size_t begin = 0;
    for (std::size_t tab = line.find('\t'); tab != std::string::npos;
         tab = line.find('\t', begin)) {
        fields.push_back(line.substr(begin, tab - begin));
        begin = tab + 1;
    }
    fields.push_back(line.substr(begin));
    return fields;
}

// Tells whether a field is the first of two words; it has to be one of them.
bool IsFirst(const std::string& field, const char* first, const char* second) {
    if (field == first) return true;
    if (field == second) return false;
    throw std::runtime_error("neither " + std::string(first) + " nor " + second + ": " + field);
}

Bar ParseLimit(const std::vector<std::string>& fields) {
    Bar bar;
    bar.title = fields[1];
    bar.measured = ParseValue(fields[2]);
    bar.wanted = ParseValue(fields[3]);
    bar.isMost = IsFirst(fields[4], "most", "least");
    bar.unit = fields[5];
    return bar;
}

void ParseLine(const std::vector<std::string>& fields, Figures& figures) {
    const auto is = [&fields](const char* word, std::size_t count) {
        return fields[0] == word && fields.size() == count;
    };
    if (is("compiler", 2)) {
        figures.compiler = fields[1];
    } else if (is("library", 3)) {
        figures.libraries.push_back({fields[1], fields[2]});
    } else if (is("chart", 5)) {
        figures.charts.push_back(
            {fields[1], fields[2], fields[3], IsFirst(fields[4], "less", "more"), {}});
    } else if (is("group", 2) && !figures.charts.empty()) {
        figures.charts.back().groups.push_back({fields[1], {}});
    } else if (is("bar", 6) && !figures.charts.empty() && !figures.charts.back().groups.empty()) {
        figures.charts.back().groups.back().bars.push_back(
            {fields[1], IsFirst(fields[2], "ours", "peer"), ParseValue(fields[3]),
             ParseValue(fields[4]), ParseValue(fields[5])});
    } else if (is("limit", 7)) {
        figures.bars.push_back(ParseLimit(fields));
    } else {
        throw std::runtime_error("not understood: " + fields[0]);
    }
}

}  // namespace

std::string FormatFigures(const Figures& figures) {
    std::string text = "compiler\t" + figures.compiler + "\n";
    for (const LibraryVersion& library : figures.libraries) {
        text += "library\t" + library.title + "\t" + library.version + "\n";
    }
    for (const Chart& chart : figures.charts) {
        text += FormatChart(chart);
    }
    for (const Bar& bar : figures.bars) {
        text += "limit\t" + bar.title + "\t" + FormatValue(bar.measured) + "\t" +
                FormatValue(bar.wanted) + "\t" + (bar.isMost ? "most" : "least") + "\t" + bar.unit +
                "\t" + (bar.IsMet() ? "OK" : "MISS") + "\n";
    }
    return text;
}

Figures ParseFigures(const std::string& text) {
    Figures figures;
    std::istringstream input(text);
    int number = 0;
    for (std::string line; std::getline(input, line);) {
        ++number;
        try {
            ParseLine(SplitLine(line), figures);
        } catch (const std::runtime_error& error) {
            throw std::runtime_error("line " + std::to_string(number) + ": " + error.what());
        }
    }
    return figures;
}

}  // namespace bench
