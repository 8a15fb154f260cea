// SPDX-License-Identifier: MIT
#include "dom/css/NamespaceRules.h"

#include "dom/css/AddressText.h"
#include "dom/css/AsciiCase.h"
#include "dom/css/TextCursor.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

namespace Dom::CSS::detail {

namespace {

constexpr std::string_view kNamespace = "@namespace";

bool BeginsWith(std::string_view text, std::string_view name) {
    return EqualIgnoringCase(text.substr(0, name.size()), name);
}

// Reads "@namespace prefix url(address);", where the prefix may be missing.
std::optional<NamespacePrefix> ReadNamespace(std::string_view text) {
    TextCursor cursor(text.substr(kNamespace.size()));
    NamespacePrefix result;
    SkipBlanks(cursor);
    std::optional<astring> address = ReadAddress(cursor);
    if (!address) {
        astring buffer;
        result.prefix = ReadIdent(cursor, buffer);
        SkipBlanks(cursor);
        if (!result.prefix.empty()) address = ReadAddress(cursor);
    }
    if (!address) return std::nullopt;
    result.uri = std::move(*address);
    SkipBlanks(cursor);
    const bool isAtEnd = cursor.at == cursor.end || cursor.Front() == ';';
    return isAtEnd ? std::optional(std::move(result)) : std::nullopt;
}

// Each selector looks through them, so there are not too many.
void Set(NamespacePrefixes& prefixes, NamespacePrefix&& added) {
    constexpr std::size_t kMost = 256;
    const auto same = std::ranges::find(prefixes, added.prefix, &NamespacePrefix::prefix);
    if (same != prefixes.end()) {
        *same = std::move(added);
    } else if (prefixes.size() < kMost) {
        prefixes.push_back(std::move(added));
    }
}

}  // namespace

NamespacePrefixes PrefixesOf(const CSSStyleSheet& sheet) {
    NamespacePrefixes prefixes;
    for (const CSSRule* const rule : sheet.CssRules()) {
        if (rule->Type() == CSSRule::CHARSET_RULE || rule->Type() == CSSRule::IMPORT_RULE) continue;
        if (rule->Type() != CSSRule::UNKNOWN_RULE) break;
        const astring text = rule->CssText();
        if (BeginsWith(text, "@layer")) continue;
        if (!BeginsWith(text, kNamespace)) break;
        if (auto found = ReadNamespace(text)) Set(prefixes, std::move(*found));
    }
    return prefixes;
}

}  // namespace Dom::CSS::detail
