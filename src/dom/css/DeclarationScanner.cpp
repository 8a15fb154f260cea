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

// Returns where the properties end that have plain names and values and no importance; what comes
// there is for a DeclarationScanner.
const char* BehindPlainProperties(const char* at, const char* end) {
    const auto skipBlanks = [&at, end] {
        while (at != end && Is(*at, kBlank))
            ++at;
        return at != end;
    };
    while (true) {
        const char* const begin = at;
        if (!skipBlanks() || !Is(*at, kNameStart)) return begin;
        at = BehindRun<NameRun>(at, end);
        if (!skipBlanks() || *at != ':') return begin;
        ++at;
        if (!skipBlanks()) return begin;
        const char* const value = at;
        at = BehindRun<ValueRun>(at, end);
        if (at == value || at == end || *at != ';') return begin;
        ++at;
    }
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
    const char* const end = text.data() + text.size();
    const char* const rest = BehindPlainProperties(text.data(), end);
    DeclarationScanner scanner({rest, static_cast<std::size_t>(end - rest)});
    while (scanner.Next()) {
        if (scanner.Value().empty()) return false;
    }
    return scanner.Error() == nullptr;
}

}  // namespace Dom::CSS::detail
