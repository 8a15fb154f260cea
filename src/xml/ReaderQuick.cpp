// SPDX-License-Identifier: MIT

// The quick way through the content of an element.
//
// These scans handle what nearly all of a document is made of: text, white space, start tags and
// end tags that lie in the window as a whole. They run over the bytes of the window themselves and
// change nothing until they know that they can finish. Whatever is unusual (a token that the
// window cuts, a reference, markup other than tags, an error) they leave to the careful way,
// which starts again at the same place.
//
// They come in two forms. One reports nodes. The other passes over content that nobody will look
// at, as when an element is skipped: it checks the same and keeps neither texts nor values.

#include "xml/QuickReference.h"
#include "xml/ReaderCore.h"
#include "xml/RunScan.h"
#include "xml/Utf8Append.h"

#include <cstring>

namespace Xml::detail {

namespace {

// A token that is cut is moved to the front of the window, to be scanned again, when it is at most
// so many bytes long. A longer one is rather taken in parts.
constexpr int kWorthMoving = XmlScanner::kBufferSize * 3 / 4;

std::size_t Distance(const unsigned char* begin, const unsigned char* end) {
    return static_cast<std::size_t>(end - begin);
}

const char* Chars(const unsigned char* bytes) { return reinterpret_cast<const char*>(bytes); }

}  // namespace

// Makes the next node the current one; when passing, the next tag.
template <ReaderCore::Use kUse>
[[gnu::always_inline]] inline ReaderCore::Quick ReaderCore::ReadQuickly() {
    for (;;) {
        const unsigned char* const at = scanner_.Position();
        if (*at != '<') {
            const Quick result = ReadTextQuickly<kUse>();
            if (result != Quick::Skipped) return result;
        } else if (at[1] == '/') {
            return ReadEndTagQuickly();
        } else {
            return ReadStartTagQuickly<kUse>();
        }
    }
}

template <ReaderCore::Use kUse>
[[gnu::always_inline]] inline ReaderCore::Quick ReaderCore::ReadTextQuickly() {
    const unsigned char* const begin = scanner_.Position();
    const ShortText text = ScanShortText(begin);
    if (text.length < 0) return ReadLongTextQuickly<kUse>();
    if (kUse == Use::Pass) {
        scanner_.Consume(begin + text.length);
        return Quick::Skipped;
    }
    const XmlNodeType::XML_NODE_TYPE type =
        text.isWhitespace ? WhitespaceType() : XmlNodeType::Text;
    if (type == XmlNodeType::None) {
        scanner_.Consume(begin + text.length);
        return Quick::Skipped;
    }
    value_.assign_short(Chars(begin), static_cast<std::size_t>(text.length));
    return ReportTextQuickly(begin + text.length, type);
}

inline ReaderCore::Quick ReaderCore::ReportTextQuickly(const unsigned char* end,
                                                       XmlNodeType::XML_NODE_TYPE type) {
    scanner_.MarkNode();
    scanner_.Consume(end);
    ReportValue(type);
    return Quick::Done;
}

// Reads a text that is longer than a block.
template <ReaderCore::Use kUse>
ReaderCore::Quick ReaderCore::ReadLongTextQuickly() {
    const unsigned char* const begin = scanner_.Position();
    const unsigned char* const dataEnd = scanner_.DataEnd();
    const unsigned char* end = SkipBlanks(begin);
    XmlNodeType::XML_NODE_TYPE type = XmlNodeType::Text;
    if (*end == '<' || (*end == '&' && end != begin)) {  // before a reference it is a node, too
        if (end - begin >= scanner_.MostWhitespace()) return Quick::NeedsCare;
        type = WhitespaceType();
    } else {
        end = scanner_.Find<'<', '&', ']'>(end);
        if (*end == '&') return ReadReferencedTextQuickly<kUse>(end);
        if (*end != '<') {
            return end == dataEnd || *end >= 0x80 ? Quick::NeedsMore : Quick::NeedsCare;
        }
    }
    if (kUse == Use::Pass || type == XmlNodeType::None) {
        scanner_.Consume(end);
        return Quick::Skipped;
    }
    value_.assign_padded(Chars(begin), Distance(begin, end));
    return ReportTextQuickly(end, type);
}

// Reads a text that holds references, the first at `at`.
template <ReaderCore::Use kUse>
ReaderCore::Quick ReaderCore::ReadReferencedTextQuickly(const unsigned char* at) {
    const unsigned char* const begin = scanner_.Position();
    if (kUse == Use::Report) {
        value_.assign_padded(Chars(begin), Distance(begin, at));
    } else {
        value_.clear();
    }
    long long expanded = 0;
    while (*at == '&') {
        if (!AppendReferenceQuickly(value_, at) && !AppendEntityQuickly(value_, at, expanded)) {
            return WhyNoReference(at);
        }
        const unsigned char* const from = at;
        at = scanner_.Find<'<', '&', ']'>(from);
        if (kUse == Use::Report) value_.append(Chars(from), Distance(from, at));
    }
    if (*at != '<') {
        return at == scanner_.DataEnd() || *at >= 0x80 ? Quick::NeedsMore : Quick::NeedsCare;
    }
    expandedBytes_ += expanded;
    if (kUse == Use::Report) return ReportTextQuickly(at, XmlNodeType::Text);
    scanner_.Consume(at);
    return Quick::Skipped;
}

// Appends the character that the reference at `at` stands for and advances over it.
// Returns false, with nothing done, for a reference that is not of the simple kinds.
bool ReaderCore::AppendReferenceQuickly(astring& text, const unsigned char*& at) const {
    if (at[1] == '#' && entityHandling == XmlEntityHandling::ExpandNothing) return false;
    const QuickReference reference = ReadQuickReference(at);
    if (reference.end == nullptr) return false;
    AppendUtf8(text, reference.code);
    at = reference.end;
    return true;
}

// The same for a reference to an entity whose text is plain and within the limits. Adds its length
// to `expanded`, to be counted with those of the other references once the text is taken.
bool ReaderCore::AppendEntityQuickly(astring& text, const unsigned char*& at,
                                     long long& expanded) const {
    if (entityHandling != XmlEntityHandling::ExpandEntities || !entities_) return false;
    const unsigned char* const name = at + 1;
    int length = 0;
    while (length <= PackedName::kMostBytes && name[length] != ';')
        ++length;
    if (length == 0 || length > PackedName::kMostBytes) return false;
    const EntityRecord* const record = entities_->FindPlain(PackName(name, length));
    if (record == nullptr || record->inUse || entityLimits.nesting < 1) return false;
    if (entityChain_.empty()) {
        expanded += static_cast<long long>(record->text.length());
        if (expandedBytes_ + expanded > entityLimits.expandedBytes) return false;
    }
    text += record->text;
    at = name + length + 1;
    return true;
}

// Scans the name at `at`.
//
// The bytes up to the next delimiter are looked up as they are: when they are a name that was met
// before, they need no check.
// Returns where the name ends, or null when it is none, is malformed or reaches the window's end.
inline const unsigned char* ReaderCore::ScanNameQuickly(const unsigned char* at, XmlName*& name) {
    int length = NameLengthInBlock(at);
    if (length < PackedName::kMostBytes) {
        name = names_.FindShort(PackName(at, length));
    } else {
        length += NameLengthInBlock(at + PackedName::kMostBytes);
        name = names_.FindLonger(at, length);
    }
    if (name == nullptr) return ScanNewName(at, name);
    if (name->prefixName != nullptr) scanner_.Places().SkipColon(at + name->prefix.length());
    return at + length;
}

[[gnu::always_inline]] inline ReaderCore::Quick ReaderCore::ReadEndTagQuickly() {
    if (Depth() == floor_) return Quick::NeedsCare;
    const XmlName& name = *Top().name;
    const unsigned char* const begin = scanner_.Position() + 2;
    const std::size_t length = name.qualified.length();
    if (length <= PackedName::kMostBytes) {
        if (PackName(begin, static_cast<int>(length)) != name.packed) return WhyNoName(begin);
    } else {
        if (scanner_.DataEnd() - begin <= static_cast<std::ptrdiff_t>(length)) {
            return WhyNoName(begin);
        }
        if (std::memcmp(begin, name.qualified.data(), length) != 0) return Quick::NeedsCare;
    }
    const unsigned char* const end = begin + length;
    if (*end != '>') return end == scanner_.DataEnd() ? Quick::NeedsMore : Quick::NeedsCare;
    tagBegin_ = scanner_.Position();
    scanner_.MarkNode();
    if (name.prefixName != nullptr) scanner_.Places().SkipColon(begin + name.prefix.length());
    scanner_.Consume(end + 1);
    FinishEndElement();
    return Quick::Done;
}

template <ReaderCore::Use kUse>
ReaderCore::Quick ReaderCore::ReadStartTagQuickly() {
    const unsigned char* const begin = scanner_.Position();
    if (begin[1] == ':') return Quick::NeedsCare;  // never a tag, though it may begin a name
    XmlName* name = nullptr;
    const unsigned char* at = ScanNameQuickly(begin + 1, name);
    if (at == nullptr) return WhyNoName(begin + 1);
    bool isEmpty = false;
    for (;;) {
        if (*at != '>') {
            const unsigned char* const behind = at;
            at = SkipBlanks(at);
            if (*at != '>' && *at != '/') {
                const bool isJoined = at == behind && standard_ && *at != 0;
                const Quick result = isJoined ? Quick::NeedsCare : ScanAttributeQuickly<kUse>(at);
                if (result == Quick::Done) continue;
                scanner_.Places().ForgetColonsFrom(begin);
                ForgetAttributes();
                return result;
            }
        }
        isEmpty = *at == '/';
        if (!isEmpty || at[1] == '>') break;
        scanner_.Places().ForgetColonsFrom(begin);
        ForgetAttributes();
        return at + 1 == scanner_.DataEnd() ? Quick::NeedsMore : Quick::NeedsCare;
    }
    tagBegin_ = begin;
    scanner_.MarkNode();
    scanner_.Consume(at + (isEmpty ? 2 : 1));
    FinishElement(*name, isEmpty);
    return Quick::Done;
}

// Scans an attribute at `at` and advances over it.
template <ReaderCore::Use kUse>
ReaderCore::Quick ReaderCore::ScanAttributeQuickly(const unsigned char*& at) {
    const unsigned char* const dataEnd = scanner_.DataEnd();
    const unsigned char* const begin = at;
    const auto failure = [dataEnd](const unsigned char* stop) {
        return stop == dataEnd || *stop >= 0x80 ? Quick::NeedsMore : Quick::NeedsCare;
    };
    XmlName* name = nullptr;
    const unsigned char* end = ScanNameQuickly(begin, name);
    if (end == nullptr) return WhyNoName(begin);
    if (*end != '=') {
        end = SkipBlanks(end);
        if (*end != '=') return failure(end);
    }
    ++end;
    if (IsBlank(*end)) end = SkipBlanks(end);
    const unsigned char quote = *end;
    if (quote != '"' && quote != '\'') return failure(end);
    const unsigned char* const value = end + 1;
    bool hasBlank = false;
    const auto find = [this, quote, &hasBlank](const unsigned char* from) {
        const bool isDouble = quote == '"';
        const unsigned char* const stop = isDouble
                                              ? scanner_.Find<'"', '<', '&', Blanks::Stop>(from)
                                              : scanner_.Find<'\'', '<', '&', Blanks::Stop>(from);
        if (!IsLineBlank(*stop)) return stop;
        hasBlank = true;
        return isDouble ? scanner_.Find<'"', '<', '&'>(stop) : scanner_.Find<'\'', '<', '&'>(stop);
    };
    end = find(value);
    if (*end != quote && *end != '&') return failure(end);
    XmlAttribute& attribute = AddAttribute(*name);
    attribute.at = begin;
    attribute.hasPlace = false;
    attribute.quote = static_cast<char>(quote);
    if (kUse == Use::Pass && *end == quote && name->meaning == NameMeaning::Ordinary) {
        at = end + 1;
        return Quick::Done;
    }
    if (end - value < 16) {
        attribute.value.assign_short(Chars(value), Distance(value, end));
    } else {
        attribute.value.assign_padded(Chars(value), Distance(value, end));
    }
    while (*end == '&') {
        if (!AppendReferenceQuickly(attribute.value, end)) return WhyNoReference(end);
        if (IsLineBlank(static_cast<unsigned char>(attribute.value.view().back()))) {
            // The standard tells it from one that becomes a space.
            if (standard_) return Quick::NeedsCare;
            hasBlank = true;
        }
        const unsigned char* const from = end;
        end = find(from);
        attribute.value.append(Chars(from), Distance(from, end));
    }
    // A value without tabs and line ends is normalized as it is.
    attribute.isRaw = attribute.isRaw && hasBlank;
    if (*end != quote) return failure(end);
    if (name->meaning != NameMeaning::Ordinary && !standard_ &&
        SpecialAttributeError(name->meaning, attribute.value) != nullptr) {
        return Quick::NeedsCare;
    }
    at = end + 1;
    return Quick::Done;
}

const unsigned char* ReaderCore::ScanNewName(const unsigned char* at, XmlName*& name) {
    if (!scanner_.StartsName(at)) return nullptr;
    int colon = -1;
    const unsigned char* end = scanner_.SkipNameCharacters(at);
    if (*end == ':' && namespaces) {
        colon = static_cast<int>(end - at);
        if (standard_ && !scanner_.StartsName(end + 1)) return nullptr;
        end = scanner_.SkipNameCharacters(end + 1);
        if (*end == ':') return nullptr;
    }
    if (end == scanner_.DataEnd() || *end >= 0x80) return nullptr;
    if (colon > 0) scanner_.Places().SkipColon(at + colon);
    name = InternName({Chars(at), Distance(at, end)}, colon);
    return end;
}

template <ReaderCore::Use kUse>
[[gnu::always_inline]] inline bool ReaderCore::ReadNode() {
    scanner_.ForgetNode();
    ForgetAttributes();
    if (parseState_ == ParseState::PsEmptyEnd) PopElement();
    if (parseState_ != ParseState::PsContent) return ReadFromOutside();
    try {
        for (bool isWorthMoving = true;; isWorthMoving = false) {
            const Quick quick = ReadQuickly<kUse>();
            if (quick == Quick::Done) return true;
            // A token that the window cuts may be whole after a refill; a long one never is.
            isWorthMoving = isWorthMoving && quick == Quick::NeedsMore &&
                            scanner_.DataEnd() - scanner_.Position() <= kWorthMoving;
            if (!isWorthMoving || scanner_.Refill() != XmlScanner::Fill::More ||
                !scanner_.IsFilled()) {
                break;
            }
        }
    } catch (...) {
        Fail();
        throw;
    }
    return ReadCarefully();
}

bool ReaderCore::Read() { return ReadNode<Use::Report>(); }

// Reads up to the end tag of the current element, which is not empty.
void ReaderCore::ReadToEndTag() {
    const int depth = Depth();
    while (ReadNode<Use::Pass>() && Depth() >= depth) {
    }
}

// Reads until only the first `around` of the texts that are pushed are left.
void ReaderCore::ReadToTextEnd(int around) {
    while (scanner_.PushedCount() > around)
        ReadNode<Use::Pass>();
}

// Says what to do where no name that could be taken quickly stands at `at`. More input is asked for
// only when the window may end in the name: a node that has come as a whole must not wait.
ReaderCore::Quick ReaderCore::WhyNoName(const unsigned char* at) const {
    const unsigned char* end = scanner_.SkipNameCharacters(at);
    while (*end == ':')
        end = scanner_.SkipNameCharacters(end + 1);
    return end == scanner_.DataEnd() || *end >= 0x80 ? Quick::NeedsMore : Quick::NeedsCare;
}

// The same where no simple reference stands at `at`, but "&".
ReaderCore::Quick ReaderCore::WhyNoReference(const unsigned char* at) const {
    return WhyNoName(at[1] == '#' ? at + 2 : at + 1);
}

}  // namespace Xml::detail
