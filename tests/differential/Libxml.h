// SPDX-License-Identifier: MIT
#pragma once

#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/xmlerror.h>

#include <cstddef>
#include <memory>
#include <string_view>

/// \file
/// What all uses of libxml2 share.
namespace differential {

inline std::string_view TextOf(const xmlChar* text) {
    return text == nullptr ? std::string_view() : reinterpret_cast<const char*>(text);
}

inline std::string_view TextOf(const xmlChar* begin, const xmlChar* end) {
    return {reinterpret_cast<const char*>(begin), static_cast<std::size_t>(end - begin)};
}

using LibxmlContext = std::unique_ptr<xmlParserCtxt, decltype(&xmlFreeParserCtxt)>;

/// Makes a parser that opens no external entity, but takes each for an empty one, and prints
/// nothing.
inline LibxmlContext MakeLibxmlContext() {
    xmlSetExternalEntityLoader([](const char*, const char*, xmlParserCtxtPtr context) {
        return xmlNewStringInputStream(context, reinterpret_cast<const xmlChar*>(""));
    });
    xmlSetStructuredErrorFunc(nullptr, [](void*, xmlErrorPtr) {});
    return {xmlNewParserCtxt(), &xmlFreeParserCtxt};
}

}  // namespace differential
