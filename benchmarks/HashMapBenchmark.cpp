// SPDX-License-Identifier: MIT

// Compares Xml::HashMap with std::unordered_map<std::string, void*>: inserting keys into an empty
// map, and finding every key in another order.
//
// Each iteration is a pair: both maps do the same work, one right after the other, in alternating
// order. A row shows the time of our map for one key, beside it that of the standard map, and the
// median of the ratios of the pairs (above 1 our map is faster). The geometric means over all
// sizes and kinds of keys follow at the end. "seeded" is the map as the library uses it for keys
// from input, "default" the map as it is without SetKey().

#include <espalier/xml/HashMap.h>

#include "xml/SeededHash.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <map>
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
    return TimeOf([&] {
        for (std::size_t round = 0; round < rounds; ++round) {
            benchmark::DoNotOptimize(CountFound(map, keys));
        }
    });
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

// The median ratio of each row, by hash and operation; kept for the means at the end.
std::map<std::string, std::vector<double>> ratiosByGroup;

void RunPairs(benchmark::State& state, HashKind hash, Operation operation, KeyKind kind,
              const std::string& group) {
    const auto count = static_cast<std::size_t>(state.range(0));
    const Keys keys = MakeKeys(kind, count);
    const Keys shuffled = Shuffled(keys);
    const std::size_t rounds = std::max<std::size_t>(1, kKeysPerPair / count);

    Xml::HashMap ourMap = MakeMap(hash);
    StandardMap standardMap;
    if (operation == Operation::Find) {
        Fill(ourMap, keys);
        Fill(standardMap, keys);
    }
    const auto timeOurs = [&] {
        return operation == Operation::Insert
                   ? TimeInsert([&] { return MakeMap(hash); }, keys, rounds)
                   : TimeFind(ourMap, shuffled, rounds);
    };
    const auto timeStandard = [&] {
        return operation == Operation::Insert
                   ? TimeInsert([] { return StandardMap(); }, keys, rounds)
                   : TimeFind(standardMap, shuffled, rounds);
    };

    std::vector<double> ratios;
    double standardSeconds = 0;
    bool oursFirst = true;
    for ([[maybe_unused]] auto _ : state) {
        double ours = oursFirst ? timeOurs() : 0;
        const double standard = timeStandard();
        if (!oursFirst) ours = timeOurs();
        oursFirst = !oursFirst;
        ratios.push_back(standard / ours);
        standardSeconds += standard;
        state.SetIterationTime(ours / static_cast<double>(rounds * count));
    }
    const double ratio = Median(ratios);
    state.counters["standard_ns"] =
        1e9 * standardSeconds / static_cast<double>(ratios.size() * rounds * count);
    state.counters["ratio"] = ratio;
    ratiosByGroup[group].push_back(ratio);
}

void RegisterAll() {
    const struct {
        HashKind kind;
        const char* name;
    } hashes[] = {{HashKind::Seeded, "seeded"}, {HashKind::Default, "default"}};
    const struct {
        Operation kind;
        const char* name;
    } operations[] = {{Operation::Insert, "insert"}, {Operation::Find, "find"}};
    const struct {
        KeyKind kind;
        const char* name;
    } keyKinds[] = {{KeyKind::Name, "names"}, {KeyKind::Uri, "uris"}};

    for (const auto& hash : hashes) {
        for (const auto& operation : operations) {
            for (const auto& keys : keyKinds) {
                const std::string group = std::string(hash.name) + "/" + operation.name;
                benchmark::RegisterBenchmark((group + "/" + keys.name).c_str(), RunPairs, hash.kind,
                                             operation.kind, keys.kind, group)
                    ->Arg(1000)
                    ->Arg(10000)
                    ->Arg(100000)
                    ->Arg(1000000)
                    ->UseManualTime()
                    ->Iterations(11)
                    ->Unit(benchmark::kNanosecond);
            }
        }
    }
}

void PrintMeans() {
    std::printf("\nGeometric mean of the ratios (standard map / our map):\n");
    for (const auto& [group, ratios] : ratiosByGroup) {
        double logs = 0;
        for (const double ratio : ratios) {
            logs += std::log(ratio);
        }
        std::printf("  %-16s %.2f\n", group.c_str(),
                    std::exp(logs / static_cast<double>(ratios.size())));
    }
}

}  // namespace

int main(int argc, char** argv) {
    RegisterAll();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    PrintMeans();
    return 0;
}
