// SPDX-License-Identifier: MIT
#include "dom/css/WalkAnswers.h"

#include "dom/NodeAccess.h"

#include <array>
#include <memory>
#include <new>

// Without this a selector such as "h1 ~ p" looks, for each of a hundred thousand paragraphs, at all
// that stand before it.

namespace Dom::CSS::detail {

namespace {

using Dom::detail::DocumentData;
using Dom::detail::NodeAccess;

// An answer holds for the document of this serial number as long as it has the same stamp.
struct KnownAnswer {
    std::uint64_t document = 0;  // 0 for a place that is free
    std::uint64_t stamp = 0;
    std::uint64_t asker = 0;
    const Element* element = nullptr;
    const Element* answer = nullptr;
    unsigned part = 0;

    bool IsFor(const KnownAnswer& other) const {
        return element == other.element && asker == other.asker && part == other.part &&
               document == other.document && stamp == other.stamp;
    }
};

// Each answer has one place; who comes later takes it.
constexpr std::size_t kPlaces = 4096;
using KnownAnswers = std::array<KnownAnswer, kPlaces>;
thread_local std::unique_ptr<KnownAnswers> answers;

KnownAnswer& PlaceFor(const KnownAnswer& key) {
    constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15;  // of the golden ratio
    constexpr unsigned kPlaceBits = 12;
    static_assert(std::size_t{1} << kPlaceBits == kPlaces);
    const std::uint64_t address = reinterpret_cast<std::uintptr_t>(key.element) / sizeof(void*);
    const std::uint64_t mixed = ((address * kSpread) ^ key.asker) * kSpread + key.part;
    return (*answers)[(mixed * kSpread) >> (64 - kPlaceBits)];
}

// What an answer is remembered by.
KnownAnswer KeyOf(WalkQuestion question, const Element& element) {
    const DocumentData& data = NodeAccess::Data(element);
    return {data.serial,  data.stamp + data.valueChanges, question.asker, &element, nullptr,
            question.part};
}

}  // namespace

std::optional<const Element*> RememberedAnswer(WalkQuestion question, const Element& element) {
    if (answers == nullptr) return std::nullopt;
    const KnownAnswer key = KeyOf(question, element);
    const KnownAnswer& place = PlaceFor(key);
    if (!place.IsFor(key)) return std::nullopt;
    return place.answer;
}

void RememberAnswer(WalkQuestion question, const Element& start, WalkStep step, std::size_t passed,
                    const Element* answer) noexcept {
    if (passed <= kShortWalk) return;
    if (answers == nullptr) answers.reset(new (std::nothrow) KnownAnswers);
    if (answers == nullptr) return;
    const Element* element = &start;
    std::size_t wanted = kShortWalk;
    for (std::size_t at = 0; at < passed; ++at, element = step(*element)) {
        if (at != wanted) continue;
        KnownAnswer known = KeyOf(question, *element);
        known.answer = answer;
        PlaceFor(known) = known;
        wanted *= 2;
    }
}

}  // namespace Dom::CSS::detail
