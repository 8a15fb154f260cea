// SPDX-License-Identifier: MIT

// References to general entities by the standard: which of them are errors, and what the text of
// an entity must be where it is referred to. That does not depend on whether references are
// replaced, so the text of an entity whose references stay is read once, too.

#include "xml/Messages.h"
#include "xml/ReaderCore.h"
#include "xml/StandardMessages.h"

#include <cstdint>
#include <utility>  // std::exchange

namespace Xml::detail {

// XML 1.0 section 4.1, Entity Declared and Parsed Entity.
//
// Returns whether the text of an entity, null when it is not declared, is there to be read.
bool ReaderCore::IsReadable(const EntityRecord* record, std::string_view name) const {
    const bool isKnown = doctype_.KnowsAllEntities();
    if (record == nullptr) {
        if (isKnown) scanner_.Throw(Message::kUndeclaredEntity, name);
        return false;
    }
    if (isKnown && record->isInParameter) scanner_.Throw(Message::kEntityInParameter, name);
    if (record->IsUnparsed()) scanner_.Throw(Message::kUnparsedEntity, name);
    return !record->isExternal;
}

// References in content.

// Deals with the general reference that has been scanned, or is pending since then. value_ is the
// text before it.
ReaderCore::Reference ReaderCore::TakeStandardReference(bool isPending) {
    EntityRecord* const record = entities_ ? entities_->FindGeneral(referenceName_) : nullptr;
    const bool isReadable = IsReadable(record, referenceName_);
    const bool expands = entityHandling == XmlEntityHandling::ExpandEntities;
    if (isReadable && expands) {
        CheckEntityText(*record, Around::Text);
        return TakeReference(isPending);
    }
    if (isReadable) ProveContent(*record);
    if (entityHandling != XmlEntityHandling::ExpandNothing) return ReportReference(isPending);
    AppendReference(value_, "&", referenceName_);
    return Reference::Taken;
}

// Sees to it that the text of an entity is well-formed content (section 4.3.2).
void ReaderCore::ProveContent(EntityRecord& record) {
    const bool isMarkup = entities_->Measure(record).isMarkup;
    const bool dependsOnPrefixes = namespaces && isMarkup;
    const std::uint64_t generation = NamespaceGeneration();
    if (record.isProvenContent && (!dependsOnPrefixes || record.provenIn == generation)) return;
    CheckEntityText(record, Around::Text);
    Charge(record);
    if (isMarkup) {
        ProveMarkup(record);
    } else {
        astring text;
        ExpandEntity(text, record, Around::Text);
    }
    record.isProvenContent = true;
    record.provenIn = generation;
}

// Reads the text of an entity as if it stood here, and goes back to behind the reference.
void ReaderCore::ProveMarkup(EntityRecord& record) {
    const Place place = scanner_.NodePlace();
    const astring text = std::exchange(value_, astring());
    const astring name = referenceName_;
    const int around = scanner_.PushedCount();
    const XmlEntityHandling handling =
        std::exchange(entityHandling, XmlEntityHandling::ExpandEntities);
    try {
        PushEntity(record);
        ReadToTextEnd(around);
    } catch (...) {
        entityHandling = handling;
        throw;
    }
    entityHandling = handling;
    value_ = text;
    referenceName_ = name;
    scanner_.MarkNodeAt(place);
}

// Section 4.3.2: an element ends in the entity in which it begins.
void ReaderCore::RequireWholeElements() const {
    if (Depth() != floor_) scanner_.Throw(Message::kElementLeavesEntity, Top().name->qualified);
}

// Refuses what the text of an entity cannot hold where it is referred to.
void ReaderCore::CheckEntityText(const EntityRecord& record, Around around) const {
    if (around == Around::Value) {
        // Section 3.1, No < in Attribute Values.
        if (record.text.find('<') != astring::npos) {
            scanner_.Throw(Message::kLessInEntityInValue, record.name);
        }
    } else if (record.text.find('<') == astring::npos &&  // otherwise the text is scanned
               record.text.find("]]>") != astring::npos) {
        scanner_.Throw(Message::kBracketsInEntity, record.name);
    }
}

// Returns what stands for an entity that is not declared where that is no error: one without text.
// Null for any other.
EntityRecord* ReaderCore::FindMissing(std::string_view name) {
    if (doctype_.KnowsAllEntities()) return nullptr;
    if (!entities_) entities_ = std::make_unique<EntityTable>();
    if (entities_->FindGeneral(name) != nullptr) return nullptr;
    missing_ = EntityRecord();
    missing_.name = name;
    return &missing_;
}

// References in values.

// Returns the entity that is to be expanded for a reference, null for none.
EntityRecord* ReaderCore::FindExpandable(std::string_view name, Around around) {
    if (namespaces && name.find(':') != std::string_view::npos) {
        scanner_.Throw(Message::kColonInEntity, name);
    }
    EntityRecord* const record = entities_ ? entities_->FindGeneral(name) : nullptr;
    const bool isReadable = IsReadable(record, name);
    if (record == nullptr) return nullptr;
    // Section 3.1, No External Entity References.
    if (!isReadable && around == Around::Value) scanner_.Throw(Message::kExternalInValue, name);
    if (!isReadable) return nullptr;
    CheckEntityText(*record, around);
    return record;
}

// Deals with the general reference that has been scanned.
void ReaderCore::ExpandStandardReference(XmlAttribute& attribute) {
    const bool expands = entityHandling == XmlEntityHandling::ExpandEntities;
    const EntityRecord* const known = entities_ ? entities_->FindGeneral(referenceName_) : nullptr;
    if (expands || known == nullptr || !known->isProvenValue) {
        astring proof;
        AppendEntity(expands ? attribute.value : proof, referenceName_);
    }
    if (expands) return;
    AppendReference(attribute.value, "&", referenceName_);
    attribute.holdsReferences = true;
}

void ReaderCore::AppendEntity(astring& value, std::string_view name) {
    EntityRecord* const record = FindExpandable(name, Around::Value);
    if (record == nullptr) return;
    Charge(*record);
    ExpandEntity(value, *record, Around::Value);
    // While the document type is read, an entity that the text refers to may still be declared.
    record->isProvenValue = rootCount_ > 0;
}

void ReaderCore::CountParameter(const EntityRecord& record) {
    CountExpanded(pushedBytes_, static_cast<long long>(record.text.length()), record);
}

}  // namespace Xml::detail
