// SPDX-License-Identifier: MIT
#include <espalier/sax/helpers/AttributesImpl.h>

#include "sax/AttributeStore.h"
#include "sax/ViewOf.h"

namespace sax::helpers {

namespace {

using detail::AttributeRecord;
using sax::detail::ViewOf;

AttributeRecord MakeRecord(const char* uri, const char* localName, const char* qName,
                           const char* type, const char* value) {
    return {astring(ViewOf(type)), astring(ViewOf(uri)), astring(ViewOf(localName)),
            astring(ViewOf(qName)), astring(ViewOf(value))};
}

const char* PartOf(const AttributeRecord* record, astring AttributeRecord::*part) {
    return record == nullptr ? nullptr : (record->*part).c_str();
}

}  // namespace

AttributesImpl::AttributesImpl() : store_(std::make_unique<detail::AttributeStore>()) {}

AttributesImpl::AttributesImpl(const AttributesImpl& other) : AttributesImpl() {
    if (other.IsView()) {
        setAttributes(other);
    } else {
        *store_ = *other.store_;
    }
}

AttributesImpl::AttributesImpl(const Attributes& other) : AttributesImpl() { setAttributes(other); }

AttributesImpl& AttributesImpl::operator=(const AttributesImpl& other) {
    if (this != &other) {
        AttributesImpl copy(other);
        store_.swap(copy.store_);
    }
    return *this;
}

AttributesImpl::~AttributesImpl() = default;

bool AttributesImpl::IsView() const { return false; }

int AttributesImpl::getLength() const { return store_->Count(); }

const char* AttributesImpl::getURI(int index) const {
    return PartOf(store_->Get(index), &AttributeRecord::uri);
}

const char* AttributesImpl::getLocalName(int index) const {
    return PartOf(store_->Get(index), &AttributeRecord::localName);
}

const char* AttributesImpl::getQName(int index) const {
    return PartOf(store_->Get(index), &AttributeRecord::qName);
}

const char* AttributesImpl::getType(int index) const {
    return PartOf(store_->Get(index), &AttributeRecord::type);
}

const char* AttributesImpl::getType(const char* qName) const { return getType(getIndex(qName)); }

const char* AttributesImpl::getType(const char* uri, const char* localName) const {
    return getType(getIndex(uri, localName));
}

const char* AttributesImpl::getValue(int index) const {
    return PartOf(store_->Get(index), &AttributeRecord::value);
}

const char* AttributesImpl::getValue(const char* qName) const { return getValue(getIndex(qName)); }

const char* AttributesImpl::getValue(const char* uri, const char* localName) const {
    return getValue(getIndex(uri, localName));
}

int AttributesImpl::getIndex(const char* qName) const { return store_->Find(ViewOf(qName)); }

int AttributesImpl::getIndex(const char* uri, const char* localName) const {
    return store_->Find(ViewOf(uri), ViewOf(localName));
}

void AttributesImpl::addAttribute(const char* uri, const char* localName, const char* qName,
                                  const char* type, const char* value) {
    store_->Add(MakeRecord(uri, localName, qName, type, value));
}

void AttributesImpl::setAttribute(int index, const char* uri, const char* localName,
                                  const char* qName, const char* type, const char* value) {
    store_->AtForNames(index) = MakeRecord(uri, localName, qName, type, value);
}

void AttributesImpl::setURI(int index, const char* uri) {
    store_->AtForNames(index).uri = ViewOf(uri);
}

void AttributesImpl::setLocalName(int index, const char* localName) {
    store_->AtForNames(index).localName = ViewOf(localName);
}

void AttributesImpl::setQName(int index, const char* qName) {
    store_->AtForNames(index).qName = ViewOf(qName);
}

void AttributesImpl::setType(int index, const char* type) { store_->At(index).type = ViewOf(type); }

void AttributesImpl::setValue(int index, const char* value) {
    store_->At(index).value = ViewOf(value);
}

void AttributesImpl::setAttributes(const Attributes& other) {
    auto copy = std::make_unique<detail::AttributeStore>();
    for (int i = 0, count = other.getLength(); i < count; ++i) {
        copy->Add(MakeRecord(other.getURI(i), other.getLocalName(i), other.getQName(i),
                             other.getType(i), other.getValue(i)));
    }
    store_.swap(copy);
}

void AttributesImpl::clear() { store_->Clear(); }

}  // namespace sax::helpers
