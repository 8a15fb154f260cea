// SPDX-License-Identifier: MIT
#include "sax/PairIndex.h"

namespace sax::detail {

// Tells whether a name declares a namespace (Namespaces in XML 1.0 section 3).
bool PairIndex::IsDeclaration(std::string_view qName) {
    constexpr std::string_view kXmlns = "xmlns";
    return qName.substr(0, kXmlns.size()) == kXmlns &&
           (qName.size() == kXmlns.size() || qName[kXmlns.size()] == ':');
}

void PairIndex::Add(const AttributeNames& names, int index) {
    if (names.uri.empty() && names.localName.empty()) return;
    const Entry entry{index, IsDeclaration(names.qName)};
    const auto [place, isNew] =
        entries_.try_emplace({std::string(names.uri), std::string(names.localName)}, entry);
    if (!isNew && place->second.isDeclaration && !entry.isDeclaration) place->second = entry;
}

int PairIndex::Find(std::string_view uri, std::string_view localName) const {
    const auto found = entries_.find(Views(uri, localName));
    return found == entries_.end() ? -1 : found->second.index;
}

}  // namespace sax::detail
