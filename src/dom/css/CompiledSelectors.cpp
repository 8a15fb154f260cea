// SPDX-License-Identifier: MIT
#include "dom/css/CompiledSelectors.h"

#include "dom/css/ComplexMatch.h"
#include "dom/css/CompoundMatch.h"
#include "dom/css/SelectorParser.h"
#include "dom/css/SelectorSubject.h"
#include "dom/css/WalkAnswers.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <optional>

namespace Dom::CSS::detail {

namespace {

std::uint64_t NextSerial() {
    static std::atomic<std::uint64_t> last = kLanguageAsker;
    return ++last;
}

}  // namespace

CompiledSelectors::CompiledSelectors(const astring& text, const NamespacePrefixes& prefixes)
    : serial_(NextSerial()), fault_(ParseSelectors(text.c_str(), prefixes, parts_)) {}

bool CompiledSelectors::MatchOne(const ComplexSelector& selector, const Element& element) const {
    return MatchesComplex(parts_, serial_, selector, element);
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
