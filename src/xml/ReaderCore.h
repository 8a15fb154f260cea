// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>
#include <espalier/xml/HashMap.h>
#include <espalier/xml/XmlEntityHandling.h>
#include <espalier/xml/XmlNsSupport.h>
#include <espalier/xml/XmlSpace.h>
#include <espalier/xml/XmlTextReader.h>

#include "xml/NameTable.h"
#include "xml/NodeInfo.h"
#include "xml/XmlScanner.h"

#include <cstdint>
#include <deque>
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

/// An element that is open.
struct ElementEntry {
    XmlName* name;
    const astring* uri;       // of its namespace
    const astring* language;  // the xml:lang in force
    XmlSpace space;           // the xml:space in force
    bool ownsLanguage;        // its xml:lang is on top of the languages
};

/// The reader behind XmlTextReader: its fields, its state machine and its parsing.
class ReaderCore {
public:
    ReaderCore();
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

    /// The node that the properties show; never null.
    XmlTokenInfo* currentNode;

    const char* EncodingName() const;
    Place NodePlace() const;
    const astring& Language() const;
    XmlSpace Space() const;
    char QuoteChar() const;
    int AttributeCount() const;
    const astring& AttributeValue(int i) const;
    const astring& AttributeValue(std::string_view name) const;
    const astring& AttributeValue(std::string_view localName, std::string_view uri) const;
    bool MoveToElement();
    bool MoveToAttribute(int i);
    int AttributeIndex() const { return attributeIndex_; }
    const astring& LookupNamespace(std::string_view prefix) const;

private:
    /// What a pass of the state machine came to.
    enum class Pass : unsigned char {
        Node,    ///< a node is ready
        Repeat,  ///< another pass is needed
        End      ///< the input has ended
    };

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
    Pass ParseComment();
    Pass ParseCData();
    Pass ParsePI();
    Pass ReportNode(XmlTokenInfo& node);
    Normalize NormalizeText() const {
        return normalization ? Normalize::Text : Normalize::Done;
    }

    // ReaderElement.cpp: tags, attributes and namespaces.
    enum class Quick : unsigned char { Done, NeedsMore, NeedsCare };
    Pass ParseElement();
    Quick ScanElementQuickly(XmlName*& name, bool& isEmpty);
    Quick ScanAttributeQuickly(const unsigned char*& at);
    const unsigned char* ScanNameQuickly(const unsigned char* at, XmlName*& name);
    void ScanElementCarefully(XmlName*& name, bool& isEmpty);
    void SetAttributeValues(Place place);
    void ScanAttributeValue(XmlAttributeTokenInfo& attribute);
    static const char* SpecialAttributeError(NameMeaning meaning, std::string_view value);
    void ApplySpecialAttributes();
    XmlAttributeTokenInfo& AddAttribute(XmlName* name);
    void ForgetAttributes();
    void PushElement(XmlName* name);
    void PopElement();
    void DeclareNamespaces();
    void ResolveNamespaces();
    const astring& UriOf(XmlName* prefix);
    void CheckDuplicates() const;
    void CheckExpandedDuplicates() const;
    [[noreturn]] void ThrowDuplicate(const XmlAttributeTokenInfo& attribute) const;
    Place PlaceOf(const XmlAttributeTokenInfo& attribute) const;
    void TrimNames();
    Pass ParseEndTag();
    void ScanEndTagCarefully(const XmlName* open);
    const ElementEntry& Top() const { return elements_.back(); }
    int Depth() const { return static_cast<int>(elements_.size()); }

    XmlAttributeTokenInfo* FindAttribute(std::string_view name) const;
    XmlAttributeTokenInfo* FindAttribute(std::string_view localName, std::string_view uri) const;
    static bool IsDeclaration(const XmlAttributeTokenInfo& attribute);
    void FillNameMap() const;
    void FillNamespaceMap() const;
    static astring NamespaceKey(std::string_view uri, std::string_view localName);

    // The input.
    XmlScanner scanner_;
    bool open_ = false;  // there is an input, so the scanner counts
    IO::Stream* stream_ = nullptr;
    bool ownsStream_ = false;

    // The attributes of the current element, in document order: the first attributeCount_ ones.
    // The maps are filled when they are first asked, and only for elements with many attributes.
    mutable std::vector<XmlAttributeTokenInfo> attributes_;
    int attributeCount_ = 0;
    int attributeIndex_ = 0;
    bool hasDeclarations_ = false;   // an attribute declares a namespace
    bool hasPrefixedAttributes_ = false;
    bool hasSpecialAttributes_ = false;  // xml:space or xml:lang
    int duplicate_ = -1;  // index of the first attribute whose name came before
    std::uint64_t elementSerial_ = 1;
    mutable Xml::HashMap attributesByName_;
    mutable Xml::HashMap attributesByNs_;
    mutable bool nameMapFilled_ = false;
    mutable bool namespaceMapFilled_ = false;

    // The open elements.
    std::vector<ElementEntry> elements_;
    std::deque<astring> languages_;  // the xml:lang values of open elements, reused
    std::size_t languageCount_ = 0;
    sax::XmlNsSupport nsSupport_;
    NameTable names_;
    bool namesSplit_ = true;  // the names were interned with namespaces on
    XmlName defaultPrefix_;   // remembers the default namespace as names do their prefix

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

    // The nodes, one object per kind.
    XmlTokenInfo emptyNode_;
    XmlTokenInfo elementNode_;
    XmlTokenInfo endElementNode_;
    XmlTokenInfo textNode_;  // also for white space, which may turn out to be text
    XmlTokenInfo cdataNode_;
    XmlTokenInfo commentNode_;
    XmlTokenInfo piNode_;
    XmlTokenInfo declarationNode_;
    DeclarationPart lastPart_ = DeclarationPart::None;  // of the declaration, so far
    XmlTokenInfo doctypeNode_;
    XmlTokenInfo entityRefNode_;
    astring ownName_;  // of the nodes whose names are not interned
    astring digits_;   // of the character reference that is being scanned
};

}  // namespace Xml::detail
