// SPDX-License-Identifier: MIT
#include <espalier/sax/SAXException.h>
#include <espalier/sax/helpers/NamespaceSupport.h>
#include <espalier/xml/HashIterator.h>

#include "sax/Messages.h"
#include "sax/ViewOf.h"

#include <memory>
#include <vector>

namespace sax::helpers {

namespace {

using sax::detail::ViewOf;

// Calls `visit` with each prefix in force, until that returns false.
template <typename Visit>
void VisitPrefixes(const Xml::HashMap& prefixes, Visit visit) {
    Xml::HashIterator iterator;
    for (Xml::HashItem item = iterator.First(prefixes); !item.IsNull(); item = iterator.Next()) {
        if (!visit(*static_cast<const XmlNamespace*>(item.GetValue()))) return;
    }
}

SAXEnumeration* Enumerate(std::vector<astring> prefixes) {
    return std::make_unique<SAXEnumeration>(std::move(prefixes)).release();
}

}  // namespace

NamespaceSupport::NamespaceSupport() = default;
NamespaceSupport::NamespaceSupport(const NamespaceSupport& other) = default;
NamespaceSupport& NamespaceSupport::operator=(const NamespaceSupport& other) = default;
NamespaceSupport::~NamespaceSupport() = default;

void NamespaceSupport::reset() {
    Reset();  // which also undoes the binding of "xmlns"
    isFresh_ = true;
    declaresUris_ = false;
}

void NamespaceSupport::pushContext() {
    PushContext();
    isFresh_ = true;
}

void NamespaceSupport::popContext() {
    PopContext();
    isFresh_ = false;
}

bool NamespaceSupport::declarePrefix(const char* prefix, const char* uri) {
    if (!isFresh_) throw SAXException(sax::detail::Message::kDeclareTooLate);
    return DeclarePrefix(ViewOf(prefix), ViewOf(uri)) != nullptr;
}

const astring** NamespaceSupport::processName(const char* qName, const astring** parts,
                                              bool isAttribute) {
    isFresh_ = false;
    return ProcessName(ViewOf(qName), parts, isAttribute);
}

const char* NamespaceSupport::getURI(const char* prefix) const {
    return GetURI(ViewOf(prefix)).c_str();
}

const char* NamespaceSupport::getPrefix(const char* uri) const {
    const char* found = nullptr;
    VisitPrefixes(Prefixes(), [&found, uri](const XmlNamespace& ns) {
        if (ns.uri == ViewOf(uri)) found = ns.prefix.c_str();
        return found == nullptr;
    });
    return found;
}

SAXEnumeration* NamespaceSupport::getPrefixes() const {
    std::vector<astring> prefixes;
    VisitPrefixes(Prefixes(), [&prefixes](const XmlNamespace& ns) {
        prefixes.push_back(ns.prefix);
        return true;
    });
    return Enumerate(std::move(prefixes));
}

SAXEnumeration* NamespaceSupport::getPrefixes(const char* uri) const {
    std::vector<astring> prefixes;
    VisitPrefixes(Prefixes(), [&prefixes, uri](const XmlNamespace& ns) {
        if (ns.uri == ViewOf(uri)) prefixes.push_back(ns.prefix);
        return true;
    });
    return Enumerate(std::move(prefixes));
}

SAXEnumeration* NamespaceSupport::getDeclaredPrefixes() const {
    std::vector<astring> prefixes;
    for (const XmlNamespace* ns = FirstDeclaredNs(); ns != nullptr; ns = NextDeclaredNs(ns)) {
        if (!ns->redeclared) prefixes.push_back(ns->prefix);
    }
    return Enumerate(std::move(prefixes));
}

// Deliberate: what counts is whether the context has been used, as for declarePrefix(); the text of
// the refusal speaks of contexts that were pushed, but right behind a push nothing is refused.
void NamespaceSupport::setNamespaceDeclUris(bool value) {
    if (!isFresh_) throw SAXException(sax::detail::Message::kDeclUrisTooLate);
    if (value == declaresUris_) return;
    if (value) {
        BindXmlns();
    } else {
        UnbindXmlns();
    }
    declaresUris_ = value;
}

}  // namespace sax::helpers
