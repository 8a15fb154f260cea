// SPDX-License-Identifier: MIT
#include "reader/Measure.h"

#include <algorithm>
#include <cmath>
#include <time.h>

namespace bench {

namespace {

// Returns the seconds that a pass over the file takes, measured over at least `minSeconds`.
double SecondsPerPass(Visitor& visitor, const CorpusFile& file, double minSeconds) {
    const double start = ProcessorSeconds();
    double elapsed = 0;
    int passes = 0;
    do {
        VisitAll(visitor, file);
        ++passes;
        elapsed = ProcessorSeconds() - start;
    } while (elapsed < minSeconds);
    return elapsed / passes;
}

}  // namespace

FileResult Measure(const CorpusFile& file, std::span<const std::unique_ptr<Visitor>> visitors,
                   const MeasureOptions& options) {
    std::vector<std::vector<double>> speeds(visitors.size());
    std::vector<std::vector<double>> ratios(visitors.size());
    const double megabytes = static_cast<double>(file.bytes) / 1e6;

    for (const std::unique_ptr<Visitor>& visitor : visitors) {
        VisitAll(*visitor, file);  // tables and buffers grow here, not in the first round
    }
    for (int round = 0; round < options.rounds; ++round) {
        double firstSeconds = 0;
        for (std::size_t i = 0; i < visitors.size(); ++i) {
            const double seconds = SecondsPerPass(*visitors[i], file, options.minSeconds);
            if (i == 0) firstSeconds = seconds;
            speeds[i].push_back(megabytes / seconds);
            ratios[i].push_back(seconds / firstSeconds);
        }
    }

    FileResult result;
    result.entry = file.entry;
    result.megabytes = megabytes;
    for (std::size_t i = 0; i < visitors.size(); ++i) {
        result.speeds.push_back(Quantile(speeds[i], 0.5));
        result.ratios.push_back(Quantile(ratios[i], 0.5));
        const double range = Quantile(ratios[i], 0.75) - Quantile(ratios[i], 0.25);
        result.spread = std::max(result.spread, range / 2 / result.ratios[i]);
    }
    return result;
}

FileResult MeasureLibraries(const CorpusFile& file, const MeasureOptions& options) {
    std::vector<std::unique_ptr<Visitor>> visitors;
    for (const Library& library : Libraries()) {
        visitors.push_back(library.makeVisitor(file.entry->group));
    }
    return Measure(file, visitors, options);
}

double ProcessorSeconds() {
    timespec now = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

double Quantile(std::vector<double> values, double part) {
    std::sort(values.begin(), values.end());
    const double place = part * static_cast<double>(values.size() - 1);
    const std::size_t below = static_cast<std::size_t>(place);
    const std::size_t above = std::min(below + 1, values.size() - 1);
    const double weight = place - static_cast<double>(below);
    return values[below] * (1 - weight) + values[above] * weight;
}

double GeometricMean(const std::vector<double>& values) {
    double logarithms = 0;
    for (const double value : values) {
        logarithms += std::log(value);
    }
    return std::exp(logarithms / static_cast<double>(values.size()));
}

}  // namespace bench
