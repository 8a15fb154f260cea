// SPDX-License-Identifier: MIT
#include "sax/AttributeHandler.h"

#include <espalier/xml/XmlTextReader.h>

#include "sax/SkippedEntity.h"
#include "sax/ViewOf.h"
#include "xml/AttributeLists.h"

#include <algorithm>
#include <string_view>

namespace sax::detail {

namespace {

using Xml::XmlNodeType;
using Xml::detail::XmlAttribute;

const astring& LocalNameOf(const XmlAttribute& attribute) {
    const Xml::detail::NameParts& name = *attribute.name;
    return name.local.empty() ? name.qualified : name.local;
}

}  // namespace

void AttributeHandler::LoadAll() {
    count_ = core_.AttributeCount();
    if (isIndexed_) {
        pairs_.Clear();
        isIndexed_ = false;
    }
    resolvedCount_ = 0;
    for (int i = 0; i < count_; ++i) {
        if (core_.AttributeAt(i).holdsReferences) Resolve(i);
    }
}

// Puts the value together from its parts.
void AttributeHandler::Resolve(int index) {
    if (resolvedCount_ == resolved_.size()) resolved_.emplace_back();
    Resolved& resolved = resolved_[resolvedCount_++];
    resolved.index = index;
    resolved.value.clear();
    reader_.MoveToAttribute(index);
    while (reader_.ReadAttributeValue()) {
        switch (reader_.NodeType()) {
        case XmlNodeType::Text: resolved.value += reader_.Value(); break;
        case XmlNodeType::EntityReference:
            if (!IsSkipped(core_, reader_.Name())) reader_.ResolveEntity();
            break;
        default: break;
        }
    }
    if (core_.AttributeAt(index).isTokens) Xml::detail::TrimTokens(resolved.value);
    reader_.MoveToElement();
}

const char* AttributeHandler::getURI(int index) const {
    return Has(index) ? core_.AttributeAt(index).uri->c_str() : nullptr;
}

const char* AttributeHandler::getLocalName(int index) const {
    return Has(index) ? LocalNameOf(core_.AttributeAt(index)).c_str() : nullptr;
}

const char* AttributeHandler::getQName(int index) const {
    return Has(index) ? core_.AttributeAt(index).name->qualified.c_str() : nullptr;
}

// Declarations of attributes are not read, so all are of the type that needs none.
const char* AttributeHandler::getType(int index) const { return Has(index) ? "CDATA" : nullptr; }

const char* AttributeHandler::getValue(int index) const {
    if (!Has(index)) return nullptr;
    const XmlAttribute& attribute = core_.AttributeAt(index);
    if (attribute.holdsReferences) [[unlikely]]
        return ResolvedValue(index);
    if (attribute.isRaw) [[unlikely]]
        return core_.AttributeValue(index).c_str();
    return attribute.value.c_str();
}

const char* AttributeHandler::ResolvedValue(int index) const {
    const auto end = resolved_.begin() + static_cast<std::ptrdiff_t>(resolvedCount_);
    const auto found =
        std::lower_bound(resolved_.begin(), end, index,
                         [](const Resolved& one, int wanted) { return one.index < wanted; });
    return found->value.c_str();
}

int AttributeHandler::getIndex(const char* qName) const {
    const std::string_view wanted = ViewOf(qName);
    for (int i = 0; i < count_; ++i) {
        if (core_.AttributeAt(i).name->qualified == wanted) return i;
    }
    return -1;
}

int AttributeHandler::getIndex(const char* uri, const char* localName) const {
    const auto namesOf = [this](int i) {
        const XmlAttribute& attribute = core_.AttributeAt(i);
        return AttributeNames{*attribute.uri, LocalNameOf(attribute), attribute.name->qualified};
    };
    if (count_ <= PairIndex::kFew) {
        return PairIndex::Scan(count_, namesOf, ViewOf(uri), ViewOf(localName));
    }
    if (!isIndexed_) {
        pairs_.Fill(count_, namesOf);
        isIndexed_ = true;
    }
    return pairs_.Find(ViewOf(uri), ViewOf(localName));
}

}  // namespace sax::detail
