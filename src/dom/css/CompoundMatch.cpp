// SPDX-License-Identifier: MIT
#include "dom/css/CompoundMatch.h"

#include "dom/css/CssCharacters.h"
#include "dom/css/PseudoClassMatch.h"

#include <string_view>

namespace Dom::CSS::detail {

namespace {

using Kind = SelectorTest::Kind;

// Tells whether a text has a word, as its words are separated by white space.
bool HasWord(std::string_view text, std::string_view word) {
    if (word.empty()) return false;
    for (std::size_t at = text.find(word); at != std::string_view::npos;
         at = text.find(word, at + 1)) {
        const std::size_t end = at + word.size();
        if ((at == 0 || IsSpace(text[at - 1])) && (end == text.size() || IsSpace(text[end]))) {
            return word.find_first_of(kSpace) == std::string_view::npos;
        }
    }
    return false;
}

bool IsDashed(std::string_view text, std::string_view begin) {
    return text.starts_with(begin) && (text.size() == begin.size() || text[begin.size()] == '-');
}

bool MatchesValue(Kind kind, std::string_view text, std::string_view value) {
    switch (kind) {
    case Kind::HasAttribute: return true;
    case Kind::Id:
    case Kind::AttributeIs: return text == value;
    case Kind::Class:
    case Kind::AttributeHasWord: return HasWord(text, value);
    case Kind::AttributeIsDashed: return IsDashed(text, value);
    case Kind::AttributeBeginsWith: return !value.empty() && text.starts_with(value);
    case Kind::AttributeEndsWith: return !value.empty() && text.ends_with(value);
    case Kind::AttributeContains:
        return !value.empty() && text.find(value) != std::string_view::npos;
    case Kind::Pseudo: break;
    }
    return false;
}

// "[|a]" is "[a]".
bool IsPlain(const NamespaceTest& space) {
    return space.kind == NamespaceTest::Kind::Is && space.uri.empty();
}

// Only a compound within :not() is looked at from here, and that has no :not() itself.
bool MatchesTest(const SelectorParts& parts, const SelectorTest& test,
                 const SelectorSubject& subject) {
    if (test.kind == Kind::Pseudo) {
        if (test.pseudo == PseudoClass::Not) {
            return !MatchesCompound(parts, parts.compounds[test.negated], subject);
        }
        return subject.GetElement() != nullptr && MatchesPseudoClass(test, *subject.GetElement());
    }
    if (test.space.kind != NamespaceTest::Kind::Unsaid && !IsPlain(test.space)) {
        return subject.AnyAttribute(test.space, test.name, [&test](const astring& text) {
            return MatchesValue(test.kind, text.view(), test.value);
        });
    }
    const bool isId = test.kind == Kind::Id;
    const bool isClass = test.kind == Kind::Class;
    const std::string_view attribute = isId ? "id" : isClass ? "class" : test.name.view();
    const astring* const text = subject.Attribute(attribute);
    return text != nullptr &&
           MatchesValue(test.kind, text->view(), isId || isClass ? test.name : test.value);
}

}  // namespace

bool MatchesCompound(const SelectorParts& parts, const Compound& compound,
                     const SelectorSubject& subject) {
    if (!compound.type.empty() && subject.Name() != compound.type.view()) return false;
    if (compound.space.kind == NamespaceTest::Kind::Is &&
        subject.NamespaceUri() != compound.space.uri.view()) {
        return false;
    }
    const SelectorTest* const tests = parts.tests.data() + compound.firstTest;
    for (unsigned i = 0; i < compound.testCount; ++i) {
        if (!MatchesTest(parts, tests[i], subject)) return false;
    }
    return true;
}

}  // namespace Dom::CSS::detail
