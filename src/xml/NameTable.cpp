// SPDX-License-Identifier: MIT
#include "xml/NameTable.h"

#include "xml/SeededHash.h"

#include <algorithm>
#include <cstring>

namespace Xml::detail {

namespace {

constexpr std::size_t kFirstSlots = 256;

// More names than vocabularies have; about ten megabytes.
constexpr std::size_t kLarge = 65536;

std::uint32_t Hash(std::string_view text) {
    return SeededHash(text.data(), static_cast<unsigned>(text.size()));
}

NameMeaning MeaningOf(const XmlName& name) {
    if (name.qualified == "xmlns") return NameMeaning::DefaultNamespace;
    if (name.qualified == "xml:space") return NameMeaning::Space;
    if (name.qualified == "xml:lang") return NameMeaning::Language;
    return name.prefix == "xmlns" ? NameMeaning::Namespace : NameMeaning::Ordinary;
}

}  // namespace

NameTable::NameTable() : slots_(kFirstSlots), trimAt_(kLarge) {}

NameTable::~NameTable() = default;

XmlName* NameTable::Intern(std::string_view text, int colon) {
    const std::uint32_t hash = Hash(text);
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t i = hash & mask; slots_[i].name != nullptr; i = (i + 1) & mask) {
        if (slots_[i].hash == hash && slots_[i].name->qualified == text) return slots_[i].name;
    }
    return Add(text, colon, hash);
}

XmlName* NameTable::Add(std::string_view text, int colon, std::uint32_t hash) {
    auto name = std::make_unique<XmlName>();
    name->qualified = text;
    name->local = text;
    name->hash = hash;
    if (colon > 0) {
        const auto split = static_cast<std::size_t>(colon);
        name->prefix = text.substr(0, split);
        name->local = text.substr(split + 1);
        name->prefixName = Intern(name->prefix, -1);
    }
    name->meaning = MeaningOf(*name);
    if (2 * (count_ + 1) > slots_.size()) Rebuild(2 * slots_.size());
    names_.push_back(std::move(name));
    ++count_;
    Place(names_.back().get());
    return names_.back().get();
}

void NameTable::Place(XmlName* name) {
    const std::size_t mask = slots_.size() - 1;
    std::size_t i = name->hash & mask;
    while (slots_[i].name != nullptr) i = (i + 1) & mask;
    slots_[i] = Slot{name->hash, name};
}

void NameTable::Rebuild(std::size_t slots) {
    slots_.assign(slots, Slot{});
    for (const auto& name : names_)
        Place(name.get());
}

void NameTable::Trim() {
    for (const auto& name : names_) {
        if (name->kept && name->prefixName != nullptr) name->prefixName->kept = true;
    }
    std::erase_if(names_, [](const auto& name) { return !name->kept; });
    for (const auto& name : names_)
        name->kept = false;
    count_ = names_.size();
    trimAt_ = std::max(kLarge, 2 * count_);
    Rebuild(slots_.size());
}

void NameTable::Clear() {
    slots_.assign(kFirstSlots, Slot{});
    names_.clear();
    count_ = 0;
    trimAt_ = kLarge;
}

}  // namespace Xml::detail
