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
    Xml::XmlConformance conformance = {};

    bool resolve = false;  ///< calls ResolveEntity() on every reference to an entity
    bool parts = false;    ///< steps through the values of attributes by ReadAttributeValue()

    /// Sets all of them on a reader that has an input and has not begun to read it.
    void ApplyTo(Xml::XmlTextReader& reader) const {
        reader.SetNamespaces(namespaces);
        reader.SetNormalization(normalization);
        reader.SetWhitespaceHandling(whitespace);
        reader.SetEntityHandling(entities);
        reader.SetConformance(conformance);
    }
};

/// Returns the default settings with another way to handle references.
inline ReaderSettings WithEntities(Xml::XmlEntityHandling handling) {
    ReaderSettings settings;
    settings.entities = handling;
    return settings;
}

/// Returns the settings of a conforming processor: the rules of the standard, references replaced.
inline ReaderSettings StandardSettings(bool namespaces = true) {
    ReaderSettings settings = WithEntities(Xml::XmlEntityHandling::ExpandEntities);
    settings.conformance = Xml::XmlConformance::Standard;
    settings.namespaces = namespaces;
    return settings;
}

}  // namespace support
