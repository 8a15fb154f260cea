// SPDX-License-Identifier: MIT

// General entities: what their references stand for, and the guards against texts that never end.
//
// An entity whose text is markup is put into the scanner in the place of the reference. The text
// of any other is added to the text around it at once. Neither way uses the stack of the thread,
// because the document says how deep entities are nested.

#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextReader.h>

#include "xml/Messages.h"
#include "xml/ReaderCore.h"
#include "xml/RunScan.h"
#include "xml/StandardMessages.h"
#include "xml/StandardNames.h"
#include "xml/Utf8Append.h"
#include "xml/XmlCharacters.h"

#include <algorithm>  // std::min
#include <limits>

namespace Xml::detail {

// References in content.

// Deals with the general reference that has been scanned, or is pending since then. value_ is the
// text before it.
ReaderCore::Reference ReaderCore::TakeReference(bool isPending) {
    switch (entityHandling) {
    case XmlEntityHandling::ExpandNothing:
        AppendReference(value_, "&", referenceName_);
        return Reference::Taken;
    case XmlEntityHandling::ExpandCharEntities: return ReportReference(isPending);
    default: break;
    }
    EntityRecord& record = FindEntity(referenceName_);
    const bool isMarkup = entities_->Measure(record).isMarkup;
    if (isMarkup && !value_.empty()) return Reference::Waits;
    Charge(record);
    if (isMarkup) {
        PushEntity(record);
        return Reference::Pushed;
    }
    ExpandEntity(value_, record, Around::Text);
    return Reference::Taken;
}

ReaderCore::Reference ReaderCore::ReportReference(bool isPending) {
    if (!value_.empty()) return Reference::Waits;
    scanner_.MarkNodeAt(isPending ? referencePlace_ : ReferencePlace());
    ReportNamed(XmlNodeType::EntityReference, referenceName_);
    return Reference::Reported;
}

ReaderCore::Pass ReaderCore::ReportEntityEnd() {
    const astring& name = entityChain_.back()->name;
    if (standard_) RequireWholeElements();
    PopEntity();
    value_.clear();
    return ReportNamed(XmlNodeType::EndEntity, name);
}

void ReaderCore::ResolveEntity() {
    if (node_.type != XmlNodeType::EntityReference) {
        Exception::ThrowException(Message::kInvalidOperation, "ResolveEntity", -1, -1);
    }
    try {
        EntityRecord* const missing = standard_ ? FindMissing(ownName_.qualified) : nullptr;
        EntityRecord& record = missing != nullptr ? *missing : FindEntity(ownName_.qualified);
        Charge(record);
        PushEntity(record);
    } catch (...) {
        Fail();
        throw;
    }
}

// Entities.

EntityRecord& ReaderCore::FindEntity(std::string_view name) const {
    EntityRecord* const record = entities_ ? entities_->FindGeneral(name) : nullptr;
    if (record == nullptr) scanner_.Throw(Message::kUndeclaredEntity, name);
    return *record;
}

// Adds what a reference leads to, before anything is done about it. What stands in the text of an
// entity was added together with the reference to that.
void ReaderCore::Charge(EntityRecord& record) {
    const EntityRecord& measured = entities_->Measure(record);
    const bool isInValue = entityChain_.size() == 1 && entityChain_[0] == nullptr;
    if (!entityChain_.empty() && !isInValue) return;
    // What is measured anew, because more has been declared since, must not go on for ever.
    long long work = 0;
    if (standard_ && IsAmplified(work, entities_->MeasuredBytes())) {
        scanner_.Throw(Message::kExpansionLimit, record.name);
    }
    if (measured.nesting > entityLimits.nesting) {
        scanner_.Throw(Message::kNestingLimit, record.name);
    }
    CountExpanded(expandedBytes_, measured.cost, record);
}

// Adds to one of the sums that the limit on expanded bytes holds for.
void ReaderCore::CountExpanded(long long& sum, long long bytes, const EntityRecord& record) {
    if (IsAmplified(sum, bytes)) scanner_.Throw(Message::kExpansionLimit, record.name);
}

// Returns whether the sum passes the limit with the bytes that are added.
bool ReaderCore::IsAmplified(long long& sum, long long bytes) const {
    constexpr long long kMost = std::numeric_limits<long long>::max() / 2;
    sum = std::min(kMost, sum + bytes);
    if (sum <= entityLimits.expandedBytes) return false;
    const long long input = scanner_.BytesRead();
    const long long factor = entityLimits.amplification;
    return factor <= 0 || sum / factor > input || (sum / factor == input && sum % factor != 0);
}

// The place in the message is that of the entity in whose text the reference stands.
void ReaderCore::CheckCycle(const EntityRecord& record) const {
    if (!record.inUse) return;
    Place place = record.place;
    for (auto entity = entityChain_.rbegin(); entity != entityChain_.rend(); ++entity) {
        if (*entity == nullptr) continue;
        place = (*entity)->place;
        break;
    }
    Exception::ThrowException(Message::kCyclicEntity, record.name, place.line, place.column);
}

// What is pushed is counted by itself, too. A reference that leads back costs nothing, since nobody
// gets behind it; but a caller who does not resolve that one does get behind it.
void ReaderCore::PushEntity(EntityRecord& record) {
    CheckCycle(record);
    CountExpanded(pushedBytes_, static_cast<long long>(record.text.length()), record);
    EnterText(&record, record.text);
    record.inUse = true;
}

// Goes on in the text of an entity, or of a value without one.
void ReaderCore::EnterText(EntityRecord* record, std::string_view text) {
    entityChain_.push_back(record);
    floors_.push_back(floor_);
    scanner_.PushString(text);
    if (standard_) floor_ = Depth();
}

void ReaderCore::PopEntity() {
    scanner_.PopState();
    EntityRecord* const record = entityChain_.back();
    if (record != nullptr) record->inUse = false;
    entityChain_.pop_back();
    floor_ = floors_.back();
    floors_.pop_back();
}

void ReaderCore::PopEntitiesTo(int count) {
    while (scanner_.PushedCount() > count)
        PopEntity();
}

// Stored text.

namespace {

/// A reference in the text of an entity or the raw value of an attribute.
struct StoredReference {
    int code = 0;            ///< the character that it stands for, 0 for a general entity
    std::string_view name;   ///< of the entity
    std::size_t length = 0;  ///< of the reference
};

// Returns the code that digits, with "x" before hexadecimal ones, stand for; -1 when there is none.
int CodeOf(std::string_view digits) {
    const int base = digits.substr(0, 1) == "x" ? 16 : 10;
    if (base == 16) digits.remove_prefix(1);
    int code = 0;
    for (const char c : digits) {
        const int letter = c | 0x20;
        int digit = base;
        if (c >= '0' && c <= '9') digit = c - '0';
        if (letter >= 'a' && letter <= 'f') digit = letter - 'a' + 10;
        if (digit >= base) return -1;
        code = code * base + digit;
        if (code > utf8::kLastScalar) return -1;
    }
    return IsXmlCharacter(code) ? code : -1;
}

// Returns whether a character may stand in a name, or begin one.
bool IsNameCharacter(std::string_view character, bool isFirst, bool isStandard) {
    const auto* const at = reinterpret_cast<const unsigned char*>(character.data());
    if (isStandard && *at >= 0x80) {
        const int length = SequenceLength(at, at + character.size());
        if (length <= 0) return false;
        const int code = utf8::Combine(at, length);
        return isFirst ? StartsStandardName(code) : IsInStandardName(code);
    }
    return isFirst ? XmlTextReader::IsName(character, true) : XmlTextReader::IsNameToken(character);
}

// Returns the length of the name that `text` starts with.
std::size_t NameLength(std::string_view text, bool isStandard) {
    std::size_t length = 0;
    while (length < text.size()) {
        std::size_t next = length + 1;
        while (next < text.size() && utf8::IsContinuation(static_cast<unsigned char>(text[next])))
            ++next;
        const std::string_view character = text.substr(length, next - length);
        if (!IsNameCharacter(character, length == 0, isStandard)) break;
        length = next;
    }
    return length;
}

// Reads the reference that `text` starts with. Errors have the scanner's place.
StoredReference ReadStoredReference(const XmlScanner& scanner, std::string_view text,
                                    bool isStandard) {
    StoredReference reference;
    if (text.substr(1, 1) == "#") {
        const std::size_t end = text.find(';');
        if (end != std::string_view::npos) reference.code = CodeOf(text.substr(2, end - 2));
        if (reference.code <= 0) scanner.Throw(Message::kInvalidReference);
        reference.length = end + 1;
        return reference;
    }
    reference.name = text.substr(1, NameLength(text.substr(1), isStandard));
    if (reference.name.empty()) {
        scanner.Throw(isStandard ? Message::kExpectedEntityName : Message::kBadName);
    }
    if (text.substr(1 + reference.name.size(), 1) != ";") {
        scanner.Throw(isStandard ? Message::kExpectedSemicolon : Message::kInvalidNamedEntity);
    }
    reference.code = PredefinedCharacter(reference.name);
    reference.length = reference.name.size() + 2;
    return reference;
}

}  // namespace

// Appends `source` with all references replaced, those in the texts of entities too. The chain says
// which entities these are; on top of it stands the one whose text `source` is, if any.
void ReaderCore::AppendExpansion(astring& text, std::string_view source, Around around) {
    const std::size_t outer = entityChain_.size();
    std::vector<std::string_view>& waiting = waitingTexts_;
    waiting.clear();
    for (;;) {
        const std::size_t at = std::min(source.find('&'), source.size());
        const std::size_t before = text.length();
        text.append(source.substr(0, at));
        if (standard_ && around == Around::Value) NormalizeBlanks(text, before);
        source.remove_prefix(at);
        if (source.empty()) {
            if (waiting.empty()) return;
            source = waiting.back();
            waiting.pop_back();
            entityChain_.back()->inUse = false;
            entityChain_.pop_back();
            continue;
        }
        const StoredReference reference = ReadStoredReference(scanner_, source, standard_);
        source.remove_prefix(reference.length);
        if (reference.code != 0) {
            AppendUtf8(text, reference.code);
            continue;
        }
        EntityRecord* const record =
            standard_ ? FindExpandable(reference.name, around) : &FindEntity(reference.name);
        if (record == nullptr) continue;
        if (entityChain_.size() == outer) Charge(*record);
        CheckCycle(*record);
        waiting.push_back(source);
        entityChain_.push_back(record);
        record->inUse = true;
        source = record->text;
    }
}

// Appends what a reference to the entity stands for.
void ReaderCore::ExpandEntity(astring& text, EntityRecord& record, Around around) {
    CheckCycle(record);
    entityChain_.push_back(&record);
    record.inUse = true;
    AppendExpansion(text, record.text, around);
    record.inUse = false;
    entityChain_.pop_back();
}

astring ReaderCore::ExpandEntities(std::string_view text) {
    astring expanded;
    AppendExpansion(expanded, text, Around::Value);
    return expanded;
}

}  // namespace Xml::detail
