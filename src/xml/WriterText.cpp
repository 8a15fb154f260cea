// SPDX-License-Identifier: MIT

// Texts, values and what else stands in them.

#include <espalier/xml/XmlTextReader.h>

#include "encoding/Utf8.h"
#include "xml/EscapeScan.h"
#include "xml/WriterCore.h"
#include "xml/WriterMessages.h"

#include <array>
#include <cstddef>

namespace Xml::detail {

// Gets ready for a text in the innermost element, or in the value of the attribute that is open.
// Behind the root element nothing changes, as with comments there.
void WriterCore::BeginContent() {
    if (state_ == WriteState::Attribute || depth_ == 0) return;
    CloseTag();
    state_ = WriteState::Content;
    Top().isMixed = true;
}

// Remembers a part of a value that means something to the writer.
void WriterCore::NoteValue(std::string_view text) {
    const bool isNoted = state_ == WriteState::Attribute && role_ != AttributeRole::Ordinary;
    if (isNoted) Make([&] { value_ += text; });
}

void WriterCore::PutContent(std::string_view text, bool escapes) {
    BeginContent();
    PutValue(text, escapes);
    NoteValue(text);
}

// Writes a text for which nothing but ">" has to be written before.
bool WriterCore::StringQuickly(std::string_view text) {
    const bool closesTag = state_ == WriteState::Element;
    if (state_ == WriteState::Attribute || (closesTag && NeedsDeclarations())) return false;
    if (!output_.PutPlainText(text, closesTag, BreaksArePlain())) return false;
    tagOpen_ = false;
    state_ = WriteState::Content;
    Top().isMixed = true;
    return true;
}

void WriterCore::String(std::string_view text) {
    RequireText();
    if (StringQuickly(text)) return;
    const bool escapes = CheckText(text);
    PutContent(text, escapes);
}

void WriterCore::Whitespace(std::string_view text) {
    RequireTextOrEnd();
    const bool isWhite = text.find_first_not_of(" \t\r\n") == std::string_view::npos;
    if (!isWhite) Throw(Message::kBadWhitespace);
    PutContent(text, true);
}

void WriterCore::Name(std::string_view name) {
    RequireText();
    if (!XmlTextReader::IsName(name, true)) Throw(Message::kNoName);
    PutContent(name, false);
}

void WriterCore::NmToken(std::string_view token) {
    RequireText();
    if (!XmlTextReader::IsNameToken(token)) Throw(Message::kNoNmToken);
    PutContent(token, false);
}

void WriterCore::EntityRef(std::string_view name) {
    RequireOpen();
    if (!IsInElement()) Throw(Message::kNoReferenceHere);
    if (name.empty()) Throw(Message::kEmptyName);
    if (!XmlTextReader::IsName(name, true)) Throw(Message::kNoName);
    BeginContent();
    output_.Put('&');
    output_.PutToken(name);
    output_.Put(';');
}

void WriterCore::Raw(std::string_view text) {
    RequireTextOrEnd();
    BeginContent();
    output_.PutText(text);
    NoteValue(text);
}

// Escaping.

namespace {

struct MarkReferences {
    std::array<ShortToken, 256> of{};

    constexpr MarkReferences() {
        of['<'] = "&lt;";
        of['>'] = "&gt;";
        of['&'] = "&amp;";
        of['"'] = "&quot;";
        of['\''] = "&apos;";
    }
};

constexpr MarkReferences kReferences;

// Returns how many bytes the character at `at` has; those that are no character count one by one.
std::ptrdiff_t CharacterLength(const char* at, const char* end) {
    const auto* const position = reinterpret_cast<const unsigned char*>(at);
    const auto* const behind = reinterpret_cast<const unsigned char*>(end);
    const bool isLong = *position > 0x7F && utf8::Check(position, behind) == utf8::Sequence::Valid;
    return isLong ? utf8::SequenceLength(*position) : 1;
}

}  // namespace

void WriterCore::PutEscaped(std::string_view text) {
    const char* at = text.data();
    const char* const end = at + text.size();
    EscapeFinder escapes(text, BreaksArePlain());
    while (at != end) {
        const char* const stop = escapes.Next(at);
        if (stop != at) output_.PutData({at, static_cast<std::size_t>(stop - at)});
        if (stop == end) return;
        const ShortToken& reference = kReferences.of[static_cast<unsigned char>(*stop)];
        if (reference.length != 0) {
            output_.PutShort(reference);
            at = stop + 1;
        } else {
            at = PutControl(stop, end);
        }
    }
}

// Writes the control character at `at` as what it is to be.
// Returns the position behind it.
const char* WriterCore::PutControl(const char* at, const char* end) {
    const char character = *at++;
    const bool isInValue = state_ == WriteState::Attribute || tagOpen_;
    const bool entitizes = settings.newLineHandling == NewLineHandling::Entitize;
    const bool isBreak = character == '\r' || character == '\n';
    if (BreaksArePlain() || (!isBreak && (character != '\t' || !isInValue))) {
        output_.Put(character);
        return at;
    }
    if (character == '\t') {
        output_.PutToken("&#x9;");
    } else if (entitizes && character == '\r') {
        output_.PutToken("&#xD;");
    } else if (entitizes && !isInValue) {
        output_.Put('\n');
    } else if (isInValue) {
        output_.PutToken("&#xA;");
        // Deliberate: the character behind a CR goes with it, whatever it is.
        if (character == '\r' && at != end) at += CharacterLength(at, end);
    } else {
        output_.PutToken(settings.newLineChars);
        if (character == '\r' && at != end && *at == '\n') ++at;
    }
    return at;
}

}  // namespace Xml::detail
