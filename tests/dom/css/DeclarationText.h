// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/css/CSSPrimitiveValue.h>
#include <espalier/dom/css/CSSStyleDeclaration.h>
#include <espalier/dom/css/CSSValueList.h>

#include "dom/ExpectDomError.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

/// \file
/// Declarations as texts, for tests.

namespace support {

/// The properties in their order with "; " between them; those made from a shorthand stand in
/// brackets: "[margin-top: 1px]; color: red !important".
inline std::string PropertiesOf(const Dom::CSS::CSSStyleDeclaration& declaration) {
    std::string text;
    for (const Dom::CSS::CSSPropertyImpl* property : declaration.Properties()) {
        if (!text.empty()) text += "; ";
        const std::string one = property->CssText().str();
        text += property->Shorthand() ? "[" + one + "]" : one;
    }
    return text;
}

/// A declaration with a text.
class Declared : public Dom::CSS::CSSStyleDeclaration {
public:
    explicit Declared(const std::string& text, Dom::CSS::CSSRule* parentRule = nullptr)
        : CSSStyleDeclaration(parentRule) {
        SetCssText(text.c_str());
    }
    using CSSStyleDeclaration::SetParent;
};

/// What a declaration holds after it was given a text, and behind " | " what was thrown meanwhile.
inline std::string Parsed(const char* text, Dom::CSS::CSSRule* parentRule = nullptr) {
    Dom::CSS::CSSStyleDeclaration declaration(parentRule);
    const std::string error = DomErrorOf([&] { declaration.SetCssText(text); });
    return PropertiesOf(declaration) + (error.empty() ? "" : " | " + error);
}

/// A text, and what Parsed() makes of it.
struct ParsedCase {
    const char* text;
    const char* expected;
};

template <std::size_t Count>
void ExpectParsed(const ParsedCase (&cases)[Count]) {
    for (const ParsedCase& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(Parsed(c.text), c.expected);
    }
}

/// The class of a value, with the type of a primitive one or the separator and length of a list:
/// "primitive 21", "list ' ' 2", "custom", "inherit", "none" for null.
inline std::string KindOf(Dom::CSS::CSSValue* value) {
    using namespace Dom::CSS;
    if (value == nullptr) return "none";
    switch (value->CssValueType()) {
    case CSSValue::CSS_INHERIT: return "inherit";
    case CSSValue::CSS_PRIMITIVE_VALUE:
        return "primitive " +
               std::to_string(static_cast<CSSPrimitiveValue*>(
                                  value->QueryInterface("Dom::CSS::CSSPrimitiveValue"))
                                  ->PrimitiveType());
    case CSSValue::CSS_VALUE_LIST: {
        const auto* list =
            static_cast<CSSValueList*>(value->QueryInterface("Dom::CSS::CSSValueList"));
        return std::string("list '") + list->Separator() + "' " + std::to_string(list->Length());
    }
    case CSSValue::CSS_CUSTOM: return "custom";
    }
    return "unknown";
}

}  // namespace support
