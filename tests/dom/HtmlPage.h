// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/css.h>
#include <espalier/dom.h>
#include <espalier/io/MemoryStream.h>

#include <memory>
#include <string>
#include <string_view>

/// \file
/// What the tests of pages and of their sheets share.

namespace support {

inline constexpr char kXhtml[] = "http://www.w3.org/1999/xhtml";

/// Returns a node as the class that has that name, or null.
template <typename T>
T* As(Dom::Node* node, const char* name) {
    return node == nullptr ? nullptr : static_cast<T*>(node->QueryInterface(name));
}

inline Dom::HTMLElement* AsHtml(Dom::Node* node) {
    return As<Dom::HTMLElement>(node, "Dom::HTMLElement");
}
inline Dom::HTMLLinkElement* AsLink(Dom::Node* node) {
    return As<Dom::HTMLLinkElement>(node, "Dom::HTMLLinkElement");
}
inline Dom::HTMLStyleElement* AsStyle(Dom::Node* node) {
    return As<Dom::HTMLStyleElement>(node, "Dom::HTMLStyleElement");
}
inline Dom::HTMLMetaElement* AsMeta(Dom::Node* node) {
    return As<Dom::HTMLMetaElement>(node, "Dom::HTMLMetaElement");
}
inline Dom::StyleProcessingInstruction* AsInstruction(Dom::Node* node) {
    return As<Dom::StyleProcessingInstruction>(node, "Dom::StyleProcessingInstruction");
}

/// The name of the most derived of the classes of a page that an element is of.
inline std::string ClassOf(Dom::Node* node) {
    if (AsLink(node) != nullptr) return "HTMLLinkElement";
    if (AsStyle(node) != nullptr) return "HTMLStyleElement";
    if (AsMeta(node) != nullptr) return "HTMLMetaElement";
    return AsHtml(node) != nullptr ? "HTMLElement" : "Element";
}

/// A stream over a text, which must live as long.
inline IO::MemoryStream StreamOf(std::string_view text) {
    return {reinterpret_cast<const unsigned char*>(text.data()), static_cast<long>(text.size())};
}

/// The rules of a sheet, each in brackets; "null" for none.
inline std::string Rules(const Dom::CSS::CSSStyleSheet* sheet) {
    if (sheet == nullptr) return "null";
    std::string rules;
    for (const Dom::CSS::CSSRule* const rule : sheet->CssRules())
        rules += "[" + rule->CssText().str() + "]";
    return rules;
}

/// A page with an element that was loaded as the root.
class LoadedRoot {
public:
    explicit LoadedRoot(std::string_view xml) { page_.LoadXml(xml); }

    Dom::HTMLDocument& Page() { return page_; }
    Dom::HTMLElement& operator*() { return *AsHtml(page_.DocumentElement()); }
    Dom::HTMLElement* operator->() { return AsHtml(page_.DocumentElement()); }

private:
    Dom::HTMLDocument page_;
};

}  // namespace support
