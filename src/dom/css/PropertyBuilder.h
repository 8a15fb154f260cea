// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/css/CSSStyleDeclaration.h>

#include "dom/css/ValueReading.h"
#include "dom/css/Weight.h"

#include <string_view>

namespace Dom::CSS::detail {

/// Adds properties to the list of a declaration: all of a text, or one with what it stands for when
/// it is a shorthand.
class PropertyBuilder {
public:
    /// \param weight that the properties get
    PropertyBuilder(CSSStyleDeclaration::CSSPropertyList& properties, const Weight& weight,
                    ValueReading reading)
        : properties_(properties), weight_(weight), reading_(reading) {}

    /// Adds the properties of a text.
    /// \throws DOMException SYNTAX_ERR, as CSSStyleDeclaration::SetCssText()
    void AddText(std::string_view text);

    /// Adds a property, or the properties that a shorthand stands for.
    /// \throws DOMException SYNTAX_ERR "Property value missing", if reading is literal
    void AddProperty(std::string_view name, bool important, std::string_view value);

private:
    enum class Made { AsWritten, FromShorthand };

    void Add(std::string_view name, std::string_view value, Made made);
    // False when the name is no shorthand.
    bool AddShorthand(std::string_view name, std::string_view value);
    // False when the name is no shorthand, too, or when the value is not valid for it.
    bool AddExactShorthand(std::string_view name, std::string_view value);
    void AddSides(const std::string_view (&names)[4], std::string_view value);
    void AddBorder(unsigned firstSide, unsigned endSide, std::string_view value);
    void AddBackground(std::string_view value);

    CSSStyleDeclaration::CSSPropertyList& properties_;
    Weight weight_;
    ValueReading reading_;
    bool important_ = false;  // of the property that is being added
};

}  // namespace Dom::CSS::detail
