// SPDX-License-Identifier: MIT
#pragma once

#include "common/Measure.h"
#include "reader/Library.h"

#include <memory>
#include <span>

namespace bench {

/// Measures visitors on `file`, see Measure(). A null pointer stands for what is not measured.
FileResult MeasureVisitors(const CorpusFile& file,
                           std::span<const std::unique_ptr<Visitor>> visitors,
                           const MeasureOptions& options);

/// Measures all libraries on `file`, in the order of Libraries().
FileResult MeasureLibraries(const CorpusFile& file, const MeasureOptions& options);

}  // namespace bench
