// SPDX-License-Identifier: MIT
#include "RuleObjects.h"

#include "Escape.h"
#include "SpecificityParts.h"

#include <fmt/format.h>

namespace Tool {

namespace {

void WriteString(Output& out, std::string_view intro, std::string_view value) {
    out.Write(intro);
    WriteJsonString(out, value);
}

// Writes the begin of an object: where something is.
void WritePlace(Output& out, std::string_view file, Dom::CSS::SourcePlace place) {
    out.Write('{');
    if (!file.empty()) {
        WriteString(out, "\"file\":", file);
        out.Write(',');
    }
    out.Write(fmt::format("\"line\":{},\"column\":{}", place.line, place.column));
}

void WriteDeclarations(Output& out, const Dom::CSS::CSSStyleDeclaration& style) {
    out.Write(",\"declarations\":[");
    std::string_view intro = "{\"name\":";
    for (const Dom::CSS::CSSPropertyImpl* const property : style.Properties()) {
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

void WriteRuleObject(Output& out, std::string_view file, Dom::CSS::SourcePlace place,
                     std::span<const std::string> outer, const RuleParts& rule) {
    WritePlace(out, file, place);
    std::string_view intro = ",\"in\":[";
    for (const std::string& head : outer) {
        WriteString(out, intro, head);
        intro = ",";
    }
    if (!outer.empty()) out.Write(']');
    WriteString(out, rule.isStyleRule ? ",\"selector\":" : ",\"text\":", rule.head);
    if (rule.isStyleRule) {
        const SpecificityParts parts(rule.specificity);
        out.Write(
            fmt::format(",\"specificity\":[{},{},{}]", parts.ids, parts.classes, parts.elements));
    }
    if (rule.style != nullptr) WriteDeclarations(out, *rule.style);
    out.Write("}\n");
}

void WriteRemarkObject(Output& out, std::string_view file, const SheetRemark& remark) {
    WritePlace(out, file, remark.place);
    WriteString(out, ",\"error\":", remark.IsLeftOut() ? remark.reason : "Unknown property");
    WriteString(out, remark.IsLeftOut() ? ",\"dropped\":" : ",\"property\":", remark.what);
    out.Write("}\n");
}

}  // namespace Tool
