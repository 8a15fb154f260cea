// SPDX-License-Identifier: MIT
#include "TargetText.h"

#include "Utf8.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

namespace Tool {

namespace {

constexpr char32_t kLastAscii = 0x7F;

bool IsAscii(char byte) { return static_cast<unsigned char>(byte) <= kLastAscii; }

// Goes through a text, character by character, and knows where it is in the document.
class Walk {
public:
    Walk(std::string_view text, Place place) : text_(text), place_(place) { Look(); }

    bool AtEnd() const { return text_.empty(); }
    char32_t Code() const { return character_.code; }
    Place At() const { return place_; }

    // Returns the bytes of the character.
    std::string_view Text() const { return text_.substr(0, Length()); }

    void Next() {
        constexpr auto kEscaped = static_cast<long>(std::string_view("&amp;").size());
        const bool isPair = text_.starts_with("\r\n");  // the line ends with the second
        if (Code() == '\n' || (Code() == '\r' && !isPair)) {
            place_ = {place_.line + 1, 1};
        } else {
            place_.column += Code() == '&' ? kEscaped : 1;
        }
        text_.remove_prefix(Length());
        Look();
    }

private:
    std::size_t Length() const { return std::max<std::size_t>(character_.length, 1); }

    void Look() {
        if (!AtEnd()) character_ = FirstCharacter(text_);
    }

    std::string_view text_;
    Place place_;
    Utf8Character character_;
};

// XML 1.0 [2] Char: the reader lets these two pass, but not as references.
bool IsCharacter(char32_t code) { return code != 0xFFFE && code != 0xFFFF; }

std::string Complaint(std::string_view what, char32_t code, const Target& target) {
    return fmt::format("Character U+{:04X} {} {}", static_cast<unsigned>(code), what,
                       target.Name());
}

}  // namespace

TargetText::TargetText(const Target& target, std::string_view newLine)
    : target_(target), newLine_(newLine) {}

std::string_view TargetText::Text(std::string_view text, Place place) {
    return Break(Refer(text, place));
}

std::string_view TargetText::Markup(std::string_view text, Place place) {
    if (IsPlain(text)) return Break(text);
    for (Walk walk(text, place); !walk.AtEnd(); walk.Next()) {
        if (walk.Code() <= target_.LastCharacter()) continue;
        throw MissingCharacter(Complaint("is not in", walk.Code(), target_), walk.At());
    }
    return Break(text);
}

std::string_view TargetText::Name(std::string_view name, Place place) {
    if (IsPlain(name)) return name;
    for (Walk walk(name, place); !walk.AtEnd(); walk.Next()) {
        if (target_.HasInNames(walk.Code())) continue;
        throw MissingCharacter(Complaint("cannot be in a name in", walk.Code(), target_),
                               walk.At());
    }
    return name;
}

// XML 1.0 section 2.11: a reader takes CR LF, CR and LF for the same.
std::string_view TargetText::Break(std::string_view text) {
    const bool writesFeeds = newLine_ == "\n";
    const std::string_view wrong = writesFeeds ? "\r" : "\r\n";
    if (text.find_first_of(wrong) == std::string_view::npos) return text;
    broken_.clear();
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r' && text[i] != '\n') {
            broken_.push_back(text[i]);
            continue;
        }
        if (text.substr(i).starts_with("\r\n")) ++i;
        broken_.append(newLine_);
    }
    return broken_;
}

std::string_view TargetText::Refer(std::string_view text, Place place) {
    if (IsPlain(text)) return text;
    referred_.clear();
    bool isInReference = false;
    for (Walk walk(text, place); !walk.AtEnd(); walk.Next()) {
        if (walk.Code() == '&' || walk.Code() == ';') isInReference = walk.Code() == '&';
        if (isInReference) {
            referred_.append(Name(walk.Text(), walk.At()));
        } else if (walk.Code() > target_.LastCharacter()) {
            if (!IsCharacter(walk.Code())) {
                throw MissingCharacter(Complaint("is not in", walk.Code(), target_), walk.At());
            }
            fmt::format_to(std::back_inserter(referred_), "&#x{:X};",
                           static_cast<unsigned>(walk.Code()));
        } else {
            referred_.append(walk.Text());
        }
    }
    return referred_;
}

// Tells without a closer look that the target has all characters.
bool TargetText::IsPlain(std::string_view text) const {
    return target_.HasAllCharacters() || std::all_of(text.begin(), text.end(), IsAscii);
}

}  // namespace Tool
