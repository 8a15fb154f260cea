// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

/// \file
/// What a browser says about the pages in computed/pages, as scripts/computed-style has written it.

namespace support {

/// A property that the golden files tell.
struct GoldenProperty {
    /// What an element has that nothing is declared for.
    enum class Default {
        Parent,   ///< the value of its parent
        Initial,  ///< the initial value
        Color,    ///< its color
        Boxless   ///< the initial value; told of elements without a box only
    };

    std::string name;
    Default otherwise;
    bool isInitialOpen;  ///< standards leave the initial value to each browser
};

/// Values of properties, by name.
using GoldenValues = std::map<std::string, std::string>;

/// Returns the properties of the file properties.txt.
std::vector<GoldenProperty> ReadGoldenProperties(const std::string& folder);

/// Returns the lines of a golden file: for each path the values that it tells.
std::map<std::string, GoldenValues> ReadGoldenFile(const std::string& name);

/// Returns a value in the one of its forms that both sides are compared in, because a standard
/// takes them for the same, or because a browser answers with what it has made of the value.
/// \param fontSize of the element, in pixels
/// \param folder that addresses are relative to, with a slash at its end
std::string PlainValue(std::string_view property, std::string_view value, double fontSize,
                       std::string_view folder);

/// Tells whether two plain values are the same; numbers are, when they have the same six digits.
bool AreSameValues(std::string_view left, std::string_view right);

}  // namespace support
