// SPDX-License-Identifier: MIT
#include "dom/css/GoldenPages.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <sstream>

namespace support {

namespace {

using Default = GoldenProperty::Default;

Default DefaultOf(const std::string& word) {
    if (word == "inherited") return Default::Parent;
    if (word == "current") return Default::Color;
    return word == "layout" ? Default::Boxless : Default::Initial;
}

// A number at the begin of a text, and how long it is.
struct Number {
    double value = 0;
    std::size_t length = 0;
};

std::optional<Number> NumberAt(std::string_view text) {
    constexpr std::string_view kFirst = "-.0123456789";  // no "inf" and no "nan"
    if (text.empty() || kFirst.find(text.front()) == kFirst.npos) return {};
    const std::string copy(text);
    char* end = nullptr;
    Number number;
    number.value = std::strtod(copy.c_str(), &end);
    number.length = static_cast<std::size_t>(end - copy.c_str());
    if (number.length == 0 || !std::isfinite(number.value)) return {};
    return number;
}

std::string TextOf(double number) {
    std::ostringstream text;
    text << number;
    return text.str();
}

// Returns the text between quotation marks that a value begins with, with them; empty for none.
std::string_view StringAt(std::string_view value) {
    if (!value.starts_with('"')) return {};
    for (std::size_t i = 1; i < value.size(); ++i) {
        if (value[i] == '\\')
            ++i;
        else if (value[i] == '"')
            return value.substr(0, i + 1);
    }
    return {};
}

// CSSOM section 9: the resolved value of "line-height" is the used one, so a number has become the
// length that CSS 2.1 section 10.8.1 makes of it.
std::string LineHeight(std::string_view value, double fontSize) {
    const std::optional<Number> number = NumberAt(value);
    if (!number || number->length != value.size()) return std::string(value);
    return TextOf(number->value * fontSize) + "px";
}

// CSS 2.1 section 12.2: contents follow each other, so that two strings are one that is longer.
std::string Content(std::string_view value) {
    std::string plain;
    while (!value.empty()) {
        std::string_view piece = StringAt(value);
        if (piece.empty()) piece = value.substr(0, 1);
        if (piece.size() > 1 && plain.ends_with("\" ")) {
            plain.erase(plain.size() - 2);
            plain += piece.substr(1);
        } else {
            plain += piece;
        }
        value.remove_prefix(piece.size());
    }
    return plain;
}

void RemoveAll(std::string& text, std::string_view part) {
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at))
        text.erase(at, part.size());
}

}  // namespace

std::vector<GoldenProperty> ReadGoldenProperties(const std::string& folder) {
    std::ifstream file(folder + "properties.txt");
    std::vector<GoldenProperty> properties;
    for (std::string line; std::getline(file, line);) {
        std::istringstream words(line);
        std::string name;
        std::string kind;
        std::string any;
        words >> name >> kind >> any;
        if (name.empty() || name[0] == '#') continue;
        properties.push_back({name, DefaultOf(kind), any == "any"});
    }
    return properties;
}

std::map<std::string, GoldenValues> ReadGoldenFile(const std::string& name) {
    std::ifstream file(name);
    std::map<std::string, GoldenValues> values;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with('#')) continue;
        std::istringstream fields(line);
        std::string path;
        std::string property;
        std::string value;
        std::getline(fields, path, '\t');
        std::getline(fields, property, '\t');
        std::getline(fields, value);
        values[path][property] = value;
    }
    return values;
}

std::string PlainValue(std::string_view property, std::string_view value, double fontSize,
                       std::string_view folder) {
    if (property == "line-height") return LineHeight(value, fontSize);
    std::string plain = property == "content" ? Content(value) : std::string(value);
    RemoveAll(plain, folder);
    return plain;
}

bool AreSameValues(std::string_view left, std::string_view right) {
    while (!left.empty() && !right.empty()) {
        const std::optional<Number> one = NumberAt(left);
        const std::optional<Number> other = NumberAt(right);
        if (one && other) {
            const double close = 1e-5 * std::max(1.0, std::abs(one->value));
            if (std::abs(one->value - other->value) > close) return false;
            left.remove_prefix(one->length);
            right.remove_prefix(other->length);
            continue;
        }
        if (left.front() != right.front()) return false;
        left.remove_prefix(1);
        right.remove_prefix(1);
    }
    return left.empty() && right.empty();
}

}  // namespace support
