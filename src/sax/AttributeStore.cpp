// SPDX-License-Identifier: MIT
#include "sax/AttributeStore.h"

#include "sax/Messages.h"

#include <stdexcept>
#include <utility>  // std::move

namespace sax::helpers::detail {

namespace {

sax::detail::AttributeNames NamesOf(const AttributeRecord& record) {
    return {record.uri, record.localName, record.qName};
}

}  // namespace

const AttributeRecord* AttributeStore::Get(int index) const {
    const bool exists = index >= 0 && index < Count();
    return exists ? &records_[static_cast<std::size_t>(index)] : nullptr;
}

AttributeRecord& AttributeStore::At(int index) {
    if (Get(index) == nullptr) throw std::out_of_range(sax::detail::Message::kBadSubscript);
    return records_[static_cast<std::size_t>(index)];
}

AttributeRecord& AttributeStore::AtForNames(int index) {
    AttributeRecord& record = At(index);
    IndexPairs();
    return record;
}

void AttributeStore::Add(AttributeRecord record) {
    records_.push_back(std::move(record));
    if (!isIndexed_) return;
    try {
        pairs_.Add(NamesOf(records_.back()), Count() - 1);
    } catch (...) {
        records_.pop_back();  // or it would be there and not be found
        throw;
    }
}

void AttributeStore::Clear() {
    records_.clear();
    pairs_.Clear();
    isIndexed_ = false;
}

int AttributeStore::Find(std::string_view qName) const {
    for (int i = 0; i < Count(); ++i) {
        if (Get(i)->qName == qName) return i;
    }
    return -1;
}

int AttributeStore::Find(std::string_view uri, std::string_view localName) const {
    if (!isIndexed_ && Count() <= sax::detail::PairIndex::kFew) {
        const auto namesOf = [this](int i) { return NamesOf(*Get(i)); };
        return sax::detail::PairIndex::Scan(Count(), namesOf, uri, localName);
    }
    IndexPairs();
    return pairs_.Find(uri, localName);
}

void AttributeStore::IndexPairs() const {
    if (isIndexed_) return;
    pairs_.Fill(Count(), [this](int i) { return NamesOf(*Get(i)); });
    isIndexed_ = true;
}

}  // namespace sax::helpers::detail
