// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <span>
#include <vector>

namespace bench {

struct CorpusEntry;

struct MeasureOptions {
    int rounds = 5;
    double minSeconds = 0.2;  ///< how long each work goes on in each round, at least
};

/// Something that is done to the same bytes in several ways; one pass over them.
using Work = std::function<void()>;

/// What was measured on the same bytes.
struct Measurement {
    double megabytes = 0;
    std::vector<double> speeds;  ///< MB/s of each work, median of the rounds
    /// How many times as fast the first work is as each: the median over the rounds of the ratio
    /// within one round, so that a machine that slows down between rounds does not show.
    std::vector<double> ratios;
    /// Half of the distance between the quartiles of the ratios, relative to the median; the
    /// largest of all works.
    double spread = 0;
};

/// What was measured on one file.
struct FileResult : Measurement {
    const CorpusEntry* entry = nullptr;
};

/// Measures works that each go over `megabytes`: one after the other in each round, over and over.
/// Time is the thread's processor time, so other programs disturb it through the caches only.
Measurement Measure(double megabytes, std::span<const Work> works, const MeasureOptions& options);

/// Returns the seconds of processor that the calling thread has had.
double ProcessorSeconds();

/// Returns the value below which the given part (0 to 1) of `values` lies. \pre not empty
double Quantile(std::vector<double> values, double part);

/// Returns the geometric mean. \pre not empty, all positive
double GeometricMean(const std::vector<double>& values);

}  // namespace bench
