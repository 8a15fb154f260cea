// SPDX-License-Identifier: MIT
#include "StyleObjects.h"

#include <espalier/dom/css/CSSStyleRule.h>

#include "Escape.h"
#include "SpecificityParts.h"

#include <fmt/format.h>

#include <string_view>

namespace Tool {

namespace {

using Dom::CSS::CSSRule;
using Dom::CSS::DeclaredValue;
using Dom::CSS::StyleExplanation;

std::string_view NameOf(StyleExplanation::Kind kind) {
    switch (kind) {
    case StyleExplanation::Kind::Declared: return "declared";
    case StyleExplanation::Kind::Inherited: return "inherited";
    case StyleExplanation::Kind::Initial: return "initial";
    }
    return "";
}

std::string_view NameOf(DeclaredValue::Source source) {
    switch (source) {
    case DeclaredValue::Source::Rule: return "rule";
    case DeclaredValue::Source::StyleAttribute: return "attribute";
    case DeclaredValue::Source::OverrideStyle: return "override";
    }
    return "";
}

std::string_view NameOf(CSSRule::RULE_ORIGIN origin) {
    switch (origin) {
    case CSSRule::Author: return "author";
    case CSSRule::User: return "user";
    case CSSRule::UserAgent: return "user agent";
    }
    return "";
}

void WriteMember(Output& out, std::string_view intro, std::string_view value) {
    out.Write(intro);
    WriteJsonString(out, value);
}

void WriteDeclaration(Output& out, const DeclaredValue& declared, const SheetNames& names) {
    WriteMember(out, "{\"source\":", NameOf(declared.source));
    WriteMember(out, ",\"property\":", declared.property.view());
    WriteMember(out, ",\"value\":", declared.value.view());
    if (declared.important) out.Write(",\"important\":true");
    if (declared.rule != nullptr) {
        WriteMember(out, ",\"sheet\":", names.NameOf(declared.sheet));
        if (declared.place.line > 0) {
            out.Write(fmt::format(",\"line\":{},\"column\":{}", declared.place.line,
                                  declared.place.column));
        }
        WriteMember(out, ",\"selector\":", declared.rule->SelectorText().view());
        const SpecificityParts parts(declared.specificity);
        out.Write(
            fmt::format(",\"specificity\":[{},{},{}]", parts.ids, parts.classes, parts.elements));
        WriteMember(out, ",\"origin\":", NameOf(declared.origin));
    }
    out.Write('}');
}

}  // namespace

void WriteStyleObjects(Output& out, const StyledElement& styled, const SheetNames& names,
                       bool hasLosers) {
    for (const StyleRow& row : styled.rows) {
        WriteMember(out, "{\"path\":", styled.path);
        WriteMember(out, ",\"property\":", row.property);
        WriteMember(out, ",\"value\":", row.explanation.value.view());
        WriteMember(out, ",\"kind\":", NameOf(row.explanation.kind));
        if (!row.from.empty()) WriteMember(out, ",\"from\":", row.from);
        out.Write(",\"declarations\":[");
        const char* separator = "";
        for (const DeclaredValue& declared : row.explanation.declarations) {
            out.Write(separator);
            WriteDeclaration(out, declared, names);
            if (!hasLosers) break;
            separator = ",";
        }
        out.Write("]}\n");
    }
}

}  // namespace Tool
