// SPDX-License-Identifier: MIT
#include "dom/css/computed/ComponentText.h"

#include "dom/UriReference.h"
#include "dom/css/AsciiCase.h"
#include "dom/css/QuotedText.h"
#include "dom/css/TextCursor.h"
#include "dom/css/computed/ColorValue.h"
#include "dom/css/computed/Measure.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace Dom::CSS::detail {

namespace {

constexpr std::string_view kForeignPrefixes[] = {"-moz-", "-ms-", "-o-", "-khtml-"};
// The functions that keep the case of names.
constexpr std::string_view kNaming[] = {"counter", "counters", "attr", "symbols"};
// The functions with numbers that are no lengths, where others take a 0 for one.
constexpr std::string_view kCounting[] = {
    "scale",    "scalex",     "scaley",       "scale3d",    "scalez",          "matrix", "matrix3d",
    "rotate",   "rotatex",    "rotatey",      "rotatez",    "rotate3d",        "skew",   "skewx",
    "skewy",    "brightness", "contrast",     "grayscale",  "hue-rotate",      "invert", "opacity",
    "saturate", "sepia",      "cubic-bezier", "steps",      "image-set",       "repeat", "counter",
    "counters", "attr",       "symbols",      "color-stop", "-webkit-gradient"};

// Those of them that take a percentage for a number (Filter Effects section 6).
constexpr std::string_view kFactors[] = {"brightness", "contrast", "grayscale", "invert",
                                         "opacity",    "saturate", "sepia"};

bool HasName(std::span<const std::string_view> names, std::string_view name) {
    return std::ranges::find(names, name) != names.end();
}

bool BeginsWith(std::string_view text, std::string_view prefix) {
    return EqualIgnoringCase(text.substr(0, prefix.size()), prefix);
}

void AppendLower(astring& text, std::string_view added) {
    for (const char character : added)
        text += ToLower(character);
}

// CSS Transforms Level 1 section 9: the axis in the name of a function is a capital letter.
astring FunctionName(const astring& lower) {
    constexpr std::string_view kOfAxes[] = {"translate", "rotate", "scale", "skew"};
    const std::string_view name = lower;
    const std::string_view stem = name.substr(0, name.empty() ? 0 : name.size() - 1);
    if (!HasName(kOfAxes, stem) || name.back() < 'x' || name.back() > 'z') return lower;
    astring capital = stem;
    capital += static_cast<char>(name.back() - ('a' - 'A'));
    return capital;
}

bool IsCalculation(std::string_view name) {
    return name == "calc" || name == "-webkit-calc" || name == "min" || name == "max" ||
           name == "clamp";
}

// Returns the place behind the parenthesis that closes the one at `begin`; the end when none does.
const char* BehindParentheses(const char* begin, const char* end) {
    std::size_t depth = 0;
    char quote = '\0';
    for (const char* at = begin; at != end; ++at) {
        if (*at == '\\' && at + 1 != end) {
            ++at;
        } else if (quote != '\0') {
            if (*at == quote) quote = '\0';
        } else if (*at == '"' || *at == '\'') {
            quote = *at;
        } else if (*at == '(') {
            ++depth;
        } else if (*at == ')' && --depth == 0) {
            return at + 1;
        }
    }
    return end;
}

// Goes through the components once, without recursion: what is open is in a list.
class ComponentWriter {
public:
    ComponentWriter(std::string_view text, const ComputingContext* context)
        : cursor_(text), context_(context) {}

    std::optional<astring> Write() {
        while (SkipBlanks(cursor_), cursor_.at != cursor_.end) {
            if (!WriteOne()) return {};
        }
        if (!open_.empty()) return {};
        return std::move(result_);
    }

private:
    // What is open: a bracket, or the parenthesis of a function.
    struct Open {
        char closing;
        bool keepsNames;
        bool takesLengths;
        bool takesFactors;
    };

    bool WriteOne();
    bool WriteSign(char sign);
    bool WriteString();
    bool WriteNumber(std::string_view number);
    bool WriteHash();
    bool WriteName();
    bool WriteFunction(std::string_view name);
    bool WriteAddress();
    void WriteIdent(std::string_view ident);

    bool IsIn(bool Open::*what) const { return !open_.empty() && open_.back().*what; }
    bool IsComputed() const { return context_ != nullptr; }
    // Puts what separates a component from what is in front of it.
    astring& Next() {
        if (!result_.empty() && result_.back() != '(' && result_.back() != '[' &&
            result_.back() != ' ') {
            result_ += ' ';
        }
        return result_;
    }

    TextCursor cursor_;
    const ComputingContext* context_;
    astring result_;
    std::vector<Open> open_;
};

bool ComponentWriter::WriteOne() {
    const char front = cursor_.Front();
    if (front == '"' || front == '\'') return WriteString();
    const std::string_view rest(cursor_.at, static_cast<std::size_t>(cursor_.end - cursor_.at));
    if (const std::string_view number = NumberInFront(rest); !number.empty())
        return WriteNumber(number);
    if (front == '#') return WriteHash();
    if (cursor_.IsAt(kName) || front == '\\') return WriteName();
    ++cursor_.at;
    return WriteSign(front);
}

bool ComponentWriter::WriteSign(char sign) {
    switch (sign) {
    case ',': result_ += ", "; return true;
    case '/': Next() += "/ "; return true;
    case '(':
    case '[': {
        Next() += sign;
        const bool keepsNames = sign == '[';
        open_.push_back({keepsNames ? ']' : ')', keepsNames, false, false});
        return true;
    }
    case ')':
    case ']':
        if (open_.empty() || open_.back().closing != sign) return false;
        open_.pop_back();
        result_ += sign;
        return true;
    default:
        if (IsComputed()) return false;
        Next() += sign;
        return true;
    }
}

bool ComponentWriter::WriteString() {
    astring buffer;
    const std::optional<std::string_view> string = ReadString(cursor_, buffer);
    if (!string) return false;
    Next() += Quoted(*string);
    return true;
}

bool ComponentWriter::WriteNumber(std::string_view number) {
    cursor_.at += number.size();
    Next();
    if (!IsComputed()) {
        result_ += number;
        return true;
    }
    std::optional<Measure> measure = ReadMeasure(number, MeasureBasis(*context_));
    if (!measure) {
        AppendLower(result_, number);
        return true;
    }
    const bool isLength =
        measure->type == Measure::Type::Number && measure->value == 0 && IsIn(&Open::takesLengths);
    if (isLength) measure->type = Measure::Type::Length;
    if (measure->IsPercentage() && IsIn(&Open::takesFactors)) {
        AppendShort(result_, measure->percent / 100);
    } else if (measure->type == Measure::Type::Length) {
        AppendLength(result_, *measure);
    } else {
        AppendMeasure(result_, *measure);
    }
    return true;
}

bool ComponentWriter::WriteHash() {
    const char* const begin = cursor_.at++;
    cursor_.at = BehindName(cursor_);
    const std::string_view hash = cursor_.Since(begin);
    if (!IsComputed()) {
        Next() += hash;
        return true;
    }
    const std::optional<astring> color = ComputedColor(hash, *context_);
    if (color) Next() += *color;
    return color.has_value();
}

bool ComponentWriter::WriteName() {
    const char* const begin = cursor_.at;
    while (cursor_.at != cursor_.end && (cursor_.IsAt(kName) || *cursor_.at == '\\')) {
        if (*cursor_.at == '\\' && cursor_.at + 1 != cursor_.end) ++cursor_.at;
        ++cursor_.at;
    }
    const std::string_view name = cursor_.Since(begin);
    if (IsComputed()) {
        for (const std::string_view prefix : kForeignPrefixes) {
            if (BeginsWith(name, prefix)) return false;
        }
    }
    if (cursor_.Front() != '(') {
        WriteIdent(name);
        return true;
    }
    if (EqualIgnoringCase(name, "url")) {
        cursor_.at = begin;
        return WriteAddress();
    }
    return WriteFunction(name);
}

void ComponentWriter::WriteIdent(std::string_view ident) {
    const bool keepsName = !IsComputed() || IsIn(&Open::keepsNames);
    if (keepsName) {
        Next() += ident;
    } else if (const std::optional<astring> color = ComputedColor(ident, *context_)) {
        Next() += *color;
    } else {
        AppendLower(Next(), ident);
    }
}

// Entered at the parenthesis.
bool ComponentWriter::WriteFunction(std::string_view name) {
    astring lower;
    AppendLower(lower, name);
    if (IsComputed() && (IsColorFunction(lower) || IsCalculation(lower))) {
        const char* const begin = name.data();
        cursor_.at = BehindParentheses(cursor_.at, cursor_.end);
        const std::string_view text = cursor_.Since(begin);
        if (IsColorFunction(lower)) {
            const std::optional<astring> color = ComputedColor(text, *context_);
            if (color) Next() += *color;
            return color.has_value();
        }
        const std::optional<Measure> measure = ReadMeasure(text, MeasureBasis(*context_));
        if (!measure) return false;
        if (measure->type == Measure::Type::Length) {
            AppendLength(Next(), *measure);
        } else {
            AppendMeasure(Next(), *measure);
        }
        return true;
    }
    Next() += FunctionName(lower);
    result_ += '(';
    ++cursor_.at;
    open_.push_back(
        {')', HasName(kNaming, lower), !HasName(kCounting, lower), HasName(kFactors, lower)});
    return true;
}

bool ComponentWriter::WriteAddress() {
    const char* const begin = cursor_.at;
    // Names of functions are there in any case, which the reader of addresses does not take.
    constexpr std::string_view kBegin = "url(";
    const char* const end = BehindParentheses(cursor_.at + kBegin.size() - 1, cursor_.end);
    astring text = kBegin;
    text += std::string_view(begin, static_cast<std::size_t>(end - begin)).substr(kBegin.size());
    TextCursor cursor{std::string_view(text)};
    astring buffer;
    const std::optional<std::string_view> address = ReadUrl(cursor, buffer);
    if (!address || cursor.at != cursor.end) return false;
    cursor_.at = end;
    if (IsComputed()) {
        Next() += ComputedAddress(*address, *context_);
    } else {
        Next() += kBegin;
        result_ += Quoted(*address);
        result_ += ')';
    }
    return true;
}

}  // namespace

std::optional<astring> PlainComponents(std::string_view text) {
    return ComponentWriter(text, nullptr).Write();
}

std::optional<astring> ComputedComponents(std::string_view text, const ComputingContext& context) {
    return ComponentWriter(text, &context).Write();
}

// CSS Values Level 3 section 3.4: relative to the sheet; a fragment alone stays as it is, and so
// does what is nothing.
astring ComputedAddress(std::string_view address, const ComputingContext& context) {
    astring result = "url(";
    const bool isComplete = address.empty() || address.front() == '#' ||
                            !Dom::detail::UriReference(address).scheme.empty();
    if (isComplete) {
        result += Quoted(address);
    } else {
        const std::size_t fragment = std::min(address.find('#'), address.size());
        astring absolute =
            Dom::detail::ResolveReference(context.baseAddress, address.substr(0, fragment));
        absolute += address.substr(fragment);
        astring escaped;
        for (const char character : std::string_view(absolute)) {
            if (character == ' ') {
                escaped += "%20";
            } else {
                escaped += character;
            }
        }
        result += Quoted(escaped);
    }
    result += ')';
    return result;
}

}  // namespace Dom::CSS::detail
