// SPDX-License-Identifier: MIT
#include "common/Measure.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <time.h>

namespace bench {

namespace {

// Returns the seconds that a pass takes, measured over at least `minSeconds`; NaN for no work.
double SecondsPerPass(const Work& work, const MeasureOptions& options) {
    if (!work) return std::numeric_limits<double>::quiet_NaN();
    double elapsed = 0;
    int passes = 0;
    do {
        if (options.prepare) options.prepare();
        const double start = ProcessorSeconds();
        work();
        elapsed += ProcessorSeconds() - start;
        ++passes;
    } while (elapsed < options.minSeconds);
    return elapsed / passes;
}

}  // namespace

Measurement Measure(double megabytes, std::span<const Work> works, const MeasureOptions& options) {
    std::vector<std::vector<double>> speeds(works.size());
    std::vector<std::vector<double>> ratios(works.size());

    for (const Work& work : works) {
        if (work) work();  // tables and buffers grow here, not in the first round
    }
    for (int round = 0; round < options.rounds; ++round) {
        std::vector<double> firstSpeeds;
        double firstSeconds = 0;
        for (std::size_t i = 0; i < works.size(); ++i) {
            const bool isStale = i > 1 && works[i];  // the one before was another work
            if (i == 0 || isStale) {
                firstSeconds = SecondsPerPass(works[0], options);
                firstSpeeds.push_back(megabytes / firstSeconds);
            }
            const double seconds = i == 0 ? firstSeconds : SecondsPerPass(works[i], options);
            if (i > 0) speeds[i].push_back(megabytes / seconds);
            ratios[i].push_back(seconds / firstSeconds);
        }
        speeds[0].push_back(Quantile(firstSpeeds, 0.5));
    }

    Measurement result;
    result.megabytes = megabytes;
    result.rounds = speeds;
    for (std::size_t i = 0; i < works.size(); ++i) {
        result.speeds.push_back(Quantile(speeds[i], 0.5));
        result.ratios.push_back(Quantile(ratios[i], 0.5));
        if (!works[i]) continue;
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
    double count = 0;
    for (const double value : values) {
        if (std::isnan(value)) continue;
        logarithms += std::log(value);
        ++count;
    }
    return std::exp(logarithms / count);
}

}  // namespace bench
