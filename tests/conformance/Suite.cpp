// SPDX-License-Identifier: MIT
#include "Suite.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>

namespace conformance {
namespace {

constexpr std::string_view kDirectory = ESPALIER_XMLCONF;

using Row = std::vector<std::string>;

Row SplitAtTabs(const std::string& line) {
    Row row;
    std::istringstream columns(line);
    for (std::string column; std::getline(columns, column, '\t');)
        row.push_back(column);
    return row;
}

// Returns the cell of a row under the name in the first line.
class Columns {
public:
    explicit Columns(const Row& names) {
        for (std::size_t i = 0; i < names.size(); ++i)
            places_.emplace(names[i], i);
    }

    const std::string& Cell(const Row& row, const char* name) const {
        return row.at(places_.at(name));
    }

private:
    std::map<std::string, std::size_t> places_;
};

std::string ReadFile(const std::string& fileName) {
    std::ifstream file(fileName, std::ios::binary);
    if (!file) throw std::runtime_error("no file " + fileName);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

// The tests that apply: the editions of a test are "all" or their numbers.
bool Applies(const Columns& columns, const Row& row) {
    const std::string& recommendation = columns.Cell(row, "recommendation");
    const std::string& edition = columns.Cell(row, "edition");
    return (recommendation.starts_with("XML1.0") || recommendation.starts_with("NS1.0")) &&
           columns.Cell(row, "version") == "1.0" &&
           (edition == "all" || edition.find('5') != std::string::npos);
}

SuiteTest TestOf(const Columns& columns, const Row& row) {
    SuiteTest test;
    test.id = columns.Cell(row, "id");
    test.path = columns.Cell(row, "path");
    test.type = columns.Cell(row, "type");
    test.entities = columns.Cell(row, "entities");
    test.namespaces = columns.Cell(row, "namespaces") == "yes";
    test.recommendation = columns.Cell(row, "recommendation");
    const std::string& output = columns.Cell(row, "output");
    if (output != "-") test.output = output;
    return test;
}

std::vector<SuiteTest> ReadManifest() {
    std::istringstream manifest(ReadFile(std::string(kDirectory) + "/xmlconf-manifest.tsv"));
    std::string line;
    std::getline(manifest, line);
    const Columns columns(SplitAtTabs(line));
    std::vector<SuiteTest> tests;
    while (std::getline(manifest, line)) {
        const Row row = SplitAtTabs(line);
        if (Applies(columns, row)) tests.push_back(TestOf(columns, row));
    }
    return tests;
}

}  // namespace

bool HasSuite() { return !kDirectory.empty(); }

const std::vector<SuiteTest>& SuiteTests() {
    static const std::vector<SuiteTest> tests = ReadManifest();
    return tests;
}

std::string SuiteFile(std::string_view path) {
    return ReadFile(std::string(kDirectory) + "/xmlconf/" + std::string(path));
}

}  // namespace conformance
