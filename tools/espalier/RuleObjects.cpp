// SPDX-License-Identifier: MIT
#include "RuleObjects.h"

#include <espalier/dom/css/CSSStyleRule.h>

#include "Escape.h"
#include "SpecificityParts.h"

#include <fmt/format.h>

namespace Tool {

namespace {

void WriteString(Output& out, std::string_view intro, std::string_view value) {
    out.Write(intro);
    WriteJsonString(out, value);
}

void WriteStyle(Output& out, const Dom::CSS::CSSStyleRule& rule) {
    WriteString(out, ",\"selector\":", rule.SelectorText());
    const SpecificityParts parts(rule.Specificity());
    out.Write(fmt::format(",\"specificity\":[{},{},{}],\"declarations\":[", parts.ids,
                          parts.classes, parts.elements));
    std::string_view intro = "{\"name\":";
    for (const Dom::CSS::CSSPropertyImpl* const property : rule.Style().Properties()) {
        WriteString(out, intro, property->Name());
        WriteString(out, ",\"value\":", property->Value());
        if (property->Important()) out.Write(",\"important\":true");
        if (property->Shorthand()) out.Write(",\"shorthand\":true");
        out.Write('}');
        intro = ",{\"name\":";
    }
    out.Write(']');
}

}  // namespace

void WriteRuleObject(Output& out, std::string_view file, const SheetItem& item) {
    out.Write('{');
    if (!file.empty()) {
        WriteString(out, "\"file\":", file);
        out.Write(',');
    }
    out.Write(fmt::format("\"line\":{},\"column\":{}", item.place.line, item.place.column));
    const auto* const style = dynamic_cast<const Dom::CSS::CSSStyleRule*>(item.rule);
    if (style != nullptr) {
        WriteStyle(out, *style);
    } else if (item.rule != nullptr) {
        WriteString(out, ",\"text\":", item.rule->CssText());
    } else {
        WriteString(out, ",\"error\":", item.refusal);
    }
    out.Write("}\n");
}

}  // namespace Tool
