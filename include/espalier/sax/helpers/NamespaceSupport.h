// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/sax/helpers/SAXEnumeration.h>
#include <espalier/xml/XmlNsSupport.h>

namespace sax::helpers {

/// The namespace prefixes in scope, for handlers that resolve names themselves.
///
/// A context is entered per element. Its prefixes are declared before its first name is processed.
class ESPALIER_EXPORT NamespaceSupport : private XmlNsSupport {
public:
    NamespaceSupport();
    NamespaceSupport(const NamespaceSupport& other);
    NamespaceSupport& operator=(const NamespaceSupport& other);
    ~NamespaceSupport();

    /// Leaves all contexts. Declarations of namespaces are in no namespace then.
    void reset();

    /// Enters a context; prefixes can be declared in it.
    void pushContext();
    /// Leaves the context and undoes its declarations. In the outer one nothing can be declared
    /// any more.
    void popContext();

    /// Declares a prefix, or with an empty one the default namespace, in this context.
    /// \return whether the declaration was accepted
    /// \throws SAXException "Illegal state: declarePrefix() can't be called after the context has
    ///     been used."
    bool declarePrefix(const char* prefix, const char* uri);

    /// Resolves a qualified name; see XmlNsSupport::ProcessName().
    /// \param parts receives pointers to the URI, the local name and the qualified name
    /// \return `parts`
    const astring** processName(const char* qName, const astring** parts, bool isAttribute);

    /// Returns the URI that a prefix is bound to; empty when it is not.
    const char* getURI(const char* prefix) const;

    /// Returns a prefix that is bound to `uri`; null when there is none. The default namespace has
    /// no prefix. Valid until its context is left.
    const char* getPrefix(const char* uri) const;

    /// \name Return prefixes, in an enumeration that the caller deletes
    /// @{

    /// Returns all prefixes in force, without the default namespace.
    SAXEnumeration* getPrefixes() const;
    /// Returns all prefixes in force that are bound to `uri`, without the default namespace.
    SAXEnumeration* getPrefixes(const char* uri) const;
    /// Returns what has been declared in this context; the default namespace is an empty string.
    SAXEnumeration* getDeclaredPrefixes() const;
    /// @}

    /// Says whether the prefix "xmlns" is bound to "http://www.w3.org/2000/xmlns/". It is not at
    /// first.
    /// \throws SAXException "Illegal state: setNamespaceDeclUris() was called after a context was
    ///     pushed." when a name has been processed in this context, or one has been left
    void setNamespaceDeclUris(bool value);
    /// Tells whether it is bound.
    bool isNamespaceDeclUris() const { return declaresUris_; }

private:
    bool isFresh_ = true;        // no name has been processed in the context
    bool declaresUris_ = false;  // "xmlns" is bound
};

}  // namespace sax::helpers
