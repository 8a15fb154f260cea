// SPDX-License-Identifier: MIT

// The reader's life: opening, closing, the state machine of Read(), and the properties.
//
//     state       a pass                                     goes to
//     ----------  -----------------------------------------  ---------------------------------
//     PsStart     detects the encoding                       PsProlog
//     PsProlog    parses markup outside of the root element  PsProlog, PsContent, PsEmptyEnd
//     PsContent   parses the content of an element           PsContent, PsProlog, PsEmptyEnd
//     PsEmptyEnd  leaves an empty element, and goes on       PsContent, PsProlog
//     PsReference deals with the reference that ended a text PsContent
//
// ReadAttributeValue() goes to PsEntityReturn, and back to the state before when it is through or
// the reader moves.
//
// In the content of an element the quick scans come first; what they leave alone, a careful pass
// does from the same place.
//
// The end of the input leads to PsEnd, an exception to PsError; both are left by opening another
// input only.

#include "xml/ReaderCore.h"

#include <espalier/io/Exception.h>
#include <espalier/io/Stream.h>

#include "xml/LineEndScan.h"
#include "xml/Messages.h"
#include "xml/RunScan.h"

#include <algorithm>  // std::replace_if
#include <memory>
#include <utility>

namespace Xml::detail {

ReaderCore::ReaderCore(NodeView& node)
    : node_(node), attributesByName_(NewAttributeMap()), attributesByNs_(NewAttributeMap()) {
    constexpr const char* kParts[] = {"", "version", "encoding", "standalone"};
    for (std::size_t i = 0; i < partNames_.size(); ++i) {
        partNames_[i].qualified = partNames_[i].local = kParts[i];
    }
    rawValue_.reserve(XmlScanner::kBufferSize);  // more than most values that hold references
    publicName_.qualified = publicName_.local = "PUBLIC";
    systemName_.qualified = systemName_.local = "SYSTEM";
    ShowNothing();
}

ReaderCore::~ReaderCore() { Close(); }

// Makes the properties those of no node.
void ReaderCore::ShowNothing() {
    node_ = NodeView{};
    node_.name = &noName_;
    node_.namespaceUri = &empty_;
    node_.value = &noValue_;
}

void ReaderCore::OpenStream(IO::Stream* stream, bool owns) {
    scanner_.SetStream(stream);
    stream_ = stream;
    ownsStream_ = owns;
    open_ = true;
    readState = XmlTextReader::Initial;
    parseState_ = ParseState::PsStart;
}

void ReaderCore::Close() {
    IO::Stream* const stream = std::exchange(stream_, nullptr);
    if (std::exchange(ownsStream_, false)) {
        const std::unique_ptr<IO::Stream> owner(stream);
        try {
            stream->Close();
        } catch (...) {  // closing never throws; there is nothing left to lose in an input
        }
    }
    open_ = false;
    ShowNothing();
    ForgetAttributes();
    attributeIndex_ = 0;
    elements_.clear();
    languageCount_ = 0;
    nsSupport_.Reset();
    entityChain_.clear();
    entities_.reset();
    floors_.clear();
    floor_ = 0;
    doctype_ = DoctypeFacts();
    attributeLists_.reset();
    expandedBytes_ = pushedBytes_ = suppliedBytes_ = 0;
    contentSeen_ = doctypeSeen_ = standalone_ = false;
    rootCount_ = 0;
    parseState_ = ParseState::PsClosed;
    readState = XmlTextReader::Closed;
}

// Reads from a state in which there is nothing quick.
bool ReaderCore::ReadFromOutside() {
    if (!open_) {
        readState = XmlTextReader::Error;
        Exception::ThrowException(Message::kNoSource, astring(), 0, 0);
    }
    if (parseState_ == ParseState::PsError) {
        readState = XmlTextReader::Error;
        return false;
    }
    if (parseState_ == ParseState::PsEntityReturn) {
        LeaveValue();
        return Read();
    }
    return parseState_ != ParseState::PsEnd && ReadCarefully();
}

void ReaderCore::SetNormalization(bool normalization) {
    normalization_ = normalization;
    // The standard mode has the line ends of texts from the scanner, and leaves the blanks in
    // values until somebody asks.
    normalizesTexts_ = normalization && !standard_;
    normalizesValues_ = normalization || standard_;
}

// Leaves the reader in a state that can be closed, whatever it was doing.
void ReaderCore::Fail() {
    readState = XmlTextReader::Error;
    parseState_ = ParseState::PsError;
    ShowNothing();
    ResetAttributes();
}

// Reads a node with the scanner's tokens.
bool ReaderCore::ReadCarefully() {
    try {
        Pass pass = Pass::Repeat;
        while (pass == Pass::Repeat)
            pass = Step();
        if (pass == Pass::End) return EndDocument();
    } catch (...) {
        Fail();
        throw;
    }
    readState = XmlTextReader::Interactive;
    return true;
}

ReaderCore::Pass ReaderCore::Step() {
    switch (parseState_) {
    case ParseState::PsStart: return Start();
    case ParseState::PsProlog: return ParseRoot();
    case ParseState::PsContent: return ParseBeginTag();
    case ParseState::PsReference: return ParsePendingReference();
    case ParseState::PsEmptyEnd:
    case ParseState::PsEntityReturn:
    case ParseState::PsClosed:
    case ParseState::PsEnd:
    case ParseState::PsError: break;
    }
    return Pass::End;  // Read() lets no other state come here
}

ReaderCore::Pass ReaderCore::Start() {
    const bool isStandard = conformance == XmlConformance::Standard;
    scanner_.SetStandard(isStandard);
    scanner_.AttachStream();
    scanner_.SetNamespaces(namespaces);
    if (namesSplit_ != namespaces || standard_ != isStandard || namesOfOneByte_) ForgetNames();
    namesSplit_ = namespaces;
    standard_ = isStandard;
    SetNormalization(normalization_);
    parseState_ = ParseState::PsProlog;
    if (standard_ && !scanner_.LookingAt("<?xml")) SettleStandardEncoding(false);
    return Pass::Repeat;
}

bool ReaderCore::EndDocument() {
    if (rootCount_ < 1) scanner_.Throw(Message::kMissingRoot);
    if (!elements_.empty()) scanner_.Throw(Message::kMissingEndElement, Top().name->qualified);
    parseState_ = ParseState::PsEnd;
    readState = XmlTextReader::EndOfFile;
    ShowNothing();
    return false;
}

// Properties.

const char* ReaderCore::EncodingName() const {
    return open_ && scanner_.StreamCodec() != nullptr ? scanner_.StreamCodec()->Name() : "";
}

Place ReaderCore::NodePlace() const {
    switch (node_.type) {
    case XmlNodeType::None: return Place{0, 0};
    case XmlNodeType::Attribute:
        return PlaceOf(attributes_[static_cast<std::size_t>(attributeIndex_)]);
    default: break;
    }
    Place place = scanner_.NodePlace();
    const bool isBehindMark = node_.type == XmlNodeType::ProcessingInstruction ||
                              node_.type == XmlNodeType::XmlDeclaration ||
                              node_.type == XmlNodeType::DocumentType;
    if (isBehindMark) place.column += 2;
    return place;
}

const astring& ReaderCore::Language() const { return elements_.empty() ? empty_ : *Top().language; }

char ReaderCore::QuoteChar() const {
    if (node_.type != XmlNodeType::Attribute) return '"';
    return attributes_[static_cast<std::size_t>(attributeIndex_)].quote;
}

int ReaderCore::AttributeCount() const {
    switch (node_.type) {
    case XmlNodeType::Element:
    case XmlNodeType::Attribute:
    case XmlNodeType::DocumentType:
    case XmlNodeType::XmlDeclaration: return attributeCount_;
    default: return 0;
    }
}

const astring& ReaderCore::AttributeValue(int i) {
    if (i < 0 || i >= AttributeCount()) return empty_;
    return NormalizedValue(attributes_[static_cast<std::size_t>(i)]);
}

bool ReaderCore::MoveToElement() {
    LeaveValue();
    if (node_.type != XmlNodeType::Attribute) return false;
    ShowElement();
    return true;
}

bool ReaderCore::MoveToAttribute(int i) {
    LeaveValue();
    if (i < 0 || i >= attributeCount_ || !IsOnElement()) return false;
    node_.type = XmlNodeType::Attribute;
    node_.depth = Depth() + 1;
    ShowAttribute(i);
    return true;
}

bool ReaderCore::MoveToAttribute(std::string_view name) {
    LeaveValue();
    return MoveToFound(FindAttribute(name));
}

bool ReaderCore::MoveToAttribute(std::string_view localName, std::string_view uri) {
    LeaveValue();
    return MoveToFound(namespaces ? FindAttribute(localName, uri) : nullptr);
}

bool ReaderCore::MoveToFound(const XmlAttribute* attribute) {
    return attribute != nullptr &&
           MoveToAttribute(static_cast<int>(attribute - attributes_.data()));
}

bool ReaderCore::MoveToNextAttribute() {
    LeaveValue();
    // Deliberate: on the element itself this does not move to the first attribute.
    const int next = attributeIndex_ + 1;
    if (node_.type != XmlNodeType::Attribute || next >= attributeCount_) return false;
    ShowAttribute(next);
    return true;
}

// Makes the properties, but for type and depth, those of an attribute.
void ReaderCore::ShowAttribute(int i) {
    XmlAttribute& attribute = attributes_[static_cast<std::size_t>(i)];
    attributeIndex_ = i;
    node_.name = attribute.name;
    node_.namespaceUri = attribute.uri;
    node_.value = &attribute.value;
    node_.isRaw = attribute.isRaw;
}

const astring& ReaderCore::LookupNamespace(std::string_view prefix) const {
    return namespaces ? nsSupport_.GetURI(prefix) : empty_;
}

// Normalization.

// XML 1.0 section 2.11: CR LF and CR become LF. In attribute values (section 3.3.3) tabs and line
// breaks become spaces.
void ReaderCore::NormalizeLineEnds(astring& value, bool isAttribute) {
    const std::size_t first = isAttribute ? FindLineBlank(value) : FindCarriageReturn(value);
    if (first == value.length()) return;
    char* to = value.begin() + first;
    bool afterCr = false;
    for (const char c : value.view().substr(first)) {
        const bool isBreak = c == '\r' || c == '\n';
        if (c != '\n' || !afterCr) {
            *to++ = isAttribute && (isBreak || c == '\t') ? ' ' : isBreak ? '\n' : c;
        }
        afterCr = c == '\r';
    }
    value.resize(static_cast<std::size_t>(to - value.begin()));
}

// XML 1.0 section 3.3.3, where line ends are normalized already: each blank becomes a space.
void ReaderCore::NormalizeBlanks(astring& value, std::size_t from) {
    std::replace_if(
        value.begin() + from, value.end(),
        [](char c) { return IsLineBlank(static_cast<unsigned char>(c)); }, ' ');
}

const astring& ReaderCore::NormalizedValue(XmlAttribute& attribute) const {
    if (std::exchange(attribute.isRaw, false)) {
        if (standard_) {
            NormalizeBlanks(attribute.value, 0);
        } else {
            NormalizeLineEnds(attribute.value, true);
        }
    }
    return attribute.value;
}

void ReaderCore::NormalizeCurrentValue() {
    node_.isRaw = false;
    if (node_.type == XmlNodeType::Attribute) {
        NormalizedValue(attributes_[static_cast<std::size_t>(attributeIndex_)]);
    } else {
        NormalizeLineEnds(value_, parseState_ == ParseState::PsEntityReturn);
    }
}

}  // namespace Xml::detail
