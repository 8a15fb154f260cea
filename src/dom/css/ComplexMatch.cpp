// SPDX-License-Identifier: MIT
#include "dom/css/ComplexMatch.h"

#include "dom/css/CompoundMatch.h"
#include "dom/css/Relatives.h"
#include "dom/css/SelectorSubject.h"
#include "dom/css/WalkAnswers.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace Dom::CSS::detail {

namespace {

/// Compares a selector with an element from right to left.
///
/// Of the ancestors, or earlier siblings, that fit a compound the nearest is taken first. When what
/// stands to the left does not fit there, the next one is tried; but nothing further right is tried
/// again, since an element further away leaves fewer of them than that one did. So no combination
/// of ancestors is looked at twice.
///
/// What a long walk comes to, with all that stands to the left, is remembered for the elements that
/// are compared later: they have mostly the same ancestors and siblings.
class ComplexMatch {
public:
    /// \param element fits the compound on the right
    ComplexMatch(const SelectorParts& parts, std::uint64_t serial, const ComplexSelector& selector,
                 const Element& element)
        : parts_(parts),
          serial_(serial),
          first_(selector.firstCompound),
          index_(selector.firstCompound + selector.compoundCount - 1),
          element_(&element) {}

    bool Run();

private:
    // A walk for an element that fits a compound.
    struct Walk {
        WalkStep step = nullptr;
        const Element* start = nullptr;
        const Element* at = nullptr;  // where it has stopped, and may go on; null at its end
        std::size_t passed = 0;       // elements before that
        unsigned compound = 0;
    };

    bool Fits(unsigned compound, const Element& element) const {
        return MatchesCompound(parts_, parts_.compounds[compound], SelectorSubject(element));
    }
    bool Advance();
    bool TakeNext(const Element* next);
    bool Begin(Walk& walk, WalkStep step);
    bool GoTo(Walk& walk, const Element* next);
    bool GoOn(Walk& walk);
    bool TakeKnown(Walk& walk, bool fits);
    bool Retry();

    void Keep(Walk& walk);
    void Remember(const Walk& walk, bool fits) const;
    void RememberKept(std::size_t from, bool fits);

    const SelectorParts& parts_;
    std::uint64_t serial_;
    unsigned first_;  // the left compound
    unsigned index_;  // the one that element_ fits
    const Element* element_;
    Walk ancestor_;
    Walk sibling_;
    // Long walks that others have followed. There may be more, which are not remembered.
    std::array<Walk, 4> kept_;
    std::size_t keptCount_ = 0;
    std::size_t keptBefore_ = 0;   // of these, when ancestor_ began
    std::optional<bool> outcome_;  // as soon as it is known
};

bool ComplexMatch::Run() {
    while (!outcome_ && index_ > first_) {
        if (!Advance() && !Retry()) outcome_ = false;
    }
    const bool fits = outcome_.value_or(true);
    RememberKept(0, fits);
    Remember(sibling_, fits);
    Remember(ancestor_, fits);
    return fits;
}

// Finds an element for the compound to the left.
bool ComplexMatch::Advance() {
    switch (parts_.compounds[index_].combinator) {
    case Combinator::Child: Keep(sibling_); return TakeNext(ParentOf(*element_));
    case Combinator::NextSibling: return TakeNext(PreviousOf(*element_));
    case Combinator::LaterSibling: Keep(sibling_); return Begin(sibling_, PreviousOf);
    case Combinator::Descendant:
        Keep(sibling_);
        Keep(ancestor_);
        keptBefore_ = keptCount_;
        return Begin(ancestor_, ParentOf);
    case Combinator::None: break;
    }
    return false;
}

bool ComplexMatch::TakeNext(const Element* next) {
    if (next == nullptr || !Fits(index_ - 1, *next)) return false;
    --index_;
    element_ = next;
    return true;
}

bool ComplexMatch::Begin(Walk& walk, WalkStep step) {
    const Element* const next = step(*element_);
    walk = {step, next, nullptr, 0, index_ - 1};
    return GoTo(walk, next);
}

bool ComplexMatch::GoTo(Walk& walk, const Element* next) {
    for (; next != nullptr; next = walk.step(*next), ++walk.passed) {
        if (walk.passed >= kShortWalk) {
            const auto known = RememberedAnswer({serial_, walk.compound}, *next);
            if (known) return TakeKnown(walk, *known != nullptr);
        }
        if (Fits(walk.compound, *next)) break;
    }
    walk.at = next;
    if (next == nullptr) return false;
    index_ = walk.compound;
    element_ = next;
    return true;
}

bool ComplexMatch::GoOn(Walk& walk) {
    if (walk.at == nullptr) return false;
    ++walk.passed;
    return GoTo(walk, walk.step(*walk.at));
}

// No other ancestor is tried when a walk along ancestors fails; one may be when one along siblings
// does.
bool ComplexMatch::TakeKnown(Walk& walk, bool fits) {
    walk.at = nullptr;
    if (!fits && &walk == &sibling_) return false;
    outcome_ = fits;
    return true;
}

bool ComplexMatch::Retry() {
    if (GoOn(sibling_)) return true;
    if (ancestor_.at == nullptr) return false;
    RememberKept(keptBefore_, false);
    Remember(sibling_, false);
    sibling_ = {};
    return GoOn(ancestor_);
}

void ComplexMatch::Keep(Walk& walk) {
    if (walk.passed > kShortWalk && keptCount_ < kept_.size()) kept_[keptCount_++] = walk;
    walk = {};
}

void ComplexMatch::Remember(const Walk& walk, bool fits) const {
    if (walk.start == nullptr) return;
    RememberAnswer({serial_, walk.compound}, *walk.start, walk.step, walk.passed,
                   fits ? walk.start : nullptr);
}

void ComplexMatch::RememberKept(std::size_t from, bool fits) {
    while (keptCount_ > from)
        Remember(kept_[--keptCount_], fits);
}

}  // namespace

bool MatchesComplex(const SelectorParts& parts, std::uint64_t serial,
                    const ComplexSelector& selector, const Element& element) {
    const unsigned last = selector.firstCompound + selector.compoundCount - 1;
    if (!MatchesCompound(parts, parts.compounds[last], SelectorSubject(element))) return false;
    return selector.compoundCount == 1 || ComplexMatch(parts, serial, selector, element).Run();
}

}  // namespace Dom::CSS::detail
