// SPDX-License-Identifier: MIT
#include <espalier/dom/StyleProcessingInstruction.h>
#include <espalier/dom/css/CSSStyleSheet.h>

#include "dom/InterfaceName.h"
#include "dom/PseudoAttributes.h"
#include "dom/StyleTarget.h"
#include "dom/css/AsciiCase.h"
#include "dom/css/SheetMaking.h"

#include <memory>

namespace Dom {

StyleProcessingInstruction::StyleProcessingInstruction(std::string_view data,
                                                       Document* ownerDocument)
    : ProcessingInstruction(detail::kStyleTarget, data, ownerDocument), LinkStyle(nullptr) {}

StyleProcessingInstruction::~StyleProcessingInstruction() { delete Sheet(); }

void* StyleProcessingInstruction::QueryInterface(const char* name) {
    if (detail::IsInterface(name, "Dom::StyleProcessingInstruction")) return this;
    if (void* const link = LinkStyle::QueryInterface(name)) return link;
    return ProcessingInstruction::QueryInterface(name);
}

Node* StyleProcessingInstruction::CloneNode(bool /*deep*/) {
    return new StyleProcessingInstruction(Data(), OwnerDocument());
}

void StyleProcessingInstruction::SetData(std::string_view data) {
    ProcessingInstruction::SetData(data);
    ForgetValues();
}

void StyleProcessingInstruction::ForgetValues() const {
    isRead_ = false;
    alternate_ = false;
    for (astring* const value : {&charset_, &href_, &media_, &title_, &type_})
        value->clear();
}

// What was read before a fault counts.
void StyleProcessingInstruction::ReadData() const {
    if (isRead_) return;
    ForgetValues();  // what was left when memory was out
    const struct {
        std::string_view name;
        astring& value;
    } targets[] = {{"charset", charset_},
                   {"href", href_},
                   {"media", media_},
                   {"title", title_},
                   {"type", type_}};
    detail::PseudoAttributes attributes(Data());
    while (attributes.Next()) {
        // Deliberate: "alternate" is spelt in another way, and not known as it should be.
        if (attributes.Name() == "altenate") {
            if (CSS::detail::EqualIgnoringCase(attributes.Value(), "yes")) alternate_ = true;
            continue;
        }
        for (const auto& target : targets) {
            if (attributes.Name() == target.name) target.value = attributes.Value();
        }
    }
    isRead_ = true;
}

const astring& StyleProcessingInstruction::Type() const {
    ReadData();
    return type_;
}

const astring& StyleProcessingInstruction::Title() const {
    ReadData();
    return title_;
}

const astring& StyleProcessingInstruction::Media() const {
    ReadData();
    return media_;
}

const astring& StyleProcessingInstruction::Href() const {
    ReadData();
    return href_;
}

const astring& StyleProcessingInstruction::Charset() const {
    ReadData();
    return charset_;
}

bool StyleProcessingInstruction::Alternate() const {
    ReadData();
    return alternate_;
}

CSS::CSSStyleSheet* StyleProcessingInstruction::CreateStyleSheet(IO::Stream* stream) {
    delete Sheet();
    if (Type() != CSS::detail::kSheetType) return nullptr;
    auto sheet = CSS::detail::MakeSheet({*this, href_, title_, media_}, stream, charset_);
    if (alternate_) sheet->Disable();
    SetSheet(sheet.get());
    return sheet.release();
}

}  // namespace Dom
