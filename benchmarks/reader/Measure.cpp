// SPDX-License-Identifier: MIT
#include "reader/Measure.h"

#include <algorithm>
#include <cmath>
#include <time.h>

namespace bench {

namespace {

double ProcessorSeconds() {
    timespec now = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

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

FileResult Measure(const CorpusFile& file, const MeasureOptions& options) {
    std::array<std::unique_ptr<Visitor>, kLibraryCount> visitors;
    std::array<std::vector<double>, kLibraryCount> speeds;
    std::array<std::vector<double>, kLibraryCount> ratios;
    const double megabytes = static_cast<double>(file.bytes) / 1e6;

    for (std::size_t i = 0; i < kLibraryCount; ++i) {
        visitors[i] = Libraries()[i].makeVisitor();
        VisitAll(*visitors[i], file);  // tables and buffers grow here, not in the first round
    }
    for (int round = 0; round < options.rounds; ++round) {
        double ourSeconds = 0;
        for (std::size_t i = 0; i < kLibraryCount; ++i) {
            const double seconds = SecondsPerPass(*visitors[i], file, options.minSeconds);
            if (i == kEspalier) ourSeconds = seconds;
            speeds[i].push_back(megabytes / seconds);
            ratios[i].push_back(seconds / ourSeconds);
        }
    }

    FileResult result;
    result.entry = file.entry;
    result.megabytes = megabytes;
    for (std::size_t i = 0; i < kLibraryCount; ++i) {
        result.speeds[i] = Quantile(speeds[i], 0.5);
        result.ratios[i] = Quantile(ratios[i], 0.5);
        const double range = Quantile(ratios[i], 0.75) - Quantile(ratios[i], 0.25);
        result.spread = std::max(result.spread, range / 2 / result.ratios[i]);
    }
    return result;
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
