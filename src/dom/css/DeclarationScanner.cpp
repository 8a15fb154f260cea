// SPDX-License-Identifier: MIT
#include "dom/css/DeclarationScanner.h"

#include "dom/css/ByteRun.h"
#include "dom/css/CssCharacters.h"
#include "dom/css/Messages.h"
#include "dom/css/Priority.h"

namespace Dom::CSS::detail {

namespace {

// Skips a character and the white space behind it.
void Step(TextCursor& cursor) {
    ++cursor.at;
    SkipBlanks(cursor);
}

// Reads the value of a property.
//
// Deliberate: it ends at the first ";" or "!" also in quotes and parentheses; declarations have
// always been taken apart so.
std::string_view ReadValue(TextCursor& cursor) {
    const char* const begin = cursor.at;
    cursor.at = BehindRun<ValueRun>(begin, cursor.end);
    return Trimmed(cursor.Since(begin));
}

}  // namespace

bool DeclarationScanner::Next() {
    if (error_ != nullptr || cursor_.at == cursor_.end) return false;
    if (!isFirst_) {
        if (cursor_.Front() != ';') return Refuse(Message::kAfterProperty);
        Step(cursor_);
        if (cursor_.at == cursor_.end) return false;
    }
    isFirst_ = false;
    name_ = ReadIdent(cursor_, nameBuffer_);
    if (name_.empty()) return Refuse(Message::kPropertyName);
    SkipBlanks(cursor_);
    if (cursor_.Front() != ':') return Refuse(Message::kColon);
    Step(cursor_);
    value_ = ReadValue(cursor_);
    isImportant_ = false;
    return cursor_.Front() != '!' || ReadImportance();
}

// Reads "!" and the importance.
bool DeclarationScanner::ReadImportance() {
    Step(cursor_);
    astring buffer;
    const std::string_view priority = ReadIdent(cursor_, buffer);
    if (priority.empty()) return Refuse(Message::kImportance);
    isImportant_ = detail::IsImportant(priority);
    SkipBlanks(cursor_);
    return true;
}

// Only a shorthand without a value is refused besides.
bool IsSurelyDeclaration(std::string_view text) {
    DeclarationScanner scanner(text);
    while (scanner.Next()) {
        if (scanner.Value().empty()) return false;
    }
    return scanner.Error() == nullptr;
}

}  // namespace Dom::CSS::detail
