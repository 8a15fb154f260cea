// SPDX-License-Identifier: MIT
#include "dom/css/computed/SupportsCondition.h"

#include <espalier/dom/css/CSSStyleDeclaration.h>
#include <espalier/dom/css/ParseDeclarations.h>
#include <espalier/dom/css/Selector.h>
#include <espalier/dom/css/SelectorException.h>

#include "dom/css/AsciiCase.h"
#include "dom/css/CssCharacters.h"
#include "dom/css/Skipping.h"
#include "dom/css/computed/DeclarationBlock.h"

#include <optional>
#include <string>

namespace Dom::CSS::detail {

namespace {

constexpr unsigned kMostOpen = 32;

// "(property: value)", without the parentheses.
bool SupportsDeclaration(std::string_view text) {
    std::vector<DroppedText> dropped;
    const auto style = ParseDeclarations(text, &dropped);
    if (!dropped.empty() || style->Length() == 0) return false;
    const DeclarationBlock block(*style, {});
    for (const BlockEntry& entry : block.Entries()) {
        if (entry.id == BlockEntry::kNamed && !IsCustomProperty(entry.name)) return false;
    }
    return !block.Entries().empty();
}

bool SupportsSelector(std::string_view text) {
    try {
        const Selector selector((astring(text)));
        return text.find(',') == std::string_view::npos;
    } catch (const SelectorException&) {
        return false;
    }
}

// Reads a condition; nothing when it is malformed.
class ConditionParser {
public:
    /// \param text that a NUL follows
    explicit ConditionParser(const std::string& text)
        : position_(text.c_str()), end_(position_ + text.size()) {}

    bool Run() {
        const std::optional<bool> result = ParseCondition(0);
        return result.value_or(false) && *position_ == '\0';
    }

private:
    std::optional<bool> ParseCondition(unsigned depth);
    std::optional<bool> ParseOperand(unsigned depth);
    bool TakeWord(std::string_view word);
    void SkipSpace() {
        while (*position_ != '\0' && kSpace.find(*position_) != std::string_view::npos)
            ++position_;
    }

    const char* position_;
    const char* end_;
};

// Reads a word that stands before white space or a parenthesis.
bool ConditionParser::TakeWord(std::string_view word) {
    const std::string_view rest(position_, static_cast<std::size_t>(end_ - position_));
    if (!EqualIgnoringCase(rest.substr(0, word.size()), word)) return false;
    const std::string_view behind = rest.substr(word.size());
    if (behind.empty() || (behind[0] != '(' && kSpace.find(behind[0]) == behind.npos)) return false;
    position_ += word.size();
    SkipSpace();
    return true;
}

// "not" is for one operand; "and" and "or" do not stand beside each other.
std::optional<bool> ConditionParser::ParseCondition(unsigned depth) {
    SkipSpace();
    if (TakeWord("not")) {
        const std::optional<bool> operand = ParseOperand(depth);
        return operand ? std::optional(!*operand) : std::nullopt;
    }
    std::optional<bool> result = ParseOperand(depth);
    std::string_view word;
    while (result) {
        const std::string_view next = TakeWord("and") ? "and" : TakeWord("or") ? "or" : "";
        if (next.empty()) break;
        if (!word.empty() && next != word) return std::nullopt;
        word = next;
        const std::optional<bool> operand = ParseOperand(depth);
        if (!operand) return std::nullopt;
        result = next == "and" ? *result && *operand : *result || *operand;
    }
    return result;
}

// A function that is not known, and parentheses with what is no declaration, are false.
std::optional<bool> ConditionParser::ParseOperand(unsigned depth) {
    const char* const begin = position_;
    while (*position_ != '\0' && *position_ != '(' &&
           kSpace.find(*position_) == std::string_view::npos)
        ++position_;
    const std::string_view name(begin, static_cast<std::size_t>(position_ - begin));
    const char* const opening = position_;
    if (*position_ != '(' || depth == kMostOpen || !SkipParentheses(position_)) return std::nullopt;
    const std::string inside(opening + 1, position_ - 1);
    SkipSpace();
    if (EqualIgnoringCase(name, "selector")) return SupportsSelector(inside);
    if (!name.empty()) return false;
    ConditionParser inner(inside);
    const std::optional<bool> condition = inner.ParseCondition(depth + 1);
    if (condition && *inner.position_ == '\0') return condition;
    return SupportsDeclaration(inside);
}

}  // namespace

bool SupportsCondition(std::string_view condition) {
    const std::string text(condition);
    return ConditionParser(text).Run();
}

}  // namespace Dom::CSS::detail
