// SPDX-License-Identifier: MIT
#include "dom/css/PropertyBuilder.h"

#include <espalier/dom/DOMException.h>
#include <espalier/dom/css/CSSStyleRule.h>

#include "dom/css/CssCharacters.h"
#include "dom/css/Messages.h"
#include "dom/css/Priority.h"
#include "dom/css/PropertyMaking.h"
#include "dom/css/TextCursor.h"

#include <memory>

namespace Dom::CSS::detail {

namespace {

[[noreturn]] void Throw(const char* message) {
    DOMException::ThrowDOMException(DOMException::SYNTAX_ERR, message);
}

// Skips a character and the white space behind it.
void Step(TextCursor& cursor) {
    ++cursor.at;
    SkipBlanks(cursor);
}

// Reads the value of a property. Deliberate: it ends at the first ";" or "!" also in quotes and
// parentheses; declarations have always been taken apart so.
std::string_view ReadValue(TextCursor& cursor) {
    const char* const begin = cursor.at;
    while (cursor.at != cursor.end && !Is(*cursor.at, kValueEnd))
        ++cursor.at;
    return cursor.Since(begin);
}

// Reads "!" and the importance.
bool ReadImportance(TextCursor& cursor, astring& buffer) {
    Step(cursor);
    const std::string_view priority = ReadIdent(cursor, buffer);
    if (priority.empty()) Throw(Message::kImportance);
    SkipBlanks(cursor);
    return IsImportant(priority);
}

}  // namespace

PropertyBuilder::PropertyBuilder(CSSStyleDeclaration::CSSPropertyList& properties,
                                 const CSSRule* parentRule)
    : properties_(properties) {
    if (parentRule == nullptr) return;
    origin_ = parentRule->Origin();
    if (const auto* const rule = dynamic_cast<const CSSStyleRule*>(parentRule)) {
        specificity_ = rule->Specificity();
    }
}

// CSS 2.1 section 4.1.1: declaration [ ';' declaration ]* with a name and an importance for each
void PropertyBuilder::AddText(std::string_view text) {
    TextCursor cursor(text);
    astring nameBuffer;
    astring priorityBuffer;
    SkipBlanks(cursor);
    while (cursor.at != cursor.end) {
        const std::string_view name = ReadIdent(cursor, nameBuffer);
        if (name.empty()) Throw(Message::kPropertyName);
        SkipBlanks(cursor);
        if (cursor.Front() != ':') Throw(Message::kColon);
        Step(cursor);
        const std::string_view value = ReadValue(cursor);
        const bool important = cursor.Front() == '!' && ReadImportance(cursor, priorityBuffer);
        AddProperty(name, important, value);
        if (cursor.at == cursor.end) return;
        if (cursor.Front() != ';') Throw(Message::kAfterProperty);
        Step(cursor);
    }
}

void PropertyBuilder::AddProperty(std::string_view name, bool important, std::string_view value) {
    const std::string_view trimmed = Trimmed(value);
    important_ = important;
    // Deliberate: a value that begins with "i" is taken for "inherit", whatever the word is.
    const bool mayExpand = !trimmed.starts_with('i');
    if (mayExpand && AddShorthand(name, trimmed)) return;
    Add(name, trimmed, Made::AsWritten);
}

void PropertyBuilder::Add(std::string_view name, std::string_view value, Made made) {
    auto property =
        MakeProperty(name, value, {important_, origin_, specificity_, made == Made::FromShorthand});
    properties_.AddItem(property.get());
    static_cast<void>(property.release());  // the list's now
}

}  // namespace Dom::CSS::detail
