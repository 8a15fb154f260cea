// SPDX-License-Identifier: MIT
#include "dom/css/computed/ValueComputing.h"

#include "dom/css/AsciiCase.h"
#include "dom/css/CssCharacters.h"
#include "dom/css/ListPieces.h"
#include "dom/css/NumberText.h"
#include "dom/css/TextCursor.h"
#include "dom/css/computed/ColorValue.h"
#include "dom/css/computed/ComponentText.h"
#include "dom/css/computed/ValueKinds.h"

namespace Dom::CSS::detail {

namespace {

// Returns a value that is one identifier as what it stands for (CSS 2.1 section 4.1.3).
std::string_view WithoutEscapes(std::string_view value, astring& buffer) {
    if (value.find('\\') == value.npos) return value;
    TextCursor cursor(value);
    const std::string_view name = ReadIdent(cursor, buffer);
    return cursor.at == cursor.end ? name : value;
}

std::optional<astring> Computed(const PropertyInfo& property, std::string_view value,
                                const ComputingContext& context) {
    value = Trimmed(value);
    if (value.empty()) return {};
    astring buffer;
    const std::string_view name = WithoutEscapes(value, buffer);
    if (const std::optional<std::string_view> keyword = ComputedKeyword(property, name)) {
        if (*keyword == "currentcolor") return astring(context.color);
        return astring(*keyword);
    }
    switch (property.kind) {
    case ValueKind::Any: {
        std::optional<astring> text = PlainComponents(value);
        return text ? text : astring(value);
    }
    case ValueKind::Keyword: return {};
    case ValueKind::Color: return ComputedColor(name, context);
    case ValueKind::Components: return ComputedComponents(value, context);
    case ValueKind::FontFamily:
    case ValueKind::FontSize:
    case ValueKind::FontStretch:
    case ValueKind::FontStyle:
    case ValueKind::FontWeight:
    case ValueKind::LineHeight: return ComputedFontValue(property, value, context);
    default: break;
    }
    if (std::optional<astring> numeric = ComputedNumeric(property, value, context)) return numeric;
    return ComputedList(property, value, context);
}

}  // namespace

std::optional<std::string_view> ComputedKeyword(const PropertyInfo& property,
                                                std::string_view value) {
    std::string_view rest = property.keywords;
    while (!rest.empty()) {
        const std::string_view entry = rest.substr(0, rest.find(' '));
        rest.remove_prefix(std::min(entry.size() + 1, rest.size()));
        const std::size_t sign = entry.find('=');
        if (!EqualIgnoringCase(value, entry.substr(0, sign))) continue;
        return sign == entry.npos ? entry : entry.substr(sign + 1);
    }
    return {};
}

bool IsValidValue(const PropertyInfo& property, std::string_view value) {
    ComputingContext context;
    context.parentWeight = "400";
    context.color = "rgb(0, 0, 0)";
    return Computed(property, value, context).has_value();
}

astring ComputedValue(const PropertyInfo& property, std::string_view value,
                      const ComputingContext& context) {
    std::optional<astring> computed = Computed(property, value, context);
    return computed ? std::move(*computed) : astring(property.initial);
}

double PixelsOf(std::string_view computed) {
    const std::optional<double> pixels = TakeDecimal(computed);
    return pixels && computed == "px" ? *pixels : 0;
}

}  // namespace Dom::CSS::detail
