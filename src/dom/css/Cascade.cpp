// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CSSStyleDeclaration.h>

#include "dom/css/NameIndex.h"
#include "dom/css/PropertyMaking.h"
#include "dom/css/Weight.h"

#include <array>
#include <cstddef>
#include <memory>
#include <memory_resource>
#include <vector>

// How one declaration is merged into another.
//
// The properties of the declaration, and behind them those that are added, have places in an index
// of names. Until the end the list of the declaration stays as it is: those that are replaced are
// only taken out of the index. So the source may be the declaration itself, and nothing has changed
// when memory is out.

namespace Dom::CSS {

namespace {

using detail::Weight;

// CSS 2.1 section 6.4.1, with one more rule. Deliberate: with the same origin, what is written out
// wins over what comes from a shorthand, however specific that is.
bool Wins(const CSSPropertyImpl& property, Weight weight, const CSSPropertyImpl& over) {
    if (property.Important() != over.Important()) return property.Important();
    if (weight.origin == over.Origin()) {
        return (over.Shorthand() && !property.Shorthand()) ||
               weight.specificity >= over.Specificity();
    }
    return property.Important() ? weight.origin > over.Origin() : weight.origin < over.Origin();
}

class Merge {
public:
    explicit Merge(CSSStyleDeclaration::CSSPropertyList& target)
        : target_(target),
          memory_(buffer_.data(), buffer_.size()),
          index_(&memory_),
          added_(&memory_) {
        for (const CSSPropertyImpl* const property : target)
            index_.Add(property->Name());
    }

    void Add(const CSSPropertyImpl& property, Weight weight) {
        const unsigned place = index_.Find(property.Name());
        if (place != detail::NameIndex::kNone) {
            if (!Wins(property, weight, At(place))) return;
        }
        added_.push_back(detail::CopyProperty(
            property,
            {property.Important(), weight.origin, weight.specificity, property.Shorthand()}));
        index_.Add(added_.back()->Name());
        if (place != detail::NameIndex::kNone) index_.RemoveFirst(place);
    }

    // Makes the list what has been found.
    void Finish() {
        const unsigned length = target_.Length();
        try {
            for (const auto& property : added_)
                target_.AddItem(property.get());
        } catch (...) {
            while (target_.Length() > length)
                target_.RemoveItemAt(target_.Length() - 1);
            throw;
        }
        for (auto& property : added_)
            static_cast<void>(property.release());  // the list's now
        target_.RemoveItemsIf([this, place = 0U](CSSPropertyImpl* property) mutable {
            const bool isThere = index_.IsThere(place++);
            if (!isThere) delete property;
            return !isThere;
        });
    }

private:
    const CSSPropertyImpl& At(unsigned place) const {
        const unsigned length = target_.Length();
        return place < length ? *target_.Item(place) : *added_[place - length];
    }

    CSSStyleDeclaration::CSSPropertyList& target_;
    // Enough for most declarations, so that the memory of the heap is for properties alone.
    std::array<std::byte, 2048> buffer_;
    std::pmr::monotonic_buffer_resource memory_;
    detail::NameIndex index_;
    std::pmr::vector<std::unique_ptr<CSSPropertyImpl>> added_;  // at the places behind the list
};

}  // namespace

void CSSStyleDeclaration::Cascade(const CSSStyleDeclaration& source, CSSRule::RULE_ORIGIN origin,
                                  int specificity) {
    const Weight weight = detail::WeightOf(source.parentRule_, {origin, specificity});
    Merge merge(List());
    for (const CSSPropertyImpl* const property : source.Properties())
        merge.Add(*property, weight);
    merge.Finish();
}

}  // namespace Dom::CSS
