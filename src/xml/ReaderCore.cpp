// SPDX-License-Identifier: MIT

// The reader's life: opening, closing, the state machine of Read(), and the properties.
//
//     state       a pass                                     goes to
//     ----------  -----------------------------------------  ---------------------------------
//     PsStart     detects the encoding                       PsProlog
//     PsProlog    parses markup outside of the root element  PsProlog, PsContent, PsEmptyEnd
//     PsContent   parses the content of an element           PsContent, PsProlog, PsEmptyEnd
//     PsEmptyEnd  leaves an empty element, and goes on       PsContent, PsProlog
//
// The end of the input leads to PsEnd, an exception to PsError; both are left by opening another
// input only.

#include "xml/ReaderCore.h"

#include <espalier/io/Exception.h>
#include <espalier/io/Stream.h>

#include "xml/Messages.h"
#include "xml/SeededHash.h"

#include <memory>
#include <utility>

namespace Xml::detail {

namespace {

constexpr unsigned kMapSize = 32;  // buckets at first

XmlTokenInfo MakeNode(XmlNodeType::XML_NODE_TYPE type) {
    XmlTokenInfo node;
    node.type = type;
    return node;
}

}  // namespace

const astring& EmptyText() {
    static const astring empty;
    return empty;
}

void XmlTokenInfo::NormalizeValue() {
    const bool isAttribute = normalize == Normalize::Attribute;
    normalize = Normalize::Done;
    if (!isAttribute && value.find('\r') == astring::npos) return;
    char* to = value.begin();
    bool afterCr = false;
    for (const char c : std::string_view(value)) {
        const bool isBreak = c == '\r' || c == '\n';
        if (c != '\n' || !afterCr) {
            *to++ = isAttribute && (isBreak || c == '\t') ? ' ' : isBreak ? '\n' : c;
        }
        afterCr = c == '\r';
    }
    value.resize(static_cast<std::size_t>(to - value.begin()));
}

ReaderCore::ReaderCore()
    : currentNode(&emptyNode_),
      attributesByName_(kMapSize, true),
      attributesByNs_(kMapSize, true),
      elementNode_(MakeNode(XmlNodeType::Element)),
      endElementNode_(MakeNode(XmlNodeType::EndElement)),
      textNode_(MakeNode(XmlNodeType::Text)),
      cdataNode_(MakeNode(XmlNodeType::CDATA)),
      commentNode_(MakeNode(XmlNodeType::Comment)),
      piNode_(MakeNode(XmlNodeType::ProcessingInstruction)),
      declarationNode_(MakeNode(XmlNodeType::XmlDeclaration)),
      doctypeNode_(MakeNode(XmlNodeType::DocumentType)),
      entityRefNode_(MakeNode(XmlNodeType::EntityReference)) {
    attributesByName_.SetKey(SeededHash, XmlKeyCompareBinary);
    attributesByNs_.SetKey(SeededHash, XmlKeyCompareBinary);
    for (XmlTokenInfo* node : {&piNode_, &declarationNode_, &doctypeNode_, &entityRefNode_}) {
        node->name = node->localName = &ownName_;
    }
    for (XmlTokenInfo* node : {&piNode_, &declarationNode_, &doctypeNode_}) {
        node->columnOffset = 2;
    }
    entityRefNode_.hasPlace = true;
}

ReaderCore::~ReaderCore() { Close(); }

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
    currentNode = &emptyNode_;
    ForgetAttributes();
    attributeIndex_ = 0;
    elements_.clear();
    languageCount_ = 0;
    nsSupport_.Reset();
    endReached_ = contentSeen_ = doctypeSeen_ = standalone_ = referencePending_ = false;
    rootCount_ = 0;
    parseState_ = ParseState::PsClosed;
    readState = XmlTextReader::Closed;
}

bool ReaderCore::Read() {
    if (!open_) {
        readState = XmlTextReader::Error;
        Exception::ThrowException(Message::kNoSource, astring(), 0, 0);
    }
    if (parseState_ == ParseState::PsError) {
        readState = XmlTextReader::Error;
        return false;
    }
    if (endReached_) return false;
    try {
        Pass pass = Pass::Repeat;
        while (pass == Pass::Repeat) pass = Step();
        if (pass == Pass::End) return EndDocument();
    } catch (...) {
        readState = XmlTextReader::Error;
        parseState_ = ParseState::PsError;
        currentNode = &emptyNode_;
        ForgetAttributes();
        throw;
    }
    readState = XmlTextReader::Interactive;
    return true;
}

ReaderCore::Pass ReaderCore::Step() {
    ForgetAttributes();
    switch (parseState_) {
    case ParseState::PsStart: return Start();
    case ParseState::PsProlog: return ParseRoot();
    case ParseState::PsEmptyEnd: PopElement(); return Pass::Repeat;
    case ParseState::PsContent: return ParseBeginTag();
    case ParseState::PsClosed:
    case ParseState::PsEnd:
    case ParseState::PsError: break;
    }
    return Pass::End;  // Read() lets no other state come here
}

ReaderCore::Pass ReaderCore::Start() {
    scanner_.AttachStream();
    scanner_.SetNamespaces(namespaces);
    if (namesSplit_ != namespaces) names_.Clear();
    namesSplit_ = namespaces;
    parseState_ = ParseState::PsProlog;
    return Pass::Repeat;
}

bool ReaderCore::EndDocument() {
    if (rootCount_ < 1) scanner_.Throw(Message::kMissingRoot);
    if (!elements_.empty()) scanner_.Throw(Message::kMissingEndElement, Top().name->qualified);
    parseState_ = ParseState::PsEnd;
    readState = XmlTextReader::EndOfFile;
    endReached_ = true;
    currentNode = &emptyNode_;
    return false;
}

// Properties.

const char* ReaderCore::EncodingName() const {
    return open_ && scanner_.Codec() != nullptr ? scanner_.Codec()->Name() : "";
}

Place ReaderCore::NodePlace() const {
    if (currentNode == &emptyNode_) return Place{0, 0};
    if (currentNode->hasPlace) return currentNode->place;
    if (currentNode->type == XmlNodeType::Attribute) {
        return PlaceOf(static_cast<const XmlAttributeTokenInfo&>(*currentNode));
    }
    Place place = scanner_.NodePlace();
    place.column += currentNode->columnOffset;
    return place;
}

const astring& ReaderCore::Language() const {
    return elements_.empty() ? EmptyText() : *Top().language;
}

XmlSpace ReaderCore::Space() const {
    return elements_.empty() ? XmlSpace(XmlSpace::SpaceNone) : Top().space;
}

char ReaderCore::QuoteChar() const {
    if (currentNode->type != XmlNodeType::Attribute) return '"';
    return static_cast<const XmlAttributeTokenInfo*>(currentNode)->quote;
}

int ReaderCore::AttributeCount() const {
    switch (currentNode->type) {
    case XmlNodeType::Element:
    case XmlNodeType::Attribute:
    case XmlNodeType::DocumentType:
    case XmlNodeType::XmlDeclaration: return attributeCount_;
    default: return 0;
    }
}

const astring& ReaderCore::AttributeValue(int i) const {
    if (i < 0 || i >= AttributeCount()) return EmptyText();
    return attributes_[static_cast<std::size_t>(i)].Value();
}

bool ReaderCore::MoveToElement() {
    if (currentNode->type != XmlNodeType::Attribute) return false;
    currentNode = &elementNode_;
    return true;
}

bool ReaderCore::MoveToAttribute(int i) {
    const bool isOnElement =
        currentNode->type == XmlNodeType::Element || currentNode->type == XmlNodeType::Attribute;
    if (!isOnElement || i < 0 || i >= attributeCount_) return false;
    attributeIndex_ = i;
    currentNode = &attributes_[static_cast<std::size_t>(i)];
    return true;
}

const astring& ReaderCore::LookupNamespace(std::string_view prefix) const {
    return namespaces ? nsSupport_.GetURI(prefix) : EmptyText();
}

}  // namespace Xml::detail
