// SPDX-License-Identifier: MIT
#include "dom/css/CompiledSelectors.h"

#include "dom/NodeAccess.h"
#include "dom/css/CompoundMatch.h"
#include "dom/css/SelectorParser.h"
#include "dom/css/SelectorSubject.h"

#include <algorithm>
#include <optional>

namespace Dom::CSS::detail {

namespace {

using Dom::detail::NodeAccess;

const Element* AsElement(const Node* node) {
    return node != nullptr && node->NodeType() == Node::ELEMENT_NODE
               ? static_cast<const Element*>(node)
               : nullptr;
}

const Element* ParentOf(const Element& element) { return AsElement(element.ParentNode()); }

const Element* PreviousOf(const Element& element) {
    const Node* node = NodeAccess::Previous(element);
    while (node != nullptr && node->NodeType() != Node::ELEMENT_NODE)
        node = NodeAccess::Previous(*node);
    return AsElement(node);
}

/// Compares a selector with an element from right to left.
///
/// Of the ancestors, or earlier siblings, that fit a compound the nearest is taken first. When what
/// stands to the left does not fit there, the next one is tried; but nothing further right is tried
/// again, since an element further away leaves fewer of them than that one did. So no combination
/// of ancestors is looked at twice.
class ComplexMatch {
public:
    ComplexMatch(const SelectorParts& parts, const ComplexSelector& selector,
                 const Element& element)
        : parts_(parts),
          first_(selector.firstCompound),
          index_(selector.firstCompound + selector.compoundCount - 1),
          element_(&element) {}

    bool Run();

private:
    using Step = const Element* (*)(const Element&);

    // A compound that an element further away may fit as well.
    struct Choice {
        unsigned compound = 0;
        const Element* element = nullptr;  // null when there is none
    };

    bool Fits(unsigned compound, const Element& element) const {
        return MatchesCompound(parts_, parts_.compounds[compound], SelectorSubject(element));
    }
    bool Advance();
    bool TakeNext(const Element* next);
    bool TakeNearest(unsigned compound, const Element* next, Step step, Choice& choice);
    bool Retry();

    const SelectorParts& parts_;
    unsigned first_;  // the left compound
    unsigned index_;  // the one that element_ fits
    const Element* element_;
    Choice ancestor_;
    Choice sibling_;
};

bool ComplexMatch::Run() {
    if (!Fits(index_, *element_)) return false;
    while (index_ > first_) {
        if (!Advance() && !Retry()) return false;
    }
    return true;
}

// Finds an element for the compound to the left.
bool ComplexMatch::Advance() {
    switch (parts_.compounds[index_].combinator) {
    case Combinator::Child: sibling_ = {}; return TakeNext(ParentOf(*element_));
    case Combinator::NextSibling: return TakeNext(PreviousOf(*element_));
    case Combinator::LaterSibling:
        return TakeNearest(index_ - 1, PreviousOf(*element_), PreviousOf, sibling_);
    case Combinator::Descendant:
        sibling_ = {};
        return TakeNearest(index_ - 1, ParentOf(*element_), ParentOf, ancestor_);
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

bool ComplexMatch::TakeNearest(unsigned compound, const Element* next, Step step, Choice& choice) {
    while (next != nullptr && !Fits(compound, *next))
        next = step(*next);
    choice = {compound, next};
    if (next == nullptr) return false;
    index_ = compound;
    element_ = next;
    return true;
}

bool ComplexMatch::Retry() {
    if (sibling_.element != nullptr &&
        TakeNearest(sibling_.compound, PreviousOf(*sibling_.element), PreviousOf, sibling_)) {
        return true;
    }
    return ancestor_.element != nullptr &&
           TakeNearest(ancestor_.compound, ParentOf(*ancestor_.element), ParentOf, ancestor_);
}

}  // namespace

CompiledSelectors::CompiledSelectors(const astring& text, const NamespacePrefixes& prefixes)
    : fault_(ParseSelectors(text.c_str(), prefixes, parts_)) {}

bool CompiledSelectors::MatchOne(const ComplexSelector& selector, const Element& element) const {
    return ComplexMatch(parts_, selector, element).Run();
}

bool CompiledSelectors::Match(const Element& element, std::string_view pseudo) const {
    const std::optional<PseudoClass> part = PartOf(pseudo);
    return part && std::any_of(parts_.selectors.begin(), parts_.selectors.end(),
                               [&](const ComplexSelector& selector) {
                                   return selector.pseudoElement == *part &&
                                          MatchOne(selector, element);
                               });
}

bool CompiledSelectors::Match(std::string_view name, const astring& id,
                              const astring& classes) const {
    const SelectorSubject subject(name, id, classes);
    return std::any_of(
        parts_.selectors.begin(), parts_.selectors.end(), [&](const ComplexSelector& selector) {
            return selector.compoundCount == 1 && selector.pseudoElement == PseudoClass::Unknown &&
                   MatchesCompound(parts_, parts_.compounds[selector.firstCompound], subject);
        });
}

}  // namespace Dom::CSS::detail
