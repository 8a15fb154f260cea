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
        EnterText(nullptr, RawValue(attribute));
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

void ReaderCore::LeaveParts() {
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
        const std::size_t before = value_.length();
        const XmlToken token = scanner_.ScanValuePart(value_);
        if (standard_) NormalizeBlanks(value_, before);
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

// Reads up to the end tag of the current element, which is not empty.
// Returns what has been collected by then, up to the end tag or with it.
astring ReaderCore::CaptureRest(bool withEndTag) {
    ReadToEndTag();
    const std::size_t inner =
        tagBegin_ == nullptr ? tagOffset_ : scanner_.CapturedLengthAt(tagBegin_);
    return scanner_.TakeCapture(withEndTag ? astring::npos : inner);
}

astring ReaderCore::InnerXml() {
    scanner_.StartCapture({});
    return CaptureRest(false);
}

astring ReaderCore::OuterXml(bool isEmpty) {
    if (tagBegin_ == nullptr) {
        scanner_.ResumeCapture();
    } else {
        const auto length = static_cast<std::size_t>(scanner_.Position() - tagBegin_);
        scanner_.StartCapture({reinterpret_cast<const char*>(tagBegin_), length});
    }
    return isEmpty ? scanner_.TakeCapture(astring::npos) : CaptureRest(true);
}

}  // namespace Xml::detail
