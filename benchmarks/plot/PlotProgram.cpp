// SPDX-License-Identifier: MIT
// Draws the charts that the benchmarks have written into their figures.
#include "plot/Plot.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace {

constexpr char kHelp[] =
    "usage: espalier_plot DIRECTORY FILE...\n"
    "\n"
    "Draws every chart in files that the benchmarks write with --figures, as\n"
    "DIRECTORY/performance-NAME.svg. Charts in which nothing was measured are left out.\n";

std::string ReadWhole(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot be read");
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

bool IsMeasured(const bench::Chart& chart) {
    for (const bench::ChartGroup& group : chart.groups) {
        for (const bench::ChartBar& bar : group.bars) {
            if (bar.most > 0) return true;
        }
    }
    return false;
}

void DrawFile(const std::string& directory, const std::string& path) {
    for (const bench::Chart& chart : bench::ParseFigures(ReadWhole(path)).charts) {
        if (!IsMeasured(chart)) continue;
        const std::string target = directory + "/performance-" + chart.name + ".svg";
        std::ofstream file(target, std::ios::binary);
        file << bench::DrawChart(chart);
        file.close();
        if (!file) throw std::runtime_error(target + " cannot be written");
        std::printf("%s\n", target.c_str());
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fputs(kHelp, stderr);
        return 2;
    }
    for (int i = 2; i < argc; ++i) {
        try {
            DrawFile(argv[1], argv[i]);
        } catch (const std::exception& error) {
            std::fprintf(stderr, "espalier_plot: %s: %s\n", argv[i], error.what());
            return EXIT_FAILURE;
        }
    }
    return EXIT_SUCCESS;
}
