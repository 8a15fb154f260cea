// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>

namespace sax {

/// The attributes of an element, in the order of the document.
///
/// An XMLReader hands them to ContentHandler::startElement(); they and their strings are valid
/// until that returns. A handler that keeps them makes a helpers::AttributesImpl of them.
class ESPALIER_EXPORT Attributes {
public:
    // The order of the virtual functions is part of the binary interface: append, never reorder.

    virtual ~Attributes();

    /// Returns the number of attributes.
    virtual int getLength() const = 0;

    /// \name Return a part of attribute `index`, from 0 on
    /// Null when there is no such attribute.
    /// @{

    /// Returns the URI of the namespace; empty without one.
    virtual const char* getURI(int index) const = 0;
    /// Returns the name without its prefix.
    virtual const char* getLocalName(int index) const = 0;
    /// Returns the name as it stands in the document.
    virtual const char* getQName(int index) const = 0;
    /// @}

    /// \name Return the type of an attribute
    /// "CDATA", since declarations of attributes are not read; null when there is no such
    /// attribute.
    /// @{
    virtual const char* getType(const char* qName) const = 0;
    virtual const char* getType(const char* uri, const char* localName) const = 0;
    virtual const char* getType(int index) const = 0;
    /// @}

    /// \name Return the value of an attribute
    /// Null when there is no such attribute.
    /// @{
    virtual const char* getValue(const char* qName) const = 0;
    virtual const char* getValue(const char* uri, const char* localName) const = 0;
    virtual const char* getValue(int index) const = 0;
    /// @}

    /// \name Return the index of an attribute
    /// -1 when there is no such attribute.
    /// @{
    virtual int getIndex(const char* qName) const = 0;
    virtual int getIndex(const char* uri, const char* localName) const = 0;
    /// @}

protected:
    Attributes() = default;
    Attributes(const Attributes&) = default;
    Attributes& operator=(const Attributes&) = default;
};

}  // namespace sax
