// SPDX-License-Identifier: MIT
#include <espalier/dom/HTMLLinkElement.h>
#include <espalier/dom/css/CSSStyleSheet.h>

#include "dom/InterfaceName.h"
#include "dom/NodeAccess.h"
#include "dom/XhtmlNames.h"
#include "dom/css/SheetMaking.h"

#include <memory>

namespace Dom {

using detail::AttributeTable;
using detail::NodeAccess;

namespace {

// Returns the value of the attribute that is filed under a name or, when that one is of a foreign
// namespace or not there, of the one of XHTML.
const astring& LinkAttribute(const HTMLLinkElement& link, std::string_view name) {
    if (const AttributeTable* const table = NodeAccess::Table(link)) {
        const std::size_t index = table->Find(name);
        if (index != AttributeTable::kNone) {
            const astring& uri = *table->At(index).Name().uri;
            if (uri.empty() || uri == detail::kXhtmlUri) return table->At(index).Value();
        }
    }
    return link.GetAttributeNS(detail::kXhtmlUri, name);
}

}  // namespace

HTMLLinkElement::HTMLLinkElement(std::string_view namespaceURI, std::string_view qualifiedName,
                                 Document* ownerDocument)
    : HTMLElement(namespaceURI, qualifiedName, ownerDocument), LinkStyle(nullptr) {}

HTMLLinkElement::HTMLLinkElement(const detail::NodeName* name)
    : HTMLElement(name), LinkStyle(nullptr) {}

HTMLLinkElement::~HTMLLinkElement() { delete Sheet(); }

void* HTMLLinkElement::QueryInterface(const char* name) {
    if (detail::IsInterface(name, "Dom::HTMLLinkElement")) return this;
    if (void* const link = LinkStyle::QueryInterface(name)) return link;
    return HTMLElement::QueryInterface(name);
}

Node* HTMLLinkElement::CloneNode(bool /*deep*/) { return NodeAccess::CloneElement(*this); }

const astring& HTMLLinkElement::Charset() const { return LinkAttribute(*this, "charset"); }
const astring& HTMLLinkElement::Href() const { return LinkAttribute(*this, "href"); }
const astring& HTMLLinkElement::Hreflang() const { return LinkAttribute(*this, "hreflang"); }
const astring& HTMLLinkElement::Media() const { return LinkAttribute(*this, "media"); }
const astring& HTMLLinkElement::Rel() const { return LinkAttribute(*this, "rel"); }
const astring& HTMLLinkElement::Rev() const { return LinkAttribute(*this, "rev"); }
const astring& HTMLLinkElement::Target() const { return LinkAttribute(*this, "target"); }
const astring& HTMLLinkElement::Type() const { return LinkAttribute(*this, "type"); }

bool HTMLLinkElement::Disabled() const {
    return detail::SaysDisabled(LinkAttribute(*this, "disabled"));
}

CSS::CSSStyleSheet* HTMLLinkElement::CreateStyleSheet(IO::Stream* stream) {
    delete Sheet();
    if (Type() != CSS::detail::kSheetType) return nullptr;
    auto sheet = CSS::detail::MakeSheet({*this, Href(), {}, Media()}, stream, Charset());
    if (Disabled()) sheet->Disable();
    NodeAccess::MarkOwnMemory(*this);
    SetSheet(sheet.get());
    return sheet.release();
}

}  // namespace Dom
