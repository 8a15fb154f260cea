// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>
#include <espalier/xml/HashMap.h>
#include <espalier/xml/NodeView.h>
#include <espalier/xml/XmlConformance.h>
#include <espalier/xml/XmlEntityHandling.h>
#include <espalier/xml/XmlEntityLimits.h>
#include <espalier/xml/XmlNsSupport.h>
#include <espalier/xml/XmlSpace.h>
#include <espalier/xml/XmlTextReader.h>

#include "xml/AttributeLists.h"
#include "xml/EntityTable.h"
#include "xml/NameTable.h"
#include "xml/SubsetParser.h"
#include "xml/XmlScanner.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace IO {
class Stream;
}

namespace Xml::detail {

/// What the next pass of the reader's state machine does.
enum class ParseState : unsigned char {
    PsClosed,        ///< nothing: there is no input
    PsStart,         ///< detects the encoding
    PsProlog,        ///< parses markup outside of the root element
    PsEmptyEnd,      ///< leaves an element that was written as an empty-element tag
    PsContent,       ///< parses the content of an element
    PsReference,     ///< deals with the entity reference that ended a text
    PsEntityReturn,  ///< leaves the value of an attribute, and goes on where its element was left
    PsEnd,           ///< nothing: the input has ended
    PsError          ///< nothing: an error was thrown
};

/// An attribute of the current element, or a pseudo-attribute of the declaration.
struct XmlAttribute {
    XmlName* name = nullptr;
    const astring* uri = nullptr;  ///< of its namespace; never null
    astring value;
    union {
        const unsigned char* at = nullptr;  ///< where it starts in the window
        Place place;                        ///< where it starts, when hasPlace is set
    };
    bool hasPlace = false;
    char quote = '"';
    bool isRaw = false;            ///< white space in the value is still to be normalized
    bool holdsReferences = false;  ///< the value has references that were not replaced
    bool isDefault = false;        ///< the document type supplies it
    bool isTokens = false;         ///< its declared type is another than CDATA
    int rawIndex = 0;              ///< of the value as it is written, when it holds references
};

/// An element that is open.
struct ElementEntry {
    XmlName* name;
    const astring* uri;       ///< of its namespace
    const astring* language;  ///< the xml:lang in force
    XmlSpace space;           ///< the xml:space in force
    bool ownsLanguage;        ///< its xml:lang is on top of the languages
};

/// The reader behind XmlTextReader: its fields, its state machine and its parsing.
class ReaderCore : private SubsetHost {
public:
    /// \param node the properties of the reader, which are filled for each node
    explicit ReaderCore(NodeView& node);
    ~ReaderCore() override;
    ReaderCore(const ReaderCore&) = delete;
    ReaderCore& operator=(const ReaderCore&) = delete;

    void OpenStream(IO::Stream* stream, bool owns);
    void Close();
    bool Read();

    // State and settings.
    XmlTextReader::XmlReadStateEnum readState = XmlTextReader::Closed;
    bool namespaces = true;
    XmlTextReader::XmlWsHandlingEnum whitespaceHandling = XmlTextReader::WsAll;
    XmlConformance conformance;
    XmlEntityHandling entityHandling = XmlEntityHandling::ExpandCharEntities;
    XmlEntityLimits entityLimits;
    bool readsAnyVersion = false;  ///< whoever reads decides on the version of XML himself

    bool Normalization() const { return normalization_; }
    void SetNormalization(bool normalization);
    const char* EncodingName() const;
    Place NodePlace() const;
    const astring& Language() const;
    XmlSpace Space() const;
    char QuoteChar() const;
    int AttributeCount() const;
    /// Tells of an element, and of no other node, whether AttributeCount() is 0.
    bool HasNoAttributes() const { return attributeCount_ == 0; }
    const astring& AttributeValue(int i);
    const astring& AttributeValue(std::string_view name);
    const astring& AttributeValue(std::string_view localName, std::string_view uri);
    void NormalizeCurrentValue();
    const XmlAttribute& AttributeAt(int i) const {
        return attributes_[static_cast<std::size_t>(i)];
    }
    /// Tells whether the document is read in standard mode.
    bool IsStandard() const { return standard_; }
    bool IsOnElement() const {
        return node_.type == XmlNodeType::Element || node_.type == XmlNodeType::Attribute;
    }
    bool MoveToElement();
    bool MoveToAttribute(int i);
    bool MoveToAttribute(std::string_view name);
    bool MoveToAttribute(std::string_view localName, std::string_view uri);
    bool MoveToNextAttribute();
    bool ReadAttributeValue();
    /// Goes back from the parts of a value to its attribute.
    void LeaveValue() {
        if (parseState_ == ParseState::PsEntityReturn) LeaveParts();
    }
    void ResolveEntity();
    void ReadToEndTag();
    astring InnerXml();
    astring OuterXml(bool isEmpty);
    /// Returns what the document type declares, or null when it has no subset.
    const EntityTable* Entities() const { return entities_.get(); }
    int AttributeIndex() const { return attributeIndex_; }
    /// Returns the name of the element that the reader stands on.
    XmlName& ElementName() const { return *Top().name; }
    /// Returns a number that changes with the namespaces that are declared.
    std::uint64_t NamespaceGeneration() const { return nsSupport_.Generation(); }
    const astring& LookupNamespace(std::string_view prefix) const;

private:
    /// What a pass of the state machine came to.
    enum class Pass : unsigned char {
        Node,    ///< a node is ready
        Repeat,  ///< another pass is needed
        End      ///< the input has ended
    };

    /// What came of a scan that handles the usual only.
    enum class Quick : unsigned char {
        Done,
        Skipped,    ///< it passed white space that is not reported
        NeedsMore,  ///< it may have reached the end of the window
        NeedsCare   ///< it met something unusual
    };

    /// What a quick scan does with what it finds.
    enum class Use : unsigned char {
        Report,  ///< it makes a node of it
        Pass     ///< it checks it; only tags are of interest
    };

    void ShowNothing();
    void ShowElement();
    void ShowAttribute(int i);
    bool MoveToFound(const XmlAttribute* attribute);
    bool ReadFromOutside();
    bool ReadCarefully();
    void Fail();
    bool EndDocument();
    Pass Step();
    Pass Start();

    /// The parts of an XML declaration, in their order.
    enum class DeclarationPart : unsigned char { None, Version, Encoding, Standalone };

    // ReaderProlog.cpp: what stands outside of the root element.
    Pass ParseRoot();
    Pass ParseXmlDecl();
    void ParseDeclarationPart();
    void HandleDeclarationPart(DeclarationPart part, const astring& value);
    void ScanDeclarationValue(XmlAttribute& attribute);
    void SwitchEncoding(const astring& name);
    void ForgetNames();

    // ReaderStandardProlog.cpp: the same by the standard.
    Pass ParseStandardXmlDecl();
    bool ParseStandardPart(DeclarationPart part, bool isSeparated);
    void HandleStandardPart(DeclarationPart part, const astring& value);
    void SettleStandardEncoding(bool isDeclared);
    [[noreturn]] void ThrowInProlog(XmlToken token) const;

    // ReaderDoctype.cpp: the document type declaration.
    Pass ParseDoctype();
    void ParseDoctypeParts();
    void ParseDoctypeId();
    void AddDoctypePart(XmlName& name, const astring& value);
    void ParseSubset();
    bool ParseSubsetMarkup();
    void SkipDtdLiteral(char quote);
    void ParseEntityDecl(Place place);
    void ParseEntityLiteral(astring& text);
    void ParseNdata(EntityRecord* record, bool isParameter);
    void ParseNotationDecl(Place place);
    void ParseExternalID(astring& publicId, astring& systemId, bool publicAlone);
    bool ParsePublicID(astring& publicId, bool publicAlone);
    void ExpectDtdToken(XmlToken token, XmlToken expected) const;
    [[noreturn]] void ThrowUnexpected(XmlToken token) const;
    EntityRecord* Declare(EntityKind kind, std::string_view name, Place place);

    // ReaderStandardDoctype.cpp: the document type declaration by the standard.
    Pass ParseStandardDoctype();
    void ParseStandardDoctypeParts(DeclarationScanner& parts);

    // What the declarations of the internal subset ask for.
    void AppendEntity(astring& value, std::string_view name) override;
    void CountParameter(const EntityRecord& record) override;

    // ReaderContent.cpp: what stands inside of elements.
    Pass ParseBeginTag();
    Pass ParseTag();
    Pass ParseText(XmlToken token);
    Pass ParsePendingReference();
    bool ReplaceReference(XmlToken token, astring& text, astring* raw);
    bool ReplacePredefined(astring& text, astring* raw);
    void ScanGeneralReference();
    Place ReferencePlace() const;
    static void AppendReference(astring& text, std::string_view start, std::string_view name);

    // ReaderEntities.cpp: general entities and what their references stand for.
    /// What became of a reference in a text.
    enum class Reference : unsigned char {
        Taken,     ///< it was added to the text
        Waits,     ///< it ends the text
        Reported,  ///< it is the current node
        Pushed     ///< the entity's text comes next
    };
    Reference TakeReference(bool isPending);
    Pass ReportEntityEnd();
    EntityRecord& FindEntity(std::string_view name) const;
    void Charge(EntityRecord& record);
    void CountExpanded(long long& sum, long long bytes, const EntityRecord& record);
    bool IsAmplified(long long& sum, long long bytes) const;
    void CheckCycle(const EntityRecord& record) const;
    void PushEntity(EntityRecord& record);
    void EnterText(EntityRecord* record, std::string_view text);
    void PopEntity();
    void PopEntitiesTo(int count);
    /// Where an entity is expanded, which decides what its text may hold.
    enum class Around : unsigned char { Text, Value };
    void AppendExpansion(astring& text, std::string_view source, Around around);
    EntityRecord* FindExpandable(std::string_view name, Around around);
    void ExpandEntity(astring& text, EntityRecord& record, Around around);
    astring ExpandEntities(std::string_view text);

    // ReaderStandardEntities.cpp: what the standard asks of references.
    bool IsReadable(const EntityRecord* record, std::string_view name) const;
    Reference TakeStandardReference(bool isPending);
    Reference ReportReference(bool isPending);
    void ProveContent(EntityRecord& record);
    EntityRecord* FindMissing(std::string_view name);
    void ProveMarkup(EntityRecord& record);
    void RequireWholeElements() const;
    void CheckEntityText(const EntityRecord& record, Around around) const;
    void ExpandStandardReference(XmlAttribute& attribute);

    // ReaderParts.cpp: the value of an attribute, part by part, and the markup of whole elements.
    astring CaptureRest(bool withEndTag);
    void EnterValue();
    void LeaveParts();
    void KeepPlaces();
    bool NextPart();
    bool ReportPart(XmlNodeType::XML_NODE_TYPE type);
    bool ReportPart(XmlNodeType::XML_NODE_TYPE type, std::string_view name);

    Pass HandleWhitespace();
    XmlNodeType::XML_NODE_TYPE WhitespaceType() const;
    Pass ParseComment();
    Pass ParseCData();
    Pass ParsePI();
    void RefuseTarget(const ScannedName& target) const;
    Pass ReportValue(XmlNodeType::XML_NODE_TYPE type);
    Pass ReportNamed(XmlNodeType::XML_NODE_TYPE type, std::string_view name);

    /// What a start tag may ask for beyond the usual.
    enum Asks : unsigned {
        AsksDeclaration = 1,  ///< an attribute declares a namespace
        AsksResolution = 2,   ///< an attribute has a prefix
        AsksSpecial = 4,      ///< there is an xml:space or xml:lang
        AsksError = 8,        ///< a name came twice
        AsksTrim = 16         ///< the name table is large
    };

    // ReaderQuick.cpp: nodes that lie in the window and are made of the usual.
    template <Use kUse>
    bool ReadNode();
    void ReadToTextEnd(int around);
    template <Use kUse>
    Quick ReadQuickly();
    template <Use kUse>
    Quick ReadTextQuickly();
    template <Use kUse>
    Quick ReadLongTextQuickly();
    template <Use kUse>
    Quick ReadReferencedTextQuickly(const unsigned char* at);
    bool AppendReferenceQuickly(astring& text, const unsigned char*& at) const;
    bool AppendEntityQuickly(astring& text, const unsigned char*& at, long long& expanded) const;
    Quick ReportTextQuickly(const unsigned char* end, XmlNodeType::XML_NODE_TYPE type);
    template <Use kUse>
    Quick ReadStartTagQuickly();
    Quick ReadEndTagQuickly();
    template <Use kUse>
    Quick ScanAttributeQuickly(const unsigned char*& at);
    const unsigned char* ScanNameQuickly(const unsigned char* at, XmlName*& name);
    const unsigned char* ScanNewName(const unsigned char* at, XmlName*& name);
    Quick WhyNoName(const unsigned char* at) const;
    Quick WhyNoReference(const unsigned char* at) const;

    // ReaderElement.cpp: tags, elements and attributes.
    Pass ParseElement();
    void ScanElementCarefully(XmlName*& name, bool& isEmpty);
    void RequireAttributeOrEnd(bool isSeparated);
    void ScanEquals();
    void SetAttributeValues(Place place);
    void ExpandLiteral(XmlAttribute& attribute);
    void KeepRawValue(XmlAttribute& attribute);
    const astring& RawValue(const XmlAttribute& attribute) const {
        return rawValues_[static_cast<std::size_t>(attribute.rawIndex)];
    }
    void ExpandReference(XmlAttribute& attribute, XmlToken token);
    Pass ParseEndTag();
    void ScanEndTagCarefully(const XmlName* open);
    void FinishElement(XmlName& name, bool isEmpty);
    void FinishEndElement();
    void GrantUnusual();
    void PopElement();
    XmlName* InternName(std::string_view text, int colon);
    void TrimNames();
    static const char* SpecialAttributeError(NameMeaning meaning, std::string_view value);
    void ApplySpecialAttributes();
    XmlAttribute& AddAttribute(XmlName& name);
    void NoteUnusual(const XmlName& name, bool isDuplicate);
    void ForgetAttributes();
    void ResetAttributes();
    Place PlaceOf(const XmlAttribute& attribute) const;
    const astring& NormalizedValue(XmlAttribute& attribute) const;
    static void NormalizeLineEnds(astring& value, bool isAttribute);
    static void NormalizeBlanks(astring& value, std::size_t from);

    // ReaderStandardElement.cpp: attribute lists and the constraints of namespaces.
    void ApplyAttributeLists(const XmlName& element);
    void SupplyAttribute(const AttributeDeclaration& declaration);
    void CheckDeclaration(const XmlAttribute& attribute, std::string_view prefix,
                          std::string_view uri) const;
    void CheckElementPrefix(const XmlName& name, const astring& uri) const;
    [[noreturn]] void ThrowAt(const XmlAttribute& attribute, const char* message,
                              std::string_view argument) const;

    // ReaderNamespaces.cpp: declarations, duplicates and lookup by name.
    void DeclareNamespaces();
    bool DeclareNamespace(const XmlAttribute& attribute, std::string_view prefix,
                          const astring& uri);
    astring ExpandedValue(const XmlAttribute& attribute);
    astring ValueInForce(XmlAttribute& attribute);
    void ResolveAttributes();
    const astring* UriOf(XmlName& prefix);
    void CheckDuplicates();
    const XmlAttribute* FindExpandedDuplicate();
    bool HaveOnePrefix() const;
    [[noreturn]] void ThrowDuplicate(const XmlAttribute& attribute) const;
    XmlAttribute* FindAttribute(std::string_view name);
    XmlAttribute* FindAttribute(std::string_view localName, std::string_view uri);
    static Xml::HashMap NewAttributeMap();
    void PrepareMap(Xml::HashMap& map, int& most);
    void FillNameMap();
    void FillNamespaceMap();

    const ElementEntry& Top() const { return elements_.back(); }
    int Depth() const { return static_cast<int>(elements_.size()); }
    std::span<XmlAttribute> Attributes() {
        return {attributes_.data(), static_cast<std::size_t>(attributeCount_)};
    }
    std::span<const XmlAttribute> Attributes() const {
        return {attributes_.data(), static_cast<std::size_t>(attributeCount_)};
    }

    // The current node.
    NodeView& node_;
    const astring empty_;
    const NameParts noName_;
    NameParts ownName_;  // of nodes whose names are not interned
    astring value_;      // of nodes other than attributes
    astring noValue_;    // of nodes without a value; stays empty

    // The input.
    XmlScanner scanner_;
    bool open_ = false;  // there is an input, so the scanner counts
    IO::Stream* stream_ = nullptr;
    bool ownsStream_ = false;

    // The markup of the tag scanned last: in the window when the quick way took it, otherwise what
    // the scanner collected last, and how much had been collected before it.
    const unsigned char* tagBegin_ = nullptr;
    std::size_t tagOffset_ = 0;

    // The attributes of the current element, in document order: the first attributeCount_ ones.
    // The maps are filled when they are first asked, and only for elements with many attributes.
    std::vector<XmlAttribute> attributes_;
    int attributeCount_ = 0;
    int attributeIndex_ = 0;
    std::vector<astring> rawValues_;  // as they are written, of those that hold references
    int rawCount_ = 0;
    astring rawValue_;  // of the attribute that is being scanned, once it has a reference
    std::vector<const XmlAttribute*> prefixedAttributes_;  // of the check that compares their names
    unsigned asks_ = 0;   // what the tag asks for beyond the usual; a set of Asks
    int duplicate_ = -1;  // index of the first attribute whose name came before
    std::uint64_t elementSerial_ = 1;
    Xml::HashMap attributesByName_;
    Xml::HashMap attributesByNs_;
    bool nameMapFilled_ = false;
    bool namespaceMapFilled_ = false;
    int nameMapMost_ = 0;  // most attributes that the map has held
    int namespaceMapMost_ = 0;

    // The open elements.
    std::vector<ElementEntry> elements_;
    std::deque<astring> languages_;  // the xml:lang values of open elements, reused
    std::size_t languageCount_ = 0;
    sax::XmlNsSupport nsSupport_;
    NameTable names_;
    bool namesSplit_ = true;       // the names were interned with namespaces on
    bool namesOfOneByte_ = false;  // some are names by the classes of an encoding of single bytes
    bool namesOfUnicode_ = false;  // some are names by those of the others
    XmlName noPrefix_;             // remembers the default namespace as names do their prefix

    // Which values are normalized when they are asked for.
    bool normalization_ = false;  // the setting
    bool normalizesTexts_ = false;
    bool normalizesValues_ = false;

    // The state machine.
    bool standard_ = false;  // the document is judged by the standard
    ParseState parseState_ = ParseState::PsClosed;
    bool contentSeen_ = false;  // anything has been read, so a declaration comes too late
    bool doctypeSeen_ = false;
    int rootCount_ = 0;
    bool standalone_ = false;

    // References. The chain holds what the scanner's pushed texts are: entities, or null for the
    // value of an attribute, which is below those that its references push.
    std::unique_ptr<EntityTable> entities_;  // null without a declaration
    DoctypeFacts doctype_;
    std::unique_ptr<AttributeLists> attributeLists_;  // null without a declaration that matters
    EntityRecord missing_;  // for the entity that is not declared and was resolved last
    std::vector<EntityRecord*> entityChain_;
    std::vector<int> floors_;  // of the texts below those that are pushed
    int floor_ = 0;            // the elements that were open where the text pushed last began
    std::vector<std::string_view> waitingTexts_;  // around the text that is being expanded
    long long expandedBytes_ = 0;                 // what the references lead to
    long long pushedBytes_ = 0;                   // what has been put into the scanner
    long long suppliedBytes_ = 0;                 // of the attributes that the type supplied
    astring referenceName_;                       // of the general reference that was scanned last
    Place referencePlace_{0, 0};                  // while it is pending

    // While the value of an attribute is read part by part.
    ParseState savedParseState_ = ParseState::PsContent;
    int partsBase_ = 0;       // the texts that were pushed before
    bool partWaits_ = false;  // a reference ended the last part

    DeclarationPart lastPart_ = DeclarationPart::None;  // of the declaration, so far
    std::array<XmlName, 4> partNames_;                  // indexed by DeclarationPart
    XmlName publicName_;
    XmlName systemName_;
    astring digits_;  // of the character reference that is being scanned
};

}  // namespace Xml::detail

#include "xml/ReaderInline.h"  // what every node goes through
