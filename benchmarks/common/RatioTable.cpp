// SPDX-License-Identifier: MIT
#include "common/RatioTable.h"

#include <string>

namespace bench {

TableRow RatioHead(std::span<const char* const> titles) {
    TableRow row = {"file", "MB"};
    for (const char* title : titles) {
        row.emplace_back(title);
    }
    for (const char* title : titles.subspan(1)) {
        row.push_back(std::string("/") + title);
    }
    row.emplace_back("spread %");
    return row;
}

TableRow RatioRow(const FileResult& result) {
    TableRow row = {result.entry->title, FormatNumber(result.megabytes, 1)};
    for (const double speed : result.speeds) {
        row.push_back(FormatNumber(speed, 0));
    }
    for (std::size_t i = 1; i < result.ratios.size(); ++i) {
        row.push_back(FormatNumber(result.ratios[i], 2));
    }
    row.push_back(FormatNumber(result.spread * 100, 0));
    return row;
}

TableRow RatioMeanRow(const char* title, std::span<const FileResult> results) {
    TableRow row = {title, ""};
    const std::size_t count = results.front().speeds.size();
    for (std::size_t i = 0; i < count; ++i) {
        std::vector<double> speeds;
        for (const FileResult& result : results) {
            speeds.push_back(result.speeds[i]);
        }
        row.push_back(FormatNumber(GeometricMean(speeds), 0));
    }
    for (std::size_t i = 1; i < count; ++i) {
        row.push_back(FormatNumber(MeanRatio(results, i), 2));
    }
    row.emplace_back();
    return row;
}

double MeanRatio(std::span<const FileResult> results, std::size_t library) {
    std::vector<double> ratios;
    for (const FileResult& result : results) {
        ratios.push_back(result.ratios[library]);
    }
    return GeometricMean(ratios);
}

std::vector<FileResult> OnlyOf(CorpusGroup group, std::span<const FileResult> results) {
    std::vector<FileResult> chosen;
    for (const FileResult& result : results) {
        if (result.entry->group == group) chosen.push_back(result);
    }
    return chosen;
}

}  // namespace bench
