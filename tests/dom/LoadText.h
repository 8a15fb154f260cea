// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/DOMException.h>
#include <espalier/dom/Document.h>

#include "support/DocumentReader.h"
#include "support/ReaderSettings.h"
#include "support/TreeDump.h"

#include <string>
#include <string_view>
#include <vector>

namespace support {

using Lines = std::vector<std::string>;

/// Settings for each of the two ways in which a document reads elements. All white space is
/// reported.
inline ReaderSettings WithNamespaces() { return {}; }
inline ReaderSettings WithoutNamespaces() {
    ReaderSettings settings;
    settings.namespaces = false;
    return settings;
}

/// Loads a text with a reader that has these settings.
inline void LoadText(Dom::Document& document, std::string_view text,
                     const ReaderSettings& settings = {}, int bytesPerRead = 0) {
    DocumentReader reader{std::string(text), settings, bytesPerRead};
    document.Load(*reader, "uri/text.xml");
}

/// Loads and returns the tree; it fails the test where a link is wrong. What is thrown is the last
/// line.
template <typename Class = Dom::Document>
Lines LoadedTree(std::string_view text, const ReaderSettings& settings = {}) {
    Class document;
    std::string error;
    try {
        LoadText(document, text, settings);
    } catch (const Dom::DOMException& exception) {
        error = std::to_string(exception.Code()) + " " + exception.What();
    } catch (const Xml::Exception& exception) {
        error = std::string("error ") + exception.What();
    }
    Lines lines = TreeBelow(document);
    EXPECT_EQ(WrongLink(document), "") << text;
    EXPECT_EQ(TreeBelow(document, AttributeAccess::Nodes), lines) << text;
    if (!error.empty()) lines.push_back(error);
    return lines;
}

}  // namespace support
