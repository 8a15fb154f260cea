// SPDX-License-Identifier: MIT
#include "Sheet.h"

#include <espalier/dom/css/CSSStyleRule.h>
#include <espalier/dom/css/DecodeStyleSheet.h>
#include <espalier/dom/css/KnownProperty.h>
#include <espalier/dom/css/ParseStyleSheet.h>

#include "Diagnostic.h"
#include "RuleParts.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace Tool {

namespace {

std::vector<unsigned char> ReadAll(Input& input) {
    constexpr int kPiece = 65'536;
    std::vector<unsigned char> bytes;
    for (;;) {
        const std::size_t length = bytes.size();
        bytes.resize(length + kPiece);
        const int count = input.Read(bytes.data() + length, 0, kPiece);
        bytes.resize(length + static_cast<std::size_t>(count > 0 ? count : 0));
        if (count <= 0) return bytes;
    }
}

using Dom::CSS::DroppedText;

const char* KindText(DroppedText::Kind kind) {
    return kind == DroppedText::Kind::Rule ? "rule" : "declaration";
}

}  // namespace

Sheet::Sheet(const std::string& name, Context& context)
    : context_(context), input_(name, context.input, context.progress) {}

// What is open at the end of a sheet is closed there, so one that has been cut would look whole.
ExitCode Sheet::Read(std::string_view encoding, bool tellsUnknown) {
    try {
        text_ = Dom::CSS::DecodeStyleSheet(ReadAll(input_), {}, encoding);
    } catch (const Xml::Exception& error) {
        context_.console.Write(
            Headline(context_.console, DisplayName(), Severity::Error, error.What()));
        return input_.Failure();
    }
    lines_.emplace(text_.view());
    std::vector<DroppedText> dropped;
    sheet_ = Dom::CSS::ParseStyleSheet(text_.view(), {.dropped = &dropped});
    for (const DroppedText& drop : dropped)
        remarks_.push_back({drop.place, drop.reason, KindText(drop.kind)});
    if (tellsUnknown) FindUnknown(sheet_->CssRules());
    std::ranges::stable_sort(remarks_, {}, [](const SheetRemark& remark) {
        return std::pair(remark.place.line, remark.place.column);
    });
    return ExitCode::Yes;
}

// Rules are not deep in each other, so this may recurse.
void Sheet::FindUnknown(const Dom::CSS::CSSRuleList& rules) {
    for (const Dom::CSS::CSSRule* const rule : rules) {
        if (const Dom::CSS::CSSRuleList* const inner = PartsOf(*rule).rules) FindUnknown(*inner);
        if (rule->Type() != Dom::CSS::CSSRule::STYLE_RULE) continue;
        const auto& style = static_cast<const Dom::CSS::CSSStyleRule&>(*rule).Style();
        std::vector<Dom::CSS::SourcePlace> places;
        for (unsigned i = 0; i < style.Length(); ++i) {
            const astring& name = style.Properties().Item(i)->Name();
            if (name.view().starts_with('-') || Dom::CSS::IsKnownProperty(name)) continue;
            if (places.empty()) places = Dom::CSS::PlacesOf(style);
            remarks_.push_back({places[i], {}, name});
        }
    }
}

void Sheet::Explain(const SheetRemark& remark) {
    const std::string where =
        fmt::format("{}:{}:{}", DisplayName(), remark.place.line, remark.place.column);
    const std::string message =
        remark.IsLeftOut() ? fmt::format("{}; the {} is left out", remark.reason, remark.what)
                           : "Unknown property";
    lines_->MoveTo({remark.place.line, remark.place.column});
    context_.console.Write(Headline(context_.console, where, Severity::Warning, message) +
                           Picture(context_.console, lines_->Line()));
}

}  // namespace Tool
