// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>
#include <espalier/xml/HashMap.h>
#include <espalier/xml/NodeView.h>
#include <espalier/xml/XmlEntityHandling.h>
#include <espalier/xml/XmlNsSupport.h>
#include <espalier/xml/XmlSpace.h>
#include <espalier/xml/XmlTextReader.h>

#include "xml/NameTable.h"
#include "xml/XmlScanner.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <span>
#include <string_view>
#include <vector>

namespace IO {
class Stream;
}

namespace Xml::detail {

/// What the next pass of the reader's state machine does.
enum class ParseState : unsigned char {
    PsClosed,    ///< nothing: there is no input
    PsStart,     ///< detects the encoding
    PsProlog,    ///< parses markup outside of the root element
    PsEmptyEnd,  ///< leaves an element that was written as an empty-element tag
    PsContent,   ///< parses the content of an element
    PsEnd,       ///< nothing: the input has ended
    PsError      ///< nothing: an error was thrown
};

/// An attribute of the current element, or a pseudo-attribute of the declaration.
struct XmlAttribute {
    XmlName* name = nullptr;
    const astring* uri = nullptr;       ///< of its namespace; never null
    const unsigned char* at = nullptr;  ///< where it starts in the window; null: see place
    astring value;
    Place place;
    char quote = '"';
    bool isRaw = false;            ///< white space in the value is still to be normalized
    bool holdsReferences = false;  ///< the value has references that were not replaced
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
class ReaderCore {
public:
    /// \param node the properties of the reader, which are filled for each node
    explicit ReaderCore(NodeView& node);
    ~ReaderCore();
    ReaderCore(const ReaderCore&) = delete;
    ReaderCore& operator=(const ReaderCore&) = delete;

    void OpenStream(IO::Stream* stream, bool owns);
    void Close();
    bool Read();

    // State and settings.
    XmlTextReader::XmlReadStateEnum readState = XmlTextReader::Closed;
    bool namespaces = true;
    bool normalization = false;
    XmlTextReader::XmlWsHandlingEnum whitespaceHandling = XmlTextReader::WsAll;
    XmlEntityHandling entityHandling = XmlEntityHandling::ExpandCharEntities;

    const char* EncodingName() const;
    Place NodePlace() const;
    const astring& Language() const;
    XmlSpace Space() const;
    char QuoteChar() const;
    int AttributeCount() const;
    const astring& AttributeValue(int i);
    const astring& AttributeValue(std::string_view name);
    const astring& AttributeValue(std::string_view localName, std::string_view uri);
    void NormalizeCurrentValue();
    bool MoveToElement();
    bool MoveToAttribute(int i);
    bool MoveToNextAttribute();
    int AttributeIndex() const { return attributeIndex_; }
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

    void ShowNothing();
    void ShowElement();
    bool ReadCarefully();
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
    void SwitchEncoding(const astring& name);
    Pass ParseDoctype();
    void SkipDoctype();

    // ReaderContent.cpp: what stands inside of elements.
    Pass ParseBeginTag();
    Pass ParseTag();
    Pass ParseText(XmlToken token);
    bool ReplaceReference(XmlToken token, astring& text);
    bool ReplacePredefined(astring& text);
    void ScanGeneralReference();
    void AppendGeneralReference(astring& text) const;
    Pass ReportReference();
    Pass HandleWhitespace();
    XmlNodeType::XML_NODE_TYPE WhitespaceType() const;
    Pass ParseComment();
    Pass ParseCData();
    Pass ParsePI();
    Pass ReportValue(XmlNodeType::XML_NODE_TYPE type);
    Pass ReportNamed(XmlNodeType::XML_NODE_TYPE type, std::string_view name);

    // ReaderQuick.cpp: nodes that lie in the window and are made of the usual.
    Quick ReadQuickly();
    Quick ReadTextQuickly();
    Quick ReadStartTagQuickly();
    Quick ReadEndTagQuickly();
    Quick ScanAttributeQuickly(const unsigned char*& at);
    const unsigned char* ScanNameQuickly(const unsigned char* at, XmlName*& name);
    const unsigned char* ScanNewName(const unsigned char* at, XmlName*& name);

    // ReaderElement.cpp: tags, elements and attributes.
    Pass ParseElement();
    void ScanElementCarefully(XmlName*& name, bool& isEmpty);
    void SetAttributeValues(Place place);
    void ScanAttributeValue(XmlAttribute& attribute);
    Pass ParseEndTag();
    void ScanEndTagCarefully(const XmlName* open);
    void FinishElement(XmlName& name, bool isEmpty);
    void FinishEndElement();
    void PushElement(XmlName& name);
    void PopElement();
    void TrimNames();
    static const char* SpecialAttributeError(NameMeaning meaning, std::string_view value);
    void ApplySpecialAttributes();
    XmlAttribute& AddAttribute(XmlName& name);
    void NoteMeaning(const XmlName& name);
    void ForgetAttributes();
    void ForgetMaps();
    Place PlaceOf(const XmlAttribute& attribute) const;
    static const astring& NormalizedValue(XmlAttribute& attribute);

    // ReaderNamespaces.cpp: declarations, duplicates and lookup by name.
    void DeclareNamespaces();
    void ResolveAttributes();
    const astring& UriOf(XmlName& prefix);
    void CheckDuplicates() const;
    void CheckExpandedDuplicates() const;
    bool HaveOnePrefix() const;
    [[noreturn]] void ThrowDuplicate(const XmlAttribute& attribute) const;
    XmlAttribute* FindAttribute(std::string_view name);
    XmlAttribute* FindAttribute(std::string_view localName, std::string_view uri);
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

    // The attributes of the current element, in document order: the first attributeCount_ ones.
    // The maps are filled when they are first asked, and only for elements with many attributes.
    std::vector<XmlAttribute> attributes_;
    int attributeCount_ = 0;
    int attributeIndex_ = 0;
    bool hasDeclarations_ = false;  // an attribute declares a namespace
    bool hasPrefixedAttributes_ = false;
    bool hasSpecialAttributes_ = false;  // xml:space or xml:lang
    int duplicate_ = -1;                 // index of the first attribute whose name came before
    std::uint64_t elementSerial_ = 1;
    Xml::HashMap attributesByName_;
    Xml::HashMap attributesByNs_;
    bool nameMapFilled_ = false;
    bool namespaceMapFilled_ = false;

    // The open elements.
    std::vector<ElementEntry> elements_;
    std::deque<astring> languages_;  // the xml:lang values of open elements, reused
    std::size_t languageCount_ = 0;
    sax::XmlNsSupport nsSupport_;
    NameTable names_;
    bool namesSplit_ = true;  // the names were interned with namespaces on
    XmlName noPrefix_;        // remembers the default namespace as names do their prefix

    // The state machine.
    ParseState parseState_ = ParseState::PsClosed;
    bool endReached_ = false;   // the end of the document was reported
    bool contentSeen_ = false;  // anything has been read, so a declaration comes too late
    bool doctypeSeen_ = false;
    int rootCount_ = 0;
    bool standalone_ = false;

    // The general entity reference that was scanned last.
    bool referencePending_ = false;  // it ended a text and is the next node
    astring referenceName_;
    Place referencePlace_;

    DeclarationPart lastPart_ = DeclarationPart::None;  // of the declaration, so far
    std::array<XmlName, 4> partNames_;                  // indexed by DeclarationPart
    astring digits_;  // of the character reference that is being scanned
};

}  // namespace Xml::detail
