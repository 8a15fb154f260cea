// SPDX-License-Identifier: MIT
#include "dom/DocumentData.h"

#include <espalier/dom/Document.h>

#include "dom/NodeAccess.h"
#include "xml/HashIndex.h"

#include <atomic>
#include <cstring>
#include <new>

namespace Dom::detail {

namespace {

std::uint64_t NextSerial() {
    static std::atomic<std::uint64_t> last = 0;
    return ++last;
}

}  // namespace

DocumentData::DocumentData(Document* ownDocument) : document(ownDocument), serial(NextSerial()) {
    if (ownDocument != nullptr) freeNodes = 1;  // the document
}

DocumentData& DocumentData::Of(Document* document) {
    return document != nullptr ? NodeAccess::Data(*document) : *new DocumentData(nullptr);
}

const NodeName* DocumentData::Name(FixedName name) {
    if (name == FixedName::Document) return &documentName_;
    static constexpr std::array<std::string_view, 5> kTexts = {
        "#document", "#text", "#cdata-section", "#comment", "#document-fragment"};
    const auto index = static_cast<std::size_t>(name);
    if (fixedNames_[index] == nullptr) fixedNames_[index] = names.Intern({}, kTexts[index]);
    return fixedNames_[index];
}

astring DocumentData::PlaceText(std::string_view text) {
    constexpr std::size_t kMostInside = 15;
    constexpr std::size_t kUnit = 8;
    if (text.size() <= kMostInside) return astring(text);
    const std::size_t room = (text.size() / kUnit + 1) * kUnit;
    char* const buffer = pool.AllocateCharacters(room);
    std::memcpy(buffer, text.data(), text.size());
    buffer[text.size()] = '\0';
    return astring(astring::Placed{buffer, text.size(), room});
}

astring* DocumentData::PlaceValue(std::string_view text) {
    return new (pool.AllocateForGood(sizeof(astring))) astring(PlaceText(text));
}

astring* DocumentData::PlaceShared(std::string_view text) {
    if (text.empty() || text.size() > kMostShared) return PlaceValue(text);
    // The last characters differ most; white space differs by its length.
    const std::size_t last = static_cast<unsigned char>(text.back());
    const std::size_t middle = static_cast<unsigned char>(text[text.size() / 2]);
    const std::size_t slot = text.size() * 67 + last * 5 + middle * 17;
    astring*& shared = shared_[slot % shared_.size()];
    if (shared == nullptr || !Xml::detail::AreEqual(*shared, text)) shared = PlaceValue(text);
    return shared;
}

void DocumentData::ClearWhenUnused() {
    if (freeNodes != 1) return;
    names.Clear();
    orphans.clear();
    overrides.clear();
    pool.Clear();
    fixedNames_.fill(nullptr);
    shared_.fill(nullptr);
    NodeAccess::SetFirst(*document, nullptr);
}

}  // namespace Dom::detail

Dom::Document* Dom::detail::NodeName::Owner() const { return data->document; }
