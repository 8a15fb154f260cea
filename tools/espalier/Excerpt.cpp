// SPDX-License-Identifier: MIT
#include "Excerpt.h"

#include "Utf8.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <vector>

namespace Tool {

namespace {

// Bytes of a line that are kept on each side of the place: more than can be shown.
constexpr std::size_t kKeep = 600;

// Columns of a line that are shown, and how many of them stand before the place when it is cut.
constexpr int kShown = 70;
constexpr int kShownBefore = 45;

// Follows the text byte by byte on the line of the place.
class PlaceFinder {
public:
    PlaceFinder(MarkupTracker tracker, Place place, ColumnCount count)
        : tracker_(tracker), wanted_(place), count_(count) {}

    // Returns whether the search is over.
    bool Take(std::string_view text) {
        if (!excerpt_.found && tracker_.Line() < wanted_.line) {
            text.remove_prefix(tracker_.AdvanceToLine(text, wanted_.line));
        }
        for (const char byte : text) {
            if (!excerpt_.found && IsHere(byte)) Find();
            if (excerpt_.found ? !TakeAfter(byte) : !TakeBefore(byte)) return true;
        }
        return false;
    }

    Excerpt Finish() {
        const bool atEnd = tracker_.Line() == wanted_.line;
        if (!excerpt_.found && atEnd) Find();
        return std::move(excerpt_);
    }

private:
    // A line break on the line stands behind every column that the line has.
    bool IsHere(char byte) const {
        if (tracker_.IsSilent(byte)) return false;
        return byte == '\n' || byte == '\r' || Column() >= wanted_.column;
    }

    long Column() const {
        constexpr auto kLengthening = static_cast<long>(std::string_view("amp;").size());
        switch (count_) {
        case ColumnCount::People: break;
        case ColumnCount::Reader: return tracker_.ReaderColumn();
        case ColumnCount::Escaped: return tracker_.Column() + kLengthening * ampersands_;
        }
        return tracker_.Column();
    }

    void Find() {
        excerpt_.found = true;
        excerpt_.place = {tracker_.Line(), tracker_.Column()};
        excerpt_.isBehind = Column() < wanted_.column;
        excerpt_.inside = tracker_.Inside();
        excerpt_.insideSince = tracker_.InsideSince();
    }

    bool TakeBefore(char byte) {
        if (tracker_.Line() > wanted_.line) return false;
        tracker_.Step(byte);
        if (byte == '\n' || byte == '\r') return true;
        if (byte == '&') ++ampersands_;
        excerpt_.before.push_back(byte);
        if (excerpt_.before.size() > 2 * kKeep) {
            excerpt_.before.erase(0, kKeep);
            excerpt_.cutBefore = true;
        }
        return true;
    }

    bool TakeAfter(char byte) {
        if (byte == '\n' || byte == '\r') return false;
        if (excerpt_.after.size() >= kKeep) {
            excerpt_.cutAfter = true;
            return false;
        }
        excerpt_.after.push_back(byte);
        return true;
    }

    MarkupTracker tracker_;
    Place wanted_;
    ColumnCount count_;
    long ampersands_ = 0;  // on the line, before the place
    Excerpt excerpt_;
};

// A character as the terminal shows it.
struct Glyph {
    std::string text;
    int width = 1;
};

struct CodeRange {
    char32_t first;
    char32_t last;
};

// clang-format off
constexpr CodeRange kWide[] = {  // East Asian wide and full-width characters, emoji
    {0x1100, 0x115F}, {0x2E80, 0x303E}, {0x3041, 0xA4CF}, {0xA960, 0xA97F}, {0xAC00, 0xD7A3},
    {0xF900, 0xFAFF}, {0xFE30, 0xFE6F}, {0xFF00, 0xFF60}, {0xFFE0, 0xFFE6}, {0x1F300, 0x1F64F},
    {0x1F680, 0x1F6FF}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD}};
constexpr CodeRange kCombining[] = {  // combining marks, joiners, variation selectors
    {0x0300, 0x036F}, {0x0483, 0x0489}, {0x0591, 0x05BD}, {0x0610, 0x061A}, {0x064B, 0x065F},
    {0x1AB0, 0x1AFF}, {0x1DC0, 0x1DFF}, {0x200B, 0x200D}, {0x20D0, 0x20FF}, {0xFE00, 0xFE0F},
    {0xFE20, 0xFE2F}};
constexpr CodeRange kUnsafe[] = {  // controls, and what turns the direction of writing around
    {0x00, 0x08}, {0x0A, 0x1F}, {0x7F, 0x9F}, {0x200E, 0x200F}, {0x2028, 0x202E},
    {0x2066, 0x2069}, {0xFEFF, 0xFEFF}};
// clang-format on

template <std::size_t size>
bool IsIn(const CodeRange (&ranges)[size], char32_t code) {
    return std::any_of(std::begin(ranges), std::end(ranges), [code](const CodeRange& range) {
        return code >= range.first && code <= range.last;
    });
}

std::vector<Glyph> Glyphs(std::string_view text) {
    std::vector<Glyph> glyphs;
    while (!text.empty()) {
        const Utf8Character character = FirstCharacter(text);
        const std::size_t length = std::max<std::size_t>(character.length, 1);
        if (character.length == 0 || IsIn(kUnsafe, character.code)) {
            glyphs.push_back({"\xEF\xBF\xBD", 1});
        } else {
            const int width = IsIn(kCombining, character.code) ? 0
                              : IsIn(kWide, character.code)    ? 2
                                                               : 1;
            glyphs.push_back({std::string(text.substr(0, length)), width});
        }
        text.remove_prefix(length);
    }
    return glyphs;
}

int Width(const std::vector<Glyph>& glyphs) {
    int width = 0;
    for (const Glyph& glyph : glyphs)
        width += glyph.width;
    return width;
}

// The part of a line that is kept may begin or end within a character.
std::string_view WholeCharacters(std::string_view text, bool cutBefore, bool cutAfter) {
    if (cutBefore) {
        while (!text.empty() && IsContinuation(text.front()))
            text.remove_prefix(1);
    }
    if (cutAfter) {
        while (!text.empty() && IsContinuation(text.back()))
            text.remove_suffix(1);
        if (!text.empty() && static_cast<unsigned char>(text.back()) >= 0x80) text.remove_suffix(1);
    }
    return text;
}

}  // namespace

Excerpt FindPlace(SourceText& text, Place place, ColumnCount count) {
    PlaceFinder finder(text.Start(), place, count);
    if (text.Start().Line() > place.line) return {};
    for (std::string_view piece = text.Next(); !piece.empty(); piece = text.Next()) {
        if (finder.Take(piece)) break;
    }
    return finder.Finish();
}

std::string ShowExcerpt(const Excerpt& excerpt, std::string_view caretStart,
                        std::string_view caretEnd) {
    bool cutBefore = excerpt.cutBefore;
    bool cutAfter = excerpt.cutAfter;
    std::vector<Glyph> before = Glyphs(WholeCharacters(excerpt.before, cutBefore, false));
    std::vector<Glyph> after = Glyphs(WholeCharacters(excerpt.after, false, cutAfter));
    const auto isBlank = [](const Glyph& glyph) { return glyph.text == " " || glyph.text == "\t"; };
    if (std::all_of(before.begin(), before.end(), isBlank) &&
        std::all_of(after.begin(), after.end(), isBlank)) {
        return {};
    }

    // Take away what does not fit: first behind the place, then before it.
    const int roomAfter = std::max(kShown - Width(before), kShown - kShownBefore);
    while (Width(after) > roomAfter) {
        after.pop_back();
        cutAfter = true;
    }
    std::size_t dropped = 0;
    int widthBefore = Width(before);
    while (widthBefore > kShown - Width(after)) {
        widthBefore -= before[dropped++].width;
        cutBefore = true;
    }
    before.erase(before.begin(), before.begin() + static_cast<std::ptrdiff_t>(dropped));

    std::string line = cutBefore ? "..." : "";
    std::string indent(line.size(), ' ');
    for (const Glyph& glyph : before) {
        line += glyph.text;
        indent +=
            glyph.text == "\t" ? "\t" : std::string(static_cast<std::size_t>(glyph.width), ' ');
    }
    for (const Glyph& glyph : after)
        line += glyph.text;
    if (cutAfter) line += "...";
    const std::string number = fmt::format("{:5}", excerpt.place.line);
    if (excerpt.isBehind || excerpt.isUnsure) return fmt::format("{} | {}\n", number, line);
    return fmt::format("{} | {}\n{:{}} | {}{}^{}\n", number, line, "", number.size(), indent,
                       caretStart, caretEnd);
}

}  // namespace Tool
