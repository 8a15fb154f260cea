// SPDX-License-Identifier: MIT
#include "Peers.h"

#include "differential/Libxml.h"

#include <expat.h>

#include <memory>

namespace conformance {

int ExpatError(const std::string& document, bool namespaces) {
    const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(
        namespaces ? XML_ParserCreateNS(nullptr, '\n') : XML_ParserCreate(nullptr),
        &XML_ParserFree);
    XML_Parse(parser.get(), document.data(), static_cast<int>(document.size()), XML_TRUE);
    return XML_GetErrorCode(parser.get());
}

bool ExpatAccepts(const std::string& document, bool namespaces) {
    return ExpatError(document, namespaces) == XML_ERROR_NONE;
}

bool LibxmlAccepts(const std::string& document, bool namespaces) {
    constexpr int kOptions = XML_PARSE_NOENT | XML_PARSE_NONET | XML_PARSE_HUGE |
                             XML_PARSE_NOERROR | XML_PARSE_NOWARNING;
    const differential::LibxmlContext context = differential::MakeLibxmlContext();
    xmlDoc* const tree =
        xmlCtxtReadMemory(context.get(), document.data(), static_cast<int>(document.size()),
                          nullptr, nullptr, kOptions);
    xmlFreeDoc(tree);
    return context->wellFormed != 0 && (!namespaces || context->nsWellFormed != 0);
}

std::string ExpatVersion() { return XML_ExpatVersion(); }

std::string LibxmlVersion() { return std::string("libxml2 ") + LIBXML_DOTTED_VERSION; }

}  // namespace conformance
