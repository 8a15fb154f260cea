// SPDX-License-Identifier: MIT
//
// Makes declarations of arbitrary texts. The input is an origin and a specificity, a byte each, for
// each of two declarations, and then texts: the two declarations, and a name, a value and a
// priority to be set. What a declaration prints is read again, the second one is merged into the
// first and the result compared with that of a plain loop, and a property is set and removed.

#include <espalier/css.h>
#include <espalier/dom/DOMException.h>

#include "CssInput.h"
#include "ReaderStory.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Dom::CSS::CSSPropertyImpl;
using Dom::CSS::CSSRule;
using Dom::CSS::CSSStyleDeclaration;
using fuzz::Require;

constexpr std::array<std::string_view, 11> kShorthands = {
    "margin",       "padding",       "border-width", "border-color", "border-style", "border-top",
    "border-right", "border-bottom", "border-left",  "border",       "background"};
constexpr unsigned kMostOfShorthand = 12;  // properties that one makes

void RequireEqual(std::string_view text, std::string_view expected) {
    if (text == expected) return;
    std::fprintf(stderr, "%.*s\ninstead of\n%.*s\n", static_cast<int>(text.size()), text.data(),
                 static_cast<int>(expected.size()), expected.data());
    Require(false);
}

bool Parse(CSSStyleDeclaration& declaration, const std::string& text) {
    try {
        declaration.SetCssText(text.c_str());
        return true;
    } catch (const Dom::DOMException&) {
        return false;
    }
}

// What can be told without changing anything agrees with itself.
void RequireConsistent(const CSSStyleDeclaration& declaration) {
    unsigned place = 0;
    for (const CSSPropertyImpl* const property : declaration.Properties()) {
        Require(declaration.Item(place++) == property->Name());
        const auto first = std::find_if(
            declaration.Properties().begin(), declaration.Properties().end(),
            [property](const CSSPropertyImpl* other) { return other->Name() == property->Name(); });
        Require(declaration.GetPropertyCSSValue(property->Name()) == (*first)->GetCSSValue());
        const std::unique_ptr<Dom::CSS::CSSValue> clone(property->GetCSSValue()->Clone());
        RequireEqual(clone->CssText(), property->Value());
    }
    Require(place == declaration.Length());
    CSSStyleDeclaration copy(nullptr);
    copy = declaration;
    RequireEqual(copy.CssText(), declaration.CssText());
}

// Backslashes are resolved when a text is read, and not written again.
void RequireReadsBack(const CSSStyleDeclaration& declaration, std::string_view source) {
    if (source.find('\\') != std::string_view::npos) return;
    CSSStyleDeclaration again(nullptr);
    const std::string text = declaration.CssText().str();
    Require(Parse(again, text));
    RequireEqual(again.CssText(), text);
}

struct Property {
    explicit Property(const CSSPropertyImpl& property)
        : name(property.Name()),
          text(property.CssText()),
          important(property.Important()),
          shorthand(property.Shorthand()),
          origin(property.Origin()),
          specificity(property.Specificity()) {}
    bool operator==(const Property&) const = default;

    astring name;
    astring text;
    bool important;
    bool shorthand;
    CSSRule::RULE_ORIGIN origin;
    int specificity;
};

std::vector<Property> PropertiesOf(const CSSStyleDeclaration& declaration) {
    std::vector<Property> properties;
    for (const CSSPropertyImpl* const property : declaration.Properties())
        properties.emplace_back(*property);
    return properties;
}

// CSSStyleDeclaration::Cascade() says so.
bool Wins(const Property& property, const Property& over) {
    if (property.important != over.important) return property.important;
    if (property.origin != over.origin) {
        return property.important ? property.origin > over.origin : property.origin < over.origin;
    }
    if (over.shorthand && !property.shorthand) return true;
    return property.specificity >= over.specificity;
}

void Merge(std::vector<Property>& target, const std::vector<Property>& source,
           CSSRule::RULE_ORIGIN origin, int specificity) {
    for (Property property : source) {
        property.origin = origin;
        property.specificity = specificity;
        const auto found = std::find_if(target.begin(), target.end(), [&](const Property& other) {
            return other.name == property.name;
        });
        if (found != target.end()) {
            if (!Wins(property, *found)) continue;
            target.erase(found);
        }
        target.push_back(property);
    }
}

struct Weight {
    CSSRule::RULE_ORIGIN origin;
    int specificity;
};

void CheckCascade(CSSStyleDeclaration& target, const CSSStyleDeclaration& source, Weight weight) {
    std::vector<Property> expected = PropertiesOf(target);
    Merge(expected, PropertiesOf(source), weight.origin, weight.specificity);
    target.Cascade(source, weight.origin, weight.specificity);
    Require(PropertiesOf(target) == expected);
}

void CheckSetting(CSSStyleDeclaration& declaration, const std::string& name,
                  const std::string& value, const std::string& priority) {
    const bool isThere = declaration.GetPropertyCSSValue(name) != nullptr;
    const unsigned others = declaration.Length() - (isThere ? 1 : 0);
    try {
        declaration.SetProperty(name, value, priority);
    } catch (const Dom::DOMException&) {
        return Require(declaration.Length() == others);
    }
    const bool isShorthand = std::ranges::find(kShorthands, name) != kShorthands.end();
    const unsigned added = declaration.Length() - others;
    Require(isShorthand ? added <= kMostOfShorthand : added == 1);
    RequireConsistent(declaration);
    if (Dom::CSS::CSSValue* const set = declaration.GetPropertyCSSValue(name)) {
        try {
            set->SetCssText(value.c_str());
        } catch (const Dom::DOMException&) {
            Require(set->CssValueType() == Dom::CSS::CSSValue::CSS_INHERIT);
        }
        const astring text = set->CssText();
        const unsigned before = declaration.Length();
        RequireEqual(declaration.RemoveProperty(name), text);
        Require(declaration.Length() + 1 == before);
    }
}

Weight NextWeight(fuzz::CssInput& input) {
    const auto origin = static_cast<CSSRule::RULE_ORIGIN>(input.Byte() % 3);
    return {origin, static_cast<int>(input.Byte())};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::CssInput input(data, size);
    const std::array<Weight, 2> weights = {NextWeight(input), NextWeight(input)};
    CSSStyleDeclaration result(nullptr);
    for (const Weight& weight : weights) {
        const std::string text = input.Text();
        CSSStyleDeclaration declaration(nullptr);
        if (Parse(declaration, text)) RequireReadsBack(declaration, text);
        RequireConsistent(declaration);
        CheckCascade(result, declaration, weight);
    }
    CheckCascade(result, result, weights[0]);
    const std::string name = input.Text();
    const std::string value = input.Text();
    const std::string priority = input.Text();
    CheckSetting(result, name, value, priority);
    return 0;
}
