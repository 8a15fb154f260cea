// SPDX-License-Identifier: MIT
#include <espalier/io/Exception.h>
#include <espalier/xml/HashIterator.h>
#include <espalier/xml/XmlNsSupport.h>

#include "xml/SeededHash.h"

#include <cstring>
#include <memory>
#include <new>
#include <utility>

// Declarations form one list, the most recent first, so those of the innermost level stand at its
// head. The map holds for each prefix the declaration in force; a declaration that shadows another
// remembers it in `previous`, and undoing takes the map back to that. The default namespace does
// the same with a field instead of the map.

namespace sax {
namespace {

constexpr unsigned kPrefixBuckets = 4;  // few documents have more than eight prefixes in scope
constexpr std::string_view kXmlns = "xmlns";

[[noreturn]] void ThrowOutOfMemory() {
    Xml::Exception::ThrowException("Out of memory", astring(), -1, -1);
}

void FreeList(XmlNamespace* record) {
    while (record != nullptr) {
        delete std::exchange(record, record->next);
    }
}

unsigned KeyLength(std::string_view key) { return static_cast<unsigned>(key.size()); }

}  // namespace

XmlNsSupport::XmlNsSupport() try : prefixes_(kPrefixBuckets, true) {
    try {
        Initialise();
        if (DeclarePrefix("xml", "http://www.w3.org/XML/1998/namespace") == nullptr) {
            throw std::bad_alloc();
        }
    } catch (const std::bad_alloc&) {
        FreeRecords();
        throw;
    }
} catch (const std::bad_alloc&) {
    ThrowOutOfMemory();
}

XmlNsSupport::XmlNsSupport(const XmlNsSupport& other) try : prefixes_(kPrefixBuckets, true) {
    try {
        Initialise();
        CopyFrom(other);
    } catch (const std::bad_alloc&) {
        FreeRecords();
        throw;
    }
} catch (const std::bad_alloc&) {
    ThrowOutOfMemory();
}

XmlNsSupport& XmlNsSupport::operator=(const XmlNsSupport& other) {
    if (this == &other) return *this;
    XmlNsSupport copy(other);
    Swap(copy);
    ++generation_;
    return *this;
}

XmlNsSupport::~XmlNsSupport() { FreeRecords(); }

XmlNamespace* XmlNsSupport::DeclarePrefix(std::string_view prefix, std::string_view uri) {
    if (prefix.size() > std::numeric_limits<unsigned>::max()) return nullptr;
    XmlNamespace* const record = TakeRecord();
    if (record == nullptr) return nullptr;
    record->previous = nullptr;
    record->level = level_;
    record->redeclared = false;
    record->current = true;
    try {
        record->prefix = prefix;
        record->prefixLength = KeyLength(prefix);
        record->uri = uri;
        Bind(*record);
    } catch (const std::bad_alloc&) {
        record->next = freeList_;
        freeList_ = record;
        return nullptr;
    }
    record->next = declarations_;
    declarations_ = record;
    ++generation_;
    return record;
}

const astring** XmlNsSupport::ProcessName(std::string_view qName, const astring** parts,
                                          bool isAttribute) {
    rawName_ = qName;
    parts[0] = &EmptyString();
    parts[1] = &rawName_;
    parts[2] = &rawName_;
    const std::size_t colon = qName.find(':');
    if (colon == std::string_view::npos) {
        if (!isAttribute && defaultNs_ != nullptr) parts[0] = &defaultNs_->uri;
        return parts;
    }
    const XmlNamespace* const bound = FindBound(qName.substr(0, colon));
    if (bound != nullptr) parts[0] = &bound->uri;
    localName_ = qName.substr(colon + 1);
    parts[1] = &localName_;
    return parts;
}

const astring& XmlNsSupport::GetPrefix(std::string_view uri) const {
    for (const XmlNamespace* record = declarations_; record != nullptr; record = record->next) {
        if (record->uri != uri) continue;
        // A shadowed declaration counts only where its prefix resolves to the same URI again, and
        // then the declaration that shadows it came first. That leaves a prefix which nothing
        // binds any more: it resolves to the empty URI.
        if (record->current || (uri.empty() && FindPrefix(record->prefix) == nullptr)) {
            return record->prefix;
        }
    }
    return EmptyString();
}

void XmlNsSupport::Reset() {
    level_ = 1;
    PopContext();
    UnbindXmlns();
    ++generation_;
}

void XmlNsSupport::BindXmlns() {
    XmlNamespace* const bound = const_cast<XmlNamespace*>(FindBound(kXmlns));
    prefixes_.Insert(kXmlns.data(), KeyLength(kXmlns), xmlnsNs_);
    if (bound != nullptr) bound->current = false;
    xmlnsNs_->current = true;
    ++generation_;
}

void XmlNsSupport::UnbindXmlns() {
    Xml::HashItem item = prefixes_.FindItem(kXmlns.data(), KeyLength(kXmlns));
    if (item.IsNull()) return;
    static_cast<XmlNamespace*>(item.GetValue())->current = false;
    prefixes_.Remove(item);
    ++generation_;
}

const astring& XmlNsSupport::EmptyString() {
    static const astring empty;
    return empty;
}

void XmlNsSupport::Initialise() {
    prefixes_.SetKey(Xml::detail::SeededHash, XmlKeyCompareBinary);
    xmlnsNs_ = new XmlNamespace;
    xmlnsNs_->prefix = kXmlns;
    xmlnsNs_->prefixLength = KeyLength(kXmlns);
    xmlnsNs_->uri = "http://www.w3.org/2000/xmlns/";
}

// Fills this object, which is initialised and empty, from another one.
void XmlNsSupport::CopyFrom(const XmlNsSupport& other) {
    Xml::HashMap twins(64, true);  // from a record of `other`, keyed by its address, to its copy
    twins.Insert(other.xmlnsNs_, 0, xmlnsNs_);
    *xmlnsNs_ = *other.xmlnsNs_;
    XmlNamespace** link = &declarations_;
    for (const XmlNamespace* record = other.declarations_; record != nullptr;
         record = record->next) {
        *link = new XmlNamespace(*record);
        (*link)->next = nullptr;
        twins.Insert(record, 0, *link);
        link = &(*link)->next;
    }
    const auto twinOf = [&twins](const void* record) {
        return record == nullptr ? nullptr : static_cast<XmlNamespace*>(twins.Find(record, 0));
    };
    for (XmlNamespace* record = declarations_; record != nullptr; record = record->next) {
        record->previous = twinOf(record->previous);
    }
    Xml::HashIterator iterator;
    for (Xml::HashItem item = iterator.First(other.prefixes_); !item.IsNull();
         item = iterator.Next()) {
        prefixes_.Insert(item.GetKey(), item.GetKeyLength(), twinOf(item.GetValue()));
    }
    defaultNs_ = twinOf(other.defaultNs_);
    level_ = other.level_;
}

// Returns a record for a declaration, taken from the free list when there is one there; null when
// there is no memory.
XmlNamespace* XmlNsSupport::TakeRecord() {
    XmlNamespace* const record = freeList_;
    if (record == nullptr) return new (std::nothrow) XmlNamespace;
    freeList_ = record->next;
    return record;
}

// Makes a declaration the one in force of its prefix.
void XmlNsSupport::Bind(XmlNamespace& record) {
    if (record.prefixLength == 0) {
        record.previous = defaultNs_;
        defaultNs_ = &record;
    } else {
        Xml::HashItem item = prefixes_.FindItem(record.prefix.c_str(), record.prefixLength);
        if (item.IsNull()) {
            prefixes_.Insert(record.prefix.c_str(), record.prefixLength, &record);
        } else {
            record.previous = static_cast<XmlNamespace*>(item.SetValue(&record));
            if (record.previous->level == level_) record.previous->redeclared = true;
        }
    }
    if (record.previous != nullptr) record.previous->current = false;
}

// Undoes the declarations of levels that were left.
void XmlNsSupport::UndoDeclarations() {
    while (declarations_ != nullptr && declarations_->level > level_) {
        XmlNamespace* const record = declarations_;
        declarations_ = record->next;
        record->next = freeList_;
        freeList_ = record;
        UndoBinding(*record);
    }
    ++generation_;
}

void XmlNsSupport::UndoBinding(const XmlNamespace& record) {
    XmlNamespace* const previous = record.previous;
    if (record.prefixLength == 0) {
        defaultNs_ = previous;
    } else {
        Xml::HashItem item = prefixes_.FindItem(record.prefix.c_str(), record.prefixLength);
        if (item.IsNull()) return;  // "xmlns" was unbound meanwhile
        if (previous == nullptr) {
            prefixes_.Remove(item);
        } else {
            item.SetValue(previous);
        }
    }
    if (previous != nullptr) previous->current = true;
}

void XmlNsSupport::FreeRecords() {
    FreeList(declarations_);
    FreeList(freeList_);
    delete xmlnsNs_;
}

void XmlNsSupport::Swap(XmlNsSupport& other) {
    std::swap(defaultNs_, other.defaultNs_);
    std::swap(xmlnsNs_, other.xmlnsNs_);
    std::swap(level_, other.level_);
    std::swap(prefixes_, other.prefixes_);
    std::swap(declarations_, other.declarations_);
    std::swap(freeList_, other.freeList_);
}

}  // namespace sax
