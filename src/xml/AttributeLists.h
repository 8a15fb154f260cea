// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>
#include <espalier/xml/HashMap.h>

#include "xml/PlaceCounter.h"

#include <cstddef>
#include <deque>
#include <memory>
#include <string_view>
#include <vector>

namespace Xml::detail {

/// The types of attributes: XML 1.0 [54] to [59].
enum class AttributeType : unsigned char {
    CData,
    Id,
    IdRef,
    IdRefs,
    Entity,
    Entities,
    NmToken,
    NmTokens,
    Notation,
    Enumeration
};

/// An attribute that the document type declares.
struct AttributeDeclaration {
    astring name;
    AttributeType type = AttributeType::CData;
    bool hasDefault = false;
    astring value;      ///< the default, normalized by the type
    Place place{0, 0};  ///< where its name stands
};

/// What the document type declares for the attributes of an element, the first declaration of each
/// name only.
class AttributeList {
public:
    /// Adds a declaration.
    /// \return false when the name is declared already
    bool Declare(AttributeDeclaration declaration);

    /// Returns a declaration, or null.
    const AttributeDeclaration* Find(std::string_view name) const;

    /// Returns the declarations that have a default, in their order.
    const std::vector<const AttributeDeclaration*>& Defaults() const { return defaults_; }

    /// Tells whether a declared type is another than CDATA.
    bool HasTypes() const { return hasTypes_; }

private:
    void Index(AttributeDeclaration& declaration);

    std::vector<std::unique_ptr<AttributeDeclaration>> declarations_;
    std::vector<const AttributeDeclaration*> defaults_;
    bool hasTypes_ = false;
    std::unique_ptr<Xml::HashMap> byName_;  // only of many declarations; most lists are short
};

/// The attribute lists of a document.
class AttributeLists {
public:
    AttributeLists();

    /// Returns the list of an element, a new one if there is none.
    AttributeList& ListOf(std::string_view element);

    /// Returns the list of an element, or null.
    const AttributeList* Find(std::string_view element) const;

private:
    std::deque<AttributeList> lists_;
    Xml::HashMap byElement_;
};

/// Further normalizes a value whose type is not CDATA (XML 1.0 section 3.3.3): takes the spaces at
/// both ends away and leaves one of those that follow each other.
void TrimTokens(astring& value);

}  // namespace Xml::detail
