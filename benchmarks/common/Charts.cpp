// SPDX-License-Identifier: MIT
#include "common/Charts.h"

#include <cmath>

namespace bench {

ChartBar BarOfRounds(const std::string& title, bool isOurs, const std::vector<double>& rounds) {
    return {title, isOurs, Quantile(rounds, 0), Quantile(rounds, 0.5), Quantile(rounds, 1)};
}

std::string NoteOfFiles(std::size_t count, std::size_t all) {
    if (count == all) return "";
    return " (" + std::to_string(count) + " of " + std::to_string(all) + ")";
}

ChartBar BarOfMeans(const std::string& title, bool isOurs, std::span<const FileResult> results,
                    std::size_t work) {
    std::vector<double> means(results.front().rounds[work].size());
    for (std::size_t round = 0; round < means.size(); ++round) {
        std::vector<double> speeds;
        for (const FileResult& result : results)
            speeds.push_back(result.rounds[work][round]);
        means[round] = GeometricMean(speeds);
    }
    std::size_t count = 0;
    for (const FileResult& result : results)
        count += std::isnan(result.speeds[work]) ? 0U : 1U;
    const std::string note = NoteOfFiles(count, results.size());
    return BarOfRounds(title + note, isOurs, means);
}

Chart ChartOfMeans(const std::string& name, const std::string& title,
                   std::span<const char* const> titles, std::size_t ourCount,
                   std::span<const FileResult> results) {
    Chart chart = {name, title, "MB/s", false, {{}}};
    for (std::size_t i = 0; i < titles.size(); ++i) {
        chart.groups.front().bars.push_back(BarOfMeans(titles[i], i < ourCount, results, i));
    }
    return chart;
}

}  // namespace bench
