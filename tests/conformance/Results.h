// SPDX-License-Identifier: MIT
#pragma once

#include "Exceptions.h"
#include "Suite.h"

#include <map>
#include <string>
#include <vector>

namespace conformance {

/// Collects which tests of the suite hold, and compares them with the exceptions.
class Results {
public:
    explicit Results(Exception::What what) : what_(what) {}

    /// \param kind what the test is counted as
    /// \param note what there is to say if it does not hold
    void Add(const SuiteTest& test, const std::string& kind, bool holds, const std::string& note);

    /// Returns the tests that do not hold and are no exceptions, with their notes, and exceptions
    /// that hold; "" when there are none.
    std::string Surprises() const;

    /// Returns the number of tests of a kind.
    int Count(const std::string& kind) const;

    /// Prints a line for each kind: how many hold of how many.
    void Print(const char* title) const;

private:
    struct Tally {
        int all = 0;
        int held = 0;
    };

    Exception::What what_;
    std::map<std::string, Tally> tallies_;  // by kind
    std::vector<std::string> failures_;     // lines
};

}  // namespace conformance
