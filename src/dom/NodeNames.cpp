// SPDX-License-Identifier: MIT
#include "dom/NodeNames.h"

#include "dom/DocumentData.h"
#include "xml/SeededHash.h"

#include <algorithm>
#include <new>

namespace Dom::detail {

std::size_t NodeNames::Hash(std::string_view uri, std::string_view qualified) {
    const auto hash = [](std::string_view text) {
        return std::size_t{
            Xml::detail::SeededHash(text.data(), static_cast<unsigned>(text.size()))};
    };
    return uri.empty() ? hash(qualified) : hash(qualified) + 31 * hash(uri);
}

const NodeName* NodeNames::Find(std::string_view uri, std::string_view qualified,
                                std::size_t hash) const {
    if (buckets_.empty()) return nullptr;
    const NodeName* name = buckets_[hash & (buckets_.size() - 1)];
    while (name != nullptr &&
           (name->hash != hash || name->qualified != qualified || *name->uri != uri)) {
        name = name->chain;
    }
    return name;
}

const NodeName* NodeNames::Find(std::string_view uri, std::string_view qualified) const {
    return Find(uri, qualified, Hash(uri, qualified));
}

const NodeName* NodeNames::Intern(std::string_view uri, std::string_view qualified) {
    const std::size_t hash = Hash(uri, qualified);
    if (const NodeName* const name = Find(uri, qualified, hash)) return name;
    // A URI is held as a name that has none.
    const astring* const uriText = uri.empty() ? &noUri_ : &Intern({}, uri)->qualified;
    if (count_ >= buckets_.size()) Grow();
    NodeName*& bucket = buckets_[hash & (buckets_.size() - 1)];
    void* const memory = pool_.AllocateForGood(sizeof(NodeName));
    bucket = new (memory) NodeName{
        data_.PlaceText(qualified), uriText, qualified.find(':'), &data_, hash, bucket, nullptr};
    ++count_;
    return bucket;
}

void NodeNames::Grow() {
    std::vector<NodeName*> buckets(std::max<std::size_t>(16, 2 * buckets_.size()));
    for (NodeName* chain : buckets_) {
        while (chain != nullptr) {
            NodeName*& bucket = buckets[chain->hash & (buckets.size() - 1)];
            NodeName* const next = chain->chain;
            chain->chain = bucket;
            bucket = chain;
            chain = next;
        }
    }
    buckets_.swap(buckets);
}

void NodeNames::Clear() noexcept {
    buckets_.clear();
    count_ = 0;
}

}  // namespace Dom::detail
