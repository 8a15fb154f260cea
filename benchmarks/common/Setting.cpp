// SPDX-License-Identifier: MIT
#include "common/Setting.h"

#include <fstream>

namespace bench {

namespace {

std::string ProcessorName() {
    std::ifstream input("/proc/cpuinfo");
    for (std::string line; std::getline(input, line);) {
        if (line.starts_with("model name")) return line.substr(line.find(':') + 2);
    }
    return "unknown processor";
}

}  // namespace

Figures FiguresOfThisBuild() {
    Figures figures;
#if defined(__clang__)
    figures.compiler = "clang " __clang_version__;
#else
    figures.compiler = "g++ " __VERSION__;
#endif
    return figures;
}

std::string DescribeSetting(const Figures& figures) {
    std::string libraries;
    for (const LibraryVersion& library : figures.libraries) {
        libraries += (libraries.empty() ? "" : "; ") + library.title;
        if (!library.version.empty()) libraries += " " + library.version;
    }
    return "machine: " + ProcessorName() + "\n" +    //
           "compiler: " + figures.compiler + "\n" +  //
           "libraries: " + libraries + "\n";
}

std::string EspalierVersion() { return ESPALIER_VERSION; }

}  // namespace bench
