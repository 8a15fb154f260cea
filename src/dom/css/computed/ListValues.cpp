// SPDX-License-Identifier: MIT
#include "dom/css/AsciiCase.h"
#include "dom/css/CssCharacters.h"
#include "dom/css/ListPieces.h"
#include "dom/css/TextCursor.h"
#include "dom/css/computed/ColorValue.h"
#include "dom/css/computed/ComponentText.h"
#include "dom/css/computed/LayerValues.h"
#include "dom/css/computed/Measure.h"
#include "dom/css/computed/ValueKinds.h"

#include <algorithm>
#include <bitset>

namespace Dom::CSS::detail {

namespace {

// One or two parts, of which the second is left out when it is the same as the first.
std::optional<astring> Pair(std::string_view value, const ComputingContext& context,
                            LengthRange range) {
    ListPieces pieces(value, ' ');
    std::string_view piece;
    pieces.Next(piece);
    std::optional<astring> first = ComputedLength(piece, context, range);
    if (!first || !pieces.Next(piece)) return first;
    const std::optional<astring> second = ComputedLength(piece, context, range);
    if (!second || pieces.Next(piece)) return {};
    if (*first != *second) {
        *first += ' ';
        *first += *second;
    }
    return first;
}

// Keywords in the order of the property; those that stand for everything are alone.
std::optional<astring> KeywordSet(const PropertyInfo& property, std::string_view value) {
    constexpr std::size_t kMost = 64;
    std::bitset<kMost> seen;
    const auto forEach = [&property](auto&& function) {
        ListPieces entries(property.keywords, ' ');
        std::size_t index = 0;
        for (std::string_view entry; entries.Next(entry); ++index) {
            if (!function(entry, index)) return;
        }
    };
    ListPieces pieces(value, ' ');
    for (std::string_view piece; pieces.Next(piece);) {
        bool isNew = false;
        forEach([&](std::string_view entry, std::size_t index) {
            if (!EqualIgnoringCase(piece, entry.substr(0, entry.find('=')))) return true;
            isNew = !seen[index] && entry != "none" && entry != "normal" && entry != "auto";
            seen.set(index);
            return false;
        });
        if (!isNew) return {};
    }
    astring text;
    forEach([&](std::string_view entry, std::size_t index) {
        if (!seen[index]) return true;
        if (!text.empty()) text += ' ';
        text += entry.substr(entry.find('=') + 1);
        return true;
    });
    return text;
}

// CSS Box Alignment Level 3 chapter 4.
std::optional<astring> Alignment(const PropertyInfo& property, std::string_view value) {
    ListPieces pieces(value, ' ');
    std::string_view modifier;
    std::string_view piece;
    if (!pieces.Next(modifier) || !pieces.Next(piece)) return {};
    const std::optional<std::string_view> keyword = ComputedKeyword(property, piece);
    if (!keyword || pieces.Next(piece)) return {};
    const bool isFirst = EqualIgnoringCase(modifier, "first");
    if (isFirst || EqualIgnoringCase(modifier, "last")) {
        if (*keyword != "baseline") return {};
        return astring(isFirst ? "baseline" : "last baseline");
    }
    const bool isSafe = EqualIgnoringCase(modifier, "safe");
    const bool isPosition = *keyword != "baseline" && *keyword != "stretch" &&
                            *keyword != "normal" && *keyword != "auto" &&
                            !keyword->starts_with("space-");
    if (!isPosition || (!isSafe && !EqualIgnoringCase(modifier, "unsafe"))) return {};
    return astring(isSafe ? "safe " : "unsafe ") + *keyword;
}

// CSS 2.1 section 12.2, CSS Generated Content Level 3 section 2.
std::optional<astring> Content(std::string_view value, const ComputingContext& context) {
    constexpr std::string_view kQuotes[] = {"open-quote", "close-quote", "no-open-quote",
                                            "no-close-quote", "/"};
    constexpr std::string_view kFunctions[] = {"counter(", "counters(", "attr("};
    ListPieces pieces(value, ' ');
    for (std::string_view piece; pieces.Next(piece);) {
        const auto isPiece = [piece](std::string_view known) {
            return EqualIgnoringCase(piece, known);
        };
        const auto isFunction = [piece](std::string_view known) {
            return EqualIgnoringCase(piece.substr(0, known.size()), known);
        };
        const bool isString = piece.front() == '"' || piece.front() == '\'';
        if (!isString && !IsImage(piece) && std::ranges::none_of(kQuotes, isPiece) &&
            std::ranges::none_of(kFunctions, isFunction)) {
            return {};
        }
    }
    return ComputedComponents(value, context);
}

// CSS 2.1 section 12.3.1.
std::optional<astring> QuotePairs(std::string_view value) {
    std::size_t count = 0;
    ListPieces pieces(value, ' ');
    for (std::string_view piece; pieces.Next(piece); ++count) {
        if (piece.front() != '"' && piece.front() != '\'') return {};
    }
    return count % 2 == 0 ? PlainComponents(value) : std::nullopt;
}

// CSS Values Level 4 section 5.7.
std::optional<astring> RatioText(std::string_view value, const ComputingContext& context) {
    astring text;
    std::size_t count = 0;
    ListPieces numbers(value, '/');
    for (std::string_view piece; numbers.Next(piece); ++count) {
        const std::optional<Measure> number = ReadMeasure(piece, MeasureBasis(context));
        if (!number || number->type != Measure::Type::Number || number->value < 0) return {};
        if (count > 0) text += " / ";
        AppendShort(text, number->value);
    }
    if (count == 1) text += " / 1";
    return count <= 2 ? std::optional(std::move(text)) : std::nullopt;
}

// CSS Box Sizing Level 4 section 4.1: "auto" on either side of a ratio; it is printed first.
std::optional<astring> Ratio(std::string_view value, const ComputingContext& context) {
    constexpr std::string_view kAuto = "auto";
    const bool isInFront = EqualIgnoringCase(value.substr(0, kAuto.size()), kAuto);
    const bool isBehind = !isInFront && value.size() > kAuto.size() &&
                          EqualIgnoringCase(value.substr(value.size() - kAuto.size()), kAuto);
    if (isInFront) value.remove_prefix(kAuto.size());
    if (isBehind) value.remove_suffix(kAuto.size());
    const bool isApart =
        isInFront ? !value.empty() && IsSpace(value.front()) : !isBehind || IsSpace(value.back());
    if (!isApart) return {};
    std::optional<astring> text = RatioText(Trimmed(value), context);
    if (text && (isInFront || isBehind)) *text = "auto " + *text;
    return text;
}

// SVG 2 section 13.2: an address may have a colour, or "none", for when it leads nowhere.
std::optional<astring> Paint(std::string_view value, const ComputingContext& context) {
    ListPieces pieces(value, ' ');
    std::string_view piece;
    pieces.Next(piece);
    if (!EqualIgnoringCase(piece.substr(0, 4), "url(")) return ComputedColor(value, context);
    std::optional<astring> text = ComputedComponents(piece, context);
    if (!text || !pieces.Next(piece)) return text;
    const bool isNone = EqualIgnoringCase(piece, "none");
    const std::optional<astring> other = isNone ? astring("none") : ComputedColor(piece, context);
    if (!other || pieces.Next(piece)) return {};
    *text += ' ';
    *text += *other;
    return text;
}

// CSS 2.1 section 11.1.2.
std::optional<astring> Clip(std::string_view value, const ComputingContext& context) {
    constexpr std::string_view kBegin = "rect(";
    if (!EqualIgnoringCase(value.substr(0, kBegin.size()), kBegin) || value.back() != ')')
        return {};
    value.remove_prefix(kBegin.size());
    value.remove_suffix(1);
    constexpr std::size_t kSides = 4;
    const bool hasCommas = value.find(',') != value.npos;
    ListPieces sides(Trimmed(value), hasCommas ? ',' : ' ');
    astring text = kBegin;
    std::size_t count = 0;
    for (std::string_view side; sides.Next(side);) {
        if (++count > 1) text += ", ";
        if (count > kSides) return {};
        if (EqualIgnoringCase(side, "auto")) {
            text += "auto";
            continue;
        }
        const std::optional<astring> length = ComputedLength(side, context, {.hasNegatives = true});
        if (!length) return {};
        text += *length;
    }
    text += ')';
    return count == kSides ? std::optional(std::move(text)) : std::nullopt;
}

// SVG 2 section 13.5.6: lengths with commas or blanks between them; numbers are pixels.
std::optional<astring> Dashes(std::string_view value, const ComputingContext& context) {
    astring text;
    ListPieces groups(value, ',');
    for (std::string_view group; groups.Next(group);) {
        if (group.empty()) return {};
        ListPieces pieces(group, ' ');
        for (std::string_view piece; pieces.Next(piece);) {
            const std::optional<astring> dash =
                ComputedLength(piece, context, {.hasPercentages = true, .hasNumbers = true});
            if (!dash) return {};
            if (!text.empty()) text += ", ";
            text += *dash;
        }
    }
    return text;
}

// CSS 2.1 section 12.4.
std::optional<astring> Counters(std::string_view value, std::string_view missing,
                                const ComputingContext& context) {
    astring text;
    bool needsNumber = false;
    ListPieces pieces(value, ' ');
    for (std::string_view piece; pieces.Next(piece);) {
        const std::optional<Measure> number = ReadMeasure(piece, MeasureBasis(context));
        if (number) {
            if (!needsNumber || !number->isInteger) return {};
            text += ' ';
            AppendShort(text, number->value);
            needsNumber = false;
            continue;
        }
        TextCursor cursor(piece);
        astring buffer;
        if (ReadIdent(cursor, buffer).empty() || cursor.at != cursor.end ||
            EqualIgnoringCase(piece, "none")) {
            return {};
        }
        if (needsNumber) text += missing;
        if (!text.empty()) text += ' ';
        text += piece;
        needsNumber = true;
    }
    if (needsNumber) text += missing;
    return text;
}

// CSS Basic User Interface Level 4 section 6.1.1: images, each with a point, and a keyword.
std::optional<astring> Cursor(const PropertyInfo& property, std::string_view value,
                              const ComputingContext& context) {
    astring text;
    bool isOver = false;
    ListPieces cursors(value, ',');
    for (std::string_view cursor; cursors.Next(cursor);) {
        if (isOver) return {};
        if (!text.empty()) text += ", ";
        if (const auto keyword = ComputedKeyword(property, cursor)) {
            text += *keyword;
            isOver = true;
            continue;
        }
        ListPieces pieces(cursor, ' ');
        std::size_t numbers = 0;
        std::string_view piece;
        pieces.Next(piece);
        if (!IsImage(piece)) return {};
        while (pieces.Next(piece)) {
            const std::optional<Measure> number = ReadMeasure(piece, MeasureBasis(context));
            if (!number || number->type != Measure::Type::Number) return {};
            ++numbers;
        }
        const std::optional<astring> image = ComputedComponents(cursor, context);
        if (!image || (numbers != 0 && numbers != 2)) return {};
        text += *image;
    }
    return isOver ? std::optional(text) : std::nullopt;
}

}  // namespace

std::optional<astring> ComputedList(const PropertyInfo& property, std::string_view value,
                                    const ComputingContext& context) {
    switch (property.kind) {
    case ValueKind::KeywordSet: return KeywordSet(property, value);
    case ValueKind::Alignment: return Alignment(property, value);
    case ValueKind::QuotePairs: return QuotePairs(value);
    case ValueKind::Content: return Content(value, context);
    case ValueKind::Ratio: return Ratio(value, context);
    case ValueKind::Paint: return Paint(value, context);
    case ValueKind::LengthPair: return Pair(value, context, {});
    case ValueKind::Radius: return Pair(value, context, {.hasPercentages = true});
    case ValueKind::Dashes: return Dashes(value, context);
    case ValueKind::Clip: return Clip(value, context);
    case ValueKind::CounterValues: return Counters(value, " 0", context);
    case ValueKind::CounterChanges: return Counters(value, " 1", context);
    case ValueKind::Cursor: return Cursor(property, value, context);
    case ValueKind::Image: return ComputedImage(value, context);
    case ValueKind::Origin: return ComputedOrigin(value, context);
    default: return ComputedLayers(property, value, context);
    }
}

}  // namespace Dom::CSS::detail
