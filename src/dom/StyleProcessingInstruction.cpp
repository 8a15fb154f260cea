// SPDX-License-Identifier: MIT
#include <espalier/dom/StyleProcessingInstruction.h>
#include <espalier/dom/css/StyleSheet.h>

#include "dom/InterfaceName.h"

namespace Dom {

StyleProcessingInstruction::StyleProcessingInstruction(std::string_view data,
                                                       Document* ownerDocument)
    : ProcessingInstruction("xml-stylesheet", data, ownerDocument), LinkStyle(nullptr) {}

StyleProcessingInstruction::~StyleProcessingInstruction() { delete Sheet(); }

void* StyleProcessingInstruction::QueryInterface(const char* name) {
    if (detail::IsInterface(name, "Dom::StyleProcessingInstruction")) return this;
    if (void* const link = LinkStyle::QueryInterface(name)) return link;
    return ProcessingInstruction::QueryInterface(name);
}

Node* StyleProcessingInstruction::CloneNode(bool /*deep*/) {
    return new StyleProcessingInstruction(Data(), OwnerDocument());
}

}  // namespace Dom
