// SPDX-License-Identifier: MIT
#include "common/Measure.h"

#include <algorithm>
#include <cmath>
#include <time.h>

namespace bench {

namespace {

// Returns the seconds that a pass takes, measured over at least `minSeconds`.
double SecondsPerPass(const Work& work, double minSeconds) {
    const double start = ProcessorSeconds();
    double elapsed = 0;
    int passes = 0;
    do {
        work();
        ++passes;
        elapsed = ProcessorSeconds() - start;
    } while (elapsed < minSeconds);
    return elapsed / passes;
}

}  // namespace

Measurement Measure(double megabytes, std::span<const Work> works, const MeasureOptions& options) {
    std::vector<std::vector<double>> speeds(works.size());
    std::vector<std::vector<double>> ratios(works.size());

    for (const Work& work : works) {
        work();  // tables and buffers grow here, not in the first round
    }
    for (int round = 0; round < options.rounds; ++round) {
        double firstSeconds = 0;
        for (std::size_t i = 0; i < works.size(); ++i) {
            const double seconds = SecondsPerPass(works[i], options.minSeconds);
            if (i == 0) firstSeconds = seconds;
            speeds[i].push_back(megabytes / seconds);
            ratios[i].push_back(seconds / firstSeconds);
        }
    }

    Measurement result;
    result.megabytes = megabytes;
    for (std::size_t i = 0; i < works.size(); ++i) {
        result.speeds.push_back(Quantile(speeds[i], 0.5));
        result.ratios.push_back(Quantile(ratios[i], 0.5));
        const double range = Quantile(ratios[i], 0.75) - Quantile(ratios[i], 0.25);
        result.spread = std::max(result.spread, range / 2 / result.ratios[i]);
    }
    return result;
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
