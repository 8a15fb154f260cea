// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <span>
#include <vector>

namespace bench {

struct CorpusEntry;

struct MeasureOptions {
    int rounds = 5;
    double minSeconds = 0.2;        ///< how long each work goes on in each round, at least
    std::function<void()> prepare;  ///< done before each pass, outside of the clock; may be empty
};

/// Something that is done to the same bytes in several ways; one pass over them. An empty one, for
/// a way that does not exist for these bytes, is not measured: its figures are NaN.
using Work = std::function<void()>;

/// What was measured on the same bytes.
struct Measurement {
    double megabytes = 0;
    std::vector<double> speeds;               ///< MB/s of each work, median of the rounds
    std::vector<std::vector<double>> rounds;  ///< MB/s of each work in each round
    /// How many times as fast the first work is as each: the median over the rounds of the ratio
    /// of neighbours, so that a machine whose speed changes shows as little as it can.
    std::vector<double> ratios;
    /// Half of the distance between the quartiles of the ratios, relative to the median; the
    /// largest of all works.
    double spread = 0;
};

/// What was measured on one file.
struct FileResult : Measurement {
    const CorpusEntry* entry = nullptr;
};

/// Measures works that each go over `megabytes`: in each round one after the other, and before each
/// the first one again, which it is compared with. Time is the thread's processor time, so other
/// programs disturb it through the caches only.
Measurement Measure(double megabytes, std::span<const Work> works, const MeasureOptions& options);

/// Returns the seconds of processor that the calling thread has had.
double ProcessorSeconds();

/// Returns the value below which the given part (0 to 1) of `values` lies. \pre not empty
double Quantile(std::vector<double> values, double part);

/// Returns the geometric mean of those that were measured. \pre not empty, all positive or NaN
double GeometricMean(const std::vector<double>& values);

}  // namespace bench
