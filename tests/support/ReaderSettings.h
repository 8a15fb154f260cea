// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/xml/XmlTextReader.h>

namespace support {

/// The settings of a reader, with the reader's own defaults, and what a test does on its way
/// through the document.
struct ReaderSettings {
    bool namespaces = true;
    bool normalization = false;
    Xml::XmlTextReader::XmlWsHandlingEnum whitespace = Xml::XmlTextReader::WsAll;
    Xml::XmlEntityHandling entities;

    bool resolve = false;  ///< calls ResolveEntity() on every reference to an entity
    bool parts = false;    ///< steps through the values of attributes by ReadAttributeValue()

    /// Sets all of them on a reader that has an input and has not begun to read it.
    void ApplyTo(Xml::XmlTextReader& reader) const {
        reader.SetNamespaces(namespaces);
        reader.SetNormalization(normalization);
        reader.SetWhitespaceHandling(whitespace);
        reader.SetEntityHandling(entities);
    }
};

/// Returns the default settings with another way to handle references.
inline ReaderSettings WithEntities(Xml::XmlEntityHandling handling) {
    ReaderSettings settings;
    settings.entities = handling;
    return settings;
}

}  // namespace support
