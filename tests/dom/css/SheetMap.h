// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/css/CollectStyleSheets.h>

#include "dom/css/SheetStory.h"

#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// \file
/// What the tests of CollectStyleSheets() share.

namespace support {

/// A host that gives sheets by their address, and notes what it was asked for.
class SheetMap {
public:
    SheetMap(std::initializer_list<std::pair<const std::string, std::string>> sheets)
        : sheets_(sheets) {}

    std::optional<astring> operator()(const astring& address, const astring& encoding) {
        asked_ += address.str() + (encoding.empty() ? "" : " in " + encoding.str()) + "|";
        const auto found = sheets_.find(address.str());
        if (found == sheets_.end()) return std::nullopt;
        return astring(found->second);
    }

    void Add(const std::string& address, const std::string& bytes) { sheets_[address] = bytes; }
    const std::string& Asked() const { return asked_; }

private:
    std::map<std::string, std::string> sheets_;
    std::string asked_;
};

/// Sheets, with " " between them: the media of the imports in "<>", the address, and the rules in
/// brackets.
inline std::string Collected(const std::vector<Dom::CSS::CollectedSheet>& sheets) {
    std::string text;
    for (const Dom::CSS::CollectedSheet& collected : sheets) {
        if (!text.empty()) text += " ";
        for (const astring& media : collected.importMedia)
            text += "<" + media.str() + ">";
        text += collected.sheet->Href().str() + "[" + RulesOf(*collected.sheet) + "]";
    }
    return text;
}

/// Missing sheets: "address reason", with ", " between them.
inline std::string Missing(const std::vector<Dom::CSS::MissingSheet>& missing) {
    std::string text;
    for (const Dom::CSS::MissingSheet& sheet : missing)
        text += (text.empty() ? "" : ", ") + sheet.address.str() + " " + sheet.reason.str();
    return text;
}

}  // namespace support
