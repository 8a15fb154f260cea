// SPDX-License-Identifier: MIT
#include "SourceReader.h"

#include <algorithm>

namespace Tool {

namespace {

// Tells whether the value of a node is text to a reader, where "&amp;" stands for "&".
bool HasReferences(Xml::XmlNodeType::XML_NODE_TYPE type) {
    switch (type) {
    case Xml::XmlNodeType::Comment:
    case Xml::XmlNodeType::CDATA:
    case Xml::XmlNodeType::ProcessingInstruction:
    case Xml::XmlNodeType::DocumentType: return false;
    default: return true;
    }
}

bool IsWhite(std::string_view text) {
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

}  // namespace

int SourceReader::Feed::Read(unsigned char* buffer, int offset, int count) {
    std::string& waiting = source_.waiting_;
    std::size_t& taken = source_.taken_;
    if (taken == waiting.size()) {
        waiting.clear();
        taken = 0;
        while (waiting.empty() && source_.Approve())
            continue;
    }
    const std::size_t given =
        std::min(waiting.size() - taken, static_cast<std::size_t>(std::max(0, count)));
    std::copy_n(waiting.data() + taken, given, buffer + offset);
    taken += given;
    return static_cast<int>(given);
}

void SourceReader::Take(std::string_view bytes) {
    waiting_.append(unapproved_);
    unapproved_.clear();
    if (escaper_) {
        escaper_->Escape(bytes, unapproved_);
    } else {
        first_.append(bytes);
    }
}

// Lets the first reader go on, who may come to approve of more: of what it had before it takes
// more, and of the rest when it comes to the end. Returns whether there may be more to approve of.
bool SourceReader::Approve() {
    hasFailed_ = true;  // unless it comes back
    const bool more = document_.Next();
    hasFailed_ = false;
    if (more) return true;
    waiting_.append(unapproved_);
    unapproved_.clear();
    return false;
}

void SourceReader::Start() {
    document_.Next();
    constexpr std::size_t kHead = 4;
    head_ = first_.substr(0, kHead);
    escaper_.emplace(DetectForm(head_, {}));
    escaper_->Escape(first_, unapproved_);
    first_.clear();

    reader_.SetStream(&feed_, false);
    reader_.SetNamespaces(false);
    reader_.SetNormalization(false);
    reader_.SetWhitespaceHandling(Xml::XmlTextReader::WsAll);
    reader_.SetEntityHandling(Xml::XmlEntityHandling::ExpandNothing);
}

// Has the second reader read a node.
bool SourceReader::ReadAsWritten() {
    const bool mayDiffer = document_.Reader().Conformance() == Xml::XmlConformance::Standard;
    try {
        return reader_.Read();
    } catch (const Xml::Exception& error) {
        if (hasFailed_ || !mayDiffer) throw;
        throw UnreadableSource(std::string("Cannot be formatted with --standard: ") + error.What(),
                               {error.LineNumber(), error.LinePos()});
    }
}

bool SourceReader::Next(SourceNode& node) {
    if (!ReadAsWritten()) {
        while (Approve())
            continue;
        return false;
    }
    node.type = reader_.NodeType();
    node.name = reader_.Name().view();
    if (HasReferences(node.type)) {
        node.value = reader_.Value().view();
    } else {
        node.value = UnescapeAmpersands(reader_.Value());
    }
    if (node.type == Xml::XmlNodeType::Text && IsWhite(node.value)) {
        node.type = Xml::XmlNodeType::Whitespace;  // part of a long run, which the reader cuts
    }
    node.isEmpty = reader_.IsEmptyElement();
    if (tellsPlaces_) node.place = CurrentPlace();
    node.attributes.clear();
    if (reader_.HasAttributes()) ReadAttributes(node);
    return true;
}

Place SourceReader::CurrentPlace() const { return {reader_.LineNumber(), reader_.LinePosition()}; }

void SourceReader::ReadAttributes(SourceNode& node) {
    const bool isElement = node.type == Xml::XmlNodeType::Element;
    for (const Xml::XmlAttributeRef attribute : reader_.Attributes()) {
        SourceAttribute& copy = node.attributes.emplace_back();
        copy.name = attribute.Name().view();
        copy.place = node.place;
        if (isElement) {
            copy.value = attribute.Value().view();
        } else {
            copy.value = UnescapeAmpersands(attribute.Value());
        }
    }
    if (!isElement || !tellsPlaces_) return;
    for (SourceAttribute& copy : node.attributes) {
        reader_.MoveToAttribute(copy.name);
        copy.place = CurrentPlace();
    }
    reader_.MoveToElement();
}

}  // namespace Tool
