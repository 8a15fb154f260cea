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

std::string DescribeSetting(const std::string& libraries, TableFormat format) {
#if defined(__clang__)
    const std::string compiler = "clang " __clang_version__;
#else
    const std::string compiler = "g++ " __VERSION__;
#endif
    const char* const bullet = format == TableFormat::Markdown ? "- " : "";
    return bullet + std::string("machine: ") + ProcessorName() + "\n" +  //
           bullet + "compiler: " + compiler + "\n" +                     //
           bullet + "libraries: " + libraries + "\n";
}

std::string EspalierVersion() { return ESPALIER_VERSION; }

}  // namespace bench
