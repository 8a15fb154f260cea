// SPDX-License-Identifier: MIT
#include "dom/css/BlockScanner.h"

#include "dom/css/CharacterFlags.h"
#include "dom/css/CssCharacters.h"
#include "dom/css/Messages.h"
#include "dom/css/Priority.h"

#include <algorithm>

namespace Dom::CSS::detail {

namespace {

std::string_view TextBetween(const char* begin, const char* end) {
    return {begin, static_cast<std::size_t>(end - begin)};
}

// Tells whether the end of a trimmed value is an escape that SetCssText() would cut.
bool EndsWithEscape(std::string_view value) {
    return !value.empty() && (value.back() == '\\' || IsSpace(value.back()));
}

bool IsCustom(std::string_view name) { return name.starts_with("--"); }

// CSS Syntax Level 3 section 4.3.9: whether a name is an identifier.
bool BeginsName(const char* at) {
    if (*at == '-') {
        ++at;
        if (*at == '-') return true;
    }
    return Is(*at, kNameStart) || (*at == '\\' && IsEscape(at));
}

}  // namespace

unsigned BlockScanner::Stops() const {
    constexpr unsigned kAlways = ComponentScanner::kSemicolon;
    return end_ == End::Brace ? kAlways | ComponentScanner::kClosingBrace : kAlways;
}

// Returns false at the end of the block.
bool BlockScanner::SkipToDeclaration() {
    for (;;) {
        if (scanner_.SkipSpace()) isPlain_ = false;
        if (scanner_.Front() == '}' && end_ == End::Brace) return false;
        if (scanner_.Front() != ';') return !scanner_.IsAtEnd();
        isPlain_ = false;
        scanner_.Step();
    }
}

bool BlockScanner::Next(ScannedDeclaration& declaration) {
    if (!SkipToDeclaration()) return false;
    declaration.begin = scanner_.At();
    declaration.important = declaration.hasComment = false;
    declaration.unclosed.clear();
    if (scanner_.Front() == '@') {
        declaration.fault = Message::kAtRuleInBlock;
        scanner_.ScanTo(Stops() | ComponentScanner::kOpeningBrace);
        if (scanner_.Front() == '{') {
            scanner_.Step();
            scanner_.ScanTo(ComponentScanner::kClosingBrace);
            if (!scanner_.IsAtEnd()) scanner_.Step();
            declaration.end = scanner_.At();
            isPlain_ = false;
            return true;
        }
    } else {
        declaration.fault = ReadName(declaration);
        if (declaration.fault == nullptr) {
            declaration.fault = ReadValue(declaration);
        } else {
            scanner_.ScanTo(Stops());
        }
    }
    if (declaration.fault != nullptr) isPlain_ = false;
    declaration.end = scanner_.At();
    if (scanner_.Front() == ';') scanner_.Step();
    return true;
}

// Reads the name and the colon.
const char* BlockScanner::ReadName(ScannedDeclaration& declaration) {
    const char* const begin = scanner_.At();
    // Deliberate: a star before a name is no CSS, but was written for a browser that ignored it.
    if (*begin == '*') scanner_.Step();
    if (!BeginsName(scanner_.At())) return Message::kPropertyName;
    scanner_.SkipName();
    declaration.name = TextBetween(begin, scanner_.At());
    if (*begin == '*' || IsCustom(declaration.name)) isPlain_ = false;
    if (scanner_.SkipSpace()) isPlain_ = false;
    if (scanner_.Front() != ':') return Message::kColon;
    scanner_.Step();
    return nullptr;
}

const char* BlockScanner::ReadValue(ScannedDeclaration& declaration) {
    const char* const begin = scanner_.At();
    const unsigned seen = scanner_.ScanTo(Stops());
    declaration.value = TrimmedValue(TextBetween(begin, scanner_.At()));
    declaration.hasComment = (seen & ComponentScanner::kComment) != 0;
    const bool hasEscape = EndsWithEscape(declaration.value);
    if (seen == 0 && !declaration.value.empty() && !hasEscape) return nullptr;
    if ((seen & ~ComponentScanner::kBang) != 0 || hasEscape) isPlain_ = false;
    if ((seen & (ComponentScanner::kBad | ComponentScanner::kBangs)) != 0) return Message::kValue;
    CloseValue(declaration, seen);
    const bool isCustom = IsCustom(declaration.name);
    if ((seen & ComponentScanner::kBlock) != 0 && !isCustom) return Message::kValue;
    if ((seen & ComponentScanner::kBang) != 0) {
        if (const char* const fault = TakePriority(declaration, seen)) return fault;
    }
    const bool isEmpty = declaration.value.empty() ||
                         (declaration.hasComment && WithoutComments(declaration.value).empty());
    return isEmpty && !isCustom ? Message::kValueMissing : nullptr;
}

// Closes what the end of the text leaves open. A backslash at the end is nothing in a string, and
// U+FFFD elsewhere (sections 4.3.5 and 4.3.7).
void BlockScanner::CloseValue(ScannedDeclaration& declaration, unsigned seen) {
    constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
    std::string& unclosed = declaration.unclosed;
    if ((seen & ComponentScanner::kUnclosed) != 0) {
        unclosed.assign(scanner_.Open().rbegin(), scanner_.Open().rend());
    }
    if (!EndsWithBackslash(declaration.value)) return;
    if (unclosed.starts_with('"') || unclosed.starts_with('\'')) {
        declaration.value.remove_suffix(1);
    } else {
        unclosed.insert(0, kReplacement);
    }
}

// Takes "!important" off the value.
const char* BlockScanner::TakePriority(ScannedDeclaration& declaration, unsigned seen) {
    const char* const bang = scanner_.LastBang();
    const char* const begin = declaration.value.data();
    std::string_view priority = Trimmed(TextBetween(bang + 1, begin + declaration.value.size()));
    std::string bare;
    if ((seen & ComponentScanner::kComment) != 0) priority = bare = WithoutComments(priority);
    if (!IsImportant(priority)) return Message::kImportance;
    declaration.important = true;
    declaration.value = TrimmedValue(TextBetween(begin, bang));
    if (EndsWithEscape(declaration.value)) isPlain_ = false;
    return nullptr;
}

std::string WithoutComments(std::string_view text) {
    const std::string source(text);
    return std::string(TrimmedValue(ComponentScanner(source.c_str()).WithoutComments()));
}

}  // namespace Dom::CSS::detail
