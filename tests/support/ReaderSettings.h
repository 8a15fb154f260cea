// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/xml/XmlTextReader.h>

namespace support {

/// The settings of a reader, with the reader's own defaults.
struct ReaderSettings {
    bool namespaces = true;
    bool normalization = false;
    Xml::XmlTextReader::XmlWsHandlingEnum whitespace = Xml::XmlTextReader::WsAll;
    Xml::XmlEntityHandling entities;

    /// Sets all of them on a reader that has an input and has not begun to read it.
    void ApplyTo(Xml::XmlTextReader& reader) const {
        reader.SetNamespaces(namespaces);
        reader.SetNormalization(normalization);
        reader.SetWhitespaceHandling(whitespace);
        reader.SetEntityHandling(entities);
    }
};

}  // namespace support
