// SPDX-License-Identifier: MIT
#include <espalier/dom/DOMNodeType.h>

#include <iterator>

namespace Dom {

const char* DOMNodeType::ToString() const {
    static constexpr const char* kNames[] = {"UNDEFINED_NODE",     "ELEMENT_NODE",
                                             "ATTRIBUTE_NODE",     "TEXT_NODE",
                                             "CDATA_SECTION_NODE", "ENTITY_REFERENCE_NODE",
                                             "ENTITY_NODE",        "PROCESSING_INSTRUCTION_NODE",
                                             "COMMENT_NODE",       "DOCUMENT_NODE",
                                             "DOCUMENT_TYPE_NODE", "DOCUMENT_FRAGMENT_NODE",
                                             "NOTATION_NODE",      "XML_DECLARATION_NODE"};
    const auto number = static_cast<unsigned>(value_);
    return number < std::size(kNames) ? kNames[number] : "?";
}

}  // namespace Dom
