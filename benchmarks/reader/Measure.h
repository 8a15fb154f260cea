// SPDX-License-Identifier: MIT
#pragma once

#include "reader/Corpus.h"
#include "reader/Library.h"

#include <memory>
#include <span>
#include <vector>

namespace bench {

struct MeasureOptions {
    int rounds = 5;
    double minSeconds = 0.2;  ///< how long each library works on a file in each round, at least
};

/// What was measured on one file.
struct FileResult {
    const CorpusEntry* entry = nullptr;
    double megabytes = 0;
    std::vector<double> speeds;  ///< MB/s of each visitor, median of the rounds
    /// How many times as fast the first visitor is as each: the median over the rounds of the ratio
    /// within one round, so that a machine that slows down between rounds does not show.
    std::vector<double> ratios;
    /// Half of the distance between the quartiles of the ratios, relative to the median; the
    /// largest of all visitors.
    double spread = 0;
};

/// Measures visitors on `file`: one after the other in each round, over and over. Time is the
/// thread's processor time, so other programs disturb it through the caches only.
FileResult Measure(const CorpusFile& file, std::span<const std::unique_ptr<Visitor>> visitors,
                   const MeasureOptions& options);

/// Measures all libraries on `file`, in the order of Libraries().
FileResult MeasureLibraries(const CorpusFile& file, const MeasureOptions& options);

/// Returns the seconds of processor that the calling thread has had.
double ProcessorSeconds();

/// Returns the value below which the given part (0 to 1) of `values` lies. \pre not empty
double Quantile(std::vector<double> values, double part);

/// Returns the geometric mean. \pre not empty, all positive
double GeometricMean(const std::vector<double>& values);

}  // namespace bench
