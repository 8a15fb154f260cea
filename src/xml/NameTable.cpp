// SPDX-License-Identifier: MIT
#include "xml/NameTable.h"

#include "xml/SeededHash.h"

#include <algorithm>
#include <cstring>

namespace Xml::detail {

namespace {

constexpr std::size_t kFirstSlots = 256;

// More short names than vocabularies have; about ten megabytes. Long ones weigh more.
constexpr std::size_t kLarge = 65536;

// What a name takes in memory, in short names.
std::size_t WeightOf(std::string_view text) {
    constexpr std::size_t kTextOfOne = 64;  // the text stands there twice, whole and in its parts
    return 1 + text.size() / kTextOfOne;
}

constexpr std::size_t kMedium = std::size_t{2} * PackedName::kMostBytes;

bool IsShort(std::string_view text) { return text.size() <= PackedName::kMostBytes; }

PackedName Pack(std::string_view text) {
    PackedName packed;
    std::memcpy(&packed, text.data(), std::min(text.size(), sizeof packed));
    return packed;
}

PackedName PackEnd(std::string_view text) {
    return IsShort(text) ? PackedName{} : Pack(text.substr(text.size() - sizeof(PackedName)));
}

// 64 bits that differ from process to process, made of the seeded hashes of two short texts.
std::uint64_t MakeSeed(const char* first, const char* second) {
    return std::uint64_t{SeededHash(first, 1)} << 32 | SeededHash(second, 1);
}

NameMeaning MeaningOf(const XmlName& name) {
    if (name.qualified == "xmlns") return NameMeaning::DefaultNamespace;
    if (name.qualified == "xml:space") return NameMeaning::Space;
    if (name.qualified == "xml:lang") return NameMeaning::Language;
    return name.prefix == "xmlns" ? NameMeaning::Namespace : NameMeaning::Ordinary;
}

}  // namespace

NameTable::NameTable()
    : seed_{MakeSeed("a", "b"), MakeSeed("c", "d")},
      short_(kFirstSlots),
      long_(kFirstSlots),
      shortSize_(kFirstSlots),
      longSize_(kFirstSlots),
      trimAt_(kLarge) {}

NameTable::~NameTable() = default;

unsigned NameTable::LongHash(std::string_view text) const {
    if (text.size() > kMedium) {
        return SeededHash(text.data(), static_cast<unsigned>(text.size()));
    }
    return static_cast<unsigned>(MediumHash(Pack(text), PackEnd(text)));
}

XmlName* NameTable::Intern(std::string_view text, int colon) {
    if (IsShort(text)) {
        XmlName* const found = FindShort(Pack(text));
        return found != nullptr ? found : Add(text, colon);
    }
    const unsigned hash = LongHash(text);
    const std::size_t mask = longSize_ - 1;
    for (std::size_t i = hash & mask; long_[i].name != nullptr; i = (i + 1) & mask) {
        if (long_[i].hash == hash && long_[i].name->qualified == text) return long_[i].name;
    }
    return Add(text, colon);
}

XmlName* NameTable::Add(std::string_view text, int colon) {
    auto name = std::make_unique<XmlName>();
    name->qualified = text;
    name->local = text;
    name->packed = Pack(text);
    name->packedEnd = PackEnd(text);
    if (colon > 0) {
        const auto split = static_cast<std::size_t>(colon);
        name->prefix = text.substr(0, split);
        name->local = text.substr(split + 1);
        name->prefixName = Intern(name->prefix, -1);
    }
    name->meaning = MeaningOf(*name);
    name->isUnusual = name->meaning != NameMeaning::Ordinary || name->prefixName != nullptr;
    const bool isFull =
        IsShort(text) ? 2 * (shortCount_ + 1) > shortSize_ : 2 * (longCount_ + 1) > longSize_;
    if (isFull) {
        if (IsShort(text)) {
            short_.resize(2 * shortSize_);
            shortSize_ = short_.size();
        } else {
            long_.resize(2 * longSize_);
            longSize_ = long_.size();
        }
        Rebuild();
    }
    names_.push_back(std::move(name));
    weight_ += WeightOf(text);
    Place(names_.back().get());
    return names_.back().get();
}

void NameTable::Place(XmlName* name) {
    if (IsShort(name->qualified)) {
        PlaceShort(name);
    } else {
        PlaceLong(name);
    }
}

void NameTable::PlaceShort(XmlName* name) {
    const std::size_t mask = shortSize_ - 1;
    std::size_t i = ShortHash(name->packed) & mask;
    while (short_[i].name != nullptr)
        i = (i + 1) & mask;
    short_[i] = ShortSlot{name->packed, name};
    ++shortCount_;
}

void NameTable::PlaceLong(XmlName* name) {
    const unsigned hash = LongHash(name->qualified);
    const std::size_t mask = longSize_ - 1;
    std::size_t i = hash & mask;
    while (long_[i].name != nullptr)
        i = (i + 1) & mask;
    long_[i] = LongSlot{hash, name};
    ++longCount_;
}

// Places all names again, after the tables or the names have changed.
void NameTable::Rebuild() {
    std::fill(short_.begin(), short_.end(), ShortSlot{});
    std::fill(long_.begin(), long_.end(), LongSlot{});
    shortCount_ = longCount_ = 0;
    for (const auto& name : names_)
        Place(name.get());
}

void NameTable::Trim() {
    for (const auto& name : names_) {
        if (name->kept && name->prefixName != nullptr) name->prefixName->kept = true;
    }
    std::erase_if(names_, [](const auto& name) { return !name->kept; });
    weight_ = 0;
    for (const auto& name : names_) {
        name->kept = false;
        weight_ += WeightOf(name->qualified);
    }
    trimAt_ = std::max(kLarge, 2 * weight_);
    Rebuild();
}

void NameTable::Clear() {
    // New tables: those that have grown would take long to empty for each small document.
    std::vector<ShortSlot> shortSlots(kFirstSlots);
    std::vector<LongSlot> longSlots(kFirstSlots);
    short_.swap(shortSlots);
    long_.swap(longSlots);
    shortSize_ = longSize_ = kFirstSlots;
    shortCount_ = longCount_ = 0;
    names_.clear();
    weight_ = 0;
    trimAt_ = kLarge;
}

}  // namespace Xml::detail
