// SPDX-License-Identifier: MIT
#include <espalier/dom/Attr.h>
#include <espalier/dom/DOMException.h>
#include <espalier/dom/HTMLElement.h>

#include "dom/InterfaceName.h"
#include "dom/NodeAccess.h"
#include "dom/XhtmlNames.h"
#include "dom/css/AsciiCase.h"

#include <memory>
#include <utility>  // std::move

namespace Dom {

using detail::NodeAccess;

namespace {

constexpr std::string_view kXmlUri = "http://www.w3.org/XML/1998/namespace";
constexpr std::string_view kXmlLang = "xml:lang";

}  // namespace

bool detail::SaysDisabled(std::string_view value) {
    using CSS::detail::EqualIgnoringCase;
    return value == "1" || EqualIgnoringCase(value, "yes") || EqualIgnoringCase(value, "true");
}

HTMLElement::HTMLElement(std::string_view namespaceURI, std::string_view qualifiedName,
                         Document* ownerDocument)
    : Element(namespaceURI, qualifiedName, ownerDocument) {}

HTMLElement::HTMLElement(const detail::NodeName* name) : Element(name) {}

HTMLElement::~HTMLElement() = default;

void* HTMLElement::QueryInterface(const char* name) {
    if (detail::IsInterface(name, "Dom::HTMLElement")) return this;
    if (void* const style = ElementCSSInlineStyle::QueryInterface(name)) return style;
    return Element::QueryInterface(name);
}

Node* HTMLElement::CloneNode(bool /*deep*/) { return NodeAccess::CloneElement(*this); }

// Attributes.

const astring& HTMLElement::GetXHtmlAttribute(const char* name) const {
    return detail::XhtmlAttribute(*this, name);
}

void HTMLElement::SetXHtmlAttribute(const char* name, std::string_view value) {
    if (!detail::HasAttributeOfOwn(*this, name)) return SetAttribute(name, value);
    const astring qualified = GetAttributeNodeNS(NamespaceURI(), name)->NodeName();
    SetAttributeNS(NamespaceURI(), qualified, value);
}

const astring& HTMLElement::Id() const { return GetXHtmlAttribute("id"); }
void HTMLElement::SetId(std::string_view id) { SetXHtmlAttribute("id", id); }

const astring& HTMLElement::Title() const { return GetXHtmlAttribute("title"); }
void HTMLElement::SetTitle(std::string_view title) { SetXHtmlAttribute("title", title); }

const astring& HTMLElement::Dir() const { return GetXHtmlAttribute("dir"); }
void HTMLElement::SetDir(std::string_view dir) { SetXHtmlAttribute("dir", dir); }

const astring& HTMLElement::ClassName() const { return GetXHtmlAttribute("class"); }
void HTMLElement::SetClassName(std::string_view className) {
    SetXHtmlAttribute("class", className);
}

// A prefixed attribute that was loaded with namespaces is found by its namespace, one that was set
// or loaded without them by its whole name.
const astring& HTMLElement::Lang() const {
    const astring& loaded = GetAttributeNS(kXmlUri, "lang");
    if (!loaded.empty()) return loaded;
    const astring& prefixed = GetAttribute(kXmlLang);
    return prefixed.empty() ? GetXHtmlAttribute("lang") : prefixed;
}

void HTMLElement::SetLang(std::string_view lang) {
    const astring value(lang);  // which may be that of an attribute
    const bool hasLoaded = HasAttributeNS(kXmlUri, "lang");
    const bool hasPlain = HasAttribute("lang");
    if (hasLoaded) SetAttributeNS(kXmlUri, kXmlLang, value);
    if (HasAttribute(kXmlLang) || !(hasLoaded || hasPlain)) SetAttribute(kXmlLang, value);
    if (hasPlain) SetXHtmlAttribute("lang", value);
}

// The style.

void HTMLElement::UpdateStyle() {
    NodeAccess::MarkOwnMemory(*this);  // whoever asks may change it
    const astring& text = GetXHtmlAttribute("style");
    if (text == styleText_) return;
    astring read = text;
    try {
        CurrentStyle().SetCssText(read);
    } catch (const DOMException&) {
        // What stands before the fault counts.
    }
    styleText_ = std::move(read);
}

void HTMLElement::SyncStyle() {
    astring text = Style().CssText();
    if (text.empty() && !HasAttribute("style")) return;
    SetXHtmlAttribute("style", text);
    styleText_ = std::move(text);
}

}  // namespace Dom
