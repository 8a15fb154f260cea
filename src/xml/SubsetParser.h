// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include "xml/AttributeLists.h"
#include "xml/DeclarationScanner.h"
#include "xml/EntityTable.h"
#include "xml/XmlScanner.h"

#include <memory>
#include <string_view>
#include <vector>

namespace Xml::detail {

/// What of a document type decides how references are judged (XML 1.0 section 4.1).
struct DoctypeFacts {
    bool isStandalone = false;        ///< the declaration says standalone="yes"
    bool hasExternalSubset = false;   ///< a system identifier names one
    bool refersToParameters = false;  ///< there is a reference to a parameter entity
    bool misses = false;              ///< a parameter entity was referred to and not read

    bool isInParameter = false;  ///< the text of a parameter entity is being read

    /// Tells whether a reference to an entity that is not declared is an error.
    bool KnowsAllEntities() const {
        return !isInParameter && (isStandalone || (!hasExternalSubset && !refersToParameters));
    }

    /// Tells whether entities and attributes are still declared by what is read (section 5.1).
    bool Declares() const { return isStandalone || !misses; }
};

/// What the declarations of the internal subset ask of the reader.
class SubsetHost {
public:
    virtual ~SubsetHost() = default;

    /// Appends what a reference to a general entity in an attribute's value stands for, with all
    /// references in it replaced and its white space turned into spaces. Throws at the scanner's
    /// place when the reference is not well-formed there.
    virtual void AppendEntity(astring& value, std::string_view name) = 0;

    /// Counts the text of a parameter entity that is about to be expanded; throws when the limit on
    /// expanded text is passed.
    virtual void CountParameter(const EntityRecord& record) = 0;
};

/// Parses the internal subset to its grammar (XML 1.0 [28b]), with the constraints on
/// well-formedness, and records what it declares.
///
/// The texts of parameter entities are put into the scanner one on top of the other, and the
/// parser goes on in them; the stack of the thread knows nothing of their nesting.
class SubsetParser {
public:
    /// What is declared is put into `entities` and `lists`, which are made when they are needed.
    /// \param nesting how deep parameter entities may be nested, one in the text of the other
    SubsetParser(XmlScanner& scanner, SubsetHost& host, std::unique_ptr<EntityTable>& entities,
                 std::unique_ptr<AttributeLists>& lists, DoctypeFacts& facts, bool namespaces,
                 int nesting);

    /// Parses up to and with the "]", from behind the "[".
    void Parse();

private:
    // SubsetParser.cpp: what the subset is made of.
    void ParseParameterReference();
    void PushParameter(EntityRecord& record);
    void PopParameter();
    void ParseMarkup();
    void ParseDeclaration(Place place);
    void ParseComment(Place place);
    void ParseInstruction(Place place);

    // SubsetDeclarations.cpp
    void ParseElement(Place place);
    void ParseEntity(Place place);
    void ParseEntityDefinition(EntityRecord& entity);
    void ParseEntityValue(astring& text);
    void ParseNdata(EntityRecord& entity);
    void ParseNotation(Place place);
    void Record(EntityRecord entity);

    // SubsetAttributes.cpp
    void ParseAttributeList(Place place);
    AttributeDeclaration ParseAttribute();
    AttributeType ParseType();
    void ParseNotations();
    void ParseEnumeration();
    bool IsGroupOver(const char* message);
    void ParseDefault(AttributeDeclaration& attribute);
    void ParseDefaultValue(astring& value);

    XmlScanner& scanner_;
    SubsetHost& host_;
    std::unique_ptr<EntityTable>& entities_;
    std::unique_ptr<AttributeLists>& lists_;
    DoctypeFacts& facts_;
    bool namespaces_;
    int nesting_;
    DeclarationScanner parts_;
    std::vector<EntityRecord*> parameters_;  // whose texts are in the scanner
};

}  // namespace Xml::detail
