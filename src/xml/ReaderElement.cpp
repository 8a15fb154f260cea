// SPDX-License-Identifier: MIT

// Elements and their attributes. This is the careful way, which takes the scanner's tokens one by
// one; ReaderQuick.cpp has the quick one. Only the careful way throws, so the places in messages
// are its.

#include <espalier/io/Exception.h>

#include "xml/Messages.h"
#include "xml/ReaderCore.h"
#include "xml/StandardMessages.h"

#include <algorithm>  // std::any_of

namespace Xml::detail {

namespace {

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
    if (Depth() == 0) {
        if (standard_ && rootCount_ > 0) scanner_.Throw(Message::kSecondRoot);
        ++rootCount_;
    }
    contentSeen_ = true;
    XmlName* name = nullptr;
    bool isEmpty = false;
    const bool keepsTag = !scanner_.IsCapturing();
    if (keepsTag) scanner_.StartCapture("<");
    ScanElementCarefully(name, isEmpty);
    if (keepsTag) scanner_.EndCapture();
    FinishElement(*name, isEmpty);
    return Pass::Node;
}

// Returns the object of a name that has been scanned.
XmlName* ReaderCore::InternName(std::string_view text, int colon) {
    // What is a letter in ISO-8859-1 need not be one elsewhere, nor the other way round: such names
    // are forgotten before a document of the other kind.
    const auto isAboveAscii = [](char c) { return static_cast<unsigned char>(c) >= 0x80; };
    if (std::any_of(text.begin(), text.end(), isAboveAscii)) {
        const bool isOfOneByte = scanner_.StreamCodec()->Kind() == CodecKind::SingleByte;
        (isOfOneByte ? namesOfOneByte_ : namesOfUnicode_) = true;
    }
    XmlName* const name = names_.Intern(text, colon);
    if (names_.IsLarge()) asks_ |= AsksTrim;
    return name;
}

// Forgets the names that nothing open or current has, when a document has very many.
void ReaderCore::TrimNames() {
    for (const ElementEntry& entry : elements_)
        entry.name->kept = true;
    for (const XmlAttribute& attribute : Attributes())
        attribute.name->kept = true;
    names_.Trim();
}

// Parses an end tag, with the position behind "</".
ReaderCore::Pass ReaderCore::ParseEndTag() {
    ScanEndTagCarefully(elements_.empty() ? nullptr : Top().name);
    FinishEndElement();
    return Pass::Node;
}

void ReaderCore::ScanEndTagCarefully(const XmlName* open) {
    const ScannedName& name = scanner_.ScanName();
    if (standard_ && name.token == XmlToken::ENDOFFILE) scanner_.Throw(Message::kUnexpectedEof);
    if (name.token != XmlToken::NAME) {
        scanner_.Throw(standard_ ? Message::kExpectedEndTagName : Message::kUnexpectedToken);
    }
    if (open != nullptr && Depth() == floor_) {
        scanner_.Throw(Message::kEndTagOfOuterElement, name.text);
    }
    if (open == nullptr || name.text != open->qualified) {
        const astring argument = "</" + astring(name.text) + ">";
        if (open == nullptr) scanner_.Throw(Message::kUnexpectedEndTag, argument);
        const astring message = Message::kMismatchedEndTag1 + astring(name.text) +
                                Message::kMismatchedEndTag2 + open->qualified + "'";
        const Place place = scanner_.CurrentPlace();
        Exception::ThrowException(message, argument, place.line, place.column);
    }
    if (standard_) {
        scanner_.SkipWhitespace();
        if (!scanner_.Accept(">")) scanner_.Throw(Message::kExpectedEndTagEnd);
    } else if (scanner_.NextMarkupToken() != XmlToken::TAGEND) {
        scanner_.Throw(Message::kUnexpectedToken);
    }
}

// The careful scan.

void ReaderCore::ScanElementCarefully(XmlName*& name, bool& isEmpty) {
    const ScannedName& scanned = scanner_.ScanName();
    if (scanned.token != XmlToken::NAME) {
        scanner_.Throw(standard_ ? Message::kUnexpectedEof : Message::kUnexpectedToken);
    }
    name = InternName(scanned.text, scanned.colon);
    for (;;) {
        const bool isSeparated = scanner_.SkipWhitespace();
        const Place place = scanner_.SettledPlace();
        if (standard_) RequireAttributeOrEnd(isSeparated);
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

// [40] STag ::= '<' Name (S Attribute)* S? '>'
void ReaderCore::RequireAttributeOrEnd(bool isSeparated) {
    if (scanner_.AtEnd()) scanner_.Throw(Message::kUnexpectedEof);
    const unsigned char c = *scanner_.Position();
    if (c == '>' || scanner_.LookingAt("/>")) return;
    if (scanner_.Accept("/")) {
        scanner_.Throw(scanner_.AtEnd() ? Message::kUnexpectedEof : Message::kExpectedTagEnd);
    }
    if (!scanner_.StartsName(scanner_.Position())) scanner_.Throw(Message::kExpectedTagEnd);
    if (!isSeparated) scanner_.Throw(Message::kExpectedSpaceBeforeAttribute);
}

// Scans "=" and the quotation mark that opens the value.
void ReaderCore::ScanEquals() {
    if (standard_) {
        scanner_.SkipWhitespace();
        if (!scanner_.Accept("=")) scanner_.Throw(Message::kExpectedEquals);
        scanner_.SkipWhitespace();
        if (!scanner_.LookingAt("\"") && !scanner_.LookingAt("'")) {
            scanner_.Throw(Message::kExpectedAttributeValue);
        }
        scanner_.NextMarkupToken();
    } else if (scanner_.NextMarkupToken() != XmlToken::EQUALS ||
               scanner_.NextMarkupToken() != XmlToken::QUOTE) {
        scanner_.Throw(Message::kUnexpectedToken);
    }
}

// Parses an attribute at `place` behind its name.
void ReaderCore::SetAttributeValues(Place place) {
    XmlName& name = *InternName(scanner_.Name().text, scanner_.Name().colon);
    XmlAttribute& attribute = AddAttribute(name);
    attribute.place = place;
    attribute.hasPlace = true;
    ScanEquals();
    attribute.quote = scanner_.QuoteChar();
    ExpandLiteral(attribute);
    if (standard_) return;
    const char* const error = SpecialAttributeError(name.meaning, attribute.value);
    if (error != nullptr) scanner_.Throw(error);
}

// Scans a value up to and with its closing quotation mark. Where it holds references, what is
// written is kept beside what it means.
void ReaderCore::ExpandLiteral(XmlAttribute& attribute) {
    attribute.value.clear();
    attribute.isRaw = attribute.isRaw && !standard_;  // the standard tells blanks from references
    bool hasReference = false;
    for (;;) {
        const std::size_t before = attribute.value.length();
        const XmlToken token = scanner_.ScanValue(attribute.value);
        switch (token) {
        case XmlToken::TEXT:
            if (hasReference) rawValue_ += attribute.value.view().substr(before);
            if (standard_) NormalizeBlanks(attribute.value, before);
            break;
        case XmlToken::CHARREF:
        case XmlToken::ENTITYREF:
            if (!hasReference) rawValue_ = attribute.value;
            hasReference = true;
            ExpandReference(attribute, token);
            break;
        case XmlToken::ENDQUOTE:
            if (attribute.holdsReferences) KeepRawValue(attribute);
            return;
        case XmlToken::NONE:
            scanner_.Throw(standard_ ? Message::kLessInValue : Message::kMissingCloseQuote);
        default: scanner_.Throw(standard_ ? Message::kEofInValue : Message::kMissingCloseQuote);
        }
    }
}

void ReaderCore::KeepRawValue(XmlAttribute& attribute) {
    if (static_cast<std::size_t>(rawCount_) == rawValues_.size()) rawValues_.emplace_back();
    rawValues_[static_cast<std::size_t>(rawCount_)] = rawValue_;
    attribute.rawIndex = rawCount_++;
}

// Scans a reference in a value behind its start.
void ReaderCore::ExpandReference(XmlAttribute& attribute, XmlToken token) {
    if (ReplaceReference(token, attribute.value, &rawValue_)) {
        const bool isKept =
            token == XmlToken::CHARREF && entityHandling == XmlEntityHandling::ExpandNothing;
        attribute.holdsReferences = attribute.holdsReferences || isKept;
    } else if (standard_) {
        ExpandStandardReference(attribute);
    } else if (entityHandling == XmlEntityHandling::ExpandEntities) {
        EntityRecord& record = FindEntity(referenceName_);
        Charge(record);
        ExpandEntity(attribute.value, record, Around::Value);
    } else {
        AppendReference(attribute.value, "&", referenceName_);
        attribute.holdsReferences = true;
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

// Returns what the value means, whatever is left of its references.
astring ReaderCore::ValueInForce(XmlAttribute& attribute) {
    if (!standard_) return attribute.value;
    return attribute.holdsReferences ? ExpandedValue(attribute) : NormalizedValue(attribute);
}

// Puts the values of xml:space and xml:lang in force for the element on top.
void ReaderCore::ApplySpecialAttributes() {
    ElementEntry& entry = elements_.back();
    for (XmlAttribute& attribute : Attributes()) {
        if (attribute.name->meaning == NameMeaning::Space) {
            const astring value = ValueInForce(attribute);
            if (value == "default") entry.space = XmlSpace::SpaceDefault;
            if (value == "preserve") entry.space = XmlSpace::SpacePreserve;
        } else if (attribute.name->meaning == NameMeaning::Language && !entry.ownsLanguage) {
            if (languageCount_ == languages_.size()) languages_.emplace_back();
            languages_[languageCount_] = ValueInForce(attribute);
            entry.language = &languages_[languageCount_++];
            entry.ownsLanguage = true;
        }
    }
}

// Remembers what the attribute to be added asks for.
void ReaderCore::NoteUnusual(const XmlName& name, bool isDuplicate) {
    if (isDuplicate && duplicate_ < 0) {
        duplicate_ = attributeCount_;
        asks_ |= AsksError;
    }
    switch (name.meaning) {
    case NameMeaning::Ordinary:
        if (name.prefixName != nullptr) asks_ |= AsksResolution;
        break;
    case NameMeaning::DefaultNamespace:
    case NameMeaning::Namespace: asks_ |= AsksDeclaration; break;
    case NameMeaning::Space:
    case NameMeaning::Language: asks_ |= AsksResolution | AsksSpecial; break;
    }
}

// Does what the tag asks for beyond the usual, with its element on top.
void ReaderCore::GrantUnusual() {
    if ((asks_ & AsksSpecial) != 0) ApplySpecialAttributes();
    if (namespaces && (asks_ & AsksResolution) != 0) ResolveAttributes();
    CheckDuplicates();
    if ((asks_ & AsksTrim) != 0) TrimNames();
    asks_ = 0;
}

void ReaderCore::ResetAttributes() {
    attributeCount_ = 0;
    rawCount_ = 0;
    ++elementSerial_;
    duplicate_ = -1;
    asks_ = 0;
    if (nameMapFilled_ || namespaceMapFilled_) {
        attributesByName_.Clear();
        attributesByNs_.Clear();
        nameMapFilled_ = namespaceMapFilled_ = false;
    }
}

Place ReaderCore::PlaceOf(const XmlAttribute& attribute) const {
    return attribute.hasPlace ? attribute.place : scanner_.PlaceAt(attribute.at);
}

}  // namespace Xml::detail
