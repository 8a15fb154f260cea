// SPDX-License-Identifier: MIT
#include "dom/css/SelectorParser.h"

#include <espalier/dom/css/CssHelpers.h>

#include "dom/css/AsciiCase.h"
#include "dom/css/CssCharacters.h"
#include "dom/css/NthArgument.h"
#include "dom/css/Skipping.h"

#include <cstddef>
#include <cstring>
#include <string_view>
#include <utility>

namespace Dom::CSS::detail {

namespace {

class SelectorParser {
public:
    SelectorParser(const char* text, const NamespacePrefixes& prefixes, SelectorParts& parts)
        : position_(text), prefixes_(prefixes), parts_(parts) {}

    void ParseGroup();
    // Returns where the first error is, or null.
    const char* Fault() const { return fault_; }

private:
    using Kind = SelectorTest::Kind;

    bool ParseComplex();
    void DropSelector(const ComplexSelector& selector, std::size_t tests);
    void SkipToComma();
    Combinator ParseCombinator();
    bool ParseCompound(Compound& compound, bool isNegated);
    bool ParseType(Compound& compound, bool isNegated);
    bool ParseNamespace(NamespaceTest& test, bool isAttribute);
    const astring* FindNamespace(std::string_view prefix) const;
    bool ParseTests(Compound& compound, bool isNegated);
    bool ParseTest(SelectorTest& test, bool isNegated);
    bool ParseAttribute(SelectorTest& test);
    bool ParseOperator(SelectorTest& test);
    bool ParsePseudo(SelectorTest& test, bool isNegated);
    bool ParseArgument(SelectorTest& test);
    bool ParseNegation(SelectorTest& test);
    bool ParseText(astring& text);
    bool Take(char character);
    // Says where an error is, when that is not the place that has been reached.
    bool Refuse(const char* position);

    const char* position_;
    const NamespacePrefixes& prefixes_;
    SelectorParts& parts_;
    const char* fault_ = nullptr;    // the first error
    const char* refused_ = nullptr;  // what Refuse() was told for this selector
    ComplexSelector selector_;
};

bool SelectorParser::Take(char character) {
    if (*position_ != character) return false;
    ++position_;
    return true;
}

bool SelectorParser::Refuse(const char* position) {
    refused_ = position;
    return false;
}

void SelectorParser::ParseGroup() {
    do {
        refused_ = nullptr;
        const std::size_t tests = parts_.tests.size();
        selector_ = ComplexSelector();
        selector_.firstCompound = static_cast<unsigned>(parts_.compounds.size());
        CssHelpers::ParseWhitespace(position_);
        if (ParseComplex() && (*position_ == ',' || *position_ == '\0')) {
            parts_.selectors.push_back(selector_);
        } else {
            if (fault_ == nullptr) fault_ = refused_ != nullptr ? refused_ : position_;
            DropSelector(selector_, tests);
            SkipToComma();
        }
    } while (Take(','));
}

void SelectorParser::DropSelector(const ComplexSelector& selector, std::size_t tests) {
    parts_.compounds.resize(selector.firstCompound);
    parts_.tests.resize(tests);
}

void SelectorParser::SkipToComma() {
    while (*position_ != '\0' && *position_ != ',') {
        if (*position_ == '"' || *position_ == '\'') {
            SkipString(position_);
        } else if (*position_ != '(') {
            ++position_;
        } else if (!SkipParentheses(position_)) {
            position_ += std::strlen(position_);
        }
    }
}

// A compound in :not() lies between those of the selector, so the compounds are collected first.
bool SelectorParser::ParseComplex() {
    std::vector<Compound> compounds;
    Combinator combinator = Combinator::None;
    do {
        if (selector_.pseudoElement != PseudoClass::Unknown) return false;
        Compound compound;
        compound.combinator = combinator;
        if (!ParseCompound(compound, false)) return false;
        compounds.push_back(std::move(compound));
        combinator = ParseCombinator();
    } while (combinator != Combinator::None);
    selector_.firstCompound = static_cast<unsigned>(parts_.compounds.size());
    selector_.compoundCount = static_cast<unsigned>(compounds.size());
    for (Compound& compound : compounds)
        parts_.compounds.push_back(std::move(compound));
    return true;
}

Combinator SelectorParser::ParseCombinator() {
    const bool hasSpace = CssHelpers::ParseWhitespace(position_);
    Combinator combinator = Combinator::None;
    switch (*position_) {
    case '\0':
    case ',': return Combinator::None;
    case '>': combinator = Combinator::Child; break;
    case '+': combinator = Combinator::NextSibling; break;
    case '~': combinator = Combinator::LaterSibling; break;
    default: return hasSpace ? Combinator::Descendant : Combinator::None;
    }
    ++position_;
    CssHelpers::ParseWhitespace(position_);
    return combinator;
}

bool SelectorParser::ParseCompound(Compound& compound, bool isNegated) {
    const char* const begin = position_;
    return ParseType(compound, isNegated) && ParseTests(compound, isNegated) && position_ > begin;
}

const astring* SelectorParser::FindNamespace(std::string_view prefix) const {
    for (std::size_t i = prefixes_.size(); i > 0; --i) {
        if (prefixes_[i - 1].prefix == prefix) return &prefixes_[i - 1].uri;
    }
    return nullptr;
}

// Reads a prefix with its "|" (Selectors Level 3 sections 6.1.1 and 6.3.3), if there is one. That
// of "|=" is an operator.
bool SelectorParser::ParseNamespace(NamespaceTest& test, bool isAttribute) {
    const char* const begin = position_;
    astring prefix;
    const bool isAny = Take('*');
    if (!isAny) CssHelpers::ParseIdent(position_, prefix);
    if (*position_ != '|' || (isAttribute && position_[1] == '=')) {
        position_ = begin;
        return true;
    }
    const bool isNone = position_ == begin;
    ++position_;
    if (isAny) {
        test.kind = NamespaceTest::Kind::Any;
        return true;
    }
    test.kind = NamespaceTest::Kind::Is;
    if (isNone) return true;
    const astring* const uri = FindNamespace(prefix);
    if (uri == nullptr) return Refuse(begin);
    test.uri = *uri;
    return true;
}

// What has no type is of any, but within :not() it is not even of the namespace that types without
// a prefix have.
bool SelectorParser::ParseType(Compound& compound, bool isNegated) {
    const char* const begin = position_;
    if (!ParseNamespace(compound.space, false)) return false;
    const bool hasPrefix = position_ != begin;
    const bool isAny = Take('*');
    const bool isElement = !isAny && CssHelpers::ParseIdent(position_, compound.type);
    if (isElement) ++selector_.weight.elements;
    if (hasPrefix) return isAny || isElement;
    const astring* const uri = FindNamespace("");
    if (uri != nullptr && (isAny || isElement || !isNegated)) {
        compound.space = {NamespaceTest::Kind::Is, *uri};
    }
    return true;
}

// The compound in a :not() of this one puts its own tests first.
bool SelectorParser::ParseTests(Compound& compound, bool isNegated) {
    std::vector<SelectorTest> tests;
    while (*position_ == '#' || *position_ == '.' || *position_ == '[' || *position_ == ':') {
        if (selector_.pseudoElement != PseudoClass::Unknown) return false;
        SelectorTest test;
        if (!ParseTest(test, isNegated)) return false;
        if (selector_.pseudoElement == PseudoClass::Unknown) tests.push_back(std::move(test));
    }
    compound.firstTest = static_cast<unsigned>(parts_.tests.size());
    compound.testCount = static_cast<unsigned>(tests.size());
    for (SelectorTest& test : tests)
        parts_.tests.push_back(std::move(test));
    return true;
}

bool SelectorParser::ParseTest(SelectorTest& test, bool isNegated) {
    switch (*position_++) {
    case '#':
        test.kind = Kind::Id;
        ++selector_.weight.ids;
        return CssHelpers::ParseName(position_, test.name);
    case '.':
        test.kind = Kind::Class;
        ++selector_.weight.classes;
        return CssHelpers::ParseIdent(position_, test.name);
    case '[': ++selector_.weight.classes; return ParseAttribute(test);
    default: return ParsePseudo(test, isNegated);
    }
}

bool SelectorParser::ParseAttribute(SelectorTest& test) {
    CssHelpers::ParseWhitespace(position_);
    if (!ParseNamespace(test.space, true)) return false;
    if (!CssHelpers::ParseIdent(position_, test.name)) return false;
    CssHelpers::ParseWhitespace(position_);
    test.kind = Kind::HasAttribute;
    if (Take(']')) return true;
    if (!ParseOperator(test)) return false;
    CssHelpers::ParseWhitespace(position_);
    if (!ParseText(test.value)) return false;
    CssHelpers::ParseWhitespace(position_);
    return Take(']');
}

bool SelectorParser::ParseOperator(SelectorTest& test) {
    switch (*position_) {
    case '=': test.kind = Kind::AttributeIs; break;
    case '~': test.kind = Kind::AttributeHasWord; break;
    case '|': test.kind = Kind::AttributeIsDashed; break;
    case '^': test.kind = Kind::AttributeBeginsWith; break;
    case '$': test.kind = Kind::AttributeEndsWith; break;
    case '*': test.kind = Kind::AttributeContains; break;
    default: return false;
    }
    if (test.kind != Kind::AttributeIs) ++position_;
    return Take('=');
}

bool SelectorParser::ParseText(astring& text) {
    return CssHelpers::ParseString(position_, text) || CssHelpers::ParseIdent(position_, text);
}

bool SelectorParser::ParsePseudo(SelectorTest& test, bool isNegated) {
    const char* const begin = position_ - 1;
    const bool isElement = Take(':');
    astring name;
    if (!CssHelpers::ParseIdent(position_, name)) return false;
    for (char& character : name)
        character = ToLower(character);
    test.kind = Kind::Pseudo;
    test.pseudo = FindPseudoClass(name);
    if (test.pseudo == PseudoClass::Unknown) return Refuse(begin);
    if (IsPseudoElement(test.pseudo)) {
        if (isNegated) return Refuse(begin);
        selector_.pseudoElement = test.pseudo;
        ++selector_.weight.elements;
        return true;
    }
    if (isElement) return Refuse(begin);
    if (test.pseudo == PseudoClass::Not) {
        return isNegated ? Refuse(begin) : ParseNegation(test);
    }
    ++selector_.weight.classes;
    return ParseArgument(test);
}

bool SelectorParser::ParseArgument(SelectorTest& test) {
    switch (test.pseudo) {
    case PseudoClass::NthChild:
    case PseudoClass::NthLastChild:
    case PseudoClass::NthOfType:
    case PseudoClass::NthLastOfType:
        if (!Take('(')) return false;
        CssHelpers::ParseWhitespace(position_);
        if (!ParseNth(position_, test.step, test.offset)) return false;
        break;
    case PseudoClass::Lang:
    case PseudoClass::Contains:
        if (!Take('(')) return false;
        CssHelpers::ParseWhitespace(position_);
        if (!ParseText(test.value)) return false;
        break;
    default: return *position_ != '(';
    }
    CssHelpers::ParseWhitespace(position_);
    return Take(')');
}

bool SelectorParser::ParseNegation(SelectorTest& test) {
    if (!Take('(')) return false;
    CssHelpers::ParseWhitespace(position_);
    Compound compound;
    if (!ParseCompound(compound, true)) return false;
    CssHelpers::ParseWhitespace(position_);
    if (!Take(')')) return false;
    test.negated = static_cast<unsigned>(parts_.compounds.size());
    parts_.compounds.push_back(std::move(compound));
    return true;
}

}  // namespace

std::optional<std::size_t> ParseSelectors(const char* text, const NamespacePrefixes& prefixes,
                                          SelectorParts& parts) {
    SelectorParser parser(text, prefixes, parts);
    parser.ParseGroup();
    if (parser.Fault() == nullptr) return {};
    return static_cast<std::size_t>(parser.Fault() - text);
}

}  // namespace Dom::CSS::detail
