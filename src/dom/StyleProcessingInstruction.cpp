// SPDX-License-Identifier: MIT
#include <espalier/dom/StyleProcessingInstruction.h>

#include "dom/InterfaceName.h"

namespace Dom {

StyleProcessingInstruction::StyleProcessingInstruction(std::string_view data,
                                                       Document* ownerDocument)
    : ProcessingInstruction("xml-stylesheet", data, ownerDocument), LinkStyle(nullptr) {}

StyleProcessingInstruction::~StyleProcessingInstruction() = default;

void* StyleProcessingInstruction::QueryInterface(const char* name) {
    return detail::IsInterface(name, "Dom::StyleProcessingInstruction")
               ? this
               : ProcessingInstruction::QueryInterface(name);
}

Node* StyleProcessingInstruction::CloneNode(bool /*deep*/) {
    return new StyleProcessingInstruction(Data(), OwnerDocument());
}

}  // namespace Dom
