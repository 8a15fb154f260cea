// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/xml/HashMap.h>
#include <espalier/xml/XmlNamespace.h>

#include <cstdint>
#include <limits>
#include <string_view>

namespace sax {

/// The namespace prefixes in scope while a document is read or written.
///
/// There is one context level per open element. A declaration holds from the level it is made at
/// until that level is popped, and shadows an outer one of the same prefix meanwhile. Level 0 is
/// outside of all elements: what is declared there stays, also over Reset(). A fresh object has
/// the prefix "xml" declared there as "http://www.w3.org/XML/1998/namespace".
///
/// Nothing is an error here: any prefix may be declared as any URI, also "xml", "xmlns" and the
/// empty URI, and a prefix that nobody declared resolves to the empty string.
///
/// \code
///     sax::XmlNsSupport namespaces;
///     namespaces.PushContext();
///     namespaces.DeclarePrefix("svg", "http://www.w3.org/2000/svg");
///     namespaces.GetURI("svg");  // "http://www.w3.org/2000/svg"
///     namespaces.PopContext();
///     namespaces.GetURI("svg");  // ""
/// \endcode
///
/// \note An object belongs to one thread at a time; different objects may be used from different
/// threads at once.
class ESPALIER_EXPORT XmlNsSupport {
public:
    /// \throws Xml::Exception "Out of memory"
    XmlNsSupport();

    /// Makes a copy with records of its own.
    /// \throws Xml::Exception "Out of memory"
    XmlNsSupport(const XmlNsSupport& other);

    /// Makes this object a copy with records of its own.
    /// \throws Xml::Exception "Out of memory", with nothing changed
    XmlNsSupport& operator=(const XmlNsSupport& other);

    ~XmlNsSupport();

    /// Enters the next level.
    void PushContext() { ++level_; }

    /// Leaves the level and undoes what was declared at it; does nothing at level 0.
    void PopContext() {
        if (level_ <= 0) return;
        --level_;
        if (declarations_ != nullptr && declarations_->level > level_) UndoDeclarations();
    }

    /// Declares a prefix, or with an empty prefix the default namespace, at the current level.
    /// \return the declaration, or null, with nothing changed, when there is no memory for it
    XmlNamespace* DeclarePrefix(std::string_view prefix, std::string_view uri);

    /// Splits a qualified name at its first ":".
    ///
    /// An undeclared prefix gives an empty URI, and so does an attribute name without a prefix: the
    /// default namespace holds for element names only.
    /// \param qName the name
    /// \param parts receives pointers to the URI, the local name and the name as it stands; they
    ///     belong to this object and are valid until the next call on it
    /// \param isAttribute whether the name is an attribute's
    /// \return `parts`
    /// \throws std::bad_alloc
    const astring** ProcessName(std::string_view qName, const astring** parts, bool isAttribute);

    /// \name Return the URI of a prefix
    /// The empty prefix gives the default namespace. The result is empty when nothing is bound, and
    /// valid until a declaration is made or undone.
    /// @{

    /// Takes the first `length` bytes of `prefix`.
    const astring& GetURI(std::string_view prefix, unsigned length) const {
        return GetURI(prefix.substr(0, length));
    }
    const astring& GetURI(std::string_view prefix) const {
        const XmlNamespace* const found = FindPrefix(prefix);
        return found == nullptr ? EmptyString() : found->uri;
    }
    /// @}

    /// Returns the prefix of the most recent declaration in force of `uri`; empty when there is
    /// none, or when it is the default namespace.
    const astring& GetPrefix(std::string_view uri) const;

    /// Returns the prefix of the most recent declaration that was not undone.
    const astring& GetLastPrefix() const {
        return declarations_ == nullptr ? EmptyString() : declarations_->prefix;
    }

    /// Returns the most recent declaration of the current level, or null.
    const XmlNamespace* FirstDeclaredNs() const { return AtThisLevel(declarations_); }

    /// Returns the declaration of the current level made before `declaration`, or null.
    const XmlNamespace* NextDeclaredNs(const XmlNamespace* declaration) const {
        return declaration == nullptr ? nullptr : AtThisLevel(declaration->next);
    }

    /// Leaves all levels: undoes what was declared above level 0 and any binding of "xmlns".
    void Reset();

    // What follows is not part of the classic interface.

    /// Returns the declaration in force of a prefix, of the empty one that of the default
    /// namespace; null when there is none. Valid until its context is popped.
    const XmlNamespace* FindPrefix(std::string_view prefix) const {
        return prefix.empty() ? defaultNs_ : FindBound(prefix);
    }

    /// Returns a number that changes whenever what some prefix resolves to may have changed, so
    /// that results can be kept until then.
    std::uint64_t Generation() const { return generation_; }

protected:
    /// Returns the prefixes in force with their XmlNamespace; the default namespace is not there.
    const Xml::HashMap& Prefixes() const { return prefixes_; }

    /// Binds "xmlns" to the fixed record of "http://www.w3.org/2000/xmlns/".
    /// \throws std::bad_alloc
    void BindXmlns();

    /// Removes any binding of "xmlns".
    void UnbindXmlns();

private:
    static const astring& EmptyString();

    const XmlNamespace* FindBound(std::string_view prefix) const {
        // A key of length 0 would be taken for a pointer; one of 4 GiB cannot be in the map.
        if (prefix.empty() || prefix.size() > std::numeric_limits<unsigned>::max()) return nullptr;
        return static_cast<const XmlNamespace*>(
            prefixes_.Find(prefix.data(), static_cast<unsigned>(prefix.size())));
    }
    const XmlNamespace* AtThisLevel(const XmlNamespace* declaration) const {
        return declaration != nullptr && declaration->level == level_ ? declaration : nullptr;
    }

    void Initialise();
    void CopyFrom(const XmlNsSupport& other);
    XmlNamespace* TakeRecord();
    void Bind(XmlNamespace& record);
    void UndoDeclarations();
    void UndoBinding(const XmlNamespace& record);
    void FreeRecords();
    void Swap(XmlNsSupport& other);

    XmlNamespace* defaultNs_ = nullptr;       // the default namespace in force, or null; not owned
    XmlNamespace* xmlnsNs_ = nullptr;         // the fixed record that BindXmlns() binds; owned
    [[maybe_unused]] bool reserved_ = false;  // keeps the place of a flag that nothing needs
    int level_ = 0;                           // number of contexts that are open
    Xml::HashMap prefixes_;                   // prefix to the XmlNamespace in force
    XmlNamespace* declarations_ = nullptr;    // the most recent first; owned
    XmlNamespace* freeList_ = nullptr;        // records for the next declarations; owned
    std::uint64_t generation_ = 0;            // counts the changes of bindings
    astring localName_;                       // of the last name that was processed
    astring rawName_;                         // the last name that was processed
};

}  // namespace sax
