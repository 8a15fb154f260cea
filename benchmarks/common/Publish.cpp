// SPDX-License-Identifier: MIT
#include "common/Publish.h"

#include "common/Setting.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace bench {

int Publish(const std::string& tables, const Figures& figures, const RunOptions& options) {
    if (options.format == TableFormat::Text) {
        std::printf("%s\n%s\n%s", DescribeSetting(figures).c_str(), tables.c_str(),
                    FormatBars(figures.bars).c_str());
    } else {
        std::fputs(tables.c_str(), stdout);
    }
    if (!options.figures.empty()) {
        std::ofstream file(options.figures, std::ios::binary);
        file << FormatFigures(figures);
        file.close();
        if (!file) throw std::runtime_error(options.figures + " cannot be written");
    }
    return options.enforce && !AreMet(figures.bars) ? kBarMissed : EXIT_SUCCESS;
}

}  // namespace bench
