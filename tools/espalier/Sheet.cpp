// SPDX-License-Identifier: MIT
#include "Sheet.h"

#include <espalier/dom/DOMException.h>

#include "Diagnostic.h"

#include <fmt/format.h>

#include <string_view>
#include <utility>

namespace Tool {

namespace {

constexpr char kRest[] = "Syntax error: the rest is not read";
constexpr char kRestOfBlock[] = "Syntax error: the rest of the block is not read";

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
    if (!isAtSelector_) {
        isAtSelector_ = FindSelector();
        isOver_ = !isAtSelector_;
        if (fault_ && !reader_.StreamFailed()) return RefuseAtFault(isOver_ ? kRest : kRestOfBlock);
        if (isOver_) return std::nullopt;
    }
    return ReadRule();
}

// Moves to the next selector as one does who makes a style sheet with Read() and ReadRule() in
// turns, and stops when Read() fails. ReadRule() gives nothing in a block; elsewhere it looks for a
// selector itself, and a read that fails meanwhile does not count.
bool Sheet::FindSelector() {
    bool isInReadRule = false;
    while (true) {
        if (!reader_.Read()) {
            NoteFault();
            if (!isInReadRule) return false;
            isInReadRule = false;
            continue;
        }
        const Dom::CSS::CssNodeType type = reader_.NodeType();
        if (type == Dom::CSS::CssNodeType::Selector) return true;
        if (type == Dom::CSS::CssNodeType::StartDecl) isInBlock_ = !isInAtRule_;
        if (type == Dom::CSS::CssNodeType::EndDecl) isInBlock_ = false;
        isInReadRule = isInReadRule || !isInBlock_;
    }
}

void Sheet::NoteFault() {
    if (!fault_ && !reader_.IsAtEnd()) fault_ = Here();
}

std::optional<SheetItem> Sheet::ReadRule() {
    const Place place = Here();
    const astring rule = reader_.ReadRule();
    const bool isWhole = IsBehindRule();
    if (!isWhole && reader_.StreamFailed()) {  // it would look as if it were
        isOver_ = true;
        return std::nullopt;
    }
    if (!isWhole) NoteFault();
    isAtSelector_ = false;
    isInAtRule_ = rule.view().starts_with('@');
    isInBlock_ = !isWhole && !isInAtRule_;
    return Insert(place, rule);
}

// The node alone does not tell: it is kept when there is no other.
bool Sheet::IsBehindRule() const {
    return reader_.NodeType() == Dom::CSS::CssNodeType::EndDecl &&
           reader_.Value().view().ends_with('}');
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

SheetItem Sheet::RefuseAtFault(const char* why) {
    const Place place = *std::exchange(fault_, std::nullopt);
    text_.MoveTo(place);
    return {place, nullptr, why};
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
