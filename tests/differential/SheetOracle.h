// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>
#include <sstream>
#include <string>

/// \file
/// What the tests with style sheets that are in use share.

namespace differential {

/// The sheets that scripts/fetch-sheets gets.
inline constexpr const char* kSheets[] = {"bootstrap-3",     "bootstrap-3.min", "bootstrap-5",
                                          "bootstrap-5.min", "bulma",           "font-awesome",
                                          "font-awesome.min"};

/// Returns a Python that has tinycss2, or an empty text.
inline std::string FindPython() {
    for (const std::string python : {"python3", "/usr/bin/python3"}) {
        if (std::system((python + " -c 'import tinycss2' 2>/dev/null").c_str()) == 0) return python;
    }
    return "";
}

/// Returns the text with one space for all white space between words, and none around them.
inline std::string Plain(const std::string& text) {
    std::istringstream words(text);
    std::string plain;
    for (std::string word; words >> word;)
        plain += (plain.empty() ? "" : " ") + word;
    return plain;
}

/// Returns the name of a sheet as that of a test.
template <typename Parameter>
std::string TestName(const Parameter& sheet) {
    std::string name = sheet.param;
    for (char& character : name) {
        if (character == '-' || character == '.') character = '_';
    }
    return name;
}

}  // namespace differential
