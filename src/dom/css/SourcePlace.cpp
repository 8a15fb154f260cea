// SPDX-License-Identifier: MIT
//
// Nothing is remembered of declarations: the text of their rule is read again.
#include <espalier/dom/css/CSSStyleDeclaration.h>
#include <espalier/dom/css/SourcePlace.h>

#include "dom/css/BlockScanner.h"
#include "dom/css/RuleMaking.h"
#include "dom/css/TextPlace.h"
#include "xml/SeededHash.h"

#include <algorithm>
#include <cstddef>
#include <unordered_map>

namespace Dom::CSS {

namespace {

using detail::ComponentScanner;
using detail::RuleMaking;
using detail::ScannedDeclaration;

struct HashOfText {
    std::size_t operator()(std::string_view text) const {
        return Xml::detail::SeededHash(text.data(), static_cast<unsigned>(text.size()));
    }
};

// The places of the properties with a name, in their order.
using Places = std::unordered_map<std::string_view, std::vector<SourcePlace>, HashOfText>;

// Reads a block, which makes properties, and notes where each of them is declared.
Places ReadPlaces(const char* block, detail::TextPlace begin, CSSStyleDeclaration& made) {
    ComponentScanner scanner(block);
    detail::BlockScanner declarations(scanner);
    ScannedDeclaration declaration;
    std::vector<SourcePlace> places;  // of what has been made
    const char* at = block;
    while (declarations.Next(declaration)) {
        if (declaration.fault != nullptr) continue;
        RuleMaking::AddDeclaration(made, declaration);
        begin = begin.Behind({at, static_cast<std::size_t>(declaration.begin - at)});
        at = declaration.begin;
        places.resize(made.Length(), {begin.line, begin.column});
    }
    Places byName;
    for (unsigned i = 0; i < made.Length(); ++i)
        byName[made.Properties().Item(i)->Name()].push_back(places[i]);
    return byName;
}

}  // namespace

std::vector<SourcePlace> PlacesOf(const CSSStyleDeclaration& declaration) {
    std::vector<SourcePlace> result(declaration.Length());
    const CSSRule* const rule = declaration.ParentRule();
    const char* const source = rule == nullptr ? nullptr : RuleMaking::SourceOf(*rule);
    if (source == nullptr) return result;
    ComponentScanner scanner(source);
    scanner.ScanTo(ComponentScanner::kOpeningBrace);
    if (scanner.IsAtEnd()) return result;
    const char* const block = scanner.At() + 1;
    const detail::TextPlace begin{rule->Place().line, rule->Place().column};
    CSSStyleDeclaration made(nullptr);  // has the names
    Places places =
        ReadPlaces(block, begin.Behind({source, static_cast<std::size_t>(block - source)}), made);
    std::unordered_map<std::string_view, std::size_t, HashOfText> seen;
    for (unsigned i = 0; i < declaration.Length(); ++i) {
        const std::string_view name = declaration.Properties().Item(i)->Name();
        const auto found = places.find(name);
        if (found == places.end()) continue;
        result[i] = found->second[std::min(seen[name]++, found->second.size() - 1)];
    }
    return result;
}

SourcePlace PlaceOf(const CSSStyleDeclaration& declaration, unsigned index) {
    if (index >= declaration.Length()) return {};
    return PlacesOf(declaration)[index];
}

}  // namespace Dom::CSS
