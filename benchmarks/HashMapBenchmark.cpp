// SPDX-License-Identifier: MIT

// Compares Xml::HashMap with std::unordered_map<std::string, void*>: inserting keys into an empty
// map, and finding every key in another order.
//
// Each round is a pair: both maps do the same work, one right after the other, in alternating
// order. A row shows the time of our map for one key, beside it that of the standard map, and the
// median of the ratios of the pairs (above 1 our map is faster). "seeded" is the map as the library
// uses it for keys from input, "default" the map as it is without SetKey().

#include <espalier/xml/HashMap.h>

#include "common/Charts.h"
#include "common/Publish.h"
#include "common/RunOptions.h"
#include "common/Setting.h"
#include "xml/SeededHash.h"

#include <algorithm>
#include <chrono>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

enum class KeyKind { Name, Uri };
enum class HashKind { Seeded, Default };
enum class Operation { Insert, Find };

using Keys = std::vector<std::string>;
using StandardMap = std::unordered_map<std::string, void*>;

constexpr std::size_t kKeysPerPair = 20000;  // small maps are filled again until this many are done
constexpr unsigned kFirstBuckets = 16;
constexpr std::size_t kCounts[] = {1000, 10000, 100000, 1000000};
constexpr int kRounds = 11;
constexpr double kBar = 1.5;  // times as fast as the standard map

constexpr char kHelp[] =
    "usage: espalier_hashmap_benchmark [--rounds N] [--markdown] [--figures FILE] [--enforce]\n"
    "\n"
    "Inserts keys into Xml::HashMap and std::unordered_map<std::string, void*> and finds them,\n"
    "and prints times, ratios and bars.\n"
    "\n"
    "  --rounds N      rounds of both (11); the median counts\n"
    "  --markdown      print only the tables, in Markdown\n"
    "  --figures FILE  write the charts and the bars for espalier_plot and scripts/benchmark\n"
    "  --enforce       exit with 3 when a bar is missed\n";

const char* const kWords[] = {"order", "item",  "name",   "stroke", "width",  "path",
                              "group", "entry", "author", "title",  "remark", "unit",
                              "price", "class", "source", "target"};

std::string MakeName(std::mt19937& random, std::size_t number) {
    const char* const prefixes[] = {"", "", "svg:", "xlink:", "m:"};
    return prefixes[random() % std::size(prefixes)] + std::string(kWords[random() % 16]) +
           (random() % 2 == 0 ? "-" : "") + kWords[random() % 16] + std::to_string(number);
}

std::string MakeUri(std::mt19937& random, std::size_t number) {
    return "http://www." + std::string(kWords[random() % 16]) + ".example.org/ns/" +
           std::to_string(1999 + random() % 27) + "/" + kWords[random() % 16] + "/" +
           std::to_string(number) + "#" + kWords[random() % 16];
}

// Returns distinct keys; the same ones in every run.
Keys MakeKeys(KeyKind kind, std::size_t count) {
    std::mt19937 random(20050401);
    Keys keys;
    keys.reserve(count);
    for (std::size_t number = 0; number < count; ++number) {
        keys.push_back(kind == KeyKind::Name ? MakeName(random, number) : MakeUri(random, number));
    }
    return keys;
}

// Returns the keys in another order, their bytes standing in memory in that order: reading the key
// is not what is measured.
Keys Shuffled(const Keys& keys) {
    std::vector<const std::string*> order;
    for (const std::string& key : keys) {
        order.push_back(&key);
    }
    std::shuffle(order.begin(), order.end(), std::mt19937(7));
    Keys shuffled;
    shuffled.reserve(keys.size());
    for (const std::string* key : order) {
        shuffled.push_back(*key);
    }
    return shuffled;
}

Xml::HashMap MakeMap(HashKind hash) {
    Xml::HashMap map(kFirstBuckets, true);
    if (hash == HashKind::Seeded) map.SetKey(Xml::detail::SeededHash, XmlKeyCompareBinary);
    return map;
}

void Fill(Xml::HashMap& map, const Keys& keys) {
    for (const std::string& key : keys) {
        map.Insert(key.data(), static_cast<unsigned>(key.size()), const_cast<std::string*>(&key));
    }
}

void Fill(StandardMap& map, const Keys& keys) {
    for (const std::string& key : keys) {
        map.insert_or_assign(key, const_cast<std::string*>(&key));
    }
}

std::size_t CountFound(const Xml::HashMap& map, const Keys& keys) {
    std::size_t found = 0;
    for (const std::string& key : keys) {
        found += map.Find(key.data(), static_cast<unsigned>(key.size())) != nullptr;
    }
    return found;
}

std::size_t CountFound(const StandardMap& map, const Keys& keys) {
    std::size_t found = 0;
    for (const std::string& key : keys) {
        found += map.find(key) != map.end();
    }
    return found;
}

// Returns how many seconds `work` takes.
template <typename Work>
double TimeOf(Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// Both return the seconds that `rounds` rounds take, without the making and the end of the maps.
template <typename MakeOne>
double TimeInsert(MakeOne makeOne, const Keys& keys, std::size_t rounds) {
    double seconds = 0;
    for (std::size_t round = 0; round < rounds; ++round) {
        auto map = makeOne();
        seconds += TimeOf([&] { Fill(map, keys); });
    }
    return seconds;
}

template <typename Map>
double TimeFind(const Map& map, const Keys& keys, std::size_t rounds) {
    volatile std::size_t found = 0;
    return TimeOf([&] {
        for (std::size_t round = 0; round < rounds; ++round) {
            found = found + CountFound(map, keys);
        }
    });
}

// What was measured of one number of keys of one kind: seconds for a key in each round.
struct Row {
    std::string title;
    std::vector<double> ours;
    std::vector<double> standard;
    double ratio = 0;  // the median of those of the rounds
};

// Keys, and the same in another order.
struct KeySet {
    std::string title;
    Keys keys;
    Keys shuffled;
};

std::vector<KeySet> MakeKeySets() {
    std::vector<KeySet> sets;
    for (const KeyKind kind : {KeyKind::Name, KeyKind::Uri}) {
        for (const std::size_t count : kCounts) {
            const Keys keys = MakeKeys(kind, count);
            const char* const name = kind == KeyKind::Name ? "names, " : "URIs, ";
            sets.push_back({name + std::to_string(count), keys, Shuffled(keys)});
        }
    }
    return sets;
}

Row MeasureRow(HashKind hash, Operation operation, const KeySet& set, int rounds) {
    const Keys& keys = set.keys;
    const Keys& shuffled = set.shuffled;
    const std::size_t fills = std::max<std::size_t>(1, kKeysPerPair / keys.size());

    Xml::HashMap ourMap = MakeMap(hash);
    StandardMap standardMap;
    if (operation == Operation::Find) {
        Fill(ourMap, keys);
        Fill(standardMap, keys);
    }
    const auto timeOurs = [&] {
        return operation == Operation::Insert
                   ? TimeInsert([&] { return MakeMap(hash); }, keys, fills)
                   : TimeFind(ourMap, shuffled, fills);
    };
    const auto timeStandard = [&] {
        return operation == Operation::Insert
                   ? TimeInsert([] { return StandardMap(); }, keys, fills)
                   : TimeFind(standardMap, shuffled, fills);
    };

    Row row = {set.title, {}, {}, 0};
    const double allKeys = static_cast<double>(fills * keys.size());
    std::vector<double> ratios;
    bool oursFirst = true;
    for (int round = 0; round < rounds; ++round) {
        double ours = oursFirst ? timeOurs() : 0;
        const double standard = timeStandard();
        if (!oursFirst) ours = timeOurs();
        oursFirst = !oursFirst;
        ratios.push_back(standard / ours);
        row.ours.push_back(ours / allKeys);
        row.standard.push_back(standard / allKeys);
    }
    row.ratio = bench::Quantile(ratios, 0.5);
    return row;
}

// Something that is done with one of our maps.
struct Group {
    const char* title;
    HashKind hash;
    Operation operation;
};

constexpr Group kGroups[] = {
    {"insert, seeded", HashKind::Seeded, Operation::Insert},
    {"find, seeded", HashKind::Seeded, Operation::Find},
    {"insert, default", HashKind::Default, Operation::Insert},
    {"find, default", HashKind::Default, Operation::Find},
};

std::vector<Row> MeasureGroup(const Group& group, const std::vector<KeySet>& sets, int rounds) {
    std::vector<Row> rows;
    for (const KeySet& set : sets)
        rows.push_back(MeasureRow(group.hash, group.operation, set, rounds));
    return rows;
}

// Returns millions of keys in a second: the geometric mean of all rows, for each round.
std::vector<double> MeansOf(const std::vector<Row>& rows, std::vector<double> Row::*seconds) {
    std::vector<double> means;
    for (std::size_t round = 0; round < (rows.front().*seconds).size(); ++round) {
        std::vector<double> speeds;
        for (const Row& row : rows)
            speeds.push_back(1e-6 / (row.*seconds)[round]);
        means.push_back(bench::GeometricMean(speeds));
    }
    return means;
}

double MeanRatio(const std::vector<Row>& rows) {
    std::vector<double> ratios;
    for (const Row& row : rows)
        ratios.push_back(row.ratio);
    return bench::GeometricMean(ratios);
}

int Run(const bench::RunOptions& options) {
    std::vector<bench::TableRow> table = {{"work", "keys", "ns a key", "standard map", "ratio"}};
    bench::Figures figures = bench::FiguresOfThisBuild();
    figures.libraries = {{"espalier", bench::EspalierVersion()},
                         {"std::unordered_map of libstdc++", __VERSION__}};
    bench::Chart chart = {
        "hashmap", "Hash maps of 1,000 to 1,000,000 keys", "million keys a second", false, {}};
    const std::vector<KeySet> sets = MakeKeySets();
    for (const Group& group : kGroups) {
        const std::vector<Row> rows = MeasureGroup(group, sets, options.measure.rounds);
        for (const Row& row : rows) {
            table.push_back({group.title, row.title,
                             bench::FormatNumber(bench::Quantile(row.ours, 0.5) * 1e9, 1),
                             bench::FormatNumber(bench::Quantile(row.standard, 0.5) * 1e9, 1),
                             bench::FormatNumber(row.ratio, 2)});
        }
        table.push_back(
            {group.title, "geometric mean", "", "", bench::FormatNumber(MeanRatio(rows), 2)});
        chart.groups.push_back(
            {group.title,
             {bench::BarOfRounds("Xml::HashMap", true, MeansOf(rows, &Row::ours)),
              bench::BarOfRounds("std::unordered_map", false, MeansOf(rows, &Row::standard))}});
        figures.bars.push_back(
            {std::string("std::unordered_map, ") + group.title, kBar, MeanRatio(rows)});
    }
    figures.charts = {chart};
    return bench::Publish(bench::FormatTable(table, options.format), figures, options);
}

}  // namespace

int main(int argc, char** argv) {
    bench::RunOptions options;
    options.measure.rounds = kRounds;
    options.offersCheck = false;
    options.entries = {&bench::CorpusEntries().front()};  // none is read
    return bench::RunProgram({"espalier_hashmap_benchmark", kHelp, Run}, argc, argv, options);
}
