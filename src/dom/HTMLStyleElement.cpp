// SPDX-License-Identifier: MIT
#include <espalier/dom/HTMLStyleElement.h>
#include <espalier/dom/css/CSSStyleSheet.h>
#include <espalier/io/MemoryStream.h>

#include "dom/InterfaceName.h"
#include "dom/NodeAccess.h"
#include "dom/XhtmlNames.h"
#include "dom/css/SheetLink.h"
#include "dom/css/SheetMaking.h"

#include <memory>

namespace Dom {

using detail::NodeAccess;

HTMLStyleElement::HTMLStyleElement(std::string_view namespaceURI, std::string_view qualifiedName,
                                   Document* ownerDocument)
    : HTMLElement(namespaceURI, qualifiedName, ownerDocument), LinkStyle(nullptr) {}

HTMLStyleElement::HTMLStyleElement(const detail::NodeName* name)
    : HTMLElement(name), LinkStyle(nullptr) {}

HTMLStyleElement::~HTMLStyleElement() { delete Sheet(); }

void* HTMLStyleElement::QueryInterface(const char* name) {
    if (detail::IsInterface(name, "Dom::HTMLStyleElement")) return this;
    if (void* const link = LinkStyle::QueryInterface(name)) return link;
    return HTMLElement::QueryInterface(name);
}

Node* HTMLStyleElement::CloneNode(bool /*deep*/) { return NodeAccess::CloneElement(*this); }

const astring& HTMLStyleElement::Media() const { return GetXHtmlAttribute("media"); }
const astring& HTMLStyleElement::Type() const { return GetXHtmlAttribute("type"); }

bool HTMLStyleElement::Disabled() const {
    return detail::SaysDisabled(GetXHtmlAttribute("disabled"));
}

CSS::CSSStyleSheet* HTMLStyleElement::CreateStyleSheet() {
    delete Sheet();
    if (!Type().empty() && Type() != CSS::detail::kSheetType) return nullptr;
    const astring text = CSS::detail::TextIn(*this);
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(text.data()),
                            static_cast<long>(text.size()));
    auto sheet = CSS::detail::MakeSheet({*this, {}, Title(), Media()}, &stream, "UTF-8");
    if (Disabled()) sheet->Disable();
    NodeAccess::MarkOwnMemory(*this);
    SetSheet(sheet.get());
    return sheet.release();
}

}  // namespace Dom
