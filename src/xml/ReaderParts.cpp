// SPDX-License-Identifier: MIT

// The value of an attribute, part by part, and the markup of whole elements.

#include "xml/Messages.h"
#include "xml/ReaderCore.h"

#include <utility>  // std::exchange

namespace Xml::detail {

// The value of an attribute.

bool ReaderCore::ReadAttributeValue() {
    const bool isInValue = parseState_ == ParseState::PsEntityReturn;
    if (!isInValue && node_.type != XmlNodeType::Attribute) return false;
    try {
        if (!isInValue) {
            EnterValue();
            if (scanner_.PushedCount() == partsBase_) return ReportPart(XmlNodeType::Text);
        }
        if (scanner_.PushedCount() > partsBase_ && NextPart()) return true;
    } catch (...) {
        Fail();
        throw;
    }
    LeaveValue();
    return false;
}

// Goes to the value of the current attribute: as value_, or in the scanner when it has parts.
void ReaderCore::EnterValue() {
    XmlAttribute& attribute = attributes_[static_cast<std::size_t>(attributeIndex_)];
    partsBase_ = scanner_.PushedCount();
    partWaits_ = false;
    if (attribute.holdsReferences) {
        if (!attribute.hasPlace) KeepPlaces();
        entityChain_.push_back(nullptr);
        scanner_.PushString(attribute.raw);
    } else {
        value_ = NormalizedValue(attribute);
    }
    savedParseState_ = std::exchange(parseState_, ParseState::PsEntityReturn);
}

// Finds out where the attributes start, which the scanner forgets how to tell. Either all of them
// have their places or none.
void ReaderCore::KeepPlaces() {
    for (XmlAttribute& attribute : Attributes()) {
        attribute.place = PlaceOf(attribute);
        attribute.hasPlace = true;
    }
}

// Goes back from the value of an attribute to the attribute.
void ReaderCore::LeaveValue() {
    if (parseState_ != ParseState::PsEntityReturn) return;
    PopEntitiesTo(partsBase_);
    parseState_ = savedParseState_;
    node_.type = XmlNodeType::Attribute;
    node_.depth = Depth() + 1;
    ShowAttribute(attributeIndex_);
}

// Makes the next part the current node.
// Returns false at the end of the value.
bool ReaderCore::NextPart() {
    value_.clear();
    if (std::exchange(partWaits_, false)) {
        return ReportPart(XmlNodeType::EntityReference, referenceName_);
    }
    for (;;) {
        const XmlToken token = scanner_.ScanValuePart(value_);
        if (token == XmlToken::TEXT) continue;
        const bool isReference = token == XmlToken::CHARREF || token == XmlToken::ENTITYREF;
        if (isReference && ReplaceReference(token, value_, nullptr)) continue;
        if (!value_.empty()) {
            partWaits_ = isReference;
            return ReportPart(XmlNodeType::Text);
        }
        if (isReference) return ReportPart(XmlNodeType::EntityReference, referenceName_);
        const EntityRecord* const ended = entityChain_.back();
        if (ended == nullptr) return false;
        PopEntity();
        return ReportPart(XmlNodeType::EndEntity, ended->name);
    }
}

bool ReaderCore::ReportPart(XmlNodeType::XML_NODE_TYPE type) {
    ReportValue(type);
    return true;
}

bool ReaderCore::ReportPart(XmlNodeType::XML_NODE_TYPE type, std::string_view name) {
    ReportNamed(type, name);
    return true;
}

// Whole elements.

// Returns the start tag of the current element as it is written. Nothing has been read since.
const astring& ReaderCore::RawStartTag() {
    if (tagBegin_ != nullptr) {
        rawTag_.assign(reinterpret_cast<const char*>(tagBegin_),
                       static_cast<std::size_t>(scanner_.Position() - tagBegin_));
        tagBegin_ = nullptr;
    }
    return rawTag_;
}

// Reads up to the end tag of the current element, which is not empty.
// Returns `before` and what is written behind the start tag, up to the end tag or with it.
astring ReaderCore::CaptureElement(std::string_view before, bool withEndTag) {
    constexpr std::size_t kWorthKeeping = 64 * 1024;  // smaller texts leave the memory for the next
    scanner_.StartCapture(before);
    ReadToEndTag();
    const std::size_t inner =
        tagBegin_ == nullptr ? tagOffset_ : scanner_.CapturedLengthAt(tagBegin_);
    astring& captured = scanner_.EndCapture();
    if (!withEndTag) captured.resize(inner);
    return captured.length() < kWorthKeeping ? captured : std::exchange(captured, astring());
}

astring ReaderCore::InnerXml() { return CaptureElement({}, false); }

astring ReaderCore::OuterXml(bool isEmpty) {
    const astring& tag = RawStartTag();
    return isEmpty ? tag : CaptureElement(tag, true);
}

}  // namespace Xml::detail
