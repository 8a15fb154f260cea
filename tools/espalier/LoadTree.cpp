// SPDX-License-Identifier: MIT
#include "LoadTree.h"

#include <espalier/dom/DOMException.h>
#include <espalier/io/Exception.h>

namespace Tool {

namespace {

// What is below a second root element, for example.
constexpr char kNotWellFormed[] = "Document not well-formed";

}  // namespace

void LoadTree(Document& document, Dom::Document& tree) {
    Xml::XmlTextReader& reader = document.Reader();
    reader.SetWhitespaceHandling(Xml::XmlTextReader::WsAll);
    try {
        tree.Load(reader, "");
    } catch (const Dom::DOMException&) {
        Xml::Exception::ThrowException(kNotWellFormed);
    }
}

}  // namespace Tool
