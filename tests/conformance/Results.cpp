// SPDX-License-Identifier: MIT
#include "Results.h"

#include <iostream>

namespace conformance {

void Results::Add(const SuiteTest& test, const std::string& kind, bool holds,
                  const std::string& note) {
    Tally& tally = tallies_[kind];
    ++tally.all;
    if (holds) ++tally.held;
    const bool isException = IsException(test.id, what_);
    if (holds && isException) failures_.push_back(test.id + ": holds, but is an exception");
    if (!holds && !isException) failures_.push_back(test.id + " (" + test.path + "): " + note);
}

std::string Results::Surprises() const {
    std::string text;
    for (const std::string& failure : failures_)
        text += failure + "\n";
    return text;
}

int Results::Count(const std::string& kind) const {
    const auto found = tallies_.find(kind);
    return found == tallies_.end() ? 0 : found->second.all;
}

void Results::Print(const char* title) const {
    for (const auto& [kind, tally] : tallies_) {
        std::cout << title << ", " << kind << ": " << tally.held << " of " << tally.all
                  << " hold\n";
    }
}

}  // namespace conformance
