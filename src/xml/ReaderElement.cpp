// SPDX-License-Identifier: MIT

// Tags, attributes and namespaces.
//
// A start tag is scanned twice at most. The quick scan runs over the bytes of the window and
// handles what nearly all tags are made of; whatever is unusual (a tag that is longer than the
// window, a reference, an error) it leaves alone, and the careful scan starts at the same place
// with the scanner's tokens. Only the careful scan throws, so the places in messages are its.

#include <espalier/io/Exception.h>

#include "xml/Messages.h"
#include "xml/NameBytes.h"
#include "xml/ReaderCore.h"
#include "xml/RunScan.h"

#include <algorithm>
#include <cstring>
#include <new>  // std::bad_alloc

namespace Xml::detail {

namespace {

// With up to so many attributes, comparing all of them is faster than a table.
constexpr int kFewAttributes = 16;

std::string_view View(const unsigned char* begin, const unsigned char* end) {
    return {reinterpret_cast<const char*>(begin), static_cast<std::size_t>(end - begin)};
}

// [33] LanguageID ::= Langcode ('-' Subcode)*, in the form of RFC 3066.
bool IsLanguage(std::string_view language) {
    if (language.empty()) return true;  // ends the language of an outer element
    std::size_t length = 0;
    bool isFirst = true;
    for (const char c : language) {
        const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
        const bool isDigit = c >= '0' && c <= '9';
        if (c == '-' && length > 0) {
            length = 0;
            isFirst = false;
        } else if ((isLetter || (isDigit && !isFirst)) && length < 8) {
            ++length;
        } else {
            return false;
        }
    }
    return length > 0;
}

}  // namespace

// Elements.

// Parses a start tag, with the position at its name.
ReaderCore::Pass ReaderCore::ParseElement() {
    if (Depth() == 0) ++rootCount_;
    contentSeen_ = true;
    attributeIndex_ = 0;
    if (names_.IsLarge()) TrimNames();

    XmlName* name = nullptr;
    bool isEmpty = false;
    Quick result = ScanElementQuickly(name, isEmpty);
    if (result == Quick::NeedsMore && scanner_.Refill() == XmlScanner::Fill::More &&
        scanner_.IsFilled()) {
        result = ScanElementQuickly(name, isEmpty);
    }
    if (result != Quick::Done) ScanElementCarefully(name, isEmpty);

    PushElement(name);
    if (hasSpecialAttributes_) ApplySpecialAttributes();
    if (namespaces) {
        if (hasDeclarations_) DeclareNamespaces();
        ResolveNamespaces();
    }
    CheckDuplicates();

    elementNode_.name = &name->qualified;
    elementNode_.localName = &name->local;
    elementNode_.prefix = &name->prefix;
    elementNode_.namespaceUri = Top().uri;
    elementNode_.isEmpty = isEmpty;
    elementNode_.depth = Depth();
    currentNode = &elementNode_;
    parseState_ = isEmpty ? ParseState::PsEmptyEnd : ParseState::PsContent;
    return Pass::Node;
}

void ReaderCore::PushElement(XmlName* name) {
    const ElementEntry* const parent = elements_.empty() ? nullptr : &elements_.back();
    elements_.push_back({name, &EmptyText(), parent ? parent->language : &EmptyText(),
                         parent ? parent->space : XmlSpace(XmlSpace::SpaceNone), false});
    if (namespaces) nsSupport_.PushContext();
}

void ReaderCore::PopElement() {
    if (Top().ownsLanguage) --languageCount_;
    elements_.pop_back();
    if (namespaces) nsSupport_.PopContext();
    parseState_ = elements_.empty() ? ParseState::PsProlog : ParseState::PsContent;
}

// Parses an end tag, with the position behind "</".
ReaderCore::Pass ReaderCore::ParseEndTag() {
    const XmlName* const open = elements_.empty() ? nullptr : Top().name;
    const unsigned char* const at = scanner_.Position();
    const std::size_t length = open == nullptr ? 0 : open->qualified.length();
    if (open != nullptr && scanner_.DataEnd() - at > static_cast<std::ptrdiff_t>(length) &&
        at[length] == '>' && std::memcmp(at, open->qualified.data(), length) == 0) {
        if (open->prefixName != nullptr) {
            scanner_.Places().SkipColon(at + open->prefix.length());
        }
        scanner_.Consume(at + length + 1);
    } else {
        ScanEndTagCarefully(open);
    }

    endElementNode_.name = &open->qualified;
    endElementNode_.localName = &open->local;
    endElementNode_.prefix = &open->prefix;
    endElementNode_.namespaceUri = Top().uri;
    endElementNode_.depth = Depth();
    currentNode = &endElementNode_;
    PopElement();
    return Pass::Node;
}

void ReaderCore::ScanEndTagCarefully(const XmlName* open) {
    const ScannedName& name = scanner_.ScanName();
    if (name.token != XmlToken::NAME) scanner_.Throw(Message::kUnexpectedToken);
    if (open == nullptr || name.text != open->qualified) {
        const astring argument = "</" + astring(name.text) + ">";
        if (open == nullptr) scanner_.Throw(Message::kUnexpectedEndTag, argument);
        const astring message = Message::kMismatchedEndTag1 + astring(name.text) +
                                Message::kMismatchedEndTag2 + open->qualified + "'";
        const Place place = scanner_.CurrentPlace();
        Exception::ThrowException(message, argument, place.line, place.column);
    }
    if (scanner_.NextMarkupToken() != XmlToken::TAGEND) {
        scanner_.Throw(Message::kUnexpectedToken);
    }
}

// Forgets the names that no open element has, when a document has very many.
void ReaderCore::TrimNames() {
    currentNode = &emptyNode_;
    for (const ElementEntry& entry : elements_) {
        entry.name->kept = true;
    }
    names_.Trim();
}

// The quick scan.

// Scans the name at `at` and interns it.
// Returns where it ends, or null when it is none, is malformed or reaches the window's end.
const unsigned char* ReaderCore::ScanNameQuickly(const unsigned char* at, XmlName*& name) {
    if (!scanner_.StartsName(at)) return nullptr;
    int colon = -1;
    const unsigned char* end = scanner_.SkipNameCharacters(at + 1);
    if (*end == ':') {
        colon = static_cast<int>(end - at);
        end = scanner_.SkipNameCharacters(end + 1);
        if (*end == ':') return nullptr;
        scanner_.Places().SkipColon(at + colon);
    }
    if (end == scanner_.DataEnd() || *end >= 0x80) return nullptr;
    name = names_.Intern(View(at, end), colon);
    return end;
}

ReaderCore::Quick ReaderCore::ScanElementQuickly(XmlName*& name, bool& isEmpty) {
    ForgetAttributes();
    const unsigned char* const begin = scanner_.Position();
    const unsigned char* at = ScanNameQuickly(begin, name);
    Quick result = at == nullptr ? Quick::NeedsMore : Quick::Done;
    while (result == Quick::Done) {
        at = SkipBlanks(at);
        if (*at == '>' || (*at == '/' && at[1] == '>')) {
            isEmpty = *at == '/';
            scanner_.Consume(at + (isEmpty ? 2 : 1));
            return result;
        }
        result = ScanAttributeQuickly(at);
    }
    scanner_.Places().ForgetColonsFrom(begin);
    ForgetAttributes();
    return result;
}

// Scans an attribute at `at` and advances over it.
ReaderCore::Quick ReaderCore::ScanAttributeQuickly(const unsigned char*& at) {
    const unsigned char* const dataEnd = scanner_.DataEnd();
    const auto failure = [dataEnd](const unsigned char* stop) {
        return stop == dataEnd ? Quick::NeedsMore : Quick::NeedsCare;
    };
    if (*at == '/' || at == dataEnd) return at + 1 >= dataEnd ? Quick::NeedsMore : Quick::NeedsCare;
    XmlName* name = nullptr;
    const unsigned char* const begin = at;
    const unsigned char* end = ScanNameQuickly(at, name);
    if (end == nullptr) return Quick::NeedsMore;
    end = SkipBlanks(end);
    if (*end != '=') return failure(end);
    end = SkipBlanks(end + 1);
    const unsigned char quote = *end;
    if (quote != '"' && quote != '\'') return failure(end);
    const unsigned char* const value = end + 1;
    end = quote == '"' ? FindStop<'"', '<', '&'>(value, dataEnd)
                       : FindStop<'\'', '<', '&'>(value, dataEnd);
    if (*end != quote) return *end >= 0x80 ? Quick::NeedsMore : failure(end);
    if (SpecialAttributeError(name->meaning, View(value, end)) != nullptr) return Quick::NeedsCare;

    XmlAttributeTokenInfo& attribute = AddAttribute(name);
    attribute.at = begin;
    attribute.quote = static_cast<char>(quote);
    attribute.value.assign(reinterpret_cast<const char*>(value),
                           static_cast<std::size_t>(end - value));
    at = end + 1;
    return Quick::Done;
}

// The careful scan.

void ReaderCore::ScanElementCarefully(XmlName*& name, bool& isEmpty) {
    const ScannedName& scanned = scanner_.ScanName();
    if (scanned.token != XmlToken::NAME) scanner_.Throw(Message::kUnexpectedToken);
    name = names_.Intern(scanned.text, scanned.colon);
    for (;;) {
        scanner_.SkipWhitespace();
        const Place place = scanner_.SettledPlace();
        switch (scanner_.NextMarkupToken()) {
        case XmlToken::TAGEND: isEmpty = false; return;
        case XmlToken::EMPTYTAGEND: isEmpty = true; return;
        case XmlToken::ENDOFFILE: scanner_.Throw(Message::kUnexpectedEof);
        case XmlToken::ERROR: scanner_.Throw(Message::kSyntaxErrorInElement);
        case XmlToken::NAME: SetAttributeValues(place); break;
        default: scanner_.Throw(Message::kUnexpectedToken);
        }
    }
}

// Parses an attribute at `place` behind its name.
void ReaderCore::SetAttributeValues(Place place) {
    XmlName* const name = names_.Intern(scanner_.Name().text, scanner_.Name().colon);
    XmlAttributeTokenInfo& attribute = AddAttribute(name);
    attribute.at = nullptr;
    attribute.place = place;
    if (scanner_.NextMarkupToken() != XmlToken::EQUALS ||
        scanner_.NextMarkupToken() != XmlToken::QUOTE) {
        scanner_.Throw(Message::kUnexpectedToken);
    }
    attribute.quote = scanner_.QuoteChar();
    ScanAttributeValue(attribute);
    const char* const error = SpecialAttributeError(name->meaning, attribute.value);
    if (error != nullptr) scanner_.Throw(error);
}

// Scans a value up to and with its closing quotation mark.
void ReaderCore::ScanAttributeValue(XmlAttributeTokenInfo& attribute) {
    attribute.value.clear();
    for (;;) {
        const XmlToken token = scanner_.ScanValue(attribute.value);
        switch (token) {
        case XmlToken::TEXT: break;
        case XmlToken::ENDQUOTE: return;
        case XmlToken::CHARREF:
        case XmlToken::ENTITYREF:
            if (ReplaceReference(token, attribute.value)) {
                if (token == XmlToken::CHARREF &&
                    entityHandling == XmlEntityHandling::ExpandNothing) {
                    attribute.holdsReferences = true;
                }
                break;
            }
            if (entityHandling == XmlEntityHandling::ExpandEntities) {
                scanner_.Throw(Message::kUndeclaredEntity, referenceName_);
            }
            AppendGeneralReference(attribute.value);
            attribute.holdsReferences = true;
            break;
        default: scanner_.Throw(Message::kMissingCloseQuote);
        }
    }
}

// Attributes.

// Returns the message for a value that xml:space or xml:lang must not have, or null.
const char* ReaderCore::SpecialAttributeError(NameMeaning meaning, std::string_view value) {
    if (meaning == NameMeaning::Space && value != "default" && value != "preserve") {
        return Message::kInvalidXmlSpace;
    }
    if (meaning == NameMeaning::Language && !IsLanguage(value)) return Message::kBadLanguage;
    return nullptr;
}

// Puts the values of xml:space and xml:lang in force for the element on top.
void ReaderCore::ApplySpecialAttributes() {
    ElementEntry& entry = elements_.back();
    for (int i = 0; i < attributeCount_; ++i) {
        const XmlAttributeTokenInfo& attribute = attributes_[static_cast<std::size_t>(i)];
        if (attribute.entry->meaning == NameMeaning::Space) {
            entry.space =
                attribute.value == "default" ? XmlSpace::SpaceDefault : XmlSpace::SpacePreserve;
        } else if (attribute.entry->meaning == NameMeaning::Language && !entry.ownsLanguage) {
            if (languageCount_ == languages_.size()) languages_.emplace_back();
            languages_[languageCount_] = attribute.value;
            entry.language = &languages_[languageCount_++];
            entry.ownsLanguage = true;
        }
    }
}

// Returns the object for the next attribute; `name` is null for a pseudo-attribute.
XmlAttributeTokenInfo& ReaderCore::AddAttribute(XmlName* name) {
    const auto index = static_cast<std::size_t>(attributeCount_);
    if (index == attributes_.size()) {
        attributes_.emplace_back();
        attributes_.back().type = XmlNodeType::Attribute;
    }
    ++attributeCount_;
    XmlAttributeTokenInfo& attribute = attributes_[index];
    attribute.entry = name;
    attribute.depth = Depth() + 2;  // one more than the element, which is not pushed yet
    attribute.holdsReferences = false;
    attribute.normalize = normalization ? Normalize::Attribute : Normalize::Done;
    attribute.namespaceUri = &EmptyText();
    if (name == nullptr) {
        attribute.prefix = &EmptyText();
        return attribute;
    }
    attribute.name = &name->qualified;
    attribute.localName = &name->local;
    attribute.prefix = &name->prefix;
    if (name->usedBy == elementSerial_ && duplicate_ < 0) duplicate_ = attributeCount_ - 1;
    name->usedBy = elementSerial_;
    switch (name->meaning) {
    case NameMeaning::Ordinary:
        hasPrefixedAttributes_ = hasPrefixedAttributes_ || name->prefixName != nullptr;
        break;
    case NameMeaning::DefaultNamespace:
    case NameMeaning::Namespace: hasDeclarations_ = true; break;
    case NameMeaning::Space:
    case NameMeaning::Language: hasPrefixedAttributes_ = hasSpecialAttributes_ = true; break;
    }
    return attribute;
}

void ReaderCore::ForgetAttributes() {
    if (attributeCount_ == 0) return;
    attributeCount_ = 0;
    ++elementSerial_;
    duplicate_ = -1;
    hasDeclarations_ = hasPrefixedAttributes_ = hasSpecialAttributes_ = false;
    if (nameMapFilled_) attributesByName_.Clear();
    if (namespaceMapFilled_) attributesByNs_.Clear();
    nameMapFilled_ = namespaceMapFilled_ = false;
}

Place ReaderCore::PlaceOf(const XmlAttributeTokenInfo& attribute) const {
    return attribute.at != nullptr ? scanner_.PlaceAt(attribute.at) : attribute.place;
}

// Namespaces.

void ReaderCore::DeclareNamespaces() {
    for (int i = 0; i < attributeCount_; ++i) {
        XmlAttributeTokenInfo& attribute = attributes_[static_cast<std::size_t>(i)];
        const NameMeaning meaning = attribute.entry->meaning;
        if (meaning != NameMeaning::DefaultNamespace && meaning != NameMeaning::Namespace) continue;
        const std::string_view prefix =
            meaning == NameMeaning::Namespace ? attribute.entry->local.view() : std::string_view();
        if (nsSupport_.DeclarePrefix(prefix, attribute.Value()) == nullptr) throw std::bad_alloc();
    }
}

void ReaderCore::ResolveNamespaces() {
    ElementEntry& entry = elements_.back();
    XmlName* const prefix = entry.name->prefixName;
    entry.uri = &UriOf(prefix != nullptr ? prefix : &defaultPrefix_);
    if (!hasPrefixedAttributes_) return;
    for (int i = 0; i < attributeCount_; ++i) {
        XmlAttributeTokenInfo& attribute = attributes_[static_cast<std::size_t>(i)];
        if (attribute.entry->prefixName == nullptr) continue;
        if (attribute.entry->meaning == NameMeaning::Namespace) continue;
        attribute.namespaceUri = &UriOf(attribute.entry->prefixName);
    }
}

// Returns what a prefix is bound to, from the name itself while no declaration has changed.
const astring& ReaderCore::UriOf(XmlName* prefix) {
    const unsigned long generation = nsSupport_.Generation();
    if (prefix->uri == nullptr || prefix->generation != generation) {
        prefix->uri = &nsSupport_.GetURI(prefix->qualified);
        prefix->generation = generation;
    }
    return *prefix->uri;
}

void ReaderCore::CheckDuplicates() const {
    if (duplicate_ >= 0) ThrowDuplicate(attributes_[static_cast<std::size_t>(duplicate_)]);
    if (namespaces && hasPrefixedAttributes_) CheckExpandedDuplicates();
}

// Two prefixes may be bound to one URI: no two attributes may have the same URI and local name.
void ReaderCore::CheckExpandedDuplicates() const {
    std::vector<const XmlAttributeTokenInfo*> bound;
    const XmlName* firstPrefix = nullptr;
    bool prefixesDiffer = false;
    const auto isBound = [this](const XmlAttributeTokenInfo& attribute) {
        return attribute.entry->prefixName != nullptr &&
               attribute.entry->meaning != NameMeaning::Namespace &&
               nsSupport_.FindPrefix(attribute.prefix->view()) != nullptr;
    };
    for (int i = 0; i < attributeCount_ && !prefixesDiffer; ++i) {
        const XmlName* prefix = attributes_[static_cast<std::size_t>(i)].entry->prefixName;
        if (prefix == nullptr) continue;
        if (firstPrefix == nullptr) firstPrefix = prefix;
        prefixesDiffer = prefix != firstPrefix;
    }
    if (!prefixesDiffer) return;  // names with one prefix differ in their local names

    for (int i = 0; i < attributeCount_; ++i) {
        const XmlAttributeTokenInfo& attribute = attributes_[static_cast<std::size_t>(i)];
        if (isBound(attribute)) bound.push_back(&attribute);
    }
    // Sorted by name and then by place, so that equal ones are neighbours in document order.
    std::sort(bound.begin(), bound.end(), [](const auto* a, const auto* b) {
        if (const int order = a->localName->compare(b->localName->view()); order != 0) {
            return order < 0;
        }
        if (const int order = a->namespaceUri->compare(b->namespaceUri->view()); order != 0) {
            return order < 0;
        }
        return a < b;
    });
    const XmlAttributeTokenInfo* first = nullptr;
    for (std::size_t i = 1; i < bound.size(); ++i) {
        if (*bound[i]->localName == *bound[i - 1]->localName &&
            *bound[i]->namespaceUri == *bound[i - 1]->namespaceUri &&
            (first == nullptr || bound[i] < first)) {
            first = bound[i];
        }
    }
    if (first != nullptr) ThrowDuplicate(*first);
}

void ReaderCore::ThrowDuplicate(const XmlAttributeTokenInfo& attribute) const {
    const Place place = PlaceOf(attribute);
    Exception::ThrowException(Message::kDuplicateAttribute, astring(), place.line, place.column);
}

// Lookup by name.

const astring& ReaderCore::AttributeValue(std::string_view name) const {
    XmlAttributeTokenInfo* const found = FindAttribute(name);
    return found == nullptr ? EmptyText() : found->Value();
}

const astring& ReaderCore::AttributeValue(std::string_view localName, std::string_view uri) const {
    XmlAttributeTokenInfo* const found = FindAttribute(localName, uri);
    return found == nullptr ? EmptyText() : found->Value();
}

XmlAttributeTokenInfo* ReaderCore::FindAttribute(std::string_view name) const {
    if (attributeCount_ > kFewAttributes && !name.empty()) {
        if (!nameMapFilled_) FillNameMap();
        return static_cast<XmlAttributeTokenInfo*>(
            attributesByName_.Find(name.data(), static_cast<unsigned>(name.size())));
    }
    for (int i = 0; i < attributeCount_; ++i) {
        XmlAttributeTokenInfo& attribute = attributes_[static_cast<std::size_t>(i)];
        if (*attribute.name == name) return &attribute;
    }
    return nullptr;
}

XmlAttributeTokenInfo* ReaderCore::FindAttribute(std::string_view localName,
                                                 std::string_view uri) const {
    if (!namespaces) return nullptr;
    if (attributeCount_ > kFewAttributes) {
        if (!namespaceMapFilled_) FillNamespaceMap();
        const astring key = NamespaceKey(uri, localName);
        return static_cast<XmlAttributeTokenInfo*>(
            attributesByNs_.Find(key.data(), static_cast<unsigned>(key.length())));
    }
    for (int i = 0; i < attributeCount_; ++i) {
        XmlAttributeTokenInfo& attribute = attributes_[static_cast<std::size_t>(i)];
        if (*attribute.localName == localName && *attribute.namespaceUri == uri &&
            !IsDeclaration(attribute)) {
            return &attribute;
        }
    }
    return nullptr;
}

bool ReaderCore::IsDeclaration(const XmlAttributeTokenInfo& attribute) {
    return attribute.entry != nullptr &&
           (attribute.entry->meaning == NameMeaning::DefaultNamespace ||
            attribute.entry->meaning == NameMeaning::Namespace);
}

void ReaderCore::FillNameMap() const {
    for (int i = 0; i < attributeCount_; ++i) {
        XmlAttributeTokenInfo& attribute = attributes_[static_cast<std::size_t>(i)];
        attributesByName_.Insert(attribute.name->data(),
                                 static_cast<unsigned>(attribute.name->length()), &attribute);
    }
    nameMapFilled_ = true;
}

void ReaderCore::FillNamespaceMap() const {
    for (int i = 0; i < attributeCount_; ++i) {
        XmlAttributeTokenInfo& attribute = attributes_[static_cast<std::size_t>(i)];
        if (IsDeclaration(attribute)) continue;
        const astring key = NamespaceKey(*attribute.namespaceUri, *attribute.localName);
        attributesByNs_.Insert(key.data(), static_cast<unsigned>(key.length()), &attribute);
    }
    namespaceMapFilled_ = true;
}

astring ReaderCore::NamespaceKey(std::string_view uri, std::string_view localName) {
    astring key(uri);
    key += ':';
    key += localName;
    return key;
}

}  // namespace Xml::detail
