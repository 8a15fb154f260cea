// SPDX-License-Identifier: MIT

// Namespaces of elements and attributes: declarations, duplicates, and lookup by name.

#include "xml/Messages.h"
#include "xml/ReaderCore.h"
#include "xml/SeededHash.h"
#include "xml/StandardMessages.h"

#include <algorithm>  // std::sort, std::max
#include <new>        // std::bad_alloc

namespace Xml::detail {

void ReaderCore::DeclareNamespaces() {
    for (XmlAttribute& attribute : Attributes()) {
        const NameMeaning meaning = attribute.name->meaning;
        if (meaning != NameMeaning::DefaultNamespace && meaning != NameMeaning::Namespace) continue;
        const std::string_view prefix =
            meaning == NameMeaning::Namespace ? attribute.name->local.view() : std::string_view();
        const bool isDeclared =
            attribute.holdsReferences
                ? DeclareNamespace(attribute, prefix, ExpandedValue(attribute))
                : DeclareNamespace(attribute, prefix, NormalizedValue(attribute));
        if (!isDeclared) throw std::bad_alloc();
    }
}

bool ReaderCore::DeclareNamespace(const XmlAttribute& attribute, std::string_view prefix,
                                  const astring& uri) {
    if (standard_) CheckDeclaration(attribute, prefix, uri);
    return nsSupport_.DeclarePrefix(prefix, uri) != nullptr;
}

// The URI of a declaration whose value holds references.
astring ReaderCore::ExpandedValue(const XmlAttribute& attribute) {
    astring value = ExpandEntities(RawValue(attribute));
    if (normalization_ && !standard_) NormalizeLineEnds(value, true);
    if (attribute.isTokens) TrimTokens(value);
    return value;
}

void ReaderCore::ResolveAttributes() {
    for (XmlAttribute& attribute : Attributes()) {
        const XmlName& name = *attribute.name;
        if (name.prefixName == nullptr || name.meaning == NameMeaning::Namespace) continue;
        attribute.uri = UriOf(*name.prefixName);
        if (standard_ && attribute.uri->empty()) {
            ThrowAt(attribute, Message::kUndeclaredPrefix, name.qualified);
        }
    }
}

// Tells whether all prefixed attributes have the same prefix.
bool ReaderCore::HaveOnePrefix() const {
    const XmlName* prefix = nullptr;
    for (const XmlAttribute& attribute : Attributes()) {
        const XmlName* const other = attribute.name->prefixName;
        if (other == nullptr || attribute.name->meaning == NameMeaning::Namespace) continue;
        if (prefix != nullptr && other != prefix) return false;
        prefix = other;
    }
    return true;
}

// Two prefixes may be bound to one URI: no two attributes may have the same URI and local name
// (Namespaces in XML 1.0 section 6.3). Prefixes that are not declared stand for the empty URI all
// of them. Returns the first attribute whose name an earlier one has.
const XmlAttribute* ReaderCore::FindExpandedDuplicate() {
    if (HaveOnePrefix()) return nullptr;  // names with one prefix differ in their local names
    std::vector<const XmlAttribute*>& prefixed = prefixedAttributes_;
    prefixed.clear();
    for (const XmlAttribute& attribute : Attributes()) {
        const XmlName& name = *attribute.name;
        if (name.prefixName == nullptr || name.meaning == NameMeaning::Namespace) continue;
        prefixed.push_back(&attribute);
    }
    // Sorted by name and then by place, so that equal ones are neighbours in document order.
    const auto compareNames = [](const XmlAttribute& a, const XmlAttribute& b) {
        const int order = a.name->local.compare(b.name->local);
        return order != 0 ? order : a.uri->compare(*b.uri);
    };
    std::sort(prefixed.begin(), prefixed.end(), [&compareNames](const auto* a, const auto* b) {
        const int order = compareNames(*a, *b);
        return order != 0 ? order < 0 : a < b;
    });
    const XmlAttribute* first = nullptr;
    for (std::size_t i = 1; i < prefixed.size(); ++i) {
        const bool isDuplicate = compareNames(*prefixed[i - 1], *prefixed[i]) == 0;
        if (isDuplicate && (first == nullptr || prefixed[i] < first)) first = prefixed[i];
    }
    return first;
}

// Throws for the first attribute that an earlier one equals, by its name as it is written or, with
// namespaces, by its expanded name.
void ReaderCore::CheckDuplicates() {
    const XmlAttribute* first = nullptr;
    if ((asks_ & AsksError) != 0) first = &attributes_[static_cast<std::size_t>(duplicate_)];
    if (namespaces && (asks_ & AsksResolution) != 0) {
        const XmlAttribute* const expanded = FindExpandedDuplicate();
        if (expanded != nullptr && (first == nullptr || expanded < first)) first = expanded;
    }
    if (first != nullptr) ThrowDuplicate(*first);
}

void ReaderCore::ThrowDuplicate(const XmlAttribute& attribute) const {
    ThrowAt(attribute, Message::kDuplicateAttribute,
            standard_ ? attribute.name->qualified.view() : std::string_view());
}

// Lookup by name.

namespace {

// With up to so many attributes, comparing all of them is faster than a table.
constexpr int kFewAttributes = 16;

constexpr unsigned kMapSize = 32;  // buckets at first

bool IsDeclaration(const XmlName& name) {
    return name.meaning == NameMeaning::DefaultNamespace || name.meaning == NameMeaning::Namespace;
}

astring NamespaceKey(std::string_view uri, std::string_view localName) {
    astring key(uri);
    key += ':';
    key += localName;
    return key;
}

unsigned KeyLength(std::string_view key) { return static_cast<unsigned>(key.size()); }

}  // namespace

const astring& ReaderCore::AttributeValue(std::string_view name) {
    XmlAttribute* const found = FindAttribute(name);
    return found == nullptr ? empty_ : NormalizedValue(*found);
}

const astring& ReaderCore::AttributeValue(std::string_view localName, std::string_view uri) {
    XmlAttribute* const found = namespaces ? FindAttribute(localName, uri) : nullptr;
    return found == nullptr ? empty_ : NormalizedValue(*found);
}

XmlAttribute* ReaderCore::FindAttribute(std::string_view name) {
    if (name.empty()) return nullptr;
    if (attributeCount_ > kFewAttributes) {
        if (!nameMapFilled_) FillNameMap();
        return static_cast<XmlAttribute*>(attributesByName_.Find(name.data(), KeyLength(name)));
    }
    for (XmlAttribute& attribute : Attributes()) {
        if (attribute.name->qualified == name) return &attribute;
    }
    return nullptr;
}

XmlAttribute* ReaderCore::FindAttribute(std::string_view localName, std::string_view uri) {
    if (attributeCount_ > kFewAttributes) {
        if (!namespaceMapFilled_) FillNamespaceMap();
        const astring key = NamespaceKey(uri, localName);
        auto* const found =
            static_cast<XmlAttribute*>(attributesByNs_.Find(key.data(), KeyLength(key)));
        // The two parts may be cut otherwise than those of the key that was found.
        return found != nullptr && found->name->local == localName ? found : nullptr;
    }
    for (XmlAttribute& attribute : Attributes()) {
        const XmlName& name = *attribute.name;
        if (name.local == localName && *attribute.uri == uri && !IsDeclaration(name)) {
            return &attribute;
        }
    }
    return nullptr;
}

Xml::HashMap ReaderCore::NewAttributeMap() {
    Xml::HashMap map(kMapSize, true);
    map.SetKey(SeededHash, XmlKeyCompareBinary);
    return map;
}

// Gets a map ready to be filled with the attributes; `most` is how many it has ever held. A map
// that has grown for very many would take long to clear after each of the elements to come.
void ReaderCore::PrepareMap(Xml::HashMap& map, int& most) {
    constexpr int kMany = 1024;
    if (most > kMany && attributeCount_ < most / 8) {
        map = NewAttributeMap();
        most = 0;
    }
    most = std::max(most, attributeCount_);
}

void ReaderCore::FillNameMap() {
    PrepareMap(attributesByName_, nameMapMost_);
    for (XmlAttribute& attribute : Attributes()) {
        const std::string_view name = attribute.name->qualified;
        attributesByName_.Insert(name.data(), KeyLength(name), &attribute);
    }
    nameMapFilled_ = true;
}

// Attributes whose prefixes are not bound may have the same key. The first of them counts, which
// the last one inserted is.
void ReaderCore::FillNamespaceMap() {
    PrepareMap(attributesByNs_, namespaceMapMost_);
    for (int i = attributeCount_ - 1; i >= 0; --i) {
        XmlAttribute& attribute = attributes_[static_cast<std::size_t>(i)];
        if (IsDeclaration(*attribute.name)) continue;
        const astring key = NamespaceKey(*attribute.uri, attribute.name->local);
        attributesByNs_.Insert(key.data(), KeyLength(key), &attribute);
    }
    namespaceMapFilled_ = true;
}

}  // namespace Xml::detail
