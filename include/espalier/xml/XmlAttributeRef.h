// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>

namespace Xml {

class XmlTextReader;

/// An attribute of the node that a reader stands on. It belongs to the reader and is valid until
/// the reader moves to another node by Read() or one of the operations that read.
class ESPALIER_EXPORT XmlAttributeRef {
public:
    /// Makes a reference to attribute `index` of the node that `reader` stands on.
    XmlAttributeRef(const XmlTextReader& reader, int index) : reader_(&reader), index_(index) {}

    /// Returns the qualified name.
    const astring& Name() const;
    /// Returns the name without its prefix.
    const astring& LocalName() const;
    /// Returns the prefix, or empty.
    const astring& Prefix() const;

    /// Returns the URI of the namespace; empty without one.
    const astring& NamespaceURI() const;

    /// Returns the value, as XmlTextReader::GetAttribute() does.
    const astring& Value() const;

    /// Tells whether the document type has supplied the attribute, which the tag does not have.
    /// Only with XmlConformance::Standard it does.
    bool IsDefault() const;

    /// Returns the attribute's place among the attributes, from 0 on.
    int Index() const { return index_; }

private:
    const XmlTextReader* reader_;
    int index_;
};

}  // namespace Xml
