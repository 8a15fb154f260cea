// SPDX-License-Identifier: MIT
#include "reader/MeasureVisitors.h"

#include <vector>

namespace bench {

FileResult MeasureVisitors(const CorpusFile& file,
                           std::span<const std::unique_ptr<Visitor>> visitors,
                           const MeasureOptions& options) {
    std::vector<Work> works;
    for (const std::unique_ptr<Visitor>& visitor : visitors) {
        works.emplace_back();
        if (visitor == nullptr) continue;
        works.back() = [&file, &visitor] { VisitAll(*visitor, file); };
    }
    return {Measure(static_cast<double>(file.bytes) / 1e6, works, options), file.entry};
}

FileResult MeasureLibraries(const CorpusFile& file, const MeasureOptions& options) {
    std::vector<std::unique_ptr<Visitor>> visitors;
    for (const Library& library : Libraries()) {
        visitors.push_back(library.takes(*file.entry) ? library.makeVisitor(file.entry->group)
                                                      : nullptr);
    }
    return MeasureVisitors(file, visitors, options);
}

}  // namespace bench
