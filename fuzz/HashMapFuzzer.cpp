// SPDX-License-Identifier: MIT

// Plays a script of changes on two hash maps, which may share a table, and on two standard maps,
// and compares them.
//
// The first byte sets the maps up: bit 0 automatic growth, bit 1 value hooks, bit 2 a hash with few
// results, bits 3 to 5 the number of buckets as a power of two. Each step then is a byte for what
// to do (bit 7 chooses the map) and, where a key is wanted, a byte for its length followed by its
// bytes.

#include <espalier/xml/HashIterator.h>
#include <espalier/xml/HashMap.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <unordered_map>
#include <utility>

namespace {

using Reference = std::unordered_map<std::string, std::uintptr_t>;

struct Pair {
    Xml::HashMap map;
    Reference reference;
};

// Ends the run, so that the fuzzer reports the input.
void Require(bool holds) {
    if (!holds) std::abort();
}

class Script {
public:
    Script(const std::uint8_t* data, std::size_t size) : next_(data), end_(data + size) {}

    bool HasMore() const { return next_ != end_; }
    unsigned TakeByte() { return HasMore() ? *next_++ : 0; }

    // A key of 1 to 255 bytes, or what is left of one.
    std::string TakeKey() {
        std::size_t length = TakeByte();
        const auto left = static_cast<std::size_t>(end_ - next_);
        if (length > left) length = left;
        std::string key(next_, next_ + length);
        next_ += length;
        return key.empty() ? "empty" : key;
    }

private:
    const std::uint8_t* next_;
    const std::uint8_t* end_;
};

unsigned LengthOf(const std::string& key) { return static_cast<unsigned>(key.size()); }

unsigned HashToFewResults(const char* key, unsigned length) {
    return (static_cast<unsigned char>(*key) + length) % 5;
}

// A value is a number in a block of its own with the hooks, and the number itself without.
void* CopyBlock(XmlHashMap*, void* value) {
    return new std::uintptr_t(*static_cast<std::uintptr_t*>(value));
}
void FreeBlock(XmlHashMap*, void* value) { delete static_cast<std::uintptr_t*>(value); }

std::uintptr_t NumberOf(bool hasHooks, void* value) {
    return hasHooks ? *static_cast<std::uintptr_t*>(value)
                    : reinterpret_cast<std::uintptr_t>(value);
}

void Compare(const Pair& pair, bool hasHooks) {
    Require(pair.map.GetItemCount() == pair.reference.size());
    std::size_t walked = 0;
    Xml::HashIterator iterator;
    for (Xml::HashItem item = iterator.First(pair.map); !item.IsNull(); item = iterator.Next()) {
        const auto found = pair.reference.find(std::string(item.GetKey(), item.GetKeyLength()));
        Require(found != pair.reference.end());
        Require(NumberOf(hasHooks, item.GetValue()) == found->second);
        ++walked;
    }
    Require(walked == pair.reference.size());
    for (const auto& [key, number] : pair.reference) {
        void* const value = pair.map.Find(key.data(), LengthOf(key));
        Require(value != nullptr && NumberOf(hasHooks, value) == number);
    }
}

void Insert(Pair& pair, const std::string& key, std::uintptr_t number, bool hasHooks) {
    // The hook copies what it is given, so it is given a block too.
    std::uintptr_t block = number;
    void* const value = hasHooks ? &block : reinterpret_cast<void*>(number);
    pair.map.Insert(key.data(), LengthOf(key), value);
    pair.reference[key] = number;
}

void Remove(Pair& pair, const std::string& key, bool asItem) {
    if (asItem) {
        Xml::HashItem item = pair.map.FindItem(key.data(), LengthOf(key));
        pair.map.Remove(item);
    } else {
        pair.map.Remove(key.data(), LengthOf(key));
    }
    pair.reference.erase(key);
}

void Step(Script& script, Pair& pair, Pair& other, unsigned operation, std::uintptr_t number,
          bool hasHooks) {
    switch (operation) {
    default: Insert(pair, script.TakeKey(), number, hasHooks); break;
    case 1: Remove(pair, script.TakeKey(), false); break;
    case 2: Remove(pair, script.TakeKey(), true); break;
    case 3:
        pair.map = other.map;
        pair.reference = other.reference;
        break;
    case 4: pair.map.GrowTable(); break;
    case 5:
        pair.map.Clear();
        pair.reference.clear();
        break;
    case 6: Compare(pair, hasHooks); break;
    case 7:  // many keys at once, so that tables become large
        for (unsigned count = script.TakeByte(); count > 0; --count) {
            Insert(pair, "key" + std::to_string(count), number, hasHooks);
        }
        break;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Script script(data, size);
    const unsigned setting = script.TakeByte();
    const bool hasHooks = (setting & 2) != 0;
    const auto makePair = [setting, hasHooks] {
        Pair pair{Xml::HashMap(1u << (setting >> 3 & 7), (setting & 1) != 0), {}};
        if ((setting & 4) != 0) pair.map.SetKey(HashToFewResults, XmlKeyCompareBinary);
        if (hasHooks) pair.map.SetValueAllocator(CopyBlock, FreeBlock);
        return pair;
    };
    Pair pairs[] = {makePair(), makePair()};
    unsigned growths = 0;
    for (std::uintptr_t number = 1; script.HasMore(); ++number) {
        const unsigned what = script.TakeByte();
        const unsigned operation = what & 15;
        if (operation == 4 && ++growths > 6) continue;  // large bucket arrays only cost time
        const unsigned chosen = what >> 7;
        Step(script, pairs[chosen], pairs[1 - chosen], operation, number, hasHooks);
    }
    for (const Pair& pair : pairs) {
        Compare(pair, hasHooks);
    }
    return 0;
}
