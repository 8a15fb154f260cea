// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/xml/NodeView.h>
#include <espalier/xml/XmlAttributeRange.h>
#include <espalier/xml/XmlConformance.h>
#include <espalier/xml/XmlEntityHandling.h>
#include <espalier/xml/XmlEntityLimits.h>
#include <espalier/xml/XmlNodeType.h>
#include <espalier/xml/XmlSpace.h>

#include <memory>
#include <string_view>

namespace IO {
class Stream;
}

namespace Xml {

namespace detail {
class ReaderAccess;
class ReaderCore;
}  // namespace detail

/// Reads an XML document forward only, one node at a time.
///
/// Open() or SetStream() names the input, each Read() moves to the next node, and the properties
/// tell about the node that the reader stands on: NodeType(), Name(), Value(), Depth() and so on.
/// The attributes of an element belong to it: a loop over Attributes() visits them, GetAttribute()
/// asks for one, and MoveToFirstAttribute() and MoveToNextAttribute() make them the current node.
/// The document is never held as a whole: the reader works on 1024 bytes of input at a time, and
/// documents of any size and depth are read in memory that grows with the depth of nesting, the
/// longest value and the entities that the document declares.
///
/// Nothing but the input is ever read: an external subset is not, and an external entity stands
/// for nothing.
///
/// All text is UTF-8, whatever the encoding of the input (see Encoding()). A name, a system
/// identifier or a public identifier is at most 1024 bytes long in the input's encoding; texts,
/// values and comments may be of any length. With XmlConformance::Standard these limits are 65,536
/// bytes.
///
/// \code
///     Xml::XmlTextReader reader;
///     reader.Open("books.xml");
///     while (reader.Read()) {
///         if (reader.NodeType() == Xml::XmlNodeType::Element && reader.Name() == "book") {
///             std::cout << reader.GetAttribute("title") << "\n";
///         }
///     }
/// \endcode
///
/// Errors in the input are thrown by Read() as Xml::Exception with a line and a position; the
/// reader is then in the state `Error`, and Read() returns false until another input is opened.
/// What a stream throws passes through Read() unchanged and has the same effect. docs/errors.md
/// lists all messages.
///
/// Strings are returned by reference and are valid until the next call of Read(), Open(),
/// SetStream() or Close(), or another call that moves the reader.
///
/// \note One thread at a time may use a reader; different readers may be used at once.
class ESPALIER_EXPORT XmlTextReader {
public:
    /// Says which white space between markup is reported as nodes.
    enum XmlWsHandlingEnum {
        WsNone = 0,         ///< none
        WsSignificant = 1,  ///< only where xml:space is "preserve"
        WsAll = 2           ///< all
    };

    /// The state of the reader.
    enum XmlReadStateEnum {
        Closed = 0,      ///< no input: after construction and after Close()
        EndOfFile = 1,   ///< the whole document has been read
        Error = 2,       ///< an error stopped the reading
        Initial = 3,     ///< an input is open and Read() has not been called
        Interactive = 4  ///< the reader stands on a node
    };

    /// Makes a reader without input: namespaces on, normalization off, all white space reported,
    /// character references expanded.
    XmlTextReader();

    /// Closes the reader; exceptions of its stream are swallowed.
    ~XmlTextReader();

    XmlTextReader(const XmlTextReader&) = delete;
    XmlTextReader& operator=(const XmlTextReader&) = delete;

    /// \name Input
    /// @{

    /// Closes the reader and opens the file `fileName`, which it then owns. Reads nothing yet.
    /// \return true
    /// \throws Xml::Exception as IO::FileStream does, for example "File not found"; the reader is
    ///     then `Closed`
    bool Open(const astring& fileName);

    /// Closes the reader and takes `stream` as its input. Reads nothing yet.
    /// \param owns whether Close() closes and deletes the stream
    /// \return true; false when `stream` is null
    bool SetStream(IO::Stream* stream, bool owns);

    /// Ends the use of the input and forgets all about the document; settings stay as they are.
    /// Never throws.
    void Close();

    /// @}
    /// \name State and settings
    /// @{

    XmlReadStateEnum ReadState() const;

    /// Tells whether the whole document has been read.
    bool Eof() const;

    /// Tells whether names are split into prefix and local name and resolved to namespaces.
    bool Namespaces() const;

    /// Switches namespaces on (the default) or off.
    /// \throws Xml::Exception "Invalid Operation" with the argument "SetNamespaces" once reading
    ///     has begun
    void SetNamespaces(bool namespaces);

    /// Tells whether line ends in values are normalized (XML 1.0 sections 2.11 and 3.3.3).
    bool Normalization() const;

    /// Switches normalization on or off (the default), from the next node on. When on, CR LF and
    /// a lone CR in texts become one LF, and tabs and line ends in attribute values become one
    /// space each.
    /// \throws Xml::Exception "Invalid operation" with the argument "SetNormalization" when closed
    void SetNormalization(bool normalization);

    XmlWsHandlingEnum WhitespaceHandling() const;

    /// Says which white space is reported, from the next node on.
    /// \throws Xml::Exception "Invalid operation" with the argument "SetWhitespaceHandling" when
    ///     closed
    void SetWhitespaceHandling(XmlWsHandlingEnum handling);

    XmlConformance Conformance() const;

    /// Says by which rules documents are judged, from the next one on. The setting outlives the
    /// document.
    ///
    /// With `Standard` the reader is a non-validating processor of XML 1.0 (fifth edition) and,
    /// with namespaces on, of Namespaces in XML 1.0 (third edition) that reads the internal subset
    /// and nothing else but the document. All that is not well-formed is an error. Line ends and
    /// values are normalized always, whatever Normalization() says, and values by their declared
    /// types; attributes that the document type supplies stand behind those of the tag. Where
    /// references are replaced, one to an entity that cannot be read, because it is external or
    /// because its declaration may stand where nothing is read, is an `EntityReference` node in a
    /// text and nothing in a value.
    /// \throws Xml::Exception "Invalid Operation" with the argument "SetConformance" once reading
    ///     has begun
    void SetConformance(XmlConformance conformance);

    XmlEntityHandling EntityHandling() const;

    /// Says what happens to references, from the next node on.
    void SetEntityHandling(XmlEntityHandling handling);

    const XmlEntityLimits& EntityLimits() const;

    /// Says how far entities may expand, from the next reference on; docs/limits.md tells more.
    /// The setting outlives the document.
    void SetEntityLimits(const XmlEntityLimits& limits);

    /// Returns the name of the encoding that is being decoded, for example "UTF-8" or "UTF-16LE";
    /// empty when closed. It is known after the first Read().
    astring Encoding() const;

    /// @}
    /// \name Reading
    /// @{

    /// Moves to the next node.
    /// \return true when there is one; false at the end of the document and after an error
    /// \throws Xml::Exception "No source stream to parse" (line and position 0) without an input,
    ///     and every message for input that is not well-formed (docs/errors.md)
    bool Read();

    /// On an `EntityReference` node, puts the text of the entity into the input, so that the
    /// following calls of Read() return its nodes and then an `EndEntity` node. An external entity
    /// stands for no text, and neither does, with XmlConformance::Standard, one that is not
    /// declared where that is no error.
    /// \throws Xml::Exception "Invalid operation" with the argument "ResolveEntity" (line and
    ///     position -1) on another node; "Undeclared entity" and "Cyclic entity reference" with the
    ///     entity's name; "Entity expansion limit exceeded" and "Entity nesting limit exceeded"
    ///     with the entity's name, as EntityLimits() say
    void ResolveEntity();

    /// Tells whether the reader can resolve entities, which it always can.
    bool CanResolveEntity() const;

    /// @}
    /// \name The current node
    /// @{

    XmlNodeType NodeType() const { return node_.type; }

    /// Returns the qualified name: of an element, an attribute, an entity reference, the target of
    /// a processing instruction, "xml" for the declaration, the root element's name for the
    /// document type; empty for other nodes.
    const astring& Name() const { return node_.name->qualified; }

    /// Returns the name without its prefix; the whole name when namespaces are off.
    const astring& LocalName() const { return node_.name->local; }

    /// Returns the prefix, or empty.
    const astring& Prefix() const { return node_.name->prefix; }

    /// Returns the URI of the namespace of an element or attribute; empty without one, also for
    /// an undeclared prefix and for declarations of namespaces.
    const astring& NamespaceURI() const { return *node_.namespaceUri; }

    /// Returns the text, the attribute's value, the comment and so on; empty for nodes without.
    const astring& Value() const { return node_.isRaw ? NormalizedValue() : *node_.value; }

    /// Tells whether nodes of this kind have a value.
    bool HasValue() const;

    /// Returns how many elements are open around the node, the node itself included: 1 for the
    /// root element, for its end tag, and for nodes outside it; 0 without a node.
    int Depth() const { return node_.depth; }

    /// Tells whether the element is written as an empty-element tag; it then has no `EndElement`.
    bool IsEmptyElement() const {
        return node_.isEmptyElement && node_.type == XmlNodeType::Element;
    }

    /// Returns the quotation mark around the current attribute's value; the double one elsewhere.
    char QuoteChar() const;

    /// Returns the line on which the node starts, from 1 on.
    int LineNumber() const;

    /// Returns where in its line the node starts, in characters, from 1 on. An element starts at
    /// its "<"; a processing instruction, the declaration and the document type two later.
    int LinePosition() const;

    /// Returns the value of the innermost xml:lang in force, or empty. On an `EndElement` node the
    /// element has been left already.
    const astring& XmlLang() const;

    /// Returns the innermost xml:space in force. On an `EndElement` node the element has been left
    /// already.
    XmlSpace GetXmlSpace() const;

    /// @}
    /// \name Attributes
    /// @{

    /// Returns the number of attributes of the current element or of the element that the current
    /// attribute belongs to, of pseudo-attributes of the declaration or the document type; 0 on
    /// other nodes.
    int AttributeCount() const;

    /// Tells whether AttributeCount() is above 0.
    bool HasAttributes() const;

    /// Returns the attributes of the current node, to loop over; the reader does not move.
    ///
    /// \code
    ///     for (const Xml::XmlAttributeRef attribute : reader.Attributes()) {
    ///         std::cout << attribute.Name() << " is " << attribute.Value() << "\n";
    ///     }
    /// \endcode
    XmlAttributeRange Attributes() const;

    /// Returns the value of attribute `i`, from 0 on; empty when there is none.
    const astring& GetAttribute(int i) const;

    /// Returns the value of the attribute with the qualified name `name`; empty when there is none.
    const astring& GetAttribute(std::string_view name) const;

    /// Returns the value of the attribute with that local name and namespace; empty when there is
    /// none.
    const astring& GetAttribute(std::string_view localName, std::string_view namespaceURI) const;

    /// Returns GetAttribute(i) on an `Element` node, otherwise an empty string.
    const astring& Item(int i) const;

    /// Moves to attribute `i`, from 0 on. Does nothing on nodes other than elements and attributes.
    /// \throws Xml::Exception "Argument out of range" with the argument "MoveToAttribute" (line and
    ///     position -1) when there is no such attribute
    void MoveToAttribute(int i);

    /// Moves to the attribute with the qualified name `name`.
    /// \return false, with nothing changed, when there is none
    bool MoveToAttribute(std::string_view name);

    /// Moves to the attribute with that local name and namespace.
    /// \return false, with nothing changed, when there is none
    bool MoveToAttribute(std::string_view localName, std::string_view namespaceURI);

    /// Moves from an attribute, or a part of its value, to its element.
    /// \return false when the reader does not stand on an attribute
    bool MoveToElement();

    /// Moves to the first attribute of the element.
    /// \return false when there is none
    bool MoveToFirstAttribute();

    /// Moves from an attribute to the next one.
    /// \return false after the last one. Deliberate: also on the element itself, where
    ///     MoveToFirstAttribute() has to be called first.
    bool MoveToNextAttribute();

    /// Tells whether the current node is an attribute that the document type has supplied, which
    /// the tag does not have. Only with XmlConformance::Standard it does.
    bool IsDefault() const;

    /// Returns the index of the attribute that was visited last; 0 for a new element.
    int GetCurrentAttributeIndex() const;

    /// Steps through the value of the current attribute, part by part. Each part is a node: `Text`,
    /// or `EntityReference` for a reference that was not replaced. ResolveEntity() on that one
    /// makes the parts of the entity's text follow, and then an `EndEntity`. A value without such
    /// references is one `Text`, also when it is empty.
    ///
    /// The parts of a value whose declared type is not CDATA keep their blanks, since it takes all
    /// of them to know which belong to the value.
    ///
    /// Moving to an element or attribute leaves the parts, and so does Read().
    /// \return false behind the last part, with the attribute current again, and when the reader
    ///     does not stand on an attribute
    /// \throws Xml::Exception "Invalid character reference" and "Invalid named entity" for what an
    ///     entity's text may hold
    bool ReadAttributeValue();

    /// Returns the URI bound to `prefix` (empty: the default namespace) at the current node, or
    /// empty; always empty when namespaces are off.
    const astring& LookupNamespace(std::string_view prefix) const;

    /// @}
    /// \name Content
    /// @{

    /// Moves to the next node with content, unless the reader stands on one: skips the declaration,
    /// the document type, comments, processing instructions and white space. On an attribute it
    /// moves to the element.
    /// \return the type of the node: `Element`, `Text`, `CDATA`, `EntityReference`, `EndElement`,
    ///     `EndEntity`, or `None` at the end of the document
    XmlNodeType MoveToContent();

    /// Moves to content and tells whether that is a start tag, with that name if one is given.
    bool IsStartElement();
    bool IsStartElement(std::string_view name);
    bool IsStartElement(std::string_view localName, std::string_view namespaceURI);

    /// Moves to content, which must be a start tag with the name that is given, and reads it.
    /// \throws Xml::Exception "Not an element node" with the type of another node; "Unexpected
    ///     element" with the name of another element. The reader stays on that node.
    void ReadStartElement();
    void ReadStartElement(std::string_view name);
    void ReadStartElement(std::string_view localName, std::string_view namespaceURI);

    /// Reads the end tag that the reader stands on.
    /// \throws Xml::Exception "Not an end element node" with the type of another node; "Read
    ///     failed" when nothing follows, as behind the end tag of the root element
    void ReadEndElement();

    /// Returns the text from here up to the next tag or reference and moves there. An element is
    /// entered first, and so is the element of an attribute. An empty element has no text; the
    /// reader stays on it.
    ///
    /// Comments, processing instructions and nodes of white space are passed over and add nothing.
    /// \throws Xml::Exception "Invalid operation" with the argument "ReadString" (line and position
    ///     -1) when the document ends
    astring ReadString();

    /// Moves to content, which must be an element with nothing but text in it, returns that text,
    /// and moves behind the element.
    /// \throws Xml::Exception "Invalid node type" with the type of a node that is no element,
    ///     "Unexpected node type" with the type of the node that ended the text
    astring ReadElementString();

    /// Copies text from here up to the next tag or reference into the caller's buffer, part by
    /// part, for texts that need not be held as one. On an element, which is entered first, this
    /// begins its text. Text, CDATA sections and white space are copied; comments and processing
    /// instructions are passed over.
    /// \param buffer receives the bytes, from `buffer + index` on
    /// \param count the most bytes to copy; with 4 and more there is room for any character
    /// \param reserved not used
    /// \return the bytes copied, which end with a whole character; 0 once the text has ended, with
    ///     the reader on the node that ended it
    int ReadChars(char* buffer, int index, int count, unsigned reserved = 0);

    /// Moves behind the content of the current node, and to content.
    ///
    /// From an element with an end tag, the reader gets to the content behind that tag. Deliberate:
    /// from any other node, an empty element included, it moves to the next node, and when that is
    /// an end tag, behind it. SkipElement() is plainer.
    void Skip();

    /// Moves to the node behind the current element, be it empty or not; from one of its attributes
    /// too. On another node this is Read().
    /// \return false at the end of the document
    bool SkipElement();

    /// Returns the markup between the start tag and the end tag of the current element, as it
    /// stands in the input, in UTF-8, and moves behind the element. On an attribute, returns its
    /// value and stays. On another node, returns an empty string and reads on.
    astring ReadInnerXml();

    /// Returns the markup of the current element, tags included, as it stands in the input, in
    /// UTF-8, and moves behind the element. On an attribute, returns name="value" with the
    /// attribute's own quotation marks and stays. On another node, returns an empty string and
    /// reads on.
    astring ReadOuterXml();

    /// @}
    /// \name Checks of names
    /// @{

    /// Tells whether `name` is a name: a letter or "_" first, then also digits, ".", "-" and
    /// combining characters, as in XML 1.0 (fourth edition) without ideographs.
    /// \param allowColon whether ":" counts as a letter
    static bool IsName(std::string_view name, bool allowColon);

    /// Tells whether `token` is not empty and consists of the characters that may stand in a name.
    static bool IsNameToken(std::string_view token);

    /// @}

private:
    friend class XmlAttributeRef;
    friend class detail::ReaderAccess;

    const astring& NormalizedValue() const;
    void RequireStartElement();
    void EnterForString();
    void ReadForString();
    astring AttributeMarkup() const;
    [[noreturn]] void ThrowAtNode(const char* message, std::string_view argument) const;

    detail::NodeView node_;  // filled by the core
    std::unique_ptr<detail::ReaderCore> core_;
};

}  // namespace Xml
