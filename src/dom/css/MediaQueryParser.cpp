// SPDX-License-Identifier: MIT
//
// media_query: [ONLY | NOT]? S* media_type S* [ AND S* expression ]*
//            | expression [ AND S* expression ]*
// expression:  '(' S* media_feature S* [ ':' S* expr ]? ')' S*
#include "dom/css/MediaQueryParser.h"

#include "dom/css/AsciiCase.h"
#include "dom/css/BlockScanner.h"
#include "dom/css/CssCharacters.h"
#include "dom/css/NumberText.h"
#include "dom/css/TextCursor.h"

#include <array>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>

namespace Dom::CSS::detail {

namespace {

// What values a feature has.
enum class ValueKind : unsigned char { Length, Ratio, Integer, Resolution, Orientation, Scan, Bit };

struct FeatureName {
    std::string_view name;
    ValueKind kind;
};

// In the order of the enumeration.
constexpr std::array<FeatureName, static_cast<std::size_t>(MediaFeature::Unknown)> kFeatures = {{
    {"width", ValueKind::Length},
    {"height", ValueKind::Length},
    {"device-width", ValueKind::Length},
    {"device-height", ValueKind::Length},
    {"orientation", ValueKind::Orientation},
    {"aspect-ratio", ValueKind::Ratio},
    {"device-aspect-ratio", ValueKind::Ratio},
    {"color", ValueKind::Integer},
    {"color-index", ValueKind::Integer},
    {"monochrome", ValueKind::Integer},
    {"resolution", ValueKind::Resolution},
    {"scan", ValueKind::Scan},
    {"grid", ValueKind::Bit},
}};

struct Unit {
    std::string_view name;
    double factor;
};

constexpr Unit kLengths[] = {{"px", 1},  {"cm", 96 / 2.54}, {"mm", 96 / 25.4}, {"q", 96 / 101.6},
                             {"in", 96}, {"pt", 96.0 / 72}, {"pc", 16}};
// Of letters that nobody has changed; an "ex" is taken for half an "em".
constexpr Unit kFontLengths[] = {{"em", 1}, {"rem", 1}, {"ex", 0.5}};
constexpr Unit kResolutions[] = {{"dpi", 1.0 / 96}, {"dpcm", 2.54 / 96}, {"dppx", 1}, {"x", 1}};

template <std::size_t Count>
std::optional<double> FactorOf(const Unit (&units)[Count], std::string_view name) {
    for (const Unit& unit : units) {
        if (EqualIgnoringCase(unit.name, name)) return unit.factor;
    }
    return {};
}

// CSS 2.1 section 4.3.1: a number with or without a sign, which needs no digit before the point.
std::optional<double> ReadNumber(TextCursor& cursor) {
    TextCursor next = cursor;
    const bool isNegative = SkipCharacter(next, '-');
    if (!isNegative) SkipCharacter(next, '+');
    const char* const begin = next.at;
    while (next.IsAt(kDigit))
        ++next.at;
    if (next.Front() == '.' && next.at + 1 != next.end && IsDigit(next.at[1])) {
        ++next.at;
        while (next.IsAt(kDigit))
            ++next.at;
    }
    const std::string_view digits = next.Since(begin);
    if (digits.empty()) return {};
    std::string_view text = digits;
    const std::optional<double> value = TakeDecimal(text);
    if (!value) return {};
    cursor.at = next.at;
    return isNegative ? -*value : *value;
}

class QueryParser {
public:
    explicit QueryParser(std::string_view text) : cursor_(text) {}

    MediaQuery Parse();

private:
    bool ParseQuery(MediaQuery& query);
    bool ParseType(MediaQuery& query);
    bool ParseCondition(MediaCondition& condition);
    bool ParseName(MediaCondition& condition);
    bool ParseValue(MediaCondition& condition);
    bool ParseLength(MediaCondition& condition);
    bool ParseRatio(MediaCondition& condition);
    bool ParseInteger(double& value);
    bool ParseResolution(MediaCondition& condition);
    bool ParseKeyword(MediaCondition& condition, std::string_view zero, std::string_view one);
    bool TakeWord(std::string_view word);
    bool IsAtEnd() const { return cursor_.at == cursor_.end; }

    TextCursor cursor_;
    astring buffer_;
};

MediaQuery QueryParser::Parse() {
    MediaQuery query;
    query.isUnderstood = ParseQuery(query) && IsAtEnd();
    return query;
}

// Takes a word with the white space behind it. One before a parenthesis is a function.
bool QueryParser::TakeWord(std::string_view word) {
    TextCursor next = cursor_;
    if (!EqualIgnoringCase(ReadIdent(next, buffer_), word) || next.Front() == '(') return false;
    SkipBlanks(next);
    cursor_.at = next.at;
    return true;
}

bool QueryParser::ParseQuery(MediaQuery& query) {
    SkipBlanks(cursor_);
    if (cursor_.Front() != '(') {
        if (!ParseType(query)) return false;
        if (IsAtEnd()) return true;
        if (!TakeWord("and")) return false;
    }
    do {
        MediaCondition condition;
        if (!ParseCondition(condition)) return false;
        query.conditions.push_back(condition);
        SkipBlanks(cursor_);
    } while (TakeWord("and"));
    return true;
}

bool QueryParser::ParseType(MediaQuery& query) {
    query.isNegated = TakeWord("not");
    if (!query.isNegated) TakeWord("only");
    for (const std::string_view reserved : {"not", "only", "and", "or"}) {
        if (TakeWord(reserved)) return false;
    }
    query.type = ReadIdent(cursor_, buffer_);
    if (query.type.empty() || cursor_.Front() == '(') return false;
    for (char& character : query.type)
        character = ToLower(character);
    if (query.type == "all") query.type.clear();
    SkipBlanks(cursor_);
    return true;
}

bool QueryParser::ParseCondition(MediaCondition& condition) {
    if (!SkipCharacter(cursor_, '(')) return false;
    SkipBlanks(cursor_);
    if (!ParseName(condition)) return false;
    SkipBlanks(cursor_);
    if (SkipCharacter(cursor_, ')')) {
        if (condition.range != MediaCondition::Range::Exact) return false;
        condition.range = MediaCondition::Range::Any;
        return true;
    }
    if (!SkipCharacter(cursor_, ':')) return false;
    SkipBlanks(cursor_);
    return ParseValue(condition) && SkipClosing(cursor_);
}

bool QueryParser::ParseName(MediaCondition& condition) {
    std::string name(ReadIdent(cursor_, buffer_));
    for (char& character : name)
        character = ToLower(character);
    std::string_view rest = name;
    condition.range = MediaCondition::Range::Exact;
    if (rest.starts_with("min-")) condition.range = MediaCondition::Range::Min;
    if (rest.starts_with("max-")) condition.range = MediaCondition::Range::Max;
    if (condition.range != MediaCondition::Range::Exact) rest.remove_prefix(4);
    std::size_t index = 0;
    while (index < kFeatures.size() && kFeatures[index].name != rest)
        ++index;
    condition.feature = static_cast<MediaFeature>(index);
    if (index == kFeatures.size()) return false;
    const ValueKind kind = kFeatures[index].kind;
    const bool hasNoRange =
        kind == ValueKind::Orientation || kind == ValueKind::Scan || kind == ValueKind::Bit;
    return !hasNoRange || condition.range == MediaCondition::Range::Exact;
}

bool QueryParser::ParseValue(MediaCondition& condition) {
    switch (kFeatures[static_cast<std::size_t>(condition.feature)].kind) {
    case ValueKind::Length: return ParseLength(condition);
    case ValueKind::Ratio: return ParseRatio(condition);
    case ValueKind::Integer: return ParseInteger(condition.value) && condition.value >= 0;
    case ValueKind::Resolution: return ParseResolution(condition);
    case ValueKind::Orientation: return ParseKeyword(condition, "portrait", "landscape");
    case ValueKind::Scan: return ParseKeyword(condition, "progressive", "interlace");
    case ValueKind::Bit:
        return ParseInteger(condition.value) && (condition.value == 0 || condition.value == 1);
    }
    return false;
}

bool QueryParser::ParseLength(MediaCondition& condition) {
    const std::optional<double> number = ReadNumber(cursor_);
    if (!number || *number < 0) return false;
    const std::string_view unit = ReadIdent(cursor_, buffer_);
    condition.value = *number;
    if (unit.empty()) return *number == 0;
    if (const auto factor = FactorOf(kLengths, unit)) {
        condition.value *= *factor;
        return true;
    }
    const auto factor = FactorOf(kFontLengths, unit);
    condition.value *= factor.value_or(0);
    condition.isInEms = true;
    return factor.has_value();
}

// Both parts are above zero.
bool QueryParser::ParseRatio(MediaCondition& condition) {
    if (!ParseInteger(condition.value) || condition.value <= 0) return false;
    SkipBlanks(cursor_);
    if (!SkipCharacter(cursor_, '/')) return false;
    SkipBlanks(cursor_);
    return ParseInteger(condition.divisor) && condition.divisor > 0;
}

bool QueryParser::ParseInteger(double& value) {
    const std::optional<std::int32_t> number = ReadInteger(cursor_);
    if (!number || cursor_.Front() == '.' || cursor_.IsAt(kName)) return false;
    value = static_cast<double>(*number);
    return true;
}

bool QueryParser::ParseResolution(MediaCondition& condition) {
    const std::optional<double> number = ReadNumber(cursor_);
    if (!number || *number < 0) return false;
    const auto factor = FactorOf(kResolutions, ReadIdent(cursor_, buffer_));
    condition.value = *number * factor.value_or(0);
    return factor.has_value();
}

bool QueryParser::ParseKeyword(MediaCondition& condition, std::string_view zero,
                               std::string_view one) {
    const std::string_view word = ReadIdent(cursor_, buffer_);
    condition.value = EqualIgnoringCase(word, one) ? 1 : 0;
    return EqualIgnoringCase(word, zero) || EqualIgnoringCase(word, one);
}

// Returns the end of the first query: a comma outside of brackets and strings, or the end.
std::size_t EndOfQuery(std::string_view text) {
    char quote = '\0';
    int depth = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char character = text[i];
        if (quote != '\0') {
            if (character == quote) quote = '\0';
            continue;
        }
        if (character == '"' || character == '\'') quote = character;
        if (character == '(' || character == '[' || character == '{') ++depth;
        if (character == ')' || character == ']' || character == '}') --depth;
        if (character == ',' && depth <= 0) return i;
    }
    return text.size();
}

}  // namespace

std::vector<MediaQuery> ParseMediaQueries(std::string_view text) {
    std::vector<MediaQuery> queries;
    if (text.find('\0') != std::string_view::npos) return {MediaQuery()};
    const std::string bare = WithoutComments(text);
    if (bare.empty()) return queries;
    for (std::string_view rest = bare;;) {
        const std::size_t end = EndOfQuery(rest);
        queries.push_back(QueryParser(Trimmed(rest.substr(0, end))).Parse());
        if (end == rest.size()) return queries;
        rest.remove_prefix(end + 1);
    }
}

}  // namespace Dom::CSS::detail
