// SPDX-License-Identifier: MIT
#include "Sheet.h"

#include <espalier/dom/DOMException.h>

#include "Diagnostic.h"

#include <fmt/format.h>

#include <string_view>

namespace Tool {

namespace {

constexpr char kRest[] = "Syntax error: the rest is not read";

// Returns the message without the name of the class, which says nothing to people.
std::string MessageText(const Dom::DOMException& error) {
    constexpr std::string_view kClass = "DOMException: ";
    std::string_view message = error.What();
    if (message.starts_with(kClass)) message.remove_prefix(kClass.size());
    return std::string(message);
}

// The reader reads as soon as it is made.
IO::Stream* Observed(Input& input, SheetText& text) {
    input.Observe([&text](std::string_view bytes) { text.Take(bytes); });
    return &input;
}

}  // namespace

Sheet::Sheet(const std::string& name, const SheetEncoding& encoding, Context& context)
    : context_(context),
      input_(name, context.input, context.progress),
      text_(encoding.form),
      reader_(Observed(input_, text_), encoding.name),
      sheet_(Dom::CSS::CSSRule::Author, nullptr, astring(name), astring()) {}

std::optional<SheetItem> Sheet::Next() {
    if (sheet_.CssRules().Length() > 0) sheet_.DeleteRule(0);
    if (isOver_) return std::nullopt;
    if (!isBroken_ && !reader_.ReadSelector().empty()) {
        const Place place = Here();
        const astring rule = reader_.ReadRule();
        isBroken_ = !IsBehindRule();
        // What a failure has cut would look as if it were whole.
        if (!isBroken_ || !reader_.StreamFailed()) return Insert(place, rule);
    }
    isOver_ = true;
    if (reader_.StreamFailed() || reader_.IsAtEnd()) return std::nullopt;
    text_.MoveTo(Here());
    return SheetItem{Here(), nullptr, kRest};
}

// The node alone does not tell: it is kept when there is no other.
bool Sheet::IsBehindRule() const {
    return reader_.NodeType() == Dom::CSS::CssNodeType::EndDecl && reader_.Value() == "}";
}

SheetItem Sheet::Insert(Place place, const astring& rule) {
    text_.MoveTo(place);
    try {
        sheet_.InsertRule(rule, 0);
        return {place, sheet_.CssRules().Item(0), {}};
    } catch (const Dom::DOMException& error) {
        return {place, nullptr, MessageText(error)};
    }
}

ExitCode Sheet::ExplainRefusal(const SheetItem& item) {
    const std::string where =
        fmt::format("{}:{}:{}", DisplayName(), item.place.line, item.place.column);
    context_.console.Write(Headline(context_.console, where, Severity::Error, item.refusal) +
                           Picture(context_.console, text_.Line()));
    return ExitCode::NotWellFormed;
}

ExitCode Sheet::ExplainFailure() {
    if (!reader_.StreamFailed()) return ExitCode::Yes;
    context_.console.Write(
        Headline(context_.console, DisplayName(), Severity::Error, reader_.StreamError().view()));
    return input_.Failure();
}

}  // namespace Tool
