// SPDX-License-Identifier: MIT
//
// Measures what hostile inputs of every kind take, by what operator new is asked for, and not by
// the clock: at most so many bytes for each byte of the input, and four times as much work for an
// input that is four times as long. ctest ends what takes for ever.
#include <espalier/io/Exception.h>

#include "ceilings/CountedMemory.h"
#include "ceilings/Family.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstring>
#include <fstream>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace ceilings {

void PrintTo(const Family& family, std::ostream* stream) { *stream << family.name; }

}  // namespace ceilings

namespace {

using ceilings::Family;

constexpr std::size_t kSize = std::size_t{128} << 10U;
constexpr std::size_t kInAnyCase = std::size_t{256} << 10U;

// What a thread may keep for the next tree.
constexpr std::size_t kKept = 1024;

std::vector<Family> AllFamilies() {
    std::vector<Family> all;
    for (const auto families :
         {ceilings::XmlFamilies(), ceilings::DocumentTypeFamilies(), ceilings::TreeFamilies(),
          ceilings::SheetFamilies(), ceilings::StyleFamilies()})
        all.insert(all.end(), families.begin(), families.end());
    return all;
}

// "elements in each other" as ElementsInEachOther.
std::string TestNameOf(const Family& family) {
    std::string name;
    bool begins = true;
    for (const char character : std::string_view(family.name)) {
        const auto byte = static_cast<unsigned char>(character);
        if (std::isalnum(byte) != 0)
            name += begins ? static_cast<char>(std::toupper(byte)) : character;
        begins = character == ' ';
    }
    return name;
}

// What a run took.
struct Cost {
    std::size_t size = 0;  // of the input
    std::size_t peak = 0;
    std::size_t live = 0;  // behind the end
    std::size_t total = 0;
    std::size_t allocations = 0;
};

Cost CostOf(const Family& family, std::size_t size) {
    const std::string input = family.make(size);
    char message[100] = "";
    const CountedMemory memory;
    try {
        family.run(input);
    } catch (const Xml::Exception& error) {
        std::strncpy(message, error.What(), sizeof(message) - 1);
    }
    const Cost cost = {input.size(), memory.Peak(), memory.Live(), memory.Total(),
                       memory.Allocations()};
    EXPECT_STREQ(message, family.message);
    EXPECT_LE(cost.live, kKept);
    return cost;
}

class Ceiling : public testing::TestWithParam<Family> {};

TEST_P(Ceiling, TakesNoMoreThanItsShare) {
    const Family& family = GetParam();
    CostOf(family, kSize);  // what the library keeps for good is made here
    const Cost small = CostOf(family, kSize);
    const Cost large = CostOf(family, 4 * kSize);
    RecordProperty("peakForEachByte", std::to_string(static_cast<double>(large.peak) /
                                                     static_cast<double>(large.size)));
    for (const Cost& cost : {small, large})
        EXPECT_LE(cost.peak, kInAnyCase + family.bytesPerByte * cost.size) << cost.size;
    // Whatever is quadratic is sixteen times as much; lists that double may be one step ahead.
    EXPECT_LE(large.total, 6 * small.total + kInAnyCase) << small.total;
    EXPECT_LE(large.allocations, 5 * small.allocations + 1000) << small.allocations;
}

INSTANTIATE_TEST_SUITE_P(Hostile, Ceiling, testing::ValuesIn(AllFamilies()),
                         [](const testing::TestParamInfo<Family>& parameter) {
                             return TestNameOf(parameter.param);
                         });

// The guide has a line for each, and no other lines.
TEST(CeilingPage, ListsAllFamilies) {
    std::ifstream file(ESPALIER_DOCS "/limits.md");
    std::vector<std::string> listed;
    bool isInTable = false;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("| Input | Bytes for each byte |")) isInTable = true;
        if (!line.starts_with("|")) isInTable = false;
        if (isInTable) listed.push_back(line);
    }
    std::vector<std::string> expected = {"| Input | Bytes for each byte | Test |",
                                         "|---|---:|---|"};
    for (const Family& family : AllFamilies()) {
        expected.push_back("| " + std::string(family.name) + " | " +
                           std::to_string(family.bytesPerByte) + " | `" + TestNameOf(family) +
                           "` |");
    }
    EXPECT_EQ(listed, expected);
}

}  // namespace
